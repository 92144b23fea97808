// netinfo-report: the periods it shows, its figures in JSON and CSV from a
// fake source, and the real binary on a ledger of the test's own.
#include "UsageReport.h"

#include "TestHome.h"

#include <QtTest>

using namespace report;

namespace {

// Usage booked at moments in time; answers any span by adding them up.
class FakeSource final : public UsageSource
{
public:
    struct Booking
    {
        QDateTime at;
        UsageKey key;
        velt::Usage usage;
    };
    QList<Booking> bookings;

    QList<KeyedUsage> usage(qint64 from, qint64 until) override
    {
        QList<KeyedUsage> out;
        for (const Booking& b : bookings)
            if (b.at.toSecsSinceEpoch() >= from && b.at.toSecsSinceEpoch() < until)
                out.append({ b.key, b.usage });
        return out;
    }
};

const QDateTime kNow(QDate(2026, 3, 18), QTime(10, 30)); // a Wednesday

QDateTime at(const QString& text)
{
    return QDateTime::fromString(text, Qt::ISODate);
}

} // namespace

class TestReport : public QObject
{
    Q_OBJECT

private slots:
    void limitPeriod_data()
    {
        QTest::addColumn<QByteArray>("ini");
        QTest::addColumn<QDateTime>("start");
        const QByteArray head = "[uselimit]\nchkRecurrence=";
        QTest::newRow("no file: monthly") << QByteArray() << QDate(2026, 3, 5).startOfDay();
        QTest::newRow("weekly") << head + "true\nradioDaily=false\nradioWeekly=true"
                                << QDate(2026, 3, 16).startOfDay();
        QTest::newRow("from a date") << head + "false\nstartdate=2026-01-02\nradioDaily=true"
                                     << QDate(2026, 1, 2).startOfDay();
        QTest::newRow("from no date: three months back")
            << head + "false\nstartdate=" << QDate(2025, 12, 18).startOfDay();
        QTest::newRow("from a date to come") << head + "false\nstartdate=2026-04-01" << kNow;
    }

    void limitPeriod()
    {
        QFETCH(QByteArray, ini);
        QFETCH(QDateTime, start);
        QTemporaryDir dir;
        const QString path = dir.filePath("DataUsageLimit.ini");
        if (!ini.isEmpty()) {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(ini) > 0);
        }
        // Weeks from Monday, months from the 5th.
        const QList<Period> periods = currentPeriods(kNow, { 1, 4 }, readLimitSettings(path));
        QStringList names;
        for (const Period& period : periods) {
            names << period.name;
            QCOMPARE(period.end, kNow);
        }
        QCOMPARE(names, (QStringList { "today", "week", "month", "year", "limit" }));
        QCOMPARE(periods.last().start, start);
    }

    void json_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("name");
        QTest::addColumn<double>("received");
        QTest::addColumn<double>("connected");
        QTest::addColumn<QStringList>("interfaces"); // interface/connection=received
        QTest::newRow("today") << 0 << "today" << 300.0 << 60.0 << QStringList { "wwan0/Mobile=300" };
        QTest::newRow("week") << 1 << "week" << 320.0 << 61.0
                              << QStringList { "eth0/=20", "wwan0/Mobile=300" };
        QTest::newRow("month") << 2 << "month" << 4320.0 << 61.0
                               << QStringList { "eth0/=20", "wwan0/Home, \"fast\"=4000", "wwan0/Mobile=300" };
        QTest::newRow("range") << 3 << "range" << 4000.0 << 0.0
                               << QStringList { "wwan0/Home, \"fast\"=4000" };
    }

    void json()
    {
        QFETCH(int, index);
        FakeSource source;
        source.bookings = { { at("2026-03-18T09:00:00"), { "wwan0", "Mobile" }, { 100, 1, 20000 } },
            { at("2026-03-18T10:00:00"), { "wwan0", "Mobile" }, { 200, 2, 40000 } },
            { at("2026-03-16T00:00:00"), { "eth0", "" }, { 20, 3, 1500 } },
            { at("2026-03-10T23:59:59"), { "wwan0", "Home, \"fast\"" }, { 4000, 4, 0 } },
            { at("2026-03-18T10:30:00"), { "wwan0", "Mobile" }, { 9999, 9, 0 } } }; // at now: not yet
        QList<Period> periods = currentPeriods(kNow, { 1, 0 }, {});
        periods = { periods[0], periods[1], periods[2], rangePeriod(QDate(2026, 3, 10), QDate(2026, 3, 10)) };
        const QList<PeriodUsage> usage = collect(source, periods);
        const QJsonDocument doc = QJsonDocument::fromJson(toJson(usage));
        const QJsonObject period = doc.object().value("periods").toArray().at(index).toObject();
        QTEST(period.value("name").toString(), "name");
        QTEST(period.value("received").toDouble(), "received");
        QTEST(period.value("connected_seconds").toDouble(), "connected");
        QCOMPARE(QDateTime::fromString(period.value("start").toString(), Qt::ISODate), periods[index].start);
        QCOMPARE(QDateTime::fromString(period.value("end").toString(), Qt::ISODate), periods[index].end);
        QStringList interfaces;
        const QJsonArray list = period.value("interfaces").toArray();
        for (qsizetype i = 0; i < list.size(); ++i) {
            const QJsonObject item = list.at(i).toObject();
            interfaces << item["interface"].toString() + '/' + item["connection"].toString() + '='
                    + QString::number(item["received"].toDouble());
        }
        QTEST(interfaces, "interfaces");
        const QList<QByteArray> csv = toCsv(usage).split('\n');
        QCOMPARE(csv.first(), "period,start,end,scope,interface,connection,received,sent,connected_seconds");
        const QByteArray quoted = ",interface,wwan0,\"Home, \"\"fast\"\"\",4000,4,0";
        QVERIFY(std::any_of(
            csv.begin(), csv.end(), [&](const QByteArray& line) { return line.endsWith(quoted); }));
    }

    // The real binary on a ledger written the way the recorder writes it;
    // OpenMetrics read back by the Prometheus client's own parser.
    void binary_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("output"); // parts joined by |
        QTest::newRow("table") << QStringList {} << 0 << "0:01:30";
        QTest::newRow("csv range") << QStringList { "--csv", "--from",
            QDate::currentDate().toString(Qt::ISODate) }
                                   << 0 << ",total,,,1500,700,";
        QTest::newRow("range backwards")
            << QStringList { "--from", "2026-02-02", "--to", "2026-02-01" } << 2 << "is after";
        QTest::newRow("no ledger") << QStringList { "--database", "/nonexistent/usage.sqlite" } << 1
                                   << "nothing has been recorded yet";
        QTest::newRow("metrics")
            << QStringList { "--openmetrics" } << 0
            << "netinfo_received_bytes_total{period=\"limit\"} 1500|netinfo_limit_bytes{} "
               "1.04858e+08|netinfo_limit_used_bytes{} 3000";
    }

    void binary()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, output);
        TestHome home;
        QVERIFY(home.writeUserFile(
            "DataUsageLimit.ini", TestHome::limitFile({ "radioDaily=false", "radioMonthly=true" })));
        {
            velt::UsageLedger ledger(home.userFile("usage.sqlite"));
            const qint64 now = QDateTime::currentSecsSinceEpoch();
            QVERIFY(ledger.open(now));
            ledger.add({ QStringLiteral("lo"), QString() }, now, { 1500, 700, 90000 });
            QVERIFY(ledger.commit());
            const QDateTime monthStart
                = allowance::currentLimitPeriod(QDateTime::currentDateTime(), {}, {}).start;
            QVERIFY(ledger.addAdjustment(monthStart.toSecsSinceEpoch(), 800, now));
        }
        QProcess process;
        process.start(NETINFO_REPORT, arguments);
        QVERIFY(process.waitForFinished(10000));
        QString printed = process.readAllStandardOutput() + process.readAllStandardError();
        if (arguments.contains("--openmetrics")) {
            printed = parsedMetrics(printed.toUtf8());
            if (printed.isEmpty())
                QSKIP("python3 with prometheus_client is not installed (python3-prometheus-client)");
        }
        for (const QString& part : output.split('|'))
            QVERIFY2(printed.contains(part), qPrintable(printed));
        QTEST(process.exitCode(), "exitCode");
    }

private:
    // One line per family and sample, or a skip where the parser is missing.
    static QString parsedMetrics(const QByteArray& text)
    {
        // An interpreter of its own (pyenv and the like) may lack the system's module.
        for (const QString python : { "python3", "/usr/bin/python3" }) {
            QProcess parser;
            parser.start(python, { QFINDTESTDATA("parse_openmetrics.py") });
            if (!parser.waitForStarted(5000))
                continue;
            parser.write(text);
            parser.closeWriteChannel();
            parser.waitForFinished(20000);
            if (parser.exitCode() != 3)
                return parser.readAllStandardOutput() + parser.readAllStandardError();
        }
        return {};
    }
};

QTEST_GUILESS_MAIN(TestReport)
#include "tst_report.moc"
