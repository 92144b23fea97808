// Usage limits: the limit settings as the view holds them, the period the
// usage is measured over, and the per-period refresh of the limit display.
#include "NetInfoUIService.h"

#include "NetInfoLog.h"
#include "NetInfoSettingUIPlugin.h"
#include "WarnPrompt.h"

#include <QLocale>

namespace {
const char kSource[] = "NetInfoUIExPlugin/NetInfoUIService";

#define NETINFO_ARG_NULL(function)                                                                           \
    NETINFO_TRACE("Arg is NULL: %s: %s: %s %d", NetInfoLog::now().constData(), kSource, function, __LINE__)
} // namespace

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
    const auto read = [this](const char* key) { return limitSetting(key); };
    m_limits.loadSwitches(read);
    InitDate();
    InitDataTimeVolLimit();
    m_limits.armTimeWarningsFromStore(read);
}

void CNetInfoUIService::InitDate()
{
    if (!m_pSettingPlugin) {
        NETINFO_ARG_NULL("InitDate");
        return;
    }
    if (!m_limits.loadStartDate(limitSetting("startdate"), QDate::currentDate()))
        NETINFO_TRACE("%s: %s: %s: QDate Invalid", NetInfoLog::now().constData(), kSource, "InitDate");
}

void CNetInfoUIService::InitDataTimeVolLimit()
{
    if (!m_pSettingPlugin) {
        NETINFO_ARG_NULL("InitDataTimeVolLimit");
        return;
    }
    m_limits.loadLimits(
        [this](const char* key) { return limitSetting(key); }, m_bDataVolumeLimit, m_bTimeVolumeLimit);
}

unsigned int CNetInfoUIService::OperationPersent(long double used)
{
    return m_limits.dataShare(used);
}

unsigned int CNetInfoUIService::TimeOperationPersent(long double used, unsigned long long limit)
{
    return m_limits.timeShare(used, limit);
}

void CNetInfoUIService::UpdateNewPeriodTipInfo()
{
    const view::LimitPeriod period = m_limits.watchedPeriod();
    if (period != view::LimitPeriod::LookBack)
        UpdatePeriodFields(m_snapshot.record(period), m_snapshot.kept(period));
}

void CNetInfoUIService::UpdatePeriodFields(NetInfoData oldRecord, NetInfoData newRecord)
{
    m_limits.newPeriod(oldRecord.ullDuration, newRecord.ullDuration);
}

QTime CNetInfoUIService::GetBeforeNowThreeMonthlyTime()
{
    return m_limits.lookBackStart(QDate::currentDate(), QLocale::system());
}

void CNetInfoUIService::UpdateTreeItems()
{
    switch (m_limits.shownPeriod()) {
    case view::LimitPeriod::LookBack:
        ShowSpecHistroy();
        break;
    case view::LimitPeriod::Daily:
        ShowDaily();
        break;
    case view::LimitPeriod::Weekly:
        ShowWeekly();
        break;
    default:
        ShowMonthly();
        break;
    }
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
    showPeriod(
        &CNetInfoUIService::ShowMonthlyDataVolumeLimit, &CNetInfoUIService::ShowMonthlyTimeVolumeLimit);
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
    showDataVolumeLimit(m_snapshot.record(view::LimitPeriod::Daily));
}

void CNetInfoUIService::ShowWeeklyDataVolumeLimit()
{
    showDataVolumeLimit(m_snapshot.record(view::LimitPeriod::Weekly));
}

void CNetInfoUIService::ShowMonthlyDataVolumeLimit()
{
    showDataVolumeLimit(m_snapshot.record(view::LimitPeriod::Monthly));
}

void CNetInfoUIService::ShowSpecHistroyDataVolumeLimit()
{
    // Only the look-back wants the dialog before it touches the bar.
    if (!m_pWarnPrompt) {
        NETINFO_ARG_NULL("ShowSpecHistroyDataVolumeLimit");
        return;
    }
    showDataVolumeLimit(m_snapshot.record(view::LimitPeriod::LookBack));
}

void CNetInfoUIService::ShowDailyTimeVolumeLimit()
{
    showTimeVolumeLimit(m_snapshot.record(view::LimitPeriod::Daily));
}

void CNetInfoUIService::ShowWeeklyTimeVolumeLimit()
{
    showTimeVolumeLimit(m_snapshot.record(view::LimitPeriod::Weekly));
}

void CNetInfoUIService::ShowMonthlyTimeVolumeLimit()
{
    showTimeVolumeLimit(m_snapshot.record(view::LimitPeriod::Monthly));
}

void CNetInfoUIService::ShowSpecHistroyTimeVolumeLimit()
{
    showTimeVolumeLimit(m_snapshot.record(view::LimitPeriod::LookBack));
}

void CNetInfoUIService::showDataVolumeLimit(const NetInfoData& record)
{
    const qint64 factor = m_vecFluxUnits.size() >= 2 ? m_vecFluxUnits.at(1).iValue : 0;
    const unsigned int state = ShowDataColorPrompt(
        view::UsageLimitPolicy::fluxUnits(record.ullUpData + record.ullDownData, factor));
    if (!m_pMainWidget) {
        NETINFO_ARG_NULL("showDataVolumeLimit");
        return;
    }
    if (const char* key = m_limits.dataWarning(state))
        setShowWarnDlg(m_pMainWidget, tr(QLatin1String(key)));
}

void CNetInfoUIService::showTimeVolumeLimit(const NetInfoData& record)
{
    const unsigned int state = ShowTimeColorPrompt(static_cast<long double>(record.ullDuration));
    if (!m_pMainWidget) {
        NETINFO_ARG_NULL("showTimeVolumeLimit");
        return;
    }
    if (const char* key = m_limits.timeWarning(state))
        setShowWarnDlg(m_pMainWidget, tr(QLatin1String(key)));
}
