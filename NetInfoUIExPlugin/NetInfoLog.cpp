#include "NetInfoLog.h"

#include <QTime>

Q_LOGGING_CATEGORY(lcNetInfo, "netinfo.plugin")

QByteArray NetInfoLog::now()
{
    return QTime::currentTime().toString(QStringLiteral("hh:mm:ss:zzz")).toLatin1();
}
