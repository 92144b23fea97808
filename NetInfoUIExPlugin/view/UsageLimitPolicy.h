// The usage-limit rules without any widget: the user's limit settings, the
// share of a limit used, the bar each share asks for and which warning is
// due. It holds the flags that let each warning fire once per period, so the
// view and a headless recorder decide alike. QtCore only.
#pragma once

#include <QDate>
#include <QLocale>
#include <QString>
#include <QTime>

#include <functional>

namespace view {

// A stored record the limit reads: one per recurring period, and the
// look-back span when the limit does not recur.
enum class LimitPeriod { Daily, Weekly, Monthly, Yearly, LookBack };

// What a bar shows: the state (0 normal, 1 warning band, 2 limit reached),
// the configured colour's name, and the fill.
struct LimitBar
{
    unsigned int state = 0;
    const char* colorName = "NoWarningColor";
    long double value = 0;
    long double maximum = 0;
};

struct LimitSettings
{
    bool recurrence = false;
    bool dataLimitOn = false;
    bool timeLimitOn = false;
    bool dataWarnBefore = false;
    bool timeWarnBefore = false;
    bool dataWarnAfter = false;
    bool timeWarnAfter = false;
    bool daily = false;
    bool weekly = false;
    bool monthly = false;
    int startWeekDay = 0;
    int startMonthDay = 0;
    QString startDate;
    bool startInFuture = false;
    QTime startTime; // invalid unless the start text reads as a time
    quint64 dataLimit = 0; // in the flux table's second unit
    unsigned int warnPercentage = 0;
    quint64 timeLimit = 0; // hours
};

class UsageLimitPolicy
{
public:
    // Reads a stored setting by key; empty when absent.
    using Reader = std::function<QString(const char* key)>;

    // The switches and start days.
    void loadSwitches(const Reader& read);
    // False when a start date is given but is no date.
    bool loadStartDate(const QString& text, const QDate& today);
    void loadLimits(const Reader& read, bool dataFeature, bool timeFeature);
    // The time warnings' armed flags are seeded from the store at each load.
    void armTimeWarningsFromStore(const Reader& read);

    // 1 when the data used (in flux units) lies in the warning band; falling
    // back under the percentage re-arms both data warnings.
    unsigned int dataShare(long double used);
    // 1 when the time threshold is reached; never in this version, as the
    // time percentage and block are never set.
    unsigned int timeShare(long double used, unsigned long long limit) const;

    // Bars for `used` flux units (factor: bytes per flux unit) and `used`
    // seconds. Computing a bar updates the kept state and may re-arm.
    LimitBar dataBar(long double used, qint64 factor);
    LimitBar timeBar(long double used);

    // The warning a state calls for, as its text key, or nullptr. Disarms
    // the warning it returns.
    const char* dataWarning(unsigned int state);
    const char* timeWarning(unsigned int state);

    // A record's duration that grew means a new period: re-arm the warnings
    // the user asked for.
    void newPeriod(quint64 oldDuration, quint64 newDuration);
    // Fresh counts or fresh limits deserve fresh data warnings.
    void rearmData();

    LimitPeriod shownPeriod() const;
    // The recurring period whose record reveals a new period, which for
    // weekly and monthly limits is the next longer one; LookBack when the
    // limit does not recur.
    LimitPeriod watchedPeriod() const;
    // Start of the look-back: three months before `today` as a short date
    // read back as a time of day, floored by the start time.
    QTime lookBackStart(const QDate& today, const QLocale& locale) const;

    // Bytes to flux units; 0 without a usable factor.
    static long double fluxUnits(unsigned long long bytes, qint64 factor);

    LimitSettings settings;
    bool dataWarnBeforeArmed = true;
    bool dataWarnAfterArmed = true;
    bool dataWarnBeforeShown = false;
    bool timeWarnBeforeArmed = false;
    bool timeWarnAfterArmed = false;
    int dataState = 0;
    int timeState = 0;
    int timeWarnPercentage = 0;
    int timeWarnBlock = 0;

private:
    // The look-back start changes with the day, the locale or the start
    // time only, and working it out means printing and parsing a date.
    struct LookBack
    {
        QDate today;
        QLocale locale;
        QTime startTime;
        QTime start;
        bool known = false;
    };
    mutable LookBack m_lookBack;
};

} // namespace view
