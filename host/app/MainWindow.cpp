#include "MainWindow.h"

#include "AllowancePanel.h"
#include "CommonUtils.h"
#include "HistoryWindow.h"

#include <QActionGroup>
#include <QApplication>
#include <QDockWidget>
#include <QEvent>
#include <QIcon>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>

namespace {
constexpr int kSettleMs = 200;
}

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent)
{
    setObjectName(QStringLiteral("NetInfo_MainWindow"));
    // The desktop's icon theme knows the installed icon; the build tree keeps its own.
    setWindowIcon(QIcon::fromTheme(QStringLiteral("netinfo"),
        QIcon(CommonUtils::GetPluginLibraryPath()
            + QStringLiteral("/share/icons/hicolor/256x256/apps/netinfo.png"))));
    resize(900, 560);

    m_pViewArea = new QWidget(this);
    m_pViewArea->setObjectName(QStringLiteral("NetInfo_ViewArea"));
    m_pViewArea->installEventFilter(this);
    setCentralWidget(m_pViewArea);

    m_pStatusDock = new QDockWidget(this);
    m_pStatusDock->setObjectName(QStringLiteral("NetInfo_StatusDock"));
    m_pStatusDock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
    m_pStatusDock->hide();
    addDockWidget(Qt::RightDockWidgetArea, m_pStatusDock);
    m_pAllowanceDock = new QDockWidget(this);
    m_pAllowanceDock->setObjectName(QStringLiteral("NetInfo_AllowanceDock"));
    m_pAllowanceDock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
    m_pAllowancePanel = new AllowancePanel(AllowanceSources::user(), m_pAllowanceDock);
    m_pAllowanceDock->setWidget(m_pAllowancePanel);
    addDockWidget(Qt::RightDockWidgetArea, m_pAllowanceDock);

    m_pToolsMenu = menuBar()->addMenu(QString());
    m_pSettingsAction = m_pToolsMenu->addAction(QString());
    m_pSettingsAction->setObjectName(QStringLiteral("NetInfo_SettingsAction"));
    m_pSettingsAction->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Comma));
    connect(m_pSettingsAction, &QAction::triggered, this, &MainWindow::settingsRequested);
    m_pInterfacesAction = m_pToolsMenu->addAction(QString());
    m_pInterfacesAction->setObjectName(QStringLiteral("NetInfo_CountedInterfacesAction"));
    connect(m_pInterfacesAction, &QAction::triggered, this, &MainWindow::countedInterfacesRequested);
    m_pBackgroundAction = m_pToolsMenu->addAction(QString());
    m_pBackgroundAction->setObjectName(QStringLiteral("NetInfo_BackgroundAction"));
    m_pBackgroundAction->setVisible(false);
    connect(m_pBackgroundAction, &QAction::triggered, this, &MainWindow::backgroundRecordingRequested);
    m_pHistoryAction = m_pToolsMenu->addAction(QString());
    m_pHistoryAction->setObjectName(QStringLiteral("NetInfo_HistoryAction"));
    connect(m_pHistoryAction, &QAction::triggered, this, &MainWindow::showHistory);
    m_pToolsMenu->addSeparator();
    m_pQuitAction = m_pToolsMenu->addAction(QString());
    m_pQuitAction->setShortcut(QKeySequence::Quit);
    connect(m_pQuitAction, &QAction::triggered, qApp, &QApplication::closeAllWindows);

    m_pLanguageMenu = menuBar()->addMenu(QString());
    m_pLanguageMenu->setObjectName(QStringLiteral("NetInfo_LanguageMenu"));
    m_pLanguageGroup = new QActionGroup(this);
    m_pLanguageGroup->setExclusive(true);
    connect(m_pLanguageGroup, &QActionGroup::triggered, this,
        [this](QAction* action) { emit languageRequested(action->data().toString()); });
    m_pHelpMenu = menuBar()->addMenu(QString());
    m_pAboutAction = m_pHelpMenu->addAction(QString());
    m_pAboutAction->setObjectName(QStringLiteral("NetInfo_AboutAction"));
    connect(m_pAboutAction, &QAction::triggered, this, &MainWindow::aboutRequested);
    m_pRecordingLabel = new QLabel(this);
    m_pRecordingLabel->setObjectName(QStringLiteral("NetInfo_RecordingState"));
    statusBar()->addWidget(m_pRecordingLabel, 1);
    retranslate();

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

void MainWindow::setLanguages(const QList<QPair<QString, QString>>& languages)
{
    for (QAction* action : m_pLanguageGroup->actions())
        delete action;
    for (const auto& [code, name] : languages) {
        QAction* action = m_pLanguageMenu->addAction(name);
        action->setObjectName(QStringLiteral("NetInfo_Language_") + code);
        action->setData(code);
        action->setCheckable(true);
        m_pLanguageGroup->addAction(action);
    }
}

void MainWindow::setCurrentLanguage(const QString& code)
{
    for (QAction* action : m_pLanguageGroup->actions())
        action->setChecked(action->data().toString() == code);
}

void MainWindow::setSource(bool simulated, const QString& interfaceName)
{
    m_bSimulated = simulated;
    m_strInterface = interfaceName;
    // Demo figures are not in the ledger: the limit panel would contradict them.
    m_pAllowanceDock->setVisible(!simulated);
    m_pAllowancePanel->setServiceMonth(simulated ? nullptr : statisticsServiceMonth);
    retranslate();
}

void MainWindow::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QMainWindow::changeEvent(event);
}

void MainWindow::setRecordingState(const QString& text, const QString& problem)
{
    m_pRecordingLabel->setText(problem.isEmpty() ? text : QStringLiteral("%1 \u2014 %2").arg(text, problem));
    m_pRecordingLabel->setToolTip(problem);
    // A problem is meant to be seen, not only read in a log.
    m_pRecordingLabel->setStyleSheet(problem.isEmpty() ? QString() : QStringLiteral("color: #b00020;"));
}

void MainWindow::setBackgroundOffered(bool offered)
{
    m_pBackgroundAction->setVisible(offered);
}

void MainWindow::showHistory()
{
    if (!m_pHistoryWindow) {
        const AllowanceSources sources = AllowanceSources::user();
        m_pHistoryWindow
            = new HistoryWindow(sources.ledgerPath, sources.limitFile, sources.hostSettingsFile, this);
        m_pHistoryWindow->setAttribute(Qt::WA_DeleteOnClose);
        m_pHistoryWindow->resize(760, 420);
    }
    m_pHistoryWindow->reload();
    m_pHistoryWindow->show();
    m_pHistoryWindow->raise();
    m_pHistoryWindow->activateWindow();
}

void MainWindow::retranslate()
{
    // The desktop appends the application's name to every window title.
    setWindowTitle(m_bSimulated ? tr("simulated figures") : m_strInterface);
    m_pStatusDock->setWindowTitle(tr("Connection"));
    m_pToolsMenu->setTitle(tr("&Tools"));
    m_pSettingsAction->setText(tr("&Settings..."));
    m_pInterfacesAction->setText(tr("&Counted interfaces\u2026"));
    m_pBackgroundAction->setText(tr("&Keep counting in the background"));
    m_pHistoryAction->setText(tr("&History\u2026"));
    m_pAllowanceDock->setWindowTitle(tr("Data limit"));
    m_pQuitAction->setText(tr("&Quit"));
    // Language names stay in their own script, so anyone can find theirs.
    m_pLanguageMenu->setTitle(tr("&Language"));
    m_pHelpMenu->setTitle(tr("&Help"));
    m_pAboutAction->setText(tr("&About NetInfo"));
    emit retranslated();
}
