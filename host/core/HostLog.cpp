#include "HostLog.h"

Q_LOGGING_CATEGORY(lcHost, "netinfo.host")
