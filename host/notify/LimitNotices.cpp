#include "LimitNotices.h"

#include "FileStamp.h"

#include "HostPaths.h"
#include "UsageSource.h"

#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QLoggingCategory>
#include <QSysInfo>

#include <cerrno>
#include <csignal>

Q_DECLARE_LOGGING_CATEGORY(lcNotifier)

namespace {

// The file's identity: 0 when it does not exist.
} // namespace

// The ledger read-only and open for good: each check sees what the writer
// committed since the last one (a new read transaction per query).
class LimitNotices::KeptLedger final : public report::UsageSource
{
public:
    explicit KeptLedger(const QString& path)
        : m_ledger(path, velt::LedgerAccess::ReadOnly)
        , m_id(FileStamp::of(path).inode)
    { }

    velt::UsageLedger& ledger() { return m_ledger; }
    // Still the file at that path: not deleted, nor set aside and replaced.
    bool isCurrent(const QString& path) const { return m_id != 0 && FileStamp::of(path).inode == m_id; }

    QList<report::KeyedUsage> usage(qint64 fromSeconds, qint64 untilSeconds) override
    {
        return m_ledger.usageByKey(fromSeconds, untilSeconds);
    }

    qint64 adjustment(qint64 periodStart) override
    {
        // Adjustments are held in memory: catch up with the writer's first.
        m_ledger.refresh();
        return m_ledger.adjustmentTotal(periodStart);
    }

private:
    velt::UsageLedger m_ledger;
    quint64 m_id;
};

LimitNotices::Files LimitNotices::defaults()
{
    const QString dir = HostPaths::userDataDir();
    return { dir + QStringLiteral("/usage.sqlite"), HostPaths::hostSettingsFile(),
        dir + QStringLiteral("/DataUsageLimit.ini"), dir + QStringLiteral("/limit-warnings.ini") };
}

LimitNotices::LimitNotices(Files files, const QDBusConnection& bus, QObject* parent)
    : QObject(parent)
    , m_files(std::move(files))
    , m_watch(m_files.limits, m_files.state)
    , m_notifier(bus)
{ }

LimitNotices::~LimitNotices() = default;

QString LimitNotices::summary(notify::Crossing crossing)
{
    switch (crossing) {
    case notify::Crossing::DataWarning:
        return tr("Data usage is nearing the limit");
    case notify::Crossing::DataLimit:
        return tr("Data usage limit reached");
    case notify::Crossing::TimeWarning:
        return tr("Connection time is nearing the limit");
    case notify::Crossing::TimeLimit:
        return tr("Connection time limit reached");
    }
    return QString();
}

bool LimitNotices::refresh(bool viewWarns, const QString& device, const QDateTime& now)
{
    notify::PeriodFigures figures;
    if (!readFigures(now, figures))
        return false;
    check(figures, viewWarns, device, now.date());
    return true;
}

bool LimitNotices::refreshStatus(const QDateTime& now)
{
    notify::PeriodFigures figures;
    if (!readFigures(now, figures))
        return false;
    m_status = m_watch.status(figures, now.date());
    emit statusChanged(m_status);
    return true;
}

bool LimitNotices::readFigures(const QDateTime& now, notify::PeriodFigures& figures)
{
    QString error;
    // A ledger deleted or replaced meanwhile is opened afresh.
    if (m_ledger && !m_ledger->isCurrent(m_files.ledger))
        m_ledger.reset();
    if (!m_ledger) {
        if (!QFileInfo::exists(m_files.ledger)) {
            error = QStringLiteral("%1 does not exist: nothing has been recorded yet").arg(m_files.ledger);
        } else {
            auto kept = std::make_unique<KeptLedger>(m_files.ledger);
            if (kept->ledger().isOpen())
                m_ledger = std::move(kept);
            else
                error = QStringLiteral("cannot read %1: %2").arg(m_files.ledger, kept->ledger().problem());
        }
    }
    if (!m_ledger || !m_watch.periodFigures(*m_ledger, m_files.hostSettings, now, figures)) {
        if (error != m_lastError)
            qCWarning(lcNotifier, "no limit warnings for now: %s", qUtf8Printable(error));
        m_lastError = error;
        return false;
    }
    m_lastError.clear();
    return true;
}

void LimitNotices::check(
    const notify::PeriodFigures& figures, bool viewWarns, const QString& device, const QDate& today)
{
    const QList<notify::Crossing> due = m_watch.check(figures, today);
    m_status = m_watch.status(figures, today);
    emit statusChanged(m_status);
    if (viewWarns)
        return;
    for (notify::Crossing crossing : due) {
        const QString body = device.isEmpty()
            ? tr("%1 % of this period's limit used.").arg(m_status.percent)
            : tr("%1 % of this period's limit used on %2.").arg(m_status.percent).arg(device);
        m_notifier.notify(summary(crossing), body, device);
    }
}

QString LimitNotices::defaultApplicationLock()
{
    return HostPaths::userDataDir() + QStringLiteral("/netinfo.lock");
}

bool LimitNotices::applicationRunning(const QString& lockPath)
{
    // Read, never taken: taking it even for a moment could turn an
    // application starting now away.
    QLockFile lock(lockPath);
    qint64 pid = 0;
    QString hostName, appName;
    if (!lock.getLockInfo(&pid, &hostName, &appName) || pid <= 0)
        return false;
    if (hostName != QSysInfo::machineHostName())
        return false;
    return ::kill(pid_t(pid), 0) == 0 || errno == EPERM;
}
