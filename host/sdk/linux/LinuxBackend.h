// The real statistics backend on Linux: samples one interface's byte counters
// once per interval on a thread of its own, books the traffic in the usage
// ledger and ticks the SDK from that thread.
//
// Reports and history are answered from the figures of the last sample,
// without waiting on anything slow: a look-back not asked before fails once
// and is in every snapshot from the next one on. Reset runs on the backend's
// thread, where the ledger's connection lives (directly when called from
// inside a tick).
//
// Usage is written at most every commitIntervalMs and on stop, which takes a
// last sample first. After a crash a restart in the same boot recovers the
// unwritten traffic from the counters; after a reboot at most that window is
// lost.
//
// history(key) counts whole 15-minute buckets: it includes every bucket that
// overlaps the last `key` seconds, so it may report up to 15 minutes more
// traffic than asked, never less. The period reports (today, week, month,
// year) start on bucket boundaries and are exact.
#pragma once

#include "LinuxOptions.h"
#include "StatisticsBackend.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <thread>

namespace velt {

class UsageMeter;
struct MeterSnapshot;

class VELTSDK_EXPORT LinuxBackend final : public StatisticsBackend
{
public:
    using Options = LinuxOptions;

    explicit LinuxBackend(Options options = {});
    ~LinuxBackend() override;

    // True when the kernel's counter table can be read.
    bool isSupported() const override;
    // Opens the ledger and takes the first sample before it returns, so the
    // reports are current from the start.
    int start(TickSink* sink) override;
    // Takes a last sample, writes what is pending and closes the ledger.
    void stop() override;
    int report(int kind, StatisticsRecord& record) override;
    // Fails while the backend is stopped, and once for a new look-back.
    int history(quint64 seconds, StatisticsRecord& record) override;
    // Clears every period and the history, stamps the reset time; the live
    // connection figures go on. Fails while stopped.
    int reset(int flag) override;
    int customizeName(QByteArray& name) override;

    // Samples once on the backend's thread and ticks; returns once the
    // callbacks have run. For an interval of zero (tests, benchmarks).
    bool tickNow();
    // The measured interface as of the last sample; empty when there is none.
    QString interfaceName() const;
    // Whether this process records, and what the user should know about it.
    RecordingStatus recordingStatus() const;

private:
    int onWorker(const std::function<int(UsageMeter&)>& call);
    void run(std::promise<void>& ready);
    void sampleAndTick();
    void publish(const MeterSnapshot& snapshot);

    const Options m_options;

    std::mutex m_mutex; // guards the fields up to m_tasks
    std::condition_variable m_wake;
    bool m_running = false;
    bool m_stopping = false;
    std::deque<std::function<void()>> m_tasks;

    std::thread m_thread;
    std::atomic<std::thread::id> m_workerId {};
    TickSink* m_sink = nullptr; // set while stopped only
    std::unique_ptr<UsageMeter> m_meter; // lives on the worker

    mutable std::mutex m_snapshotMutex;
    std::unique_ptr<MeterSnapshot> m_snapshot;
};

} // namespace velt
