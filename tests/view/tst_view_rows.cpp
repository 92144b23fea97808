// The tree's texts without widgets: the rows built from a snapshot, and only
// the figures that moved formatted again.
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
        for (const QString& text : { QString(), QStringLiteral("  ") }) { // only one blank keeps
            snapshot.takeDuration(text);
            QCOMPARE(snapshot.live.duration, text);
        }
        QCOMPARE(rows.row(RowUploadSpeed), QStringLiteral("Speed 2048 B/s"));
        QCOMPARE(rows.row(RowDownloadData), QStringLiteral("Data 2000000000 B"));
        QCOMPARE(rows.panel(PanelTotalData), QStringLiteral("5000000000 B")); // past 2^32
        // A Latin figure after a right-to-left caption keeps its reading order.
        QCOMPARE(rowText("آخر:", "5 Nov 05:30"), "آخر: \u20665 Nov 05:30\u2069");
        QCOMPARE(rowText("Reset:", "5 Nov"), "Reset: 5 Nov");
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
