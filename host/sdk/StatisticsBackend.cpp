#include "StatisticsBackend.h"

#include <cstring>

namespace velt {

static_assert(VELT_REPORT_OFFSET_RESET_TIME + sizeof(quint32) <= VELT_STATISTICS_REPORT_SIZE,
    "a report field lies outside the report");

namespace {
    template <typename T> void put(void* report, int offset, T value)
    {
        std::memcpy(static_cast<char*>(report) + offset, &value, sizeof value);
    }

    template <typename T> T get(const void* report, int offset)
    {
        T value;
        std::memcpy(&value, static_cast<const char*>(report) + offset, sizeof value);
        return value;
    }
} // namespace

void writeReport(const StatisticsRecord& record, void* report)
{
    if (!report)
        return;
    put(report, VELT_REPORT_OFFSET_BYTES_RECEIVED, record.bytesReceived);
    put(report, VELT_REPORT_OFFSET_BYTES_SENT, record.bytesSent);
    put(report, VELT_REPORT_OFFSET_RECEIVE_SPEED, record.receiveSpeed);
    put(report, VELT_REPORT_OFFSET_SEND_SPEED, record.sendSpeed);
    put(report, VELT_REPORT_OFFSET_DURATION, record.duration);
    put(report, VELT_REPORT_OFFSET_RESET_TIME, record.resetTime);
}

StatisticsRecord readReport(const void* report)
{
    StatisticsRecord record;
    if (!report)
        return record;
    record.bytesReceived = get<quint64>(report, VELT_REPORT_OFFSET_BYTES_RECEIVED);
    record.bytesSent = get<quint64>(report, VELT_REPORT_OFFSET_BYTES_SENT);
    record.receiveSpeed = get<quint32>(report, VELT_REPORT_OFFSET_RECEIVE_SPEED);
    record.sendSpeed = get<quint32>(report, VELT_REPORT_OFFSET_SEND_SPEED);
    record.duration = get<qint64>(report, VELT_REPORT_OFFSET_DURATION);
    record.resetTime = get<quint32>(report, VELT_REPORT_OFFSET_RESET_TIME);
    return record;
}

} // namespace velt
