// Turns two readings of an interface's byte counters into the bytes that
// moved between them. Pure, so every odd case of the kernel's counters can be
// tested without a kernel.
#pragma once

#include "veltsdk.h"

#include <QtGlobal>

namespace velt {

struct CounterReading
{
    // Unknown: no earlier reading to compare with (first sample, other
    // interface); Absent: the interface did not exist; Present: counters valid.
    enum State { Unknown, Absent, Present };
    State state = Unknown;
    quint32 ifindex = 0; // 0 when not known
    quint64 received = 0;
    quint64 sent = 0;
    qint64 monotonicMs = -1; // -1: when it was taken is unknown (restored)
};

struct CounterDelta
{
    quint64 received = 0;
    quint64 sent = 0;
    quint32 receiveSpeed = 0; // bytes per second
    quint32 sendSpeed = 0;
    qint64 elapsedMs = 0;     // a usable interval, else 0
};

// Intervals longer than this were not observed (suspend, a stalled process):
// their bytes count, but they yield no speed and no connected time.
constexpr qint64 kMaxObservedGapMs = 5000;

// How far a counter moved from `before` to `after`. A drop is a wrap when the
// distance across the top of a 32- or 64-bit counter is under half its range;
// any other drop means the counter restarted, so `after` is all new.
VELTSDK_EXPORT quint64 counterAdvance(quint64 before, quint64 after);

// The traffic between two readings. Nothing is counted without a known
// earlier reading; an interface that appeared or was re-created (new
// ifindex) counts from zero; a missing interface counts nothing.
VELTSDK_EXPORT CounterDelta counterDelta(const CounterReading& previous, const CounterReading& current);

// Connected time between two samples: only when connected at both and the
// interval was observed.
VELTSDK_EXPORT qint64 connectedInterval(bool wasConnected, bool isConnected, qint64 elapsedMs);

} // namespace velt
