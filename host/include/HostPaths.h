// Where the host keeps per-user files. Shared by the host core and the SDK so
// that settings the host publishes are the ones the SDK reads.
#pragma once

#include <QStandardPaths>
#include <QString>
#include <QtGlobal>

namespace HostPaths {

// Without HOME, Qt places per-user files under the root folder
// (/.local/share/netinfo); the programs refuse to start instead. Explicit
// XDG_DATA_HOME and XDG_CONFIG_HOME are enough. Empty when all is well.
inline QString homeProblem()
{
    if (!qEnvironmentVariableIsEmpty("HOME")
        || (!qEnvironmentVariableIsEmpty("XDG_DATA_HOME") && !qEnvironmentVariableIsEmpty("XDG_CONFIG_HOME")))
        return QString();
    return QStringLiteral("HOME is not set, so there is no folder for your files; "
                          "set HOME (or both XDG_DATA_HOME and XDG_CONFIG_HOME)");
}

// Per-user data: the limit settings file and the usage ledger.
inline QString userDataDir()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/netinfo");
}

// Per-user configuration: the host's own settings (INI format).
inline QString hostSettingsFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/netinfo/netinfo-host.conf");
}

} // namespace HostPaths
