// Usage limits: the limit settings as the view holds them, the period the
// usage is measured over, and the per-period refresh of the limit display.
#include "NetInfoUIService.h"

#include "NetInfoLog.h"
#include "NetInfoSettingUIPlugin.h"
#include "TimeOfDay.h"
#include "WarnPrompt.h"

#include <QLocale>

namespace {
const char kSource[] = "NetInfoUIExPlugin/NetInfoUIService";

#define NETINFO_ARG_NULL(function) \
    NETINFO_TRACE("Arg is NULL: %s: %s: %s %d", NetInfoLog::now().constData(), kSource, function, __LINE__)

// Switches that stay on unless the file says otherwise.
bool onUnlessFalse(const QString& value)
{
    return value != QLatin1String("false");
}

// Switches that stay off unless the file says so.
bool onOnlyIfTrue(const QString& value)
{
    return value == QLatin1String("true");
}
}

QString CNetInfoUIService::limitSetting(const char* key) const
{
    return m_pSettingPlugin->getVolumeLimitSettings(QLatin1String(key));
}

void CNetInfoUIService::InitFluxData()
{
    // The data limit is entered in the flux table's second unit.
    if (m_vecFluxUnits.size() < 2) {
        NETINFO_WARN("%s: %s: the data unit table has %d entries; the limit's unit stays unnamed", kSource,
                     "InitFluxData", int(m_vecFluxUnits.size()));
        return;
    }
    const TagUnits& unit = m_vecFluxUnits.at(1);
    emit getXMLUnit(unit.strLangResID.isEmpty() ? unit.strName : tr(unit.strLangResID));
}

void CNetInfoUIService::InitParam()
{
    if (!m_pSettingPlugin) {
        NETINFO_ARG_NULL("InitParam");
        return;
    }
    m_bRecurrence = onUnlessFalse(limitSetting("chkRecurrence"));
    m_bDataLimitOn = onUnlessFalse(limitSetting("chkVolume"));
    m_bTimeLimitOn = onUnlessFalse(limitSetting("chkTimeVolume"));
    m_bDaily = onUnlessFalse(limitSetting("radioDaily"));
    m_bWeekly = onUnlessFalse(limitSetting("radioWeekly"));
    m_bMonthly = onUnlessFalse(limitSetting("radioMonthly"));
    const bool timeBeforeArmed = onUnlessFalse(limitSetting("ShowTimeWarnBefor"));
    const bool timeAfterArmed = onUnlessFalse(limitSetting("ShowTimeWarnAfter"));

    m_bDataWarnBefore = m_bTimeWarnBefore = onOnlyIfTrue(limitSetting("chkWarnbefore"));
    m_bDataWarnAfter = m_bTimeWarnAfter = onOnlyIfTrue(limitSetting("chkWarnAfter"));

    m_iStartWeekDay = limitSetting("startweekdate").toInt();
    m_iStartMonthDay = limitSetting("startmonthdate").toInt();

    InitDate();
    InitDataTimeVolLimit();

    m_bTimeWarnBeforeArmed = timeBeforeArmed;
    m_bTimeWarnAfterArmed = timeAfterArmed;
}

void CNetInfoUIService::InitDate()
{
    if (!m_pSettingPlugin) {
        NETINFO_ARG_NULL("InitDate");
        return;
    }
    m_strStartDate = limitSetting("startdate");
    if (m_strStartDate.isEmpty()) {
        m_bStartInFuture = false;
        m_startTime = QTime();
        return;
    }
    const QDate startDate = QDate::fromString(m_strStartDate, QStringLiteral("yyyy-MM-dd"));
    if (!startDate.isValid())
        NETINFO_TRACE("%s: %s: %s: QDate Invalid", NetInfoLog::now().constData(), kSource, "InitDate");
    // An invalid date has no day number; Qt 4 compared it as day 0.
    const qint64 startDay = startDate.isValid() ? startDate.toJulianDay() : 0;
    m_bStartInFuture = startDay > QDate::currentDate().toJulianDay();
    // A date read with a time format: never a valid time, so the start time
    // only acts as a floor of the look-back.
    m_startTime = QTime::fromString(m_strStartDate, QStringLiteral("hh:mm:ss"));
}

void CNetInfoUIService::InitDataTimeVolLimit()
{
    if (!m_pSettingPlugin) {
        NETINFO_ARG_NULL("InitDataTimeVolLimit");
        return;
    }
    if (m_bDataVolumeLimit) {
        // Read as a 32-bit signed number and widened without its sign.
        m_ullDataLimit = quint64(quint32(limitSetting("SizeVolume").toInt(nullptr, 10)));
        m_uWarnPercentage = limitSetting("WarnBeforPercentage").toUInt(nullptr, 10);
    }
    if (m_bTimeVolumeLimit)
        m_ullTimeLimit = quint64(quint32(limitSetting("SizeTimeVolume").toInt(nullptr, 10)));
}

unsigned int CNetInfoUIService::OperationPersent(long double used)
{
    if (m_uWarnPercentage == 0 || m_ullDataLimit == 0)
        return 0;
    const long double ratio = used / static_cast<long double>(m_ullDataLimit);
    const long double threshold = static_cast<long double>(m_uWarnPercentage) / 100;
    if (ratio >= threshold && ratio < 1.0L)
        return 1;
    if (ratio < threshold) {
        // Back under the threshold (say, after a larger limit): warn again.
        m_bDataWarnBeforeShown = false;
        m_bDataWarnAfterArmed = true;
        m_bDataWarnBeforeArmed = true;
    }
    return 0;
}

unsigned int CNetInfoUIService::TimeOperationPersent(long double used, unsigned long long limit)
{
    // Neither input is ever set, so time has no early warning.
    if (m_iTimeWarnPercentage == 0 || m_iTimeWarnBlock != 0)
        return 0;
    const long double ratio = used / static_cast<long double>(limit);
    const long double threshold = static_cast<long double>(m_iTimeWarnPercentage) / 100;
    return ratio >= threshold ? 1 : 0;
}

void CNetInfoUIService::UpdateNewPeriodTipInfo()
{
    if (!m_bRecurrence)
        return;
    // Weekly and monthly periods watch the next longer record.
    if (m_bDaily)
        UpdatePeriodFields(m_dailyData, m_dailySnapshot);
    else if (m_bWeekly)
        UpdatePeriodFields(m_monthlyData, m_monthlySnapshot);
    else
        UpdatePeriodFields(m_yearlyData, m_yearlySnapshot);
}

void CNetInfoUIService::UpdatePeriodFields(NetInfoData oldRecord, NetInfoData newRecord)
{
    const bool newPeriod = qint64(newRecord.ullDuration) > qint64(oldRecord.ullDuration);
    if (!newPeriod)
        return;
    if (m_bTimeWarnBefore && m_bDataWarnBefore) {
        m_bTimeWarnBeforeArmed = true;
        m_bDataWarnBeforeShown = false;
        m_bDataWarnBeforeArmed = true;
    }
    if (m_bTimeWarnAfter && m_bDataWarnAfter) {
        m_bTimeWarnAfterArmed = true;
        m_bDataWarnAfterArmed = true;
    }
}

QTime CNetInfoUIService::GetBeforeNowThreeMonthlyTime()
{
    const QDate back = TimeOfDay::threeMonthsBack(QDate::currentDate());
    const QString text = QLocale::system().toString(back, QLocale::ShortFormat);
    return TimeOfDay::later(QTime::fromString(text, QStringLiteral("hh:mm:ss")), m_startTime);
}

void CNetInfoUIService::UpdateTreeItems()
{
    if (!m_bRecurrence)
        ShowSpecHistroy();
    else if (m_bDaily)
        ShowDaily();
    else if (m_bWeekly)
        ShowWeekly();
    else
        ShowMonthly();
}

void CNetInfoUIService::ShowDaily()
{
    showPeriod(&CNetInfoUIService::ShowDailyDataVolumeLimit, &CNetInfoUIService::ShowDailyTimeVolumeLimit);
}

void CNetInfoUIService::ShowWeekly()
{
    showPeriod(&CNetInfoUIService::ShowWeeklyDataVolumeLimit, &CNetInfoUIService::ShowWeeklyTimeVolumeLimit);
}

void CNetInfoUIService::ShowMonthly()
{
    showPeriod(&CNetInfoUIService::ShowMonthlyDataVolumeLimit, &CNetInfoUIService::ShowMonthlyTimeVolumeLimit);
}

void CNetInfoUIService::ShowSpecHistroy()
{
    showPeriod(&CNetInfoUIService::ShowSpecHistroyDataVolumeLimit,
               &CNetInfoUIService::ShowSpecHistroyTimeVolumeLimit);
}

void CNetInfoUIService::showPeriod(void (CNetInfoUIService::*data)(), void (CNetInfoUIService::*time)())
{
    if (m_bDataVolumeLimit)
        (this->*data)();
    if (m_bTimeVolumeLimit)
        (this->*time)();
}

void CNetInfoUIService::ShowDailyDataVolumeLimit()
{
    showDataVolumeLimit(m_dailyData);
}

void CNetInfoUIService::ShowWeeklyDataVolumeLimit()
{
    showDataVolumeLimit(m_weeklyData);
}

void CNetInfoUIService::ShowMonthlyDataVolumeLimit()
{
    showDataVolumeLimit(m_monthlyData);
}

void CNetInfoUIService::ShowSpecHistroyDataVolumeLimit()
{
    // Only the look-back wants the dialog before it touches the bar.
    if (!m_pWarnPrompt) {
        NETINFO_ARG_NULL("ShowSpecHistroyDataVolumeLimit");
        return;
    }
    showDataVolumeLimit(m_specHistoryData);
}

void CNetInfoUIService::ShowDailyTimeVolumeLimit()
{
    showTimeVolumeLimit(m_dailyData);
}

void CNetInfoUIService::ShowWeeklyTimeVolumeLimit()
{
    showTimeVolumeLimit(m_weeklyData);
}

void CNetInfoUIService::ShowMonthlyTimeVolumeLimit()
{
    showTimeVolumeLimit(m_monthlyData);
}

void CNetInfoUIService::ShowSpecHistroyTimeVolumeLimit()
{
    showTimeVolumeLimit(m_specHistoryData);
}

void CNetInfoUIService::showDataVolumeLimit(const NetInfoData& record)
{
    long double used = 0;
    if (m_vecFluxUnits.size() >= 2 && m_vecFluxUnits.at(1).iValue != 0)
        used = static_cast<long double>(record.ullUpData + record.ullDownData) / m_vecFluxUnits.at(1).iValue;
    warnAboutData(ShowDataColorPrompt(used));
}

void CNetInfoUIService::showTimeVolumeLimit(const NetInfoData& record)
{
    warnAboutTime(ShowTimeColorPrompt(static_cast<long double>(record.ullDuration)));
}
