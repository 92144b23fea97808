// Time-of-day arithmetic as the limit accounting has always done it: an
// invalid QTime counts as midnight when added to or measured from, and as -1
// when compared. Qt 6 instead answers 0 or an invalid time there, so these
// helpers spell the older rules out.
#pragma once

#include <QDate>
#include <QString>
#include <QTime>

namespace TimeOfDay {

// Milliseconds since midnight, -1 for an invalid time.
int orderKey(const QTime& time);
// The later of the two by orderKey(); an invalid time loses to any valid one.
QTime later(const QTime& a, const QTime& b);
// Seconds from `from` to `to`, an invalid end counting as midnight.
int secsTo(const QTime& from, const QTime& to);
// Midnight advanced by `seconds` as "H:mm". The seconds become milliseconds
// in 32-bit arithmetic, so past about 596 hours the clock wraps as it always did.
QString hoursMinutes(int seconds);
// A duration truncated to int, saturating instead of overflowing.
int truncatedSeconds(long double seconds);
// The same day three months before `today`, built from its numbers: a day
// the target month lacks (31 May -> 31 February) gives an invalid date.
QDate threeMonthsBack(const QDate& today);

} // namespace TimeOfDay
