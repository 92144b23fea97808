// The host core's log output: category "netinfo.host", so that scripted runs
// can keep or silence it with logging rules.
#pragma once

#include <QLoggingCategory>

Q_DECLARE_LOGGING_CATEGORY(lcHost)
