// What is left of the data limit: the figures the connection panel, the tray
// tooltip and the report show, worked out once here.
#pragma once

#include "LimitPeriod.h"

#include <QLocale>
#include <QString>

namespace allowance {

struct Figures
{
    LimitPeriod period;
    quint64 limit = 0; // bytes; 0 without a data limit
    quint64 used = 0; // recorded plus adjustment, never below nothing
    qint64 adjustment = 0; // the user's calibration, included in used
    double percent = 0; // of the limit; 0 without one
    quint64 remaining = 0; // 0 once the limit is reached
    int daysLeft = -1; // calendar days from today to the period's end, today included; -1 open-ended
    double averageDaily = 0;
    double dailyBudget = -1; // remaining / daysLeft; -1 without a limit or an end
    quint64 forecast = 0; // the period's end total at the average so far; `used` when open-ended
};

// `recorded` bytes in the period so far at `now`. Days are calendar days, so
// a day that DST makes 23 or 25 hours long still counts as one: the average
// is over the whole days so far plus the part of today gone, itself a share
// of today's real length, and at least an hour's worth so the first minutes
// do not forecast wildly.
Figures compute(
    const QDateTime& now, const LimitPeriod& period, quint64 recorded, qint64 adjustment, quint64 limit);

// The share of the limit as a reader of `locale` expects it: "54.1 %", or
// the locale's own digits and percent sign where it reads right to left.
// Shown in a right-to-left paragraph, a left-to-right figure is isolated, so
// that the sign stays after the number instead of moving before it.
QString percentText(
    double percent, const QLocale& locale = QLocale(), Qt::LayoutDirection direction = Qt::LeftToRight);
// The figures as lines for a tooltip or a panel, in the locale's units.
QString summary(const Figures& figures, const QLocale& locale = QLocale());
// How the forecast is worked out, for the user.
QString forecastExplanation();

} // namespace allowance
