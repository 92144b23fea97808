// The tray: its ring and tooltip for the limit's figures, closing into the
// tray, and a second start handing over to the running window.
#include "SingleInstance.h"
#include "TestHome.h"
#include "TrayIcon.h"

#include <QApplication>
#include <QMenu>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>

class TrayTest : public QObject
{
    Q_OBJECT
private slots:
    void toolTip_data()
    {
        QTest::addColumn<notify::LimitStatus>("status");
        QTest::addColumn<QString>("expected");

        notify::LimitStatus data { true, false, 800 * 1048576ull, 1024 * 1048576ull, 78, 224 * 1048576ull, 12,
            "NoWarningColor" };
        QTest::newRow("data")
            << data
            << "NetInfo: 800.0 MB of 1.0 GB used (78 %)\n224.0 MB left\n12 day(s) left in this period";
        notify::LimitStatus time { true, true, 5400, 36000, 15, 30600, -1, "NoWarningColor" };
        QTest::newRow("time, not recurring") << time << "NetInfo: 1:30 of 10:00 used (15 %)\n8:30 left";
    }

    void toolTip()
    {
        QFETCH(notify::LimitStatus, status);
        QTEST(TrayIcon::toolTipText(status, QLocale::c()), "expected");
    }

    void ring_data()
    {
        QTest::addColumn<int>("percent");
        QTest::addColumn<QPoint>("point");
        QTest::addColumn<bool>("filled");
        // On a 64-pixel ring: the right side is a quarter round, the bottom half, the left three quarters.
        QTest::newRow("empty: top") << 0 << QPoint(32, 3) << false;
        QTest::newRow("30 %: right") << 30 << QPoint(60, 32) << true;
        QTest::newRow("30 %: bottom") << 30 << QPoint(32, 60) << false;
        QTest::newRow("over the limit: left") << 140 << QPoint(3, 32) << true;
    }

    void ring()
    {
        QFETCH(int, percent);
        QFETCH(QPoint, point);
        const QColor colour = TrayIcon::color("ReachedWarningColor");
        QTEST(TrayIcon::drawIcon(percent, colour, 64).pixelColor(point) == colour, "filled");
    }

    void close_data()
    {
        QTest::addColumn<bool>("trayAvailable");
        QTest::newRow("tray") << true;
        QTest::newRow("no tray") << false;
    }

    void close()
    {
        QFETCH(bool, trayAvailable);
        TestHome home;
        QWidget window;
        window.show();
        TrayIcon tray(&window, trayAvailable);
        QSignalSpy notices(&tray, &TrayIcon::notice);
        QCOMPARE(tray.keepOnClose(), trayAvailable);
        QCOMPARE(window.isVisible(), !trayAvailable);
        tray.showWindow();
        QVERIFY(window.isVisible());
        // Said once per user: a new tray object does not repeat it.
        TrayIcon(&window, trayAvailable).keepOnClose();
        QCOMPARE(notices.size(), trayAvailable ? 1 : 0);
    }

    void secondStartShowsTheWindow()
    {
        TestHome home;
        const QString name = SingleInstance::socketName();
        QVERIFY(!SingleInstance::activateRunning(name, 200));

        SingleInstance first;
        QVERIFY(first.listen(name));
        QSignalSpy shows(&first, &SingleInstance::showRequested);
        QProcess second;
        QSignalSpy finished(&second, &QProcess::finished);
        second.start(QStringLiteral(NETINFO_HOST_PROGRAM), {});
        QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, 10000);
        QCOMPARE(second.exitCode(), 0);
        QCOMPARE(shows.size(), 1);
    }
};

QTEST_MAIN(TrayTest)
#include "tst_tray.moc"
