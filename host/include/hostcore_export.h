#pragma once

#include <QtGlobal>

#if defined(HOSTCORE_LIBRARY)
#define HOSTCORE_EXPORT Q_DECL_EXPORT
#else
#define HOSTCORE_EXPORT Q_DECL_IMPORT
#endif
