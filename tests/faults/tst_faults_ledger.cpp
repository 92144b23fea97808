// The usage ledger under failing storage, sudden death and hostile umasks.
#include "FileChecks.h"
#include "KillLoop.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace velt;

namespace {

constexpr qint64 kNow = 1718445600; // 2024-06-15 12:00 in Berlin
const UsageKey kKey { QStringLiteral("wwan0"), QStringLiteral("Mobile") };

QStringList movedAside(const QString& database)
{
    return QFileInfo(database).dir().entryList({ QStringLiteral("*corrupt*") });
}

} // namespace

class FaultsLedger : public QObject
{
    Q_OBJECT

private slots:
    // An I/O error at any SQLite operation, opening or committing: the usage
    // stays in memory, the next commit writes it, and the file is never
    // taken for damaged.
    void ioErrorAtEveryOperation()
    {
        QTemporaryDir dir;
        const QString database = dir.filePath(QStringLiteral("usage.sqlite"));
        {
            UsageLedger ledger(database);
            QVERIFY(ledger.open(kNow));
            ledger.add(kKey, kNow, Usage { 1000, 100, 0 });
            QVERIFY(ledger.commit());
        }
        quint64 expected = 1000;
        int refused = 0;
        int n = 1;
        for (;; ++n) {
            UsageLedger ledger(database);
            UsageLedger::failOperationForTesting(n);
            ledger.open(kNow);
            ledger.add(kKey, kNow, Usage { 10, 1, 0 });
            ledger.setBaseline({ QStringLiteral("wwan0"), "boot", 2, quint64(n), 0, n });
            const bool first = ledger.commit();
            const bool notReached = UsageLedger::failurePendingForTesting();
            UsageLedger::failOperationForTesting(0);
            expected += 10;
            QCOMPARE(ledger.total(0, kNow + 900).received, expected);
            refused += first ? 0 : 1;
            QVERIFY2(ledger.commit(), qPrintable(ledger.problem()));
            QVERIFY(ledger.problem().isEmpty());
            ledger.close();

            UsageLedger again(database, LedgerAccess::ReadOnly);
            QCOMPARE(again.total(0, kNow + 900).received, expected);
            QCOMPARE(again.baselines().at(QStringLiteral("wwan0")).received, quint64(n));
            QVERIFY(movedAside(database).isEmpty());
            if (notReached)
                break;
        }
        qInfo("%d operations failed in turn; %d commits refused and retried", n - 1, refused);
        QVERIFY(refused >= 3);
    }

    void privateFiles_data()
    {
        QTest::addColumn<int>("umask");
        QTest::newRow("no umask") << 0;
        QTest::newRow("strict umask") << 077;
    }
    void privateFiles()
    {
        QFETCH(int, umask);
        QTemporaryDir dir;
        const QString folder = dir.filePath(QStringLiteral("share/netinfo"));
        const QString database = folder + QStringLiteral("/usage.sqlite");
        const mode_t before = ::umask(mode_t(umask));
        {
            LinuxOptions options = killloop::recorderOptions(dir.path());
            options.databasePath = database;
            options.interval = std::chrono::milliseconds(0);
            QVERIFY(killloop::put(dir.path(), "sys/kernel/random/boot_id", "boot")
                && killloop::writeCounters(dir.path(), 1));
            LinuxBackend backend(options);
            QCOMPARE(backend.start(nullptr), 0);
            killloop::writeCounters(dir.path(), 5000);
            QVERIFY(backend.tickNow());
            const QStringList files = QDir(folder).entryList(QDir::Files);
            for (const char* suffix : { "", "-wal", "-shm", ".lock", ".recorder" })
                QVERIFY2(files.contains(QStringLiteral("usage.sqlite") + QLatin1String(suffix)),
                    qPrintable(files.join(' ')));
            for (const QString& file : files)
                QVERIFY2(modeOf(folder + QLatin1Char('/') + file) == 0600, qPrintable(file));
            QCOMPARE(modeOf(folder), mode_t(0700));
            QCOMPARE(modeOf(dir.filePath(QStringLiteral("share"))), mode_t(0700));
            backend.stop();
        }
        ::umask(before);
    }

    void killLoop()
    {
        QTemporaryDir dir;
        const killloop::Result result
            = killloop::run(QCoreApplication::applicationFilePath(), dir.path(), 50, 800);
        qInfo("%d kills, %d integrity failures, %d went backwards, largest loss %lld ms", result.runs,
            result.integrityFailures, result.wentBackwards, result.maxLossMs);
        QCOMPARE(result.runs, 50);
        QCOMPARE(result.integrityFailures, 0);
        QCOMPARE(result.wentBackwards, 0);
        // Written every commit interval, read every sampling interval; the
        // rest is the scheduler of a busy machine. A recorder that never
        // committed would lose up to its whole life of 800 ms.
        QVERIFY2(result.maxLossMs <= killloop::kCommitIntervalMs + killloop::kIntervalMs + 400,
            qPrintable(QString::number(result.maxLossMs)));
    }
};

int main(int argc, char* argv[])
{
    if (argc == 3 && qstrcmp(argv[1], "--record") == 0) {
        QCoreApplication app(argc, argv);
        return killloop::record(QString::fromLocal8Bit(argv[2]));
    }
    QCoreApplication app(argc, argv);
    FaultsLedger test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_faults_ledger.moc"
