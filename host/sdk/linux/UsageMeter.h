// One sample at a time: reads the counted interfaces' counters, turns them
// into traffic, books it in the usage ledger (while this process is the
// writer) and works out every report. Single-threaded; LinuxBackend runs it
// on its own thread.
//
// Exactly one process per user writes the ledger: the holder of an flock on
// <ledger>.lock. A recorder also holds <ledger>.recorder, which tells an
// application to hand the ledger over and read it instead. A reader shows the
// ledger's totals plus what its own counters show beyond the writer's last
// committed baselines, so both show the same numbers.
#pragma once

#include "CounterMath.h"
#include "LinuxOptions.h"
#include "StatisticsBackend.h"
#include "UsageLedger.h"
#include "UsagePeriods.h"

#include <QSet>

#include <array>
#include <deque>
#include <map>

namespace velt {

struct MeterSnapshot
{
    QString interfaceName; // the first counted interface
    bool connected = false;
    std::array<StatisticsRecord, VELT_REPORT_YEAR + 1> reports {};
    // Since the start of a bucket, for the starts asked lately.
    std::map<qint64, StatisticsRecord> history;
    RecordingStatus status;
};

class VELTSDK_EXPORT UsageMeter
{
public:
    // Takes the options as they are; see LinuxOptions::resolved().
    explicit UsageMeter(const LinuxOptions& options);
    // Writes what is pending and lets go of the ledger.
    ~UsageMeter();
    UsageMeter(const UsageMeter&) = delete;
    UsageMeter& operator=(const UsageMeter&) = delete;

    // Opens the ledger and takes the first sample, which only sets the
    // baselines unless the ledger's continue them (same interface, same
    // boot: a restart loses nothing).
    void open();
    const MeterSnapshot& step();
    const MeterSnapshot& snapshot() const { return m_snapshot; }

    // Keeps the usage since firstBucket in every snapshot from now on (the
    // few starts asked last).
    void trackHistory(qint64 firstBucket);
    StatisticsRecord history(quint64 seconds);
    bool reset();
    bool commit() { return m_writer && m_ledger.commit(); }

private:
    struct Seen
    {
        CounterReading reading;
        QString name;
        bool connected = false;
        QString connection;
    };

    void updateRole();
    bool becomeWriter();
    void becomeReader();
    struct SampleTotals
    {
        Usage bookedLive; // traffic since this process first saw the link
        quint64 receiveSpeed = 0;
        quint64 sendSpeed = 0;
        bool connected = false;
    };
    QStringList updateCountedSet(const QList<DeviceCounters>& devices, const QList<LinkInfo>& links);
    void sampleLink(const DeviceCounters& device, const QList<LinkInfo>& links, qint64 wallMs, qint64 nowMs,
        SampleTotals& totals);
    void updateLive(const SampleTotals& totals, qint64 nowMs);
    QStringList countedSet(
        const QList<DeviceCounters>& devices, const QList<LinkInfo>& links, bool& fallback);
    CounterReading baselineReading(const QString& name, quint32 ifindex) const;
    void bookRemovedLinks(qint64 wallMs, qint64 nowMs);
    void updatePeriods(qint64 wallSeconds, qint64 nowMs);
    StatisticsRecord since(qint64 firstBucket, qint64 untilSeconds, qint64 adjustment = 0);
    void updateReports(qint64 wallMs);

    LinuxOptions m_options;
    // Samples further apart were not observed: no speed, no connected time.
    qint64 m_maxGapMs;
    NetSource m_source;
    UsageLedger m_ledger;
    PeriodSettingsReader m_periodSettings;
    QByteArray m_bootId;

    // The writer lock and the recorder's sign; -1 when not open.
    int m_lockFd = -1;
    int m_recorderFd = -1;
    bool m_writer = false;
    bool m_recorderHeld = false;
    bool m_recorderRunning = false;
    bool m_warnedLock = false;

    // By ifindex, or by name where the index is unknown: a renamed link keeps its counters.
    std::map<std::pair<quint32, QString>, Seen> m_seen;
    QHash<QString, quint32> m_indexByName;
    QStringList m_present; // the interfaces of the last readable sample
    QStringList m_presentNow;
    quint64 m_devicesVersion = ~quint64(0);
    QHash<QString, bool> m_warnedImplausible;
    bool m_sampled = false;
    bool m_continuing = false; // the first sample as the writer
    Usage m_overlay; // a reader's: usage the writer has not committed yet
    bool m_wasConnected = false;
    bool m_fallback = false;
    QStringList m_counted;
    qint64 m_lastSampleMs = -1;
    qint64 m_lastCommitMs = 0;
    StatisticsRecord m_live;
    qint64 m_liveConnectedMs = 0;

    qint64 m_startSeconds[4] = {}; // today, week, month, year
    qint64 m_periodsFrom = 1; // today's start; the starts hold until the next day's
    qint64 m_periodsUntil = 0;
    qint64 m_settingsCheckedMs = -1;
    PeriodSettings m_settings;
    std::deque<qint64> m_tracked;
    MeterSnapshot m_snapshot;
};

} // namespace velt
