// The plug-in's trace and warning lines reach the output exactly as the
// plug-in writes them, without the "netinfo.plugin: " that Qt's default
// pattern puts before a named category. The category stays on the message,
// so logging rules still switch the lines on and off; everything else keeps
// Qt's formatting and destination (console or journal).
#pragma once

#include <QLoggingCategory>
#include <QString>
#include <QtGlobal>

#include <cstdio>
#include <cstring>

namespace PluginMessageFormat {

inline QtMessageHandler previousHandler = nullptr;

inline void handle(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    // Qt's patterns leave out the category called "default".
    const bool bare = context.category && std::strcmp(context.category, "netinfo.plugin") == 0;
    const QMessageLogContext plain(context.file, context.line, context.function, "default");
    const QMessageLogContext& used = bare ? plain : context;
    if (previousHandler) {
        previousHandler(type, used, message);
        return;
    }
    std::fprintf(stderr, "%s\n", qUtf8Printable(qFormatLogMessage(type, used, message)));
}

// At start, before any plug-in is loaded; installing again keeps the chain.
inline void install()
{
    const QtMessageHandler previous = qInstallMessageHandler(handle);
    if (previous != handle)
        previousHandler = previous;
}

} // namespace PluginMessageFormat
