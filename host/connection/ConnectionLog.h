// Log output of the connection layer, category "netinfo.connection".
#pragma once

#include <QLoggingCategory>

Q_DECLARE_LOGGING_CATEGORY(lcConnection)
