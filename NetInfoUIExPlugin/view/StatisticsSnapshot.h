// The figures the view shows: the live ones of the last tick, the five
// stored records with the copies taken at the last complete refresh, and the
// time of the last reset.
#pragma once

#include "NetInfoTypes.h"
#include "UsageLimitPolicy.h"

#include <QString>

#include <functional>

namespace view {

struct LiveFigures
{
    quint32 upSpeed = 0;
    quint32 downSpeed = 0;
    quint64 upData = 0;
    quint64 downData = 0;
    QString duration = QStringLiteral("00:00:00");
};

class StatisticsSnapshot
{
public:
    // Fills a record for a period; true on failure, as the bridge answers.
    using Fetch = std::function<bool(_enNetInfoType, NetInfoData&)>;
    using ResetTime = std::function<void(QString&)>;

    // A single blank asks for the labels only; the duration stays.
    void takeDuration(const QString& text);

    // Daily, monthly, yearly, then weekly, stopping at the first failure.
    // Records fetched before a failure keep what they received; the kept
    // copies and the reset time wait for a complete refresh.
    bool refresh(const Fetch& fetch, const ResetTime& resetTime);

    NetInfoData& record(LimitPeriod period) { return m_records[int(period)]; }
    const NetInfoData& record(LimitPeriod period) const { return m_records[int(period)]; }
    const NetInfoData& kept(LimitPeriod period) const { return m_kept[int(period)]; }

    LiveFigures live;
    QString lastReset;

private:
    NetInfoData m_records[5];
    NetInfoData m_kept[5];
};

} // namespace view
