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
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>

namespace velt {

namespace {
    constexpr int kSchemaVersion = 2;
    constexpr qint64 kDaySeconds = 86400;
    constexpr size_t kMaxCachedRanges = 16;
    constexpr qint64 kSqlMax = std::numeric_limits<qint64>::max();

    const char* const kSchema[] = {
        "CREATE TABLE IF NOT EXISTS meta (key TEXT PRIMARY KEY, value TEXT NOT NULL)",
        "CREATE TABLE IF NOT EXISTS usage (interface TEXT NOT NULL, connection TEXT NOT NULL DEFAULT '',"
        " bucket INTEGER NOT NULL, received INTEGER NOT NULL DEFAULT 0, sent INTEGER NOT NULL DEFAULT 0,"
        " connected_ms INTEGER NOT NULL DEFAULT 0, PRIMARY KEY (interface, connection, bucket)) WITHOUT "
        "ROWID",
        // Covers the range sums, so they never touch the table.
        "CREATE INDEX IF NOT EXISTS usage_by_bucket ON usage (bucket, received, sent, connected_ms)",
        // Every key summed per UTC day: a period reads its days here and only its
        // partial first and last day in usage.
        "CREATE TABLE IF NOT EXISTS usage_day (day INTEGER PRIMARY KEY, received INTEGER NOT NULL DEFAULT 0,"
        " sent INTEGER NOT NULL DEFAULT 0, connected_ms INTEGER NOT NULL DEFAULT 0)",
        "CREATE TABLE IF NOT EXISTS baseline (interface TEXT PRIMARY KEY, boot_id TEXT NOT NULL,"
        " ifindex INTEGER NOT NULL, received INTEGER NOT NULL, sent INTEGER NOT NULL, taken_ms INTEGER NOT "
        "NULL)",
    };

    // From one interface per row without connections and a single baseline row.
    const char* const kUpgradeFrom1[] = {
        "ALTER TABLE usage RENAME TO usage_v1",
        "DROP INDEX IF EXISTS usage_by_bucket",
        "ALTER TABLE baseline RENAME TO baseline_v1",
    };
    const char* const kUpgradeFrom1Copy[] = {
        "INSERT INTO usage (interface, connection, bucket, received, sent, connected_ms)"
        " SELECT interface, '', bucket, received, sent, connected_ms FROM usage_v1",
        "INSERT INTO baseline SELECT interface, boot_id, ifindex, received, sent, -1 FROM baseline_v1",
        "DROP TABLE usage_v1",
        "DROP TABLE baseline_v1",
        "INSERT OR REPLACE INTO usage_day (day, received, sent, connected_ms)"
        " SELECT bucket - ((bucket % 86400) + 86400) % 86400 AS d, SUM(received), SUM(sent), "
        "SUM(connected_ms)"
        " FROM usage GROUP BY d",
    };

    // Adds without ever leaving the signed 64-bit range SQLite stores.
    const char* const kSaturatingAdd
        = "MAX(%1, 0) + MIN(MAX(excluded.%1, 0), 9223372036854775807 - MAX(%1, 0))";

    quint64 saturatingAdd(quint64 a, quint64 b)
    {
        return b > ~quint64(0) - a ? ~quint64(0) : a + b;
    }
    qint64 toSql(quint64 value)
    {
        return qint64(std::min<quint64>(value, quint64(kSqlMax)));
    }

    QString newConnectionName()
    {
        static std::atomic<int> serial { 0 };
        return QStringLiteral("netinfo-usage-ledger-%1").arg(++serial);
    }

    // SQLite's primary result code behind an error, 0 when there is none.
    int sqliteCode(const QSqlError& error)
    {
        return error.nativeErrorCode().toInt() & 0xff;
    }

    bool isDamage(const QSqlError& error)
    {
        const int code = sqliteCode(error);
        return code == 11 /* SQLITE_CORRUPT */ || code == 26 /* SQLITE_NOTADB */;
    }

    std::atomic<int> g_failCountdown { 0 };

    // True, with the reason an I/O error would give, when a test made this operation fail.
    bool injected(QString& reason)
    {
        int left = g_failCountdown.load();
        while (left > 0 && !g_failCountdown.compare_exchange_weak(left, left - 1)) { }
        if (left != 1)
            return false;
        reason = QStringLiteral("disk I/O error");
        return true;
    }

    bool exec(QSqlQuery& query, const QString& statement, QString& reason)
    {
        if (injected(reason))
            return false;
        if (query.exec(statement))
            return true;
        reason = query.lastError().text();
        return false;
    }

    // Files and folders we create hold what the user did: private whatever the umask.
    void makePrivateFolder(const QString& path)
    {
        QStringList missing;
        for (QString folder = QDir::cleanPath(path); !folder.isEmpty() && !QFileInfo::exists(folder);) {
            missing.prepend(folder);
            const QString parent = QFileInfo(folder).path();
            if (parent == folder)
                break;
            folder = parent;
        }
        for (const QString& folder : std::as_const(missing)) {
            const QByteArray name = QFile::encodeName(folder);
            if (::mkdir(name.constData(), 0700) == 0)
                ::chmod(name.constData(), 0700);
        }
    }

    // SQLite gives a new database 0644 less the umask, and its -wal and -shm the
    // database's mode; so the file is there, private, before SQLite sees it.
    void createPrivateFile(const QString& path)
    {
        const int fd = ::open(
            QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
        if (fd < 0)
            return; // there already, or SQLite will say why it cannot be created
        ::fchmod(fd, 0600);
        ::close(fd);
    }

    qint64 dayStart(qint64 seconds)
    {
        return seconds - (((seconds % kDaySeconds) + kDaySeconds) % kDaySeconds);
    }
} // namespace

Usage& Usage::operator+=(const Usage& other)
{
    received = saturatingAdd(received, other.received);
    sent = saturatingAdd(sent, other.sent);
    connectedMs = qint64(std::min<quint64>(saturatingAdd(quint64(std::max<qint64>(connectedMs, 0)),
                                               quint64(std::max<qint64>(other.connectedMs, 0))),
        quint64(kSqlMax)));
    return *this;
}

qint64 UsageLedger::bucketStart(qint64 epochSeconds)
{
    const qint64 offset = ((epochSeconds % BucketSeconds) + BucketSeconds) % BucketSeconds;
    return epochSeconds - offset;
}

UsageLedger::UsageLedger(QString path, LedgerAccess access)
    : m_path(std::move(path))
    , m_access(access)
{
    // A reader has nothing to decide before opening, and resetTime() is then current at once.
    if (m_access == LedgerAccess::ReadOnly)
        open();
}

UsageLedger::~UsageLedger()
{
    close();
}

void UsageLedger::noteProblem(const QString& problem, const QString& reason)
{
    if (m_problem != problem)
        qCWarning(lcLinux, "UsageLedger: %s: %s (%s)", qUtf8Printable(m_path), qUtf8Printable(problem),
            qUtf8Printable(reason));
    m_problem = problem;
}

bool UsageLedger::open(qint64 nowSeconds)
{
    closeConnection();
    m_openTried = true;
    m_resetTime = nowSeconds;
    if (m_access == LedgerAccess::ReadWrite) {
        makePrivateFolder(QFileInfo(m_path).absolutePath());
        createPrivateFile(m_path);
    } else if (!QFileInfo::exists(m_path)) {
        // Read before anything was ever recorded: empty, and nothing is wrong.
        m_problem.clear();
        return false;
    }
    QString reason;
    Failure failure = openFile(reason);
    if (failure == Failure::Damaged && m_access == LedgerAccess::ReadWrite) {
        closeConnection();
        const QString aside = moveAside();
        if (aside.isEmpty()) {
            noteProblem(
                QStringLiteral(
                    "The usage file is damaged and cannot be moved aside; usage is kept in memory only"),
                reason);
            return false;
        }
        qCWarning(lcLinux, "UsageLedger: %s is unreadable (%s); moved it to %s and started a new ledger",
            qUtf8Printable(m_path), qUtf8Printable(reason), qUtf8Printable(aside));
        failure = openFile(reason);
    }
    if (failure == Failure::Damaged) {
        closeConnection();
        noteProblem(QStringLiteral("The usage file is damaged"), reason);
        return false;
    }
    if (!isOpen()) {
        noteProblem(QStringLiteral("The usage file cannot be opened; usage is kept in memory"), reason);
        return false;
    }
    if (failure == Failure::Unavailable) {
        noteProblem(m_access == LedgerAccess::ReadOnly
                ? QStringLiteral("The usage file cannot be read now")
                : QStringLiteral("The usage file is in use by another program or "
                                 "cannot be written; new usage is kept in memory "
                                 "and written when it can be"),
            reason);
        return false;
    }
    m_problem.clear();
    return true;
}

UsageLedger::Failure UsageLedger::openFile(QString& reason)
{
    const QFileInfo info(m_path);
    if (info.exists() && info.size() > 0) {
        // Checked before SQLite sees the file: closing a connection to a
        // foreign file can delete the -wal beside it, which we must keep.
        QFile file(m_path);
        if (!file.open(QIODevice::ReadOnly)) {
            reason = file.errorString();
            return Failure::Unavailable;
        }
        if (file.read(16) != QByteArray("SQLite format 3", 16)) {
            reason = QStringLiteral("not an SQLite database");
            return Failure::Damaged;
        }
    } else if (m_access == LedgerAccess::ReadOnly) {
        reason = QStringLiteral("no such file");
        return Failure::Unavailable;
    }
    m_connection = newConnectionName();
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connection);
    db.setDatabaseName(m_path);
    if (m_access == LedgerAccess::ReadOnly)
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
    if (injected(reason) || !db.open()) {
        if (reason.isEmpty())
            reason = db.lastError().text();
        db = QSqlDatabase(); // let go of it, so that it can be removed
        closeConnection();
        return Failure::Unavailable;
    }
    QSqlQuery query(db);
    // Short: the only other writer is a program holding the file on purpose,
    // and the sampler must not stall behind it.
    exec(query, QStringLiteral("PRAGMA busy_timeout = 200"), reason);
    // The writer reads every page once when it opens the file, and moves a
    // damaged one aside. Readers (limit checks, the panel, reports) open it
    // often and rely on SQLite's own checks of the pages they read: a check of
    // a year of history would cost each of them more than its queries.
    if (m_access == LedgerAccess::ReadWrite) {
        if (!exec(query, QStringLiteral("PRAGMA quick_check"), reason))
            return isDamage(query.lastError()) ? Failure::Damaged : Failure::Unavailable;
        if (!query.next() || query.value(0).toString() != QLatin1String("ok")) {
            reason = QStringLiteral("integrity check failed: %1").arg(query.value(0).toString());
            return Failure::Damaged;
        }
        query.finish();
    }
    int schema = 0;
    if (query.exec(QStringLiteral("SELECT value FROM meta WHERE key = 'schema'")) && query.next())
        schema = query.value(0).toInt();
    query.finish();
    if (schema > kSchemaVersion) {
        reason = QStringLiteral("written by a newer version (schema %1)").arg(schema);
        return Failure::Damaged;
    }
    // Busy or unwritable: still read what is there, write later.
    const bool writable = m_access == LedgerAccess::ReadOnly || setUp(reason);
    if (!m_setUp && schema < kSchemaVersion) {
        if (writable)
            reason = QStringLiteral("written by an older version (schema %1)").arg(schema);
        return Failure::Unavailable;
    }
    QString prepareReason;
    if (!prepareStatements(prepareReason)) {
        reason = prepareReason;
        return Failure::Unavailable;
    }
    loadState();
    return writable ? Failure::None : Failure::Unavailable;
}

// Creates or upgrades the tables; only writes when something is missing, so
// a reader beside a writer never competes for the lock.
bool UsageLedger::setUp(QString& reason)
{
    QSqlDatabase db = QSqlDatabase::database(m_connection, false);
    QSqlQuery query(db);
    int schema = 0;
    bool haveResetTime = false;
    if (query.exec(QStringLiteral("SELECT key, value FROM meta"))) {
        while (query.next()) {
            if (query.value(0).toString() == QLatin1String("schema"))
                schema = query.value(1).toInt();
            else if (query.value(0).toString() == QLatin1String("reset_time"))
                haveResetTime = true;
        }
    }
    query.finish();
    if (schema == kSchemaVersion && haveResetTime) {
        m_setUp = true;
        return true;
    }
    if (!exec(query, QStringLiteral("PRAGMA journal_mode = WAL"), reason))
        return false;
    // In WAL mode NORMAL loses no committed transaction when the process dies.
    exec(query, QStringLiteral("PRAGMA synchronous = NORMAL"), reason);
    if (!db.transaction()) {
        reason = db.lastError().text();
        return false;
    }
    bool ok = true;
    if (schema == 1) {
        for (const char* statement : kUpgradeFrom1)
            ok = ok && exec(query, QLatin1String(statement), reason);
    }
    for (const char* statement : kSchema)
        ok = ok && exec(query, QLatin1String(statement), reason);
    if (ok && schema == 1) {
        for (const char* statement : kUpgradeFrom1Copy)
            ok = ok && exec(query, QLatin1String(statement), reason);
    }
    if (ok) {
        query.prepare(QStringLiteral("INSERT OR REPLACE INTO meta (key, value) VALUES ('schema', ?)"));
        query.addBindValue(QString::number(kSchemaVersion));
        ok = query.exec();
        if (ok && !haveResetTime) {
            query.prepare(
                QStringLiteral("INSERT OR REPLACE INTO meta (key, value) VALUES ('reset_time', ?)"));
            query.addBindValue(QString::number(m_resetTime));
            ok = query.exec();
        }
        if (!ok)
            reason = query.lastError().text();
    }
    query.finish();
    if (!ok || !db.commit()) {
        if (ok)
            reason = db.lastError().text();
        db.rollback();
        return false;
    }
    if (schema == 1)
        qCInfo(lcLinux, "UsageLedger: %s upgraded to schema %d", qUtf8Printable(m_path), kSchemaVersion);
    m_setUp = true;
    return true;
}

bool UsageLedger::prepareStatements(QString& reason)
{
    const QSqlDatabase db = QSqlDatabase::database(m_connection, false);
    auto prepare = [&](std::unique_ptr<QSqlQuery>& query, const QString& text) {
        query = std::make_unique<QSqlQuery>(db);
        if (query->prepare(text))
            return true;
        reason = query->lastError().text();
        return false;
    };
    const QString add = QLatin1String(kSaturatingAdd);
    const QString set = QStringLiteral(" DO UPDATE SET received = %1, sent = %2, connected_ms = %3")
                            .arg(add.arg(QLatin1String("received")), add.arg(QLatin1String("sent")),
                                add.arg(QLatin1String("connected_ms")));
    const QString fine
        = QStringLiteral("SELECT received, sent, connected_ms FROM usage WHERE bucket >= ? AND bucket < ?");
    return prepare(m_sum,
               QStringLiteral(
                   "SELECT SUM(received), SUM(sent), SUM(connected_ms) FROM (%1 UNION ALL %1 UNION ALL "
                   "SELECT received, sent, connected_ms FROM usage_day WHERE day >= ? AND day < ?)")
                   .arg(fine))
        && prepare(m_dataVersion, QStringLiteral("PRAGMA data_version"))
        && (m_access == LedgerAccess::ReadOnly
            || (prepare(m_upsert,
                    QStringLiteral(
                        "INSERT INTO usage (interface, connection, bucket, received, sent, "
                        "connected_ms) VALUES (?, COALESCE(?, ''), ?, ?, ?, ?) ON CONFLICT (interface, "
                        "connection, bucket)")
                        + set)
                && prepare(m_upsertDay,
                    QStringLiteral("INSERT INTO usage_day (day, received, sent, connected_ms) "
                                   "VALUES (?, ?, ?, ?) ON CONFLICT (day)")
                        + set)
                && prepare(m_writeBaseline,
                    QStringLiteral("INSERT OR REPLACE INTO baseline (interface, boot_id, "
                                   "ifindex, received, sent, taken_ms) VALUES (?, ?, ?, ?, ?, ?)"))));
}

// The reset time, the flags and the baselines as the file has them now.
// A statement kept prepared while the connection lasts; null when it cannot
// be prepared yet (a table not created), so the next call tries again. Each
// use ends with finish(): an unfinished statement holds its read snapshot.
QSqlQuery* UsageLedger::kept(std::unique_ptr<QSqlQuery>& query, const QString& text)
{
    if (!query) {
        auto prepared = std::make_unique<QSqlQuery>(QSqlDatabase::database(m_connection, false));
        prepared->setForwardOnly(true);
        if (!prepared->prepare(text))
            return nullptr;
        query = std::move(prepared);
    }
    return query.get();
}

void UsageLedger::loadState()
{
    if (QSqlQuery* query = kept(m_readMeta, QStringLiteral("SELECT key, value FROM meta"));
        query && query->exec()) {
        while (query->next()) {
            const QString key = query->value(0).toString();
            if (key == QLatin1String("reset_time"))
                m_resetTime = query->value(1).toLongLong();
            else if (key.startsWith(QLatin1String("flag.")))
                m_flags[key.mid(5)] = true;
        }
        query->finish();
    }
    if (QSqlQuery* query = kept(m_readBaselines,
            QStringLiteral("SELECT interface, boot_id, ifindex, received, sent, taken_ms FROM baseline"));
        query && query->exec()) {
        while (query->next()) {
            const QString name = query->value(0).toString();
            if (m_dirtyBaselines.count(name))
                continue; // ours, not yet written, is newer
            m_baselines[name] = CounterBaseline { name, query->value(1).toByteArray(),
                query->value(2).toUInt(), quint64(std::max<qint64>(query->value(3).toLongLong(), 0)),
                quint64(std::max<qint64>(query->value(4).toLongLong(), 0)), query->value(5).toLongLong() };
        }
        query->finish();
    }
    loadAdjustments();
    m_committedCache.clear();
}

void UsageLedger::closeConnection()
{
    m_upsert.reset();
    m_upsertDay.reset();
    m_writeBaseline.reset();
    m_sum.reset();
    m_dataVersion.reset();
    m_readMeta.reset();
    m_readBaselines.reset();
    m_readAdjustments.reset();
    m_readByKey.reset();
    m_setUp = false;
    m_dataVersionSeen = -1;
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
    for (const char* suffix : { "-wal", "-shm" }) {
        const QString companion = m_path + QLatin1String(suffix);
        if (QFileInfo::exists(companion) && !QFile::rename(companion, aside + QLatin1String(suffix)))
            qCWarning(lcLinux, "UsageLedger: cannot move %s aside", qUtf8Printable(companion));
    }
    return aside;
}

void UsageLedger::add(const UsageKey& key, qint64 atSeconds, const Usage& usage)
{
    if (!usage.isEmpty())
        m_pending[{ key.interfaceName, key.connection, bucketStart(atSeconds) }] += usage;
}

void UsageLedger::setBaseline(const CounterBaseline& baseline)
{
    CounterBaseline& current = m_baselines[baseline.interfaceName];
    // The clock alone moving is no reason to write.
    CounterBaseline same = baseline;
    same.monotonicMs = current.monotonicMs;
    if (same == current)
        return;
    current = baseline;
    m_dirtyBaselines[baseline.interfaceName] = true;
}

void UsageLedger::setFlag(const QString& name)
{
    if (!flag(name))
        m_pendingFlags[name] = true;
}

bool UsageLedger::flag(const QString& name) const
{
    return m_flags.count(name) || m_pendingFlags.count(name);
}

bool UsageLedger::writePending(QString& reason)
{
    auto run = [&reason](QSqlQuery& query) {
        if (injected(reason))
            return false;
        if (query.exec())
            return true;
        reason = query.lastError().text();
        return false;
    };
    std::map<qint64, Usage> days;
    for (const auto& [key, usage] : m_pending) {
        const auto& [name, connection, bucket] = key;
        if ((usage.received > quint64(kSqlMax) || usage.sent > quint64(kSqlMax))
            && !std::exchange(m_warnedClamp, true))
            qCWarning(lcLinux, "UsageLedger: usage of %s beyond what %s can hold; stored as the maximum",
                qUtf8Printable(name), qUtf8Printable(m_path));
        m_upsert->bindValue(0, name);
        m_upsert->bindValue(1, connection);
        m_upsert->bindValue(2, bucket);
        m_upsert->bindValue(3, toSql(usage.received));
        m_upsert->bindValue(4, toSql(usage.sent));
        m_upsert->bindValue(5, usage.connectedMs);
        if (!run(*m_upsert))
            return false;
        days[dayStart(bucket)] += usage;
    }
    for (const auto& [day, usage] : days) {
        m_upsertDay->bindValue(0, day);
        m_upsertDay->bindValue(1, toSql(usage.received));
        m_upsertDay->bindValue(2, toSql(usage.sent));
        m_upsertDay->bindValue(3, usage.connectedMs);
        if (!run(*m_upsertDay))
            return false;
    }
    for (const auto& entry : m_dirtyBaselines) {
        const CounterBaseline& b = m_baselines[entry.first];
        m_writeBaseline->bindValue(0, b.interfaceName);
        m_writeBaseline->bindValue(1, QString::fromLatin1(b.bootId));
        m_writeBaseline->bindValue(2, b.ifindex);
        m_writeBaseline->bindValue(3, toSql(b.received));
        m_writeBaseline->bindValue(4, toSql(b.sent));
        m_writeBaseline->bindValue(5, b.monotonicMs);
        if (!run(*m_writeBaseline))
            return false;
    }
    QSqlQuery query(QSqlDatabase::database(m_connection, false));
    for (const auto& entry : m_pendingFlags) {
        query.prepare(QStringLiteral("INSERT OR REPLACE INTO meta (key, value) VALUES (?, '1')"));
        query.addBindValue(QStringLiteral("flag.") + entry.first);
        if (!run(query))
            return false;
    }
    return true;
}

bool UsageLedger::commit()
{
    if (!hasPending())
        return true;
    if (m_access == LedgerAccess::ReadOnly)
        return false;
    QString reason;
    if (!isOpen() && m_openTried && QFileInfo::exists(m_path))
        open(m_resetTime); // a file that could not be opened may be usable now
    if (!isOpen())
        return false;
    if (!m_setUp) {
        if (!(setUp(reason) && prepareStatements(reason))) {
            noteProblem(m_problem.isEmpty()
                    ? QStringLiteral("The usage file cannot be written now; new usage is kept in memory")
                    : m_problem,
                reason);
            return false;
        }
        loadState(); // what it held while it could not be read
    }
    QSqlDatabase db = QSqlDatabase::database(m_connection, false);
    bool ok = !injected(reason) && db.transaction();
    if (!ok && reason.isEmpty())
        reason = db.lastError().text();
    ok = ok && writePending(reason);
    for (QSqlQuery* query : { m_upsert.get(), m_upsertDay.get(), m_writeBaseline.get() })
        query->finish();
    if (ok && (injected(reason) || !db.commit())) {
        if (reason.isEmpty())
            reason = db.lastError().text();
        ok = false;
    }
    if (!ok) {
        db.rollback();
        noteProblem(QStringLiteral(
                        "The usage file is in use by another program or cannot be written; new usage is kept "
                        "in memory and written when it can be"),
            reason);
        return false;
    }
    if (!m_problem.isEmpty()) {
        qCInfo(lcLinux, "UsageLedger: %s is written again", qUtf8Printable(m_path));
        m_problem.clear();
    }
    for (auto& [range, committed] : m_committedCache) {
        for (const auto& [key, usage] : m_pending) {
            if (std::get<2>(key) >= range.first && std::get<2>(key) < range.second)
                committed += usage;
        }
    }
    m_pending.clear();
    m_dirtyBaselines.clear();
    for (const auto& entry : m_pendingFlags)
        m_flags[entry.first] = true;
    m_pendingFlags.clear();
    // Our own commit changes data_version for nobody but others.
    return true;
}

void UsageLedger::failOperationForTesting(int n)
{
    g_failCountdown = n;
}

bool UsageLedger::failurePendingForTesting()
{
    return g_failCountdown > 0;
}

void UsageLedger::close()
{
    if (isOpen() && m_access == LedgerAccess::ReadWrite)
        commit();
    closeConnection();
}

bool UsageLedger::refresh()
{
    if (!m_dataVersion)
        return false;
    if (!m_dataVersion->exec() || !m_dataVersion->next())
        return false;
    const qint64 version = m_dataVersion->value(0).toLongLong();
    m_dataVersion->finish();
    if (version == m_dataVersionSeen)
        return false;
    m_dataVersionSeen = version;
    loadState();
    return true;
}

Usage UsageLedger::committedTotal(qint64 firstBucket, qint64 endBucket, bool& ok)
{
    ok = true;
    if (!m_sum || endBucket <= firstBucket)
        return {};
    const auto cached = m_committedCache.find({ firstBucket, endBucket });
    if (cached != m_committedCache.end())
        return cached->second;
    // Whole days from the roll-up, the partial ones from the buckets.
    qint64 dayFrom = dayStart(firstBucket + kDaySeconds - 1);
    qint64 dayUntil = dayStart(endBucket);
    if (dayFrom >= dayUntil)
        dayFrom = dayUntil = endBucket;
    const qint64 bounds[] = { firstBucket, dayFrom, dayUntil, endBucket, dayFrom, dayUntil };
    for (int i = 0; i < 6; ++i)
        m_sum->bindValue(i, bounds[i]);
    Usage usage;
    if (m_sum->exec() && m_sum->next()) {
        const auto value = [this](int i) {
            const qint64 v = m_sum->value(i).toLongLong();
            return v < 0 ? 0 : v;
        };
        usage = Usage { quint64(value(0)), quint64(value(1)), value(2) };
    } else {
        // SUM stops at the signed 64-bit range; beyond it the figure saturates.
        const QSqlError error = m_sum->lastError();
        if (error.text().contains(QLatin1String("overflow"), Qt::CaseInsensitive)) {
            usage = Usage { ~quint64(0), ~quint64(0), kSqlMax };
            if (!std::exchange(m_warnedRead, true))
                qCWarning(lcLinux,
                    "UsageLedger: the usage in %s exceeds what can be summed; reporting the maximum",
                    qUtf8Printable(m_path));
        } else {
            if (!std::exchange(m_warnedRead, true))
                qCWarning(lcLinux, "UsageLedger: cannot read %s: %s", qUtf8Printable(m_path),
                    qUtf8Printable(error.text()));
            ok = false;
        }
    }
    m_sum->finish();
    if (!ok)
        return {};
    if (m_committedCache.size() >= kMaxCachedRanges)
        m_committedCache.clear();
    m_committedCache.emplace(std::make_pair(firstBucket, endBucket), usage);
    return usage;
}

Usage UsageLedger::total(qint64 fromSeconds, qint64 untilSeconds)
{
    if (!m_openTried)
        open();
    const qint64 firstBucket = bucketStart(fromSeconds);
    const qint64 endBucket = bucketStart(untilSeconds - 1) + BucketSeconds;
    bool ok = false;
    Usage total = committedTotal(firstBucket, endBucket, ok);
    for (const auto& [key, usage] : m_pending) {
        if (std::get<2>(key) >= firstBucket && std::get<2>(key) < untilSeconds)
            total += usage;
    }
    return total;
}

QList<KeyedUsage> UsageLedger::usageByKey(qint64 fromSeconds, qint64 untilSeconds)
{
    if (!m_openTried)
        open();
    const qint64 firstBucket = bucketStart(fromSeconds);
    std::map<UsageKey, Usage> byKey;
    QSqlQuery* query = isOpen() && m_sum
        ? kept(m_readByKey,
            QStringLiteral("SELECT interface, connection, received, sent, connected_ms FROM usage"
                           " WHERE bucket >= ? AND bucket < ?"))
        : nullptr;
    if (query) {
        query->bindValue(0, firstBucket);
        query->bindValue(1, untilSeconds);
        if (!query->exec())
            qCWarning(lcLinux, "UsageLedger: cannot read %s: %s", qUtf8Printable(m_path),
                qUtf8Printable(query->lastError().text()));
        while (query->next()) {
            const auto value = [query](int i) { return std::max<qint64>(query->value(i).toLongLong(), 0); };
            byKey[UsageKey { query->value(0).toString(), query->value(1).toString() }]
                += Usage { quint64(value(2)), quint64(value(3)), value(4) };
        }
        query->finish();
    }
    for (const auto& [key, usage] : m_pending) {
        if (std::get<2>(key) >= firstBucket && std::get<2>(key) < untilSeconds)
            byKey[UsageKey { std::get<0>(key), std::get<1>(key) }] += usage;
    }
    QList<KeyedUsage> result;
    for (const auto& [key, usage] : byKey)
        result.append(KeyedUsage { key, usage });
    return result;
}

bool UsageLedger::reset(qint64 nowSeconds)
{
    if (isOpen()) {
        QSqlDatabase db = QSqlDatabase::database(m_connection, false);
        QSqlQuery query(db);
        QString reason;
        bool ok = m_access == LedgerAccess::ReadWrite
            && (m_setUp || (setUp(reason) && prepareStatements(reason)));
        if (m_access == LedgerAccess::ReadOnly)
            reason = QStringLiteral("opened read-only");
        ok = ok && db.transaction();
        ok = ok && exec(query, QStringLiteral("DELETE FROM usage"), reason)
            && exec(query, QStringLiteral("DELETE FROM usage_day"), reason);
        if (ok) {
            query.prepare(
                QStringLiteral("INSERT OR REPLACE INTO meta (key, value) VALUES ('reset_time', ?)"));
            query.addBindValue(QString::number(nowSeconds));
            ok = query.exec();
            if (!ok)
                reason = query.lastError().text();
        }
        query.finish();
        if (ok && !db.commit()) {
            reason = db.lastError().text();
            ok = false;
        }
        if (!ok) {
            if (reason.isEmpty())
                reason = db.lastError().text();
            qCWarning(
                lcLinux, "UsageLedger: cannot reset %s: %s", qUtf8Printable(m_path), qUtf8Printable(reason));
            db.rollback();
            return false;
        }
    }
    m_pending.clear();
    m_committedCache.clear();
    m_resetTime = nowSeconds;
    return true;
}

namespace {

    // Created on first use rather than with the schema: an older ledger gains it
    // without an upgrade, and older readers never notice it.
    const char kAdjustmentTable[]
        = "CREATE TABLE IF NOT EXISTS adjustment (id INTEGER PRIMARY KEY, "
          "period_start INTEGER NOT NULL, amount_bytes INTEGER NOT NULL, created INTEGER NOT NULL)";

} // namespace

void UsageLedger::loadAdjustments()
{
    m_adjustments.clear();
    // No table yet means no adjustment.
    QSqlQuery* query = kept(m_readAdjustments,
        QStringLiteral("SELECT id, period_start, amount_bytes, created FROM adjustment ORDER BY id"));
    if (!query || !query->exec())
        return;
    while (query->next())
        m_adjustments.append(Adjustment { query->value(0).toLongLong(), query->value(1).toLongLong(),
            query->value(2).toLongLong(), query->value(3).toLongLong() });
    query->finish();
}

QList<Adjustment> UsageLedger::adjustments(qint64 fromSeconds, qint64 untilSeconds)
{
    if (!m_openTried)
        open();
    QList<Adjustment> result;
    for (const Adjustment& adjustment : m_adjustments)
        if (adjustment.periodStart >= fromSeconds && adjustment.periodStart < untilSeconds)
            result.append(adjustment);
    return result;
}

qint64 UsageLedger::adjustmentTotal(qint64 periodStart)
{
    qint64 total = 0;
    for (const Adjustment& adjustment : adjustments(periodStart, periodStart + 1))
        total += adjustment.amountBytes;
    return total;
}

bool UsageLedger::addAdjustment(qint64 periodStart, qint64 amountBytes, qint64 createdSeconds)
{
    if (!m_openTried)
        open(createdSeconds);
    QString reason = m_access == LedgerAccess::ReadOnly ? QStringLiteral("opened read-only")
                                                        : QStringLiteral("not open");
    if (m_access == LedgerAccess::ReadWrite && isOpen()) {
        QSqlQuery query(QSqlDatabase::database(m_connection, false));
        bool ok = exec(query, QString::fromLatin1(kAdjustmentTable), reason);
        if (ok) {
            query.prepare(QStringLiteral(
                "INSERT INTO adjustment (period_start, amount_bytes, created) VALUES (?, ?, ?)"));
            query.addBindValue(periodStart);
            query.addBindValue(amountBytes);
            query.addBindValue(createdSeconds);
            ok = query.exec();
            if (!ok)
                reason = query.lastError().text();
        }
        if (ok) {
            loadAdjustments();
            return true;
        }
    }
    qCWarning(lcLinux, "UsageLedger: cannot store the adjustment in %s: %s", qUtf8Printable(m_path),
        qUtf8Printable(reason));
    return false;
}

bool UsageLedger::removeAdjustment(qint64 id)
{
    if (!m_openTried)
        open();
    QString reason = m_access == LedgerAccess::ReadOnly ? QStringLiteral("opened read-only")
                                                        : QStringLiteral("not open");
    if (m_access == LedgerAccess::ReadWrite && isOpen()) {
        QSqlQuery query(QSqlDatabase::database(m_connection, false));
        query.prepare(QStringLiteral("DELETE FROM adjustment WHERE id = ?"));
        query.addBindValue(id);
        if (query.exec()) {
            loadAdjustments();
            return true;
        }
        reason = query.lastError().text();
    }
    qCWarning(lcLinux, "UsageLedger: cannot remove adjustment %lld from %s: %s", id, qUtf8Printable(m_path),
        qUtf8Printable(reason));
    return false;
}

} // namespace velt
