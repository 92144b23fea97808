// The host's run: services, main window, the plug-in module, the simulated
// SDK's demo traffic, and the plug-in's life cycle in the order it expects.
#pragma once

#include "ConnectionLayer.h"
#include "HostServices.h"
#include "LimitNotices.h"
#include "MainWindow.h"
#include "PluginModule.h"
#include "SignalWatcher.h"
#include "SingleInstance.h"
#include "TrayIcon.h"

#include <QLockFile>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <memory>

class QApplication;

struct HostOptions
{
    QString screenshotPath; // empty: none (headless runs fall back to the default)
    double quitAfterSeconds = -1; // negative: run until closed
    bool headless = false;
    bool startInTray = false; // --tray: the window stays hidden where a tray exists
    ConnectionLayer::Options connection;
    bool interfacesGiven = false; // --interface overrides the counted-interfaces setting
    QString language; // empty: the one chosen last time, else English; never saved
    bool mirrored = false; // Qt's -reverse: right to left whatever the language

    // The languages the host offers, with their names in their own script.
    static QList<QPair<QString, QString>> languages();

    // Reads the command line (program name first); false with a message on
    // a bad option or an interface that is not there (looked up under
    // sysClassNet). --help prints the usage and exits.
    static bool parse(const QStringList& arguments, HostOptions& options, QString& message,
        const QString& sysClassNet = QStringLiteral("/sys/class/net"));
    // In the user's cache folder: an installation may be shared or read-only.
    static QString defaultScreenshotPath();
};

class HostApplication : public QObject
{
    Q_OBJECT
public:
    // Without a display the host runs on the offscreen platform; without a
    // session's runtime folder it makes a private one. Call before the
    // QApplication exists.
    static void prepareEnvironment();
    static constexpr double HeadlessRunSeconds = 4.0;

    explicit HostApplication(const HostOptions& options, QObject* parent = nullptr);
    ~HostApplication() override;

    // 0 when the window is up; otherwise the exit code, after the reason was
    // reported.
    int start();
    // The plug-in's shut-down sequence; safe to call more than once.
    void shutdown();

    MainWindow& window() { return m_window; }
    TrayIcon* tray() const { return m_tray.get(); }
    ConnectionLayer& connection() { return m_connection; }
    // Loads the language, mirrors the layout for right-to-left scripts,
    // rebuilds the view in it and remembers the choice; false if it cannot
    // be loaded.
    bool setLanguage(const QString& language);

private:
    bool applyLanguage(const QString& language, bool remember);
    void startView(bool showWindow = true);
    void stopView();
    void showAbout();
    void reportFatal(const QString& message);
    void onNotified(const QString& target, uint code, quintptr param1, quintptr param2);
    void onConnectionStatus(unsigned int status);
    void showMessage(const QString& text);
    bool lockInstance();
    void updateRecordingState();
    void keepCountingInBackground();
    void chooseCountedInterfaces();
    void onViewAreaResized(const QRect& rect);
    void openSettings();
    void finishRun();
    void setUpTray();
    void checkLimits();

    HostOptions m_options;
    // Declared first so the services outlive the window and the plug-in.
    HostServices m_services;
    MainWindow m_window;
    PluginModule m_module;
    ConnectionLayer m_connection;
    std::unique_ptr<QLockFile> m_instanceLock;
    QTimer m_quitTimer;
    QTimer m_recordingTimer;
    SignalWatcher m_stopSignals;
    SingleInstance m_singleInstance;
    std::unique_ptr<TrayIcon> m_tray;
    std::unique_ptr<LimitNotices> m_limitNotices;
    QTimer m_limitTimer;
    bool m_bRunning = false;
    unsigned int m_uConnectionStatus = 0;
};
