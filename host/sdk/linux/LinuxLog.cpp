#include "LinuxLog.h"

namespace velt {
Q_LOGGING_CATEGORY(lcLinux, "netinfo.sdk.linux")
}
