#include "Allowance.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace allowance {

namespace {

    constexpr double kMinimumElapsedDays = 1.0 / 24;

    // Days of the period gone at `now`, counting each calendar day as one.
    double elapsedDays(const QDateTime& start, const QDateTime& now)
    {
        const QDate today = now.date();
        const qint64 wholeDays = std::max<qint64>(start.date().daysTo(today), 0);
        // The period's first day may begin later than midnight (a DST gap or a
        // FromDate limit begun today); measure today from where it began.
        const QDateTime todayStart = std::max(today.startOfDay(), start);
        const qint64 dayLength = todayStart.secsTo(today.addDays(1).startOfDay());
        const double partOfToday = dayLength > 0 ? double(todayStart.secsTo(now)) / double(dayLength) : 0;
        return double(wholeDays) + std::clamp(partOfToday, 0.0, 1.0);
    }

    QString size(double bytes, const QLocale& locale)
    {
        return locale.formattedDataSize(
            qint64(std::llround(std::max(bytes, 0.0))), 2, QLocale::DataSizeTraditionalFormat);
    }

    QString tr(const char* text)
    {
        return QCoreApplication::translate("Allowance", text);
    }

} // namespace

Figures compute(
    const QDateTime& now, const LimitPeriod& period, quint64 recorded, qint64 adjustment, quint64 limit)
{
    Figures f;
    f.period = period;
    f.limit = limit;
    f.adjustment = adjustment;
    if (adjustment >= 0)
        f.used = recorded + std::min(quint64(adjustment), std::numeric_limits<quint64>::max() - recorded);
    else
        f.used = recorded - std::min(recorded, quint64(-adjustment));
    if (limit > 0) {
        f.percent = 100.0 * double(f.used) / double(limit);
        f.remaining = limit > f.used ? limit - f.used : 0;
    }
    const double elapsed = std::max(elapsedDays(period.start, now), kMinimumElapsedDays);
    f.averageDaily = double(f.used) / elapsed;
    f.forecast = f.used;
    if (period.end.isValid()) {
        const qint64 periodDays = period.start.date().daysTo(period.end.date());
        // The end is the next period's first day, so today counts and that day does not.
        f.daysLeft = int(std::max<qint64>(now.date().daysTo(period.end.date()), 0));
        f.forecast = quint64(std::max(double(f.used), std::round(f.averageDaily * double(periodDays))));
        if (limit > 0 && f.daysLeft > 0)
            f.dailyBudget = double(f.remaining) / f.daysLeft;
    }
    return f;
}

QString percentText(double percent, const QLocale& locale, Qt::LayoutDirection direction)
{
    const QString number = locale.toString(percent, 'f', 1);
    if (locale.textDirection() == Qt::RightToLeft)
        return number + locale.percent();
    const QString text = number + QStringLiteral(" %");
    return direction == Qt::RightToLeft ? QChar(0x2066) + text + QChar(0x2069) : text;
}

QString summary(const Figures& f, const QLocale& locale)
{
    QStringList lines;
    if (f.limit > 0)
        lines << tr("Used %1 of %2 (%3 %)")
                     .arg(size(double(f.used), locale), size(double(f.limit), locale),
                         locale.toString(f.percent, 'f', 1))
              << tr("Remaining: %1").arg(size(double(f.remaining), locale));
    else
        lines << tr("Used: %1 (no data limit set)").arg(size(double(f.used), locale));
    if (f.adjustment != 0)
        lines << tr("Includes a calibration of %1%2")
                     .arg(f.adjustment < 0 ? QStringLiteral("\u2212") : QStringLiteral("+"),
                         size(std::abs(double(f.adjustment)), locale));
    if (f.daysLeft >= 0)
        lines << tr("Days left: %1").arg(f.daysLeft);
    lines << tr("Average per day: %1").arg(size(f.averageDaily, locale));
    if (f.dailyBudget >= 0)
        lines << tr("Daily budget to the end: %1").arg(size(f.dailyBudget, locale));
    if (f.period.end.isValid())
        lines << tr("Forecast for the period: %1").arg(size(double(f.forecast), locale));
    return lines.join(QLatin1Char('\n'));
}

QString forecastExplanation()
{
    return tr("The forecast assumes the rest of the period goes on like the days so far: the average per day "
              "(including the part of today gone) times the period's days.");
}

} // namespace allowance
