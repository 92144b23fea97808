// The limit panel under the tree: a bar each for data and time, a note, and
// the buttons that reset the counters and open the limit settings.
#include "NetInfoUIService.h"

#include "LwProgressBar.h"
#include "NetInfoLog.h"
#include "NetInfoUILogic.h"

#include "HostIds.h"
#include "INotifyService.h"
#include "IPluginContainer.h"
#include "Startup.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
const char kSource[] = "NetInfoUIExPlugin/NetInfoUIService";

QString redNote(const QString& text)
{
    return QStringLiteral("<font color='red'>") + text + QStringLiteral("</font>");
}
} // namespace

void CNetInfoUIService::createVolumeLimitWidget()
{
    NETINFO_TRACE("%s: %s: %s: Entered", NetInfoLog::now().constData(), kSource, "createVolumeLimitWidget");
    // Init() made the area and its layouts up front; built here only when
    // the view is assembled without it.
    if (!m_pLimitArea)
        m_pLimitArea = new QWidget;
    if (!m_pLimitLayout)
        m_pLimitLayout = new QVBoxLayout(m_pLimitArea);
    if (!m_pLimitRow)
        m_pLimitRow = new QWidget;
    if (!m_pLimitRowLayout)
        m_pLimitRowLayout = new QHBoxLayout(m_pLimitRow);
    if (!m_pLimitMsgLabel)
        m_pLimitMsgLabel = new QLabel(m_pLimitArea);
    m_pResetButton = new QPushButton(m_pLimitRow);
    m_pSetLimitButton = new QPushButton(m_pLimitRow);
    if (!m_pLimitArea || !m_pLimitLayout || !m_pLimitRowLayout || !m_pLimitMsgLabel || !m_pResetButton
        || !m_pSetLimitButton || !m_pLeftLayout || !m_pLogic) {
        NETINFO_TRACE("%s: %s: %s: Memory not allocated for widget", NetInfoLog::now().constData(), kSource,
            "createVolumeLimitWidget");
        return;
    }

    m_pLimitArea->setObjectName(QStringLiteral("NetInfoUIPlugin_WidgetVolumeLimit"));
    m_pLimitArea->setContentsMargins(0, 0, 0, 0);
    m_pLimitLayout->setObjectName(QStringLiteral("NetInfoUIPlugin_LayoutVerticalBox"));
    m_pLimitLayout->setContentsMargins(15, 0, 0, 0);
    m_pLimitLayout->setContentsMargins(0, 0, 0, 0);
    m_pLimitRowLayout->setObjectName(QStringLiteral("NetInfoUIPlugin_LayoutButtonBox"));
    m_pLimitRowLayout->setContentsMargins(0, 0, 0, 0);
    m_pLimitMsgLabel->setObjectName(QStringLiteral("NetInfoUIPlugin_LabelApproxMsg"));
    m_pLimitMsgLabel->setText(redNote(tr(QStringLiteral("IDC_VOLUMENOTES"))));
    m_pLimitMsgLabel->setWordWrap(true);
    if (!m_pLogic->IsFunctionEnable(QStringLiteral("STATISTICSNOTES")))
        m_pLimitMsgLabel->hide();
    m_pResetButton->setObjectName(QStringLiteral("NetInfoUIPlugin_ButtonResetCounter"));
    m_pSetLimitButton->setObjectName(QStringLiteral("NetInfoUIPlugin_ButtonSetLimit"));
    m_pResetButton->setToolTip(tr(QStringLiteral("IDS_BTN_RESET")));
    m_pSetLimitButton->setToolTip(tr(QStringLiteral("IDC_BTN_SETLIMIT")));

    connect(m_pResetButton, &QPushButton::clicked, this, &CNetInfoUIService::onResetButtonClicked);
    connect(m_pSetLimitButton, &QPushButton::clicked, this, &CNetInfoUIService::onSetLimitButtonClicked);
    m_pLimitRowLayout->addWidget(m_pResetButton);
    m_pLimitRowLayout->addWidget(m_pSetLimitButton);
    m_pLimitRowLayout->setSpacing(10);

    addDataVolumeWidget();
    if (!m_bDataVolumeLimit && !m_bTimeVolumeLimit)
        addNoteInTree();
    m_pLimitArea->setFixedHeight(183);

    m_pLimitLayout->addWidget(m_pLimitMsgLabel);
    m_pLimitLayout->addWidget(m_pLimitRow);
    m_pLeftLayout->addWidget(m_pLimitArea);
    NETINFO_TRACE("%s: %s: %s: Exit", NetInfoLog::now().constData(), kSource, "createVolumeLimitWidget");
}

void CNetInfoUIService::addDataVolumeWidget()
{
    if (!m_pDataVolumeLabel)
        m_pDataVolumeLabel = new QLabel(m_pLimitArea);
    if (!m_pTimeVolumeLabel)
        m_pTimeVolumeLabel = new QLabel(m_pLimitArea);
    m_pDataProgress = new LwProgressBar(m_pLimitArea);
    m_pTimeProgress = new LwProgressBar(m_pLimitArea);

    m_pDataVolumeLabel->setObjectName(QStringLiteral("NetInfoUIPlugin_LabelDataVolume"));
    m_pTimeVolumeLabel->setObjectName(QStringLiteral("NetInfoUIPlugin_LabelTimeVolume"));
    m_pDataProgress->setObjectName(QStringLiteral("NetInfoUIPlugin_ProgressDatavolume"));
    m_pTimeProgress->setObjectName(QStringLiteral("NetInfoUIPlugin_ProgressVolume"));
    m_pDataVolumeLabel->setText(tr(QStringLiteral("IDS_STA_TOTALVOLUME")));
    m_pTimeVolumeLabel->setText(tr(QStringLiteral("IDC_STA_TIMEVOLUME")));
    m_pDataProgress->setFixedSize(228, 20);
    m_pTimeProgress->setFixedSize(228, 20);
    // Captions follow the reading direction; the bars stand under them.
    m_pDataVolumeLabel->setAlignment(Qt::AlignLeading | Qt::AlignVCenter);
    m_pTimeVolumeLabel->setAlignment(Qt::AlignLeading | Qt::AlignVCenter);

    m_pLimitLayout->addWidget(m_pDataVolumeLabel);
    m_pLimitLayout->addWidget(m_pDataProgress);
    m_pLimitLayout->addWidget(m_pTimeVolumeLabel);
    m_pLimitLayout->addWidget(m_pTimeProgress);
}

void CNetInfoUIService::updateDataVolumeStrings()
{
    if (m_pDataVolumeLabel)
        m_pDataVolumeLabel->setText(tr(QStringLiteral("IDS_STA_TOTALVOLUME")));
    if (m_pTimeVolumeLabel)
        m_pTimeVolumeLabel->setText(tr(QStringLiteral("IDC_STA_TIMEVOLUME")));
    if (m_pLimitMsgLabel)
        m_pLimitMsgLabel->setText(redNote(tr(QStringLiteral("IDC_VOLUMENOTES"))));
    if (m_pResetButton)
        m_pResetButton->setToolTip(tr(QStringLiteral("IDS_BTN_RESET")));
    if (m_pSetLimitButton)
        m_pSetLimitButton->setToolTip(tr(QStringLiteral("IDC_BTN_SETLIMIT")));
}

void CNetInfoUIService::onSetLimitButtonClicked()
{
    // The host owns the settings dialog; the view only asks for its page.
    if (IPluginContainer* container = Startup::GetPluginContainer()) {
        QObject* notify
            = container->GetPlugin(QLatin1String(HostIds::NotifyServicePlugin), HostIds::NotifyServiceKind);
        container->GetPlugin(QLatin1String(HostIds::SettingsTarget), HostIds::SettingsKind);
        if (notify)
            m_pNotifyService = qobject_cast<INotifyService*>(notify);
    }
    if (m_pNotifyService)
        m_pNotifyService->Notify(QLatin1String(HostIds::SettingsTarget), HostIds::EventOpenSettings, 0, 0);
}

void CNetInfoUIService::onNetInfoSettingsChanged(
    int dataVolume, int timeVolume, bool warnBefore, bool warnExceeds)
{
    m_limits.settings.dataLimit = static_cast<quint64>(static_cast<qint64>(dataVolume));
    m_iSettingDataVolume = dataVolume;
    m_iSettingTimeVolume = timeVolume;
    m_bSettingWarnBefore = warnBefore;
    m_bSettingWarnExceeds = warnExceeds;

    // New limits deserve fresh warnings.
    m_limits.rearmData();

    InitParam();
    updateStoredStatistics();
}
