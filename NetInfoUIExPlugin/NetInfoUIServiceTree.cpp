// The view's widget hierarchy, the statistics tree and its column-width rule.
#include "NetInfoUIService.h"

#include "ButtonTextFit.h"
#include "GridDelegateLayout.h"
#include "NetInfoLog.h"
#include "NetInfoUILogic.h"
#include "WarnPrompt.h"

#include "CommonUtils.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSplitter>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>
#include <QWidget>

namespace {
const char kSource[] = "NetInfoUIExPlugin/NetInfoUIService";

void logMissing(const char* function, const char* what)
{
    NETINFO_TRACE("%s: %s: %s: %s", NetInfoLog::now().constData(), kSource, function, what);
}
} // namespace

// Each icon is read once per layout direction: re-reading it on every tick
// would also hand the items a new icon each time.
QIcon CNetInfoUIService::treeIcon(const char* name)
{
    if (QGuiApplication::layoutDirection() != m_iconDirection) {
        m_icons.clear();
        m_iconDirection = QGuiApplication::layoutDirection();
    }
    const QString key = QLatin1String(name);
    auto it = m_icons.constFind(key);
    if (it == m_icons.constEnd())
        it = m_icons.insert(key,
            setIcon(
                CommonUtils::GetPluginLibraryPath() + QStringLiteral("/plugins/NetInfoUIExPlugin/") + key));
    return *it;
}

QString CNetInfoUIService::transferLabel()
{
    if (isPluginAvailable(QStringLiteral("WLanPlugin")))
        return tr(QStringLiteral("IDS_DIALUP_TRANSFER")) + QLatin1Char(' ')
            + tr(QStringLiteral("IDS_TREE_TRANSFER"));
    return tr(QStringLiteral("IDS_TREE_TRANSFER"));
}

QString CNetInfoUIService::zeroValue(const QVector<TagUnits>& units)
{
    return CommonUtils::SpeedFluxToString(0, units, QStringLiteral("NetInfoUIExPlugin"));
}

void CNetInfoUIService::createMainWidget()
{
    m_pMainWidget = new QWidget;
    m_pSplitter = new QSplitter;
    m_pMainLayout = new QHBoxLayout(m_pMainWidget);
    m_pWarnPrompt = new WarnPrompt(this);
    if (!m_pMainWidget || !m_pSplitter || !m_pMainLayout || !m_pLogic) {
        logMissing("createMainWidget", "Memory not allocated for a Widget");
        return;
    }

    m_pMainWidget->setObjectName(QStringLiteral("NetInfoUIPlugin_WidgetParent"));
    m_pMainLayout->setObjectName(QStringLiteral("NetInfoUIPlugin_LayoutParent"));
    m_pSplitter->setObjectName(QStringLiteral("NetInfoUIPlugin_SplitterPane"));
    m_pMainLayout->setContentsMargins(3, 8, 3, 8);
    m_pSplitter->setHandleWidth(4);

    connect(m_pSplitter, &QSplitter::splitterMoved, this, &CNetInfoUIService::movedSplitter);
    connect(m_pWarnPrompt, &WarnPrompt::DisConnectDialup, this, &CNetInfoUIService::onSelectDisconnectDialup);

    createLeftWidget();
    createGraphWidget();
    m_pMainLayout->addWidget(m_pSplitter);
}

void CNetInfoUIService::createLeftWidget()
{
    m_pLeftWidget = new QWidget;
    m_pLeftLayout = new QVBoxLayout(m_pLeftWidget);
    if (!m_pLeftWidget || !m_pLeftLayout) {
        logMissing("createLeftWidget", "Memory not allocated for widget");
        return;
    }
    m_pLeftWidget->setObjectName(QStringLiteral("NetInfoUIPlugin_WidgetLeftAreaParent"));
    m_pLeftLayout->setObjectName(QStringLiteral("NetInfoUIPlugin_LayoutVerticalLeft"));
    m_pLeftLayout->setContentsMargins(0, 0, 0, 0);

    createStatisticsWidget();
    createVolumeLimitWidget();

    m_pSplitter->addWidget(m_pLeftWidget);
    m_pSplitter->setSizes({ 365, 500 });

    if (m_pResetButton || m_pSetLimitButton) {
        if (m_pResetButton) {
            const QString text = tr(QStringLiteral("IDS_BTN_RESET"));
            ButtonTextFit::fit(m_pResetButton, text);
            m_pResetButton->setToolTip(text);
        }
        if (m_pSetLimitButton) {
            const QString text = tr(QStringLiteral("IDC_BTN_SETLIMIT"));
            ButtonTextFit::fit(m_pSetLimitButton, text);
            m_pSetLimitButton->setToolTip(text);
        }
    }
}

void CNetInfoUIService::createStatisticsWidget()
{
    m_pTree = new QTreeWidget(m_pLeftWidget);
    m_pDelegate = new GridDelegateLayout(m_pLeftWidget);
    m_pTransferNode = new QTreeWidgetItem;
    m_pTransferTimeItem = new QTreeWidgetItem;
    if (!m_pTree || !m_pLeftLayout || !m_pTransferNode || !m_pTransferTimeItem || !m_pLogic) {
        logMissing("createStatisticsWidget", "Memory not allocated for widget");
        return;
    }

    m_pTree->setObjectName(QStringLiteral("NetInfoUIPlugin_WidgetTree"));
    m_pTree->setColumnCount(1);
    m_pTree->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_pTree, &QWidget::customContextMenuRequested, this, &CNetInfoUIService::showTreeContextMenu);
    m_pTree->setHeaderHidden(true);
    m_pTree->setRootIsDecorated(false);
    m_pTree->setTextElideMode(Qt::ElideNone);
    m_pTree->setSelectionBehavior(QAbstractItemView::SelectItems);
    m_pTree->setItemDelegate(m_pDelegate);
    m_pTree->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_pTree->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);

    m_pTree->addTopLevelItem(m_pTransferNode);
    m_pTransferNode->setExpanded(true);
    m_pTransferNode->setIcon(0, treeIcon("Icon_01"));
    m_pTransferNode->setText(0, transferLabel());

    if (m_pLogic->IsFunctionEnable(QStringLiteral("TRANSFERTIME"))) {
        m_pTransferNode->addChild(m_pTransferTimeItem);
        m_pTransferTimeItem->setIcon(0, treeIcon("Icon_09"));
        m_snapshot.live.duration = QStringLiteral("00:00:00");
        m_pTransferTimeItem->setText(0, view::rowText(m_strTime, m_snapshot.live.duration));
    }

    addUpLoadWidgetStatisticsWidget();
    addDownLoadWidgetStatisticsWidget();
    m_pLeftLayout->addWidget(m_pTree);

    if (!m_pLogic->IsFunctionEnable(QStringLiteral("TRANSFER")))
        m_pTree->topLevelItem(0)->setHidden(true);

    addStatisticsNodeComponets();
}

void CNetInfoUIService::addUpLoadWidgetStatisticsWidget()
{
    m_pUploadNode = new QTreeWidgetItem;
    m_pUploadSpeedItem = new QTreeWidgetItem;
    m_pUploadDataItem = new QTreeWidgetItem;
    addTransferDirection("addUpLoadWidgetStatisticsWidget", m_pUploadNode, m_pUploadSpeedItem,
        m_pUploadDataItem, "TRANSFERUPLOAD", "Icon_02", "IDS_TREE_UPLOAD");
}

void CNetInfoUIService::addDownLoadWidgetStatisticsWidget()
{
    m_pDownloadNode = new QTreeWidgetItem;
    m_pDownloadSpeedItem = new QTreeWidgetItem;
    m_pDownloadDataItem = new QTreeWidgetItem;
    addTransferDirection("addDownLoadWidgetStatisticsWidget", m_pDownloadNode, m_pDownloadSpeedItem,
        m_pDownloadDataItem, "TRANSFERDOWNLOAD", "Icon_03", "IDS_TREE_DOWNLOAD");
}

// Upload and download are twins: a node with a speed and a data row, attached
// only when its switch is on.
void CNetInfoUIService::addTransferDirection(const char* function, QTreeWidgetItem* node,
    QTreeWidgetItem* speedItem, QTreeWidgetItem* dataItem, const char* key, const char* icon,
    const char* labelKey)
{
    if (!m_pTransferNode || !node || !speedItem || !dataItem || !m_pLogic) {
        logMissing(function, "Memory not allocated for widget");
        return;
    }
    if (!m_pLogic->IsFunctionEnable(QLatin1String(key)))
        return;
    m_pTransferNode->addChild(node);
    node->setIcon(0, treeIcon(icon));
    node->setText(0, tr(QLatin1String(labelKey)));
    node->setExpanded(true);
    node->addChild(speedItem);
    speedItem->setIcon(0, treeIcon("Icon_09"));
    speedItem->setText(0, view::rowText(m_strSpeed, zeroValue(m_vecSpeedUnits)));
    node->addChild(dataItem);
    dataItem->setIcon(0, treeIcon("Icon_09"));
    dataItem->setText(0, view::rowText(m_strData, zeroValue(m_vecFluxUnits)));
}

void CNetInfoUIService::addStatisticsNodeComponets()
{
    m_pStatisticsNode = new QTreeWidgetItem(m_pTree);
    m_pLastResetItem = new QTreeWidgetItem(m_pStatisticsNode);
    m_pDailyNode = new QTreeWidgetItem(m_pStatisticsNode);
    m_pDailyUploadedItem = new QTreeWidgetItem(m_pDailyNode);
    m_pDailyDownloadedItem = new QTreeWidgetItem(m_pDailyNode);
    if (!m_pStatisticsNode || !m_pLastResetItem || !m_pDailyNode || !m_pDailyUploadedItem
        || !m_pDailyDownloadedItem || !m_pLogic) {
        logMissing("addStatisticsNodeComponets", "InVal Args");
        return;
    }

    m_pTree->addTopLevelItem(m_pStatisticsNode);
    m_pStatisticsNode->setExpanded(true);
    m_pStatisticsNode->setIcon(0, treeIcon("Icon_04"));
    m_pStatisticsNode->setText(0, tr(QStringLiteral("IDS_TREE_STATISTICS")));

    if (m_pLogic->IsFunctionEnable(QStringLiteral("SHOWRESETSTATISTICS"))) {
        m_snapshot.lastReset.clear();
        m_pLogic->GetLastResetTime(m_snapshot.lastReset);
        m_pLastResetItem->setIcon(0, treeIcon("Icon_09"));
        m_pLastResetItem->setText(0, view::rowText(m_strLastResetCaption, m_snapshot.lastReset));
    } else {
        m_pLastResetItem->setHidden(true);
    }

    // The speed table here is deliberate; the first refresh replaces it.
    addPeriodNode("addStatisticsNodeComponets", m_pDailyNode, m_pDailyUploadedItem, m_pDailyDownloadedItem,
        "STATISTICSDAILY", "Icon_06", "IDS_TREE_DAILY", m_vecSpeedUnits);
    addStatisticsMonthlyNode();
    addStatisticsYearlyNode();

    // Hidden only now, so that its rows are built and refreshed regardless.
    if (!m_pLogic->IsFunctionEnable(QStringLiteral("STATISTICS")))
        m_pTree->topLevelItem(1)->setHidden(true);
}

void CNetInfoUIService::addStatisticsMonthlyNode()
{
    m_pMonthlyNode = new QTreeWidgetItem(m_pStatisticsNode);
    m_pMonthlyUploadedItem = new QTreeWidgetItem(m_pMonthlyNode);
    m_pMonthlyDownloadedItem = new QTreeWidgetItem(m_pMonthlyNode);
    addPeriodNode("addStatisticsMonthlyNode", m_pMonthlyNode, m_pMonthlyUploadedItem,
        m_pMonthlyDownloadedItem, "STATISTICSMONTHLY", "Icon_07", "IDS_TREE_MONTHLY", m_vecFluxUnits);
}

void CNetInfoUIService::addStatisticsYearlyNode()
{
    m_pYearlyNode = new QTreeWidgetItem(m_pStatisticsNode);
    m_pYearlyUploadedItem = new QTreeWidgetItem(m_pYearlyNode);
    m_pYearlyDownloadedItem = new QTreeWidgetItem(m_pYearlyNode);
    addPeriodNode("addStatisticsYearlyNode", m_pYearlyNode, m_pYearlyUploadedItem, m_pYearlyDownloadedItem,
        "STATISTICSYEARLY", "Icon_08", "IDS_TREE_YEARLY", m_vecFluxUnits);
}

// Today, month and year are alike: a node with an uploaded and a downloaded
// row, hidden (but built, and refreshed) when its switch is off.
void CNetInfoUIService::addPeriodNode(const char* function, QTreeWidgetItem* node, QTreeWidgetItem* uploaded,
    QTreeWidgetItem* downloaded, const char* key, const char* icon, const char* labelKey,
    const QVector<TagUnits>& zeroUnits)
{
    if (!node || !uploaded || !downloaded || !m_pLogic) {
        logMissing(function, "InVal Args");
        return;
    }
    if (!m_pLogic->IsFunctionEnable(QLatin1String(key))) {
        node->setHidden(true);
        return;
    }
    node->setIcon(0, treeIcon(icon));
    node->setText(0, tr(QLatin1String(labelKey)));
    node->setExpanded(true);
    uploaded->setIcon(0, treeIcon("Icon_09"));
    uploaded->setText(0, view::rowText(m_strUploaded, zeroValue(zeroUnits)));
    downloaded->setIcon(0, treeIcon("Icon_09"));
    downloaded->setText(0, view::rowText(m_strDownloaded, zeroValue(zeroUnits)));
}

void CNetInfoUIService::addNoteInTree()
{
    if (!m_pTree) {
        logMissing("addNoteInTree", "Memory not allocated for widget");
        return;
    }
    m_pSpacerItem = new QTreeWidgetItem(m_pTree);
    m_pNoteItem = new QTreeWidgetItem(m_pTree);
    if (!m_pLimitArea || !m_pLimitMsgLabel || !m_pSpacerItem || !m_pNoteItem || !m_pLogic
        || !m_pStatisticsNode || !m_pLastResetItem) {
        logMissing("addNoteInTree", "Memory not allocated for widget");
        return;
    }

    if (m_pResetButton)
        m_pResetButton->hide();
    if (m_pSetLimitButton)
        m_pSetLimitButton->hide();
    m_pLimitMsgLabel->hide();
    m_pSpacerItem->setFlags(m_pSpacerItem->flags() & ~(Qt::ItemIsSelectable | Qt::ItemIsEnabled));
    m_pTree->addTopLevelItem(m_pSpacerItem);
    m_pTree->addTopLevelItem(m_pNoteItem);
    m_pNoteItem->setText(0, QStringLiteral("     ") + tr(QStringLiteral("IDS_NOTES")));
    m_pLimitArea->hide();
    m_pTree->setExpandsOnDoubleClick(true);
    if (!m_pLogic->IsFunctionEnable(QStringLiteral("STATISTICSNOTES")))
        m_pNoteItem->setHidden(true);
    if (!m_pLogic->IsFunctionEnable(QStringLiteral("SHOWRESETSTATISTICS")))
        m_pLastResetItem->setHidden(true);
}

void CNetInfoUIService::checkTreeColumnWidth(QTreeWidgetItem* item)
{
    NETINFO_TRACE("%s: %s: %s called", NetInfoLog::now().constData(), kSource, "checkTreeColumnWidth");
    if (!item || !m_pTree)
        return;
    const QVariant fontData = item->data(0, Qt::FontRole);
    const QFont font = fontData.canConvert<QFont>() ? fontData.value<QFont>() : QFont();
    const int textWidth = QFontMetrics(font).horizontalAdvance(item->text(0));
    int ancestors = 0;
    for (QTreeWidgetItem* up = item->parent(); up; up = up->parent())
        ++ancestors;
    const int required = textWidth + m_pTree->indentation() * (ancestors + 2) + 30;
    if (required <= 280)
        return;
    if (required > m_iColumnWidth)
        m_iColumnWidth = required;
    m_pTree->setColumnWidth(0, m_iColumnWidth);
    m_pTree->setMinimumWidth(1);
    m_pTree->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_pTree->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
}

void CNetInfoUIService::enableScroll()
{
    if (!m_pTree)
        return;
    const QMargins margins = m_pTree->contentsMargins();
    m_pTree->setColumnWidth(0, m_pTree->width() - margins.left() - margins.right());
    for (QTreeWidgetItemIterator it(m_pTree); *it; ++it)
        checkTreeColumnWidth(*it);
}

void CNetInfoUIService::movedSplitter(int, int)
{
    if (!m_pTree)
        return;
    m_pTree->setColumnWidth(0, m_iColumnWidth);
    m_pTree->setMinimumWidth(1);
    m_pTree->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_pTree->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
}
