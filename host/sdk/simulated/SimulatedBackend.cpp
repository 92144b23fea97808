#include "SimulatedBackend.h"

#include "Sdk.h"

#include <QDateTime>

#include <algorithm>
#include <cmath>
#include <utility>

namespace velt {

namespace {
    constexpr quint64 KB = 1024;
    constexpr quint64 MB = 1024 * KB;
    constexpr quint64 GB = 1024 * MB;

    // The period kinds that accumulate usage and that a reset clears.
    constexpr int kPeriodKinds[]
        = { VELT_REPORT_TODAY, VELT_REPORT_WEEK, VELT_REPORT_MONTH, VELT_REPORT_YEAR };

    int indexOf(SdkCall call)
    {
        const int index = static_cast<int>(call);
        return index >= 0 && index < SdkCallCount ? index : -1;
    }

    StatisticsRecord usage(quint64 received, quint64 sent, qint64 seconds)
    {
        StatisticsRecord record;
        record.bytesReceived = received;
        record.bytesSent = sent;
        record.duration = seconds;
        return record;
    }
} // namespace

SimulatedBackend::SimulatedBackend(Clock clock)
    : m_clock(clock ? std::move(clock) : Clock([] { return QDateTime::currentSecsSinceEpoch(); }))
    , m_customizeName("common")
{ }

SimulatedBackend::~SimulatedBackend()
{
    stop();
}

SimulatedBackend* SimulatedBackend::current()
{
    return dynamic_cast<SimulatedBackend*>(Sdk::instance().backend());
}

bool SimulatedBackend::isSupported() const
{
    return true;
}

int SimulatedBackend::start(TickSink* sink)
{
    std::lock_guard lock(m_mutex);
    m_sink = sink;
    return Ok;
}

void SimulatedBackend::stop()
{
    stopDemo();
    std::lock_guard lock(m_mutex);
    m_sink = nullptr;
}

bool SimulatedBackend::isKind(int kind)
{
    return kind >= VELT_REPORT_LIVE && kind <= VELT_REPORT_YEAR;
}

int SimulatedBackend::report(int kind, StatisticsRecord& record)
{
    if (!isKind(kind))
        return InvalidArgument;
    std::lock_guard lock(m_mutex);
    record = m_reports[kind];
    return Ok;
}

int SimulatedBackend::history(quint64 seconds, StatisticsRecord& record)
{
    std::lock_guard lock(m_mutex);
    m_lastHistoryKey = seconds;
    record = m_history;
    return Ok;
}

int SimulatedBackend::reset(int flag)
{
    Q_UNUSED(flag);
    const qint64 now = m_clock();
    std::lock_guard lock(m_mutex);
    for (int kind : kPeriodKinds)
        m_reports[kind] = StatisticsRecord();
    m_history = StatisticsRecord();
    m_reports[VELT_REPORT_LAST_RESET].resetTime = static_cast<quint32>(std::max<qint64>(now, 0));
    return Ok;
}

int SimulatedBackend::customizeName(QByteArray& name)
{
    std::lock_guard lock(m_mutex);
    name = m_customizeName;
    return Ok;
}

bool SimulatedBackend::failsNext(SdkCall call)
{
    const int index = indexOf(call);
    if (index < 0)
        return true;
    std::lock_guard lock(m_mutex);
    ++m_callCount[index];
    return std::exchange(m_failNext[index], false);
}

void SimulatedBackend::setReport(int kind, const StatisticsRecord& record)
{
    if (!isKind(kind))
        return;
    std::lock_guard lock(m_mutex);
    m_reports[kind] = record;
}

StatisticsRecord SimulatedBackend::reportFor(int kind) const
{
    if (!isKind(kind))
        return StatisticsRecord();
    std::lock_guard lock(m_mutex);
    return m_reports[kind];
}

void SimulatedBackend::setHistory(const StatisticsRecord& record)
{
    std::lock_guard lock(m_mutex);
    m_history = record;
}

quint64 SimulatedBackend::lastHistoryKey() const
{
    std::lock_guard lock(m_mutex);
    return m_lastHistoryKey;
}

void SimulatedBackend::failNext(SdkCall call)
{
    const int index = indexOf(call);
    if (index < 0)
        return;
    std::lock_guard lock(m_mutex);
    m_failNext[index] = true;
}

int SimulatedBackend::callCount(SdkCall call) const
{
    const int index = indexOf(call);
    if (index < 0)
        return 0;
    std::lock_guard lock(m_mutex);
    return m_callCount[index];
}

void SimulatedBackend::setConnected(bool connected)
{
    std::lock_guard lock(m_mutex);
    m_connected = connected;
}

bool SimulatedBackend::isConnected() const
{
    std::lock_guard lock(m_mutex);
    return m_connected;
}

void SimulatedBackend::setCustomizeName(const QByteArray& name)
{
    std::lock_guard lock(m_mutex);
    m_customizeName = name;
}

void SimulatedBackend::tick()
{
    fireTick();
}

void SimulatedBackend::tickOnSdkThread()
{
    std::thread thread([this] { fireTick(); });
    thread.join();
}

// The callbacks query this backend, so the lock is not held while they run.
void SimulatedBackend::fireTick()
{
    TickSink* sink = nullptr;
    bool connected = false;
    {
        std::lock_guard lock(m_mutex);
        sink = m_sink;
        connected = m_connected;
    }
    if (sink)
        sink->tick(connected);
}

void SimulatedBackend::startDemo(std::chrono::milliseconds interval, quint32 seed)
{
    stopDemo();
    {
        std::lock_guard lock(m_mutex);
        m_rngState = seed;
        seedDemo();
        m_demoStop = false;
    }
    m_demoThread = std::thread([this, interval] { runDemo(interval); });
}

void SimulatedBackend::stopDemo()
{
    {
        std::lock_guard lock(m_mutex);
        m_demoStop = true;
    }
    m_demoWake.notify_all();
    // From a callback on the demo thread itself the loop just ends; the
    // thread is joined by the next start, stop or the destructor.
    if (m_demoThread.joinable() && m_demoThread.get_id() != std::this_thread::get_id())
        m_demoThread.join();
}

bool SimulatedBackend::isDemoRunning() const
{
    std::lock_guard lock(m_mutex);
    return !m_demoStop;
}

void SimulatedBackend::runDemo(std::chrono::milliseconds interval)
{
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_demoWake.wait_for(lock, interval, [this] { return m_demoStop; });
        if (m_demoStop)
            return;
        demoStep();
        TickSink* sink = m_sink;
        const bool connected = m_connected;
        lock.unlock();
        if (sink)
            sink->tick(connected);
        lock.lock();
    }
}

// Earlier usage in the order of a typical mobile-broadband contract, so
// that period totals and a monthly limit have something to show.
void SimulatedBackend::seedDemo()
{
    m_connected = true;
    m_downSpeed = 120 * KB;
    m_burstLeft = 0;
    m_idleLeft = 0;
    m_reports[VELT_REPORT_LIVE] = StatisticsRecord();
    m_reports[VELT_REPORT_TODAY] = usage(150 * MB, 14 * MB, 2 * 3600 + 25 * 60);
    m_reports[VELT_REPORT_WEEK] = usage(900 * MB, 85 * MB, 14 * 3600);
    m_reports[VELT_REPORT_MONTH] = usage(3 * GB, 290 * MB, 61 * 3600);
    m_reports[VELT_REPORT_YEAR] = usage(30 * GB, 2900 * MB, 640 * 3600);
    m_history = m_reports[VELT_REPORT_TODAY];
    if (m_reports[VELT_REPORT_LAST_RESET].resetTime == 0) {
        const qint64 lastReset = m_clock() - 19 * 24 * 3600;
        m_reports[VELT_REPORT_LAST_RESET].resetTime = static_cast<quint32>(std::max<qint64>(lastReset, 0));
    }
}

// One simulated second: mostly moderate download with occasional idle
// spells and multi-megabyte bursts; upload runs at about a tenth.
void SimulatedBackend::demoStep()
{
    StatisticsRecord& live = m_reports[VELT_REPORT_LIVE];
    if (!m_connected) {
        live.receiveSpeed = 0;
        live.sendSpeed = 0;
        return;
    }

    if (m_idleLeft == 0 && m_burstLeft == 0) {
        const double roll = nextUnit();
        if (roll < 0.05)
            m_idleLeft = 1 + static_cast<int>(nextRandom() % 5);
        else if (roll < 0.09)
            m_burstLeft = 2 + static_cast<int>(nextRandom() % 5);
    }

    quint32 down = 0;
    quint32 up = 0;
    if (m_idleLeft > 0) {
        --m_idleLeft;
        down = static_cast<quint32>(nextUnit() * 1.5 * KB);
        up = static_cast<quint32>(nextUnit() * 400);
    } else {
        if (m_burstLeft > 0) {
            --m_burstLeft;
            down = static_cast<quint32>(1.5 * MB + nextUnit() * 4.5 * MB);
        } else {
            // Skewed towards the low end and smoothed, as browsing tends to be.
            const double target = 20.0 * KB + 580.0 * KB * std::pow(nextUnit(), 2.0);
            const double smoothed = 0.5 * m_downSpeed + 0.5 * target;
            m_downSpeed = static_cast<quint32>(std::clamp(smoothed, 20.0 * KB, 600.0 * KB));
            down = m_downSpeed;
        }
        up = static_cast<quint32>(down * (0.07 + 0.06 * nextUnit()));
    }

    live.receiveSpeed = down;
    live.sendSpeed = up;
    auto add = [down, up](StatisticsRecord& record) {
        record.bytesReceived += down;
        record.bytesSent += up;
        record.duration += 1;
    };
    add(live);
    for (int kind : kPeriodKinds)
        add(m_reports[kind]);
    add(m_history);
}

// splitmix64: tiny, and the same on every platform, unlike std's distributions.
quint32 SimulatedBackend::nextRandom()
{
    quint64 z = (m_rngState += 0x9e3779b97f4a7c15ull);
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ull;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebull;
    return static_cast<quint32>((z ^ (z >> 31)) >> 32);
}

double SimulatedBackend::nextUnit()
{
    return nextRandom() / 4294967296.0;
}

} // namespace velt
