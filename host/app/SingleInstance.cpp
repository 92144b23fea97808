#include "SingleInstance.h"

#include <QLocalSocket>
#include <QStandardPaths>
#include <QTextStream>

#include <unistd.h>

namespace {
const QByteArray kShow = QByteArrayLiteral("show\n");
}

QString SingleInstance::socketName()
{
    QString user = qEnvironmentVariable("USER");
    if (user.isEmpty())
        user = QString::number(qulonglong(getuid()));
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + QStringLiteral("/netinfo-")
        + user + QStringLiteral(".socket");
}

bool SingleInstance::activateRunning(const QString& name, int timeoutMs)
{
    QLocalSocket socket;
    socket.connectToServer(name);
    if (!socket.waitForConnected(timeoutMs))
        return false;
    socket.write(kShow);
    // The reply proves a live instance read the request, not a stale socket.
    return socket.waitForBytesWritten(timeoutMs) && socket.waitForReadyRead(timeoutMs)
        && socket.readAll() == "ok\n";
}

SingleInstance::SingleInstance(QObject* parent)
    : QObject(parent)
{
    connect(&m_server, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket* socket = m_server.nextPendingConnection()) {
            connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
            connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
                if (!socket->canReadLine())
                    return;
                if (socket->readLine() == kShow) {
                    socket->write("ok\n");
                    emit showRequested();
                }
                socket->disconnectFromServer();
            });
        }
    });
}

bool SingleInstance::listen(const QString& name)
{
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    QLocalServer::removeServer(name);
    if (m_server.listen(name))
        return true;
    QTextStream(stderr) << "netinfo: a second start cannot bring this window forward ("
                        << m_server.errorString() << ")\n";
    return false;
}
