#include "NetInfoUIService.h"

#include "NetInfoGraphConfigParse.h"
#include "NetInfoGraphWidget.h"
#include "NetInfoLog.h"
#include "NetInfoSettingUILogic.h"
#include "NetInfoSettingUIPlugin.h"
#include "NetInfoUILogic.h"
#include "WarnPrompt.h"

#include "Change.h"
#include "CommonUtils.h"
#include "HostIds.h"
#include "IMainFrameUIService.h"
#include "INotifyService.h"
#include "IPluginContainer.h"
#include "Startup.h"

#include <QFormLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QPixmap>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <QWidget>

namespace {
const char kSource[] = "NetInfoUIExPlugin/NetInfoUIService";
}

CNetInfoUIService* CNetInfoUIService::m_pInstance = nullptr;

CNetInfoUIService* CNetInfoUIService::instance()
{
    if (!m_pInstance)
        m_pInstance = new CNetInfoUIService;
    return m_pInstance;
}

void CNetInfoUIService::Destroy()
{
    if (!m_pInstance)
        return;
    m_pInstance->OnDestroy();
    delete m_pInstance;
    m_pInstance = nullptr;
}

CNetInfoUIService::CNetInfoUIService()
    : QObject(nullptr)
{
    NETINFO_TRACE("%s: %s called", kSource, "CNetInfoUIService");
}

CNetInfoUIService::~CNetInfoUIService()
{
    NETINFO_TRACE("%s: %s called", kSource, "~CNetInfoUIService");
}

QString CNetInfoUIService::tr(QString key)
{
    return Change::tr(key, QStringLiteral("NetInfoUIExPlugin"));
}

int CNetInfoUIService::Init()
{
    NETINFO_TRACE("%s: %s: called", kSource, "Init");
    m_pTopLevel = GetWigetTopLevel();

    m_pLimitRow = new QWidget;
    m_pLimitArea = new QWidget;
    m_pLimitLayout = new QVBoxLayout(m_pLimitArea);
    m_pLimitRowLayout = new QHBoxLayout(m_pLimitRow);
    m_pLimitMsgLabel = new QLabel(m_pLimitArea);
    m_pDataVolumeLabel = new QLabel(m_pLimitArea);
    m_pTimeVolumeLabel = new QLabel(m_pLimitArea);

    m_pLogic = NetInfoUILogic::Instance();
    m_pSettingPlugin = NetInfoSettingUIPlugin::GetInstance();
    if (m_pSettingPlugin)
        connect(
            this, &CNetInfoUIService::getXMLUnit, m_pSettingPlugin, &NetInfoSettingUIPlugin::ongetXMLUnit);

    translateCachedLabels();

    if (m_pLogic && m_pSettingPlugin) {
        m_pLogic->Init();
        m_pLogic->GetFluxUnitData(m_vecFluxUnits);
        m_pLogic->GetSpeedUnitData(m_vecSpeedUnits);
        rebuildRows();
        InitFluxData();
        m_bDataVolumeLimit = m_pLogic->IsFunctionEnable(QStringLiteral("DATAVOLUMELIMIT"));
        m_bTimeVolumeLimit = m_pLogic->IsFunctionEnable(QStringLiteral("TIMEVOLUMELIMIT"));
        InitParam();
        connect(m_pLogic, &NetInfoUILogic::statisticsChanged, this, &CNetInfoUIService::onStatisticsChanged);
        // The bridge has no such slot, so this connection is refused and
        // ResetAllData() reaches nobody; resets never rely on it.
        connect(this, SIGNAL(ResetAllData()), m_pLogic, SLOT(onResetButtonClicked()));
    }
    if (m_pSettingPlugin)
        connect(m_pSettingPlugin, &NetInfoSettingUIPlugin::netInfoSettingsChanged, this,
            &CNetInfoUIService::onNetInfoSettingsChanged);

    createMainWidget();
    createRightClickActions();
    return 1;
}

void CNetInfoUIService::translateCachedLabels()
{
    m_strSpeed = tr(QStringLiteral("IDS_TREE_SPEED"));
    m_strData = tr(QStringLiteral("IDS_TREE_DATA"));
    m_strTime = tr(QStringLiteral("IDS_TREE_TIME_TRANSFER"));
    m_strUploaded = tr(QStringLiteral("IDS_TREE_UPLOADED_DATA"));
    m_strDownloaded = tr(QStringLiteral("IDS_TREE_DOWNLOADED_DATA"));
    m_strLastResetCaption = tr(QStringLiteral("IDS_TREE_TIME_LASTRESET"));
    rebuildRows();
}

void CNetInfoUIService::rebuildRows()
{
    m_rows = view::TreeRows(
        { m_strSpeed, m_strData, m_strTime, m_strUploaded, m_strDownloaded, m_strLastResetCaption },
        m_vecSpeedUnits, m_vecFluxUnits, [](unsigned long long value, const QVector<TagUnits>& units) {
            return CommonUtils::SpeedFluxToString(value, units, QStringLiteral("NetInfoUIExPlugin"));
        });
}

int CNetInfoUIService::ShowWindow(QWidget* parent, QRect& rect)
{
    m_rcLast = rect;
    if (updateStoredStatistics() != 0)
        NETINFO_TRACE("%s: %s: Failed to get the Daily,Monthly ,yearly stats ", kSource, "ShowWindow");
    else
        NETINFO_TRACE("%s: %s: Daily,Monthly ,yearly stats updated", kSource, "ShowWindow");

    if (m_pMainWidget) {
        m_pMainWidget->setParent(parent);
        m_pMainWidget->resize(rect.right() - rect.left() + 1, rect.bottom() - rect.top() + 1);
        m_pMainWidget->move(rect.topLeft());
        m_pMainWidget->setContentsMargins(4, 0, 4, 0);
        m_pMainWidget->setAttribute(Qt::WA_MouseTracking);
        m_pMainWidget->show();
    }

    if (m_pLogic && m_pTree && (m_bDataVolumeLimit || m_bTimeVolumeLimit)) {
        m_pTree->setColumnWidth(0, m_iColumnWidth);
        m_pTree->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
        m_pTree->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    }
    return 1;
}

int CNetInfoUIService::DoModal()
{
    ShowWindow(nullptr, m_rcLast);
    return 0;
}

int CNetInfoUIService::Hide()
{
    if (m_pMainWidget)
        m_pMainWidget->hide();
    return 1;
}

int CNetInfoUIService::FitSize(QRect& rect)
{
    if (m_pMainWidget && m_pTree) {
        m_pMainWidget->resize(rect.size());
        m_pMainWidget->move(rect.topLeft());
        m_pTree->setColumnWidth(0, m_iColumnWidth);
        m_pTree->setMinimumWidth(1);
        m_pTree->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
        m_pTree->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    }
    return 1;
}

int CNetInfoUIService::Notify(unsigned int msg, unsigned int param1, unsigned int)
{
    NETINFO_TRACE("%s: %s: %s: called", NetInfoLog::now().constData(), kSource, "Notify");
    switch (msg) {
    case HostIds::MsgLanguageChanged:
        translateCachedLabels();
        updateStoredStatistics();
        updateStatisticsStrings();
        updateTransferStrings();
        updateDataVolumeStrings();
        updateRightClickItems();
        setSpeedLanguage();
        if (m_pNoteItem)
            m_pNoteItem->setText(0, QStringLiteral("     ") + tr(QStringLiteral("IDS_NOTES")));
        if (m_pSettingPlugin)
            m_pSettingPlugin->SetLanguage();
        // Widths measured in the old language no longer apply.
        m_iColumnWidth = 280;
        enableScroll();
        if (m_pTree) {
            m_pTree->setColumnWidth(0, 280);
            m_pTree->setMinimumWidth(1);
        }
        if (m_pWarnPrompt)
            m_pWarnPrompt->SettingLanguage();
        InitFluxData();
        if (m_pSettingPlugin)
            m_pSettingPlugin->InitNetInfoSetting();
        break;
    case HostIds::MsgRefit:
        enableScroll();
        break;
    case HostIds::MsgConnectionStatus: {
        const bool connected = param1 == HostIds::StatusConnected || param1 == HostIds::StatusConnectedAlt;
        if (param1 != m_iConnectState) {
            m_iConnectState = param1;
            if (connected) {
                // A new connection may warn about data use again.
                m_limits.rearmData();
            }
        }
        m_bConnected = connected;
        if (m_pWarnPrompt)
            m_pWarnPrompt->updateDialog(m_bConnected);
        break;
    }
    case HostIds::MsgCreateStatusPanel:
        CreateNetInfoWidget();
        break;
    default:
        break;
    }
    return 0;
}

void CNetInfoUIService::CreateNetInfoWidget()
{
    // A panel asked for again replaces one that never reached a host.
    if (!m_bStatPanelHanded)
        delete m_pStatPanel;
    m_bStatPanelHanded = false;
    auto* panel = new QWidget;
    auto* layout = new QFormLayout;
    QLabel* names[6];
    QLabel* values[6];
    for (int i = 0; i < 6; ++i) {
        names[i] = new QLabel;
        values[i] = new QLabel;
    }

    static const char* const nameIds[6] = { "StatisticsData_DurationName", "StatisticsData_UpSpeedName",
        "StatisticsData_DownloadspeedName", "StatisticsData_DataSentName", "StatisticsData_DataReceivedName",
        "StatisticsData_TotalDataName" };
    static const char* const valueIds[6]
        = { "StatisticsData_Duration", "StatisticsData_UpSpeed", "StatisticsData_Downloadspeed",
              "StatisticsData_DataSent", "StatisticsData_DataReceived", "StatisticsData_TotalData" };
    layout->setSpacing(5);
    for (int i = 0; i < 6; ++i) {
        names[i]->setObjectName(QLatin1String(nameIds[i]));
        values[i]->setObjectName(QLatin1String(valueIds[i]));
        layout->addRow(names[i], values[i]);
    }
    panel->setLayout(layout);
    // Opaque, so that a value repainted every second does not make the host's
    // frame around the panel (a dock's title, say) paint itself again too.
    panel->setAutoFillBackground(true);

    m_pStatPanel = panel;
    m_pStatLayout = layout;
    m_pDurationNameLabel = names[0];
    m_pUpSpeedNameLabel = names[1];
    m_pDownSpeedNameLabel = names[2];
    m_pDataSentNameLabel = names[3];
    m_pDataReceivedNameLabel = names[4];
    m_pTotalDataNameLabel = names[5];
    m_pDurationLabel = values[0];
    m_pUpSpeedLabel = values[1];
    m_pDownSpeedLabel = values[2];
    m_pDataSentLabel = values[3];
    m_pDataReceivedLabel = values[4];
    m_pTotalDataLabel = values[5];
    // The host owns the panel once it is handed over and may delete it at
    // any time; the live path must then stop writing into it.
    connect(panel, &QObject::destroyed, this, [this, panel] {
        if (m_pStatPanel != panel)
            return;
        m_pStatPanel = nullptr;
        m_pStatLayout = nullptr;
        m_pDurationNameLabel = m_pUpSpeedNameLabel = m_pDownSpeedNameLabel = nullptr;
        m_pDataSentNameLabel = m_pDataReceivedNameLabel = m_pTotalDataNameLabel = nullptr;
        m_pDurationLabel = m_pUpSpeedLabel = m_pDownSpeedLabel = nullptr;
        m_pDataSentLabel = m_pDataReceivedLabel = m_pTotalDataLabel = nullptr;
    });

    setSpeedLanguage();
    onStatisticsChanged(0, 0, 0, 0, QStringLiteral(" "));

    IPluginContainer* container = Startup::GetPluginContainer();
    if (!container)
        return;
    QObject* service
        = container->GetPlugin(QLatin1String(HostIds::NotifyServicePlugin), HostIds::NotifyServiceKind);
    m_pNotifyService = qobject_cast<INotifyService*>(service);
    if (m_pNotifyService) {
        m_pNotifyService->Notify(QLatin1String(HostIds::StatusPanelTarget), HostIds::EventStatusPanel,
            reinterpret_cast<quintptr>(panel), 0);
        m_bStatPanelHanded = true;
    }
}

QWidget* CNetInfoUIService::GetWigetTopLevel()
{
    IPluginContainer* container = Startup::GetPluginContainer();
    if (!container)
        return nullptr;
    QObject* frame = container->GetPlugin(QLatin1String(HostIds::MainFramePlugin), HostIds::MainFrameKind);
    auto* service = qobject_cast<IMainFrameUIService*>(frame);
    return service ? service->GetTopLevelWidget() : nullptr;
}

bool CNetInfoUIService::isPluginAvailable(QString name)
{
    NETINFO_TRACE("%s : %s: %s:  Entered", NetInfoLog::now().constData(), kSource, "isPluginAvailable");
    IPluginContainer* container = Startup::GetPluginContainer();
    const bool available = container && container->IsPluginAvailable(name) != 0;
    NETINFO_TRACE("%s: %s: %s: Exit", NetInfoLog::now().constData(), kSource, "isPluginAvailable");
    return available;
}

QIcon CNetInfoUIService::setIcon(QString path)
{
    if (QGuiApplication::layoutDirection() != Qt::RightToLeft)
        return QIcon(QPixmap(path));
    // Only the horizontal sense flips; arrows keep pointing up or down.
    return QIcon(QPixmap::fromImage(QImage(path).mirrored(true, false)));
}

QString CNetInfoUIService::GetModuleName()
{
    if (m_pLogic && (m_bDataVolumeLimit || m_bTimeVolumeLimit))
        return tr(QStringLiteral("IDS_SETTING_NAME"));
    return QString();
}

bool CNetInfoUIService::IsActiveSetting()
{
    return m_bSettingActive;
}

bool CNetInfoUIService::ShowSettingDialog(QWidget* parent, QRect& rect)
{
    if (!m_pSettingPlugin)
        return true;
    m_pSettingPlugin->ShowNetInfoSettingDlg(parent, rect);
    m_bSettingActive = true;
    return true;
}

bool CNetInfoUIService::OnClickSettingOkButton()
{
    if (!m_pSettingPlugin)
        return true;
    // A refused save keeps the page up so the user can correct it.
    if (!m_pSettingPlugin->SaveNetInfoSettings())
        return false;
    m_bSettingActive = false;
    if (QWidget* page = m_pSettingPlugin->GetPageWidget())
        page->setParent(nullptr);
    return true;
}

bool CNetInfoUIService::OnClickSettingCancelButton()
{
    if (!m_pSettingPlugin)
        return true;
    m_pSettingPlugin->CancelNetInfoSetting();
    m_bSettingActive = false;
    if (QWidget* page = m_pSettingPlugin->GetPageWidget())
        page->setParent(nullptr);
    return true;
}

bool CNetInfoUIService::HideSetting()
{
    if (!m_pSettingPlugin)
        return true;
    return m_pSettingPlugin->HideNetInfoSetting();
}

void CNetInfoUIService::unSDKRegisterEvent()
{
    NETINFO_TRACE("%s: %s called", kSource, "unSDKRegisterEvent");
    if (m_pLogic)
        NetInfoUILogic::UnregSDK();
    NETINFO_TRACE("%s: %s called", kSource, "unSDKRegisterEvent");
}

void CNetInfoUIService::OnDestroy()
{
    // Items of switched-off transfer rows never joined the tree, and the
    // limit area waits for the limit panel to adopt it: the widget tree
    // does not own them.
    for (QTreeWidgetItem* item : { m_pTransferNode, m_pTransferTimeItem, m_pUploadNode, m_pUploadSpeedItem,
             m_pUploadDataItem, m_pDownloadNode, m_pDownloadSpeedItem, m_pDownloadDataItem }) {
        if (item && !item->parent() && !item->treeWidget())
            delete item;
    }
    m_pTransferNode = m_pTransferTimeItem = m_pUploadNode = m_pUploadSpeedItem = nullptr;
    m_pUploadDataItem = m_pDownloadNode = m_pDownloadSpeedItem = m_pDownloadDataItem = nullptr;
    if (m_pLimitRow && !m_pLimitRow->parent())
        delete m_pLimitRow;
    if (m_pLimitArea && !m_pLimitArea->parent())
        delete m_pLimitArea;
    m_pLimitRow = m_pLimitArea = nullptr;
    m_pLimitMsgLabel = m_pDataVolumeLabel = m_pTimeVolumeLabel = nullptr;
    m_pLimitLayout = nullptr;
    m_pLimitRowLayout = nullptr;

    delete m_pWarnPrompt;
    m_pWarnPrompt = nullptr;
    m_pDataProgress = m_pTimeProgress = nullptr;
    m_pResetButton = m_pSetLimitButton = nullptr;
    // With "SHOWGRAPH" off the graph never joined the widget tree.
    if (m_pGraph && !m_pGraph->parent())
        delete m_pGraph;
    m_pGraph = nullptr;

    // A panel that no host took is still ours.
    if (!m_bStatPanelHanded)
        delete m_pStatPanel;

    delete m_pMainWidget;
    m_pMainWidget = nullptr;
    m_pTree = nullptr;

    NetInfoSettingUIPlugin::ReleaseInstance();
    NetInfoSettingUILogic::Destroy();
    NetInfoGraphConfigParse::OnDestroy();
    m_pSettingPlugin = nullptr;
    NetInfoUILogic::Destroy();
    m_pLogic = nullptr;
}
