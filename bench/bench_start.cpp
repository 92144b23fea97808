// Start-up to the first painted frame: the host application is run with a
// screenshot and --quit-after 0, so it starts, shows the view, paints the
// whole window once into the image and quits. Runs on the simulated backend
// and on the Linux backend counting `lo` with an empty ledger and with a
// ledger holding a year of 15-minute buckets. The floor is the same binary
// answering --help: loading it and its libraries.
//   bench_start [runs]   (default 20)
#include "BenchSupport.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

#include <functional>

namespace {

const QString kApp = QStringLiteral(NETINFO_APP_PATH);

// One run in a fresh user home; microseconds, or -1 when the run failed.
double runOnce(const QString& home, const QStringList& arguments)
{
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    env.insert(QStringLiteral("XDG_DATA_HOME"), home + QStringLiteral("/data"));
    env.insert(QStringLiteral("XDG_CONFIG_HOME"), home + QStringLiteral("/config"));
    env.insert(QStringLiteral("XDG_RUNTIME_DIR"), home + QStringLiteral("/run"));
    env.remove(QStringLiteral("NETINFO_LIBRARY_PATH"));
    QDir().mkpath(home + QStringLiteral("/run"));
    QFile::setPermissions(home + QStringLiteral("/run"),
        QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    process.setProcessEnvironment(env);
    process.setProcessChannelMode(QProcess::SeparateChannels);
    QElapsedTimer timer;
    timer.start();
    process.start(kApp, arguments);
    if (!process.waitForFinished(30000) || process.exitStatus() != QProcess::NormalExit
        || process.exitCode() != 0) {
        QTextStream(stderr) << "bench_start: " << kApp << ' ' << arguments.join(QLatin1Char(' '))
                            << " failed: " << process.readAllStandardError() << '\n';
        return -1;
    }
    return timer.nsecsElapsed() / 1000.0;
}

// Fills the ledger with a year of buckets on `lo`, ending now.
bool fillYear(const QString& path)
{
    bool ok = false;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("bench_start"));
        db.setDatabaseName(path);
        if (db.open() && db.transaction()) {
            QSqlQuery query(db);
            query.prepare(QStringLiteral(
                "INSERT OR REPLACE INTO usage (interface, bucket, received, sent, connected_ms)"
                " VALUES ('lo', ?, ?, ?, 900000)"));
            const qint64 now = QDateTime::currentSecsSinceEpoch() / 900 * 900;
            ok = true;
            for (qint64 bucket = now - 365LL * 86400; ok && bucket <= now; bucket += 900) {
                query.addBindValue(bucket);
                query.addBindValue(2000000 + bucket % 7919);
                query.addBindValue(300000 + bucket % 613);
                ok = query.exec();
            }
            // The day roll-up the writer keeps beside the buckets.
            ok = ok
                && query.exec(QStringLiteral(
                    "INSERT OR REPLACE INTO usage_day (day, received, sent, connected_ms)"
                    " SELECT bucket - bucket % 86400 AS d, SUM(received), SUM(sent), SUM(connected_ms)"
                    " FROM usage GROUP BY d"));
            ok = db.commit() && ok;
        }
        if (!ok)
            QTextStream(stderr) << "bench_start: cannot fill " << path << ": " << db.lastError().text()
                                << '\n';
    }
    QSqlDatabase::removeDatabase(QStringLiteral("bench_start"));
    return ok;
}

QString findLedger(const QString& dir)
{
    QDirIterator it(dir, { QStringLiteral("usage.sqlite") }, QDir::Files, QDirIterator::Subdirectories);
    return it.hasNext() ? it.next() : QString();
}

// Times `runs` starts; `prepare` readies each fresh home.
std::vector<double> measure(const QTemporaryDir& root, const QString& name, int runs,
    const QStringList& arguments, const std::function<void(const QString&)>& prepare = {})
{
    std::vector<double> samples;
    for (int i = 0; i < runs; ++i) {
        const QString home = root.path() + QLatin1Char('/') + name + QString::number(i);
        if (prepare)
            prepare(home);
        const double us = runOnce(home,
            arguments + QStringList { QStringLiteral("--screenshot"), home + QStringLiteral("/shot.png") });
        if (us < 0)
            return {};
        samples.push_back(us);
    }
    return samples;
}

void report(const QString& name, const std::vector<double>& samples, double floor)
{
    if (samples.empty())
        return;
    QTextStream(stdout) << name << ": worst "
                        << QString::number(*std::max_element(samples.begin(), samples.end()), 'f', 1)
                        << " us over " << samples.size() << " runs\n";
    printBenchLine(name, benchTiming(samples), floor);
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    const int runs = argc > 1 ? std::max(1, QString::fromLocal8Bit(argv[1]).toInt()) : 20;
    QTemporaryDir root;
    const QStringList quit { QStringLiteral("--quit-after"), QStringLiteral("0") };

    std::vector<double> floors;
    for (int i = 0; i < runs; ++i) {
        const double us = runOnce(root.path() + QStringLiteral("/floor"), { QStringLiteral("--help") });
        if (us >= 0)
            floors.push_back(us);
    }
    const double floor = benchTiming(floors).median;

    // A first run makes the ledger the year is written into.
    const QString seed = root.path() + QStringLiteral("/seed");
    const QStringList onLo = quit + QStringList { QStringLiteral("--interface"), QStringLiteral("lo") };
    if (runOnce(
            seed, onLo + QStringList { QStringLiteral("--screenshot"), seed + QStringLiteral("/shot.png") })
        < 0)
        return 1;
    const QString ledger = findLedger(seed);
    const QString year = root.path() + QStringLiteral("/year.sqlite");
    if (ledger.isEmpty() || !QFile::copy(ledger, year) || !fillYear(year)) {
        QTextStream(stderr) << "bench_start: no ledger to fill under " << seed << '\n';
        return 1;
    }
    const QString ledgerPath = QDir(seed).relativeFilePath(ledger);

    report(QStringLiteral("start_simulated"),
        measure(root, QStringLiteral("sim"), runs, quit + QStringList { QStringLiteral("--simulate") }),
        floor);
    report(QStringLiteral("start_empty_ledger"), measure(root, QStringLiteral("empty"), runs, onLo), floor);
    report(QStringLiteral("start_year_ledger"),
        measure(root, QStringLiteral("year"), runs, onLo,
            [&](const QString& home) {
                const QString target = home + QLatin1Char('/') + ledgerPath;
                QDir().mkpath(QFileInfo(target).path());
                QFile::copy(year, target);
            }),
        floor);
    return 0;
}
