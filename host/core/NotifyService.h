// The host's notification service: turns the events plug-ins send into a Qt
// signal that the host's components connect to.
#pragma once

#include "INotifyService.h"
#include "hostcore_export.h"

#include <QObject>

class HOSTCORE_EXPORT NotifyService : public QObject, public INotifyService
{
    Q_OBJECT
    Q_INTERFACES(INotifyService)
public:
    explicit NotifyService(QObject* parent = nullptr);

    int Notify(const QString& target, unsigned int code, quintptr param1, quintptr param2) override;
    // Owned by the host (HostServices), never by the plug-in that found it.
    void Release() override { }
    int GetLastError() override { return 0; }

signals:
    void notified(const QString& target, uint code, quintptr param1, quintptr param2);
};
