#include "UsageMeter.h"

#include "LinuxLog.h"

#include <QFile>

#include <algorithm>
#include <limits>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velt {

namespace {
    // Set once a metered or mobile link was counted: from then on the default
    // route's interface is never counted in its place.
    const QString kMeteredSeen = QStringLiteral("metered_seen");
    // The host's settings are looked at this often, not every sample.
    constexpr qint64 kSettingsCheckMs = 10000;

    StatisticsRecord usageRecord(const Usage& usage)
    {
        StatisticsRecord record;
        record.bytesReceived = usage.received;
        record.bytesSent = usage.sent;
        record.duration = usage.connectedMs / 1000;
        return record;
    }

    int openLockFile(const QString& path)
    {
        const int fd = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
        if (fd >= 0)
            ::fchmod(fd, 0600); // private whatever the umask
        return fd;
    }

    bool tryLock(int fd, int operation)
    {
        int result;
        do
            result = flock(fd, operation | LOCK_NB);
        while (result != 0 && errno == EINTR);
        return result == 0;
    }

    quint32 saturate32(quint64 value)
    {
        return quint32(std::min<quint64>(value, std::numeric_limits<quint32>::max()));
    }
} // namespace

UsageMeter::UsageMeter(const LinuxOptions& options)
    : m_options(options)
    , m_maxGapMs(maxObservedGapMs(options.interval.count()))
    , m_source(options.procRoot, options.linkState, options.sysRoot)
    , m_ledger(options.databasePath)
    , m_periodSettings(options.settingsPath)
{ }

UsageMeter::~UsageMeter()
{
    if (m_writer)
        m_ledger.commit();
    m_ledger.close();
    for (int fd : { m_lockFd, m_recorderFd }) {
        if (fd >= 0)
            ::close(fd); // releases the locks
    }
}

void UsageMeter::open()
{
    m_bootId = m_source.bootId();
    m_ledger.open(m_options.wallClockMs() / 1000);
    m_lastCommitMs = m_options.monotonicMs();
    step();
}

void UsageMeter::updateRole()
{
    if (m_lockFd < 0) {
        m_lockFd = openLockFile(m_options.databasePath + QStringLiteral(".lock"));
        m_recorderFd = openLockFile(m_options.databasePath + QStringLiteral(".recorder"));
        if (m_lockFd < 0 || m_recorderFd < 0) {
            // Nobody else can write there either: go ahead alone.
            if (!std::exchange(m_warnedLock, true))
                qCWarning(lcLinux,
                    "LinuxBackend: cannot create the lock files beside %s (%s); writing without them",
                    qUtf8Printable(m_options.databasePath), strerror(errno));
            if (!m_writer)
                becomeWriter();
            return;
        }
    }
    if (m_options.role == RecordingRole::Recorder) {
        if (!m_recorderHeld)
            m_recorderHeld = tryLock(m_recorderFd, LOCK_EX);
        m_recorderRunning = m_recorderHeld;
        if (!m_writer && m_recorderHeld && tryLock(m_lockFd, LOCK_EX))
            becomeWriter();
        return;
    }
    m_recorderRunning = !tryLock(m_recorderFd, LOCK_SH);
    if (!m_recorderRunning)
        flock(m_recorderFd, LOCK_UN);
    if (m_writer && m_recorderRunning)
        becomeReader();
    else if (!m_writer && !m_recorderRunning && tryLock(m_lockFd, LOCK_EX))
        becomeWriter();
}

// Continues from the last writer's committed baselines.
bool UsageMeter::becomeWriter()
{
    m_writer = true;
    m_continuing = true;
    m_ledger.refresh();
    m_seen.clear();
    if (m_sampled)
        qCInfo(lcLinux, "LinuxBackend: recording usage in %s", qUtf8Printable(m_options.databasePath));
    return true;
}

// Hands the ledger over: everything counted so far, with the baselines it
// was counted to, is committed before the lock goes.
void UsageMeter::becomeReader()
{
    if (!m_ledger.commit())
        return; // keep writing until it is safe to stop
    flock(m_lockFd, LOCK_UN);
    m_writer = false;
    qCInfo(lcLinux, "LinuxBackend: the recorder records usage now; reading %s",
        qUtf8Printable(m_options.databasePath));
}

QStringList UsageMeter::countedSet(
    const QList<DeviceCounters>& devices, const QList<LinkInfo>& links, bool& fallback)
{
    fallback = false;
    QStringList counted = m_options.interfaceNames;
    if (!counted.isEmpty())
        return counted;
    for (const LinkInfo& link : links) {
        if (link.metered && !counted.contains(link.interfaceName))
            counted.append(link.interfaceName);
    }
    if (links.isEmpty()) {
        for (const DeviceCounters& device : devices) {
            if (isMobileBroadbandName(device.name))
                counted.append(device.name);
        }
    }
    if (!counted.isEmpty()) {
        if (m_writer)
            m_ledger.setFlag(kMeteredSeen);
        return counted;
    }
    if (m_ledger.flag(kMeteredSeen))
        return counted;
    const QString route = m_source.defaultRouteInterface();
    fallback = !route.isEmpty();
    return fallback ? QStringList { route } : QStringList {};
}

// The ledger's baseline for this interface when it continues our counters:
// same boot, same interface.
CounterReading UsageMeter::baselineReading(const QString& name, quint32 ifindex) const
{
    CounterReading reading;
    const auto found = m_ledger.baselines().find(name);
    if (found == m_ledger.baselines().end() || m_bootId.isEmpty())
        return reading;
    const CounterBaseline& b = found->second;
    if (b.bootId != m_bootId || (b.ifindex != 0 && ifindex != 0 && b.ifindex != ifindex))
        return reading;
    reading = CounterReading { CounterReading::Present, ifindex, b.received, b.sent, b.monotonicMs };
    return reading;
}

const MeterSnapshot& UsageMeter::step()
{
    const qint64 wallMs = m_options.wallClockMs();
    const qint64 nowMs = m_options.monotonicMs();
    updateRole();
    if (!m_writer)
        m_ledger.refresh();

    QList<DeviceCounters> devices;
    // Unreadable counters: skip the sample, so the next readable one counts
    // the whole interval once.
    m_source.linksChanged();
    if (m_writer)
        bookRemovedLinks(wallMs, nowMs);
    if (m_source.readDevices(devices)) {
        const QList<LinkInfo> links = m_options.linkInfo ? m_options.linkInfo() : QList<LinkInfo>();
        const QStringList counted = updateCountedSet(devices, links);
        SampleTotals totals;
        m_overlay = Usage();
        for (const QString& name : counted) {
            const auto device = std::find_if(devices.cbegin(), devices.cend(),
                [&name](const DeviceCounters& d) { return d.name == name; });
            if (device == devices.cend())
                continue; // gone: its last reading stays, should it come back
            sampleLink(*device, links, wallMs, nowMs, totals);
        }
        m_sampled = true;
        m_continuing = false;
        // A link still there but no longer counted (no longer metered, say)
        // must not bring its uncounted traffic along when it is counted again.
        for (auto it = m_seen.begin(); it != m_seen.end();) {
            if (!counted.contains(it->second.name) && m_presentNow.contains(it->second.name))
                it = m_seen.erase(it);
            else
                ++it;
        }
        updateLive(totals, nowMs);
        m_snapshot.connected = totals.connected;
        m_snapshot.interfaceName = counted.value(0);
    }

    // A monotonic clock that went backwards is another boot's: commit now.
    if (m_writer && (nowMs - m_lastCommitMs >= m_options.commitIntervalMs || nowMs < m_lastCommitMs)) {
        m_ledger.refresh(); // a reset by a reading process
        m_ledger.commit();
        m_lastCommitMs = nowMs;
    }
    updateReports(wallMs);
    return m_snapshot;
}

QStringList UsageMeter::updateCountedSet(const QList<DeviceCounters>& devices, const QList<LinkInfo>& links)
{
    bool fallback = false;
    QStringList counted = countedSet(devices, links, fallback);
    if (counted != m_counted || fallback != m_fallback)
        qCInfo(lcLinux, "LinuxBackend: counting %s%s",
            qUtf8Printable(
                counted.isEmpty() ? QStringLiteral("nothing") : counted.join(QStringLiteral(", "))),
            fallback ? " (the default route's, as no metered link was seen yet)" : "");
    m_counted = counted;
    m_fallback = fallback;
    m_source.setWanted(counted);
    m_present = m_presentNow;
    if (m_source.devicesVersion() != m_devicesVersion) {
        m_devicesVersion = m_source.devicesVersion();
        m_presentNow.clear();
        for (const DeviceCounters& device : devices)
            m_presentNow.append(device.name);
    }
    return counted;
}

void UsageMeter::sampleLink(const DeviceCounters& device, const QList<LinkInfo>& links, qint64 wallMs,
    qint64 nowMs, SampleTotals& totals)
{
    const QString& name = device.name;
    const LinkState link = m_source.linkState(name);
    const CounterReading current { CounterReading::Present, link.ifindex, device.received, device.sent,
        nowMs };
    const std::pair<quint32, QString> key { link.ifindex, link.ifindex ? QString() : name };
    const auto seen = m_seen.find(key);
    CounterReading previous;
    bool fromBaseline = false;
    if (seen != m_seen.end()) {
        previous = seen->second.reading;
    } else if (m_writer) {
        // The ledger's baseline continues a restart or another writer, nothing later:
        // a link counted again after a pause starts afresh.
        if (m_continuing) {
            previous = baselineReading(name, link.ifindex);
            fromBaseline = true;
        }
        const auto index = m_indexByName.constFind(name);
        // Appeared or re-created since the last sample: all its traffic is new.
        const bool wasPresent = m_present.contains(name);
        if (previous.state == CounterReading::Unknown && m_sampled
            && (!wasPresent || (index != m_indexByName.constEnd() && *index != link.ifindex)))
            previous.state = CounterReading::Absent;
    }
    if (seen == m_seen.end())
        m_indexByName.insert(name, link.ifindex);
    const CounterDelta delta = counterDelta(previous, current, m_source.linkBytesPerSecond(name), m_maxGapMs);
    if (delta.implausible && !std::exchange(m_warnedImplausible[name], true))
        qCWarning(lcLinux,
            "LinuxBackend: the counters of %s jumped further than the link can carry "
            "(%llu/%llu to %llu/%llu bytes); not counted",
            qUtf8Printable(name), previous.received, previous.sent, current.received, current.sent);
    const bool isConnected = link.exists ? link.connected() : false;
    const qint64 connectedMs = connectedInterval(
        seen != m_seen.end() && seen->second.connected, isConnected, delta.elapsedMs, m_maxGapMs);
    const Usage usage { delta.received, delta.sent, connectedMs };
    QString connection;
    for (const LinkInfo& info : links) {
        if (info.interfaceName == name)
            connection = info.connection;
    }
    if (m_writer) {
        m_ledger.add(UsageKey { name, connection }, wallMs / 1000, usage);
        m_ledger.setBaseline({ name, m_bootId, link.ifindex, current.received, current.sent, nowMs });
    } else {
        // What the writer has not committed yet, as far as its baseline shows.
        const CounterDelta pending
            = counterDelta(baselineReading(name, link.ifindex), current, m_source.linkBytesPerSecond(name));
        m_overlay += Usage { pending.received, pending.sent, 0 };
    }
    if (!fromBaseline)
        totals.bookedLive += usage;
    totals.receiveSpeed += delta.receiveSpeed;
    totals.sendSpeed += delta.sendSpeed;
    totals.connected = totals.connected || isConnected;
    m_seen[key] = Seen { current, name, isConnected, connection };
}

// The current connection counts from this process's first sight of it.
void UsageMeter::updateLive(const SampleTotals& totals, qint64 nowMs)
{
    const qint64 elapsed = m_lastSampleMs < 0 ? 0 : nowMs - m_lastSampleMs;
    if (totals.connected && !m_wasConnected) {
        m_live = StatisticsRecord();
        m_liveConnectedMs = 0;
    }
    if (totals.connected) {
        Usage live { m_live.bytesReceived, m_live.bytesSent, 0 };
        live += totals.bookedLive;
        m_live.bytesReceived = live.received;
        m_live.bytesSent = live.sent;
        m_liveConnectedMs += connectedInterval(m_wasConnected, totals.connected, elapsed, m_maxGapMs);
    }
    m_live.receiveSpeed = totals.connected ? saturate32(totals.receiveSpeed) : 0;
    m_live.sendSpeed = totals.connected ? saturate32(totals.sendSpeed) : 0;
    m_live.duration = m_liveConnectedMs / 1000;
    m_wasConnected = totals.connected;
    m_lastSampleMs = nowMs;
}

// Counted links that went since the last sample: their traffic up to the
// end, from the counters the kernel reported as they went.
void UsageMeter::bookRemovedLinks(qint64 wallMs, qint64 nowMs)
{
    for (const NetSource::RemovedLink& removed : m_source.takeRemovedLinks()) {
        const auto seen = m_seen.find({ removed.ifindex, QString() });
        if (seen == m_seen.end() || seen->second.name != removed.name)
            continue;
        // Some drivers report a direction as zero by then: only an advance counts.
        const CounterReading& last = seen->second.reading;
        const Usage usage { removed.received > last.received ? removed.received - last.received : 0,
            removed.sent > last.sent ? removed.sent - last.sent : 0, 0 };
        const quint64 capacity = linkCapacity(
            m_source.linkBytesPerSecond(removed.name), last.monotonicMs < 0 ? -1 : nowMs - last.monotonicMs);
        if (usage.received <= capacity && usage.sent <= capacity)
            m_ledger.add(UsageKey { removed.name, seen->second.connection }, wallMs / 1000, usage);
        m_seen.erase(seen);
    }
}

void UsageMeter::updatePeriods(qint64 wallSeconds, qint64 nowMs)
{
    const bool checkSettings = m_settingsCheckedMs < 0 || nowMs - m_settingsCheckedMs >= kSettingsCheckMs
        || nowMs < m_settingsCheckedMs;
    if (checkSettings) {
        m_settingsCheckedMs = nowMs;
        const PeriodSettings settings = m_periodSettings.settings();
        if (settings.startWeekday != m_settings.startWeekday
            || settings.startMonthDay != m_settings.startMonthDay) {
            m_settings = settings;
            m_periodsUntil = 0;
        }
    }
    if (wallSeconds >= m_periodsFrom && wallSeconds < m_periodsUntil)
        return; // the time-zone work happens once a day
    const QDateTime now = QDateTime::fromSecsSinceEpoch(wallSeconds);
    const PeriodStarts starts = periodStarts(now, m_settings);
    m_startSeconds[0] = starts.today.toSecsSinceEpoch();
    m_startSeconds[1] = starts.week.toSecsSinceEpoch();
    m_startSeconds[2] = starts.month.toSecsSinceEpoch();
    m_startSeconds[3] = starts.year.toSecsSinceEpoch();
    m_periodsFrom = m_startSeconds[0];
    m_periodsUntil = now.date().addDays(1).startOfDay().toSecsSinceEpoch();
}

// Usage from firstBucket to now; a bucket later than now (a clock that was
// set back) counts nowhere.
StatisticsRecord UsageMeter::since(qint64 firstBucket, qint64 untilSeconds, qint64 adjustment)
{
    Usage usage = m_ledger.total(firstBucket, untilSeconds);
    usage += m_overlay;
    // The operator's count has no direction: the correction goes to the
    // received side, and never below nothing.
    if (adjustment >= 0)
        usage += Usage { quint64(adjustment), 0, 0 };
    else
        usage.received -= std::min(usage.received, quint64(-adjustment));
    return usageRecord(usage);
}

void UsageMeter::updateReports(qint64 wallMs)
{
    const qint64 wallSeconds = wallMs / 1000;
    updatePeriods(wallSeconds, m_options.monotonicMs());
    const qint64 until = UsageLedger::bucketStart(wallSeconds) + UsageLedger::BucketSeconds;
    auto& reports = m_snapshot.reports;
    reports[VELT_REPORT_LIVE] = m_live;
    reports[VELT_REPORT_TODAY] = since(m_startSeconds[0], until);
    // A calibration belongs to the period it was entered for: the weekly or
    // monthly limit's, and the year holds them all.
    qint64 yearAdjustment = 0;
    for (const Adjustment& adjustment : m_ledger.adjustments(m_startSeconds[3], until))
        yearAdjustment += adjustment.amountBytes;
    reports[VELT_REPORT_WEEK] = since(m_startSeconds[1], until, m_ledger.adjustmentTotal(m_startSeconds[1]));
    reports[VELT_REPORT_MONTH] = since(m_startSeconds[2], until, m_ledger.adjustmentTotal(m_startSeconds[2]));
    reports[VELT_REPORT_YEAR] = since(m_startSeconds[3], until, yearAdjustment);
    reports[VELT_REPORT_LAST_RESET] = StatisticsRecord();
    reports[VELT_REPORT_LAST_RESET].resetTime
        = static_cast<quint32>(std::clamp<qint64>(m_ledger.resetTime(), 0, UINT32_MAX));
    for (auto& [firstBucket, record] : m_snapshot.history)
        record = since(firstBucket, until);

    RecordingStatus& status = m_snapshot.status;
    status.recording = m_writer;
    status.recorderRunning = m_recorderRunning;
    status.fallbackInterface = m_fallback;
    status.counted = m_counted;
    status.problem = m_ledger.problem();
}

void UsageMeter::trackHistory(qint64 firstBucket)
{
    if (std::find(m_tracked.cbegin(), m_tracked.cend(), firstBucket) != m_tracked.cend())
        return;
    // The view asks one look-back at a time; a few cover a change of day.
    if (m_tracked.size() >= 4) {
        m_snapshot.history.erase(m_tracked.front());
        m_tracked.pop_front();
    }
    m_tracked.push_back(firstBucket);
    m_snapshot.history[firstBucket] = StatisticsRecord();
    updateReports(m_options.wallClockMs());
}

StatisticsRecord UsageMeter::history(quint64 seconds)
{
    const qint64 now = m_options.wallClockMs() / 1000;
    const qint64 from = seconds >= quint64(std::max<qint64>(now, 0)) ? std::numeric_limits<qint64>::min() / 2
                                                                     : now - qint64(seconds);
    return since(UsageLedger::bucketStart(from), UsageLedger::bucketStart(now) + UsageLedger::BucketSeconds);
}

bool UsageMeter::reset()
{
    const qint64 wallMs = m_options.wallClockMs();
    if (!m_ledger.reset(wallMs / 1000))
        return false;
    m_overlay = Usage();
    updateReports(wallMs);
    return true;
}

} // namespace velt
