#include "UsagePeriods.h"

#include "LinuxLog.h"

#include <QFileInfo>
#include <QSettings>

#include <algorithm>
#include <utility>

namespace velt {

namespace {
    QDate dayInMonth(int year, int month, int day)
    {
        const QDate first(year, month, 1);
        return QDate(year, month, std::min(day, first.daysInMonth()));
    }

    int readIndex(const QSettings& settings, const char* key, int last)
    {
        const QString text = settings.value(QLatin1String(key)).toString().trimmed();
        if (text.isEmpty())
            return 0;
        bool ok = false;
        const int value = text.toInt(&ok);
        if (!ok || value < 0 || value > last) {
            qCWarning(lcLinux, "LinuxBackend: host setting %s=\"%s\" is not between 0 and %d; using 0", key,
                qUtf8Printable(text), last);
            return 0;
        }
        return value;
    }
} // namespace

PeriodStarts periodStarts(const QDateTime& now, const PeriodSettings& settings)
{
    const QDate today = now.date();
    PeriodStarts starts;
    starts.today = today.startOfDay();

    // Qt counts Monday as 1 and Sunday as 7; the setting counts Sunday as 0.
    const int startDay = settings.startWeekday == 0 ? 7 : std::clamp(settings.startWeekday, 1, 6);
    starts.week = today.addDays(-((today.dayOfWeek() - startDay + 7) % 7)).startOfDay();

    const int day = std::clamp(settings.startMonthDay, 0, 30) + 1;
    QDate monthStart = dayInMonth(today.year(), today.month(), day);
    if (monthStart > today) {
        const QDate previous = today.addMonths(-1);
        monthStart = dayInMonth(previous.year(), previous.month(), day);
    }
    starts.month = monthStart.startOfDay();
    starts.year = QDate(today.year(), 1, 1).startOfDay();
    return starts;
}

PeriodSettingsReader::PeriodSettingsReader(QString settingsFile)
    : m_file(std::move(settingsFile))
{ }

PeriodSettings PeriodSettingsReader::settings()
{
    const QFileInfo info(m_file);
    const QDateTime modified = info.exists() ? info.lastModified() : QDateTime();
    const qint64 size = info.exists() ? info.size() : -1;
    if (m_loaded && modified == m_modified && size == m_size)
        return m_settings;
    m_loaded = true;
    m_modified = modified;
    m_size = size;
    m_settings = PeriodSettings();
    if (!info.exists())
        return m_settings;

    QSettings file(m_file, QSettings::IniFormat);
    if (file.status() != QSettings::NoError) {
        qCWarning(lcLinux,
            "LinuxBackend: cannot read the period settings in %s; weeks start on Sunday, months on the 1st",
            qUtf8Printable(m_file));
        return m_settings;
    }
    m_settings.startWeekday = readIndex(file, "uselimit/startweekdate", 6);
    m_settings.startMonthDay = readIndex(file, "uselimit/startmonthdate", 30);
    return m_settings;
}

} // namespace velt
