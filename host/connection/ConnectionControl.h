// Taking the data connection down on the user's request, whatever service
// manages it on this machine.
#pragma once

#include <QMetaType>
#include <QObject>
#include <QString>

struct DisconnectResult
{
    bool ok = false;
    QString message; // user-presentable; empty when ok
};
Q_DECLARE_METATYPE(DisconnectResult)

class ConnectionControl : public QObject
{
    Q_OBJECT
public:
    explicit ConnectionControl(QObject* parent = nullptr);
    ~ConnectionControl() override;

    // Whether a disconnect request could reach the managing service now.
    virtual bool canDisconnect() const = 0;

    // Starts taking interfaceName down. disconnectFinished follows exactly
    // once for every call, never from inside it, so callers may connect
    // afterwards; when disconnecting is not available it carries the reason.
    virtual void disconnectInterface(const QString& interfaceName) = 0;

signals:
    void disconnectFinished(const QString& interfaceName, const DisconnectResult& result);

protected:
    // Reports result for interfaceName from the event loop.
    void finishLater(const QString& interfaceName, const DisconnectResult& result);
};
