// The tree's context menu, the confirmed reset of the stored statistics and
// the speed graph's place beside the tree.
#include "NetInfoUIService.h"

#include "NetInfoGraphWidget.h"
#include "NetInfoLog.h"
#include "NetInfoUILogic.h"

#include "CommonUtils.h"

#include <QAction>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QSplitter>
#include <QTreeWidget>

namespace {
const char kSource[] = "NetInfoUIExPlugin/NetInfoUIService";

void trace(const char* function, const char* what)
{
    NETINFO_TRACE("%s: %s: %s: %s", NetInfoLog::now().constData(), kSource, function, what);
}
} // namespace

void CNetInfoUIService::createRightClickActions()
{
    // Without the tree the actions would have no owner and no use.
    if (!m_pTree) {
        trace("createRightClickActions", "Memory not allocated for a Widget");
        return;
    }
    m_pActionResetAll = new QAction(tr(QStringLiteral("IDS_CLEAR_VOLUME")), m_pTree);
    m_pActionExpandAll = new QAction(tr(QStringLiteral("IDS_EXPAND_ALL")), m_pTree);
    m_pActionCollapseAll = new QAction(tr(QStringLiteral("IDS_COLLAPSE_ALL")), m_pTree);
    if (!m_pActionResetAll || !m_pActionExpandAll || !m_pActionCollapseAll) {
        trace("createRightClickActions", "Memory not allocated for a Widget");
        return;
    }
    m_pActionResetAll->setObjectName(QStringLiteral("NetInfoUIPlugin_ActionResetAll"));
    m_pActionExpandAll->setObjectName(QStringLiteral("NetInfoUIPlugin_ActionExpandAll"));
    m_pActionCollapseAll->setObjectName(QStringLiteral("NetInfoUIPlugin_ActionCollapseAll"));
    connect(m_pActionResetAll, &QAction::triggered, this, &CNetInfoUIService::resetStatistics);
    connect(m_pActionExpandAll, &QAction::triggered, this, &CNetInfoUIService::expandAll);
    connect(m_pActionCollapseAll, &QAction::triggered, this, &CNetInfoUIService::collapseAll);
}

void CNetInfoUIService::updateRightClickItems()
{
    if (m_pActionResetAll)
        m_pActionResetAll->setText(tr(QStringLiteral("IDS_CLEAR_VOLUME")));
    if (m_pActionExpandAll)
        m_pActionExpandAll->setText(tr(QStringLiteral("IDS_EXPAND_ALL")));
    if (m_pActionCollapseAll)
        m_pActionCollapseAll->setText(tr(QStringLiteral("IDS_COLLAPSE_ALL")));
}

void CNetInfoUIService::showTreeContextMenu(QPoint point)
{
    if (!m_pTree || !m_pActionResetAll || !m_pActionExpandAll || !m_pActionCollapseAll || !m_pLogic) {
        trace("showTreeContextMenu", "Invalid Args");
        return;
    }
    // The tree may go while the menu waits, and the menu with it.
    QPointer<QMenu> menu = new QMenu(m_pTree);
    if (m_pLogic->IsFunctionEnable(QStringLiteral("STATISTICS")))
        menu->addAction(m_pActionResetAll);
    menu->addAction(m_pActionExpandAll);
    menu->addAction(m_pActionCollapseAll);
    menu->exec(m_pTree->viewport()->mapToGlobal(point));
    delete menu.data();
}

void CNetInfoUIService::expandAll()
{
    trace("expandAll", "Entered");
    if (m_pTree)
        m_pTree->expandAll();
    trace("expandAll", "Exit");
}

void CNetInfoUIService::collapseAll()
{
    trace("collapseAll", "Entered");
    if (m_pTree)
        m_pTree->collapseAll();
    trace("collapseAll", "Exit");
}

void CNetInfoUIService::resetStatistics()
{
    onResetButtonClicked();
}

void CNetInfoUIService::onResetButtonClicked()
{
    trace("onResetButtonClicked", "called");
    const int answer = CommonUtils::ShowMessage(QMessageBox::Question, m_pMainWidget,
        tr(QStringLiteral("IDS_CONFIRM")), tr(QStringLiteral("IDS_RESET_QUERY")), QStringLiteral("IDS_YES"),
        QStringLiteral("IDS_NO"), QString(), true, Qt::Window | Qt::WindowTitleHint | Qt::CustomizeWindowHint,
        nullptr, QString(), true);
    if (answer != QMessageBox::Ok || !m_pLogic)
        return;

    // A failing reset is not detected here; the refresh shows what the host has.
    m_pLogic->ResetStatistics();
    updateStoredStatistics();
    // Fresh counts may warn about data use again. The live figures stay:
    // they belong to the current connection.
    m_limits.rearmData();
}

void CNetInfoUIService::createGraphWidget()
{
    trace("createGraphWidget", "Entered");
    m_pGraph = new GraphWidget;
    if (!m_pGraph || !m_pLogic || !m_pSplitter) {
        trace("createGraphWidget", "Memory not allocated for a widget");
    } else {
        m_pGraph->setGraphMinmumWidth(225);
        // Decided once: an unplaced graph is never shown nor fed.
        if (m_pLogic->IsFunctionEnable(QStringLiteral("SHOWGRAPH"))) {
            m_pGraph->setObjectName(QStringLiteral("NetInfoUIPlugin_WidgetGraph"));
            m_pSplitter->addWidget(m_pGraph);
        }
    }
    // GraphWidget has no such signal, so Qt refuses this connection; the
    // graph's button reaches onResetButtonClicked directly.
    connect(m_pGraph, SIGNAL(ResetButtonClicked()), this, SLOT(onResetButtonClicked()));
    trace("createGraphWidget", "Exit");
}
