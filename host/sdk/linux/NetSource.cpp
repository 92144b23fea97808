#include "NetSource.h"

#include "LinuxLog.h"

#include <QFile>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <tuple>
#include <utility>

#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <ifaddrs.h>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace velt {

namespace {
    constexpr unsigned kRouteUp = 0x0001; // RTF_UP
    constexpr unsigned kRouteReject = 0x0200; // RTF_REJECT: the kernel's "unreachable" placeholders

    bool parseHex(const QByteArray& field, quint64& value)
    {
        bool ok = false;
        value = field.toULongLong(&ok, 16);
        return ok;
    }
} // namespace

QList<DeviceCounters> parseNetDev(const QByteArray& text, int* malformedLines)
{
    // Walks the buffer in place: this runs every second.
    QList<DeviceCounters> devices;
    int malformed = 0;
    const char* p = text.constData();
    const char* const end = p + text.size();
    while (p < end) {
        const char* eol = static_cast<const char*>(memchr(p, '\n', size_t(end - p)));
        if (!eol)
            eol = end;
        const char* colon = static_cast<const char*>(memchr(p, ':', size_t(eol - p)));
        if (colon) { // the two header lines have none
            const char* nameStart = p;
            while (nameStart < colon && *nameStart == ' ')
                ++nameStart;
            quint64 fields[9] = {};
            int count = 0;
            const char* f = colon + 1;
            while (count < 16 && f < eol) {
                while (f < eol && (*f == ' ' || *f == '\t'))
                    ++f;
                if (f == eol)
                    break;
                const char* digits = f;
                quint64 value = 0;
                bool overflow = false;
                while (f < eol && *f >= '0' && *f <= '9') {
                    const quint64 digit = quint64(*f - '0');
                    overflow = overflow || value > (~quint64(0) - digit) / 10;
                    value = value * 10 + digit;
                    ++f;
                }
                if (f == digits || overflow || (f < eol && *f != ' ' && *f != '\t'))
                    break;
                if (count < 9)
                    fields[count] = value;
                ++count;
            }
            if (count >= 16 && nameStart < colon) {
                DeviceCounters device;
                device.name = QString::fromUtf8(nameStart, int(colon - nameStart)).trimmed();
                device.received = fields[0];
                device.sent = fields[8];
                devices.append(device);
            } else {
                ++malformed;
            }
        }
        p = eol + 1;
    }
    if (malformedLines)
        *malformedLines = malformed;
    return devices;
}

QString parseDefaultRoute(const QByteArray& ipv4Routes, const QByteArray& ipv6Routes)
{
    QByteArray best;
    quint64 bestMetric = ULLONG_MAX;
    auto consider = [&](const QByteArray& name, quint64 flags, quint64 metric) {
        if (name.isEmpty() || name == "lo" || !(flags & kRouteUp) || (flags & kRouteReject))
            return;
        if (best.isEmpty() || metric < bestMetric) {
            best = name;
            bestMetric = metric;
        }
    };

    // Iface Destination Gateway Flags RefCnt Use Metric Mask ...; hex fields.
    for (const QByteArray& line : ipv4Routes.split('\n')) {
        const QList<QByteArray> f = line.simplified().split(' ');
        quint64 destination, flags, mask;
        if (f.size() < 8 || !parseHex(f.at(1), destination) || !parseHex(f.at(3), flags)
            || !parseHex(f.at(7), mask))
            continue;
        bool metricOk = false;
        const quint64 metric = f.at(6).toULongLong(&metricOk);
        if (metricOk && destination == 0 && mask == 0)
            consider(f.at(0), flags, metric);
    }
    if (!best.isEmpty())
        return QString::fromUtf8(best);

    // destination prefix-length source prefix-length next-hop metric refcnt use flags iface
    for (const QByteArray& line : ipv6Routes.split('\n')) {
        const QList<QByteArray> f = line.simplified().split(' ');
        quint64 prefix, metric, flags;
        if (f.size() < 10 || !parseHex(f.at(1), prefix) || !parseHex(f.at(5), metric)
            || !parseHex(f.at(8), flags))
            continue;
        if (prefix == 0 && f.at(0).count('0') == f.at(0).size())
            consider(f.at(9), flags, metric);
    }
    return QString::fromUtf8(best);
}

bool isMobileBroadbandName(const QString& name)
{
    for (const char* prefix : { "ww", "ppp", "usb", "rmnet" }) {
        if (name.startsWith(QLatin1String(prefix)))
            return true;
    }
    return false;
}

LinkState systemLinkState(const QString& name)
{
    LinkState state;
    const QByteArray wanted = name.toUtf8();
    ifaddrs* list = nullptr;
    if (getifaddrs(&list) != 0)
        return state;
    for (const ifaddrs* entry = list; entry; entry = entry->ifa_next) {
        if (!entry->ifa_name || wanted != entry->ifa_name)
            continue;
        state.exists = true;
        state.up = entry->ifa_flags & IFF_UP;
        state.running = entry->ifa_flags & IFF_RUNNING;
        if (!entry->ifa_addr)
            continue;
        if (entry->ifa_addr->sa_family == AF_INET) {
            state.hasAddress = true;
        } else if (entry->ifa_addr->sa_family == AF_INET6) {
            // A link-local address alone does not reach the network.
            const auto* address = reinterpret_cast<const sockaddr_in6*>(entry->ifa_addr);
            if (!IN6_IS_ADDR_LINKLOCAL(&address->sin6_addr))
                state.hasAddress = true;
        }
    }
    freeifaddrs(list);
    if (state.exists)
        state.ifindex = if_nametoindex(wanted.constData());
    return state;
}

NetSource::NetSource(QString procRoot, LinkStateFn linkState, QString sysRoot)
    : m_root(std::move(procRoot))
    , m_sysRoot(std::move(sysRoot))
    , m_linkState(linkState ? std::move(linkState) : LinkStateFn(systemLinkState))
    , m_cached(!linkState && m_root == QLatin1String("/proc"))
{
    if (!m_cached)
        return;
    m_netlinkFd = socket(AF_NETLINK, SOCK_RAW | SOCK_NONBLOCK | SOCK_CLOEXEC, NETLINK_ROUTE);
    sockaddr_nl local {};
    local.nl_family = AF_NETLINK;
    local.nl_groups
        = RTMGRP_LINK | RTMGRP_IPV4_IFADDR | RTMGRP_IPV6_IFADDR | RTMGRP_IPV4_ROUTE | RTMGRP_IPV6_ROUTE;
    if (m_netlinkFd >= 0 && bind(m_netlinkFd, reinterpret_cast<const sockaddr*>(&local), sizeof local) != 0) {
        ::close(m_netlinkFd);
        m_netlinkFd = -1;
    }
    if (m_netlinkFd < 0) {
        qCWarning(
            lcLinux, "LinuxBackend: no link change notifications (%s); asking every sample", strerror(errno));
        m_cached = false;
    }
}

NetSource::~NetSource()
{
    forget();
    for (int fd : { m_devFd, m_netlinkFd }) {
        if (fd >= 0)
            ::close(fd);
    }
}

QByteArray NetSource::readFile(const QString& relativePath) const
{
    QFile file(m_root + QLatin1Char('/') + relativePath);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

bool NetSource::isReadable() const
{
    return QFile::exists(m_root + QStringLiteral("/self/net/dev"));
}

void NetSource::setWanted(const QStringList& names)
{
    m_wanted = names;
}

bool NetSource::readDevices(QList<DeviceCounters>& devices)
{
    if (m_cached && m_devicesKnown && readWanted()) {
        devices = m_devices;
        return true;
    }
    if (!readTable(m_devices))
        return false;
    m_devicesKnown = m_cached;
    ++m_devicesVersion;
    devices = m_devices;
    return true;
}

// The wanted interfaces' counters from their kept sysfs files; false when
// one cannot be read (gone before its netlink message arrived).
bool NetSource::readWanted()
{
    for (DeviceCounters& device : m_devices) {
        if (!m_wanted.contains(device.name))
            continue;
        auto files = m_counterFiles.find(device.name);
        if (files == m_counterFiles.end()) {
            const QByteArray base = QFile::encodeName(
                m_sysRoot + QStringLiteral("/class/net/") + device.name + QStringLiteral("/statistics/"));
            files = m_counterFiles.insert(device.name,
                CounterFiles { ::open((base + "rx_bytes").constData(), O_RDONLY | O_CLOEXEC),
                    ::open((base + "tx_bytes").constData(), O_RDONLY | O_CLOEXEC) });
        }
        for (auto [fd, value] :
            { std::pair { files->received, &device.received }, std::pair { files->sent, &device.sent } }) {
            char text[24];
            const ssize_t size = fd < 0 ? -1 : pread(fd, text, sizeof text - 1, 0);
            if (size <= 0)
                return false;
            text[size] = 0;
            char* end = nullptr;
            *value = strtoull(text, &end, 10);
            if (end == text)
                return false;
        }
    }
    return true;
}

bool NetSource::readTable(QList<DeviceCounters>& devices)
{
    const QString path = m_root + QStringLiteral("/self/net/dev");
    // A fake root's file is replaced between samples: open it each time.
    if (m_devFd < 0 || !m_cached) {
        if (m_devFd >= 0)
            ::close(m_devFd);
        m_devFd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    }
    qint64 size = -1;
    if (m_devFd >= 0) {
        if (m_buffer.size() < 4096)
            m_buffer.resize(4096);
        for (;;) {
            size = pread(m_devFd, m_buffer.data(), size_t(m_buffer.size()), 0);
            if (size < m_buffer.size() || m_buffer.size() >= (1 << 22))
                break;
            m_buffer.resize(m_buffer.size() * 2); // many interfaces: read it whole
        }
    }
    if (size < 0) {
        if (!std::exchange(m_warnedUnreadable, true))
            qCWarning(lcLinux, "LinuxBackend: cannot read interface counters from %s: %s",
                qUtf8Printable(path), strerror(errno));
        if (m_devFd >= 0)
            ::close(m_devFd);
        m_devFd = -1;
        return false;
    }
    m_warnedUnreadable = false;
    int malformed = 0;
    devices = parseNetDev(QByteArray::fromRawData(m_buffer.constData(), int(size)), &malformed);
    if (malformed > 0 && !std::exchange(m_warnedMalformed, true))
        qCWarning(
            lcLinux, "LinuxBackend: skipped %d unreadable line(s) of %s", malformed, qUtf8Printable(path));
    return true;
}

void NetSource::forget()
{
    for (const CounterFiles& files : std::as_const(m_counterFiles)) {
        for (int fd : { files.received, files.sent }) {
            if (fd >= 0)
                ::close(fd);
        }
    }
    m_counterFiles.clear();
    m_devicesKnown = false;
    m_defaultRouteKnown = false;
    m_linkStates.clear();
    m_speeds.clear();
}

bool NetSource::linksChanged()
{
    if (!m_cached) {
        forget();
        return true;
    }
    bool changed = false;
    alignas(nlmsghdr) char buffer[8192];
    for (;;) {
        const ssize_t got = recv(m_netlinkFd, buffer, sizeof buffer, MSG_DONTWAIT);
        if (got > 0 || (got < 0 && errno == ENOBUFS)) { // ENOBUFS: events were lost
            changed = true;
            if (got > 0)
                noteRemovedLinks(buffer, size_t(got));
            continue;
        }
        if (got < 0 && errno == EINTR)
            continue;
        break;
    }
    if (changed)
        forget();
    return changed;
}

// A removed link's last counters come with the message that announces it:
// the traffic since the last sample is not lost with the link.
void NetSource::noteRemovedLinks(const char* data, size_t size)
{
    m_removed.append(parseRemovedLinks(data, size));
}

QList<NetSource::RemovedLink> parseRemovedLinks(const char* data, size_t size)
{
    QList<NetSource::RemovedLink> links;
    size_t offset = 0;
    while (size - offset >= sizeof(nlmsghdr)) {
        const auto* header = reinterpret_cast<const nlmsghdr*>(data + offset);
        if (header->nlmsg_len < sizeof(nlmsghdr) || header->nlmsg_len > size - offset)
            break; // a truncated datagram
        // The next message starts at the aligned length, which for the last
        // one may lie past the end of the datagram.
        const size_t aligned = (size_t(header->nlmsg_len) + NLMSG_ALIGNTO - 1) & ~size_t(NLMSG_ALIGNTO - 1);
        offset += std::min(aligned, size - offset);
        if (header->nlmsg_type != RTM_DELLINK || header->nlmsg_len < NLMSG_LENGTH(sizeof(ifinfomsg)))
            continue;
        const auto* info = static_cast<const ifinfomsg*>(NLMSG_DATA(header));
        NetSource::RemovedLink removed;
        removed.ifindex = quint32(info->ifi_index);
        bool haveStats = false;
        int length = int(IFLA_PAYLOAD(header));
        for (auto* attribute = IFLA_RTA(info); RTA_OK(attribute, length);
             attribute = RTA_NEXT(attribute, length)) {
            if (attribute->rta_type == IFLA_IFNAME) {
                // The kernel ends the name with a NUL; nothing past the attribute is read if not.
                const auto* name = static_cast<const char*>(RTA_DATA(attribute));
                removed.name = QString::fromUtf8(name, int(qstrnlen(name, RTA_PAYLOAD(attribute))));
            } else if (attribute->rta_type == IFLA_STATS64
                && RTA_PAYLOAD(attribute) >= sizeof(rtnl_link_stats64)) {
                rtnl_link_stats64 stats;
                memcpy(&stats, RTA_DATA(attribute), sizeof stats);
                removed.received = stats.rx_bytes;
                removed.sent = stats.tx_bytes;
                haveStats = true;
            }
        }
        if (haveStats && !removed.name.isEmpty())
            links.append(removed);
    }
    return links;
}

QList<NetSource::RemovedLink> NetSource::takeRemovedLinks()
{
    return std::exchange(m_removed, {});
}

QString NetSource::defaultRouteInterface()
{
    if (!m_cached || !m_defaultRouteKnown) {
        m_defaultRoute = parseDefaultRoute(
            readFile(QStringLiteral("self/net/route")), readFile(QStringLiteral("self/net/ipv6_route")));
        m_defaultRouteKnown = true;
    }
    return m_defaultRoute;
}

LinkState NetSource::linkState(const QString& name)
{
    if (name.isEmpty())
        return LinkState();
    if (!m_cached)
        return m_linkState(name);
    auto known = m_linkStates.constFind(name);
    if (known == m_linkStates.constEnd())
        known = m_linkStates.insert(name, m_linkState(name));
    return *known;
}

quint64 NetSource::linkBytesPerSecond(const QString& name)
{
    auto known = m_speeds.constFind(name);
    if (known != m_speeds.constEnd())
        return *known;
    QFile file(m_sysRoot + QStringLiteral("/class/net/") + name + QStringLiteral("/speed"));
    bool ok = false;
    // Mb/s; -1 or an error (EINVAL) while the link is down or has no notion of speed.
    const qint64 megabits = file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toLongLong(&ok) : 0;
    const quint64 bytes = ok && megabits > 0 ? quint64(megabits) * 125000 : 0;
    m_speeds.insert(name, bytes);
    return bytes;
}

QByteArray NetSource::bootId() const
{
    return readFile(QStringLiteral("sys/kernel/random/boot_id")).trimmed();
}

} // namespace velt
