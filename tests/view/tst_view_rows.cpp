// The view's figures without widgets: what a stored refresh keeps when a
// request fails.
#include "view/TreeRows.h"

#include <QtTest>

using namespace view;

class TestViewRows : public QObject
{
    Q_OBJECT
private slots:
    // Periods are asked daily, monthly, yearly, weekly; the first failure
    // stops the refresh and leaves the kept copies and reset time alone.
    void refresh_data()
    {
        QTest::addColumn<int>("failing"); // -1: none
        QTest::addColumn<QList<int>>("asked");
        QTest::addColumn<bool>("complete");
        QTest::newRow("all answer") << -1 << QList<int> { 0, 2, 3, 1 } << true;
        QTest::newRow("month fails") << int(NETINFO_MONTHLY) << QList<int> { 0, 2 } << false;
        QTest::newRow("week fails last") << int(NETINFO_WEEKLY) << QList<int> { 0, 2, 3, 1 } << false;
    }

    void refresh()
    {
        QFETCH(int, failing);
        QFETCH(bool, complete);
        StatisticsSnapshot snapshot;
        snapshot.lastReset = QStringLiteral("old");
        QList<int> asked;
        const bool done = snapshot.refresh(
            [&](_enNetInfoType type, NetInfoData& data) {
                asked << type;
                data.ullUpData = 100 + type;
                return int(type) == failing;
            },
            [](QString& text) { text += QStringLiteral("new"); });
        QCOMPARE(done, complete);
        QTEST(asked, "asked");
        QCOMPARE(snapshot.lastReset, complete ? QStringLiteral("new") : QStringLiteral("old"));
        // The daily record is fetched either way; its kept copy only when complete.
        QCOMPARE(snapshot.record(LimitPeriod::Daily).ullUpData, 100ull);
        QCOMPARE(snapshot.kept(LimitPeriod::Daily).ullUpData, complete ? 100ull : 0ull);
    }
};

QTEST_GUILESS_MAIN(TestViewRows)
#include "tst_view_rows.moc"
