#include "CounterMath.h"

#include <algorithm>
#include <limits>

namespace velt {

namespace {
constexpr quint64 k32BitRange = quint64(1) << 32;

quint32 speed(quint64 bytes, qint64 elapsedMs)
{
    if (elapsedMs <= 0)
        return 0;
    const long double perSecond = static_cast<long double>(bytes) * 1000.0L / elapsedMs;
    return static_cast<quint32>(std::min<long double>(perSecond, std::numeric_limits<quint32>::max()));
}
} // namespace

quint64 counterAdvance(quint64 before, quint64 after)
{
    if (after >= before)
        return after - before;
    if (before < k32BitRange) {
        const quint64 wrapped = (k32BitRange - before) + after;
        if (wrapped < k32BitRange / 2)
            return wrapped;
        return after;
    }
    // Unsigned arithmetic: this is the distance across 2^64.
    const quint64 wrapped = after - before;
    return wrapped < (quint64(1) << 63) ? wrapped : after;
}

CounterDelta counterDelta(const CounterReading& previous, const CounterReading& current)
{
    CounterDelta delta;
    if (current.state != CounterReading::Present || previous.state == CounterReading::Unknown)
        return delta;

    const bool recreated = previous.state == CounterReading::Absent
        || (previous.ifindex != 0 && current.ifindex != 0 && previous.ifindex != current.ifindex);
    if (recreated) {
        delta.received = current.received;
        delta.sent = current.sent;
        return delta; // no speed: when it appeared is unknown
    }

    delta.received = counterAdvance(previous.received, current.received);
    delta.sent = counterAdvance(previous.sent, current.sent);
    const qint64 elapsed = previous.monotonicMs < 0 ? 0 : current.monotonicMs - previous.monotonicMs;
    if (elapsed > 0 && elapsed <= kMaxObservedGapMs) {
        delta.elapsedMs = elapsed;
        delta.receiveSpeed = speed(delta.received, elapsed);
        delta.sendSpeed = speed(delta.sent, elapsed);
    }
    return delta;
}

qint64 connectedInterval(bool wasConnected, bool isConnected, qint64 elapsedMs)
{
    if (!wasConnected || !isConnected || elapsedMs <= 0 || elapsedMs > kMaxObservedGapMs)
        return 0;
    return elapsedMs;
}

} // namespace velt
