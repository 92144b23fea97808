#include "NetworkManagerControl.h"
#include "PrivateBus.h"
#include "StandInNetworkManager.h"

#include <QDBusConnectionInterface>
#include <QtTest>

#include <memory>

namespace {

const QString kService = QStringLiteral("org.freedesktop.NetworkManager");
const QString kStandInName = QStringLiteral("netinfo-standin");
const QString kWwanPath = QStringLiteral("/org/freedesktop/NetworkManager/Devices/3");
const QString kEthPath = QStringLiteral("/org/freedesktop/NetworkManager/Devices/1");
constexpr int kTimeoutMs = 500;

} // namespace

class TestNetworkManagerControl : public QObject
{
    Q_OBJECT
    std::unique_ptr<PrivateBus> m_bus;
    StandInManager m_manager;
    StandInDevice m_wwan;
    StandInDevice m_eth;

    QDBusConnection standIn() const { return QDBusConnection(kStandInName); }

    // Runs one request to its end and returns what was reported.
    static DisconnectResult runDisconnect(ConnectionControl& control, const QString& interfaceName)
    {
        QSignalSpy spy(&control, &ConnectionControl::disconnectFinished);
        control.disconnectInterface(interfaceName);
        if (spy.count() != 0)
            return { false, QStringLiteral("reported from inside the call") };
        if (!spy.wait(5 * kTimeoutMs) || spy.count() != 1)
            return { false, QStringLiteral("reported %1 times").arg(spy.count()) };
        if (spy.at(0).at(0).toString() != interfaceName)
            return { false, QStringLiteral("reported for another interface") };
        return spy.at(0).at(1).value<DisconnectResult>();
    }

private slots:
    void initTestCase()
    {
        if (PrivateBus::daemonPath().isEmpty())
            QSKIP("dbus-daemon is not installed (Debian package dbus-daemon); the D-Bus path is not tested");
        m_bus = std::make_unique<PrivateBus>();
        QString error;
        // A stopped NetworkManager that could be started on demand must stay stopped.
        QVERIFY2(m_bus->startAsSystemBus(kService, error), qPrintable(error));

        QDBusConnection bus = QDBusConnection::connectToBus(m_bus->address(), kStandInName);
        QVERIFY2(bus.isConnected(), qPrintable(bus.lastError().message()));
        m_manager.devicePaths
            = { { QStringLiteral("wwan0"), kWwanPath }, { QStringLiteral("eth0"), kEthPath },
                  { QStringLiteral("ghost0"), QStringLiteral("/org/freedesktop/NetworkManager/Devices/9") } };
        QVERIFY(bus.registerObject(
            QStringLiteral("/org/freedesktop/NetworkManager"), &m_manager, QDBusConnection::ExportAllSlots));
        QVERIFY(bus.registerObject(kWwanPath, &m_wwan, QDBusConnection::ExportAllSlots));
        QVERIFY(bus.registerObject(kEthPath, &m_eth, QDBusConnection::ExportAllSlots));
    }

    void init()
    {
        m_wwan.calls = m_eth.calls = 0;
        m_wwan.errorName.clear();
        m_eth.errorName.clear();
        if (!standIn().interface()->isServiceRegistered(kService))
            QVERIFY(standIn().registerService(kService));
    }

    void cleanupTestCase()
    {
        QDBusConnection::disconnectFromBus(kStandInName);
        m_bus.reset();
    }

    void disconnectInterface_data()
    {
        QTest::addColumn<QString>("interfaceName");
        QTest::addColumn<QString>("deviceError"); // what the stand-in device answers Disconnect with
        QTest::addColumn<bool>("ok");
        QTest::addColumn<int>("wwanCalls");
        QTest::addColumn<int>("ethCalls");
        QTest::addColumn<QString>("message"); // part of the reported text

        const QString none, nm = QStringLiteral("org.freedesktop.NetworkManager.");
        QTest::newRow("mobile device") << "wwan0" << none << true << 1 << 0 << none;
        QTest::newRow("unknown interface")
            << "usb7" << none << false << 0 << 0 << "does not manage the interface \"usb7\"";
        QTest::newRow("device object gone")
            << "ghost0" << none << false << 0 << 0 << "NetworkManager could not disconnect \"ghost0\": ";
        QTest::newRow("not active") << "wwan0" << nm + "Device.NotActive" << false << 1 << 0
                                    << "\"wwan0\" is already disconnected.";
        QTest::newRow("other refusal") << "wwan0" << nm + "Device.Failed" << false << 1 << 0
                                       << "could not disconnect \"wwan0\": the stand-in refuses";
        QTest::newRow("no answer") << "wwan0" << StandInDevice::Hang << false << 1 << 0
                                   << "did not answer in time";
    }

    void disconnectInterface()
    {
        QFETCH(QString, interfaceName);
        QFETCH(QString, deviceError);
        QFETCH(bool, ok);
        QFETCH(QString, message);
        m_wwan.errorName = m_eth.errorName = deviceError;

        NetworkManagerControl control(QDBusConnection::systemBus(), kTimeoutMs);
        QVERIFY(control.canDisconnect());
        const DisconnectResult result = runDisconnect(control, interfaceName);

        QVERIFY2(result.ok == ok && (ok ? result.message.isEmpty() : result.message.contains(message)),
            qPrintable(result.message));
        QTEST(m_wwan.calls, "wwanCalls");
        QTEST(m_eth.calls, "ethCalls");
    }

    void availability_data()
    {
        QTest::addColumn<QString>("state");
        QTest::addColumn<bool>("available");
        QTest::addColumn<QString>("message");

        QTest::newRow("running") << "running" << true << QString();
        QTest::newRow("not running") << "stopped" << false << NetworkManagerControl::notRunningMessage();
        QTest::newRow("no system bus") << "nobus" << false << NetworkManagerControl::noBusMessage();
    }

    void availability()
    {
        QFETCH(QString, state);
        QFETCH(bool, available);
        QFETCH(QString, message);
        if (state == QLatin1String("stopped"))
            QVERIFY(standIn().unregisterService(kService));
        const QString noBusName = QStringLiteral("netinfo-nobus");
        QDBusConnection bus = state == QLatin1String("nobus")
            ? QDBusConnection::connectToBus(QStringLiteral("unix:path=/nonexistent/netinfo-bus"), noBusName)
            : QDBusConnection::systemBus();

        {
            NetworkManagerControl control(bus, kTimeoutMs);
            QCOMPARE(control.canDisconnect(), available);
            const DisconnectResult result = runDisconnect(control, QStringLiteral("wwan0"));
            QVERIFY2(result.ok == available, qPrintable(result.message));
            QCOMPARE(result.message, message);
        }
        QCOMPARE(m_wwan.calls, available ? 1 : 0);
        QVERIFY2(!QFile::exists(m_bus->activationMarker()), "asking to disconnect started NetworkManager");
        QDBusConnection::disconnectFromBus(noBusName);
    }
};

QTEST_GUILESS_MAIN(TestNetworkManagerControl)
#include "tst_connection_networkmanager.moc"
