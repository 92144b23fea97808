#include "LimitWatch.h"

#include "UsagePeriods.h"
#include "UsageReport.h"

#include <QFileInfo>
#include <QLoggingCategory>
#include <QSettings>

Q_LOGGING_CATEGORY(lcLimitWatch, "netinfo.limitwatch")

namespace notify {

namespace {
    const QString kPeriodKey = QStringLiteral("period");
    const QString kFiredKey = QStringLiteral("fired");

    // The key the view's own dialog shows for each crossing, so the state file
    // reads like the warnings the user saw.
    const char* const kKeys[]
        = { "IDS_BOX_WARNBEFORE", "IDS_BOX_WARNAFTER", "IDS_BOX_TIMEWARNBEFORE", "IDS_BOX_TIMEWARNAFTER" };
} // namespace

LimitWatch::LimitWatch(QString limitFile, QString stateFile)
    : m_limitFile(std::move(limitFile))
    , m_stateFile(std::move(stateFile))
{ }

QString LimitWatch::textKey(Crossing crossing)
{
    return QLatin1String(kKeys[int(crossing)]);
}

view::UsageLimitPolicy LimitWatch::policy(const QDate& today) const
{
    QSettings file(m_limitFile, QSettings::IniFormat);
    file.beginGroup(QStringLiteral("uselimit"));
    const auto read = [&file](const char* key) { return file.value(QLatin1String(key)).toString(); };
    view::UsageLimitPolicy policy;
    policy.loadSwitches(read);
    policy.loadStartDate(read("startdate"), today);
    policy.loadLimits(read, true, true);
    return policy;
}

QList<Crossing> LimitWatch::check(const PeriodFigures& figures, const QDate& today)
{
    // Without the user's file every limit reads as zero, and zero is reached
    // at once: wait until the view has written it.
    if (!QFileInfo::exists(m_limitFile))
        return {};
    view::UsageLimitPolicy rules = policy(today);
    QSettings state(m_stateFile, QSettings::IniFormat);
    const QString period = figures.start.toString(Qt::ISODate);
    QStringList fired = state.value(kPeriodKey).toString() == period ? state.value(kFiredKey).toStringList()
                                                                     : QStringList();
    const auto done = [&fired](Crossing c) { return fired.contains(textKey(c)); };
    rules.dataWarnBeforeArmed = !done(Crossing::DataWarning);
    rules.dataWarnBeforeShown = done(Crossing::DataWarning);
    rules.dataWarnAfterArmed = !done(Crossing::DataLimit);
    rules.timeWarnBeforeArmed = !done(Crossing::TimeWarning);
    rules.timeWarnAfterArmed = !done(Crossing::TimeLimit);

    QList<Crossing> due;
    const auto take = [&due](const char* key) {
        for (int i = 0; key && i < 4; ++i)
            if (qstrcmp(key, kKeys[i]) == 0)
                due << Crossing(i);
    };
    if (rules.settings.dataLimitOn)
        take(rules.dataWarning(
            rules.dataBar(view::UsageLimitPolicy::fluxUnits(figures.bytes, LimitUnit), LimitUnit).state));
    if (rules.settings.timeLimitOn)
        take(rules.timeWarning(rules.timeBar(static_cast<long double>(figures.seconds)).state));

    fired.clear();
    if (!rules.dataWarnBeforeArmed)
        fired << textKey(Crossing::DataWarning);
    if (!rules.dataWarnAfterArmed)
        fired << textKey(Crossing::DataLimit);
    if (!rules.timeWarnBeforeArmed)
        fired << textKey(Crossing::TimeWarning);
    if (!rules.timeWarnAfterArmed)
        fired << textKey(Crossing::TimeLimit);
    state.setValue(kPeriodKey, period);
    state.setValue(kFiredKey, fired);
    state.sync();
    if (state.status() != QSettings::NoError)
        qCWarning(lcLimitWatch, "cannot write %s: a warning may be repeated after a restart",
            qUtf8Printable(m_stateFile));
    return due;
}

LimitStatus LimitWatch::status(const PeriodFigures& figures, const QDate& today) const
{
    LimitStatus status;
    if (!QFileInfo::exists(m_limitFile))
        return status;
    view::UsageLimitPolicy rules = policy(today);
    view::LimitBar bar;
    if (rules.settings.dataLimitOn && rules.settings.dataLimit > 0) {
        bar = rules.dataBar(view::UsageLimitPolicy::fluxUnits(figures.bytes, LimitUnit), LimitUnit);
        status.used = figures.bytes;
    } else if (rules.settings.timeLimitOn && rules.settings.timeLimit > 0) {
        bar = rules.timeBar(static_cast<long double>(figures.seconds));
        status.time = true;
        status.used = quint64(std::max<qint64>(figures.seconds, 0));
    } else {
        return status;
    }
    status.limited = true;
    status.limit = quint64(bar.maximum);
    status.percent = status.limit ? int(std::min<quint64>(status.used * 100 / status.limit, 999)) : 0;
    status.remaining = status.used < status.limit ? status.limit - status.used : 0;
    status.colorName = bar.colorName;
    if (figures.end.isValid())
        status.daysLeft = int(std::max<qint64>(today.daysTo(figures.end.date()), 0));
    return status;
}

namespace {
    // The limit's current period into figures' bounds; false when no period applies.
    bool limitPeriod(const QString& hostSettings, const QString& limitFile, const QDateTime& now,
        PeriodFigures& figures, report::Period& period)
    {
        const report::LimitSettings limit = report::readLimitSettings(limitFile);
        const velt::PeriodSettings periods = velt::PeriodSettingsReader(hostSettings).settings();
        const QList<report::Period> all = report::currentPeriods(now, periods, limit);
        if (all.isEmpty())
            return false;
        period = all.last(); // the limit's
        figures.start = period.start;
        switch (limit.kind) {
        case report::LimitSettings::Kind::Daily:
            figures.end = period.start.addDays(1);
            break;
        case report::LimitSettings::Kind::Weekly:
            figures.end = period.start.addDays(7);
            break;
        case report::LimitSettings::Kind::Monthly:
            figures.end = period.start.addMonths(1);
            break;
        case report::LimitSettings::Kind::FromDate:
            figures.end = QDateTime();
            break;
        }
        return true;
    }

    void periodUse(report::UsageSource& source, const report::Period& period, PeriodFigures& figures)
    {
        const QList<report::PeriodUsage> used = report::collect(source, { period });
        figures.bytes = used.isEmpty() ? 0 : used.first().total.received + used.first().total.sent;
        figures.seconds = used.isEmpty() ? 0 : used.first().total.connectedMs / 1000;
    }
} // namespace

bool LimitWatch::periodFigures(const QString& ledgerPath, const QString& hostSettings,
    const QString& limitFile, const QDateTime& now, PeriodFigures& figures, QString& error)
{
    report::Period period;
    if (!limitPeriod(hostSettings, limitFile, now, figures, period))
        return false;
    std::unique_ptr<report::UsageSource> source = report::openLedger(ledgerPath, error);
    if (!source)
        return false;
    periodUse(*source, period, figures);
    return true;
}

bool LimitWatch::periodFigures(report::UsageSource& source, const QString& hostSettings,
    const QString& limitFile, const QDateTime& now, PeriodFigures& figures)
{
    report::Period period;
    if (!limitPeriod(hostSettings, limitFile, now, figures, period))
        return false;
    periodUse(source, period, figures);
    return true;
}

} // namespace notify
