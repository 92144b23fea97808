#include "HostApplication.h"

#include "AboutDialog.h"
#include "AllowancePanel.h"
#include "Autostart.h"
#include "BackgroundRecording.h"
#include "Change.h"
#include "CommonUtils.h"
#include "CountedInterfacesDialog.h"
#include "HostIds.h"
#include "HostPaths.h"
#include "INotify.h"
#include "IPluginContainer.h"
#include "ISettingUIPlugin.h"
#include "IUIPlugin.h"
#include "SettingsDialog.h"
#include "Startup.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QMenu>
#include <QMessageBox>
#include <QStandardPaths>
#include <QSystemTrayIcon>
#include <QTextStream>

#include <algorithm>
#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

namespace {
const QString kCountedInterfacesKey = QStringLiteral("countedinterfaces");
}

namespace {

// A mistyped name would otherwise count nothing and show zeros: the message
// naming what is absent and what is present, or empty.
QString absentInterfaces(const QStringList& names, const QString& sysClassNet)
{
    QStringList absent;
    for (const QString& name : names) {
        if (name.contains(QLatin1Char('/')) || name.startsWith(QLatin1Char('.'))
            || !QFileInfo::exists(sysClassNet + QLatin1Char('/') + name))
            absent << name;
    }
    if (absent.isEmpty())
        return QString();
    const QStringList present = CountedInterfacesDialog::presentInterfaces(sysClassNet);
    return QStringLiteral("no network interface %1 on this system; present: %2")
        .arg(absent.join(QLatin1String(", ")),
            present.isEmpty() ? QStringLiteral("none") : present.join(QLatin1String(", ")));
}

// Without a display a run saves a screenshot and ends by itself.
void applyRunDefaults(HostOptions& options)
{
    const QString platform = QGuiApplication::platformName();
    options.headless = platform == QLatin1String("offscreen") || platform == QLatin1String("minimal");
    if (options.headless) {
        if (options.screenshotPath.isEmpty())
            options.screenshotPath = HostOptions::defaultScreenshotPath();
        if (options.quitAfterSeconds < 0)
            options.quitAfterSeconds = HostApplication::HeadlessRunSeconds;
    } else if (!options.screenshotPath.isEmpty() && options.quitAfterSeconds < 0) {
        options.quitAfterSeconds = HostApplication::HeadlessRunSeconds;
    }
}

} // namespace

bool HostOptions::parse(
    const QStringList& arguments, HostOptions& options, QString& message, const QString& sysClassNet)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Network usage of the mobile-broadband connection."));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption screenshot(QStringLiteral("screenshot"),
        QStringLiteral("Save a PNG of the main window to <file> and quit."), QStringLiteral("file"));
    const QCommandLineOption quitAfter(
        QStringLiteral("quit-after"), QStringLiteral("Quit after <seconds>."), QStringLiteral("seconds"));
    const QCommandLineOption verbose(
        QStringLiteral("verbose"), QStringLiteral("Print the plug-in's trace lines."));
    const QCommandLineOption simulate(QStringLiteral("simulate"),
        QStringLiteral("Show simulated demo traffic instead of the real connection."));
    const QCommandLineOption interface(QStringLiteral("interface"),
        QStringLiteral("Count the network interface <name>; repeatable (default: "
                       "Tools > Counted interfaces, else the metered links, else "
                       "the default route's)."),
        QStringLiteral("name"));
    QStringList codes;
    for (const auto& language : languages())
        codes << language.first;
    const QCommandLineOption lang(QStringLiteral("lang"),
        QStringLiteral("Show the texts in <language>: %1.").arg(codes.join(QLatin1String(", "))),
        QStringLiteral("language"));
    const QCommandLineOption tray(
        QStringLiteral("tray"), QStringLiteral("Start hidden in the tray (at login)."));
    parser.addOptions({ screenshot, quitAfter, verbose, simulate, interface, lang, tray });
    if (!parser.parse(arguments)) {
        message = parser.errorText();
        return false;
    }
    if (parser.isSet(help))
        parser.showHelp();

    if (parser.isSet(verbose))
        QLoggingCategory::setFilterRules(QStringLiteral("netinfo.*.debug=true"));

    options.screenshotPath = parser.value(screenshot);
    options.startInTray = parser.isSet(tray);
    options.connection.simulate = parser.isSet(simulate);
    options.connection.interfaceNames.clear();
    for (const QString& name : parser.values(interface)) {
        if (name.trimmed().isEmpty()) {
            message = QStringLiteral("--interface needs the name of a network interface");
            return false;
        }
        options.connection.interfaceNames << name.trimmed();
    }
    options.interfacesGiven = parser.isSet(interface);
    if (!options.connection.simulate) {
        message = absentInterfaces(options.connection.interfaceNames, sysClassNet);
        if (!message.isEmpty())
            return false;
    }
    options.language = parser.value(lang);
    if (parser.isSet(lang) && !codes.contains(options.language)) {
        message = QStringLiteral("--lang must be one of %1, not \"%2\"")
                      .arg(codes.join(QLatin1String(", ")), options.language);
        return false;
    }
    if (parser.isSet(quitAfter)) {
        bool ok = false;
        options.quitAfterSeconds = parser.value(quitAfter).toDouble(&ok);
        if (!ok || options.quitAfterSeconds < 0) {
            message = QStringLiteral("--quit-after needs a number of seconds, not \"%1\"")
                          .arg(parser.value(quitAfter));
            return false;
        }
    }
    applyRunDefaults(options);
    return true;
}

QList<QPair<QString, QString>> HostOptions::languages()
{
    return { { QStringLiteral("en"), QStringLiteral("English") },
        { QStringLiteral("zh_CN"), QStringLiteral("简体中文") },
        { QStringLiteral("ar"), QStringLiteral("العربية") } };
}

QString HostOptions::defaultScreenshotPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation)
        + QStringLiteral("/netinfo/screenshots/netinfo.png");
}

void HostApplication::prepareEnvironment()
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")
        && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // Outside a desktop session (ssh, cron, containers) Qt warns on every
    // start that there is no runtime folder; a private one of our own quiets
    // it. One that someone else owns or others can enter is not used.
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR")) {
        const QByteArray dir = "/tmp/netinfo-runtime-" + QByteArray::number(uint(::getuid()));
        ::mkdir(dir.constData(), 0700);
        struct stat info
        {
        };
        if (::lstat(dir.constData(), &info) == 0 && S_ISDIR(info.st_mode) && info.st_uid == ::getuid()
            && (info.st_mode & 077) == 0)
            qputenv("XDG_RUNTIME_DIR", dir);
    }
}

HostApplication::HostApplication(const HostOptions& options, QObject* parent)
    : QObject(parent)
    , m_options(options)
{
    m_window.setLanguages(HostOptions::languages());
    m_services.mainFrameService()->SetTopLevelWidget(&m_window);
    m_services.mainFrameService()->SetCentralWidget(m_window.viewArea());
    connect(m_services.notifyService(), &NotifyService::notified, this, &HostApplication::onNotified);
    connect(&m_connection, &ConnectionLayer::statusChanged, this, &HostApplication::onConnectionStatus);
    connect(&m_connection, &ConnectionLayer::message, this, &HostApplication::showMessage);
    connect(&m_window, &MainWindow::languageRequested, this, &HostApplication::setLanguage);
    connect(&m_window, &MainWindow::viewAreaResized, this, &HostApplication::onViewAreaResized);
    connect(&m_window, &MainWindow::settingsRequested, this, &HostApplication::openSettings);
    connect(&m_window, &MainWindow::viewAreaSettled, this, [this] {
        if (m_bRunning)
            m_module.notify()->Notify(HostIds::MsgRefit, 0, 0);
    });
    connect(
        &m_window, &MainWindow::countedInterfacesRequested, this, &HostApplication::chooseCountedInterfaces);
    connect(&m_window, &MainWindow::backgroundRecordingRequested, this,
        &HostApplication::keepCountingInBackground);
    connect(&m_window, &MainWindow::aboutRequested, this, &HostApplication::showAbout);
    m_quitTimer.setSingleShot(true);
    connect(&m_quitTimer, &QTimer::timeout, this, &HostApplication::finishRun);
    connect(qApp, &QCoreApplication::aboutToQuit, this, &HostApplication::shutdown);
    // A kill, a closed terminal or the end of the session stop through
    // shutdown(), which writes the usage not yet stored.
    connect(&m_stopSignals, &SignalWatcher::received, this, [](int signalNumber) {
        QTextStream(stderr) << "netinfo: " << SignalWatcher::name(signalNumber)
                            << " received; saving and quitting\n";
        QCoreApplication::quit();
    });
    connect(qApp, &QGuiApplication::commitDataRequest, this, [this] {
        shutdown();
        QCoreApplication::quit();
    });
    connect(&m_recordingTimer, &QTimer::timeout, this, &HostApplication::updateRecordingState);
}

HostApplication::~HostApplication()
{
    shutdown();
}

void HostApplication::reportFatal(const QString& message)
{
    QTextStream(stderr) << "netinfo: " << message << '\n';
    if (!m_options.headless)
        CommonUtils::ShowMessage(QMessageBox::Critical, nullptr, QStringLiteral("NetInfo"), message,
            QStringLiteral("IDS_OK"), QString(), QString(), true, Qt::Dialog, nullptr, QString(), false);
}

int HostApplication::start()
{
    if (const QString problem = HostPaths::homeProblem(); !problem.isEmpty()) {
        reportFatal(problem);
        return 2;
    }
    const QString language = m_options.language.isEmpty()
        ? CommonUtils::GetSettings(QStringLiteral("host"), QStringLiteral("language"), QStringLiteral("en"))
              .toString()
        : m_options.language;
    if (!applyLanguage(language, false) && !applyLanguage(QStringLiteral("en"), false))
        QTextStream(stderr) << "netinfo: no translation under "
                            << QDir::toNativeSeparators(
                                   CommonUtils::GetPluginLibraryPath() + QStringLiteral("/translations"))
                            << "; showing text keys\n";

    if (!m_options.connection.simulate) {
        if (!lockInstance())
            return 1;
        m_singleInstance.listen();
    }
    if (!m_module.load()) {
        reportFatal(
            QStringLiteral("Cannot start the network information view.\n%1").arg(m_module.errorString()));
        return 1;
    }
    IUIPlugin* plugin = m_module.uiPlugin();
    // Plug-ins ask the container by name which others are loaded.
    if (IPluginContainer* container = Startup::GetPluginContainer())
        container->RegisterPlugin(
            plugin->GetPluginName(), plugin->GetPluginType(), plugin->GetPluginName(), m_module.instance());

    ConnectionLayer::Options connection = m_options.connection;
    if (!m_options.interfacesGiven)
        connection.interfaceNames
            = CommonUtils::GetSettings(QStringLiteral("host"), kCountedInterfacesKey).toStringList();
    m_connection.start(connection);
    m_window.setSource(
        m_connection.source() == ConnectionLayer::Source::Simulated, m_connection.interfaceName());
    setUpTray();
    startView(!(m_options.startInTray && m_tray->isAvailable()));

    updateRecordingState();
    m_recordingTimer.start(2000);
    checkLimits();
    m_limitTimer.start(10000);
    if (m_options.quitAfterSeconds >= 0)
        m_quitTimer.start(int(m_options.quitAfterSeconds * 1000));
    return 0;
}

bool HostApplication::lockInstance()
{
    // Two instances would both record the same traffic into the ledger.
    const QString dir = HostPaths::userDataDir();
    if (!QDir().mkpath(dir)) {
        const QString reason = QFileInfo(dir).exists() || !QFileInfo(QFileInfo(dir).path()).isDir()
            ? tr("a file is in the way")
            : qt_error_string(errno);
        reportFatal(
            tr("NetInfo cannot create its data folder %1 (%2).").arg(QDir::toNativeSeparators(dir), reason));
        return false;
    }
    m_instanceLock = std::make_unique<QLockFile>(dir + QStringLiteral("/netinfo.lock"));
    m_instanceLock->setStaleLockTime(0);
    errno = 0;
    if (m_instanceLock->tryLock(200))
        return true;
    const int error = errno;
    qint64 pid = 0;
    QString host, app;
    if (m_instanceLock->error() == QLockFile::LockFailedError
        && m_instanceLock->getLockInfo(&pid, &host, &app)) {
        reportFatal(tr("NetInfo is already running (process %1); only one instance can record the "
                       "connection's usage.")
                        .arg(pid));
    } else {
        // Not another instance: the folder cannot be written (full disk, permissions, read-only).
        const QString reason = m_instanceLock->error() == QLockFile::PermissionError
            ? tr("permission denied")
            : (error ? qt_error_string(error) : tr("the lock file cannot be written"));
        reportFatal(tr("NetInfo cannot write in its data folder %1 (%2), so it cannot record the usage.")
                        .arg(QDir::toNativeSeparators(dir), reason));
    }
    m_instanceLock.reset();
    return false;
}

void HostApplication::startView(bool showWindow)
{
    IUIPlugin* plugin = m_module.uiPlugin();
    // Asking for the view service brings it back after an earlier OnDestroy
    // in this process (a restarted host, a new language); the first time it
    // is a no-op.
    plugin->QueryInterface(HostIds::ViewServiceId, nullptr);
    plugin->Init();
    m_bRunning = true;
    // The panel comes back through the notification service (event 4116).
    m_module.notify()->Notify(HostIds::MsgCreateStatusPanel, 0, 0);

    // Lay the window out first so the view gets its real rectangle.
    if (showWindow)
        m_window.show();
    else
        m_window.adjustSize();
    QRect rect = m_window.viewRect();
    plugin->ShowWindow(m_window.viewArea(), rect);
    if (m_uConnectionStatus)
        m_module.notify()->Notify(HostIds::MsgConnectionStatus, m_uConnectionStatus, 0);
}

void HostApplication::stopView()
{
    m_bRunning = false;
    IUIPlugin* plugin = m_module.uiPlugin();
    plugin->UnSDKRegisterEvent();
    plugin->OnDestroy();
}

bool HostApplication::setLanguage(const QString& language)
{
    return applyLanguage(language, true);
}

bool HostApplication::applyLanguage(const QString& language, bool remember)
{
    if (!Change::LoadLanguage(language))
        return false;
    // -reverse asks for a mirrored layout for the whole run, whatever the language.
    QGuiApplication::setLayoutDirection(
        m_options.mirrored || language == QLatin1String("ar") ? Qt::RightToLeft : Qt::LeftToRight);
    // --lang is for one run; only the menu's choice is kept.
    if (remember)
        CommonUtils::SetSettings(QStringLiteral("host"), QStringLiteral("language"), language);
    m_window.setCurrentLanguage(language);
    if (m_bRunning) {
        // The view's language notice does not reach every text it built,
        // so a new view is the one way to show all of them in the new language.
        const bool shown = m_window.isVisible();
        stopView();
        startView(shown);
    }
    return true;
}

void HostApplication::showMessage(const QString& text)
{
    QTextStream(stderr) << "netinfo: " << text << '\n';
    if (m_options.headless)
        return;
    CommonUtils::ShowMessage(QMessageBox::Information, &m_window, QStringLiteral("NetInfo"), text,
        QStringLiteral("IDS_OK"), QString(), QString(), true, Qt::Dialog, nullptr, QString(), false);
}

void HostApplication::updateRecordingState()
{
    if (m_connection.source() == ConnectionLayer::Source::Simulated) {
        m_window.setRecordingState(tr("Simulated figures: nothing is counted"), QString());
        m_window.setBackgroundOffered(false);
        return;
    }
    const velt::RecordingStatus status = m_connection.recordingStatus();
    const QString text = status.recorderRunning && !status.recording
        ? tr("Counting in the background (netinfo-recorder)")
        : tr("Counting while this window is open");
    m_window.setRecordingState(text, status.problem);
    m_window.setBackgroundOffered(!status.recorderRunning);
}

void HostApplication::keepCountingInBackground()
{
    QString message;
    BackgroundRecording::enable(BackgroundRecording::defaults(), message);
    showMessage(message);
    updateRecordingState();
}

void HostApplication::chooseCountedInterfaces()
{
    const QStringList chosen
        = CommonUtils::GetSettings(QStringLiteral("host"), kCountedInterfacesKey).toStringList();
    CountedInterfacesDialog dialog(CountedInterfacesDialog::presentInterfaces(), chosen, &m_window);
    if (dialog.exec() != QDialog::Accepted || dialog.chosen() == chosen)
        return;
    CommonUtils::SetSettings(QStringLiteral("host"), kCountedInterfacesKey, dialog.chosen());
    if (m_options.interfacesGiven) {
        showMessage(
            tr("The counted interfaces apply from the next start; --interface decides for this run."));
        return;
    }
    if (m_connection.source() != ConnectionLayer::Source::Real)
        return;
    // A new backend with the new choice; the view's registration with the SDK stays.
    ConnectionLayer::Options connection = m_options.connection;
    connection.interfaceNames = dialog.chosen();
    m_connection.stop();
    m_connection.start(connection);
    m_window.setSource(false, m_connection.interfaceName());
    updateRecordingState();
}

void HostApplication::shutdown()
{
    if (!m_bRunning)
        return;
    m_quitTimer.stop();
    m_recordingTimer.stop();
    m_limitTimer.stop();
    stopView();
    IUIPlugin* plugin = m_module.uiPlugin();
    // The limit checks and the limit panel read the ledger; closed before the
    // writer's last commit, so that the writer's close folds the journal back
    // into the file.
    m_limitNotices.reset();
    m_window.allowancePanel()->closeLedger();
    m_connection.stop();
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
    } else if (code == HostIds::EventDisconnect && target == QLatin1String(HostIds::ConnectionTarget)) {
        m_connection.disconnectLink();
    }
}

void HostApplication::onConnectionStatus(unsigned int status)
{
    // The measured interface may have been re-chosen with the route.
    m_window.setSource(
        m_connection.source() == ConnectionLayer::Source::Simulated, m_connection.interfaceName());
    m_uConnectionStatus = status;
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
            tr("The network information view has no settings."), QStringLiteral("IDS_OK"), QString(),
            QString(), true, Qt::Dialog, nullptr, QString(), false);
        return;
    }
    dialog.exec();
}

void HostApplication::showAbout()
{
    AboutDialog(&m_window).exec();
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

void HostApplication::setUpTray()
{
    m_tray = std::make_unique<TrayIcon>(
        &m_window, !m_options.headless && QSystemTrayIcon::isSystemTrayAvailable());
    connect(&m_singleInstance, &SingleInstance::showRequested, m_tray.get(), &TrayIcon::showWindow);
    connect(m_tray.get(), &TrayIcon::settingsRequested, this, &HostApplication::openSettings);
    // The history window comes with its own slot on the main window.
    if (m_window.metaObject()->indexOfMethod("showHistory()") >= 0) {
        m_tray->setHistoryAvailable(true);
        connect(m_tray.get(), &TrayIcon::historyRequested, &m_window,
            [this] { QMetaObject::invokeMethod(&m_window, "showHistory"); });
    }
    // Among the other settings, above the separator and Quit.
    QMenu* tools = m_window.toolsMenu();
    const QList<QAction*> toolActions = tools->actions();
    auto* autostart = new QAction(tr("Start in the tray at login"), tools);
    tools->insertAction(
        toolActions.size() >= 2 ? toolActions.at(toolActions.size() - 2) : nullptr, autostart);
    autostart->setObjectName(QStringLiteral("NetInfo_AutostartAction"));
    connect(&m_window, &MainWindow::retranslated, autostart,
        [autostart] { autostart->setText(tr("Start in the tray at login")); });
    autostart->setCheckable(true);
    autostart->setChecked(Autostart::isEnabled());
    connect(autostart, &QAction::toggled, this, [this, autostart](bool on) {
        QString error;
        if (!Autostart::setEnabled(on, error)) {
            showMessage(tr("Cannot change %1: %2").arg(Autostart::entryPath(), error));
            const QSignalBlocker blocker(autostart);
            autostart->setChecked(!on);
        }
    });

    if (m_connection.source() != ConnectionLayer::Source::Real)
        return;
    m_limitNotices = std::make_unique<LimitNotices>(LimitNotices::defaults());
    connect(m_limitNotices.get(), &LimitNotices::statusChanged, m_tray.get(), &TrayIcon::setStatus);
    connect(
        &m_limitNotices->notifier(), &DesktopNotifier::openRequested, m_tray.get(), &TrayIcon::showWindow);
    connect(&m_limitNotices->notifier(), &DesktopNotifier::disconnectRequested, &m_connection,
        &ConnectionLayer::disconnectInterface);
    connect(&m_limitTimer, &QTimer::timeout, this, &HostApplication::checkLimits);
}

void HostApplication::checkLimits()
{
    if (!m_limitNotices)
        return;
    // Only the process that records keeps the warnings' state; the view's
    // dialog is the warning while this application runs, so nothing is sent.
    // Beside a recorder the tray still shows where the period stands.
    if (m_connection.recordingStatus().recording)
        m_limitNotices->refresh(true, m_connection.interfaceName());
    else
        m_limitNotices->refreshStatus();
}
