// What is left of the limit across period boundaries, DST days and a period
// of one day; a calibration kept in the ledger, counted, removed, reopened.
#include "Allowance.h"
#include "UsageReport.h"

#include <QtTest>

using namespace allowance;

namespace {

constexpr quint64 MiB = 1024 * 1024;

QDateTime at(const char* text)
{
    return QDateTime::fromString(QString::fromLatin1(text), Qt::ISODate);
}

LimitSettings limitOf(LimitSettings::Kind kind, quint64 limitMiB, const QDate& startDate = {})
{
    return { kind, startDate, limitMiB * MiB };
}

} // namespace

Q_DECLARE_METATYPE(allowance::LimitSettings)

class TestAllowance : public QObject
{
    Q_OBJECT

private slots:
    void figures_data()
    {
        using K = LimitSettings::Kind;
        QTest::addColumn<LimitSettings>("limit");
        QTest::addColumn<int>("startMonthDay");
        QTest::addColumn<QDateTime>("now");
        QTest::addColumn<qint64>("recordedMiB");
        QTest::addColumn<qint64>("adjustmentMiB");
        QTest::addColumn<QDate>("start");
        QTest::addColumn<QDate>("end"); // invalid: open-ended
        QTest::addColumn<int>("daysLeft");
        QTest::addColumn<double>("averageMiB");
        QTest::addColumn<double>("budgetMiB"); // -1: none
        QTest::addColumn<qint64>("forecastMiB");
        QTest::addColumn<double>("percent");

        QTest::newRow("month spanning the spring change")
            << limitOf(K::Monthly, 33 * 1024) << 0 << at("2026-03-30T00:00:00") << 29 * 1024LL << 0LL
            << QDate(2026, 3, 1) << QDate(2026, 4, 1) << 2 << 1024.0 << 2048.0 << 31 * 1024LL
            << 100.0 * 29 / 33;
        // 12:00 summer time is 11 hours into a day of 23.
        QTest::newRow("one day of 23 hours")
            << limitOf(K::Daily, 100) << 0 << at("2026-03-29T12:00:00") << 11LL << 0LL << QDate(2026, 3, 29)
            << QDate(2026, 3, 30) << 1 << 23.0 << 89.0 << 23LL << 11.0;
        // An hour's worth at least: the first minute forecasts nothing wild.
        QTest::newRow("first moment of a period")
            << limitOf(K::Monthly, 31) << 14 << at("2026-05-15T00:00:00") << 0LL << 0LL << QDate(2026, 5, 15)
            << QDate(2026, 6, 15) << 31 << 0.0 << 1.0 << 0LL << 0.0;
        QTest::newRow("start day missing in February, no limit")
            << limitOf(K::Monthly, 0) << 30 << at("2026-02-28T12:00:00") << 1LL << 0LL << QDate(2026, 2, 28)
            << QDate(2026, 3, 31) << 31 << 2.0 << -1.0 << 62LL << 0.0;
        QTest::newRow("week over the limit after calibration")
            << limitOf(K::Weekly, 3072) << 0 << at("2026-03-19T00:00:00") << 3072LL << 1024LL
            << QDate(2026, 3, 15) << QDate(2026, 3, 22) << 3 << 1024.0 << 0.0 << 7168LL << 400.0 / 3;
        QTest::newRow("calibration below nothing")
            << limitOf(K::Weekly, 99) << 0 << at("2026-03-19T00:00:00") << 30LL << -50LL << QDate(2026, 3, 15)
            << QDate(2026, 3, 22) << 3 << 0.0 << 33.0 << 0LL << 0.0;
        QTest::newRow("from a date: open-ended")
            << limitOf(K::FromDate, 100, QDate(2026, 3, 1)) << 0 << at("2026-03-11T00:00:00") << 10LL << 0LL
            << QDate(2026, 3, 1) << QDate() << -1 << 1.0 << -1.0 << 10LL << 10.0;
    }

    void figures()
    {
        QFETCH(LimitSettings, limit);
        QFETCH(int, startMonthDay);
        QFETCH(QDateTime, now);
        QFETCH(qint64, recordedMiB);
        QFETCH(qint64, adjustmentMiB);
        const LimitPeriod period = currentLimitPeriod(now, { 0, startMonthDay }, limit);
        QTEST(period.start.date(), "start");
        QTEST(period.end.date(), "end");
        const Figures f
            = compute(now, period, quint64(recordedMiB) * MiB, adjustmentMiB * qint64(MiB), limit.limitBytes);
        QTEST(f.daysLeft, "daysLeft");
        QFETCH(double, averageMiB);
        QFETCH(double, budgetMiB);
        QFETCH(qint64, forecastMiB);
        QFETCH(double, percent);
        const auto micro = [](double value) { return qRound64(value * 1e6); }; // compared to a millionth
        QCOMPARE(micro(f.averageDaily / MiB), micro(averageMiB));
        QCOMPARE(micro(f.dailyBudget < 0 ? -1 : f.dailyBudget / MiB), micro(budgetMiB));
        QVERIFY(qAbs(qint64(f.forecast) - forecastMiB * qint64(MiB)) <= 1); // a byte's rounding
        QCOMPARE(micro(f.percent), micro(percent));
    }

    // The previous period is the one the moment before this one lies in.
    void previousPeriod_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QDate>("start");
        QTest::addColumn<QDate>("end");
        QTest::newRow("daily") << int(LimitSettings::Kind::Daily) << QDate(2026, 3, 30) << QDate(2026, 3, 31);
        QTest::newRow("weekly") << int(LimitSettings::Kind::Weekly) << QDate(2026, 3, 23)
                                << QDate(2026, 3, 30);
        QTest::newRow("monthly from the 31st")
            << int(LimitSettings::Kind::Monthly) << QDate(2026, 2, 28) << QDate(2026, 3, 31);
    }

    void previousPeriod()
    {
        QFETCH(int, kind);
        const LimitSettings limit { LimitSettings::Kind(kind), {}, 0 };
        const velt::PeriodSettings settings { 1, 30 }; // weeks from Monday, months from the 31st
        const LimitPeriod current = currentLimitPeriod(at("2026-03-31T10:00:00"), settings, limit);
        const LimitPeriod previous = previousLimitPeriod(current, settings, limit);
        QTEST(previous.start.date(), "start");
        QTEST(previous.end.date(), "end");
        QCOMPARE(previous.end, current.start);
    }

    // The figure keeps its reading order inside right-to-left text.
    void percentText()
    {
        QCOMPARE(allowance::percentText(54.06, QLocale::c(), Qt::RightToLeft), "\u206654.1 %\u2069");
        QCOMPARE(allowance::percentText(54.06, QLocale(QLocale::Arabic)), "٥٤٫١٪\u061c");
    }

    void calibrationPersists()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("usage.sqlite");
        const QDateTime now = at("2026-03-18T10:00:00");
        const LimitPeriod period = currentLimitPeriod(now, {}, {});
        const qint64 start = period.start.toSecsSinceEpoch();
        {
            velt::UsageLedger ledger(path);
            QVERIFY(ledger.open(now.toSecsSinceEpoch()));
            ledger.add({ "wwan0", "Mobile" }, now.toSecsSinceEpoch() - 3600, { 300 * MiB, 100 * MiB, 0 });
            QVERIFY(ledger.commit());
            QVERIFY(ledger.addAdjustment(start, 50 * MiB, now.toSecsSinceEpoch()));
            QVERIFY(ledger.addAdjustment(start - 86400, 7, now.toSecsSinceEpoch())); // another period's
        }
        const auto limitReport = [&] {
            QString error;
            auto source = report::openLedger(path, error);
            return source ? report::collect(*source, { { "limit", period.start, now } })
                          : QList<report::PeriodUsage>();
        };
        QList<report::PeriodUsage> usage = limitReport();
        QCOMPARE(usage.value(0).adjustment, qint64(50 * MiB));
        QCOMPARE(report::limitFigures(usage, now, period, 0).used, 450 * MiB);
        QVERIFY(report::toJson(usage).contains("\"adjustment\": 52428800"));
        QVERIFY(report::toTable(usage, QLocale::c()).contains("calibration"));

        velt::UsageLedger reopened(path);
        QVERIFY(reopened.open(now.toSecsSinceEpoch()));
        const QList<velt::Adjustment> entries = reopened.adjustments(start, start + 1);
        QCOMPARE(entries.size(), 1);
        QVERIFY(reopened.removeAdjustment(entries.first().id));
        QCOMPARE(reopened.adjustmentTotal(start), 0);
        QCOMPARE(reopened.adjustmentTotal(start - 86400), 7); // untouched
        usage = limitReport();
        QCOMPARE(usage.value(0).adjustment, 0);
        QCOMPARE(report::limitFigures(usage, now, period, 0).used, 400 * MiB);
    }
};

QTEST_GUILESS_MAIN(TestAllowance)
#include "tst_allowance.moc"
