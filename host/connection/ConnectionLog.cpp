#include "ConnectionLog.h"

Q_LOGGING_CATEGORY(lcConnection, "netinfo.connection")
