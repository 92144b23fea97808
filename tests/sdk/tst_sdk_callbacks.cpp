// Registration of statistics callbacks and the ticks that reach them.
#include "SdkTestSupport.h"

#include <QThread>

#include <atomic>
#include <chrono>
#include <mutex>
#include <thread>
#include <vector>

using velt::Sdk;
using velt::SimulatedBackend;

namespace {
struct Call
{
    char who;
    int event;
    int firstByte;
    std::thread::id thread;
    quint64 liveReceived; // what the callback read back from the SDK
};

// A std::vector, so that the copies handed out share nothing with the
// list that the ticking thread appends to.
std::mutex g_mutex;
std::vector<Call> g_calls;

void record(char who, int event, void* data)
{
    Call call{who, event, -1, std::this_thread::get_id(), 0};
    if (data)
        call.firstByte = *static_cast<unsigned char*>(data);
    QByteArray report(VELT_STATISTICS_REPORT_SIZE, 0);
    if (VELT_Statistics_GetReport(VELT_REPORT_LIVE, report.data(), 0) == 0)
        call.liveReceived = velt::readReport(report.constData()).bytesReceived;
    std::lock_guard lock(g_mutex);
    g_calls.push_back(call);
}

QList<Call> calls()
{
    std::lock_guard lock(g_mutex);
    return QList<Call>(g_calls.begin(), g_calls.end());
}

QByteArray callers()
{
    QByteArray who;
    for (const Call& call : calls())
        who += call.who;
    return who;
}

int callbackA(int event, void* data)
{
    record('A', event, data);
    return 1;
}

int callbackB(int event, void* data)
{
    record('B', event, data);
    return 1;
}

int unregistersItself(int event, void* data)
{
    record('S', event, data);
    VELT_Statistics_UnRegisterStatisticsCallbackEvent(unregistersItself);
    return 1;
}

int unregistersB(int event, void* data)
{
    record('U', event, data);
    VELT_Statistics_UnRegisterStatisticsCallbackEvent(callbackB);
    return 1;
}

// Relays a tick as a signal, the way the plug-in's bridge does.
class Relay : public QObject
{
    Q_OBJECT
signals:
    void ticked(bool connected);
};

Relay* g_relay = nullptr;

int relayCallback(int, void* data)
{
    if (g_relay && data)
        emit g_relay->ticked(*static_cast<unsigned char*>(data) != 0);
    return 1;
}

// Holds its tick until released, to catch an unregistration that does not wait.
std::atomic<bool> g_slowEntered{false};
std::atomic<bool> g_slowRelease{false};
std::atomic<bool> g_slowFinished{false};

int slowCallback(int, void*)
{
    g_slowEntered = true;
    for (int i = 0; i < 5000 && !g_slowRelease; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    g_slowFinished = true;
    return 1;
}
} // namespace

class TstSdkCallbacks : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void registeringTwiceCallsOncePerTick();
    void tickCarriesConnectionState_data();
    void tickCarriesConnectionState();
    void unregisterStopsCalls();
    void badRegistrationsFail_data();
    void badRegistrationsFail();
    void callbackMayUnregisterDuringTick();
    void tickOnSdkThreadRunsThere();
    void tickFromSdkThreadReachesGuiQueued();
    void unregisterWaitsForRunningCallback();
    void backendSwapKeepsCallbacks();
    void swapStopsTheOldBackendsTicks();
    void nullBackendRestoresDefault();

private:
    SimulatedBackend* m_backend = nullptr;
};

void TstSdkCallbacks::init()
{
    m_backend = installFreshBackend();
    std::lock_guard lock(g_mutex);
    g_calls.clear();
}

void TstSdkCallbacks::cleanup()
{
    for (VELT_StatisticsCallback callback : {callbackA, callbackB, unregistersItself, unregistersB, relayCallback,
                                             slowCallback})
        Sdk::instance().unregisterCallback(callback);
}

void TstSdkCallbacks::registeringTwiceCallsOncePerTick()
{
    QCOMPARE(VELT_Statistics_RegisterStatisticsCallbackEvent(callbackA), 0);
    QCOMPARE(VELT_Statistics_RegisterStatisticsCallbackEvent(callbackA), 0);
    QCOMPARE(VELT_Statistics_RegisterStatisticsCallbackEvent(callbackB), 0);

    m_backend->tick();
    m_backend->tick();

    QCOMPARE(callers(), QByteArray("ABAB"));
    // One unregistration undoes both registrations.
    QCOMPARE(VELT_Statistics_UnRegisterStatisticsCallbackEvent(callbackA), 0);
    m_backend->tick();
    QCOMPARE(callers(), QByteArray("ABABB"));
}

void TstSdkCallbacks::tickCarriesConnectionState_data()
{
    QTest::addColumn<bool>("connected");
    QTest::addColumn<int>("firstByte");
    QTest::newRow("connected") << true << 1;
    QTest::newRow("disconnected") << false << 0;
}

void TstSdkCallbacks::tickCarriesConnectionState()
{
    QFETCH(bool, connected);
    QFETCH(int, firstByte);
    QCOMPARE(VELT_Statistics_RegisterStatisticsCallbackEvent(callbackA), 0);
    m_backend->setConnected(connected);

    m_backend->tick();

    const QList<Call> seen = calls();
    QCOMPARE(seen.size(), 1);
    QCOMPARE(seen.first().event, int(VELT_EVENT_STATISTICS_CHANGED));
    QCOMPARE(seen.first().firstByte, firstByte);
}

void TstSdkCallbacks::unregisterStopsCalls()
{
    QCOMPARE(VELT_Statistics_RegisterStatisticsCallbackEvent(callbackA), 0);
    QCOMPARE(VELT_Statistics_RegisterStatisticsCallbackEvent(callbackB), 0);
    m_backend->tick();

    QCOMPARE(VELT_Statistics_UnRegisterStatisticsCallbackEvent(callbackA), 0);
    m_backend->tick();

    QCOMPARE(callers(), QByteArray("ABB"));
    QVERIFY(VELT_Statistics_UnRegisterStatisticsCallbackEvent(callbackA) != 0);
}

void TstSdkCallbacks::badRegistrationsFail_data()
{
    QTest::addColumn<bool>("registering");
    QTest::addColumn<bool>("null");
    QTest::newRow("register null") << true << true;
    QTest::newRow("unregister null") << false << true;
    QTest::newRow("unregister unknown") << false << false;
}

void TstSdkCallbacks::badRegistrationsFail()
{
    QFETCH(bool, registering);
    QFETCH(bool, null);
    QCOMPARE(VELT_Statistics_RegisterStatisticsCallbackEvent(callbackB), 0);
    VELT_StatisticsCallback callback = null ? nullptr : callbackA;

    const int result = registering ? VELT_Statistics_RegisterStatisticsCallbackEvent(callback)
                                   : VELT_Statistics_UnRegisterStatisticsCallbackEvent(callback);

    QVERIFY(result != 0);
    // The registered callback is unaffected.
    m_backend->tick();
    QCOMPARE(callers(), QByteArray("B"));
}

void TstSdkCallbacks::callbackMayUnregisterDuringTick()
{
    QCOMPARE(VELT_Statistics_RegisterStatisticsCallbackEvent(unregistersItself), 0);
    QCOMPARE(VELT_Statistics_RegisterStatisticsCallbackEvent(unregistersB), 0);
    QCOMPARE(VELT_Statistics_RegisterStatisticsCallbackEvent(callbackB), 0);
    QCOMPARE(VELT_Statistics_RegisterStatisticsCallbackEvent(callbackA), 0);

    m_backend->tickOnSdkThread();
    m_backend->tickOnSdkThread();

    // B was unregistered before its turn in the first tick.
    QCOMPARE(callers(), QByteArray("SUAUA"));
}

void TstSdkCallbacks::tickOnSdkThreadRunsThere()
{
    QCOMPARE(VELT_Statistics_RegisterStatisticsCallbackEvent(callbackA), 0);
    m_backend->setReport(VELT_REPORT_LIVE, record(4242, 1, 0, 0, 1));
    m_backend->setConnected(true);

    m_backend->tickOnSdkThread();

    // Already run when the call returns, on a thread of the SDK's own.
    const QList<Call> seen = calls();
    QCOMPARE(seen.size(), 1);
    QVERIFY(seen.first().thread != std::this_thread::get_id());
    QCOMPARE(seen.first().firstByte, 1);
    QCOMPARE(seen.first().liveReceived, quint64(4242));
}

void TstSdkCallbacks::tickFromSdkThreadReachesGuiQueued()
{
    Relay relay;
    QList<QPair<bool, QThread*>> received;
    connect(&relay, &Relay::ticked, this,
            [&received](bool connected) { received.append({connected, QThread::currentThread()}); });
    g_relay = &relay;
    QCOMPARE(VELT_Statistics_RegisterStatisticsCallbackEvent(relayCallback), 0);
    m_backend->setConnected(true);

    m_backend->tickOnSdkThread();

    QVERIFY2(received.isEmpty(), "a tick from another thread must not run the slot directly");
    QTRY_COMPARE(received.size(), 1);
    g_relay = nullptr;
    QCOMPARE(received.first().first, true);
    QCOMPARE(received.first().second, QThread::currentThread());
}

void TstSdkCallbacks::unregisterWaitsForRunningCallback()
{
    g_slowEntered = false;
    g_slowRelease = false;
    g_slowFinished = false;
    QCOMPARE(VELT_Statistics_RegisterStatisticsCallbackEvent(slowCallback), 0);
    std::thread ticker([this] { m_backend->tickOnSdkThread(); });
    QTRY_VERIFY(g_slowEntered.load());

    std::atomic<bool> unregistered{false};
    std::atomic<bool> finishedWhenUnregistered{false};
    std::thread unregisterer([&] {
        VELT_Statistics_UnRegisterStatisticsCallbackEvent(slowCallback);
        finishedWhenUnregistered = g_slowFinished.load();
        unregistered = true;
    });
    // A correct unregistration blocks here; a wrong one returns at once.
    QTest::qWait(100);
    g_slowRelease = true;
    unregisterer.join();
    ticker.join();

    QVERIFY(unregistered.load());
    QVERIFY2(finishedWhenUnregistered.load(), "unregistration returned while the callback still ran");
}

void TstSdkCallbacks::backendSwapKeepsCallbacks()
{
    QCOMPARE(VELT_Statistics_RegisterStatisticsCallbackEvent(callbackA), 0);
    m_backend->setReport(VELT_REPORT_LIVE, record(111, 0, 0, 0, 0));
    m_backend->tick();

    SimulatedBackend* next = installFreshBackend();
    next->setReport(VELT_REPORT_LIVE, record(222, 0, 0, 0, 0));
    next->tickOnSdkThread();

    const QList<Call> seen = calls();
    QCOMPARE(seen.size(), 2);
    QCOMPARE(seen.at(0).liveReceived, quint64(111));
    QCOMPARE(seen.at(1).liveReceived, quint64(222));
    QCOMPARE(SimulatedBackend::current(), next);
}

void TstSdkCallbacks::swapStopsTheOldBackendsTicks()
{
    QCOMPARE(VELT_Statistics_RegisterStatisticsCallbackEvent(callbackA), 0);
    m_backend->startDemo(std::chrono::milliseconds(1));
    QTRY_VERIFY(calls().size() >= 5);

    SimulatedBackend* next = installFreshBackend();
    const int before = calls().size();
    next->setReport(VELT_REPORT_LIVE, record(333, 0, 0, 0, 0));
    next->tick();

    const QList<Call> seen = calls();
    QCOMPARE(seen.size(), before + 1);
    QCOMPARE(seen.last().liveReceived, quint64(333));
}

void TstSdkCallbacks::nullBackendRestoresDefault()
{
    m_backend->setCustomizeName("scripted");
    Sdk::instance().setBackend(nullptr);

    QVERIFY(SimulatedBackend::current());
    QVERIFY(SimulatedBackend::current() != m_backend);
    char name[VELT_CUSTOMIZE_NAME_SIZE] = {};
    QCOMPARE(VELT_DevSrv_GetCustomizeName(name), 0);
    QCOMPARE(QByteArray(name), QByteArray("common"));
}

QTEST_GUILESS_MAIN(TstSdkCallbacks)
#include "tst_sdk_callbacks.moc"
