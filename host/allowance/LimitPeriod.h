// The usage limit's period as the user set it in DataUsageLimit.ini, and
// where the current one begins and ends.
#pragma once

#include "UsagePeriods.h"

#include <QDate>
#include <QDateTime>
#include <QString>

namespace allowance {

struct LimitSettings
{
    enum class Kind { Daily, Weekly, Monthly, FromDate };
    Kind kind = Kind::Monthly; // the shipped default
    QDate startDate; // FromDate only; invalid: three months back, as the view looks back
    quint64 limitBytes = 0; // 0: no data limit set
};

// Missing file or keys: the shipped defaults.
LimitSettings readLimitSettings(const QString& path);

struct LimitPeriod
{
    QDateTime start;
    QDateTime end; // exclusive; invalid for a limit counted from a date on
};

// The period holding `now`; week and month begin where the host's settings
// say, as the statistics' weekly and monthly reports do.
LimitPeriod currentLimitPeriod(
    const QDateTime& now, const velt::PeriodSettings& settings, const LimitSettings& limit);
// The period that ended where `period` begins (invalid for a FromDate limit).
LimitPeriod previousLimitPeriod(
    const LimitPeriod& period, const velt::PeriodSettings& settings, const LimitSettings& limit);

} // namespace allowance
