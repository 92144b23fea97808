// The figures and the tree's texts without widgets: what a stored refresh
// keeps when a request fails, and the rows built from a snapshot.
#include "view/TreeRows.h"

#include <QtTest>

using namespace view;

namespace {
// A stand-in for the host's formatting that counts its calls.
int g_formatted = 0;
QString fakeFormat(unsigned long long value, const QVector<TagUnits>& units)
{
    ++g_formatted;
    return QString::number(value) + QLatin1Char(' ') + (units.isEmpty() ? QString() : units.first().strName);
}

TreeRows rowsBuilder()
{
    TagUnits speed;
    speed.strName = QStringLiteral("B/s");
    TagUnits flux;
    flux.strName = QStringLiteral("B");
    return TreeRows({ "Speed", "Data", "Time", "Up", "Down", "Reset" }, { speed }, { flux }, fakeFormat);
}
} // namespace

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

    void liveRows()
    {
        TreeRows rows = rowsBuilder();
        StatisticsSnapshot snapshot;
        snapshot.takeDuration(QStringLiteral("00:00:07"));
        snapshot.takeDuration(QStringLiteral(" ")); // asks for the labels only
        snapshot.live.upSpeed = 2048;
        snapshot.live.upData = 3000000000ull;
        snapshot.live.downData = 2000000000ull;
        rows.buildLive(snapshot.live, snapshot.live.upData + snapshot.live.downData);
        QCOMPARE(rows.row(RowTransferTime), QStringLiteral("Time 00:00:07"));
        QCOMPARE(rows.row(RowUploadSpeed), QStringLiteral("Speed 2048 B/s"));
        QCOMPARE(rows.row(RowDownloadData), QStringLiteral("Data 2000000000 B"));
        QCOMPARE(rows.panel(PanelTotalData), QStringLiteral("5000000000 B")); // past 2^32
    }

    // Figures that did not move are not formatted again.
    void formatsOnlyWhatMoved()
    {
        TreeRows rows = rowsBuilder();
        StatisticsSnapshot snapshot;
        snapshot.refresh(
            [](_enNetInfoType type, NetInfoData& data) {
                data.ullDownData = type * 10;
                return false;
            },
            [](QString& text) { text = QStringLiteral("today"); });
        rows.buildStored(snapshot);
        rows.buildLive(snapshot.live, 0);
        QCOMPARE(rows.row(RowLastReset), QStringLiteral("Reset today"));
        QCOMPARE(rows.row(RowYearlyDownloaded), QStringLiteral("Down 30 B"));
        g_formatted = 0;
        rows.buildStored(snapshot);
        snapshot.live.downSpeed = 5;
        rows.buildLive(snapshot.live, 0);
        QCOMPARE(g_formatted, 1);
        QCOMPARE(rows.row(RowDownloadSpeed), QStringLiteral("Speed 5 B/s"));
    }
};

QTEST_GUILESS_MAIN(TestViewRows)
#include "tst_view_rows.moc"
