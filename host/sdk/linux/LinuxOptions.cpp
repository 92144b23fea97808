#include "LinuxOptions.h"

#include "HostPaths.h"

#include <QDateTime>

#include <ctime>

namespace velt {

namespace {
    qint64 bootTimeMs()
    {
        timespec now {};
        clock_gettime(CLOCK_BOOTTIME, &now);
        return qint64(now.tv_sec) * 1000 + now.tv_nsec / 1000000;
    }
} // namespace

LinuxOptions LinuxOptions::resolved() const
{
    LinuxOptions options = *this;
    if (options.databasePath.isEmpty())
        options.databasePath = HostPaths::userDataDir() + QStringLiteral("/usage.sqlite");
    if (options.settingsPath.isEmpty())
        options.settingsPath = HostPaths::hostSettingsFile();
    if (options.procRoot.isEmpty())
        options.procRoot = QStringLiteral("/proc");
    if (options.sysRoot.isEmpty())
        options.sysRoot = QStringLiteral("/sys");
    if (!options.wallClockMs)
        options.wallClockMs = [] { return QDateTime::currentMSecsSinceEpoch(); };
    if (!options.monotonicMs)
        options.monotonicMs = bootTimeMs;
    if (options.interval.count() < 0)
        options.interval = std::chrono::milliseconds(1000);
    return options;
}

} // namespace velt
