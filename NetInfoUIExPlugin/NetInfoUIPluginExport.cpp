// The module's exports beyond the moc-generated qt_plugin_instance and
// metadata, which come with CNetInfoUIPlugin from the core library.
#include <QtGlobal>

#define NETINFO_STR2(x) #x
#define NETINFO_STR(x) NETINFO_STR2(x)

#if defined(__x86_64__)
#define NETINFO_BUILD_ARCH "x86_64"
#elif defined(__aarch64__)
#define NETINFO_BUILD_ARCH "arm64"
#elif defined(__i386__)
#define NETINFO_BUILD_ARCH "i386"
#elif defined(__arm__)
#define NETINFO_BUILD_ARCH "arm"
#else
#define NETINFO_BUILD_ARCH "unknown"
#endif

#if defined(__clang__)
#define NETINFO_BUILD_COMPILER "clang-" NETINFO_STR(__clang_major__)
#elif defined(__GNUC__)
#define NETINFO_BUILD_COMPILER "g++-" NETINFO_STR(__GNUC__)
#else
#define NETINFO_BUILD_COMPILER "unknown"
#endif

#if defined(Q_OS_LINUX)
#define NETINFO_BUILD_OS "linux"
#else
#define NETINFO_BUILD_OS "unix"
#endif

// Hosts from the Qt 4 era check a module against this text before they load
// it: four "key=value" fields, one a line, joined by "\n" without a trailing
// newline, as Qt 4's own macro laid them out. The build key names the
// architecture, system, compiler and the Qt the module was built with.
extern "C" Q_DECL_EXPORT const char* qt_plugin_query_verification_data()
{
    static const char data[] = "pattern=QT_PLUGIN_VERIFICATION_DATA\n"
                               "version=4.6.2\n"
                               "debug=false\n"
                               "buildkey=" NETINFO_BUILD_ARCH " " NETINFO_BUILD_OS " " NETINFO_BUILD_COMPILER
                               " full-config qt-" QT_VERSION_STR;
    return data;
}
