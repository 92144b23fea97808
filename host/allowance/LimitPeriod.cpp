#include "LimitPeriod.h"

#include <QSettings>

#include <algorithm>

namespace allowance {

namespace {

    // The data limit is entered in the flux table's second unit, MB.
    constexpr quint64 kLimitUnitBytes = 1024 * 1024;

    // The month period's start in the month of `date`: the start day, or the
    // month's last day where it has none.
    QDate monthStartIn(const QDate& date, int startMonthDay)
    {
        return QDate(date.year(), date.month(), std::min(startMonthDay + 1, date.daysInMonth()));
    }

} // namespace

LimitSettings readLimitSettings(const QString& path)
{
    LimitSettings limit;
    QSettings file(path, QSettings::IniFormat);
    file.beginGroup(QStringLiteral("uselimit"));
    const auto isTrue = [&file](const char* key) {
        return file.value(QLatin1String(key))
                   .toString()
                   .trimmed()
                   .compare(QLatin1String("true"), Qt::CaseInsensitive)
            == 0;
    };
    if (file.contains(QStringLiteral("chkRecurrence")) && !isTrue("chkRecurrence")) {
        limit.kind = LimitSettings::Kind::FromDate;
        limit.startDate = QDate::fromString(
            file.value(QStringLiteral("startdate")).toString().trimmed(), QStringLiteral("yyyy-MM-dd"));
    } else if (isTrue("radioDaily")) {
        limit.kind = LimitSettings::Kind::Daily;
    } else if (isTrue("radioWeekly")) {
        limit.kind = LimitSettings::Kind::Weekly;
    }
    if (isTrue("chkVolume")) {
        bool ok = false;
        const qint64 size = file.value(QStringLiteral("SizeVolume")).toString().trimmed().toLongLong(&ok);
        if (ok && size > 0 && quint64(size) <= std::numeric_limits<quint64>::max() / kLimitUnitBytes)
            limit.limitBytes = quint64(size) * kLimitUnitBytes;
    }
    return limit;
}

LimitPeriod currentLimitPeriod(
    const QDateTime& now, const velt::PeriodSettings& settings, const LimitSettings& limit)
{
    const velt::PeriodStarts starts = velt::periodStarts(now, settings);
    switch (limit.kind) {
    case LimitSettings::Kind::Daily:
        return { starts.today, now.date().addDays(1).startOfDay() };
    case LimitSettings::Kind::Weekly:
        return { starts.week, starts.week.date().addDays(7).startOfDay() };
    case LimitSettings::Kind::Monthly:
        return { starts.month,
            monthStartIn(starts.month.date().addMonths(1), settings.startMonthDay).startOfDay() };
    case LimitSettings::Kind::FromDate:
        break;
    }
    // A start still to come counts nothing yet.
    const QDateTime start
        = (limit.startDate.isValid() ? limit.startDate : now.date().addMonths(-3)).startOfDay();
    return { std::min(start, now), QDateTime() };
}

LimitPeriod previousLimitPeriod(
    const LimitPeriod& period, const velt::PeriodSettings& settings, const LimitSettings& limit)
{
    if (limit.kind == LimitSettings::Kind::FromDate || !period.start.isValid())
        return {};
    // The moment before this period began lies in the previous one.
    return currentLimitPeriod(period.start.addSecs(-1), settings, limit);
}

} // namespace allowance
