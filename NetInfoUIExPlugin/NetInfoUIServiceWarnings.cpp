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

// A bar repaints only when its fill or colour moved; the text rides along.
void CNetInfoUIService::paintBar(LwProgressBar* bar, const view::LimitBar& state, const QString& text)
{
    const QColor color = progressColor(QLatin1String(state.colorName));
    const bool changed = bar->color() != color || bar->value() != state.value
        || bar->maximum() != state.maximum || bar->text() != text;
    if (!changed)
        return;
    bar->setColor(color);
    bar->setText(text);
    bar->setValue(state.value);
    bar->setMaximum(state.maximum);
    bar->update();
}

unsigned int CNetInfoUIService::ShowDataColorPrompt(long double used)
{
    const qint64 factor = m_vecFluxUnits.size() >= 2 ? m_vecFluxUnits.at(1).iValue : 0;
    const long double usedBytes = used * factor;
    const QString text = CommonUtils::SpeedFluxToString(
        static_cast<unsigned long long>(usedBytes), m_vecFluxUnits, QStringLiteral("NetInfoUIExPlugin"));
    if (!m_pDataProgress || !featureConfig())
        return 0;
    const view::LimitBar bar = m_limits.dataBar(used, factor);
    paintBar(m_pDataProgress, bar, text);
    return bar.state;
}

unsigned int CNetInfoUIService::ShowTimeColorPrompt(long double used)
{
    // A time of day, so it wraps after 24 hours.
    const QString text = TimeOfDay::hoursMinutes(TimeOfDay::truncatedSeconds(used)) + QLatin1Char(' ')
        + tr(QStringLiteral("IDS_UNIT_HOURS"));
    if (!m_pTimeProgress || !featureConfig())
        return 0;
    const view::LimitBar bar = m_limits.timeBar(used);
    paintBar(m_pTimeProgress, bar, text);
    return bar.state;
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
        QObject* notify
            = container->GetPlugin(QLatin1String(HostIds::NotifyServicePlugin), HostIds::NotifyServiceKind);
        container->GetPlugin(QLatin1String(HostIds::ConnectionTarget), HostIds::ConnectionKind);
        if (notify)
            m_pNotifyService = qobject_cast<INotifyService*>(notify);
    }
    if (m_pNotifyService)
        m_pNotifyService->Notify(QLatin1String(HostIds::ConnectionTarget), HostIds::EventDisconnect, 0, 0);
}
