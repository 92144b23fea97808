#include "UsageMeter.h"

#include "LinuxLog.h"

#include <algorithm>
#include <limits>

namespace velt {

namespace {
StatisticsRecord usageRecord(const Usage& usage)
{
    StatisticsRecord record;
    record.bytesReceived = usage.received;
    record.bytesSent = usage.sent;
    record.duration = usage.connectedMs / 1000;
    return record;
}
} // namespace

UsageMeter::UsageMeter(const LinuxOptions& options)
    : m_options(options)
    , m_source(options.procRoot, options.linkState)
    , m_ledger(options.databasePath)
    , m_periodSettings(options.settingsPath)
{
}

UsageMeter::~UsageMeter()
{
    m_ledger.close();
}

void UsageMeter::open()
{
    m_bootId = m_source.bootId();
    m_ledger.open(m_options.wallClockMs() / 1000);
    m_lastCommitMs = m_options.monotonicMs();
    step();
}

// Continues from the ledger's baseline only for the same interface in the
// same boot; an unknown boot could mean counters that restarted from zero.
CounterReading UsageMeter::restoredReading(const QString& name) const
{
    const CounterBaseline baseline = m_ledger.baseline();
    CounterReading reading;
    if (!baseline.isValid() || baseline.interfaceName != name || m_bootId.isEmpty() || baseline.bootId != m_bootId)
        return reading;
    reading.state = CounterReading::Present;
    reading.ifindex = baseline.ifindex;
    reading.received = baseline.received;
    reading.sent = baseline.sent;
    return reading;
}

void UsageMeter::switchTo(const QString& name)
{
    if (m_chosen)
        qCInfo(lcLinux, "LinuxBackend: measuring %s instead of %s", qUtf8Printable(name.isEmpty() ? QStringLiteral("nothing") : name),
               qUtf8Printable(m_interface.isEmpty() ? QStringLiteral("nothing") : m_interface));
    m_chosen = true;
    m_interface = name;
    m_previous = restoredReading(name);
    m_wasConnected = false;
    m_live = StatisticsRecord();
    m_liveConnectedMs = 0;
}

QString UsageMeter::chooseFrom(const QList<DeviceCounters>& devices) const
{
    if (!m_options.interfaceName.isEmpty())
        return m_options.interfaceName;
    const auto mobile = std::count_if(devices.cbegin(), devices.cend(),
                                      [](const DeviceCounters& d) { return isMobileBroadbandName(d.name); });
    QList<InterfaceCandidate> candidates;
    for (const DeviceCounters& device : devices) {
        // Only a choice between several modems needs their link state.
        const bool ask = mobile > 1 && isMobileBroadbandName(device.name);
        candidates.append({device.name, ask && m_source.linkState(device.name).connected()});
    }
    return chooseInterface(QString(), candidates, m_source.defaultRouteInterface());
}

const MeterSnapshot& UsageMeter::step()
{
    const qint64 wallMs = m_options.wallClockMs();
    const qint64 nowMs = m_options.monotonicMs();

    QList<DeviceCounters> devices;
    // Unreadable counters: skip the sample, so the next readable one counts
    // the whole interval once.
    if (m_source.readDevices(devices)) {
        const QString name = chooseFrom(devices);
        if (!m_chosen || name != m_interface)
            switchTo(name);

        CounterReading current;
        current.state = CounterReading::Absent;
        current.monotonicMs = nowMs;
        LinkState link;
        const auto device = std::find_if(devices.cbegin(), devices.cend(),
                                         [&name](const DeviceCounters& d) { return d.name == name; });
        if (!name.isEmpty() && device != devices.cend()) {
            link = m_source.linkState(name);
            current.state = CounterReading::Present;
            current.ifindex = link.ifindex;
            current.received = device->received;
            current.sent = device->sent;
        }
        const bool connected = current.state == CounterReading::Present && link.connected();

        const CounterDelta delta = counterDelta(m_previous, current);
        const qint64 elapsed = m_lastSampleMs < 0 ? 0 : nowMs - m_lastSampleMs;
        const qint64 connectedMs = connectedInterval(m_wasConnected, connected, elapsed);

        if (connected && !m_wasConnected) {
            m_live = StatisticsRecord();
            m_liveConnectedMs = 0;
        }
        if (connected) {
            m_live.bytesReceived += delta.received;
            m_live.bytesSent += delta.sent;
            m_liveConnectedMs += connectedMs;
        }
        m_live.receiveSpeed = connected ? delta.receiveSpeed : 0;
        m_live.sendSpeed = connected ? delta.sendSpeed : 0;
        m_live.duration = m_liveConnectedMs / 1000;

        m_ledger.add(name, wallMs / 1000, Usage{delta.received, delta.sent, connectedMs});
        if (current.state == CounterReading::Present)
            m_ledger.setBaseline({name, m_bootId, current.ifindex, current.received, current.sent});
        m_previous = current;
        m_wasConnected = connected;
        m_lastSampleMs = nowMs;
        m_snapshot.connected = connected;
        m_snapshot.interfaceName = name;
    }

    // A monotonic clock that went backwards is another boot's: commit now.
    if (nowMs - m_lastCommitMs >= m_options.commitIntervalMs || nowMs < m_lastCommitMs) {
        m_ledger.commit();
        m_lastCommitMs = nowMs;
    }
    updateReports(wallMs);
    return m_snapshot;
}

void UsageMeter::updateReports(qint64 wallMs)
{
    const PeriodStarts starts = periodStarts(QDateTime::fromMSecsSinceEpoch(wallMs), m_periodSettings.settings());
    auto& reports = m_snapshot.reports;
    reports[VELT_REPORT_LIVE] = m_live;
    reports[VELT_REPORT_TODAY] = usageRecord(m_ledger.totalSince(starts.today.toSecsSinceEpoch()));
    reports[VELT_REPORT_WEEK] = usageRecord(m_ledger.totalSince(starts.week.toSecsSinceEpoch()));
    reports[VELT_REPORT_MONTH] = usageRecord(m_ledger.totalSince(starts.month.toSecsSinceEpoch()));
    reports[VELT_REPORT_YEAR] = usageRecord(m_ledger.totalSince(starts.year.toSecsSinceEpoch()));
    reports[VELT_REPORT_LAST_RESET] = StatisticsRecord();
    reports[VELT_REPORT_LAST_RESET].resetTime = static_cast<quint32>(std::clamp<qint64>(m_ledger.resetTime(), 0, UINT32_MAX));
}

StatisticsRecord UsageMeter::history(quint64 seconds)
{
    const qint64 now = m_options.wallClockMs() / 1000;
    const qint64 from = seconds >= quint64(std::max<qint64>(now, 0)) ? std::numeric_limits<qint64>::min() / 2
                                                                     : now - qint64(seconds);
    return usageRecord(m_ledger.totalSince(from));
}

bool UsageMeter::reset()
{
    const qint64 wallMs = m_options.wallClockMs();
    if (!m_ledger.reset(wallMs / 1000))
        return false;
    updateReports(wallMs);
    return true;
}

} // namespace velt
