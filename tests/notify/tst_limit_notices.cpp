// Limit notifications against a stand-in notification server on a private
// bus: once per period across a restart, quiet while the window shows its
// own dialog, and buttons acting on the device that was warned about.
#include "LimitNotices.h"
#include "PrivateBus.h"
#include "UsageLedger.h"

#include <QDBusConnection>
#include <QFile>
#include <QSignalSpy>
#include <QTest>

class StandInServer : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")
public:
    QStringList capabilities;
    QList<QStringList> actionsSent;
    uint lastId = 0;

public slots:
    QStringList GetCapabilities() { return capabilities; }
    uint Notify(const QString&, uint, const QString&, const QString&, const QString&,
        const QStringList& actions, const QVariantMap&, int)
    {
        actionsSent << actions;
        return ++lastId;
    }

signals:
    void ActionInvoked(uint id, const QString& action);
    void NotificationClosed(uint id, uint reason);
};

class LimitNoticesTest : public QObject
{
    Q_OBJECT

    // A 100 MB limit warned at 80 %, the ledger and state files beside it.
    static LimitNotices::Files filesIn(const QTemporaryDir& dir)
    {
        QFile limits(dir.filePath("DataUsageLimit.ini"));
        if (limits.open(QIODevice::WriteOnly))
            limits.write("[uselimit]\nchkWarnbefore=true\nchkWarnAfter=true\nSizeVolume=100\n"
                         "SizeTimeVolume=10\nWarnBeforPercentage=80\n");
        return { dir.filePath("usage.sqlite"), dir.filePath("host.conf"), limits.fileName(),
            dir.filePath("state.ini") };
    }

private slots:
    void initTestCase()
    {
        if (PrivateBus::daemonPath().isEmpty())
            QSKIP("dbus-daemon is not installed");
        QString error;
        QVERIFY2(m_bus.start(error), qPrintable(error));
        m_connection
            = std::make_unique<QDBusConnection>(QDBusConnection::connectToBus(m_bus.address(), "notices"));
        QVERIFY2(m_connection->isConnected(), qPrintable(m_connection->lastError().message()));
    }

    void notices_data()
    {
        QTest::addColumn<QStringList>("capabilities");
        QTest::addColumn<bool>("windowShown");
        QTest::addColumn<QStringList>("actions"); // of the one notification; none sent when the window shows

        QTest::newRow("actions") << QStringList { "body", "actions" } << false
                                 << QStringList { "disconnect", "Disconnect", "open", "Open" };
        QTest::newRow("no actions") << QStringList { "body" } << false << QStringList {};
        QTest::newRow("window shown") << QStringList { "actions" } << true << QStringList {};
    }

    void notices()
    {
        QFETCH(QStringList, capabilities);
        QFETCH(bool, windowShown);
        QFETCH(QStringList, actions);

        StandInServer server;
        server.capabilities = capabilities;
        QVERIFY(m_connection->registerObject("/org/freedesktop/Notifications", &server,
            QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals));
        QVERIFY(m_connection->registerService("org.freedesktop.Notifications"));
        const auto cleanup = qScopeGuard([this] {
            m_connection->unregisterService("org.freedesktop.Notifications");
            m_connection->unregisterObject("/org/freedesktop/Notifications");
        });

        QTemporaryDir dir;
        const LimitNotices::Files files = filesIn(dir);
        notify::PeriodFigures figures { QDateTime(QDate(2026, 3, 1), QTime(0, 0)), {}, 85 * 1048576ull, 0 };

        LimitNotices first(files, *m_connection);
        first.check(figures, windowShown, "wwan0", QDate(2026, 3, 10));
        LimitNotices restarted(files, *m_connection);
        restarted.check(figures, false, "wwan0", QDate(2026, 3, 10));
        QCOMPARE(server.actionsSent, windowShown ? QList<QStringList> {} : QList<QStringList> { actions });
        if (windowShown)
            return;

        QSignalSpy disconnects(&first.notifier(), &DesktopNotifier::disconnectRequested);
        QSignalSpy opens(&first.notifier(), &DesktopNotifier::openRequested);
        emit server.ActionInvoked(server.lastId + 1, "disconnect"); // another program's
        emit server.ActionInvoked(server.lastId, "open");
        emit server.ActionInvoked(server.lastId, "disconnect");
        QTRY_COMPARE(disconnects.size(), 1);
        QCOMPARE(disconnects.first().first().toString(), QString("wwan0"));
        QCOMPARE(opens.size(), 1);
    }

private:
    PrivateBus m_bus;
    std::unique_ptr<QDBusConnection> m_connection;

    // Beside a recorder the tray gets the figures, and nothing is marked as
    // given: the recorder's own warnings still come.
    void statusBesideARecorder()
    {
        QTemporaryDir dir;
        const LimitNotices::Files files = filesIn(dir);
        const QDateTime now = QDateTime::currentDateTime();
        {
            velt::UsageLedger ledger(files.ledger);
            QVERIFY(ledger.open(now.toSecsSinceEpoch()));
            ledger.add({ "wwan0", "" }, now.toSecsSinceEpoch(), { 85 * 1048576ull, 0, 0 });
            QVERIFY(ledger.commit());
        }
        LimitNotices notices(files, *m_connection);
        QVERIFY(notices.refreshStatus(now));
        QCOMPARE(notices.status().percent, 85);
        QVERIFY(!QFile::exists(files.state));
    }
};

QTEST_GUILESS_MAIN(LimitNoticesTest)
#include "tst_limit_notices.moc"
