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

quint64 linkCapacity(quint64 bytesPerSecond, qint64 elapsedMs)
{
    const quint64 rate = bytesPerSecond ? bytesPerSecond : kDefaultLinkBytesPerSecond;
    if (elapsedMs < 0)
        return std::numeric_limits<quint64>::max();
    const long double bytes = static_cast<long double>(rate) * std::max<qint64>(elapsedMs, 1000) / 1000.0L;
    return bytes >= 1.8e19L ? std::numeric_limits<quint64>::max() : static_cast<quint64>(bytes);
}

qint64 counterAdvance(quint64 before, quint64 after, quint64 capacity)
{
    // Half the signed range: beyond any link, and the ledger's sums stay exact.
    capacity = std::min<quint64>(capacity, quint64(1) << 62);
    quint64 advance = after;
    if (after >= before)
        advance = after - before;
    else if (before < k32BitRange && k32BitRange - before + after <= capacity)
        advance = k32BitRange - before + after;
    return advance <= capacity ? qint64(advance) : -1;
}

CounterDelta counterDelta(const CounterReading& previous, const CounterReading& current,
    quint64 linkBytesPerSecond, qint64 maxGapMs)
{
    CounterDelta delta;
    if (current.state != CounterReading::Present || previous.state == CounterReading::Unknown)
        return delta;

    const bool recreated = previous.state == CounterReading::Absent
        || (previous.ifindex != 0 && current.ifindex != 0 && previous.ifindex != current.ifindex);
    const qint64 elapsed = previous.monotonicMs < 0 || current.monotonicMs < 0
        ? -1
        : current.monotonicMs - previous.monotonicMs;
    // A clock that went backwards means another boot's or a broken clock: no bound.
    const quint64 capacity = linkCapacity(linkBytesPerSecond, recreated || elapsed < 0 ? -1 : elapsed);
    const qint64 received = counterAdvance(recreated ? 0 : previous.received, current.received, capacity);
    const qint64 sent = counterAdvance(recreated ? 0 : previous.sent, current.sent, capacity);
    if (received < 0 || sent < 0) {
        delta.implausible = true;
        return delta;
    }
    delta.received = quint64(received);
    delta.sent = quint64(sent);
    if (!recreated && elapsed > 0 && elapsed <= maxGapMs) {
        delta.elapsedMs = elapsed;
        delta.receiveSpeed = speed(delta.received, elapsed);
        delta.sendSpeed = speed(delta.sent, elapsed);
    }
    return delta;
}

qint64 connectedInterval(bool wasConnected, bool isConnected, qint64 elapsedMs, qint64 maxGapMs)
{
    if (!wasConnected || !isConnected || elapsedMs <= 0 || elapsedMs > maxGapMs)
        return 0;
    return elapsedMs;
}

qint64 maxObservedGapMs(qint64 intervalMs)
{
    return std::max(kMaxObservedGapMs, 2 * intervalMs);
}

} // namespace velt
