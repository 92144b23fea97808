// The report's logic, free of widgets and of the ledger: which periods to
// show, the usage in each, and the table, JSON and CSV forms.
#pragma once

#include "Allowance.h"
#include "UsagePeriods.h"
#include "UsageSource.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QLocale>
#include <QString>

namespace report {

struct Period
{
    QString name; // today, week, month, year, limit, range
    QDateTime start;
    QDateTime end; // exclusive
};

using allowance::LimitSettings;
using allowance::readLimitSettings;

// today, week, month, year and limit, each from its start up to now.
QList<Period> currentPeriods(
    const QDateTime& now, const velt::PeriodSettings& settings, const LimitSettings& limit);
// from's first moment up to the end of to, local time.
Period rangePeriod(const QDate& from, const QDate& to);

enum class HistoryKind { Days, Months, Hours };
// Days: each day of the previous and the current limit period (of the last
// three months for a limit counted from a date). Months: the last twelve,
// each beginning on the host's month start day. Hours: the last 48 from the
// top of the hour, local time. Oldest first; the last ends at now.
QList<Period> historyPeriods(
    const QDateTime& now, const velt::PeriodSettings& settings, const LimitSettings& limit, HistoryKind kind);

struct PeriodUsage
{
    Period period;
    velt::Usage total; // as recorded; the adjustment stays apart
    QList<KeyedUsage> byKey; // one per interface and connection, ordered by them
    qint64 adjustment = 0; // the user's calibration, for the limit period only
};

QList<PeriodUsage> collect(UsageSource& source, const QList<Period>& periods);

// The allowance of the "limit" entry of `report` (empty figures without one).
allowance::Figures limitFigures(const QList<PeriodUsage>& report, const QDateTime& now,
    const allowance::LimitPeriod& period, quint64 limitBytes);

QByteArray toJson(const QList<PeriodUsage>& report);
// {"history": [{start, end, received, sent}, ...]}
QByteArray historyJson(const QList<PeriodUsage>& history);
// Counters per period and the limit's gauges, ending in "# EOF".
QByteArray toOpenMetrics(const QList<PeriodUsage>& report, const allowance::Figures& figures);
// The current periods and the limit's figures from source, as OpenMetrics.
QByteArray currentOpenMetrics(UsageSource& source, const QDateTime& now, const velt::PeriodSettings& settings,
    const LimitSettings& limit);
QByteArray toCsv(const QList<PeriodUsage>& report);
QString toTable(const QList<PeriodUsage>& report, const QLocale& locale = QLocale());

} // namespace report
