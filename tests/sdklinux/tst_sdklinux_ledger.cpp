// The Linux backend over a fake /proc and a temporary ledger: counter
// sequences, what is counted, reports, periods, reset, restarts, files that
// are kept or moved aside, and two processes. Killed writers: tests/faults.
#include "FakeProc.h"
#include "LinuxBackend.h"
#include "SdkTestSupport.h"
#include "UsageLedger.h"

#include <QSqlDatabase>
#include <QSqlQuery>

#include <ctime>

using namespace velt;

namespace {
// Wednesday 2024-03-13 23:59:58 in Berlin.
constexpr qint64 kBeforeMidnightMs = 1710370798000;
// Saturday 2024-06-15 12:00 in Berlin.
constexpr qint64 kJuneMs = 1718445600000;

StatisticsRecord usage(quint64 received, quint64 sent, qint64 seconds = 0)
{
    return StatisticsRecord { received, sent, 0, 0, seconds, 0 };
}

StatisticsRecord report(LinuxBackend& backend, int kind)
{
    StatisticsRecord record;
    backend.report(kind, record);
    return record;
}

// Runs SQL on the ledger through a connection of its own, as another program would.
struct OtherProgram
{
    explicit OtherProgram(const QString& path)
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        db.setDatabaseName(path);
        db.open();
    }
    ~OtherProgram()
    {
        QSqlDatabase::database(name).close();
        QSqlDatabase::removeDatabase(name);
    }
    bool run(const QString& statements)
    {
        QSqlQuery query(QSqlDatabase::database(name));
        for (const QString& statement : statements.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
            if (!query.exec(statement))
                return false;
        }
        return true;
    }
    const QString name = QStringLiteral("other-program");
};

bool step(FakeProc& proc, LinuxBackend& backend, qint64 ms, const QString& name, quint64 rx, quint64 tx)
{
    proc.advance(ms);
    proc.set(name, rx, tx);
    return proc.write() && backend.tickNow();
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
        QTest::addColumn<StatisticsRecord>("weekAndMonth");
        QTest::newRow("Thursday, 14th")
            << QByteArray("[uselimit]\nstartweekdate=4\nstartmonthdate=13\n") << usage(7000, 1000, 2);
        QTest::newRow("odd values") << QByteArray("[uselimit]\nstartweekdate=9\nstartmonthdate=x\n")
                                    << usage(9000, 1500, 3);
    }

    void periods()
    {
        QFETCH(QByteArray, settings);
        QFETCH(StatisticsRecord, weekAndMonth);
        QFile file(m_proc->dir.filePath(QStringLiteral("netinfo-host.conf")));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(settings) == settings.size());
        file.close();
        if (settings.contains('x')) {
            QTest::ignoreMessage(
                QtWarningMsg, QRegularExpression("startweekdate=\"9\" is not between 0 and 6"));
            QTest::ignoreMessage(
                QtWarningMsg, QRegularExpression("startmonthdate=\"x\" is not between 0 and 30"));
        }
        auto backend = acrossMidnight();
        QVERIFY(backend);

        // Not yet committed, yet every report has it.
        QCOMPARE(report(*backend, VELT_REPORT_LIVE), (StatisticsRecord { 9000, 1500, 3500, 500, 3, 0 }));
        QCOMPARE(report(*backend, VELT_REPORT_TODAY), usage(7000, 1000, 2));
        QCOMPARE(report(*backend, VELT_REPORT_WEEK), weekAndMonth);
        QCOMPARE(report(*backend, VELT_REPORT_MONTH), weekAndMonth);
        QCOMPARE(report(*backend, VELT_REPORT_YEAR), usage(9000, 1500, 3));
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

    void counterSequences_data()
    {
        // Each tick one second on: "name#ifindex=bytes" per device (both ways), "@Mb/s" for a reported
        // speed, "!" for a link not metered now; every other one is.
        QTest::addColumn<QStringList>("ticks");
        QTest::addColumn<quint64>("booked");
        QTest::addColumn<bool>("warns");
        const auto row = [](const char* name, const QStringList& ticks, quint64 booked, bool warns = false) {
            QTest::newRow(name) << ticks << booked << warns;
        };
        row("32-bit wrap", { QStringLiteral("wwan0#5=%1").arg((quint64(1) << 32) - 296), "wwan0#5=704" },
            1000);
        row("64-bit wrap is not plausible", { "wwan0#5=18446744073709551000", "wwan0#5=500", "wwan0#5=900" },
            900);
        row("step back is a reset", { "wwan0#5=6000001000", "wwan0#5=6000000000", "wwan0#5=6000000500" }, 500,
            true);
        row("driver reset near 3e9", { "wwan0#5=3000000000", "wwan0#5=2000" }, 2000);
        row("reset within the link's speed", { "wwan0#5@8=3000", "wwan0#5@8=2000" }, 2000);
        row("spike beyond any link", { "wwan0#5=1000", "wwan0#5=9000000000", "wwan0#5=9000001000" }, 1000,
            true);
        row("spike beyond the link's speed", { "wwan0#5@1=0", "wwan0#5@1=200000", "wwan0#5@1=300000" },
            100000, true);
        row("renamed away and back", { "wwan0#5=1000", "x#5!=5000", "wwan0#5=16000" }, 15000);
        row("not metered for a while", { "wlan0#5=1000", "wlan0#5!=5000", "wlan0#5=5500", "wlan0#5=5600" },
            100);
        row("re-created", { "wwan0#5=1000", "wwan0#6=300" }, 300);
        row("two modems", { "wwan0#5=0 ppp0#6=10", "wwan0#5=100 ppp0#6=60" }, 150);
    }

    void counterSequences()
    {
        QFETCH(QStringList, ticks);
        QFETCH(quint64, booked);
        QFETCH(bool, warns);
        if (warns)
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("jumped further than the link can carry"));
        m_proc->state->wallMs = kJuneMs;
        auto links = std::make_shared<QList<LinkInfo>>();
        LinuxOptions options = m_proc->options(database());
        options.linkInfo
            = [links] { return *links; }; // read on the sampler while this thread waits in tickNow()
        auto backend = std::make_unique<LinuxBackend>(options);
        for (int i = 0; i < ticks.size(); ++i) {
            links->clear();
            m_proc->state->mutex.lock();
            m_proc->state->devices.clear();
            m_proc->state->mutex.unlock();
            for (const QString& device : ticks.at(i).split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
                const QRegularExpressionMatch m
                    = QRegularExpression("(\\w+)#(\\d+)(?:@(\\d+))?(!?)=(\\d+)").match(device);
                QVERIFY(m.hasMatch());
                const quint64 bytes = m.captured(5).toULongLong();
                links->append(LinkInfo { m.captured(1), QString(), m.captured(4).isEmpty() });
                m_proc->set(m.captured(1), bytes, bytes, m.captured(2).toUInt(), true, m.captured(3).toInt());
            }
            m_proc->advance(1000);
            QVERIFY(m_proc->write());
            QVERIFY(i == 0 ? backend->start(nullptr) == Ok : backend->tickNow());
        }
        QCOMPARE(report(*backend, VELT_REPORT_YEAR).bytesReceived, booked);
        backend.reset();
        UsageLedger ledger(database(), LedgerAccess::ReadOnly);
        QCOMPARE(ledger.total(0, kJuneMs / 1000 + 3600).sent, booked);
    }

    void countedSet_data()
    {
        // Devices eth0 (the default route's), wlan0 (a hotspot) and wwan0; each moves 100 bytes a tick.
        QTest::addColumn<QStringList>("chosen");
        QTest::addColumn<QString>("metered"); // what NetworkManager says is metered; "-": no NetworkManager
        QTest::addColumn<bool>("meteredSeen");
        QTest::addColumn<QStringList>("counted");
        QTest::addColumn<bool>("fallback");
        QTest::newRow("mobile names") << QStringList() << "-" << false << QStringList { "wwan0" } << false;
        QTest::newRow("metered links")
            << QStringList() << "wlan0" << false << QStringList { "wlan0" } << false;
        QTest::newRow("chosen") << QStringList { "eth0", "wlan0" } << "wwan0" << false
                                << QStringList { "eth0", "wlan0" } << false;
        QTest::newRow("nothing metered: the default route's")
            << QStringList() << "" << false << QStringList { "eth0" } << true;
        QTest::newRow("nothing metered, one was before")
            << QStringList() << "" << true << QStringList() << false;
    }

    void countedSet()
    {
        QFETCH(QStringList, chosen);
        QFETCH(QString, metered);
        QFETCH(bool, meteredSeen);
        QFETCH(QStringList, counted);
        m_proc->state->wallMs = kJuneMs;
        m_proc->route = QStringLiteral("eth0");
        const QStringList names { "eth0", "wlan0", "wwan0" };
        auto traffic = [&](quint64 bytes) {
            for (int i = 0; i < names.size(); ++i)
                m_proc->set(names.at(i), bytes, bytes, quint32(i + 2));
            m_proc->advance(1000);
            return m_proc->write();
        };
        LinuxOptions options = m_proc->options(database());
        options.interfaceNames = chosen;
        if (metered != QLatin1String("-")) {
            options.linkInfo = [names, metered] {
                QList<LinkInfo> links;
                for (const QString& name : names)
                    links.append(LinkInfo { name, QStringLiteral("home"), name == metered });
                return links;
            };
        }
        if (meteredSeen) { // an earlier run counted the modem
            QVERIFY(traffic(0));
            LinuxBackend modem(m_proc->options(database()));
            modem.start(nullptr);
        }
        QVERIFY(traffic(1000));
        LinuxBackend backend(options);
        backend.start(nullptr);
        QVERIFY(traffic(1100) && backend.tickNow() && traffic(1200) && backend.tickNow());
        QCOMPARE(backend.recordingStatus().counted, counted);
        QTEST(backend.recordingStatus().fallbackInterface, "fallback");
        QCOMPARE(report(backend, VELT_REPORT_TODAY).bytesReceived, 200ull * counted.size());
        backend.stop();
        // Booked per interface, under the connection NetworkManager named.
        const QString connection = metered == QLatin1String("-") ? QString() : QStringLiteral("home");
        const QList<KeyedUsage> keyed
            = UsageLedger(database(), LedgerAccess::ReadOnly).usageByKey(0, kJuneMs / 1000 + 3600);
        QCOMPARE(keyed.size(), counted.size());
        for (const KeyedUsage& entry : keyed)
            QVERIFY(counted.contains(entry.key.interfaceName) && entry.key.connection == connection
                && entry.usage.received == 200);
    }

    void ledgerKeptOrMovedAside_data()
    {
        QTest::addColumn<QString>("trouble");
        QTest::addColumn<bool>("movedAside");
        QTest::addColumn<quint64>("readsMeanwhile");
        QTest::newRow("not SQLite") << "garbage" << true << 5ull;
        QTest::newRow("locked by another program") << "BEGIN EXCLUSIVE" << false << 105ull;
    }

    void ledgerKeptOrMovedAside()
    {
        QFETCH(QString, trouble);
        QFETCH(bool, movedAside);
        const qint64 now = kJuneMs / 1000;
        {
            UsageLedger ledger(database());
            QVERIFY(ledger.open(now));
            ledger.add({ QStringLiteral("wwan0"), QString() }, now, Usage { 100, 10, 0 });
            QVERIFY(ledger.commit());
        }
        auto other = std::make_unique<OtherProgram>(database());
        if (trouble == QLatin1String("garbage")) {
            other.reset();
            QFile file(database());
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(QByteArray(4096, '\x5a')) == 4096);
        } else {
            QVERIFY(other->run(trouble));
        }
        if (movedAside)
            QTest::ignoreMessage(QtWarningMsg,
                QRegularExpression("usage.sqlite is unreadable .*; moved it to .*usage.sqlite.corrupt-"));
        else
            QTest::ignoreMessage(
                QtWarningMsg, QRegularExpression("in use by another program|cannot be opened"));

        UsageLedger ledger(database());
        ledger.open(now);
        ledger.add({ QStringLiteral("wwan0"), QString() }, now, Usage { 5, 6, 7 });
        const bool written = ledger.commit();
        QCOMPARE(written, movedAside);
        QCOMPARE(ledger.problem().isEmpty(), movedAside);
        QTEST(ledger.total(0, now + 900).received, "readsMeanwhile"); // pending included
        const QStringList aside
            = QFileInfo(database()).dir().entryList({ QStringLiteral("usage.sqlite.corrupt-*") });
        QCOMPARE(!aside.isEmpty(), movedAside);

        // Written once the file can be written again.
        other.reset();
        QVERIFY(ledger.commit());
        QVERIFY(ledger.problem().isEmpty());
        ledger.close();
        UsageLedger again(database(), LedgerAccess::ReadOnly);
        QCOMPARE(again.total(0, now + 900).received, movedAside ? 5ull : 105ull);
    }

    void upgradeKeepsRows()
    {
        QDir().mkpath(QFileInfo(database()).absolutePath());
        {
            OtherProgram old(database());
            QVERIFY(old.run("CREATE TABLE meta (key TEXT PRIMARY KEY, value TEXT NOT NULL);"
                            "CREATE TABLE usage (interface TEXT NOT NULL, bucket INTEGER NOT NULL, received "
                            "INTEGER NOT NULL DEFAULT 0,"
                            " sent INTEGER NOT NULL DEFAULT 0, connected_ms INTEGER NOT NULL DEFAULT 0, "
                            "PRIMARY KEY (interface, bucket)) WITHOUT ROWID;"
                            "CREATE INDEX usage_by_bucket ON usage (bucket);"
                            "CREATE TABLE baseline (id INTEGER PRIMARY KEY CHECK (id = 1), interface TEXT "
                            "NOT NULL, boot_id TEXT NOT NULL,"
                            " ifindex INTEGER NOT NULL, received INTEGER NOT NULL, sent INTEGER NOT NULL);"
                            "INSERT INTO meta VALUES ('schema', '1'), ('reset_time', '1700000000');"
                            "INSERT INTO usage VALUES ('wwan0', 1718445600, 100, 10, 1000), ('wwan0', "
                            "1718359200, 200, 20, 0),"
                            " ('ppp0', 1718445600, 40, 4, 0);"
                            "INSERT INTO baseline VALUES (1, 'wwan0', 'boot', 2, 5, 6)"));
        }
        UsageLedger ledger(database());
        QVERIFY(ledger.open(kJuneMs / 1000));
        QCOMPARE(ledger.resetTime(), 1700000000);
        QCOMPARE(ledger.baselines().at(QStringLiteral("wwan0")).sent, 6ull);
        QCOMPARE(ledger.total(1718359200, 1718445600).received, 200ull); // from the day roll-up
        QCOMPARE(ledger.total(0, kJuneMs / 1000 + 900).received, 340ull);
        const QList<KeyedUsage> keyed = ledger.usageByKey(1718445600, 1718446500);
        QCOMPARE(keyed.size(), 2);
        QVERIFY(keyed.at(0).key.interfaceName == "ppp0" && keyed.at(1).usage.connectedMs == 1000);
    }

    void recorderTakesOverFromTheApp()
    {
        // The application records alone, then a recorder starts: every byte once, both show the same.
        m_proc->state->wallMs = kJuneMs;
        quint64 bytes = 5000;
        auto traffic = [&] {
            bytes += 1000;
            m_proc->set(QStringLiteral("wwan0"), bytes, bytes);
            m_proc->advance(1000);
            return m_proc->write();
        };
        QVERIFY(traffic());
        LinuxOptions appOptions = m_proc->options(database());
        LinuxOptions recorderOptions = appOptions;
        recorderOptions.role = RecordingRole::Recorder;
        LinuxBackend app(appOptions);
        app.start(nullptr);
        QVERIFY(traffic() && app.tickNow() && traffic() && app.tickNow());
        QVERIFY(app.recordingStatus().recording);

        LinuxBackend recorder(recorderOptions);
        recorder.start(nullptr);
        QVERIFY(!recorder.recordingStatus().recording);
        QVERIFY(traffic() && app.tickNow()); // sees the recorder, hands over
        QVERIFY(!app.recordingStatus().recording && app.recordingStatus().recorderRunning);
        QVERIFY(traffic() && recorder.tickNow());
        QVERIFY(recorder.recordingStatus().recording);
        for (int i = 0; i < 3; ++i)
            QVERIFY(traffic() && recorder.tickNow() && app.tickNow());
        QCOMPARE(report(app, VELT_REPORT_YEAR).bytesReceived, bytes - 6000);
        QCOMPARE(report(recorder, VELT_REPORT_YEAR).bytesReceived, bytes - 6000);

        // The recorder goes: the application records again, from where it stopped.
        recorder.stop();
        QVERIFY(traffic() && app.tickNow() && traffic() && app.tickNow());
        QVERIFY(app.recordingStatus().recording);
        app.stop();
        UsageLedger ledger(database(), LedgerAccess::ReadOnly);
        QCOMPARE(ledger.total(0, kJuneMs / 1000 + 3600).received, bytes - 6000);
    }

private:
    std::unique_ptr<FakeProc> m_proc;
};

QTEST_GUILESS_MAIN(TstSdkLinuxLedger)
#include "tst_sdklinux_ledger.moc"
