// The plug-in's trace output. Trace lines are debug messages of the category
// "netinfo.plugin", so a host switches them on and off with logging rules.
#pragma once

#include <QByteArray>
#include <QLoggingCategory>

Q_DECLARE_LOGGING_CATEGORY(lcNetInfo)

namespace NetInfoLog {
// The current time as the trace lines show it: "hh:mm:ss:zzz".
QByteArray now();
} // namespace NetInfoLog

// Shorthands for the printf-style trace lines.
#define NETINFO_TRACE(...) qCDebug(lcNetInfo, __VA_ARGS__)
#define NETINFO_WARN(...) qCWarning(lcNetInfo, __VA_ARGS__)
