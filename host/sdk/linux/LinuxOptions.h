// How a Linux backend is set up: everything it takes from the outside world
// can be replaced, so tests run it on fixture files and a fixed clock.
#pragma once

#include "LinkInfo.h"
#include "NetSource.h"
#include "veltsdk.h"

#include <QString>

#include <chrono>
#include <functional>

namespace velt {

struct VELTSDK_EXPORT LinuxOptions
{
    // Interfaces chosen explicitly (--interface, repeatable); empty: the
    // metered links, else the mobile names, else the default route's.
    QStringList interfaceNames;
    // Empty: no NetworkManager, the interface names decide what is metered.
    LinkInfoFn linkInfo;
    RecordingRole role = RecordingRole::Auto;
    // Empty: HostPaths::userDataDir() + "/usage.sqlite".
    QString databasePath;
    // Empty: HostPaths::hostSettingsFile(), where the period start days are.
    QString settingsPath;
    QString procRoot = QStringLiteral("/proc");
    QString sysRoot = QStringLiteral("/sys"); // class/net/<name>/speed
    NetSource::LinkStateFn linkState; // empty: getifaddrs
    std::function<qint64()> wallClockMs; // empty: the system clock
    // Measures intervals; empty: CLOCK_BOOTTIME, which keeps running in
    // suspend so that a resume shows as a gap.
    std::function<qint64()> monotonicMs;
    // Sampling period; zero samples only on LinuxBackend::tickNow().
    std::chrono::milliseconds interval { 1000 };
    // Longest time usage stays unwritten (lost at most on a crash).
    qint64 commitIntervalMs = 10000;

    // A copy with every empty field given its default.
    LinuxOptions resolved() const;
};

} // namespace velt
