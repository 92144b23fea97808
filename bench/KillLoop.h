// A recorder under traffic killed with SIGKILL at random moments, over and
// over, on a /proc look-alike whose counters grow at a known rate. After each
// kill the ledger must pass SQLite's integrity check, its total must not go
// backwards, and what it lacks must fit in the commit interval.
// The recorder is this very program, started with --record <dir>; the fault
// suite runs the same loop fewer times.
#pragma once

#include "LinuxBackend.h"
#include "UsageLedger.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QThread>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <unistd.h>

namespace killloop {

constexpr qint64 kBytesPerMs = 1000;
constexpr int kIntervalMs = 20;
constexpr qint64 kCommitIntervalMs = 100;

inline QString databasePath(const QString& root)
{
    return root + QStringLiteral("/data/usage.sqlite");
}

// Replaced in one rename, so the recorder never reads half a file.
inline bool put(const QString& root, const char* relative, const QByteArray& content)
{
    const QString path = root + QLatin1Char('/') + QLatin1String(relative);
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path + QStringLiteral(".new"));
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush()
        && ::rename(QFile::encodeName(file.fileName()).constData(), QFile::encodeName(path).constData()) == 0;
}

inline bool writeCounters(const QString& root, quint64 received)
{
    const QByteArray dev
        = "Inter-|   Receive |  Transmit\n face |bytes packets|bytes\n wwan0: " + QByteArray::number(received)
        + " 1 0 0 0 0 0 0 " + QByteArray::number(received / 10) + " 1 0 0 0 0 0 0\n";
    return put(root, "self/net/dev", dev);
}

// A recorder of wwan0, always up, over the look-alike in root.
inline velt::LinuxOptions recorderOptions(const QString& root)
{
    velt::LinuxOptions options;
    options.interfaceNames = { QStringLiteral("wwan0") };
    options.role = velt::RecordingRole::Recorder;
    options.databasePath = databasePath(root);
    options.settingsPath = root + QStringLiteral("/netinfo-host.conf");
    options.procRoot = root;
    options.sysRoot = root + QStringLiteral("/sysfs");
    options.linkState = [](const QString&) { return velt::LinkState { true, true, true, true, 2 }; };
    options.interval = std::chrono::milliseconds(kIntervalMs);
    options.commitIntervalMs = kCommitIntervalMs;
    return options;
}

// The child: records wwan0 until it is killed.
inline int record(const QString& root)
{
    velt::LinuxBackend backend(recorderOptions(root));
    if (backend.start(nullptr) != 0)
        return 1;
    std::puts("ready");
    std::fflush(stdout);
    for (;;)
        ::pause();
}

struct Result
{
    int runs = 0;
    int integrityFailures = 0;
    int wentBackwards = 0;
    int notStarted = 0;
    qint64 maxLossMs = 0; // the largest unwritten stretch, in milliseconds of traffic
    // Per kill: reading the total back, and the bare open and query under it.
    QList<double> readUs, floorUs;
};

inline bool integrityOk(const QString& path, QList<double>& floorUs)
{
    const QString name = QStringLiteral("killloop-check");
    bool ok = false;
    {
        QElapsedTimer timer;
        timer.start();
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        db.setDatabaseName(path);
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        QSqlQuery query(db);
        ok = db.open() && query.exec(QStringLiteral("SELECT count(*) FROM usage_day")) && query.next();
        floorUs << timer.nsecsElapsed() / 1000.0;
        ok = ok && query.exec(QStringLiteral("PRAGMA integrity_check")) && query.next()
            && query.value(0).toString() == QLatin1String("ok");
    }
    QSqlDatabase::removeDatabase(name);
    return ok;
}

// Runs the loop in root; the counters grow only while a recorder runs, so any
// shortfall is what the killed one had not written yet.
// Each recorder lives a random 10 ms to maxLifeMs.
inline Result run(const QString& program, const QString& root, int runs, int maxLifeMs = 400)
{
    Result result;
    quint64 counter = 0;
    quint64 lastTotal = 0;
    put(root, "self/net/route", "Iface\tDestination\n");
    put(root, "sys/kernel/random/boot_id", "killloop-boot");
    writeCounters(root, counter);
    for (int i = 0; i < runs; ++i) {
        QProcess child;
        child.setStandardErrorFile(QProcess::nullDevice());
        child.start(program, { QStringLiteral("--record"), root });
        if (!child.waitForReadyRead(20000)) {
            ++result.notStarted;
            child.kill();
            child.waitForFinished();
            continue;
        }
        const qint64 lifeMs = QRandomGenerator::global()->bounded(10, maxLifeMs);
        QElapsedTimer alive;
        alive.start();
        const quint64 base = counter;
        while (alive.elapsed() < lifeMs) {
            counter = base + quint64(alive.elapsed()) * kBytesPerMs;
            writeCounters(root, counter);
            QThread::msleep(5);
        }
        ::kill(pid_t(child.processId()), SIGKILL);
        child.waitForFinished();
        ++result.runs;

        if (!integrityOk(databasePath(root), result.floorUs))
            ++result.integrityFailures;
        QElapsedTimer reading;
        reading.start();
        const quint64 total = velt::UsageLedger(databasePath(root), velt::LedgerAccess::ReadOnly)
                                  .total(0, 4102444800) // 2100
                                  .received;
        result.readUs << reading.nsecsElapsed() / 1000.0;
        if (total < lastTotal)
            ++result.wentBackwards;
        lastTotal = std::max(total, lastTotal);
        if (counter > total)
            result.maxLossMs = std::max(result.maxLossMs, qint64((counter - total) / kBytesPerMs));
    }
    return result;
}

} // namespace killloop
