#include "CommonUtils.h"

#include "HostLog.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace {

QString executableDir()
{
    if (QCoreApplication::instance())
        return QCoreApplication::applicationDirPath();
    // Before (or without) an application object, e.g. in static initialisers.
    const QFileInfo exe(QStringLiteral("/proc/self/exe"));
    const QString target = exe.canonicalFilePath();
    if (target.isEmpty()) {
        qCWarning(lcHost, "CommonUtils: cannot find the running executable; using the current directory");
        return QDir::currentPath();
    }
    return QFileInfo(target).absolutePath();
}

} // namespace

QString CommonUtils::GetPluginLibraryPath()
{
    const QString overridden = qEnvironmentVariable("NETINFO_LIBRARY_PATH");
    if (!overridden.isEmpty())
        return QDir::cleanPath(QDir(overridden).absolutePath());
    return QDir::cleanPath(QDir(executableDir() + QStringLiteral("/..")).absolutePath());
}
