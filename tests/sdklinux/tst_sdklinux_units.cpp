// The Linux backend's pure parts: the kernel tables and where periods begin.
// Counters are tested as sequences through the backend in the ledger suite.
#include "NetSource.h"
#include "UsagePeriods.h"

#include <QtTest>

#include <ctime>

using namespace velt;

namespace {
constexpr quint64 kMax64 = ~quint64(0);
} // namespace

class TstSdkLinuxUnits : public QObject
{
    Q_OBJECT

private slots:
    void netDev()
    {
        const QByteArray text = "Inter-|   Receive |  Transmit\n"
                                " face |bytes packets|bytes\n"
                                "    lo:    6534      58    0    0    0     0          0         0     6534  "
                                "    58    0    0    0     0       0          0\n"
                                "wwan0:18446744073709551615 1 0 0 0 0 0 0 77 1 0 0 0 0 0 0\n"
                                "  eth0: garbage\n"
                                "  ppp0: 1 2 3\n";
        int malformed = -1;
        const QList<DeviceCounters> devices = parseNetDev(text, &malformed);
        QCOMPARE(devices.size(), 2);
        QVERIFY(devices.at(0).name == "lo" && devices.at(0).received == 6534 && devices.at(0).sent == 6534);
        QVERIFY(
            devices.at(1).name == "wwan0" && devices.at(1).received == kMax64 && devices.at(1).sent == 77);
        QCOMPARE(malformed, 2);
    }

    void defaultRoute_data()
    {
        const QByteArray header
            = "Iface\tDestination\tGateway \tFlags\tRefCnt\tUse\tMetric\tMask\t\tMTU\tWindow\tIRTT\n";
        QTest::addColumn<QByteArray>("ipv4");
        QTest::addColumn<QByteArray>("ipv6");
        QTest::addColumn<QString>("expected");
        QTest::newRow("lowest metric") << header
                + "eth0\t00000000\t010200C0\t0003\t0\t0\t600\t00000000\t0\t0\t0\n"
                  "wlan0\t00000000\t0101A8C0\t0003\t0\t0\t100\t00000000\t0\t0\t0\n"
                  "eth0\t000200C0\t00000000\t0001\t0\t0\t0\t00FFFFFF\t0\t0\t0\n"
                                       << QByteArray() << "wlan0";
        QTest::newRow("down route ignored")
            << header + "eth0\t00000000\t010200C0\t0002\t0\t0\t0\t00000000\t0\t0\t0\n"
            << QByteArray() << "";
        QTest::newRow("IPv6 only")
            << header
            << QByteArray("00000000000000000000000000000000 00 00000000000000000000000000000000 00 "
                          "00000000000000000000000000000000 ffffffff 00000001 00000000 00200200       lo\n"
                          "00000000000000000000000000000000 00 00000000000000000000000000000000 00 "
                          "fe800000000000000000000000000001 00000400 00000001 00000000 00000003 wwan0\n")
            << "wwan0";
        QTest::newRow("none") << QByteArray() << QByteArray() << "";
    }

    void defaultRoute()
    {
        QFETCH(QByteArray, ipv4);
        QFETCH(QByteArray, ipv6);
        QTEST(parseDefaultRoute(ipv4, ipv6), "expected");
    }

    void periods_data()
    {
        QTest::addColumn<QByteArray>("zone");
        QTest::addColumn<QString>("now");
        QTest::addColumn<int>("weekday");
        QTest::addColumn<int>("monthDay");
        QTest::addColumn<QStringList>("starts"); // today, week, month, year
        // 2024-03-13 is a Wednesday.
        QTest::newRow("start days today")
            << QByteArray("Europe/Berlin") << "2024-03-13 00:00" << 3 << 12
            << QStringList { "2024-03-13 00:00", "2024-03-13 00:00", "2024-03-13 00:00", "2024-01-01 00:00" };
        QTest::newRow("start days tomorrow")
            << QByteArray("Europe/Berlin") << "2024-03-13 23:59" << 4 << 13
            << QStringList { "2024-03-13 00:00", "2024-03-07 00:00", "2024-02-14 00:00", "2024-01-01 00:00" };
        QTest::newRow("31st in a leap February")
            << QByteArray("Europe/Berlin") << "2024-03-13 12:00" << 6 << 30
            << QStringList { "2024-03-13 00:00", "2024-03-09 00:00", "2024-02-29 00:00", "2024-01-01 00:00" };
        QTest::newRow("previous year")
            << QByteArray("Asia/Kolkata") << "2024-01-02 08:00" << 5 << 9
            << QStringList { "2024-01-02 00:00", "2023-12-29 00:00", "2023-12-10 00:00", "2024-01-01 00:00" };
        QTest::newRow("midnight skipped by DST")
            << QByteArray("America/Santiago") << "2024-09-08 10:00" << 0 << 7
            << QStringList { "2024-09-08 01:00", "2024-09-08 01:00", "2024-09-08 01:00", "2024-01-01 00:00" };
    }

    void periods()
    {
        QFETCH(QByteArray, zone);
        QFETCH(QString, now);
        QFETCH(int, weekday);
        QFETCH(int, monthDay);
        qputenv("TZ", zone);
        tzset();
        const QString format = QStringLiteral("yyyy-MM-dd HH:mm");
        const PeriodStarts got = periodStarts(QDateTime::fromString(now, format), { weekday, monthDay });
        QTEST((QStringList { got.today.toString(format), got.week.toString(format),
                  got.month.toString(format), got.year.toString(format) }),
            "starts");
        // Every start is a whole number of buckets from the epoch, so periods are exact.
        for (const QDateTime& start : { got.today, got.week, got.month, got.year })
            QCOMPARE(start.toSecsSinceEpoch() % 900, 0);
    }
};

QTEST_GUILESS_MAIN(TstSdkLinuxUnits)
#include "tst_sdklinux_units.moc"
