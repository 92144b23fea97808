// The host's NetworkManager clients against a stand-in NetworkManager on a
// private bus: disconnecting a device, and MeteredLinks following the
// metered links through NetworkManager's signals.
#include "MeteredLinks.h"
#include "NetworkManagerControl.h"
#include "PrivateBus.h"
#include "StandInNetworkManager.h"

#include <QDBusConnectionInterface>
#include <QtTest>

#include <memory>

namespace {

const QString kService = QStringLiteral("org.freedesktop.NetworkManager");
const QString kStandInName = QStringLiteral("netinfo-standin");
const QString kDevices = QStringLiteral("/org/freedesktop/NetworkManager/Devices/");
const QString kActive = QStringLiteral("/org/freedesktop/NetworkManager/ActiveConnection/");
constexpr int kTimeoutMs = 500;

// "interface/connection/m" (metered) or ".../-", sorted: easy to compare and read.
QStringList describe(const QList<velt::LinkInfo>& links)
{
    QStringList out;
    for (const velt::LinkInfo& link : links)
        out << link.interfaceName + '/' + link.connection + '/' + (link.metered ? "m" : "-");
    out.sort();
    return out;
}

// Runs one request to its end and returns what was reported.
DisconnectResult runDisconnect(ConnectionControl& control, const QString& interfaceName)
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

} // namespace

class TestConnection : public QObject
{
    Q_OBJECT
    std::unique_ptr<PrivateBus> m_bus;
    StandInManager m_manager;
    StandInDevice m_modem, m_eth, m_wlan;
    StandInActive m_mobile, m_wired, m_home;

    QDBusConnection standIn() const { return QDBusConnection(kStandInName); }

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
        const auto exported = QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals
            | QDBusConnection::ExportAllProperties;
        QVERIFY(bus.registerObject(QStringLiteral("/org/freedesktop/NetworkManager"), &m_manager, exported));
        QObject* objects[] = { &m_modem, &m_eth, &m_wlan, &m_mobile, &m_wired, &m_home };
        for (int i = 0; i < 6; ++i)
            QVERIFY(bus.registerObject(
                (i < 3 ? kDevices : kActive) + QString::number(i % 3 + 1), objects[i], exported));
        m_manager.devicePaths
            = { { QStringLiteral("wwan0"), kDevices + "1" }, { QStringLiteral("eth0"), kDevices + "2" } };
    }

    void init()
    {
        // A modem: control device cdc-wdm0, traffic on wwan0.
        m_modem.interfaceName = "cdc-wdm0";
        m_modem.ipInterface = "wwan0";
        m_modem.activeConnection = QDBusObjectPath(kActive + "1");
        m_modem.metered = 1;
        m_eth.interfaceName = "eth0";
        m_eth.activeConnection = QDBusObjectPath(kActive + "2");
        m_eth.metered = 4;
        m_wlan.interfaceName = "wlan0";
        m_wlan.activeConnection = QDBusObjectPath("/");
        m_wlan.metered = 3;
        m_mobile.id = "Mobile";
        m_wired.id = "Wired";
        m_home.id = "Home";
        m_manager.devices = { QDBusObjectPath(kDevices + "1"), QDBusObjectPath(kDevices + "2"),
            QDBusObjectPath(kDevices + "3") };
        m_modem.calls = m_eth.calls = 0;
        m_modem.errorName.clear();
        m_eth.errorName.clear();
        if (!standIn().interface()->isServiceRegistered(kService))
            QVERIFY(standIn().registerService(kService));
    }

    void cleanup()
    {
        QVERIFY2(!QFile::exists(m_bus->activationMarker()), "something started NetworkManager");
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
        QTest::addColumn<int>("modemCalls");
        QTest::addColumn<QString>("message"); // part of the reported text

        const QString none, nm = QStringLiteral("org.freedesktop.NetworkManager.");
        QTest::newRow("mobile device") << "wwan0" << none << true << 1 << none;
        QTest::newRow("unknown interface")
            << "usb7" << none << false << 0 << "does not manage the interface \"usb7\"";
        QTest::newRow("not active") << "wwan0" << nm + "Device.NotActive" << false << 1
                                    << "\"wwan0\" is already disconnected.";
        QTest::newRow("other refusal") << "wwan0" << nm + "Device.Failed" << false << 1
                                       << "could not disconnect \"wwan0\": the stand-in refuses";
        QTest::newRow("no answer") << "wwan0" << StandInDevice::Hang << false << 1
                                   << "did not answer in time";
    }

    void disconnectInterface()
    {
        QFETCH(QString, interfaceName);
        QFETCH(QString, deviceError);
        QFETCH(bool, ok);
        QFETCH(QString, message);
        m_modem.errorName = m_eth.errorName = deviceError;
        NetworkManagerControl control(QDBusConnection::systemBus(), kTimeoutMs);
        QVERIFY(control.canDisconnect());
        const DisconnectResult result = runDisconnect(control, interfaceName);
        QVERIFY2(result.ok == ok && (ok ? result.message.isEmpty() : result.message.contains(message)),
            qPrintable(result.message));
        QTEST(m_modem.calls, "modemCalls");
        QCOMPARE(m_eth.calls, 0);
    }

    void unavailable_data()
    {
        QTest::addColumn<bool>("busThere");
        QTest::addColumn<QString>("message");
        QTest::newRow("not running") << true << NetworkManagerControl::notRunningMessage();
        QTest::newRow("no system bus") << false << NetworkManagerControl::noBusMessage();
    }

    void unavailable()
    {
        QFETCH(bool, busThere);
        QFETCH(QString, message);
        QVERIFY(standIn().unregisterService(kService));
        const QString noBusName = QStringLiteral("netinfo-nobus");
        {
            NetworkManagerControl control(busThere
                    ? QDBusConnection::systemBus()
                    : QDBusConnection::connectToBus(
                        QStringLiteral("unix:path=/nonexistent/netinfo-bus"), noBusName),
                kTimeoutMs);
            QVERIFY(!control.canDisconnect());
            const DisconnectResult result = runDisconnect(control, QStringLiteral("wwan0"));
            QVERIFY(!result.ok);
            QCOMPARE(result.message, message);
        }
        QCOMPARE(m_modem.calls, 0);
        QDBusConnection::disconnectFromBus(noBusName);
    }

    void follows_data()
    {
        QTest::addColumn<QString>("path"); // the object whose property changes, or a whole-service event
        QTest::addColumn<QString>("property");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QStringList>("expected");
        const QStringList both { "eth0/Wired/-", "wwan0/Mobile/m" };
        const QString modem = kDevices + "1", eth = kDevices + "2", wlan = kDevices + "3";
        const auto path = [](const QString& p) { return QVariant::fromValue(QDBusObjectPath(p)); };
        QTest::newRow("guess-yes counts as metered")
            << eth << "Metered" << QVariant(3u) << QStringList { "eth0/Wired/m", "wwan0/Mobile/m" };
        QTest::newRow("no longer metered")
            << modem << "Metered" << QVariant(2u) << QStringList { "eth0/Wired/-", "wwan0/Mobile/-" };
        QTest::newRow("deactivated") << modem << "ActiveConnection" << path("/")
                                     << QStringList { "eth0/Wired/-" };
        QTest::newRow("activated") << wlan << "ActiveConnection" << path(kActive + "3")
                                   << QStringList { "eth0/Wired/-", "wlan0/Home/m", "wwan0/Mobile/m" };
        QTest::newRow("device removed")
            << QString("remove") << QString() << QVariant() << QStringList { "wwan0/Mobile/m" };
        QTest::newRow("NetworkManager stops") << QString("stop") << QString() << QVariant() << QStringList {};
        QTest::newRow("NetworkManager starts later")
            << QString("start late") << QString() << QVariant() << both;
    }

    void follows()
    {
        QFETCH(QString, path);
        QFETCH(QString, property);
        QFETCH(QVariant, value);
        if (path == "start late")
            QVERIFY(standIn().unregisterService(kService));
        MeteredLinks links;
        if (path == "start late") {
            QTest::qWait(200);
            QCOMPARE(links.snapshot().size(), 0);
            QVERIFY(standIn().registerService(kService));
        } else {
            QTRY_COMPARE(describe(links.snapshot()), (QStringList { "eth0/Wired/-", "wwan0/Mobile/m" }));
        }

        if (!property.isEmpty()) {
            QObject* object = standIn().objectRegisteredAt(path);
            QVERIFY(object && object->setProperty(qPrintable(property), value));
            const QString interface = path.startsWith(kActive)
                ? "org.freedesktop.NetworkManager.Connection.Active"
                : "org.freedesktop.NetworkManager.Device";
            QVERIFY(announceChanged(standIn(), path, interface, { { property, value } }));
        } else if (path == "remove") {
            m_manager.devices.removeAt(1);
            emit m_manager.DeviceRemoved(QDBusObjectPath(kDevices + "2"));
        } else if (path == "stop") {
            QVERIFY(standIn().unregisterService(kService));
        }
        QFETCH(QStringList, expected);
        QTRY_COMPARE(describe(links.snapshot()), expected);
    }
};

QTEST_GUILESS_MAIN(TestConnection)
#include "tst_connection.moc"
