// netinfo-recorder: counts the metered links into the usage ledger in the
// background, without a window, so usage is recorded while NetInfo is closed.
#include "HostPaths.h"
#include "LinuxBackend.h"
#include "MeteredLinks.h"
#include "SignalWatcher.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QLoggingCategory>
#include <QTimer>

#include <memory>

Q_LOGGING_CATEGORY(lcRecorder, "netinfo.recorder")

namespace {

// The recorder has nothing to tell the SDK's listeners: there are none.
class NoSink final : public velt::TickSink
{
public:
    void tick(bool) override { }
};

QString describe(const velt::RecordingStatus& status)
{
    if (!status.problem.isEmpty())
        return QStringLiteral("cannot record: %1").arg(status.problem);
    if (!status.recording)
        return QStringLiteral("waiting: another process writes the usage ledger");
    if (status.counted.isEmpty())
        return QStringLiteral("recording; no interface to count yet");
    return QStringLiteral("recording %1%2")
        .arg(status.counted.join(QStringLiteral(", ")),
             status.fallbackInterface ? QStringLiteral(" (no metered link seen: the default route's)") : QString());
}

} // namespace

int main(int argc, char* argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_MESSAGE_PATTERN"))
        qSetMessagePattern(QStringLiteral("netinfo-recorder: %{if-warning}warning: %{endif}%{message}"));
    if (qEnvironmentVariableIsEmpty("QT_LOGGING_RULES"))
        QLoggingCategory::setFilterRules(QStringLiteral("netinfo.*.debug=false"));
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("netinfo-recorder"));
    QCoreApplication::setApplicationVersion(QStringLiteral(NETINFO_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Counts the network usage of the metered links into NetInfo's usage ledger, in the background."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption interface(QStringLiteral("interface"),
                                       QStringLiteral("Count the interface <name> (repeatable; default: the "
                                                      "metered links, else the default route's)."),
                                       QStringLiteral("name"));
    const QCommandLineOption verbose(QStringLiteral("verbose"), QStringLiteral("Print the trace lines."));
    parser.addOptions({interface, verbose});
    parser.process(app);
    if (parser.isSet(verbose))
        QLoggingCategory::setFilterRules(QStringLiteral("netinfo.*.debug=true"));
    if (const QString problem = HostPaths::homeProblem(); !problem.isEmpty()) {
        qCCritical(lcRecorder, "%s", qUtf8Printable(problem));
        return 2;
    }

    velt::LinuxOptions options;
    options.role = velt::RecordingRole::Recorder;
    for (const QString& name : parser.values(interface)) {
        if (name.trimmed().isEmpty()) {
            qCCritical(lcRecorder, "--interface needs the name of a network interface");
            return 2;
        }
        options.interfaceNames << name.trimmed();
    }
    MeteredLinks links;
    options.linkInfo = [&links] { return links.snapshot(); };

    SignalWatcher stopSignals;
    if (!stopSignals.isValid())
        qCWarning(lcRecorder, "stop signals are not handled: a kill loses the usage not yet written");
    int stopSignal = 0;
    QObject::connect(&stopSignals, &SignalWatcher::received, &app, [&stopSignal](int signalNumber) {
        if (stopSignal == 0)
            qCInfo(lcRecorder, "%s received; saving the usage and stopping", qUtf8Printable(SignalWatcher::name(signalNumber)));
        stopSignal = signalNumber;
        QCoreApplication::quit();
    });

    auto backend = std::make_unique<velt::LinuxBackend>(options);
    if (!backend->isSupported()) {
        qCCritical(lcRecorder, "this system's network counters cannot be read (%s/net/dev); nothing to record",
                   qUtf8Printable(options.procRoot));
        return 1;
    }
    NoSink sink;
    if (backend->start(&sink) != 0) {
        qCCritical(lcRecorder, "cannot start recording");
        return 1;
    }
    QString lastState = describe(backend->recordingStatus());
    qCInfo(lcRecorder, "started (process %lld): %s", QCoreApplication::applicationPid(), qUtf8Printable(lastState));

    // What is counted changes with the links; say so when it does, not every second.
    QTimer statusTimer;
    QObject::connect(&statusTimer, &QTimer::timeout, &app, [&] {
        const QString state = describe(backend->recordingStatus());
        if (state != lastState)
            qCInfo(lcRecorder, "%s", qUtf8Printable(state));
        lastState = state;
    });
    statusTimer.start(5000);

    const int code = app.exec();
    backend->stop();
    qCInfo(lcRecorder, "stopped cleanly%s; usage saved",
           stopSignal ? qPrintable(QStringLiteral(" on ") + SignalWatcher::name(stopSignal)) : "");
    return code;
}
