#include "UsageSource.h"

#include <QFileInfo>

namespace report {

namespace {

    // The ledger opened read-only: the recorder may be writing it meanwhile.
    class LedgerSource final : public UsageSource
    {
    public:
        explicit LedgerSource(const QString& path)
            : m_ledger(path, velt::LedgerAccess::ReadOnly)
        { }

        bool isUsable(QString& error) const
        {
            error = m_ledger.problem();
            return m_ledger.isOpen();
        }

        QList<KeyedUsage> usage(qint64 fromSeconds, qint64 untilSeconds) override
        {
            return m_ledger.usageByKey(fromSeconds, untilSeconds);
        }

        qint64 adjustment(qint64 periodStart) override { return m_ledger.adjustmentTotal(periodStart); }

    private:
        velt::UsageLedger m_ledger;
    };

} // namespace

std::unique_ptr<UsageSource> openLedger(const QString& path, QString& error)
{
    if (!QFileInfo::exists(path)) {
        error = QStringLiteral("%1 does not exist: nothing has been recorded yet").arg(path);
        return nullptr;
    }
    auto source = std::make_unique<LedgerSource>(path);
    if (!source->isUsable(error)) {
        error = QStringLiteral("cannot read %1: %2").arg(path, error);
        return nullptr;
    }
    return source;
}

} // namespace report
