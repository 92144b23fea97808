// The simulated backend: its defaults, the reset and the demo traffic.
#include "SdkTestSupport.h"

#include <array>
#include <mutex>
#include <vector>

using velt::SimulatedBackend;
using velt::StatisticsRecord;

Q_DECLARE_METATYPE(velt::StatisticsRecord)

namespace {
constexpr quint64 KB = 1024;
constexpr quint64 MB = 1024 * KB;
constexpr quint64 GB = 1024 * MB;
constexpr qint64 kNow = 1'700'000'000;
constexpr int kSequenceTicks = 60;
constexpr int kPeriodKinds[] = {VELT_REPORT_TODAY, VELT_REPORT_WEEK, VELT_REPORT_MONTH, VELT_REPORT_YEAR};

// What a callback saw through the C API on one tick.
struct Snapshot
{
    bool connected = false;
    std::array<StatisticsRecord, VELT_REPORT_YEAR + 1> kinds;
};

// A std::vector, so that the copies handed out share nothing with the
// list that the demo thread appends to.
std::mutex g_mutex;
std::vector<Snapshot> g_snapshots;

int snapshotCallback(int, void* data)
{
    Snapshot snapshot;
    snapshot.connected = data && *static_cast<unsigned char*>(data) != 0;
    for (int kind = VELT_REPORT_LIVE; kind <= VELT_REPORT_YEAR; ++kind) {
        QByteArray report(VELT_STATISTICS_REPORT_SIZE, 0);
        if (VELT_Statistics_GetReport(kind, report.data(), 0) == 0)
            snapshot.kinds[kind] = velt::readReport(report.constData());
    }
    std::lock_guard lock(g_mutex);
    g_snapshots.push_back(snapshot);
    return 1;
}

int snapshotCount()
{
    std::lock_guard lock(g_mutex);
    return g_snapshots.size();
}

QList<Snapshot> snapshots()
{
    std::lock_guard lock(g_mutex);
    return QList<Snapshot>(g_snapshots.begin(), g_snapshots.end());
}

void clearSnapshots()
{
    std::lock_guard lock(g_mutex);
    g_snapshots.clear();
}

QString describe(int tick, const QString& what)
{
    return QStringLiteral("tick %1: %2").arg(tick).arg(what);
}
} // namespace

class TstSdkSimulated : public QObject
{
    Q_OBJECT

private slots:
    void defaultBackendIsQuiet();
    void init();
    void cleanup();

    void resetClearsPeriods_data();
    void resetClearsPeriods();
    void demoStartsFromPlausibleUsage();
    void demoCountersGrowWithPlausibleSpeeds();
    void demoSameSeedSameSequence_data();
    void demoSameSeedSameSequence();
    void demoStopsCountingWhenDisconnected();

private:
    // Runs the demo until `ticks` snapshots are in, then stops it.
    QList<Snapshot> runDemo(int ticks, quint32 seed);

    SimulatedBackend* m_backend = nullptr;
};

// Runs first, before any test replaces the backend the SDK starts with.
void TstSdkSimulated::defaultBackendIsQuiet()
{
    SimulatedBackend* backend = SimulatedBackend::current();
    QVERIFY(backend);
    QVERIFY(backend->isSupported());
    QVERIFY(!backend->isConnected());
    QVERIFY(!backend->isDemoRunning());
    for (int kind = VELT_REPORT_LIVE; kind <= VELT_REPORT_YEAR; ++kind) {
        QByteArray report(VELT_STATISTICS_REPORT_SIZE, 1);
        QCOMPARE(VELT_Statistics_GetReport(kind, report.data(), 0), 0);
        QCOMPARE(report, QByteArray(VELT_STATISTICS_REPORT_SIZE, 0));
    }
    char name[VELT_CUSTOMIZE_NAME_SIZE] = {};
    QCOMPARE(VELT_DevSrv_GetCustomizeName(name), 0);
    QCOMPARE(QByteArray(name), QByteArray("common"));
}

void TstSdkSimulated::init()
{
    m_backend = installFreshBackend([] { return kNow; });
    clearSnapshots();
}

void TstSdkSimulated::cleanup()
{
    m_backend->stopDemo();
    velt::Sdk::instance().unregisterCallback(snapshotCallback);
}

QList<Snapshot> TstSdkSimulated::runDemo(int ticks, quint32 seed)
{
    clearSnapshots();
    m_backend->startDemo(std::chrono::milliseconds(1), seed);
    // A short list on time-out fails the caller's checks.
    if (!QTest::qWaitFor([ticks] { return snapshotCount() >= ticks; }, 60000))
        qWarning("the demo produced only %d of %d ticks", snapshotCount(), ticks);
    m_backend->stopDemo();
    return snapshots();
}

void TstSdkSimulated::resetClearsPeriods_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<StatisticsRecord>("expected");
    QTest::newRow("live untouched") << int(VELT_REPORT_LIVE) << record(1000, 100, 50, 5, 60, 7);
    QTest::newRow("today cleared") << int(VELT_REPORT_TODAY) << StatisticsRecord();
    QTest::newRow("last reset stamped") << int(VELT_REPORT_LAST_RESET) << record(1002, 102, 52, 7, 62, quint32(kNow));
    QTest::newRow("week cleared") << int(VELT_REPORT_WEEK) << StatisticsRecord();
    QTest::newRow("month cleared") << int(VELT_REPORT_MONTH) << StatisticsRecord();
    QTest::newRow("year cleared") << int(VELT_REPORT_YEAR) << StatisticsRecord();
}

void TstSdkSimulated::resetClearsPeriods()
{
    QFETCH(int, kind);
    QFETCH(StatisticsRecord, expected);
    for (int k = VELT_REPORT_LIVE; k <= VELT_REPORT_YEAR; ++k)
        m_backend->setReport(k, record(1000 + k, 100 + k, 50 + k, 5 + k, 60 + k, 7));
    m_backend->setHistory(record(9, 9, 9, 9, 9, 9));

    QCOMPARE(VELT_Statistics_Reset(0), 0);

    QCOMPARE(m_backend->reportFor(kind), expected);
    QByteArray report(VELT_STATISTICS_REPORT_SIZE, 0);
    QCOMPARE(VELT_Statistics_GetSpecHistroryData(report.data(), 86400), 0);
    QCOMPARE(velt::readReport(report.constData()), StatisticsRecord());
}

void TstSdkSimulated::demoStartsFromPlausibleUsage()
{
    // An interval long enough that no step happens; stopping must not wait for it.
    m_backend->startDemo(std::chrono::hours(1));
    QVERIFY(m_backend->isDemoRunning());
    QVERIFY(m_backend->isConnected());
    const StatisticsRecord live = m_backend->reportFor(VELT_REPORT_LIVE);
    const StatisticsRecord today = m_backend->reportFor(VELT_REPORT_TODAY);
    const StatisticsRecord week = m_backend->reportFor(VELT_REPORT_WEEK);
    const StatisticsRecord month = m_backend->reportFor(VELT_REPORT_MONTH);
    const StatisticsRecord year = m_backend->reportFor(VELT_REPORT_YEAR);
    m_backend->stopDemo();

    QVERIFY(!m_backend->isDemoRunning());
    QCOMPARE(live, StatisticsRecord());
    QVERIFY(today.bytesReceived > 10 * MB && today.duration > 0);
    QVERIFY(today.bytesReceived <= week.bytesReceived);
    QVERIFY(week.bytesReceived <= month.bytesReceived);
    QVERIFY(month.bytesReceived <= year.bytesReceived);
    QVERIFY2(month.bytesReceived >= 1 * GB, "a monthly limit demo needs earlier usage");
    const quint32 lastReset = m_backend->reportFor(VELT_REPORT_LAST_RESET).resetTime;
    QVERIFY(lastReset > 0 && lastReset < kNow);
}

void TstSdkSimulated::demoCountersGrowWithPlausibleSpeeds()
{
    QCOMPARE(VELT_Statistics_RegisterStatisticsCallbackEvent(snapshotCallback), 0);
    // The figures the demo starts from, before its first step.
    std::array<StatisticsRecord, VELT_REPORT_YEAR + 1> previous;
    m_backend->startDemo(std::chrono::hours(1));
    for (int kind = VELT_REPORT_LIVE; kind <= VELT_REPORT_YEAR; ++kind)
        previous[kind] = m_backend->reportFor(kind);
    m_backend->stopDemo();

    const QList<Snapshot> seen = runDemo(400, SimulatedBackend::DefaultSeed);
    const int afterStop = snapshotCount();
    QVERIFY(seen.size() >= 400);

    int moderate = 0;
    int bursts = 0;
    int idle = 0;
    for (int i = 0; i < seen.size(); ++i) {
        const Snapshot& s = seen.at(i);
        const StatisticsRecord& live = s.kinds[VELT_REPORT_LIVE];
        QVERIFY2(s.connected, qPrintable(describe(i, "not connected")));
        QVERIFY2(live.duration == i + 1, qPrintable(describe(i, "one simulated second per tick")));
        // A second at the current speeds is exactly what was added.
        const quint64 received = live.bytesReceived - previous[VELT_REPORT_LIVE].bytesReceived;
        const quint64 sent = live.bytesSent - previous[VELT_REPORT_LIVE].bytesSent;
        QVERIFY2(received == live.receiveSpeed && sent == live.sendSpeed,
                 qPrintable(describe(i, "live bytes do not follow the speeds")));
        for (int kind : kPeriodKinds) {
            const StatisticsRecord& now = s.kinds[kind];
            const StatisticsRecord& before = previous[kind];
            QVERIFY2(now.bytesReceived - before.bytesReceived == received
                         && now.bytesSent - before.bytesSent == sent && now.duration == before.duration + 1,
                     qPrintable(describe(i, QStringLiteral("kind %1 did not grow with the live figures").arg(kind))));
        }
        QVERIFY2(live.receiveSpeed <= 8 * MB, qPrintable(describe(i, "download beyond mobile broadband")));
        QVERIFY2(live.sendSpeed <= live.receiveSpeed / 5 + KB, qPrintable(describe(i, "upload out of proportion")));
        if (live.receiveSpeed >= 20 * KB && live.receiveSpeed <= 600 * KB)
            ++moderate;
        else if (live.receiveSpeed > 1 * MB)
            ++bursts;
        else if (live.receiveSpeed < 2 * KB)
            ++idle;
        previous = s.kinds;
    }
    QVERIFY2(moderate >= seen.size() * 6 / 10, qPrintable(QStringLiteral("%1 moderate seconds").arg(moderate)));
    QVERIFY2(bursts > 0 && idle > 0, qPrintable(QStringLiteral("%1 burst and %2 idle seconds").arg(bursts).arg(idle)));

    // Stopped means no further ticks.
    QTest::qWait(20);
    QCOMPARE(snapshotCount(), afterStop);
}

void TstSdkSimulated::demoSameSeedSameSequence_data()
{
    QTest::addColumn<quint32>("seed");
    QTest::newRow("default") << SimulatedBackend::DefaultSeed;
    QTest::newRow("0") << quint32(0);
    QTest::newRow("largest") << quint32(0xffffffffu);
}

void TstSdkSimulated::demoSameSeedSameSequence()
{
    QFETCH(quint32, seed);
    QCOMPARE(VELT_Statistics_RegisterStatisticsCallbackEvent(snapshotCallback), 0);
    auto sequence = [this](quint32 s) {
        QList<StatisticsRecord> figures;
        const QList<Snapshot> seen = runDemo(kSequenceTicks, s);
        for (int i = 0; i < qMin(kSequenceTicks, int(seen.size())); ++i)
            figures << seen.at(i).kinds[VELT_REPORT_LIVE] << seen.at(i).kinds[VELT_REPORT_MONTH];
        return figures;
    };

    const QList<StatisticsRecord> first = sequence(seed);
    QCOMPARE(first.size(), 2 * kSequenceTicks);
    // A restart on the same backend replays it from the same starting figures.
    QCOMPARE(sequence(seed), first);
    QVERIFY(sequence(seed + 1) != first);
}

void TstSdkSimulated::demoStopsCountingWhenDisconnected()
{
    QCOMPARE(VELT_Statistics_RegisterStatisticsCallbackEvent(snapshotCallback), 0);
    m_backend->startDemo(std::chrono::milliseconds(1));
    QTRY_VERIFY(snapshotCount() >= 3);

    m_backend->setConnected(false);
    QTRY_VERIFY(snapshots().size() >= 3 && !snapshots().last().connected);
    const int firstOffline = snapshotCount() - 1;
    QTRY_VERIFY(snapshotCount() >= firstOffline + 3);
    m_backend->stopDemo();

    const QList<Snapshot> seen = snapshots();
    const StatisticsRecord offline = seen.at(firstOffline).kinds[VELT_REPORT_MONTH];
    for (int i = firstOffline; i < seen.size(); ++i) {
        QVERIFY2(!seen.at(i).connected, qPrintable(describe(i, "connected again")));
        QCOMPARE(seen.at(i).kinds[VELT_REPORT_LIVE].receiveSpeed, 0u);
        QCOMPARE(seen.at(i).kinds[VELT_REPORT_MONTH], offline);
    }
}

QTEST_GUILESS_MAIN(TstSdkSimulated)
#include "tst_sdk_simulated.moc"
