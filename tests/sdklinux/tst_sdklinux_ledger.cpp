// The Linux backend over a fake /proc and a temporary ledger: reports,
// periods, history, reset, restarts, a killed writer and a corrupt file.
#include "FakeProc.h"
#include "LinuxBackend.h"
#include "SdkTestSupport.h"
#include "UsageLedger.h"

#include <csignal>
#include <ctime>

using namespace velt;

namespace {
// Wednesday 2024-03-13 23:59:58 in Berlin.
constexpr qint64 kBeforeMidnightMs = 1710370798000;
// Saturday 2024-06-15 12:00 in Berlin.
constexpr qint64 kJuneMs = 1718445600000;

StatisticsRecord usage(quint64 received, quint64 sent, qint64 seconds = 0)
{
    return StatisticsRecord{received, sent, 0, 0, seconds, 0};
}

StatisticsRecord report(LinuxBackend& backend, int kind)
{
    StatisticsRecord record;
    backend.report(kind, record);
    return record;
}

StatisticsRecord history(LinuxBackend& backend, quint64 key)
{
    StatisticsRecord record;
    return backend.history(key, record) == Ok ? record : StatisticsRecord{~0ull, ~0ull, 0, 0, -1, 0};
}

bool step(FakeProc& proc, LinuxBackend& backend, qint64 ms, const QString& name, quint64 rx, quint64 tx)
{
    proc.advance(ms);
    proc.set(name, rx, tx);
    return proc.write() && backend.tickNow();
}

// Runs as a child process: books twelve seconds of traffic, of which the
// ledger commits the first ten, then dies by SIGKILL.
int writeThenDie(const QString& root)
{
    FakeProc proc;
    proc.root = root;
    proc.state->wallMs = kJuneMs;
    proc.set(QStringLiteral("wwan0"), 0, 0);
    proc.write();
    LinuxBackend backend(proc.options(root + QStringLiteral("/usage.sqlite")));
    backend.start(nullptr);
    for (int i = 1; i <= 12; ++i) {
        if (!step(proc, backend, 1000, QStringLiteral("wwan0"), 1000 * i, 100 * i))
            return 1;
    }
    raise(SIGKILL);
    return 1;
}
} // namespace

class TstSdkLinuxLedger : public QObject
{
    Q_OBJECT

    QString database() const { return m_proc->dir.filePath(QStringLiteral("data/usage.sqlite")); }

    // Three seconds of traffic across midnight: 2000/500 bytes before it, 7000/1000 after.
    std::unique_ptr<LinuxBackend> acrossMidnight()
    {
        m_proc->state->wallMs = kBeforeMidnightMs;
        m_proc->set(QStringLiteral("wwan0"), 1000, 100);
        m_proc->write();
        auto backend = std::make_unique<LinuxBackend>(m_proc->options(database()));
        backend->start(nullptr);
        if (!step(*m_proc, *backend, 1000, QStringLiteral("wwan0"), 3000, 600)
            || !step(*m_proc, *backend, 2000, QStringLiteral("wwan0"), 10000, 1600))
            return nullptr;
        return backend;
    }

private slots:
    void initTestCase()
    {
        qputenv("TZ", "Europe/Berlin");
        tzset();
    }
    void init() { m_proc = std::make_unique<FakeProc>(); }

    void periods_data()
    {
        QTest::addColumn<QByteArray>("settings");
        QTest::addColumn<StatisticsRecord>("week");
        QTest::addColumn<StatisticsRecord>("month");
        const StatisticsRecord all = usage(9000, 1500, 3);
        const StatisticsRecord afterMidnight = usage(7000, 1000, 2);
        QTest::newRow("Sunday, 1st") << QByteArray("[uselimit]\nstartweekdate=0\nstartmonthdate=0\n") << all << all;
        QTest::newRow("Thursday, 14th") << QByteArray("[uselimit]\nstartweekdate=4\nstartmonthdate=13\n") << afterMidnight
                                        << afterMidnight;
        QTest::newRow("Friday, 15th") << QByteArray("[uselimit]\nstartweekdate=5\nstartmonthdate=14\n") << all << all;
        QTest::newRow("no settings") << QByteArray() << all << all;
        QTest::newRow("odd values") << QByteArray("[uselimit]\nstartweekdate=9\nstartmonthdate=x\n") << all << all;
    }

    void periods()
    {
        QFETCH(QByteArray, settings);
        QFETCH(StatisticsRecord, week);
        QFETCH(StatisticsRecord, month);
        if (!settings.isEmpty()) {
            QFile file(m_proc->dir.filePath(QStringLiteral("netinfo-host.conf")));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(settings) == settings.size());
        }
        for (int backends = 0; settings.contains('x') && backends < 2; ++backends) {
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("startweekdate=\"9\" is not between 0 and 6"));
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("startmonthdate=\"x\" is not between 0 and 30"));
        }
        auto backend = acrossMidnight();
        QVERIFY(backend);

        // Not yet committed, yet every report has it.
        QCOMPARE(report(*backend, VELT_REPORT_LIVE), (StatisticsRecord{9000, 1500, 3500, 500, 3, 0}));
        QCOMPARE(report(*backend, VELT_REPORT_TODAY), usage(7000, 1000, 2));
        QCOMPARE(report(*backend, VELT_REPORT_WEEK), week);
        QCOMPARE(report(*backend, VELT_REPORT_MONTH), month);
        QCOMPARE(report(*backend, VELT_REPORT_YEAR), usage(9000, 1500, 3));
        QCOMPARE(backend->interfaceName(), QStringLiteral("wwan0"));

        // Written on stop; a new backend on the same ledger starts where this one ended.
        backend.reset(); // stops, writes
        LinuxBackend again(m_proc->options(database()));
        again.start(nullptr);
        QCOMPARE(report(again, VELT_REPORT_WEEK), week);
        QCOMPARE(report(again, VELT_REPORT_YEAR), usage(9000, 1500, 3));
    }

    void historyKey_data()
    {
        QTest::addColumn<quint64>("key");
        QTest::addColumn<StatisticsRecord>("expected");
        QTest::newRow("now: the current bucket") << 0ull << usage(7000, 1000, 2);
        QTest::newRow("one second") << 1ull << usage(7000, 1000, 2);
        QTest::newRow("into the previous bucket") << 3ull << usage(9000, 1500, 3);
        QTest::newRow("beyond the epoch") << ~0ull << usage(9000, 1500, 3);
    }

    void historyKey()
    {
        QFETCH(quint64, key);
        QFETCH(StatisticsRecord, expected);
        auto backend = acrossMidnight();
        QVERIFY(backend);
        QCOMPARE(history(*backend, key), expected);
    }

    void resetKeepsLiveAndPersists()
    {
        auto backend = acrossMidnight();
        QVERIFY(backend);
        QCOMPARE(backend->reset(0), int(Ok));
        const quint32 resetAt = quint32(m_proc->state->wallMs / 1000);
        QCOMPARE(report(*backend, VELT_REPORT_LAST_RESET).resetTime, resetAt);
        QCOMPARE(report(*backend, VELT_REPORT_YEAR), usage(0, 0));
        QCOMPARE(report(*backend, VELT_REPORT_LIVE).bytesReceived, 9000ull);

        QVERIFY(step(*m_proc, *backend, 1000, QStringLiteral("wwan0"), 10500, 1650));
        backend->stop();
        QCOMPARE(backend->reset(0), int(CallFailed)); // stopped
        backend->start(nullptr);
        QCOMPARE(report(*backend, VELT_REPORT_LAST_RESET).resetTime, resetAt);
        QCOMPARE(report(*backend, VELT_REPORT_YEAR), usage(500, 50, 1));
    }

    void followsTheDefaultRoute()
    {
        m_proc->state->wallMs = kJuneMs;
        m_proc->set(QStringLiteral("eth0"), 1000, 100, 2);
        m_proc->set(QStringLiteral("wlan0"), 5000, 500, 3);
        m_proc->route = QStringLiteral("eth0");
        m_proc->write();
        LinuxBackend backend(m_proc->options(database()));
        backend.start(nullptr);
        QVERIFY(step(*m_proc, backend, 1000, QStringLiteral("eth0"), 2000, 100));
        QCOMPARE(backend.interfaceName(), QStringLiteral("eth0"));

        // The new interface's earlier traffic was never measured: only what follows counts.
        m_proc->route = QStringLiteral("wlan0");
        QVERIFY(step(*m_proc, backend, 1000, QStringLiteral("wlan0"), 5700, 500));
        QCOMPARE(backend.interfaceName(), QStringLiteral("wlan0"));
        QCOMPARE(report(backend, VELT_REPORT_LIVE).bytesReceived, 0ull);

        // Unreadable counters skip a sample; the next one counts the interval once.
        QVERIFY(QFile::remove(m_proc->dir.filePath(QStringLiteral("self/net/dev"))));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("cannot read interface counters"));
        QVERIFY(backend.tickNow());
        QVERIFY(step(*m_proc, backend, 1000, QStringLiteral("wlan0"), 6000, 520));
        QCOMPARE(report(backend, VELT_REPORT_YEAR), usage(1300, 20, 2));
    }

    void killedWriter_data()
    {
        QTest::addColumn<QByteArray>("bootId");
        QTest::addColumn<quint64>("receivedSince");
        QTest::addColumn<StatisticsRecord>("year");
        // The child committed 10000/1000 and died with 2000/200 unwritten.
        QTest::newRow("same boot: the counters cover the loss") << QByteArray("3f1c-boot-1") << 15000ull
                                                                << usage(15000, 1500, 10);
        QTest::newRow("rebooted: only the unwritten window lost") << QByteArray("3f1c-boot-2") << 500ull
                                                                 << usage(10000, 1000, 10);
    }

    void killedWriter()
    {
        QFETCH(QByteArray, bootId);
        QFETCH(quint64, receivedSince);
        QFETCH(StatisticsRecord, year);
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--write-then-die"), m_proc->dir.path()});
        QVERIFY2(child.waitForFinished(60000), "the writer did not finish");
        QCOMPARE(child.exitStatus(), QProcess::CrashExit);

        {
            UsageLedger ledger(m_proc->dir.filePath(QStringLiteral("usage.sqlite")));
            QVERIFY(ledger.open(kJuneMs / 1000));
            QCOMPARE(ledger.totalSince(0).received, 10000ull);
        }
        m_proc->bootId = bootId;
        m_proc->state->wallMs = kJuneMs + 60000;
        m_proc->set(QStringLiteral("wwan0"), receivedSince, receivedSince / 10);
        m_proc->write();
        LinuxBackend backend(m_proc->options(m_proc->dir.filePath(QStringLiteral("usage.sqlite"))));
        backend.start(nullptr);
        QCOMPARE(report(backend, VELT_REPORT_YEAR), year);
        QVERIFY(QDir(m_proc->dir.path()).entryList({QStringLiteral("*corrupt*")}).isEmpty());
    }

    void corruptLedgerMovedAside()
    {
        QDir().mkpath(QFileInfo(database()).absolutePath());
        for (const QString& suffix : {QString(), QStringLiteral("-wal")}) {
            QFile file(database() + suffix);
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(QByteArray(4096, '\x5a')) == 4096);
        }
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("usage.sqlite is unreadable .*; moved it to .*usage.sqlite.corrupt-"));
        UsageLedger ledger(database());
        QVERIFY(ledger.open(kJuneMs / 1000));
        const QStringList aside = QFileInfo(database()).dir().entryList({QStringLiteral("usage.sqlite.corrupt-*")});
        QCOMPARE(aside.size(), 2); // the file and its log, both kept
        for (const QString& name : aside)
            QCOMPARE(QFileInfo(QFileInfo(database()).dir().filePath(name)).size(), 4096);

        ledger.add(QStringLiteral("wwan0"), kJuneMs / 1000, Usage{5, 6, 7});
        QVERIFY(ledger.commit());
        ledger.close();
        QVERIFY(ledger.open(kJuneMs / 1000));
        QCOMPARE(ledger.totalSince(0).sent, 6ull);
    }

    void ticksThroughTheSdk()
    {
        // Ticks query the backend on its thread while this one queries and resets.
        static std::atomic<int> good{0}, bad{0};
        auto callback = [](int event, void* data) {
            QByteArray report(VELT_STATISTICS_REPORT_SIZE, 0);
            const bool ok = event == VELT_EVENT_STATISTICS_CHANGED && *static_cast<unsigned char*>(data) == 1
                && VELT_Statistics_GetReport(VELT_REPORT_YEAR, report.data(), 0) == 0
                && VELT_Statistics_GetSpecHistroryData(report.data(), 60) == 0;
            return ok ? ++good : ++bad;
        };
        m_proc->set(QStringLiteral("wwan0"), 1, 1);
        m_proc->write();
        LinuxOptions options = m_proc->options(database());
        options.interval = std::chrono::milliseconds(5);
        Sdk::instance().setBackend(std::make_unique<LinuxBackend>(options));
        QCOMPARE(VELT_Statistics_RegisterStatisticsCallbackEvent(callback), 0);
        QByteArray report(VELT_STATISTICS_REPORT_SIZE, 0);
        for (int i = 0; good < 20 && i < 5000; ++i) {
            QCOMPARE(VELT_Statistics_GetSpecHistroryData(report.data(), 3600), 0);
            QCOMPARE(i == 10 ? VELT_Statistics_Reset(0) : VELT_Statistics_GetReport(VELT_REPORT_MONTH, report.data(), 0), 0);
            QTest::qWait(1);
        }
        QCOMPARE(VELT_Statistics_UnRegisterStatisticsCallbackEvent(callback), 0);
        Sdk::instance().setBackend(nullptr);
        QVERIFY(good >= 20);
        QCOMPARE(bad.load(), 0);
    }

private:
    std::unique_ptr<FakeProc> m_proc;
};

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    if (argc == 3 && qstrcmp(argv[1], "--write-then-die") == 0)
        return writeThenDie(QString::fromLocal8Bit(argv[2]));
    TstSdkLinuxLedger test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_sdklinux_ledger.moc"
