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
    // for a new period); each answer is the warning due, or "-".
    void warnings_data()
    {
        QTest::addColumn<Store>("store");
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<QStringList>("warned");
        QTest::newRow("band once, limit once")
            << Store {} << QStringList { "85", "90", "100", "120" }
            << QStringList { "IDS_BOX_WARNBEFORE", "-", "IDS_BOX_WARNAFTER", "-" };
        QTest::newRow("early only: a jump past the limit warns once")
            << Store { { "chkWarnAfter", "false" } } << QStringList { "50", "120", "130" }
            << QStringList { "-", "IDS_BOX_WARNBEFORE", "-" };
        QTest::newRow("under the percentage re-arms")
            << Store {} << QStringList { "85", "79.99", "80" }
            << QStringList { "IDS_BOX_WARNBEFORE", "-", "IDS_BOX_WARNBEFORE" };
        QTest::newRow("a new period re-arms")
            << Store {} << QStringList { "100", "100", "new", "100" }
            << QStringList { "IDS_BOX_WARNAFTER", "-", "-", "IDS_BOX_WARNAFTER" };
        QTest::newRow("empty warning switches read as off")
            << Store { { "chkWarnbefore", "" }, { "chkWarnAfter", "" } } << QStringList { "85", "150" }
            << QStringList { "-", "-" };
        QTest::newRow("percentage 0 has no band")
            << Store { { "WarnBeforPercentage", "0" } } << QStringList { "90", "100" }
            << QStringList { "-", "IDS_BOX_WARNAFTER" };
        QTest::newRow("time warns at the limit only, once")
            << Store {} << QStringList { "t7199", "t7200", "t9000" }
            << QStringList { "-", "IDS_BOX_TIMEWARNAFTER", "-" };
        QTest::newRow("time armed flag seeded off by the store")
            << Store { { "ShowTimeWarnAfter", "false" } } << QStringList { "t7200" } << QStringList { "-" };
    }

    void warnings()
    {
        QFETCH(Store, store);
        QFETCH(QStringList, steps);
        UsageLimitPolicy policy = policyFor(store);
        QStringList warned;
        for (const QString& step : steps) {
            const char* key = nullptr;
            if (step == QLatin1String("new"))
                policy.newPeriod(10, 20);
            else if (step.startsWith(QLatin1Char('t')))
                key = policy.timeWarning(policy.timeBar(step.mid(1).toDouble()).state);
            else
                key = policy.dataWarning(policy.dataBar(step.toDouble(), 1024).state);
            warned << (key ? QString::fromLatin1(key) : QStringLiteral("-"));
        }
        QTEST(warned, "warned");
    }

    void bars_data()
    {
        QTest::addColumn<Store>("store");
        QTest::addColumn<double>("used"); // limit units, or seconds for time
        QTest::addColumn<bool>("time");
        QTest::addColumn<QString>("color");
        QTest::addColumn<double>("value");
        QTest::addColumn<double>("maximum");
        QTest::newRow("data normal, in bytes")
            << Store {} << 10.0 << false << "NoWarningColor" << 10240.0 << 102400.0;
        QTest::newRow("data band") << Store {} << 80.0 << false << "BeforeWarningColor" << 81920.0
                                   << 102400.0;
        QTest::newRow("data reached")
            << Store {} << 100.0 << false << "ReachedWarningColor" << 102400.0 << 102400.0;
        QTest::newRow("data off: full at the stored limit")
            << Store { { "chkVolume", "false" } } << 150.0 << false << "NoWarningColor" << 100.0 << 100.0;
        QTest::newRow("empty data switch reads as on") << Store { { "chkVolume", "" } } << 100.0 << false
                                                       << "ReachedWarningColor" << 102400.0 << 102400.0;
        QTest::newRow("limit read unsigned from 32 bits")
            << Store { { "SizeVolume", "-1" }, { "chkVolume", "false" } } << 0.0 << false << "NoWarningColor"
            << 4294967295.0 << 4294967295.0;
        QTest::newRow("time in seconds, limit in hours")
            << Store {} << 3600.0 << true << "NoWarningColor" << 3600.0 << 7200.0;
        QTest::newRow("time reached")
            << Store {} << 7200.0 << true << "ReachedWarningColor" << 7200.0 << 7200.0;
        QTest::newRow("time off: full at the stored hours")
            << Store { { "chkTimeVolume", "false" } } << 50.0 << true << "NoWarningColor" << 2.0 << 2.0;
    }

    void bars()
    {
        QFETCH(Store, store);
        QFETCH(double, used);
        QFETCH(bool, time);
        UsageLimitPolicy policy = policyFor(store);
        const view::LimitBar bar = time ? policy.timeBar(used) : policy.dataBar(used, 1024);
        QTEST(QString::fromLatin1(bar.colorName), "color");
        QTEST(double(bar.value), "value");
        QTEST(double(bar.maximum), "maximum");
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
