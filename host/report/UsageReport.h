// The report's logic, free of widgets and of the ledger: which periods to
// show, the usage in each, and the table, JSON and CSV forms.
#pragma once

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

// The usage limit's period as the user set it in DataUsageLimit.ini.
struct LimitSettings
{
    enum class Kind { Daily, Weekly, Monthly, FromDate };
    Kind kind = Kind::Monthly; // the shipped default
    QDate startDate;           // FromDate only; invalid: three months back, as the view looks back
};

// Missing file or keys: the shipped defaults.
LimitSettings readLimitSettings(const QString& path);

// today, week, month, year and limit, each from its start up to now.
QList<Period> currentPeriods(const QDateTime& now, const velt::PeriodSettings& settings,
                             const LimitSettings& limit);
// from's first moment up to the end of to, local time.
Period rangePeriod(const QDate& from, const QDate& to);

struct PeriodUsage
{
    Period period;
    velt::Usage total;
    QList<KeyedUsage> byKey; // one per interface and connection, ordered by them
};

QList<PeriodUsage> collect(UsageSource& source, const QList<Period>& periods);

QByteArray toJson(const QList<PeriodUsage>& report);
QByteArray toCsv(const QList<PeriodUsage>& report);
QString toTable(const QList<PeriodUsage>& report, const QLocale& locale = QLocale());

} // namespace report
