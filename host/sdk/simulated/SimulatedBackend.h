// A deterministic, scriptable statistics source: tests set the figures and
// the failures they need, and the demo mode plays plausible traffic.
#pragma once

#include "StatisticsBackend.h"

#include <array>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace velt {

class VELTSDK_EXPORT SimulatedBackend final : public StatisticsBackend
{
public:
    // Seconds since the epoch; the reset stamps kind 2 with it.
    using Clock = std::function<qint64()>;
    static constexpr quint32 DefaultSeed = 0x5eed2024u;

    // All figures zero, disconnected, edition "common"; the clock defaults to the system's.
    explicit SimulatedBackend(Clock clock = {});
    ~SimulatedBackend() override;

    // The SDK's current backend when it is a simulated one, else null.
    static SimulatedBackend* current();

    bool isSupported() const override;
    int start(TickSink* sink) override;
    void stop() override;
    int report(int kind, StatisticsRecord& record) override;
    int history(quint64 seconds, StatisticsRecord& record) override;
    // Zeroes kinds 1, 3, 4, 5 and the history and stamps kind 2's reset time;
    // the live connection (kind 0) goes on.
    int reset(int flag) override;
    int customizeName(QByteArray& name) override;
    // Counts the call and consumes a failure armed with failNext().
    bool failsNext(SdkCall call) override;

    void setReport(int kind, const StatisticsRecord& record);
    StatisticsRecord reportFor(int kind) const;
    void setHistory(const StatisticsRecord& record);
    quint64 lastHistoryKey() const;
    // Exactly the next call of that C function fails, once.
    void failNext(SdkCall call);
    int callCount(SdkCall call) const;
    void setConnected(bool connected);
    bool isConnected() const;
    void setCustomizeName(const QByteArray& name);

    // Ticks on the calling thread; does nothing unless started.
    void tick();
    // Ticks on a thread of its own and returns once the callbacks have run there.
    void tickOnSdkThread();

    // Connects and replays, on a worker thread, one simulated second of
    // traffic per interval; the same seed gives the same figures.
    void startDemo(std::chrono::milliseconds interval = std::chrono::seconds(1), quint32 seed = DefaultSeed);
    void stopDemo();
    bool isDemoRunning() const;

private:
    static bool isKind(int kind);
    void fireTick();
    void runDemo(std::chrono::milliseconds interval);
    void seedDemo();
    void demoStep();
    quint32 nextRandom();
    double nextUnit();

    Clock m_clock;

    mutable std::mutex m_mutex;
    TickSink* m_sink = nullptr;
    std::array<StatisticsRecord, VELT_REPORT_YEAR + 1> m_reports {};
    StatisticsRecord m_history;
    quint64 m_lastHistoryKey = 0;
    std::array<bool, SdkCallCount> m_failNext {};
    std::array<int, SdkCallCount> m_callCount {};
    bool m_connected = false;
    QByteArray m_customizeName;

    // Demo state, guarded by m_mutex like the figures it changes.
    quint64 m_rngState = 0;
    quint32 m_downSpeed = 0;
    int m_burstLeft = 0;
    int m_idleLeft = 0;

    std::condition_variable m_demoWake;
    bool m_demoStop = true;
    std::thread m_demoThread;
};

} // namespace velt
