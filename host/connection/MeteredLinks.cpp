#include "MeteredLinks.h"

#include "ConnectionLog.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QMutexLocker>
#include <QSet>

#include <memory>

namespace {

const QString kService = QStringLiteral("org.freedesktop.NetworkManager");
const QString kManagerPath = QStringLiteral("/org/freedesktop/NetworkManager");
const QString kManagerInterface = QStringLiteral("org.freedesktop.NetworkManager");
const QString kDeviceInterface = QStringLiteral("org.freedesktop.NetworkManager.Device");
const QString kActiveInterface = QStringLiteral("org.freedesktop.NetworkManager.Connection.Active");
const QString kPropertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

// NetworkManager announces many properties (statistics among them); only
// these change which links exist or how they are classified.
const QSet<QString> kRelevant = { QStringLiteral("Interface"), QStringLiteral("IpInterface"),
    QStringLiteral("ActiveConnection"), QStringLiteral("Metered"), QStringLiteral("Id"),
    QStringLiteral("Devices"), QStringLiteral("ActiveConnections") };

QDBusMessage nmCall(
    const QString& path, const QString& interface, const QString& method, const QVariantList& arguments = {})
{
    QDBusMessage call = QDBusMessage::createMethodCall(kService, path, interface, method);
    call.setArguments(arguments);
    // Watching must never be what starts NetworkManager.
    call.setAutoStartService(false);
    return call;
}

QVariant unwrap(const QVariant& value)
{
    return value.canConvert<QDBusVariant>() ? value.value<QDBusVariant>().variant() : value;
}

// The links of one refresh, filled in as the replies arrive.
struct Gathering
{
    QList<velt::LinkInfo> links;
    int pending = 0;
};

} // namespace

MeteredLinks::MeteredLinks(const QDBusConnection& bus, QObject* parent)
    : QObject(parent)
    , m_bus(bus)
{
    m_refreshTimer.setSingleShot(true);
    m_refreshTimer.setInterval(50);
    connect(&m_refreshTimer, &QTimer::timeout, this, &MeteredLinks::refresh);
    if (!m_bus.isConnected()) {
        qCInfo(lcConnection, "No system bus (%s): every link counts as unmetered",
            qUtf8Printable(m_bus.lastError().message()));
        return;
    }
    m_serviceWatcher
        = new QDBusServiceWatcher(kService, m_bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(
        m_serviceWatcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &MeteredLinks::scheduleRefresh);
    m_bus.connect(kService, kManagerPath, kManagerInterface, QStringLiteral("DeviceAdded"), this,
        SLOT(scheduleRefresh()));
    m_bus.connect(kService, kManagerPath, kManagerInterface, QStringLiteral("DeviceRemoved"), this,
        SLOT(scheduleRefresh()));
    // Any object path: devices and active connections come and go.
    m_bus.connect(kService, QString(), kPropertiesInterface, QStringLiteral("PropertiesChanged"), this,
        SLOT(onPropertiesChanged(QDBusMessage)));
    scheduleRefresh();
}

MeteredLinks::~MeteredLinks() = default;

QList<velt::LinkInfo> MeteredLinks::snapshot() const
{
    QMutexLocker lock(&m_mutex);
    return m_links;
}

void MeteredLinks::scheduleRefresh()
{
    if (m_bRefreshing)
        m_bRefreshAgain = true;
    else
        m_refreshTimer.start();
}

void MeteredLinks::onPropertiesChanged(const QDBusMessage& message)
{
    const QVariantList arguments = message.arguments();
    if (arguments.size() < 2)
        return;
    const QString interface = arguments.at(0).toString();
    if (interface != kDeviceInterface && interface != kActiveInterface && interface != kManagerInterface)
        return;
    const QVariantMap changed = qdbus_cast<QVariantMap>(arguments.at(1));
    for (auto it = changed.cbegin(); it != changed.cend(); ++it) {
        if (kRelevant.contains(it.key())) {
            scheduleRefresh();
            return;
        }
    }
}

void MeteredLinks::refresh()
{
    m_bRefreshing = true;
    m_bRefreshAgain = false;
    auto gathering = std::make_shared<Gathering>();
    // Called once per finished reply; the last one publishes.
    auto settle = [this, gathering] {
        if (--gathering->pending > 0)
            return;
        publish(gathering->links);
        m_bRefreshing = false;
        if (m_bRefreshAgain)
            scheduleRefresh();
    };
    auto ask = [this, gathering](const QDBusMessage& call, auto onReply) {
        ++gathering->pending;
        auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
        connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, onReply] {
            watcher->deleteLater();
            onReply(QDBusMessage(watcher->reply()));
        });
    };

    ask(nmCall(kManagerPath, kManagerInterface, QStringLiteral("GetDevices")),
        [gathering, ask, settle](const QDBusMessage& reply) {
            if (reply.type() == QDBusMessage::ErrorMessage) {
                // Not running is an ordinary state; anything else is worth a line.
                if (reply.errorName() != QLatin1String("org.freedesktop.DBus.Error.ServiceUnknown")
                    && reply.errorName() != QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner"))
                    qCWarning(lcConnection, "Cannot list NetworkManager's devices: %s %s",
                        qUtf8Printable(reply.errorName()), qUtf8Printable(reply.errorMessage()));
                settle();
                return;
            }
            const auto devices = qdbus_cast<QList<QDBusObjectPath>>(reply.arguments().value(0));
            for (const QDBusObjectPath& device : devices) {
                ask(nmCall(
                        device.path(), kPropertiesInterface, QStringLiteral("GetAll"), { kDeviceInterface }),
                    [gathering, ask, settle](const QDBusMessage& properties) {
                        if (properties.type() == QDBusMessage::ReplyMessage) {
                            const auto values = qdbus_cast<QVariantMap>(properties.arguments().value(0));
                            const QString active
                                = qdbus_cast<QDBusObjectPath>(values.value("ActiveConnection")).path();
                            velt::LinkInfo link;
                            // A modem's control device is not where its traffic is counted.
                            link.interfaceName = values.value("IpInterface").toString();
                            if (link.interfaceName.isEmpty())
                                link.interfaceName = values.value("Interface").toString();
                            link.metered = isMetered(values.value("Metered").toUInt());
                            if (!link.interfaceName.isEmpty() && !active.isEmpty()
                                && active != QLatin1String("/")) {
                                const qsizetype index = gathering->links.size();
                                gathering->links.append(link);
                                ask(nmCall(active, kPropertiesInterface, QStringLiteral("Get"),
                                        { kActiveInterface, QStringLiteral("Id") }),
                                    [gathering, index, settle](const QDBusMessage& id) {
                                        if (id.type() == QDBusMessage::ReplyMessage)
                                            gathering->links[index].connection
                                                = unwrap(id.arguments().value(0)).toString();
                                        settle();
                                    });
                            }
                        }
                        settle();
                    });
            }
            settle();
        });
}

void MeteredLinks::publish(const QList<velt::LinkInfo>& links)
{
    {
        QMutexLocker lock(&m_mutex);
        const bool same = std::equal(m_links.cbegin(), m_links.cend(), links.cbegin(), links.cend(),
            [](const velt::LinkInfo& a, const velt::LinkInfo& b) {
                return a.interfaceName == b.interfaceName && a.connection == b.connection
                    && a.metered == b.metered;
            });
        if (same)
            return;
        m_links = links;
    }
    for (const velt::LinkInfo& link : links)
        qCInfo(lcConnection, "Link %s (%s): %s", qUtf8Printable(link.interfaceName),
            qUtf8Printable(
                link.connection.isEmpty() ? QStringLiteral("no connection name") : link.connection),
            link.metered ? "metered" : "not metered");
    emit changed();
}
