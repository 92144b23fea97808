#include "DesktopNotifier.h"

#include <QDBusMessage>
#include <QDBusReply>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcNotifier, "netinfo.notifier")

namespace {
const QString kService = QStringLiteral("org.freedesktop.Notifications");
const QString kPath = QStringLiteral("/org/freedesktop/Notifications");
const QString kInterface = QStringLiteral("org.freedesktop.Notifications");
} // namespace

DesktopNotifier::DesktopNotifier(const QDBusConnection& bus, QObject* parent)
    : QObject(parent)
    , m_bus(bus)
{
    m_bus.connect(kService, kPath, kInterface, QStringLiteral("ActionInvoked"), this,
        SLOT(onActionInvoked(uint, QString)));
    m_bus.connect(
        kService, kPath, kInterface, QStringLiteral("NotificationClosed"), this, SLOT(onClosed(uint, uint)));
}

bool DesktopNotifier::hasActions()
{
    if (m_actions < 0) {
        const QDBusReply<QStringList> reply = m_bus.call(
            QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("GetCapabilities")),
            QDBus::Block, 5000);
        // A server not up yet is asked again next time.
        if (!reply.isValid())
            return false;
        m_actions = reply.value().contains(QLatin1String("actions")) ? 1 : 0;
    }
    return m_actions == 1;
}

bool DesktopNotifier::notify(const QString& summary, const QString& body, const QString& device)
{
    QStringList actions;
    if (hasActions()) {
        if (!device.isEmpty())
            actions << QLatin1String(ActionDisconnect) << tr("Disconnect");
        actions << QLatin1String(ActionOpen) << tr("Open");
    }
    QDBusMessage call = QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("Notify"));
    call << QStringLiteral("NetInfo") << uint(0) << QStringLiteral("netinfo") << summary << body << actions
         << QVariantMap { { QStringLiteral("urgency"), QVariant::fromValue(uchar(1)) } } << int(-1);
    const QDBusReply<uint> reply = m_bus.call(call, QDBus::Block, 5000);
    if (!reply.isValid()) {
        qCWarning(lcNotifier, "no desktop notification (%s): %s", qUtf8Printable(reply.error().name()),
            qUtf8Printable(summary));
        return false;
    }
    m_devices.insert(reply.value(), device);
    return true;
}

void DesktopNotifier::onActionInvoked(uint id, const QString& action)
{
    const auto it = m_devices.constFind(id);
    if (it == m_devices.cend())
        return; // another program's notification
    if (action == QLatin1String(ActionDisconnect))
        emit disconnectRequested(it.value());
    else if (action == QLatin1String(ActionOpen))
        emit openRequested();
}

void DesktopNotifier::onClosed(uint id, uint)
{
    m_devices.remove(id);
}
