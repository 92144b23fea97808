// Shared by the SDK suites: a fresh simulated backend per test and readable
// QCOMPARE failures for records.
#pragma once

#include "Sdk.h"
#include "simulated/SimulatedBackend.h"

#include <QtTest>

#include <memory>

Q_DECLARE_METATYPE(velt::StatisticsRecord)

namespace velt {
inline char* toString(const StatisticsRecord& r)
{
    return QTest::toString(QStringLiteral("{received %1, sent %2, rx %3/s, tx %4/s, %5 s, reset %6}")
                               .arg(r.bytesReceived)
                               .arg(r.bytesSent)
                               .arg(r.receiveSpeed)
                               .arg(r.sendSpeed)
                               .arg(r.duration)
                               .arg(r.resetTime));
}
} // namespace velt

inline velt::SimulatedBackend* installFreshBackend(velt::SimulatedBackend::Clock clock = {})
{
    auto backend = std::make_unique<velt::SimulatedBackend>(std::move(clock));
    velt::SimulatedBackend* raw = backend.get();
    velt::Sdk::instance().setBackend(std::move(backend));
    return raw;
}

inline velt::StatisticsRecord record(
    quint64 received, quint64 sent, quint32 rx, quint32 tx, qint64 seconds, quint32 resetTime = 0)
{
    return velt::StatisticsRecord { received, sent, rx, tx, seconds, resetTime };
}

// What the C API reports for `kind` right now; a failed call gives all zeros.
inline velt::StatisticsRecord fetchReport(int kind)
{
    QByteArray report(VELT_STATISTICS_REPORT_SIZE, 0);
    VELT_Statistics_GetReport(kind, report.data(), 0);
    return velt::readReport(report.constData());
}
