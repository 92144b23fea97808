#include "BackgroundRecording.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QSaveFile>
#include <QStandardPaths>

namespace {

struct Run
{
    bool ok = false;
    QString error;
};

Run run(const QString& program, const QStringList& arguments, int timeoutMs)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForStarted(timeoutMs))
        return { false, process.errorString() };
    if (!process.waitForFinished(timeoutMs)) {
        process.kill();
        process.waitForFinished(1000);
        return { false, QCoreApplication::translate("BackgroundRecording", "no answer in time") };
    }
    const QString error = QString::fromLocal8Bit(process.readAllStandardError()).trimmed();
    return { process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0, error };
}

QString tr(const char* text)
{
    return QCoreApplication::translate("BackgroundRecording", text);
}

} // namespace

BackgroundRecording::Setup BackgroundRecording::defaults()
{
    Setup setup;
    setup.systemctl = QStandardPaths::findExecutable(QStringLiteral("systemctl"));
    setup.recorder = QCoreApplication::applicationDirPath() + QStringLiteral("/netinfo-recorder");
    setup.autostartDir = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/autostart");
    return setup;
}

bool BackgroundRecording::enable(const Setup& setup, QString& message)
{
    const QString unit = QLatin1String(UnitName);
    // "cat" fails when the user manager does not know the unit (no unit
    // installed where it looks, or no user manager at all).
    if (!setup.systemctl.isEmpty() && run(setup.systemctl, { "--user", "cat", unit }, setup.timeoutMs).ok) {
        const Run enabled = run(setup.systemctl, { "--user", "enable", "--now", unit }, setup.timeoutMs);
        message = enabled.ok
            ? tr("NetInfo now counts in the background, also after your next login "
                 "(systemd user unit %1).")
                  .arg(unit)
            : tr("Could not turn on the background recorder: systemctl --user enable --now %1 "
                 "failed: %2")
                  .arg(unit, enabled.error);
        return enabled.ok;
    }

    if (!QFileInfo(setup.recorder).isExecutable()) {
        message = tr("Could not turn on the background recorder: %1 is missing.").arg(setup.recorder);
        return false;
    }
    const QString path = setup.autostartDir + QStringLiteral("/netinfo-recorder.desktop");
    QDir().mkpath(setup.autostartDir);
    QSaveFile entry(path);
    QString quoted = setup.recorder;
    quoted.replace(QLatin1Char('\\'), QLatin1String("\\\\")).replace(QLatin1Char('"'), QLatin1String("\\\""));
    const QString text
        = QStringLiteral("[Desktop Entry]\nType=Application\nName=NetInfo Recorder\n"
                         "Comment=Counts the network usage of metered links in the background\n"
                         "Exec=\"%1\"\nTerminal=false\nNoDisplay=true\n"
                         "X-GNOME-Autostart-enabled=true\n")
              .arg(quoted);
    if (!entry.open(QIODevice::WriteOnly) || entry.write(text.toUtf8()) < 0 || !entry.commit()) {
        message = tr("Could not turn on the background recorder: cannot write %1: %2")
                      .arg(path, entry.errorString());
        return false;
    }
    if (!QProcess::startDetached(setup.recorder, {})) {
        message = tr("The background recorder will start with your next login (%1), but it could not be "
                     "started now.")
                      .arg(path);
        return false;
    }
    message = tr("NetInfo now counts in the background, also after your next login (%1).").arg(path);
    return true;
}
