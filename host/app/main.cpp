// The NetInfo host: loads the plug-in module and gives it a main window.
#include "HostApplication.h"
#include "PluginMessageFormat.h"
#include "RightToLeftStyle.h"
#include "SingleInstance.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QTextStream>

int main(int argc, char* argv[])
{
    HostApplication::prepareEnvironment();
    PluginMessageFormat::install();
    // Trace output is for developers: QT_LOGGING_RULES or --verbose turn it
    // back on.
    if (qEnvironmentVariableIsEmpty("QT_LOGGING_RULES"))
        QLoggingCategory::setFilterRules(QStringLiteral("netinfo.*.debug=false"));
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("netinfo"));
    QApplication::setApplicationDisplayName(QStringLiteral("NetInfo"));
    QApplication::setApplicationVersion(QStringLiteral(NETINFO_VERSION));
    QApplication::setStyle(new RightToLeftStyle(QApplication::style()->name()));

    HostOptions options;
    QString message;
    if (!HostOptions::parse(QApplication::arguments(), options, message)) {
        QTextStream(stderr) << "netinfo: " << message << '\n';
        return 2;
    }
    // Qt has taken -reverse off the command line; no language is loaded yet,
    // so a mirrored layout now can only come from it.
    options.mirrored = QGuiApplication::isRightToLeft();
    // A second start brings the running window forward and leaves.
    if (!options.connection.simulate && SingleInstance::activateRunning())
        return 0;
    HostApplication host(options);
    if (const int code = host.start())
        return code;
    return app.exec();
}
