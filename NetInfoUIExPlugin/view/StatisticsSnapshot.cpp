#include "StatisticsSnapshot.h"

namespace view {

void StatisticsSnapshot::takeDuration(const QString& text)
{
    if (text != QLatin1String(" "))
        live.duration = text;
}

bool StatisticsSnapshot::refresh(const Fetch& fetch, const ResetTime& resetTime)
{
    const bool failed = fetch(NETINFO_DAILY, record(LimitPeriod::Daily))
        || fetch(NETINFO_MONTHLY, record(LimitPeriod::Monthly))
        || fetch(NETINFO_YEARLY, record(LimitPeriod::Yearly))
        || fetch(NETINFO_WEEKLY, record(LimitPeriod::Weekly));
    if (failed)
        return false;
    lastReset.clear();
    resetTime(lastReset);
    for (int i = 0; i < 5; ++i)
        m_kept[i] = m_records[i];
    return true;
}

} // namespace view
