#pragma once

#include <QLoggingCategory>

namespace velt {
Q_DECLARE_LOGGING_CATEGORY(lcLinux)
}
