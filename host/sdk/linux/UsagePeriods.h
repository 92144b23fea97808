// Where the usage periods begin, in local time, and the period settings the
// host publishes for them.
#pragma once

#include "veltsdk.h"

#include <QDateTime>
#include <QString>

namespace velt {

struct PeriodSettings
{
    int startWeekday = 0; // 0 = Sunday .. 6 = Saturday
    int startMonthDay = 0; // 0 = the 1st .. 30 = the 31st
};

struct PeriodStarts
{
    QDateTime today;
    QDateTime week;
    QDateTime month;
    QDateTime year;
};

// Each the most recent start at or before `now`, as the first valid local
// time of its day (so a day that begins in a DST gap still has a start). A
// month without the start day begins on its last day.
VELTSDK_EXPORT PeriodStarts periodStarts(const QDateTime& now, const PeriodSettings& settings);

// Reads "uselimit/startweekdate" and "uselimit/startmonthdate" from the host's
// settings file; re-reads only when the file changed. Missing or odd values
// count as 0 (with a warning for odd ones).
class VELTSDK_EXPORT PeriodSettingsReader
{
public:
    explicit PeriodSettingsReader(QString settingsFile);
    PeriodSettings settings();

private:
    QString m_file;
    QDateTime m_modified;
    qint64 m_size = -1;
    bool m_loaded = false;
    PeriodSettings m_settings;
};

} // namespace velt
