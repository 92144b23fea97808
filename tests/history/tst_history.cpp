// The history window's bars against netinfo-report --history on the same
// ledger: the same periods with the same figures, and the days of the
// current period adding up to the report's limit period.
#include "HistoryWindow.h"
#include "UsageLedger.h"

#include "TestHome.h"

#include <QtTest>

class TestHistory : public QObject
{
    Q_OBJECT

private slots:
    void sameAsReport_data()
    {
        QTest::addColumn<bool>("months");
        QTest::addColumn<int>("minimumBars");
        QTest::newRow("days") << false << 29; // at least a whole previous month
        QTest::newRow("months") << true << 12;
    }

    void sameAsReport()
    {
        QFETCH(bool, months);
        TestHome home;
        QVERIFY(home.writeUserFile("DataUsageLimit.ini",
            TestHome::limitFile({ "radioDaily=false", "radioMonthly=true", "SizeVolume=2048" })));
        const QString path = home.userFile("usage.sqlite");
        const qint64 now = QDateTime::currentSecsSinceEpoch();
        {
            velt::UsageLedger ledger(path);
            QVERIFY(ledger.open(now));
            // Uneven amounts every 17 hours for 400 days: every bar differs.
            for (qint64 k = 0; k < 400 * 24 / 17; ++k)
                ledger.add({ "wwan0", "Mobile" }, now - k * 17 * 3600,
                    { quint64(1000 + k * 7), quint64(10 + k), 0 });
            QVERIFY(ledger.commit());
        }
        HistoryWindow window(
            path, home.userFile("DataUsageLimit.ini"), home.configHome() + "/netinfo/none.conf");
        window.showMonths(months);
        window.reload();
        const QList<HistoryChart::Bar> bars = window.chart()->bars();
        QFETCH(int, minimumBars);
        QVERIFY2(bars.size() >= minimumBars, qPrintable(QString::number(bars.size())));

        QProcess report;
        report.start(NETINFO_REPORT, { "--history", months ? "months" : "days", "--json" });
        QVERIFY(report.waitForFinished(20000));
        QCOMPARE(report.exitCode(), 0);
        const QJsonArray history
            = QJsonDocument::fromJson(report.readAllStandardOutput()).object()["history"].toArray();
        QCOMPARE(history.size(), bars.size());
        for (int i = 0; i < bars.size(); ++i) {
            const QJsonObject item = history.at(i).toObject();
            QCOMPARE(QDateTime::fromString(item["start"].toString(), Qt::ISODate), bars[i].start);
            QCOMPARE(quint64(item["received"].toDouble()), bars[i].received);
            QCOMPARE(quint64(item["sent"].toDouble()), bars[i].sent);
        }

        report.start(NETINFO_REPORT, { "--json" });
        QVERIFY(report.waitForFinished(20000));
        const QJsonArray periods
            = QJsonDocument::fromJson(report.readAllStandardOutput()).object()["periods"].toArray();
        const QJsonObject limit = periods.last().toObject();
        QCOMPARE(limit["name"].toString(), "limit");
        const QDateTime limitStart = QDateTime::fromString(limit["start"].toString(), Qt::ISODate);
        quint64 received = 0;
        for (const HistoryChart::Bar& bar : bars)
            if (bar.start >= limitStart)
                received += bar.received;
        // Months begin where the limit's period does, so both views cover it alike.
        QCOMPARE(received, quint64(limit["received"].toDouble()));
    }

    void unitFollowsFigures_data()
    {
        QTest::addColumn<quint64>("bytes");
        QTest::addColumn<QString>("unit");
        QTest::addColumn<double>("axis");
        QTest::newRow("bytes") << quint64(700) << "B" << 1000.0;
        QTest::newRow("just a KB") << quint64(1024) << "KB" << 1.0;
        QTest::newRow("MB") << quint64(3) * 1024 * 1024 + 1 << "MB" << 5.0;
        QTest::newRow("GB") << quint64(15) * 1024 * 1024 * 1024 << "GB" << 20.0;
        QTest::newRow("nothing") << quint64(0) << "B" << 1.0;
    }

    void unitFollowsFigures()
    {
        QFETCH(quint64, bytes);
        const HistoryChart::Unit unit = HistoryChart::unitFor(bytes);
        QTEST(QString::fromLatin1(unit.name), "unit");
        QTEST(HistoryChart::axisMaximum(bytes, unit), "axis");
    }
};

QTEST_MAIN(TestHistory)
#include "tst_history.moc"
