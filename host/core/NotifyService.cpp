#include "NotifyService.h"

#include "HostLog.h"

NotifyService::NotifyService(QObject* parent)
    : QObject(parent)
{ }

int NotifyService::Notify(const QString& target, unsigned int code, quintptr param1, quintptr param2)
{
    qCDebug(lcHost, "NotifyService: event %u to %s", code, qUtf8Printable(target));
    emit notified(target, code, param1, param2);
    return 0;
}
