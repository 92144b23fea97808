// The usage ledger: bytes sent, bytes received and connected time per
// interface and connection in 15-minute buckets, in an SQLite file (WAL),
// with a per-day roll-up so that a year's sum reads a few hundred rows.
// Writes are batched: add() keeps usage pending in memory until commit(), and
// every total includes what is pending. The counter baselines are written in
// the same transaction, so the ledger and the baselines always agree and
// whoever writes next continues exactly where the last writer stopped.
//
// A ledger that is busy, locked or cannot be written is never discarded:
// usage stays in memory, every commit tries again and problem() says why.
// Only a file that is not SQLite, fails its integrity check or comes from a
// newer version is moved aside.
//
// Not thread-safe: the connection belongs to the thread that opened it.
#pragma once

#include "veltsdk.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <map>
#include <memory>
#include <tuple>
#include <utility>

class QSqlQuery;

namespace velt {

struct VELTSDK_EXPORT Usage
{
    quint64 received = 0;
    quint64 sent = 0;
    qint64 connectedMs = 0;

    bool isEmpty() const { return received == 0 && sent == 0 && connectedMs == 0; }
    // Saturates: a total never wraps to a small number.
    Usage& operator+=(const Usage& other);
};

struct UsageKey
{
    QString interfaceName;
    QString connection; // empty when unknown
    bool operator<(const UsageKey& other) const
    {
        return std::tie(interfaceName, connection) < std::tie(other.interfaceName, other.connection);
    }
};

struct KeyedUsage
{
    UsageKey key;
    Usage usage;
};

enum class LedgerAccess { ReadWrite, ReadOnly };

// A correction the user entered for one period ("my operator counts more"):
// kept beside the samples, never folded into them, so it can be undone.
struct Adjustment
{
    qint64 id = 0;
    qint64 periodStart = 0; // seconds since the epoch
    qint64 amountBytes = 0; // may be negative
    qint64 created = 0;
};

// The last counters the ledger accounted for on one interface, to continue
// from after a restart or a change of writer.
struct CounterBaseline
{
    QString interfaceName;
    QByteArray bootId;
    quint32 ifindex = 0;
    quint64 received = 0;
    quint64 sent = 0;
    qint64 monotonicMs = -1; // the boot clock when read; -1 unknown

    bool isValid() const { return !interfaceName.isEmpty(); }
    bool operator==(const CounterBaseline& o) const
    {
        return interfaceName == o.interfaceName && bootId == o.bootId && ifindex == o.ifindex
            && received == o.received && sent == o.sent && monotonicMs == o.monotonicMs;
    }
};

class VELTSDK_EXPORT UsageLedger
{
public:
    // 15 minutes: every time zone's midnight falls on a bucket boundary, so
    // days, weeks, months and years are exact; history(key) is not.
    static constexpr qint64 BucketSeconds = 900;
    static qint64 bucketStart(qint64 epochSeconds);

    // A read-only ledger opens at once; it never writes, nor creates the file.
    UsageLedger(QString path, LedgerAccess access = LedgerAccess::ReadWrite);
    // Commits what is pending.
    ~UsageLedger();
    UsageLedger(const UsageLedger&) = delete;
    UsageLedger& operator=(const UsageLedger&) = delete;

    // Opens (read-write: creates or upgrades) the file. False when the file
    // cannot be used now; every operation still works on what is in memory,
    // and problem() says why. The queries open the ledger if nobody did.
    bool open(qint64 nowSeconds = 0);
    bool isOpen() const { return !m_connection.isEmpty(); }
    QString path() const { return m_path; }
    // Empty while the ledger works as it should; else a sentence for the user.
    QString problem() const { return m_problem; }

    void add(const UsageKey& key, qint64 atSeconds, const Usage& usage);
    void setBaseline(const CounterBaseline& baseline);
    const std::map<QString, CounterBaseline>& baselines() const { return m_baselines; }
    // A flag that stays once set (written with the next commit).
    void setFlag(const QString& name);
    bool flag(const QString& name) const;
    bool hasPending() const
    {
        return !m_pending.empty() || !m_dirtyBaselines.empty() || !m_pendingFlags.empty();
    }
    // Writes the pending usage and baselines in one transaction. On failure
    // they stay pending for the next try.
    bool commit();
    void close();
    // Picks up what another process wrote since the last call; true when
    // anything changed. For a reader beside a writer.
    bool refresh();

    // All usage in the buckets from the one holding fromSeconds up to (not
    // including) untilSeconds, pending included. Bucket-aligned bounds (the
    // periods) are exact; any other start includes up to one bucket more.
    Usage total(qint64 fromSeconds, qint64 untilSeconds);
    // The same per interface and connection; pending included.
    QList<KeyedUsage> usageByKey(qint64 fromSeconds, qint64 untilSeconds);

    // Adjustments whose period starts in [fromSeconds, untilSeconds), oldest
    // first. Written at once, not with commit(): they come from the user.
    QList<Adjustment> adjustments(qint64 fromSeconds, qint64 untilSeconds);
    qint64 adjustmentTotal(qint64 periodStart);
    bool addAdjustment(qint64 periodStart, qint64 amountBytes, qint64 createdSeconds);
    bool removeAdjustment(qint64 id);

    // Deletes every bucket, pending ones too, and stamps the reset time.
    bool reset(qint64 nowSeconds);
    // The last reset, or when the ledger was created; seconds since the epoch.
    qint64 resetTime() const { return m_resetTime; }

    // Makes the nth SQLite operation from now (1: the next), in any ledger,
    // fail as an I/O error would; 0 cancels.
    static void failOperationForTesting(int n);
    // True while an injected failure has not happened yet.
    static bool failurePendingForTesting();

private:
    enum class Failure { None, Damaged, Unavailable };
    Failure openFile(QString& reason);
    bool setUp(QString& reason);
    bool prepareStatements(QString& reason);
    void loadState();
    void closeConnection();
    QString moveAside();
    bool writePending(QString& reason);
    Usage committedTotal(qint64 firstBucket, qint64 endBucket, bool& ok);
    void noteProblem(const QString& problem, const QString& reason);
    void loadAdjustments();
    QSqlQuery* kept(std::unique_ptr<QSqlQuery>& query, const QString& text);

    QString m_path;
    LedgerAccess m_access;
    QString m_connection; // empty while no file is open
    bool m_setUp = false; // schema current: writes may go ahead
    bool m_openTried = false;
    std::unique_ptr<QSqlQuery> m_upsert, m_upsertDay, m_writeBaseline, m_sum, m_dataVersion;
    // Prepared on first use: a reader that stays open runs them every refresh.
    std::unique_ptr<QSqlQuery> m_readMeta, m_readBaselines, m_readAdjustments, m_readByKey;
    qint64 m_dataVersionSeen = -1;

    std::map<std::tuple<QString, QString, qint64>, Usage> m_pending; // interface, connection, bucket
    std::map<std::pair<qint64, qint64>, Usage> m_committedCache; // by [first, end) bucket
    std::map<QString, CounterBaseline> m_baselines;
    std::map<QString, bool> m_dirtyBaselines;
    std::map<QString, bool> m_flags, m_pendingFlags;
    QList<Adjustment> m_adjustments; // few: one per calibrated period
    qint64 m_resetTime = 0;
    QString m_problem;
    bool m_warnedRead = false;
    bool m_warnedClamp = false;
};

} // namespace velt
