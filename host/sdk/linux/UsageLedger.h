// The usage ledger: bytes sent, bytes received and connected time per
// interface in 15-minute buckets, in an SQLite file (WAL). Writes are
// batched: add() keeps usage pending in memory until commit(), and every
// total includes what is pending. The counter baseline is written in the
// same transaction, so after a crash the ledger and the baseline agree.
//
// Not thread-safe: the connection belongs to the thread that opened it.
#pragma once

#include "veltsdk.h"

#include <QByteArray>
#include <QString>

#include <map>
#include <utility>

namespace velt {

struct Usage
{
    quint64 received = 0;
    quint64 sent = 0;
    qint64 connectedMs = 0;

    bool isEmpty() const { return received == 0 && sent == 0 && connectedMs == 0; }
    Usage& operator+=(const Usage& other)
    {
        received += other.received;
        sent += other.sent;
        connectedMs += other.connectedMs;
        return *this;
    }
};

// The last counters the ledger accounted for, to continue from after a restart.
struct CounterBaseline
{
    QString interfaceName;
    QByteArray bootId;
    quint32 ifindex = 0;
    quint64 received = 0;
    quint64 sent = 0;

    bool isValid() const { return !interfaceName.isEmpty(); }
};

class VELTSDK_EXPORT UsageLedger
{
public:
    // 15 minutes: every time zone's midnight falls on a bucket boundary, so
    // days, weeks, months and years are exact; history(key) is not (below).
    static constexpr qint64 BucketSeconds = 900;
    static qint64 bucketStart(qint64 epochSeconds);

    explicit UsageLedger(QString path);
    // Commits what is pending.
    ~UsageLedger();
    UsageLedger(const UsageLedger&) = delete;
    UsageLedger& operator=(const UsageLedger&) = delete;

    // Opens or creates the file. A file that is corrupt or cannot be read is
    // renamed to <path>.corrupt-<time> (with its -wal and -shm) and a fresh
    // ledger started. False when no file could be used: usage is then kept in
    // memory only, and every operation still works.
    bool open(qint64 nowSeconds);
    bool isPersistent() const { return !m_connection.isEmpty(); }
    QString path() const { return m_path; }

    void add(const QString& interfaceName, qint64 atSeconds, const Usage& usage);
    void setBaseline(const CounterBaseline& baseline);
    CounterBaseline baseline() const { return m_baseline; }
    bool hasPending() const { return !m_pending.empty() || m_baselineDirty; }
    // Writes the pending usage and the baseline in one transaction. On
    // failure they stay pending, for the next try.
    bool commit();
    void close();

    // All interfaces' usage in the buckets from the one holding fromSeconds
    // on, pending included. For a bucket-aligned start (a period) this is
    // exact; for any other start it includes up to one bucket more than asked.
    Usage totalSince(qint64 fromSeconds);

    // Deletes every bucket, pending ones too, and stamps the reset time.
    bool reset(qint64 nowSeconds);
    // The last reset, or when the ledger was created; seconds since the epoch.
    qint64 resetTime() const { return m_resetTime; }

private:
    bool openFile(qint64 nowSeconds, QString& reason);
    void closeConnection();
    QString moveAside();
    bool writeBaseline();
    Usage committedSince(qint64 firstBucket, bool& ok);

    QString m_path;
    QString m_connection; // empty while no file is open
    std::map<std::pair<QString, qint64>, Usage> m_pending;
    std::map<qint64, Usage> m_committedSince; // by first bucket
    CounterBaseline m_baseline;
    bool m_baselineDirty = false;
    qint64 m_resetTime = 0;
    bool m_warnedCommit = false;
};

} // namespace velt
