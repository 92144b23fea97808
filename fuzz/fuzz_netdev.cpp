// The kernel's tables as the Linux sampler reads them: net/dev and the
// IPv4/IPv6 route tables, split from one input.
#include "NetSource.h"

#include <QByteArray>

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), int(size));
    int malformed = 0;
    const QList<velt::DeviceCounters> devices = velt::parseNetDev(bytes, &malformed);
    for (const velt::DeviceCounters& device : devices) {
        if (device.name.isEmpty())
            std::abort(); // a line without a name is malformed, never a device
    }
    const int split = bytes.indexOf('\0');
    const QByteArray ipv4 = split < 0 ? bytes : bytes.left(split);
    const QByteArray ipv6 = split < 0 ? QByteArray() : bytes.mid(split + 1);
    const QString route = velt::parseDefaultRoute(ipv4, ipv6);
    if (route.contains(QLatin1Char('\n')))
        std::abort();
    return 0;
}
