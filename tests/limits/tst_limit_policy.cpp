// The usage-limit rules on their own: reading the settings, the warning band,
// the bars, and which warning fires once per period.
#include "view/UsageLimitPolicy.h"

#include <QtTest>

using view::LimitPeriod;
using view::UsageLimitPolicy;
using Store = QMap<QString, QString>;

namespace {
// Daily recurrence, a 100-unit limit warned at 80 %, both warnings on.
UsageLimitPolicy policyFor(const Store& overrides)
{
    Store store { { "chkRecurrence", "true" }, { "radioDaily", "true" }, { "radioWeekly", "false" },
        { "radioMonthly", "false" }, { "chkVolume", "true" }, { "chkTimeVolume", "true" },
        { "SizeVolume", "100" }, { "SizeTimeVolume", "2" }, { "chkWarnbefore", "true" },
        { "chkWarnAfter", "true" }, { "WarnBeforPercentage", "80" } };
    for (auto it = overrides.cbegin(); it != overrides.cend(); ++it)
        store[it.key()] = it.value();
    const auto read = [&store](const char* key) { return store.value(QLatin1String(key)); };
    UsageLimitPolicy policy;
    policy.loadSwitches(read);
    policy.loadLimits(read, true, true);
    policy.armTimeWarningsFromStore(read);
    return policy;
}
} // namespace

class TestLimitPolicy : public QObject
{
    Q_OBJECT
private slots:
    // Each step is a usage in limit units ("t" + seconds for time, "new"
    // for a new period); each answer is the warning due: B (the band), A
    // (after the limit), T (after the time limit) or "-".
    void warnings_data()
    {
        QTest::addColumn<Store>("store");
        QTest::addColumn<QString>("steps");
        QTest::addColumn<QString>("warned");
        const auto row = [](const char* name, const Store& store, const char* steps, const char* warned) {
            QTest::newRow(name) << store << QString(steps) << QString(warned);
        };
        row("band once, limit once", {}, "85 90 100 120", "B - A -");
        row("early only: a jump past the limit warns once", { { "chkWarnAfter", "false" } }, "50 120 130",
            "- B -");
        row("under the percentage re-arms", {}, "85 79.99 80", "B - B");
        row("a new period re-arms", {}, "100 100 new 100", "A - - A");
        row("empty warning switches read as off", { { "chkWarnbefore", "" }, { "chkWarnAfter", "" } },
            "85 150", "- -");
        row("percentage 0 has no band", { { "WarnBeforPercentage", "0" } }, "90 100", "- A");
        row("time warns at the limit only, once", {}, "t7199 t7200 t9000", "- T -");
        row("time armed flag seeded off by the store", { { "ShowTimeWarnAfter", "false" } }, "t7200", "-");
    }

    void warnings()
    {
        QFETCH(Store, store);
        QFETCH(QString, steps);
        UsageLimitPolicy policy = policyFor(store);
        const QMap<QByteArray, QString> codes { { "IDS_BOX_WARNBEFORE", "B" }, { "IDS_BOX_WARNAFTER", "A" },
            { "IDS_BOX_TIMEWARNAFTER", "T" } };
        QStringList warned;
        for (const QString& step : steps.split(' ')) {
            const char* key = nullptr;
            if (step == QLatin1String("new"))
                policy.newPeriod(10, 20);
            else if (step.startsWith(QLatin1Char('t')))
                key = policy.timeWarning(policy.timeBar(step.mid(1).toDouble()).state);
            else
                key = policy.dataWarning(policy.dataBar(step.toDouble(), 1024).state);
            warned << (key ? codes.value(key, key) : QStringLiteral("-"));
        }
        QTEST(warned.join(' '), "warned");
    }

    void bars_data()
    {
        QTest::addColumn<Store>("store");
        QTest::addColumn<double>("used"); // limit units, or seconds for time
        QTest::addColumn<bool>("time");
        QTest::addColumn<QString>("color");
        QTest::addColumn<double>("value");
        QTest::addColumn<double>("maximum");
        const auto row = [](const char* name, const Store& store, double used, bool time, const char* color,
                             double value, double maximum) {
            QTest::newRow(name) << store << used << time << QString(color) << value << maximum;
        };
        row("data normal, in bytes", {}, 10, false, "NoWarningColor", 10240, 102400);
        row("data band", {}, 80, false, "BeforeWarningColor", 81920, 102400);
        row("data reached", {}, 100, false, "ReachedWarningColor", 102400, 102400);
        row("data off: full at the stored limit", { { "chkVolume", "false" } }, 150, false, "NoWarningColor",
            100, 100);
        row("empty data switch reads as on", { { "chkVolume", "" } }, 100, false, "ReachedWarningColor",
            102400, 102400);
        row("limit read unsigned from 32 bits", { { "SizeVolume", "-1" }, { "chkVolume", "false" } }, 0,
            false, "NoWarningColor", 4294967295.0, 4294967295.0);
        row("time in seconds, limit in hours", {}, 3600, true, "NoWarningColor", 3600, 7200);
        row("time reached", {}, 7200, true, "ReachedWarningColor", 7200, 7200);
        row("time off: full at the stored hours", { { "chkTimeVolume", "false" } }, 50, true,
            "NoWarningColor", 2, 2);
    }

    void periods_data()
    {
        QTest::addColumn<Store>("store");
        QTest::addColumn<LimitPeriod>("shown");
        QTest::addColumn<LimitPeriod>("watched");
        const Store weekly { { "radioDaily", "false" }, { "radioWeekly", "true" } };
        QTest::newRow("daily") << Store {} << LimitPeriod::Daily << LimitPeriod::Daily;
        QTest::newRow("weekly watches the month") << weekly << LimitPeriod::Weekly << LimitPeriod::Monthly;
        QTest::newRow("monthly watches the year")
            << Store { { "radioDaily", "false" } } << LimitPeriod::Monthly << LimitPeriod::Yearly;
        QTest::newRow("no recurrence")
            << Store { { "chkRecurrence", "false" } } << LimitPeriod::LookBack << LimitPeriod::LookBack;
    }

    void periods()
    {
        QFETCH(Store, store);
        const UsageLimitPolicy policy = policyFor(store);
        QTEST(policy.shownPeriod(), "shown");
        QTEST(policy.watchedPeriod(), "watched");
    }

    // The look-back start is a date read as a time: invalid, so the start
    // time floors it; a start text that reads as a time wins.
    void lookBackStart_data()
    {
        QTest::addColumn<QString>("start");
        QTest::addColumn<QDate>("today");
        QTest::addColumn<QTime>("expected");
        QTest::addColumn<bool>("future");
        QTest::newRow("date start, 31 May") << "2026-06-01" << QDate(2026, 5, 31) << QTime() << true;
        QTest::newRow("no start") << "" << QDate(2026, 1, 15) << QTime() << false;
        QTest::newRow("start reads as a time") << "07:30:00" << QDate(2026, 1, 15) << QTime(7, 30) << false;
    }

    void lookBackStart()
    {
        QFETCH(QString, start);
        QFETCH(QDate, today);
        UsageLimitPolicy policy;
        policy.loadStartDate(start, today);
        QTEST(policy.settings.startInFuture, "future");
        QTEST(policy.lookBackStart(today, QLocale::c()), "expected");
    }
};

Q_DECLARE_METATYPE(LimitPeriod)
QTEST_GUILESS_MAIN(TestLimitPolicy)
#include "tst_limit_policy.moc"
