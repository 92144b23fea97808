#include "ConnectionControl.h"

#include <QTimer>

ConnectionControl::ConnectionControl(QObject* parent)
    : QObject(parent)
{
    qRegisterMetaType<DisconnectResult>();
}

ConnectionControl::~ConnectionControl() = default;

void ConnectionControl::finishLater(const QString& interfaceName, const DisconnectResult& result)
{
    QTimer::singleShot(
        0, this, [this, interfaceName, result] { emit disconnectFinished(interfaceName, result); });
}
