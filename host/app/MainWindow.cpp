#include "MainWindow.h"

#include <QDockWidget>
#include <QEvent>
#include <QMenuBar>

namespace {
constexpr int kSettleMs = 200;
}

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent)
{
    setWindowTitle(QStringLiteral("NetInfo"));
    setObjectName(QStringLiteral("NetInfo_MainWindow"));
    resize(900, 560);

    m_pViewArea = new QWidget(this);
    m_pViewArea->setObjectName(QStringLiteral("NetInfo_ViewArea"));
    m_pViewArea->installEventFilter(this);
    setCentralWidget(m_pViewArea);

    m_pStatusDock = new QDockWidget(tr("Connection"), this);
    m_pStatusDock->setObjectName(QStringLiteral("NetInfo_StatusDock"));
    m_pStatusDock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
    m_pStatusDock->hide();
    addDockWidget(Qt::RightDockWidgetArea, m_pStatusDock);

    QAction* settings = menuBar()->addMenu(tr("&Tools"))->addAction(tr("&Settings..."));
    settings->setObjectName(QStringLiteral("NetInfo_SettingsAction"));
    settings->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Comma));
    connect(settings, &QAction::triggered, this, &MainWindow::settingsRequested);

    m_settleTimer.setSingleShot(true);
    m_settleTimer.setInterval(kSettleMs);
    connect(&m_settleTimer, &QTimer::timeout, this, &MainWindow::viewAreaSettled);
}

QRect MainWindow::viewRect() const
{
    return QRect(QPoint(0, 0), m_pViewArea->size());
}

void MainWindow::setStatusPanel(QWidget* panel)
{
    if (!panel || panel == m_pStatusPanel)
        return;
    // The panel's creator may still delete it; QPointer notices.
    m_pStatusPanel = panel;
    m_pStatusDock->setWidget(panel);
    m_pStatusDock->show();
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_pViewArea && event->type() == QEvent::Resize) {
        emit viewAreaResized(viewRect());
        m_settleTimer.start();
    }
    return QMainWindow::eventFilter(watched, event);
}
