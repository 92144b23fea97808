// The plug-in's trace and warning lines reach the output exactly as the
// plug-in writes them, without the "netinfo.plugin: " that Qt's default
// pattern puts before a named category. The category stays on the message,
// so logging rules still switch the lines on and off; everything else keeps
// Qt's formatting and destination (console or journal).
// A few lines that are expected here but read like faults to a user are
// dropped: only those exact texts, so Qt's other warnings of the same kind
// still reach the output.
#pragma once

#include <QLoggingCategory>
#include <QString>
#include <QtGlobal>

#include <cstdio>
#include <cstring>

namespace PluginMessageFormat {

inline QtMessageHandler previousHandler = nullptr;

// The view keeps two connections that Qt refuses, on purpose (its reset
// reaches the same slot another way); the offscreen platform of headless
// runs cannot pass size hints on and says so for every window.
// A refused connection is followed by lines naming its objects; those go too.
inline bool isExpected(const QMessageLogContext& context, const QString& message)
{
    thread_local bool droppedConnect = false;
    if (context.category && std::strcmp(context.category, "qt.core.qobject.connect") == 0) {
        if (droppedConnect && message.startsWith(QLatin1String("QObject::connect:  (")))
            return true;
        droppedConnect
            = message.contains(QLatin1String("No such slot NetInfoUILogic::onResetButtonClicked()"))
            || message.contains(QLatin1String("No such signal GraphWidget::ResetButtonClicked()"));
        return droppedConnect;
    }
    droppedConnect = false;
    return message == QLatin1String("This plugin does not support propagateSizeHints()");
}

inline void handle(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (isExpected(context, message))
        return;
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
