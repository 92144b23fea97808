#include "LimitWatch.h"

#include "UsagePeriods.h"
#include "UsageReport.h"

#include <QFile>
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

LimitWatch::~LimitWatch() = default;

QString LimitWatch::textKey(Crossing crossing)
{
    return QLatin1String(kKeys[int(crossing)]);
}

bool LimitWatch::loadLimits()
{
    const FileStamp stamp = FileStamp::of(m_limitFile);
    if (m_limitsRead && stamp == m_limitStamp)
        return stamp.size >= 0;
    m_limitsRead = true;
    m_limitStamp = stamp;
    m_limitValues.clear();
    QSettings file(m_limitFile, QSettings::IniFormat);
    file.beginGroup(QStringLiteral("uselimit"));
    const QStringList keys = file.childKeys();
    for (const QString& key : keys)
        m_limitValues.insert(key, file.value(key).toString());
    if (file.status() != QSettings::NoError)
        qCWarning(lcLimitWatch, "cannot read %s: the limits count as not set", qUtf8Printable(m_limitFile));
    m_limitPeriod = report::readLimitSettings(m_limitFile);
    return stamp.size >= 0;
}

view::UsageLimitPolicy LimitWatch::policy(const QDate& today) const
{
    const auto read = [this](const char* key) { return m_limitValues.value(QLatin1String(key)); };
    view::UsageLimitPolicy policy;
    policy.loadSwitches(read);
    policy.loadStartDate(read("startdate"), today);
    policy.loadLimits(read, true, true);
    return policy;
}

QStringList LimitWatch::firedIn(const QString& period)
{
    // Another process warning from the same file may have written it since.
    const FileStamp stamp = FileStamp::of(m_stateFile);
    if (!m_stateRead || !(stamp == m_stateStamp)) {
        QSettings state(m_stateFile, QSettings::IniFormat);
        m_statePeriod = state.value(kPeriodKey).toString();
        m_stateFired = state.value(kFiredKey).toStringList();
        m_stateStamp = stamp;
        m_stateRead = true;
    }
    return m_statePeriod == period ? m_stateFired : QStringList();
}

void LimitWatch::remember(const QString& period, const QStringList& fired)
{
    // Unchanged, the file is left alone: no write every check.
    if (m_stateRead && period == m_statePeriod && fired == m_stateFired)
        return;
    QSettings state(m_stateFile, QSettings::IniFormat);
    state.setValue(kPeriodKey, period);
    state.setValue(kFiredKey, fired);
    state.sync();
    if (state.status() != QSettings::NoError) {
        qCWarning(lcLimitWatch, "cannot write %s: a warning may be repeated after a restart",
            qUtf8Printable(m_stateFile));
        m_stateRead = false; // tried again at the next check
        return;
    }
    m_statePeriod = period;
    m_stateFired = fired;
    m_stateStamp = FileStamp::of(m_stateFile);
    m_stateRead = true;
}

QList<Crossing> LimitWatch::check(const PeriodFigures& figures, const QDate& today)
{
    // Without the user's file every limit reads as zero, and zero is reached
    // at once: wait until the view has written it.
    if (!loadLimits())
        return {};
    view::UsageLimitPolicy rules = policy(today);
    const QString period = figures.start.toString(Qt::ISODate);
    QStringList fired = firedIn(period);
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
    // A limit of zero is no limit here, as in the tray: a file without the
    // size would otherwise warn at the first byte or second.
    if (rules.settings.dataLimitOn && rules.settings.dataLimit > 0)
        take(rules.dataWarning(
            rules.dataBar(view::UsageLimitPolicy::fluxUnits(figures.bytes, LimitUnit), LimitUnit).state));
    if (rules.settings.timeLimitOn && rules.settings.timeLimit > 0)
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
    remember(period, fired);
    return due;
}

LimitStatus LimitWatch::status(const PeriodFigures& figures, const QDate& today)
{
    LimitStatus status;
    if (!loadLimits())
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

bool LimitWatch::periodFigures(
    report::UsageSource& source, const QString& hostSettings, const QDateTime& now, PeriodFigures& figures)
{
    loadLimits();
    // The reader reads the host's settings again only when they changed.
    if (!m_periods || hostSettings != m_hostSettings) {
        m_hostSettings = hostSettings;
        m_periods = std::make_unique<velt::PeriodSettingsReader>(hostSettings);
    }
    const QList<report::Period> all = report::currentPeriods(now, m_periods->settings(), m_limitPeriod);
    if (all.isEmpty())
        return false;
    const report::Period& period = all.last(); // the limit's
    figures.start = period.start;
    switch (m_limitPeriod.kind) {
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
    const QList<report::PeriodUsage> used = report::collect(source, { period });
    figures.bytes = used.isEmpty() ? 0 : used.first().total.received + used.first().total.sent;
    figures.seconds = used.isEmpty() ? 0 : used.first().total.connectedMs / 1000;
    return true;
}

} // namespace notify
