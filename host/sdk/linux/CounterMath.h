// Turns two readings of an interface's byte counters into the bytes that
// moved between them. Pure, so every odd case of the kernel's counters can be
// tested without a kernel.
#pragma once

#include "veltsdk.h"

#include <QtGlobal>

namespace velt {

struct CounterReading
{
    // Unknown: no earlier reading to compare with (first sample, an interface
    // that joined the counted set); Absent: the interface did not exist;
    // Present: counters valid.
    enum State { Unknown, Absent, Present };
    State state = Unknown;
    quint32 ifindex = 0; // 0 when not known
    quint64 received = 0;
    quint64 sent = 0;
    qint64 monotonicMs = -1; // -1: when it was taken is unknown
};

struct CounterDelta
{
    quint64 received = 0;
    quint64 sent = 0;
    quint32 receiveSpeed = 0; // bytes per second
    quint32 sendSpeed = 0;
    qint64 elapsedMs = 0; // a usable interval, else 0
    bool implausible = false; // a counter moved further than the link can carry: nothing booked
};

// Intervals longer than this were not observed (suspend, a stalled process):
// their bytes count, but they yield no speed and no connected time. A slower
// sampler raises the bound to twice its interval (maxObservedGapMs).
constexpr qint64 kMaxObservedGapMs = 5000;
// For links that do not report a speed (modems, virtual links).
constexpr quint64 kDefaultLinkBytesPerSecond = 10'000'000'000ull / 8;

// The most a link of `bytesPerSecond` (0: unknown) can move in `elapsedMs`
// (negative: unknown). Short intervals count as one second, since a sample
// may be late and two counters are not read at the same instant.
VELTSDK_EXPORT quint64 linkCapacity(quint64 bytesPerSecond, qint64 elapsedMs);

// How far a counter moved from `before` to `after`, or -1 when no link of
// `capacity` could have moved it that far. A drop is a 32-bit wrap only when
// `before` fits 32 bits and the distance across 2^32 fits the capacity; any
// other drop is a restart of the counter, so `after` is all new.
VELTSDK_EXPORT qint64 counterAdvance(quint64 before, quint64 after, quint64 capacity);

// The traffic between two readings. Nothing is counted without a known
// earlier reading; an interface that appeared or was re-created (new
// ifindex) counts from zero; a missing interface counts nothing.
VELTSDK_EXPORT CounterDelta counterDelta(const CounterReading& previous, const CounterReading& current,
    quint64 linkBytesPerSecond = 0, qint64 maxGapMs = kMaxObservedGapMs);

// Connected time between two samples: only when connected at both and the
// interval was observed.
VELTSDK_EXPORT qint64 connectedInterval(
    bool wasConnected, bool isConnected, qint64 elapsedMs, qint64 maxGapMs = kMaxObservedGapMs);
// The longest interval still observed for a sampler of that interval.
VELTSDK_EXPORT qint64 maxObservedGapMs(qint64 intervalMs);

} // namespace velt
