#include "TimeOfDay.h"

#include <limits>

namespace {
constexpr qint64 kMsecsPerDay = 24 * 60 * 60 * 1000;

qint64 msecsOrMidnight(const QTime& time)
{
    return time.isValid() ? time.msecsSinceStartOfDay() : 0;
}
} // namespace

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

QString hoursMinutes(int seconds)
{
    const auto msecs = static_cast<qint32>(static_cast<quint32>(seconds) * 1000u);
    qint64 sinceMidnight = msecs % kMsecsPerDay;
    if (sinceMidnight < 0)
        sinceMidnight += kMsecsPerDay;
    return QTime::fromMSecsSinceStartOfDay(static_cast<int>(sinceMidnight)).toString(QStringLiteral("H:mm"));
}

int truncatedSeconds(long double seconds)
{
    if (!(seconds > std::numeric_limits<int>::min()))
        return std::numeric_limits<int>::min();
    if (!(seconds < std::numeric_limits<int>::max()))
        return std::numeric_limits<int>::max();
    return static_cast<int>(seconds);
}

QDate threeMonthsBack(const QDate& today)
{
    const int day = today.day();
    const int month = today.month();
    const int year = today.year();
    return month - 3 > 0 ? QDate(year, month - 3, day) : QDate(year - 1, month + 9, day);
}

} // namespace TimeOfDay
