// netinfo-recorder: counts the metered links into the usage ledger in the
// background, without a window, so usage is recorded while NetInfo is closed.
#include "HostPaths.h"
#include "LimitNotices.h"
#include "LinuxBackend.h"
#include "MeteredLinks.h"
#include "NetworkManagerControl.h"
#include "SignalWatcher.h"
#include "UsageReport.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QProcess>
#include <QSaveFile>
#include <QTimer>

#include <chrono>
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
            status.fallbackInterface ? QStringLiteral(" (no metered link seen: the default route's)")
                                     : QString());
}

constexpr int kTextfileMs = 60 * 1000;
// Each wake-up of the sampler costs about as much as the sample itself; the
// application, which shows the live speeds, samples every second on its own.
constexpr int kDefaultIntervalSeconds = 5;

// The node exporter's textfile collector reads every *.prom in the directory:
// it must never see half a file, hence QSaveFile (a temporary file renamed
// over the old one).
bool writeTextfile(const QString& dir, const QString& ledgerPath)
{
    QString error;
    std::unique_ptr<report::UsageSource> source = report::openLedger(ledgerPath, error);
    if (!source) {
        qCWarning(lcRecorder, "no metrics written: %s", qUtf8Printable(error));
        return false;
    }
    velt::PeriodSettingsReader settings(HostPaths::hostSettingsFile());
    const QByteArray text
        = report::currentOpenMetrics(*source, QDateTime::currentDateTime(), settings.settings(),
            report::readLimitSettings(HostPaths::userDataDir() + QStringLiteral("/DataUsageLimit.ini")));
    QSaveFile file(QDir(dir).filePath(QStringLiteral("netinfo.prom")));
    if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit())
        return true;
    qCWarning(lcRecorder, "cannot write %s: %s", qUtf8Printable(file.fileName()),
        qUtf8Printable(file.errorString()));
    return false;
}

// Reads the command line into options; an exit code when the program
// should end now, else -1.
int parseArguments(QCoreApplication& app, velt::LinuxOptions& options, QString& textfileDir)
{
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
    const QCommandLineOption textfile(QStringLiteral("textfile"),
        QStringLiteral("Keep <dir>/netinfo.prom up to date (OpenMetrics, every minute "
                       "and on stop) for a metrics collector such as the node "
                       "exporter's textfile collector."),
        QStringLiteral("dir"));
    const QCommandLineOption interval(QStringLiteral("interval"),
        QStringLiteral("Read the counters every <seconds> (1 to 60, default %1). The "
                       "application shows the live speeds on its own, so a slower pace "
                       "loses no traffic; usage is still written every 10 s.")
            .arg(kDefaultIntervalSeconds),
        QStringLiteral("seconds"));
    parser.addOptions({ interface, verbose, textfile, interval });
    parser.process(app);
    if (parser.isSet(verbose))
        QLoggingCategory::setFilterRules(QStringLiteral("netinfo.*.debug=true"));
    if (const QString problem = HostPaths::homeProblem(); !problem.isEmpty()) {
        qCCritical(lcRecorder, "%s", qUtf8Printable(problem));
        return 2;
    }

    options.role = velt::RecordingRole::Recorder;
    for (const QString& name : parser.values(interface)) {
        if (name.trimmed().isEmpty()) {
            qCCritical(lcRecorder, "--interface needs the name of a network interface");
            return 2;
        }
        options.interfaceNames << name.trimmed();
    }
    if (parser.isSet(interval)) {
        bool ok = false;
        const int seconds = parser.value(interval).toInt(&ok);
        if (!ok || seconds < 1 || seconds > 60) {
            qCCritical(lcRecorder, "--interval needs a number of seconds from 1 to 60, not \"%s\"",
                qUtf8Printable(parser.value(interval)));
            return 2;
        }
        options.interval = std::chrono::seconds(seconds);
    } else {
        options.interval = std::chrono::seconds(kDefaultIntervalSeconds);
    }
    textfileDir = parser.value(textfile);
    if (parser.isSet(textfile) && !QFileInfo(textfileDir).isDir()) {
        qCCritical(
            lcRecorder, "--textfile needs an existing directory, not \"%s\"", qUtf8Printable(textfileDir));
        return 2;
    }
    return -1;
}

// Notifications of the limits' crossings, and their Disconnect and Open actions.
void watchLimits(
    LimitNotices& notices, NetworkManagerControl& control, velt::LinuxBackend& backend, QTimer& limitTimer)
{
    QObject::connect(&notices.notifier(), &DesktopNotifier::disconnectRequested, &control,
        &ConnectionControl::disconnectInterface);
    QObject::connect(&control, &ConnectionControl::disconnectFinished, qApp,
        [](const QString& name, const DisconnectResult& result) {
            if (result.ok)
                qCInfo(lcRecorder, "%s disconnected from the limit warning", qUtf8Printable(name));
            else
                qCWarning(lcRecorder, "cannot disconnect %s: %s", qUtf8Printable(name),
                    qUtf8Printable(result.message));
        });
    QObject::connect(&notices.notifier(), &DesktopNotifier::openRequested, qApp, [] {
        const QString beside = QCoreApplication::applicationDirPath() + QStringLiteral("/netinfo");
        const QString program = QFileInfo(beside).isExecutable() ? beside : QStringLiteral("netinfo");
        if (!QProcess::startDetached(program, {}))
            qCWarning(lcRecorder, "cannot start %s", qUtf8Printable(program));
    });
    // Without the user's limits file no warning can be due: the ledger is not read.
    QObject::connect(
        &limitTimer, &QTimer::timeout, qApp, [&notices, &backend, limits = LimitNotices::defaults().limits] {
            const velt::RecordingStatus status = backend.recordingStatus();
            // Disconnect needs one device to act on; several counted links get no such button.
            if (status.recording && QFileInfo::exists(limits))
                notices.refresh(LimitNotices::applicationRunning(),
                    status.counted.size() == 1 ? status.counted.first() : QString());
        });
    limitTimer.start(10000);
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

    velt::LinuxOptions options;
    QString textfileDir;
    if (const int code = parseArguments(app, options, textfileDir); code >= 0)
        return code;
    MeteredLinks links;
    options.linkInfo = [&links] { return links.snapshot(); };

    SignalWatcher stopSignals;
    if (!stopSignals.isValid())
        qCWarning(lcRecorder, "stop signals are not handled: a kill loses the usage not yet written");
    int stopSignal = 0;
    QObject::connect(&stopSignals, &SignalWatcher::received, &app, [&stopSignal](int signalNumber) {
        if (stopSignal == 0)
            qCInfo(lcRecorder, "%s received; saving the usage and stopping",
                qUtf8Printable(SignalWatcher::name(signalNumber)));
        stopSignal = signalNumber;
        QCoreApplication::quit();
    });

    auto backend = std::make_unique<velt::LinuxBackend>(options);
    if (!backend->isSupported()) {
        qCCritical(lcRecorder,
            "this system's network counters cannot be read (%s/net/dev); nothing to record",
            qUtf8Printable(options.procRoot));
        return 1;
    }
    NoSink sink;
    if (backend->start(&sink) != 0) {
        qCCritical(lcRecorder, "cannot start recording");
        return 1;
    }
    QString lastState = describe(backend->recordingStatus());
    qCInfo(lcRecorder, "started (process %lld): %s", QCoreApplication::applicationPid(),
        qUtf8Printable(lastState));

    // While this process records, the limit warnings are its to give.
    LimitNotices notices(LimitNotices::defaults());
    NetworkManagerControl control;
    QTimer limitTimer;
    watchLimits(notices, control, *backend, limitTimer);
    // What is counted changes with the links; say so when it does, not every
    // second. The limit check's timer serves: each wake-up of an idle
    // process costs more than the check itself.
    QObject::connect(&limitTimer, &QTimer::timeout, &app, [&] {
        const QString state = describe(backend->recordingStatus());
        if (state != lastState)
            qCInfo(lcRecorder, "%s", qUtf8Printable(state));
        lastState = state;
    });

    const QString ledgerPath = options.databasePath.isEmpty()
        ? HostPaths::userDataDir() + QStringLiteral("/usage.sqlite")
        : options.databasePath;
    QTimer textfileTimer;
    if (!textfileDir.isEmpty()) {
        QObject::connect(
            &textfileTimer, &QTimer::timeout, &app, [&] { writeTextfile(textfileDir, ledgerPath); });
        textfileTimer.start(kTextfileMs);
    }

    const int code = app.exec();
    backend->stop();
    // After stop(): the figures include what it committed.
    if (!textfileDir.isEmpty())
        writeTextfile(textfileDir, ledgerPath);
    qCInfo(lcRecorder, "stopped cleanly%s; usage saved",
        stopSignal ? qPrintable(QStringLiteral(" on ") + SignalWatcher::name(stopSignal)) : "");
    return code;
}
