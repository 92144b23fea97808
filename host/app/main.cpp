// The NetInfo host: loads the plug-in module and gives it a main window.
#include "HostApplication.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QTextStream>

int main(int argc, char* argv[])
{
    HostApplication::prepareEnvironment();
    // Trace output is for developers: QT_LOGGING_RULES turns it back on.
    if (qEnvironmentVariableIsEmpty("QT_LOGGING_RULES"))
        QLoggingCategory::setFilterRules(QStringLiteral("netinfo.*.debug=false"));
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("netinfo"));
    QApplication::setApplicationDisplayName(QStringLiteral("NetInfo"));

    HostOptions options;
    QString message;
    if (!HostOptions::parse(app, options, message)) {
        QTextStream(stderr) << "netinfo: " << message << '\n';
        return 2;
    }
    HostApplication host(options);
    if (const int code = host.start())
        return code;
    return app.exec();
}
