#include "TimeOfDay.h"

namespace {
constexpr qint64 kMsecsPerDay = 24 * 60 * 60 * 1000;

qint64 msecsOrMidnight(const QTime& time)
{
    return time.isValid() ? time.msecsSinceStartOfDay() : 0;
}
}

namespace TimeOfDay {

int orderKey(const QTime& time)
{
    return time.isValid() ? time.msecsSinceStartOfDay() : -1;
}

QTime later(const QTime& a, const QTime& b)
{
    return orderKey(a) >= orderKey(b) ? a : b;
}

int secsTo(const QTime& from, const QTime& to)
{
    return static_cast<int>((msecsOrMidnight(to) - msecsOrMidnight(from)) / 1000);
}

QString hoursMinutes(qint64 seconds)
{
    qint64 msecs = (seconds % (kMsecsPerDay / 1000)) * 1000;
    if (msecs < 0)
        msecs += kMsecsPerDay;
    return QTime::fromMSecsSinceStartOfDay(static_cast<int>(msecs)).toString(QStringLiteral("H:mm"));
}

QDate threeMonthsBack(const QDate& today)
{
    const int day = today.day();
    const int month = today.month();
    const int year = today.year();
    return month - 3 > 0 ? QDate(year, month - 3, day) : QDate(year - 1, month + 9, day);
}

} // namespace TimeOfDay
