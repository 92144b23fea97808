// One datagram of the route netlink socket, as the Linux sampler reads the
// last counters of removed links from it.
#include "NetSource.h"

#include <linux/netlink.h>
#include <linux/rtnetlink.h>

#include <cstdlib>
#include <cstring>
#include <memory>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    // Aligned as the sampler's receive buffer, and exactly as long as the
    // datagram, so that a read past its end is caught.
    const std::unique_ptr<char[]> buffer(new char[size]);
    if (size > 0)
        std::memcpy(buffer.get(), data, size);
    const QList<velt::NetSource::RemovedLink> links = velt::parseRemovedLinks(buffer.get(), size);

    // Every link needs a message of its own with room for its counters.
    if (size_t(links.size()) * NLMSG_LENGTH(sizeof(ifinfomsg) + sizeof(rtnl_link_stats64)) > size)
        std::abort();
    for (const velt::NetSource::RemovedLink& link : links) {
        if (link.name.isEmpty() || link.name.contains(QChar(0)) || size_t(link.name.size()) > size)
            std::abort();
    }
    return 0;
}
