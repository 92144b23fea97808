// Where the report's figures come from: usage per interface and connection
// over a span of time. The ledger is one source; tests hand in their own.
#pragma once

#include "UsageLedger.h"

#include <QList>
#include <QString>

#include <memory>

namespace report {

using velt::KeyedUsage;
using velt::UsageKey;

class UsageSource
{
public:
    virtual ~UsageSource() = default;
    // Usage in [fromSeconds, untilSeconds), seconds since the epoch.
    virtual QList<KeyedUsage> usage(qint64 fromSeconds, qint64 untilSeconds) = 0;
    // The calibration entered for the period beginning at periodStart.
    virtual qint64 adjustment(qint64 periodStart)
    {
        Q_UNUSED(periodStart)
        return 0;
    }
};

// The usage ledger at path, opened read-only so a running recorder is never
// disturbed. Null with the reason in error when it cannot be opened.
std::unique_ptr<UsageSource> openLedger(const QString& path, QString& error);

} // namespace report
