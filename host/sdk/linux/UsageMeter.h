// One sample at a time: reads the measured interface's counters, turns them
// into traffic, books it in the usage ledger and works out every report.
// Single-threaded; LinuxBackend runs it on its own thread.
#pragma once

#include "CounterMath.h"
#include "LinuxOptions.h"
#include "StatisticsBackend.h"
#include "UsageLedger.h"
#include "UsagePeriods.h"

#include <array>

namespace velt {

struct MeterSnapshot
{
    QString interfaceName;
    bool connected = false;
    std::array<StatisticsRecord, VELT_REPORT_YEAR + 1> reports{};
};

class VELTSDK_EXPORT UsageMeter
{
public:
    // Takes the options as they are; see LinuxOptions::resolved().
    explicit UsageMeter(const LinuxOptions& options);
    // Writes what is pending.
    ~UsageMeter();

    // Opens the ledger and takes the first sample, which only sets the
    // baseline unless the ledger's baseline continues it (same interface,
    // same boot: a restart loses nothing).
    void open();
    const MeterSnapshot& step();
    const MeterSnapshot& snapshot() const { return m_snapshot; }

    StatisticsRecord history(quint64 seconds);
    bool reset();
    bool commit() { return m_ledger.commit(); }

private:
    CounterReading restoredReading(const QString& name) const;
    void switchTo(const QString& name);
    QString chooseFrom(const QList<DeviceCounters>& devices) const;
    void updateReports(qint64 wallMs);

    LinuxOptions m_options;
    NetSource m_source;
    UsageLedger m_ledger;
    PeriodSettingsReader m_periodSettings;
    QByteArray m_bootId;

    QString m_interface;
    bool m_chosen = false;
    CounterReading m_previous;
    bool m_wasConnected = false;
    qint64 m_lastSampleMs = -1;
    qint64 m_lastCommitMs = 0;
    StatisticsRecord m_live;
    qint64 m_liveConnectedMs = 0;
    MeterSnapshot m_snapshot;
};

} // namespace velt
