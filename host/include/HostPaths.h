// Where the host keeps per-user files. Shared by the host core and the SDK so
// that settings the host publishes are the ones the SDK reads.
#pragma once

#include <QStandardPaths>
#include <QString>

namespace HostPaths {

// Per-user data: the limit settings file and the usage ledger.
inline QString userDataDir()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
           + QStringLiteral("/netinfo");
}

// Per-user configuration: the host's own settings (INI format).
inline QString hostSettingsFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
           + QStringLiteral("/netinfo/netinfo-host.conf");
}

} // namespace HostPaths
