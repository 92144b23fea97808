// MeteredLinks against a stand-in NetworkManager on a private bus: what it
// lists at first, and how it follows NetworkManager's signals.
#include "MeteredLinks.h"
#include "PrivateBus.h"
#include "StandInNetworkManager.h"

#include <QDBusConnectionInterface>
#include <QtTest>

#include <memory>

namespace {

const QString kService = QStringLiteral("org.freedesktop.NetworkManager");
const QString kManagerPath = QStringLiteral("/org/freedesktop/NetworkManager");
const QString kDeviceInterface = QStringLiteral("org.freedesktop.NetworkManager.Device");
const QString kStandInName = QStringLiteral("netinfo-standin");
const QString kDevices = QStringLiteral("/org/freedesktop/NetworkManager/Devices/");
const QString kActive = QStringLiteral("/org/freedesktop/NetworkManager/ActiveConnection/");

// "interface/connection/m" (metered) or ".../-", sorted: easy to compare and read.
QStringList describe(const QList<velt::LinkInfo>& links)
{
    QStringList out;
    for (const velt::LinkInfo& link : links)
        out << link.interfaceName + '/' + link.connection + '/' + (link.metered ? "m" : "-");
    out.sort();
    return out;
}

} // namespace

class TestMeteredLinks : public QObject
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
        QVERIFY2(m_bus->startAsSystemBus(kService, error), qPrintable(error));

        QDBusConnection bus = QDBusConnection::connectToBus(m_bus->address(), kStandInName);
        QVERIFY2(bus.isConnected(), qPrintable(bus.lastError().message()));
        const auto exported = QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals
            | QDBusConnection::ExportAllProperties;
        QVERIFY(bus.registerObject(kManagerPath, &m_manager, exported));
        QVERIFY(bus.registerObject(kDevices + "1", &m_modem, exported));
        QVERIFY(bus.registerObject(kDevices + "2", &m_eth, exported));
        QVERIFY(bus.registerObject(kDevices + "3", &m_wlan, exported));
        QVERIFY(bus.registerObject(kActive + "1", &m_mobile, exported));
        QVERIFY(bus.registerObject(kActive + "2", &m_wired, exported));
        QVERIFY(bus.registerObject(kActive + "3", &m_home, exported));
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
        if (!standIn().interface()->isServiceRegistered(kService))
            QVERIFY(standIn().registerService(kService));
    }

    void cleanupTestCase()
    {
        QDBusConnection::disconnectFromBus(kStandInName);
        m_bus.reset();
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
        QTest::newRow("as found") << ""
                                  << "" << QVariant() << both;
        QTest::newRow("guess-yes counts as metered")
            << eth << "Metered" << QVariant(3u) << QStringList { "eth0/Wired/m", "wwan0/Mobile/m" };
        QTest::newRow("no longer metered")
            << modem << "Metered" << QVariant(2u) << QStringList { "eth0/Wired/-", "wwan0/Mobile/-" };
        QTest::newRow("deactivated") << modem << "ActiveConnection" << path("/")
                                     << QStringList { "eth0/Wired/-" };
        QTest::newRow("activated") << wlan << "ActiveConnection" << path(kActive + "3")
                                   << QStringList { "eth0/Wired/-", "wlan0/Home/m", "wwan0/Mobile/m" };
        QTest::newRow("device removed") << "remove"
                                        << "" << QVariant() << QStringList { "wwan0/Mobile/m" };
        QTest::newRow("NetworkManager stops") << "stop"
                                              << "" << QVariant() << QStringList {};
        QTest::newRow("NetworkManager starts later") << "start late"
                                                     << "" << QVariant() << both;
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
                : kDeviceInterface;
            QVERIFY(announceChanged(standIn(), path, interface, { { property, value } }));
        } else if (path == "remove") {
            m_manager.devices.removeAt(1);
            emit m_manager.DeviceRemoved(QDBusObjectPath(kDevices + "2"));
        } else if (path == "stop") {
            QVERIFY(standIn().unregisterService(kService));
        }
        QFETCH(QStringList, expected);
        QTRY_COMPARE(describe(links.snapshot()), expected);
        QVERIFY2(!QFile::exists(m_bus->activationMarker()), "watching started NetworkManager");
    }
};

QTEST_GUILESS_MAIN(TestMeteredLinks)
#include "tst_connection_meteredlinks.moc"
