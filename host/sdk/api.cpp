// The C functions of veltsdk.h, forwarding to the current backend.
#include "Sdk.h"

#include <algorithm>
#include <cstring>

using velt::SdkCall;
using velt::StatisticsRecord;

namespace {

// Every call asks the backend first whether it is scripted to fail, so a
// test can make any call fail, bad arguments included.
std::shared_ptr<velt::StatisticsBackend> backendFor(SdkCall call)
{
    std::shared_ptr<velt::StatisticsBackend> backend = velt::Sdk::instance().acquireBackend();
    if (!backend || backend->failsNext(call))
        return nullptr;
    return backend;
}

bool isReportKind(int kind)
{
    return kind >= VELT_REPORT_LIVE && kind <= VELT_REPORT_YEAR;
}

int fill(void* report, const StatisticsRecord& record)
{
    std::memset(report, 0, VELT_STATISTICS_REPORT_SIZE);
    velt::writeReport(record, report);
    return velt::Ok;
}

} // namespace

extern "C" {

int VELT_Statistics_GetReport(int kind, void* report, int reserved)
{
    Q_UNUSED(reserved);
    const auto backend = backendFor(SdkCall::GetReport);
    if (!backend)
        return velt::CallFailed;
    if (!report || !isReportKind(kind))
        return velt::InvalidArgument;
    StatisticsRecord record;
    if (backend->report(kind, record) != velt::Ok)
        return velt::CallFailed;
    return fill(report, record);
}

int VELT_Statistics_GetSpecHistroryData(void* report, unsigned long long key)
{
    const auto backend = backendFor(SdkCall::GetSpecHistory);
    if (!backend)
        return velt::CallFailed;
    if (!report)
        return velt::InvalidArgument;
    StatisticsRecord record;
    if (backend->history(key, record) != velt::Ok)
        return velt::CallFailed;
    return fill(report, record);
}

int VELT_Statistics_Reset(int flag)
{
    const auto backend = backendFor(SdkCall::Reset);
    if (!backend)
        return velt::CallFailed;
    return backend->reset(flag) == velt::Ok ? velt::Ok : velt::CallFailed;
}

int VELT_Statistics_RegisterStatisticsCallbackEvent(int (*callback)(int event, void* data))
{
    if (!backendFor(SdkCall::Register))
        return velt::CallFailed;
    return velt::Sdk::instance().registerCallback(callback);
}

int VELT_Statistics_UnRegisterStatisticsCallbackEvent(int (*callback)(int event, void* data))
{
    if (!backendFor(SdkCall::Unregister))
        return velt::CallFailed;
    return velt::Sdk::instance().unregisterCallback(callback);
}

int VELT_DevSrv_GetCustomizeName(char* buffer)
{
    const auto backend = backendFor(SdkCall::GetCustomizeName);
    if (!backend)
        return velt::CallFailed;
    if (!buffer)
        return velt::InvalidArgument;
    QByteArray name;
    if (backend->customizeName(name) != velt::Ok)
        return velt::CallFailed;
    // Stops at an embedded NUL too, so the C string is what the caller sees.
    const size_t length
        = std::min<size_t>(qstrnlen(name.constData(), name.size()), VELT_CUSTOMIZE_NAME_SIZE - 1);
    std::memcpy(buffer, name.constData(), length);
    buffer[length] = '\0';
    return velt::Ok;
}

} // extern "C"
