// Statistics callbacks, the ticks that reach them, and backend swaps.
#include "SdkTestSupport.h"

#include <atomic>
#include <mutex>
#include <thread>
#include <vector>

using velt::Sdk;
using velt::SimulatedBackend;

namespace {

// What one callback saw on one tick: who it was, and the live report read back through the C API.
struct Call
{
    char who;
    quint64 liveReceived;
};

// A std::vector, so that the copies handed out share nothing with the list a ticking thread appends to.
std::mutex g_mutex;
std::vector<Call> g_calls;

QList<Call> calls(bool clear = false)
{
    std::lock_guard lock(g_mutex);
    QList<Call> copy(g_calls.begin(), g_calls.end());
    if (clear)
        g_calls.clear();
    return copy;
}

void note(char who, VELT_StatisticsCallback unregister = nullptr)
{
    const Call call { who, fetchReport(VELT_REPORT_LIVE).bytesReceived };
    {
        std::lock_guard lock(g_mutex);
        g_calls.push_back(call);
    }
    if (unregister)
        VELT_Statistics_UnRegisterStatisticsCallbackEvent(unregister);
}

int callbackA(int, void*)
{
    return note('A'), 1;
}
int callbackB(int, void*)
{
    return note('B'), 1;
}
int unregistersItself(int, void*)
{
    return note('S', unregistersItself), 1;
}
int unregistersB(int, void*)
{
    return note('U', callbackB), 1;
}

// The callback a registration script names by letter; anything else is null.
VELT_StatisticsCallback callbackFor(char letter)
{
    const QByteArray letters("ABSU");
    const VELT_StatisticsCallback callbacks[] = { callbackA, callbackB, unregistersItself, unregistersB };
    return letters.contains(letter) ? callbacks[letters.indexOf(letter)] : nullptr;
}

// Holds its tick until released, to catch an unregistration that does not wait.
std::atomic<bool> g_slowEntered { false }, g_slowRelease { false }, g_slowFinished { false };
int slowCallback(int, void*)
{
    g_slowEntered = true;
    for (int i = 0; i < 5000 && !g_slowRelease; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    g_slowFinished = true;
    return 1;
}

} // namespace

class TstSdkBackend : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_backend = installFreshBackend();
        calls(true);
    }
    void cleanup()
    {
        if (SimulatedBackend* current = SimulatedBackend::current())
            current->stopDemo();
        for (char who : QByteArray("ABSU"))
            Sdk::instance().unregisterCallback(callbackFor(who));
        Sdk::instance().unregisterCallback(slowCallback);
    }

    void registration_data()
    {
        // "+X" registers and "-X" unregisters callback X ('0' is null), "!" expects that to fail;
        // "t" ticks here and "T" on the SDK's thread. S unregisters itself, U unregisters B.
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<QByteArray>("callers");
        QTest::newRow("once per function") << QByteArray("+A +A +B t t -A t") << QByteArray("ABABB");
        QTest::newRow("unregister unknown") << QByteArray("+B -A! t") << QByteArray("B");
        QTest::newRow("null") << QByteArray("+B +0! -0! t") << QByteArray("B");
        QTest::newRow("unregister during tick") << QByteArray("+S +U +B +A T T") << QByteArray("SUAUA");
    }

    void registration()
    {
        QFETCH(QByteArray, script);
        for (const QByteArray& step : script.split(' ')) {
            if (step == "t" || step == "T") {
                step == "t" ? m_backend->tick() : m_backend->tickOnSdkThread();
                continue;
            }
            VELT_StatisticsCallback callback = callbackFor(step.at(1));
            const int result = step.startsWith('+')
                ? VELT_Statistics_RegisterStatisticsCallbackEvent(callback)
                : VELT_Statistics_UnRegisterStatisticsCallbackEvent(callback);
            QVERIFY2((result != 0) == step.endsWith('!'), step.constData());
        }
        QByteArray seen;
        for (const Call& call : calls())
            seen += call.who;
        QTEST(seen, "callers");
    }

    void unregisterWaitsForRunningCallback()
    {
        g_slowEntered = g_slowRelease = g_slowFinished = false;
        QCOMPARE(VELT_Statistics_RegisterStatisticsCallbackEvent(slowCallback), 0);
        std::thread ticker([this] { m_backend->tickOnSdkThread(); });
        QTRY_VERIFY(g_slowEntered.load());

        std::atomic<bool> finishedWhenUnregistered { false };
        std::thread unregisterer([&] {
            VELT_Statistics_UnRegisterStatisticsCallbackEvent(slowCallback);
            finishedWhenUnregistered = g_slowFinished.load();
        });
        QTest::qWait(100); // a correct unregistration blocks meanwhile
        g_slowRelease = true;
        unregisterer.join();
        ticker.join();

        QVERIFY2(finishedWhenUnregistered.load(), "unregistration returned while the callback still ran");
    }

    void backendSwap()
    {
        QCOMPARE(VELT_Statistics_RegisterStatisticsCallbackEvent(callbackA), 0);
        m_backend->startDemo(std::chrono::milliseconds(1));
        QTRY_VERIFY(calls().size() >= 3);

        SimulatedBackend* next = installFreshBackend();
        QCOMPARE(SimulatedBackend::current(), next);
        const int before = calls().size();
        next->setReport(VELT_REPORT_LIVE, record(333, 0, 0, 0, 0));
        QTest::qWait(20); // time for the old backend's demo to tick, were it still running
        next->tickOnSdkThread();

        // The old backend is silent; the registration survives and reads the new one.
        QCOMPARE(calls().size(), before + 1);
        QCOMPARE(calls().last().liveReceived, quint64(333));

        // Null restores a default simulated backend.
        Sdk::instance().setBackend(nullptr);
        QVERIFY(SimulatedBackend::current() && SimulatedBackend::current() != next);
    }

private:
    SimulatedBackend* m_backend = nullptr;
};

QTEST_GUILESS_MAIN(TstSdkBackend)
#include "tst_sdk_backend.moc"
