// Which usage-limit warnings are due for the current period, decided by the
// view's own rules, and which of them already went out: kept in a small state
// file so a restart or a second process never warns twice for one crossing.
// No widgets: the recorder and the application share it.
#pragma once

#include "view/UsageLimitPolicy.h"

#include <QDateTime>
#include <QList>
#include <QMetaType>
#include <QString>

namespace report {
class UsageSource;
}

namespace notify {

enum class Crossing { DataWarning, DataLimit, TimeWarning, TimeLimit };

// The limit period's figures: its start, what was used since, its end
// (invalid when the limit does not recur).
struct PeriodFigures
{
    QDateTime start;
    QDateTime end;
    quint64 bytes = 0;
    qint64 seconds = 0;
};

// What the tray shows of the data limit (bytes), else of the time limit.
struct LimitStatus
{
    bool limited = false; // a limit is switched on
    bool time = false; // the figures are seconds, not bytes
    quint64 used = 0;
    quint64 limit = 0;
    int percent = 0;
    quint64 remaining = 0;
    int daysLeft = -1; // -1: the limit does not recur
    const char* colorName = "NoWarningColor";
};

class LimitWatch
{
public:
    // limitFile: the user's DataUsageLimit.ini; stateFile: where fired
    // warnings are remembered.
    LimitWatch(QString limitFile, QString stateFile);

    // Bytes in one unit of the limit as entered.
    static constexpr qint64 LimitUnit = 1048576;

    // The crossings newly due for these figures, recorded as fired. A new
    // period start re-arms them all; the policy re-arms the data warnings
    // when use falls back under the percentage (a raised limit).
    QList<Crossing> check(const PeriodFigures& figures, const QDate& today);
    // The bar state and figures, without firing anything.
    LimitStatus status(const PeriodFigures& figures, const QDate& today) const;

    // The period and its use from the report's reading of the settings and
    // the ledger at ledgerPath; false with the reason when unreadable.
    static bool periodFigures(const QString& ledgerPath, const QString& hostSettings,
        const QString& limitFile, const QDateTime& now, PeriodFigures& figures, QString& error);
    // The same from a ledger the caller keeps open: opening one checks the
    // whole file, far dearer than the period's query.
    static bool periodFigures(report::UsageSource& source, const QString& hostSettings,
        const QString& limitFile, const QDateTime& now, PeriodFigures& figures);

    static QString textKey(Crossing crossing);

private:
    view::UsageLimitPolicy policy(const QDate& today) const;

    QString m_limitFile;
    QString m_stateFile;
};

} // namespace notify

Q_DECLARE_METATYPE(notify::LimitStatus)
