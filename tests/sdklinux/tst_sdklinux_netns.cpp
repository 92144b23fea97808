// The Linux backend against the real kernel, in a private network namespace:
// known traffic over a veth pair, the interface deleted and re-created, the
// backend restarted; the ledger must match the kernel's counters exactly.
// Needs root (CAP_SYS_ADMIN, CAP_NET_ADMIN) and ip from iproute2.
#include "LinuxBackend.h"
#include "UsageLedger.h"

#include <QtTest>

#include <arpa/inet.h>
#include <fcntl.h>
#include <sched.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>
#include <thread>

using namespace velt;

namespace {
const QString kLocal = QStringLiteral("10.77.0.1");
const QString kPeer = QStringLiteral("10.77.0.2");
constexpr int kPort = 5901;

struct Counters
{
    quint64 received = 0;
    quint64 sent = 0;
};

// The test's own reading of the kernel's table, independent of the backend's parser.
Counters kernelCounters(const char* name)
{
    QFile file(QStringLiteral("/proc/self/net/dev"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    for (const QByteArray& line : file.readAll().split('\n')) {
        char device[64] = {};
        unsigned long long rx = 0, tx = 0, skip = 0;
        if (std::sscanf(line.constData(), " %63[^:]: %llu %llu %llu %llu %llu %llu %llu %llu %llu", device, &rx, &skip,
                        &skip, &skip, &skip, &skip, &skip, &skip, &tx) == 10 && qstrcmp(device, name) == 0)
            return {rx, tx};
    }
    return {};
}

struct ConnectedSink : TickSink
{
    std::atomic<int> connected{-1};
    void tick(bool isConnected) override { connected = isConnected ? 1 : 0; }
};

int boundSocket(const QString& address)
{
    const int fd = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    sockaddr_in local{};
    local.sin_family = AF_INET;
    local.sin_port = htons(kPort);
    inet_pton(AF_INET, qPrintable(address), &local.sin_addr);
    if (fd >= 0 && bind(fd, reinterpret_cast<sockaddr*>(&local), sizeof local) != 0) {
        close(fd);
        return -1;
    }
    return fd;
}

bool sendDatagrams(int fd, const QString& to, int count, int size)
{
    sockaddr_in peer{};
    peer.sin_family = AF_INET;
    peer.sin_port = htons(kPort);
    inet_pton(AF_INET, qPrintable(to), &peer.sin_addr);
    const QByteArray payload(size, 'x');
    for (int i = 0; i < count; ++i) {
        if (sendto(fd, payload.constData(), payload.size(), 0, reinterpret_cast<sockaddr*>(&peer), sizeof peer) != size)
            return false;
    }
    return true;
}
} // namespace

class TstSdkLinuxNetns : public QObject
{
    Q_OBJECT

    bool run(const QStringList& arguments)
    {
        QProcess ip;
        ip.start(QStringLiteral("ip"), arguments);
        const bool ok = ip.waitForFinished(10000) && ip.exitStatus() == QProcess::NormalExit && ip.exitCode() == 0;
        if (!ok)
            qWarning("ip %s: %s", qPrintable(arguments.join(' ')), ip.readAllStandardError().constData());
        return ok;
    }

    // A veth pair va (here) / vb (peer namespace) with fixed neighbours, so
    // that nothing but the test's datagrams crosses it.
    bool createLink()
    {
        const QStringList n = {QStringLiteral("-n"), m_peerNs};
        return run({"link", "add", "va", "address", "02:00:00:00:77:01", "type", "veth", "peer", "name", "vb",
                    "address", "02:00:00:00:77:02", "netns", m_peerNs})
            && run({"addr", "add", kLocal + "/24", "dev", "va"}) && run({"link", "set", "va", "up"})
            && run({"neigh", "replace", kPeer, "lladdr", "02:00:00:00:77:02", "dev", "va", "nud", "permanent"})
            && run({"route", "add", "default", "via", kPeer, "dev", "va"})
            && run(n + QStringList{"addr", "add", kPeer + "/24", "dev", "vb"})
            && run(n + QStringList{"link", "set", "vb", "up"})
            && run(n + QStringList{"neigh", "replace", kLocal, "lladdr", "02:00:00:00:77:01", "dev", "vb", "nud", "permanent"});
    }

    // count datagrams of size bytes out, half as many back; the peer's
    // socket is made in its namespace.
    bool traffic(int count, int size)
    {
        int peerFd = -1;
        std::thread([&] {
            const int ns = open(qPrintable(QStringLiteral("/run/netns/") + m_peerNs), O_RDONLY | O_CLOEXEC);
            if (ns >= 0 && setns(ns, CLONE_NEWNET) == 0)
                peerFd = boundSocket(kPeer);
            if (ns >= 0)
                close(ns);
        }).join();
        const int localFd = boundSocket(kLocal);
        const bool ok = peerFd >= 0 && localFd >= 0 && sendDatagrams(localFd, kPeer, count, size)
            && sendDatagrams(peerFd, kLocal, count / 2, size);
        for (int fd : {peerFd, localFd}) {
            if (fd >= 0)
                close(fd);
        }
        QTest::qWait(50); // let the softirqs deliver
        return ok;
    }

    void add(Counters& total, const Counters& from, const Counters& to)
    {
        total.received += to.received - from.received;
        total.sent += to.sent - from.sent;
    }

private slots:
    void initTestCase()
    {
        if (geteuid() != 0)
            QSKIP("needs root to create network namespaces and veth pairs");
        if (QStandardPaths::findExecutable(QStringLiteral("ip")).isEmpty())
            QSKIP("needs ip from iproute2");
        if (unshare(CLONE_NEWNET) != 0)
            QSKIP(qPrintable(QStringLiteral("cannot create a network namespace: %1").arg(strerror(errno))));
        // No IPv6 chatter (router solicitations, DAD) on the test link.
        for (const char* path : {"/proc/sys/net/ipv6/conf/default/disable_ipv6", "/proc/sys/net/ipv6/conf/all/disable_ipv6"}) {
            QFile file{QString::fromLatin1(path)};
            if (file.open(QIODevice::WriteOnly))
                file.write("1");
        }
        m_peerNs = QStringLiteral("netinfo-peer-%1").arg(getpid());
        if (!run({"netns", "add", m_peerNs}))
            QSKIP("cannot create a named network namespace (ip netns add)");
        m_created = true;
        QProcess::execute(QStringLiteral("ip"), {"netns", "exec", m_peerNs, "sh", "-c",
                                                 "echo 1 > /proc/sys/net/ipv6/conf/default/disable_ipv6"});
        QVERIFY(run({"link", "set", "lo", "up"}));
    }

    void cleanupTestCase()
    {
        if (m_created)
            run({"netns", "del", m_peerNs});
    }

    void ledgerMatchesKernelCounters()
    {
        QTemporaryDir dir;
        QVERIFY(createLink());
        LinuxOptions options;
        options.databasePath = dir.filePath(QStringLiteral("usage.sqlite"));
        options.settingsPath = dir.filePath(QStringLiteral("netinfo-host.conf"));
        options.interval = std::chrono::milliseconds(0); // samples when told, so the test knows when

        Counters expected;
        ConnectedSink sink;
        auto backend = std::make_unique<LinuxBackend>(options);
        QVERIFY(backend->isSupported());
        Counters before = kernelCounters("va");
        backend->start(&sink);

        QVERIFY(traffic(200, 1000));
        QVERIFY(backend->tickNow());
        QCOMPARE(backend->interfaceName(), QStringLiteral("va")); // the default route's
        QCOMPARE(sink.connected.load(), 1);
        Counters now = kernelCounters("va");
        QVERIFY(now.sent >= 200 * 1000 && now.received >= 100 * 1000);
        add(expected, before, now);

        // Deleted and re-created between two samples: the new one counts from zero.
        QVERIFY(run({"link", "del", "va"}));
        QVERIFY(createLink());
        QVERIFY(traffic(100, 700));
        QVERIFY(backend->tickNow());
        now = kernelCounters("va");
        add(expected, Counters(), now);
        before = now;

        // Stopped, traffic meanwhile, started again on the same ledger.
        backend.reset();
        QVERIFY(traffic(30, 300));
        backend = std::make_unique<LinuxBackend>(options);
        backend->start(&sink);
        QVERIFY(traffic(80, 900));
        QVERIFY(backend->tickNow());
        now = kernelCounters("va");
        add(expected, before, now);

        StatisticsRecord all;
        QCOMPARE(backend->history(~0ull, all), int(Ok));
        QCOMPARE(all.bytesReceived, expected.received);
        QCOMPARE(all.bytesSent, expected.sent);
        backend.reset();

        UsageLedger ledger(options.databasePath);
        QVERIFY(ledger.open(0));
        const Usage stored = ledger.totalSince(0);
        QCOMPARE(stored.received, expected.received);
        QCOMPARE(stored.sent, expected.sent);
        qInfo("ledger: %llu received, %llu sent; kernel deltas: %llu, %llu", stored.received, stored.sent,
              expected.received, expected.sent);
    }

private:
    QString m_peerNs;
    bool m_created = false;
};

QTEST_GUILESS_MAIN(TstSdkLinuxNetns)
#include "tst_sdklinux_netns.moc"
