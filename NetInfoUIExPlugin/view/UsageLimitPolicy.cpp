#include "UsageLimitPolicy.h"

#include "TimeOfDay.h"

namespace view {

namespace {
    // Switches that stay on unless the store says otherwise.
    bool onUnlessFalse(const QString& value)
    {
        return value != QLatin1String("false");
    }

    // Switches that stay off unless the store says so.
    bool onOnlyIfTrue(const QString& value)
    {
        return value == QLatin1String("true");
    }
} // namespace

void UsageLimitPolicy::loadSwitches(const Reader& read)
{
    settings.recurrence = onUnlessFalse(read("chkRecurrence"));
    settings.dataLimitOn = onUnlessFalse(read("chkVolume"));
    settings.timeLimitOn = onUnlessFalse(read("chkTimeVolume"));
    settings.daily = onUnlessFalse(read("radioDaily"));
    settings.weekly = onUnlessFalse(read("radioWeekly"));
    settings.monthly = onUnlessFalse(read("radioMonthly"));
    settings.dataWarnBefore = settings.timeWarnBefore = onOnlyIfTrue(read("chkWarnbefore"));
    settings.dataWarnAfter = settings.timeWarnAfter = onOnlyIfTrue(read("chkWarnAfter"));
    settings.startWeekDay = read("startweekdate").toInt();
    settings.startMonthDay = read("startmonthdate").toInt();
}

bool UsageLimitPolicy::loadStartDate(const QString& text, const QDate& today)
{
    settings.startDate = text;
    if (text.isEmpty()) {
        settings.startInFuture = false;
        settings.startTime = QTime();
        return true;
    }
    const QDate start = QDate::fromString(text, QStringLiteral("yyyy-MM-dd"));
    // An invalid date has no day number; Qt 4 compared it as day 0.
    settings.startInFuture = (start.isValid() ? start.toJulianDay() : 0) > today.toJulianDay();
    // A date read with a time format: never a valid time, so the start time
    // only acts as a floor of the look-back.
    settings.startTime = QTime::fromString(text, QStringLiteral("hh:mm:ss"));
    return start.isValid();
}

void UsageLimitPolicy::loadLimits(const Reader& read, bool dataFeature, bool timeFeature)
{
    // Read as a 32-bit signed number and widened without its sign.
    if (dataFeature) {
        settings.dataLimit = quint64(quint32(read("SizeVolume").toInt(nullptr, 10)));
        settings.warnPercentage = read("WarnBeforPercentage").toUInt(nullptr, 10);
    }
    if (timeFeature)
        settings.timeLimit = quint64(quint32(read("SizeTimeVolume").toInt(nullptr, 10)));
}

void UsageLimitPolicy::armTimeWarningsFromStore(const Reader& read)
{
    timeWarnBeforeArmed = onUnlessFalse(read("ShowTimeWarnBefor"));
    timeWarnAfterArmed = onUnlessFalse(read("ShowTimeWarnAfter"));
}

unsigned int UsageLimitPolicy::dataShare(long double used)
{
    if (settings.warnPercentage == 0 || settings.dataLimit == 0)
        return 0;
    const long double ratio = used / static_cast<long double>(settings.dataLimit);
    const long double threshold = static_cast<long double>(settings.warnPercentage) / 100;
    if (ratio >= threshold && ratio < 1.0L)
        return 1;
    if (ratio < threshold)
        rearmData(); // back under the threshold, say after a larger limit
    return 0;
}

unsigned int UsageLimitPolicy::timeShare(long double used, unsigned long long limit) const
{
    if (timeWarnPercentage == 0 || timeWarnBlock != 0)
        return 0;
    const long double ratio = used / static_cast<long double>(limit);
    return ratio >= static_cast<long double>(timeWarnPercentage) / 100 ? 1 : 0;
}

LimitBar UsageLimitPolicy::dataBar(long double used, qint64 factor)
{
    if (!settings.dataLimitOn) {
        // Switched off: a full bar at the limit as stored.
        const long double limit = static_cast<long double>(settings.dataLimit);
        return { 0, "NoWarningColor", limit, limit };
    }
    dataState = static_cast<int>(dataShare(used));
    const long double remaining = static_cast<long double>(settings.dataLimit) - used;
    LimitBar bar { 0, "NoWarningColor", used * factor,
        static_cast<long double>(settings.dataLimit * quint64(factor)) };
    if (dataState == 1) {
        bar.state = 1;
        bar.colorName = "BeforeWarningColor";
    } else if (remaining <= 0) {
        bar.state = 2;
        bar.colorName = "ReachedWarningColor";
    }
    return bar;
}

LimitBar UsageLimitPolicy::timeBar(long double used)
{
    if (!settings.timeLimitOn) {
        const long double limit = static_cast<long double>(settings.timeLimit);
        return { 0, "NoWarningColor", limit, limit };
    }
    timeState = static_cast<int>(timeShare(used, settings.timeLimit));
    const quint64 limitSeconds = settings.timeLimit * 3600;
    const long double remaining = static_cast<long double>(limitSeconds) - used;
    LimitBar bar { 0, "NoWarningColor", used, static_cast<long double>(limitSeconds) };
    const bool inWarningBlock = timeWarnBlock != 0 && !(remaining > timeWarnBlock);
    if ((timeState == 1 || inWarningBlock) && remaining > 0) {
        bar.state = 1;
        bar.colorName = "BeforeWarningColor";
    } else if (remaining <= 0) {
        bar.state = 2;
        bar.colorName = "ReachedWarningColor";
    }
    return bar;
}

const char* UsageLimitPolicy::dataWarning(unsigned int state)
{
    if (state == 1 && settings.dataWarnBefore && dataWarnBeforeArmed) {
        dataWarnBeforeShown = true;
        dataWarnBeforeArmed = false;
        return "IDS_BOX_WARNBEFORE";
    }
    if (state == 2 && settings.dataWarnAfter && dataWarnAfterArmed) {
        dataWarnAfterArmed = false;
        return "IDS_BOX_WARNAFTER";
    }
    if (state == 2 && !settings.dataWarnAfter && settings.dataWarnBefore && !dataWarnBeforeShown) {
        // Someone who asked only for the early warning still gets it once
        // when usage jumps straight past the limit.
        dataWarnBeforeArmed = false;
        dataWarnBeforeShown = true;
        return "IDS_BOX_WARNBEFORE";
    }
    return nullptr;
}

const char* UsageLimitPolicy::timeWarning(unsigned int state)
{
    if (state == 1 && settings.timeWarnBefore && timeWarnBeforeArmed) {
        timeWarnBeforeArmed = false;
        return "IDS_BOX_TIMEWARNBEFORE";
    }
    if (state == 2 && settings.timeWarnAfter && timeWarnAfterArmed) {
        timeWarnAfterArmed = false;
        return "IDS_BOX_TIMEWARNAFTER";
    }
    return nullptr;
}

void UsageLimitPolicy::newPeriod(quint64 oldDuration, quint64 newDuration)
{
    if (qint64(newDuration) <= qint64(oldDuration))
        return;
    if (settings.timeWarnBefore && settings.dataWarnBefore) {
        timeWarnBeforeArmed = true;
        dataWarnBeforeShown = false;
        dataWarnBeforeArmed = true;
    }
    if (settings.timeWarnAfter && settings.dataWarnAfter) {
        timeWarnAfterArmed = true;
        dataWarnAfterArmed = true;
    }
}

void UsageLimitPolicy::rearmData()
{
    dataWarnBeforeShown = false;
    dataWarnAfterArmed = true;
    dataWarnBeforeArmed = true;
}

LimitPeriod UsageLimitPolicy::shownPeriod() const
{
    if (!settings.recurrence)
        return LimitPeriod::LookBack;
    if (settings.daily)
        return LimitPeriod::Daily;
    return settings.weekly ? LimitPeriod::Weekly : LimitPeriod::Monthly;
}

LimitPeriod UsageLimitPolicy::watchedPeriod() const
{
    switch (shownPeriod()) {
    case LimitPeriod::Daily:
        return LimitPeriod::Daily;
    case LimitPeriod::Weekly:
        return LimitPeriod::Monthly;
    case LimitPeriod::Monthly:
        return LimitPeriod::Yearly;
    default:
        return LimitPeriod::LookBack;
    }
}

QTime UsageLimitPolicy::lookBackStart(const QDate& today, const QLocale& locale) const
{
    LookBack& cached = m_lookBack;
    if (cached.known && cached.today == today && cached.startTime == settings.startTime
        && cached.locale == locale)
        return cached.start;
    const QString text = locale.toString(TimeOfDay::threeMonthsBack(today), QLocale::ShortFormat);
    cached = { today, locale, settings.startTime,
        TimeOfDay::later(QTime::fromString(text, QStringLiteral("hh:mm:ss")), settings.startTime), true };
    return cached.start;
}

long double UsageLimitPolicy::fluxUnits(unsigned long long bytes, qint64 factor)
{
    return factor ? static_cast<long double>(bytes) / factor : 0;
}

} // namespace view
