#include "LinuxBackend.h"

#include "LinuxLog.h"
#include "UsageMeter.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace velt {

LinuxBackend::LinuxBackend(Options options)
    : m_options(options.resolved())
    , m_snapshot(std::make_unique<MeterSnapshot>())
{ }

LinuxBackend::~LinuxBackend()
{
    stop();
}

bool LinuxBackend::isSupported() const
{
    return NetSource(m_options.procRoot).isReadable();
}

int LinuxBackend::start(TickSink* sink)
{
    stop();
    m_sink = sink;
    {
        std::lock_guard lock(m_mutex);
        m_running = true;
        m_stopping = false;
    }
    // The worker owns the promise, so it may still be inside set_value()
    // when this thread wakes and returns.
    std::promise<void> ready;
    std::future<void> opened = ready.get_future();
    m_thread = std::thread([this, ready = std::move(ready)]() mutable { run(ready); });
    opened.wait();
    return Ok;
}

void LinuxBackend::stop()
{
    {
        std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_wake.notify_all();
    if (m_thread.joinable() && m_thread.get_id() != std::this_thread::get_id())
        m_thread.join();
    m_sink = nullptr;
}

void LinuxBackend::run(std::promise<void>& ready)
{
    m_workerId = std::this_thread::get_id();
    m_meter = std::make_unique<UsageMeter>(m_options);
    m_meter->open();
    publish(m_meter->snapshot());
    ready.set_value();

    using Clock = std::chrono::steady_clock;
    const bool periodic = m_options.interval.count() > 0;
    Clock::time_point next = Clock::now() + m_options.interval;
    std::unique_lock lock(m_mutex);
    for (;;) {
        if (!m_tasks.empty()) {
            std::function<void()> task = std::move(m_tasks.front());
            m_tasks.pop_front();
            lock.unlock();
            task();
            lock.lock();
            continue;
        }
        if (m_stopping)
            break;
        if (!periodic) {
            m_wake.wait(lock);
            continue;
        }
        const Clock::time_point now = Clock::now();
        if (now < next) {
            m_wake.wait_until(lock, next);
            continue;
        }
        // After a stall the schedule restarts rather than catching up.
        next = std::max(next + m_options.interval, now);
        lock.unlock();
        sampleAndTick();
        lock.lock();
    }
    m_running = false;
    lock.unlock();

    // A clean stop loses nothing: the traffic up to now is counted and written.
    publish(m_meter->step());
    m_meter.reset(); // the final commit, on the connection's own thread
    m_workerId = std::thread::id();
}

void LinuxBackend::sampleAndTick()
{
    const MeterSnapshot& snapshot = m_meter->step();
    publish(snapshot);
    if (m_sink)
        m_sink->tick(snapshot.connected);
}

void LinuxBackend::publish(const MeterSnapshot& snapshot)
{
    std::lock_guard lock(m_snapshotMutex);
    *m_snapshot = snapshot;
}

int LinuxBackend::onWorker(const std::function<int(UsageMeter&)>& call)
{
    if (m_workerId.load() == std::this_thread::get_id())
        return call(*m_meter);
    std::packaged_task<int()> task([this, &call] { return call(*m_meter); });
    std::future<int> result = task.get_future();
    {
        std::lock_guard lock(m_mutex);
        if (!m_running || m_stopping)
            return CallFailed;
        m_tasks.emplace_back([&task] { task(); });
    }
    m_wake.notify_all();
    return result.get();
}

bool LinuxBackend::tickNow()
{
    return onWorker([this](UsageMeter&) {
        sampleAndTick();
        return int(Ok);
    }) == Ok;
}

int LinuxBackend::report(int kind, StatisticsRecord& record)
{
    if (kind < VELT_REPORT_LIVE || kind > VELT_REPORT_YEAR)
        return InvalidArgument;
    std::lock_guard lock(m_snapshotMutex);
    record = m_snapshot->reports[kind];
    return Ok;
}

int LinuxBackend::history(quint64 seconds, StatisticsRecord& record)
{
    const qint64 now = m_options.wallClockMs() / 1000;
    const qint64 from = seconds >= quint64(std::max<qint64>(now, 0)) ? std::numeric_limits<qint64>::min() / 2
                                                                     : now - qint64(seconds);
    const qint64 firstBucket = UsageLedger::bucketStart(from);
    {
        std::lock_guard lock(m_mutex);
        if (!m_running || m_stopping)
            return CallFailed;
    }
    if (m_workerId.load() == std::this_thread::get_id()) {
        m_meter->trackHistory(firstBucket);
        record = m_meter->snapshot().history.at(firstBucket);
        return Ok;
    }
    {
        std::lock_guard lock(m_snapshotMutex);
        const auto known = m_snapshot->history.find(firstBucket);
        if (known != m_snapshot->history.end()) {
            record = known->second;
            return Ok;
        }
    }
    // A new look-back: worked out on the sampler, answered from the next
    // snapshot on. The caller never waits for the ledger.
    {
        std::lock_guard lock(m_mutex);
        if (!m_running || m_stopping)
            return CallFailed;
        m_tasks.emplace_back([this, firstBucket] {
            m_meter->trackHistory(firstBucket);
            publish(m_meter->snapshot());
        });
    }
    m_wake.notify_all();
    return CallFailed;
}

int LinuxBackend::reset(int flag)
{
    Q_UNUSED(flag);
    return onWorker([this](UsageMeter& meter) {
        if (!meter.reset())
            return int(CallFailed);
        publish(meter.snapshot());
        return int(Ok);
    });
}

int LinuxBackend::customizeName(QByteArray& name)
{
    name = QByteArrayLiteral("common");
    return Ok;
}

QString LinuxBackend::interfaceName() const
{
    std::lock_guard lock(m_snapshotMutex);
    return m_snapshot->interfaceName;
}

RecordingStatus LinuxBackend::recordingStatus() const
{
    std::lock_guard lock(m_snapshotMutex);
    return m_snapshot->status;
}

} // namespace velt
