// Which usage-limit warnings are due for the current period, decided by the
// view's own rules, and which of them already went out: kept in a small state
// file so a restart or a second process never warns twice for one crossing.
// No widgets: the recorder and the application share it.
#pragma once

#include "FileStamp.h"

#include "LimitPeriod.h"
#include "view/UsageLimitPolicy.h"

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QStringList>

#include <memory>

namespace report {
class UsageSource;
}
namespace velt {
class PeriodSettingsReader;
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
    ~LimitWatch();

    // Bytes in one unit of the limit as entered.
    static constexpr qint64 LimitUnit = 1048576;

    // The crossings newly due for these figures, recorded as fired. A new
    // period start re-arms them all; the policy re-arms the data warnings
    // when use falls back under the percentage (a raised limit).
    QList<Crossing> check(const PeriodFigures& figures, const QDate& today);
    // The bar state and figures, without firing anything.
    LimitStatus status(const PeriodFigures& figures, const QDate& today);

    // The limit's current period and its use from a ledger the caller keeps
    // open (opening one checks the whole file, far dearer than the period's
    // query); false when no period applies.
    bool periodFigures(report::UsageSource& source, const QString& hostSettings, const QDateTime& now,
        PeriodFigures& figures);

    static QString textKey(Crossing crossing);

private:
    // Brings the limits as read up to date with the file; false without one.
    bool loadLimits();
    view::UsageLimitPolicy policy(const QDate& today) const;
    // The warnings already fired in `period`, as the state file has them.
    QStringList firedIn(const QString& period);
    void remember(const QString& period, const QStringList& fired);

    QString m_limitFile;
    QString m_stateFile;

    FileStamp m_limitStamp;
    bool m_limitsRead = false;
    QHash<QString, QString> m_limitValues; // the "uselimit" group
    allowance::LimitSettings m_limitPeriod;

    FileStamp m_stateStamp;
    bool m_stateRead = false;
    QString m_statePeriod;
    QStringList m_stateFired;

    QString m_hostSettings;
    std::unique_ptr<velt::PeriodSettingsReader> m_periods;
};

} // namespace notify

Q_DECLARE_METATYPE(notify::LimitStatus)
