// The host's run: services, main window, the plug-in module, the simulated
// SDK's demo traffic, and the plug-in's life cycle in the order it expects.
#pragma once

#include "ConnectionWatcher.h"
#include "HostServices.h"
#include "MainWindow.h"
#include "PluginModule.h"

#include <QObject>
#include <QString>
#include <QTimer>

class QApplication;

struct HostOptions
{
    QString screenshotPath; // empty: none (headless runs fall back to the default)
    double quitAfterSeconds = -1; // negative: run until closed
    bool headless = false;

    // Reads the command line; false (with message) on a bad option value.
    static bool parse(const QApplication& app, HostOptions& options, QString& message);
    static QString defaultScreenshotPath();
};

class HostApplication : public QObject
{
    Q_OBJECT
public:
    // Without a display the host runs on the offscreen platform. Call before
    // the QApplication exists.
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

private:
    void reportFatal(const QString& message);
    void onNotified(const QString& target, uint code, quintptr param1, quintptr param2);
    void onConnectionStatus(unsigned int status);
    void onViewAreaResized(const QRect& rect);
    void openSettings();
    void finishRun();

    HostOptions m_options;
    // Declared first so the services outlive the window and the plug-in.
    HostServices m_services;
    MainWindow m_window;
    PluginModule m_module;
    ConnectionWatcher m_watcher;
    QTimer m_quitTimer;
    bool m_bRunning = false;
};
