// The history window's bars against the ledger they are read from: period
// after period without gaps, the current limit period among them.
#include "Allowance.h"
#include "HistoryWindow.h"
#include "UsageLedger.h"

#include "TestHome.h"

#include <QtTest>

Q_DECLARE_METATYPE(report::HistoryKind)

class TestHistory : public QObject
{
    Q_OBJECT

private slots:
    void barsCoverTheLedger_data()
    {
        QTest::addColumn<report::HistoryKind>("kind");
        QTest::addColumn<int>("minimumBars");
        QTest::newRow("hours") << report::HistoryKind::Hours << 48;
        QTest::newRow("days") << report::HistoryKind::Days << 29; // at least a whole previous month
        QTest::newRow("months") << report::HistoryKind::Months << 12;
    }

    void barsCoverTheLedger()
    {
        QFETCH(report::HistoryKind, kind);
        QFETCH(int, minimumBars);
        TestHome home;
        QVERIFY(home.writeUserFile("DataUsageLimit.ini",
            TestHome::limitFile({ "radioDaily=false", "radioMonthly=true", "SizeVolume=2048" })));
        const QString path = home.userFile("usage.sqlite");
        const QDateTime now = QDateTime::currentDateTime();
        {
            velt::UsageLedger ledger(path);
            QVERIFY(ledger.open(now.toSecsSinceEpoch()));
            // Uneven amounts every 17 hours for 400 days: every bar differs.
            for (qint64 k = 0; k < 400 * 24 / 17; ++k)
                ledger.add({ "wwan0", "Mobile" }, now.toSecsSinceEpoch() - k * 17 * 3600,
                    { quint64(1000 + k * 7), quint64(10 + k), 0 });
            QVERIFY(ledger.commit());
        }
        HistoryWindow window(
            path, home.userFile("DataUsageLimit.ini"), home.configHome() + "/netinfo/none.conf");
        window.showKind(kind);
        window.reload();
        const QList<HistoryChart::Bar> bars = window.chart()->bars();
        QVERIFY2(bars.size() >= minimumBars, qPrintable(QString::number(bars.size())));
        velt::UsageLedger ledger(path, velt::LedgerAccess::ReadOnly);
        for (int i = 0; i < bars.size(); ++i) {
            const velt::Usage usage
                = ledger.total(bars[i].start.toSecsSinceEpoch(), bars[i].end.toSecsSinceEpoch());
            QCOMPARE(bars[i].received, usage.received);
            QCOMPARE(bars[i].sent, usage.sent);
            QCOMPARE(i == 0 ? bars[i].start : bars[i - 1].end, bars[i].start); // no gaps, no overlaps
        }
        QVERIFY(bars.last().end >= now);
        // Days and months begin where the limit's period does, so both cover it alike.
        const QDateTime limitStart = allowance::currentLimitPeriod(now, {}, {}).start;
        QVERIFY(kind == report::HistoryKind::Hours
            || std::any_of(
                bars.cbegin(), bars.cend(), [&](const auto& bar) { return bar.start == limitStart; }));
    }
};

QTEST_MAIN(TestHistory)
#include "tst_history.moc"
