#include "UsageSource.h"

#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>

namespace report {

namespace {

// Reads the ledger's buckets directly. The ledger keeps no connection names
// yet, so every row's connection is unknown.
class LedgerSource final : public UsageSource
{
public:
    explicit LedgerSource(const QString& path)
        : m_name(QStringLiteral("netinfo-report-") + QUuid::createUuid().toString(QUuid::WithoutBraces))
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_name);
        db.setDatabaseName(path);
        // The recorder may be writing: read-only, and wait for its commit.
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY;QSQLITE_BUSY_TIMEOUT=3000"));
    }
    ~LedgerSource() override
    {
        QSqlDatabase::database(m_name, false).close();
        QSqlDatabase::removeDatabase(m_name);
    }

    bool open(QString& error)
    {
        QSqlDatabase db = QSqlDatabase::database(m_name, false);
        if (!db.open()) {
            error = db.lastError().text();
            return false;
        }
        QSqlQuery probe(db);
        if (!probe.exec(QStringLiteral("SELECT 1 FROM usage LIMIT 1"))) {
            error = probe.lastError().text();
            return false;
        }
        return true;
    }

    QList<KeyedUsage> usage(qint64 fromSeconds, qint64 untilSeconds) override
    {
        QSqlQuery query(QSqlDatabase::database(m_name, false));
        query.prepare(QStringLiteral("SELECT interface, SUM(received), SUM(sent), SUM(connected_ms) FROM usage"
                                     " WHERE bucket >= ? AND bucket < ? GROUP BY interface ORDER BY interface"));
        query.addBindValue(velt::UsageLedger::bucketStart(fromSeconds));
        query.addBindValue(untilSeconds);
        QList<KeyedUsage> out;
        if (!query.exec()) {
            qWarning("netinfo-report: cannot read the usage ledger: %s", qUtf8Printable(query.lastError().text()));
            return out;
        }
        while (query.next()) {
            KeyedUsage row;
            row.key.interfaceName = query.value(0).toString();
            // Counters keep their bit pattern in SQLite's signed integers.
            row.usage.received = quint64(query.value(1).toLongLong());
            row.usage.sent = quint64(query.value(2).toLongLong());
            row.usage.connectedMs = query.value(3).toLongLong();
            out << row;
        }
        return out;
    }

private:
    QString m_name;
};

} // namespace

std::unique_ptr<UsageSource> openLedger(const QString& path, QString& error)
{
    if (!QFileInfo::exists(path)) {
        error = QStringLiteral("%1 does not exist: nothing has been recorded yet").arg(path);
        return nullptr;
    }
    auto source = std::make_unique<LedgerSource>(path);
    if (!source->open(error)) {
        error = QStringLiteral("cannot read %1: %2").arg(path, error);
        return nullptr;
    }
    return source;
}

} // namespace report
