#include "UsageLedger.h"

#include "LinuxLog.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

#include <atomic>
#include <utility>

namespace velt {

namespace {
constexpr int kSchemaVersion = 1;
constexpr size_t kMaxCachedStarts = 16;

const char* const kSchema[] = {
    "CREATE TABLE IF NOT EXISTS meta (key TEXT PRIMARY KEY, value TEXT NOT NULL)",
    "CREATE TABLE IF NOT EXISTS usage (interface TEXT NOT NULL, bucket INTEGER NOT NULL,"
    " received INTEGER NOT NULL DEFAULT 0, sent INTEGER NOT NULL DEFAULT 0,"
    " connected_ms INTEGER NOT NULL DEFAULT 0, PRIMARY KEY (interface, bucket)) WITHOUT ROWID",
    "CREATE INDEX IF NOT EXISTS usage_by_bucket ON usage (bucket)",
    "CREATE TABLE IF NOT EXISTS baseline (id INTEGER PRIMARY KEY CHECK (id = 1), interface TEXT NOT NULL,"
    " boot_id TEXT NOT NULL, ifindex INTEGER NOT NULL, received INTEGER NOT NULL, sent INTEGER NOT NULL)",
};

// SQLite integers are signed 64-bit; counters keep their bit pattern.
qint64 toSql(quint64 value) { return static_cast<qint64>(value); }
quint64 fromSql(const QVariant& value) { return static_cast<quint64>(value.toLongLong()); }

bool exec(QSqlQuery& query, const QString& statement, QString& reason)
{
    if (query.exec(statement))
        return true;
    reason = query.lastError().text();
    return false;
}

QString newConnectionName()
{
    static std::atomic<int> serial{0};
    return QStringLiteral("netinfo-usage-ledger-%1").arg(++serial);
}
} // namespace

qint64 UsageLedger::bucketStart(qint64 epochSeconds)
{
    const qint64 offset = ((epochSeconds % BucketSeconds) + BucketSeconds) % BucketSeconds;
    return epochSeconds - offset;
}

UsageLedger::UsageLedger(QString path)
    : m_path(std::move(path))
{
}

UsageLedger::~UsageLedger()
{
    close();
}

bool UsageLedger::open(qint64 nowSeconds)
{
    close();
    m_resetTime = nowSeconds;
    QDir().mkpath(QFileInfo(m_path).absolutePath());
    QString reason;
    if (openFile(nowSeconds, reason))
        return true;
    closeConnection();
    if (!QFileInfo::exists(m_path)) {
        qCWarning(lcLinux, "UsageLedger: cannot create %s (%s); usage is kept in memory only",
                  qUtf8Printable(m_path), qUtf8Printable(reason));
        return false;
    }
    const QString aside = moveAside();
    if (aside.isEmpty()) {
        qCWarning(lcLinux, "UsageLedger: %s is unreadable (%s) and cannot be moved aside; usage is kept in memory only",
                  qUtf8Printable(m_path), qUtf8Printable(reason));
        return false;
    }
    qCWarning(lcLinux, "UsageLedger: %s is unreadable (%s); moved it to %s and started a new ledger",
              qUtf8Printable(m_path), qUtf8Printable(reason), qUtf8Printable(aside));
    if (openFile(nowSeconds, reason))
        return true;
    closeConnection();
    qCWarning(lcLinux, "UsageLedger: cannot create %s (%s); usage is kept in memory only", qUtf8Printable(m_path),
              qUtf8Printable(reason));
    return false;
}

bool UsageLedger::openFile(qint64 nowSeconds, QString& reason)
{
    m_baseline = CounterBaseline();
    const QFileInfo info(m_path);
    if (info.exists() && info.size() > 0) {
        // Checked before SQLite sees the file: closing a connection to a
        // foreign file can delete the -wal beside it, which we must keep.
        QFile file(m_path);
        if (!file.open(QIODevice::ReadOnly)) {
            reason = file.errorString();
            return false;
        }
        if (file.read(16) != QByteArray("SQLite format 3", 16)) {
            reason = QStringLiteral("not an SQLite database");
            return false;
        }
    }
    m_connection = newConnectionName();
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connection);
    db.setDatabaseName(m_path);
    if (!db.open()) {
        reason = db.lastError().text();
        return false;
    }
    QSqlQuery query(db);
    if (!exec(query, QStringLiteral("PRAGMA busy_timeout = 3000"), reason)
        || !exec(query, QStringLiteral("PRAGMA quick_check"), reason))
        return false;
    if (!query.next() || query.value(0).toString() != QLatin1String("ok")) {
        reason = QStringLiteral("integrity check failed: %1").arg(query.value(0).toString());
        return false;
    }
    if (!exec(query, QStringLiteral("PRAGMA journal_mode = WAL"), reason))
        return false;
    // In WAL mode NORMAL loses no committed transaction when the process dies.
    if (!exec(query, QStringLiteral("PRAGMA synchronous = NORMAL"), reason))
        return false;

    if (!db.transaction()) {
        reason = db.lastError().text();
        return false;
    }
    for (const char* statement : kSchema) {
        if (!exec(query, QLatin1String(statement), reason))
            return false;
    }
    if (!exec(query, QStringLiteral("SELECT key, value FROM meta"), reason))
        return false;
    int schema = 0;
    bool haveResetTime = false;
    while (query.next()) {
        const QString key = query.value(0).toString();
        if (key == QLatin1String("schema"))
            schema = query.value(1).toInt();
        else if (key == QLatin1String("reset_time"))
            m_resetTime = query.value(1).toLongLong(&haveResetTime);
    }
    if (schema > kSchemaVersion) {
        reason = QStringLiteral("written by a newer version (schema %1)").arg(schema);
        return false;
    }
    if (!haveResetTime)
        m_resetTime = nowSeconds;
    query.prepare(QStringLiteral("INSERT OR REPLACE INTO meta (key, value) VALUES ('schema', ?), ('reset_time', ?)"));
    query.addBindValue(QString::number(kSchemaVersion));
    query.addBindValue(QString::number(m_resetTime));
    if (!query.exec() || !exec(query, QStringLiteral("SELECT interface, boot_id, ifindex, received, sent FROM baseline"), reason)) {
        if (reason.isEmpty())
            reason = query.lastError().text();
        return false;
    }
    if (query.next()) {
        m_baseline.interfaceName = query.value(0).toString();
        m_baseline.bootId = query.value(1).toByteArray();
        m_baseline.ifindex = query.value(2).toUInt();
        m_baseline.received = fromSql(query.value(3));
        m_baseline.sent = fromSql(query.value(4));
    }
    query.finish();
    if (!db.commit()) {
        reason = db.lastError().text();
        return false;
    }
    return true;
}

void UsageLedger::closeConnection()
{
    if (m_connection.isEmpty())
        return;
    {
        QSqlDatabase db = QSqlDatabase::database(m_connection, false);
        if (db.isOpen()) {
            db.rollback(); // harmless without a transaction; needed after a half-done open
            db.close();
        }
    }
    QSqlDatabase::removeDatabase(m_connection);
    m_connection.clear();
}

QString UsageLedger::moveAside()
{
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    QString aside = m_path + QStringLiteral(".corrupt-") + stamp;
    for (int n = 2; QFileInfo::exists(aside); ++n)
        aside = m_path + QStringLiteral(".corrupt-%1-%2").arg(stamp).arg(n);
    if (!QFile::rename(m_path, aside))
        return {};
    for (const char* suffix : {"-wal", "-shm"}) {
        const QString companion = m_path + QLatin1String(suffix);
        if (QFileInfo::exists(companion) && !QFile::rename(companion, aside + QLatin1String(suffix)))
            qCWarning(lcLinux, "UsageLedger: cannot move %s aside", qUtf8Printable(companion));
    }
    return aside;
}

void UsageLedger::add(const QString& interfaceName, qint64 atSeconds, const Usage& usage)
{
    if (!usage.isEmpty())
        m_pending[{interfaceName, bucketStart(atSeconds)}] += usage;
}

void UsageLedger::setBaseline(const CounterBaseline& baseline)
{
    m_baseline = baseline;
    m_baselineDirty = true;
}

bool UsageLedger::writeBaseline()
{
    QSqlQuery query(QSqlDatabase::database(m_connection, false));
    if (!m_baseline.isValid())
        return query.exec(QStringLiteral("DELETE FROM baseline"));
    query.prepare(QStringLiteral("INSERT OR REPLACE INTO baseline (id, interface, boot_id, ifindex, received, sent)"
                                 " VALUES (1, ?, ?, ?, ?, ?)"));
    query.addBindValue(m_baseline.interfaceName);
    query.addBindValue(QString::fromLatin1(m_baseline.bootId));
    query.addBindValue(m_baseline.ifindex);
    query.addBindValue(toSql(m_baseline.received));
    query.addBindValue(toSql(m_baseline.sent));
    return query.exec();
}

bool UsageLedger::commit()
{
    if (!hasPending())
        return true;
    if (!isPersistent())
        return false;
    QSqlDatabase db = QSqlDatabase::database(m_connection, false);
    bool ok = db.transaction();
    if (ok) {
        QSqlQuery query(db);
        query.prepare(QStringLiteral(
            "INSERT INTO usage (interface, bucket, received, sent, connected_ms) VALUES (?, ?, ?, ?, ?)"
            " ON CONFLICT (interface, bucket) DO UPDATE SET received = received + excluded.received,"
            " sent = sent + excluded.sent, connected_ms = connected_ms + excluded.connected_ms"));
        for (auto it = m_pending.cbegin(); ok && it != m_pending.cend(); ++it) {
            query.addBindValue(it->first.first);
            query.addBindValue(it->first.second);
            query.addBindValue(toSql(it->second.received));
            query.addBindValue(toSql(it->second.sent));
            query.addBindValue(it->second.connectedMs);
            ok = query.exec();
        }
        query.finish();
        ok = ok && writeBaseline() && db.commit();
    }
    if (!ok) {
        if (!std::exchange(m_warnedCommit, true))
            qCWarning(lcLinux, "UsageLedger: cannot write %s (%s); keeping the usage in memory and trying again",
                      qUtf8Printable(m_path), qUtf8Printable(db.lastError().text()));
        db.rollback();
        return false;
    }
    if (std::exchange(m_warnedCommit, false))
        qCWarning(lcLinux, "UsageLedger: %s is written again", qUtf8Printable(m_path));

    for (auto& [firstBucket, committed] : m_committedSince) {
        for (const auto& [key, usage] : m_pending) {
            if (key.second >= firstBucket)
                committed += usage;
        }
    }
    m_pending.clear();
    m_baselineDirty = false;
    return true;
}

void UsageLedger::close()
{
    if (isPersistent())
        commit();
    closeConnection();
}

Usage UsageLedger::committedSince(qint64 firstBucket, bool& ok)
{
    ok = true;
    if (!isPersistent())
        return {};
    const auto cached = m_committedSince.find(firstBucket);
    if (cached != m_committedSince.end())
        return cached->second;
    QSqlQuery query(QSqlDatabase::database(m_connection, false));
    query.prepare(QStringLiteral("SELECT SUM(received), SUM(sent), SUM(connected_ms) FROM usage WHERE bucket >= ?"));
    query.addBindValue(firstBucket);
    if (!query.exec() || !query.next()) {
        qCWarning(lcLinux, "UsageLedger: cannot read %s: %s", qUtf8Printable(m_path),
                  qUtf8Printable(query.lastError().text()));
        ok = false;
        return {};
    }
    const Usage usage{fromSql(query.value(0)), fromSql(query.value(1)), query.value(2).toLongLong()};
    if (m_committedSince.size() >= kMaxCachedStarts)
        m_committedSince.clear();
    m_committedSince.emplace(firstBucket, usage);
    return usage;
}

Usage UsageLedger::totalSince(qint64 fromSeconds)
{
    const qint64 firstBucket = bucketStart(fromSeconds);
    bool ok = false;
    Usage total = committedSince(firstBucket, ok);
    for (const auto& [key, usage] : m_pending) {
        if (key.second >= firstBucket)
            total += usage;
    }
    return total;
}

bool UsageLedger::reset(qint64 nowSeconds)
{
    if (isPersistent()) {
        QSqlDatabase db = QSqlDatabase::database(m_connection, false);
        QSqlQuery query(db);
        bool ok = db.transaction() && query.exec(QStringLiteral("DELETE FROM usage"));
        if (ok) {
            query.prepare(QStringLiteral("INSERT OR REPLACE INTO meta (key, value) VALUES ('reset_time', ?)"));
            query.addBindValue(QString::number(nowSeconds));
            ok = query.exec();
        }
        query.finish();
        ok = ok && writeBaseline() && db.commit();
        if (!ok) {
            qCWarning(lcLinux, "UsageLedger: cannot reset %s: %s", qUtf8Printable(m_path),
                      qUtf8Printable(db.lastError().text()));
            db.rollback();
            return false;
        }
        m_baselineDirty = false;
    }
    m_pending.clear();
    m_committedSince.clear();
    m_resetTime = nowSeconds;
    return true;
}

} // namespace velt
