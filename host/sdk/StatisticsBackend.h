// The seam between the SDK's C API and whatever produces the figures: a
// simulated source for tests and demos, the interface counters on Linux.
#pragma once

#include "veltsdk.h"

#include <QByteArray>
#include <QtGlobal>

namespace velt {

// Result codes of the SDK; the C API only promises zero versus non-zero.
enum SdkResult : int {
    Ok = 0,
    InvalidArgument = 1,
    CallFailed = 2,
    NotRegistered = 3,
};

// The fields of a statistics report that carry meaning.
struct StatisticsRecord
{
    quint64 bytesReceived = 0;
    quint64 bytesSent = 0;
    quint32 receiveSpeed = 0; // bytes per second
    quint32 sendSpeed = 0; // bytes per second
    qint64 duration = 0; // seconds
    quint32 resetTime = 0; // seconds since the epoch
};

inline bool operator==(const StatisticsRecord& a, const StatisticsRecord& b)
{
    return a.bytesReceived == b.bytesReceived && a.bytesSent == b.bytesSent
        && a.receiveSpeed == b.receiveSpeed && a.sendSpeed == b.sendSpeed && a.duration == b.duration
        && a.resetTime == b.resetTime;
}
inline bool operator!=(const StatisticsRecord& a, const StatisticsRecord& b)
{
    return !(a == b);
}

// Only the record's fields are written; zeroing the reserved bytes is the
// caller's business, as the C API does it once per call.
VELTSDK_EXPORT void writeReport(const StatisticsRecord& record, void* report);
VELTSDK_EXPORT StatisticsRecord readReport(const void* report);

// One value per C function, so that a scripted backend can fail any of them.
enum class SdkCall { GetReport, GetSpecHistory, Reset, Register, Unregister, GetCustomizeName };
constexpr int SdkCallCount = 6;

// Receives the backend's ticks, from whichever thread the backend samples on.
class VELTSDK_EXPORT TickSink
{
public:
    virtual ~TickSink() = default;
    virtual void tick(bool connected) = 0;
};

// All operations but start/stop may be called from any thread at any time,
// including from inside a tick.
class VELTSDK_EXPORT StatisticsBackend
{
public:
    virtual ~StatisticsBackend() = default;

    virtual bool isSupported() const = 0;
    // Ticks go to sink until stop() returns; stop() must not be called from a tick.
    virtual int start(TickSink* sink) = 0;
    virtual void stop() = 0;

    // kind is one of VELT_REPORT_LIVE .. VELT_REPORT_YEAR.
    virtual int report(int kind, StatisticsRecord& record) = 0;
    // The usage of the last `seconds` seconds.
    virtual int history(quint64 seconds, StatisticsRecord& record) = 0;
    virtual int reset(int flag) = 0;
    virtual int customizeName(QByteArray& name) = 0;

    // Asked before every C call; true makes that call fail without touching its output.
    virtual bool failsNext(SdkCall call)
    {
        Q_UNUSED(call);
        return false;
    }
};

} // namespace velt
