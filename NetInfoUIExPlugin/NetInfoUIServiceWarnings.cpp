// Usage warnings: the bars' colours and figures, the once-per-period warning
// dialog and the request to disconnect.
#include "NetInfoUIService.h"

#include "LwProgressBar.h"
#include "NetInfoConfigParse.h"
#include "NetInfoLog.h"
#include "NetInfoUILogic.h"
#include "TimeOfDay.h"
#include "WarnPrompt.h"

#include "CommonUtils.h"
#include "HostIds.h"
#include "INotifyService.h"
#include "IPluginContainer.h"
#include "Startup.h"

namespace {
const char kSource[] = "NetInfoUIExPlugin/NetInfoUIService";

void paintBar(LwProgressBar* bar, const QColor& color, const QString& text, long double value,
              long double maximum)
{
    bar->setColor(color);
    bar->setText(text);
    bar->setValue(value);
    bar->setMaximum(maximum);
    bar->update();
}
}

NetInfoConfigParse* CNetInfoUIService::featureConfig() const
{
    return m_pLogic ? m_pLogic->configParser() : nullptr;
}

QColor CNetInfoUIService::progressColor(const QString& name) const
{
    const QVector<NetInfoProgressColor>& colors = featureConfig()->progressColors();
    if (colors.isEmpty())
        return QColor(255, 255, 255, 0);
    QColor color;
    for (const NetInfoProgressColor& entry : colors) {
        if (entry.strName == name)
            color = entry.color;
    }
    return color;
}

unsigned int CNetInfoUIService::ShowDataColorPrompt(long double used)
{
    const qint64 factor = m_vecFluxUnits.size() >= 2 ? m_vecFluxUnits.at(1).iValue : 0;
    const long double usedBytes = used * factor;
    const QString text = CommonUtils::SpeedFluxToString(static_cast<unsigned long long>(usedBytes), m_vecFluxUnits,
                                                        QStringLiteral("NetInfoUIExPlugin"));
    if (!m_pDataProgress || !featureConfig())
        return 0;

    if (!m_bDataLimitOn) {
        const long double limit = static_cast<long double>(m_ullDataLimit);
        paintBar(m_pDataProgress, progressColor(QStringLiteral("NoWarningColor")), text, limit, limit);
        return 0;
    }

    m_iDataState = static_cast<int>(OperationPersent(used));
    const long double remaining = static_cast<long double>(m_ullDataLimit) - used;
    const long double maximum = static_cast<long double>(m_ullDataLimit * quint64(factor));
    unsigned int state = 0;
    QString colorName = QStringLiteral("NoWarningColor");
    if (m_iDataState == 1) {
        state = 1;
        colorName = QStringLiteral("BeforeWarningColor");
    } else if (remaining <= 0) {
        state = 2;
        colorName = QStringLiteral("ReachedWarningColor");
    }
    paintBar(m_pDataProgress, progressColor(colorName), text, usedBytes, maximum);
    return state;
}

unsigned int CNetInfoUIService::ShowTimeColorPrompt(long double used)
{
    // A time of day, so it wraps after 24 hours.
    const QString text = TimeOfDay::hoursMinutes(TimeOfDay::truncatedSeconds(used)) + QLatin1Char(' ')
                         + tr(QStringLiteral("IDS_UNIT_HOURS"));
    if (!m_pTimeProgress || !featureConfig())
        return 0;

    if (!m_bTimeLimitOn) {
        const long double limit = static_cast<long double>(m_ullTimeLimit);
        paintBar(m_pTimeProgress, progressColor(QStringLiteral("NoWarningColor")), text, limit, limit);
        return 0;
    }

    m_iTimeState = static_cast<int>(TimeOperationPersent(used, m_ullTimeLimit));
    const quint64 limitSeconds = m_ullTimeLimit * 3600;
    const long double remaining = static_cast<long double>(limitSeconds) - used;
    const long double maximum = static_cast<long double>(limitSeconds);
    const bool inWarningBlock = m_iTimeWarnBlock != 0 && !(remaining > m_iTimeWarnBlock);
    if ((m_iTimeState == 1 || inWarningBlock) && remaining > 0) {
        paintBar(m_pTimeProgress, progressColor(QStringLiteral("BeforeWarningColor")), text, used, maximum);
        return 1;
    }
    if (remaining <= 0) {
        paintBar(m_pTimeProgress, progressColor(QStringLiteral("ReachedWarningColor")), text, used, maximum);
        return 2;
    }
    paintBar(m_pTimeProgress, progressColor(QStringLiteral("NoWarningColor")), text, used, maximum);
    return 0;
}

void CNetInfoUIService::warnAboutData(unsigned int state)
{
    if (!m_pMainWidget) {
        NETINFO_TRACE("Arg is NULL: %s: %s: %s %d", NetInfoLog::now().constData(), kSource, "warnAboutData",
                      __LINE__);
        return;
    }
    if (state == 1 && m_bDataWarnBefore && m_bDataWarnBeforeArmed) {
        m_bDataWarnBeforeShown = true;
        m_bDataWarnBeforeArmed = false;
        setShowWarnDlg(m_pMainWidget, tr(QStringLiteral("IDS_BOX_WARNBEFORE")));
    } else if (state == 2 && m_bDataWarnAfter && m_bDataWarnAfterArmed) {
        m_bDataWarnAfterArmed = false;
        setShowWarnDlg(m_pMainWidget, tr(QStringLiteral("IDS_BOX_WARNAFTER")));
    } else if (state == 2 && !m_bDataWarnAfter && m_bDataWarnBefore && !m_bDataWarnBeforeShown) {
        // Someone who asked only for the early warning still gets it once
        // when usage jumps straight past the limit.
        m_bDataWarnBeforeArmed = false;
        m_bDataWarnBeforeShown = true;
        setShowWarnDlg(m_pMainWidget, tr(QStringLiteral("IDS_BOX_WARNBEFORE")));
    }
}

void CNetInfoUIService::warnAboutTime(unsigned int state)
{
    if (!m_pMainWidget) {
        NETINFO_TRACE("Arg is NULL: %s: %s: %s %d", NetInfoLog::now().constData(), kSource, "warnAboutTime",
                      __LINE__);
        return;
    }
    if (state == 1 && m_bTimeWarnBefore && m_bTimeWarnBeforeArmed) {
        m_bTimeWarnBeforeArmed = false;
        setShowWarnDlg(m_pMainWidget, tr(QStringLiteral("IDS_BOX_TIMEWARNBEFORE")));
    } else if (state == 2 && m_bTimeWarnAfter && m_bTimeWarnAfterArmed) {
        m_bTimeWarnAfterArmed = false;
        setShowWarnDlg(m_pMainWidget, tr(QStringLiteral("IDS_BOX_TIMEWARNAFTER")));
    }
}

void CNetInfoUIService::setShowWarnDlg(QWidget* parent, QString text)
{
    if (!m_pWarnPrompt && !parent)
        return;
    if (m_pWarnPrompt)
        m_pWarnPrompt->ShowWarnDlg(parent, text, m_bConnected);
}

void CNetInfoUIService::onSelectDisconnectDialup()
{
    IPluginContainer* container = Startup::GetPluginContainer();
    if (container) {
        QObject* notify = container->GetPlugin(QLatin1String(HostIds::NotifyServicePlugin), HostIds::NotifyServiceKind);
        container->GetPlugin(QLatin1String(HostIds::ConnectionTarget), HostIds::ConnectionKind);
        if (notify)
            m_pNotifyService = qobject_cast<INotifyService*>(notify);
    }
    if (m_pNotifyService)
        m_pNotifyService->Notify(QLatin1String(HostIds::ConnectionTarget), HostIds::EventDisconnect, 0, 0);
}
