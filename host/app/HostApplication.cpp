#include "HostApplication.h"

#include "Change.h"
#include "CommonUtils.h"
#include "HostIds.h"
#include "INotify.h"
#include "IPluginContainer.h"
#include "ISettingUIPlugin.h"
#include "IUIPlugin.h"
#include "SettingsDialog.h"
#include "Startup.h"
#include "simulated/SimulatedBackend.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QMessageBox>
#include <QTextStream>

#include <algorithm>

bool HostOptions::parse(const QApplication& app, HostOptions& options, QString& message)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Network usage of the mobile-broadband connection."));
    parser.addHelpOption();
    const QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                        QStringLiteral("Save a PNG of the main window to <file> and quit."),
                                        QStringLiteral("file"));
    const QCommandLineOption quitAfter(QStringLiteral("quit-after"),
                                       QStringLiteral("Quit after <seconds>."), QStringLiteral("seconds"));
    const QCommandLineOption verbose(QStringLiteral("verbose"), QStringLiteral("Print the plug-in's trace lines."));
    parser.addOption(screenshot);
    parser.addOption(quitAfter);
    parser.addOption(verbose);
    parser.process(app);

    if (parser.isSet(verbose))
        QLoggingCategory::setFilterRules(QStringLiteral("netinfo.*.debug=true"));

    options.screenshotPath = parser.value(screenshot);
    if (parser.isSet(quitAfter)) {
        bool ok = false;
        options.quitAfterSeconds = parser.value(quitAfter).toDouble(&ok);
        if (!ok || options.quitAfterSeconds < 0) {
            message = QStringLiteral("--quit-after needs a number of seconds, not \"%1\"").arg(parser.value(quitAfter));
            return false;
        }
    }
    const QString platform = QGuiApplication::platformName();
    options.headless = platform == QLatin1String("offscreen") || platform == QLatin1String("minimal");
    if (options.headless) {
        if (options.screenshotPath.isEmpty())
            options.screenshotPath = defaultScreenshotPath();
        if (options.quitAfterSeconds < 0)
            options.quitAfterSeconds = HostApplication::HeadlessRunSeconds;
    } else if (!options.screenshotPath.isEmpty() && options.quitAfterSeconds < 0) {
        options.quitAfterSeconds = HostApplication::HeadlessRunSeconds;
    }
    return true;
}

QString HostOptions::defaultScreenshotPath()
{
    return CommonUtils::GetPluginLibraryPath() + QStringLiteral("/screenshots/netinfo.png");
}

void HostApplication::prepareEnvironment()
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")
        && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
}

HostApplication::HostApplication(const HostOptions& options, QObject* parent)
    : QObject(parent)
    , m_options(options)
{
    m_services.mainFrameService()->SetTopLevelWidget(&m_window);
    m_services.mainFrameService()->SetCentralWidget(m_window.viewArea());
    connect(m_services.notifyService(), &NotifyService::notified, this, &HostApplication::onNotified);
    connect(&m_watcher, &ConnectionWatcher::statusChanged, this, &HostApplication::onConnectionStatus);
    connect(&m_window, &MainWindow::viewAreaResized, this, &HostApplication::onViewAreaResized);
    connect(&m_window, &MainWindow::settingsRequested, this, &HostApplication::openSettings);
    connect(&m_window, &MainWindow::viewAreaSettled, this, [this] {
        if (m_bRunning)
            m_module.notify()->Notify(HostIds::MsgRefit, 0, 0);
    });
    m_quitTimer.setSingleShot(true);
    connect(&m_quitTimer, &QTimer::timeout, this, &HostApplication::finishRun);
    connect(qApp, &QCoreApplication::aboutToQuit, this, &HostApplication::shutdown);
}

HostApplication::~HostApplication()
{
    shutdown();
}

void HostApplication::reportFatal(const QString& message)
{
    QTextStream(stderr) << "netinfo: " << message << '\n';
    if (!m_options.headless)
        QMessageBox::critical(nullptr, QStringLiteral("NetInfo"), message);
}

int HostApplication::start()
{
    if (!Change::LoadLanguage(QStringLiteral("en")))
        QTextStream(stderr) << "netinfo: no English translation under "
                            << QDir::toNativeSeparators(CommonUtils::GetPluginLibraryPath() + QStringLiteral("/translations"))
                            << "; showing text keys\n";

    if (!m_module.load()) {
        reportFatal(QStringLiteral("Cannot start the network information view.\n%1").arg(m_module.errorString()));
        return 1;
    }
    IUIPlugin* plugin = m_module.uiPlugin();
    INotify* notify = m_module.notify();
    // Plug-ins ask the container by name which others are loaded.
    if (IPluginContainer* container = Startup::GetPluginContainer())
        container->RegisterPlugin(plugin->GetPluginName(), plugin->GetPluginType(), plugin->GetPluginName(),
                                  m_module.instance());

    if (velt::SimulatedBackend* backend = velt::SimulatedBackend::current())
        backend->startDemo();
    if (!m_watcher.start())
        QTextStream(stderr) << "netinfo: the SDK refused the connection watcher; status changes are not passed on\n";

    plugin->Init();
    m_bRunning = true;
    // The panel comes back through the notification service (event 4116).
    notify->Notify(HostIds::MsgCreateStatusPanel, 0, 0);

    // Lay the window out first so the view gets its real rectangle.
    m_window.show();
    QRect rect = m_window.viewRect();
    plugin->ShowWindow(m_window.viewArea(), rect);

    if (m_options.quitAfterSeconds >= 0)
        m_quitTimer.start(int(m_options.quitAfterSeconds * 1000));
    return 0;
}

void HostApplication::shutdown()
{
    if (!m_bRunning)
        return;
    m_bRunning = false;
    m_quitTimer.stop();
    m_watcher.stop();
    if (velt::SimulatedBackend* backend = velt::SimulatedBackend::current())
        backend->stopDemo();
    IUIPlugin* plugin = m_module.uiPlugin();
    plugin->UnSDKRegisterEvent();
    plugin->OnDestroy();
    if (IPluginContainer* container = Startup::GetPluginContainer())
        container->UnregisterPlugin(plugin->GetPluginName(), plugin->GetPluginType());
}

void HostApplication::onNotified(const QString& target, uint code, quintptr param1, quintptr)
{
    if (code == HostIds::EventStatusPanel && target == QLatin1String(HostIds::StatusPanelTarget)) {
        m_window.setStatusPanel(reinterpret_cast<QWidget*>(param1));
    } else if (code == HostIds::EventOpenSettings) {
        // Queued: the plug-in's button handler returns before the dialog runs.
        QMetaObject::invokeMethod(this, &HostApplication::openSettings, Qt::QueuedConnection);
    } else if (code == HostIds::EventMinimumWidth && target == QLatin1String(HostIds::MainFrameTarget)) {
        // The view needs room for its tree beside the graph's legend.
        const int width = int(std::min<quintptr>(param1, quintptr(m_window.maximumWidth())));
        m_window.viewArea()->setMinimumWidth(width);
    } else if (code == HostIds::EventDisconnect) {
        // The simulated link drops; the tick lets the watcher see it.
        if (velt::SimulatedBackend* backend = velt::SimulatedBackend::current()) {
            backend->stopDemo();
            backend->setConnected(false);
            backend->tick();
        }
    }
}

void HostApplication::onConnectionStatus(unsigned int status)
{
    if (m_bRunning)
        m_module.notify()->Notify(HostIds::MsgConnectionStatus, status, 0);
}

void HostApplication::openSettings()
{
    if (!m_bRunning)
        return;
    QObject* service = nullptr;
    auto* page = m_module.uiPlugin()->QueryInterface(HostIds::ViewServiceId, &service)
                     ? qobject_cast<ISettingUIPlugin*>(service)
                     : nullptr;
    SettingsDialog dialog(&m_window);
    dialog.addPage(page);
    if (dialog.pageCount() == 0) {
        CommonUtils::ShowMessage(QMessageBox::Information, &m_window, dialog.windowTitle(),
                                 tr("The network information view has no settings."), QStringLiteral("IDS_OK"),
                                 QString(), QString(), true, Qt::Dialog, nullptr, QString(), false);
        return;
    }
    dialog.exec();
}

void HostApplication::onViewAreaResized(const QRect& rect)
{
    if (!m_bRunning)
        return;
    QRect fit = rect;
    m_module.uiPlugin()->FitSize(fit);
}

void HostApplication::finishRun()
{
    if (!m_options.screenshotPath.isEmpty()) {
        const QString path = QFileInfo(m_options.screenshotPath).absoluteFilePath();
        QDir().mkpath(QFileInfo(path).absolutePath());
        if (m_window.grab().save(path, "PNG")) {
            QTextStream(stdout) << path << '\n';
        } else {
            QTextStream(stderr) << "netinfo: cannot write the screenshot " << path << '\n';
            QCoreApplication::exit(1);
            return;
        }
    }
    QCoreApplication::quit();
}
