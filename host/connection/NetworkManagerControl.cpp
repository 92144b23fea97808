#include "NetworkManagerControl.h"

#include "ConnectionLog.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace {

const QString kService = QStringLiteral("org.freedesktop.NetworkManager");
const QString kManagerPath = QStringLiteral("/org/freedesktop/NetworkManager");
const QString kManagerInterface = QStringLiteral("org.freedesktop.NetworkManager");
const QString kDeviceInterface = QStringLiteral("org.freedesktop.NetworkManager.Device");

bool isError(const QString& name, QDBusError::ErrorType type)
{
    return name == QDBusError::errorString(type);
}

QString failureText(const QString& name, const QString& message, const QString& interfaceName)
{
    if (isError(name, QDBusError::Disconnected))
        return NetworkManagerControl::noBusMessage();
    if (isError(name, QDBusError::ServiceUnknown)
        || name == QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner"))
        return NetworkManagerControl::notRunningMessage();
    if (name == QLatin1String("org.freedesktop.NetworkManager.UnknownDevice"))
        return NetworkManagerControl::tr(
            "Cannot disconnect: NetworkManager does not manage the interface \"%1\".")
            .arg(interfaceName);
    if (name == QLatin1String("org.freedesktop.NetworkManager.Device.NotActive"))
        return NetworkManagerControl::tr("\"%1\" is already disconnected.").arg(interfaceName);
    if (name == QLatin1String("org.freedesktop.NetworkManager.PermissionDenied")
        || isError(name, QDBusError::AccessDenied)
        || name == QLatin1String("org.freedesktop.DBus.Error.InteractiveAuthorizationRequired"))
        return NetworkManagerControl::tr(
            "You are not allowed to disconnect \"%1\". "
            "Ask your administrator for the right to control network connections.")
            .arg(interfaceName);
    if (isError(name, QDBusError::NoReply) || isError(name, QDBusError::Timeout)
        || isError(name, QDBusError::TimedOut))
        return NetworkManagerControl::tr(
            "NetworkManager did not answer in time; \"%1\" may still be connected.")
            .arg(interfaceName);
    return NetworkManagerControl::tr("NetworkManager could not disconnect \"%1\": %2")
        .arg(interfaceName, message.isEmpty() ? name : message);
}

} // namespace

NetworkManagerControl::NetworkManagerControl(const QDBusConnection& bus, int timeoutMs, QObject* parent)
    : ConnectionControl(parent)
    , m_bus(bus)
    , m_iTimeoutMs(timeoutMs > 0 ? timeoutMs : DefaultTimeoutMs)
{ }

NetworkManagerControl::~NetworkManagerControl() = default;

QString NetworkManagerControl::notRunningMessage()
{
    return NetworkManagerControl::tr("Disconnecting is not available: NetworkManager is not running.");
}

QString NetworkManagerControl::noBusMessage()
{
    return NetworkManagerControl::tr(
        "Disconnecting is not available: the system message bus cannot be reached.");
}

bool NetworkManagerControl::canDisconnect() const
{
    if (!m_bus.isConnected())
        return false;
    QDBusMessage ask = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("/org/freedesktop/DBus"), QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("NameHasOwner"));
    ask << kService;
    const QDBusMessage reply = m_bus.call(ask, QDBus::Block, m_iTimeoutMs);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) {
        qCWarning(lcConnection) << "Cannot ask the system bus for NetworkManager:" << reply.errorName()
                                << reply.errorMessage();
        return false;
    }
    return reply.arguments().constFirst().toBool();
}

void NetworkManagerControl::disconnectInterface(const QString& interfaceName)
{
    if (interfaceName.isEmpty()) {
        qCWarning(lcConnection) << "Disconnect asked without an interface name";
        finishLater(interfaceName,
            { false, NetworkManagerControl::tr("Cannot disconnect: no network interface is measured.") });
        return;
    }
    if (!m_bus.isConnected()) {
        qCWarning(lcConnection) << "Disconnect of" << interfaceName
                                << "refused: no system bus:" << m_bus.lastError().message();
        finishLater(interfaceName, { false, noBusMessage() });
        return;
    }
    qCInfo(lcConnection).noquote() << "Asking NetworkManager to disconnect" << interfaceName;
    QDBusPendingCallWatcher* watcher
        = callAsync(kManagerPath, kManagerInterface, QStringLiteral("GetDeviceByIpIface"), { interfaceName });
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
        [this, interfaceName](QDBusPendingCallWatcher* w) { onDeviceFound(w, interfaceName); });
}

QDBusPendingCallWatcher* NetworkManagerControl::callAsync(
    const QString& path, const QString& interface, const QString& method, const QVariantList& arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(kService, path, interface, method);
    call.setArguments(arguments);
    // A stopped NetworkManager stays stopped: asking to disconnect must not start it.
    call.setAutoStartService(false);
    // The watcher is a child, so replies that arrive after this object is gone are dropped.
    return new QDBusPendingCallWatcher(m_bus.asyncCall(call, m_iTimeoutMs), this);
}

void NetworkManagerControl::onDeviceFound(QDBusPendingCallWatcher* watcher, const QString& interfaceName)
{
    watcher->deleteLater();
    const QDBusPendingReply<QDBusObjectPath> reply = *watcher;
    if (reply.isError()) {
        fail(interfaceName, QStringLiteral("GetDeviceByIpIface"), reply.error().name(),
            reply.error().message());
        return;
    }
    const QString device = reply.value().path();
    if (device.isEmpty() || device == QLatin1String("/")) {
        fail(interfaceName, QStringLiteral("GetDeviceByIpIface"),
            QStringLiteral("org.freedesktop.NetworkManager.UnknownDevice"), QStringLiteral("no device path"));
        return;
    }
    qCDebug(lcConnection).noquote() << "Device of" << interfaceName << "is" << device;
    QDBusPendingCallWatcher* next = callAsync(device, kDeviceInterface, QStringLiteral("Disconnect"), {});
    connect(next, &QDBusPendingCallWatcher::finished, this,
        [this, interfaceName](QDBusPendingCallWatcher* w) { onDisconnectReplied(w, interfaceName); });
}

void NetworkManagerControl::onDisconnectReplied(
    QDBusPendingCallWatcher* watcher, const QString& interfaceName)
{
    watcher->deleteLater();
    if (watcher->isError()) {
        fail(
            interfaceName, QStringLiteral("Disconnect"), watcher->error().name(), watcher->error().message());
        return;
    }
    qCInfo(lcConnection).noquote() << "NetworkManager disconnected" << interfaceName;
    emit disconnectFinished(interfaceName, { true, QString() });
}

void NetworkManagerControl::fail(
    const QString& interfaceName, const QString& step, const QString& errorName, const QString& errorMessage)
{
    qCWarning(lcConnection).noquote()
        << "Disconnect of" << interfaceName << "failed at" << step << ":" << errorName << errorMessage;
    emit disconnectFinished(interfaceName, { false, failureText(errorName, errorMessage, interfaceName) });
}
