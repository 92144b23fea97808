// The Linux backend against the real kernel in a private network namespace:
// known traffic over a veth pair, the interface deleted and re-created, the
// recorder stopped by SIGTERM; the ledger must match the kernel's counters.
// Needs root and ip from iproute2; skips otherwise.
#include "LinuxBackend.h"
#include "UsageLedger.h"

#include <QtTest>

#include <arpa/inet.h>
#include <csignal>
#include <fcntl.h>
#include <pthread.h>
#include <sched.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>
#include <thread>

using namespace velt;

namespace {
const char* const kLocal = "10.77.0.1";
const char* const kPeer = "10.77.0.2";

struct Counters
{
    quint64 received = 0, sent = 0;
};

// Read here independently of the backend's parser.
Counters kernelCounters()
{
    QFile file(QStringLiteral("/proc/self/net/dev"));
    file.open(QIODevice::ReadOnly);
    for (const QByteArray& line : file.readAll().split('\n')) {
        unsigned long long rx = 0, tx = 0, skip = 0;
        if (std::sscanf(line.constData(), " va: %llu %llu %llu %llu %llu %llu %llu %llu %llu", &rx, &skip,
                &skip, &skip, &skip, &skip, &skip, &skip, &tx)
            == 9)
            return { rx, tx };
    }
    return {};
}

sockaddr_in address(const char* ip)
{
    sockaddr_in a {};
    a.sin_family = AF_INET;
    a.sin_port = htons(5901);
    inet_pton(AF_INET, ip, &a.sin_addr);
    return a;
}

int boundSocket(const char* ip)
{
    const int fd = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    const sockaddr_in local = address(ip);
    return fd >= 0 && bind(fd, reinterpret_cast<const sockaddr*>(&local), sizeof local) == 0 ? fd : -1;
}

bool send(int fd, const char* to, int count, int size)
{
    const sockaddr_in peer = address(to);
    const QByteArray payload(size, 'x');
    for (int i = 0; i < count; ++i) {
        if (sendto(fd, payload.constData(), size, 0, reinterpret_cast<const sockaddr*>(&peer), sizeof peer)
            != size)
            return false;
    }
    return true;
}

} // namespace

class TstSdkLinuxNetns : public QObject
{
    Q_OBJECT

    bool ip(QStringList arguments)
    {
        QProcess process;
        process.start(QStringLiteral("ip"), arguments);
        const bool ok = process.waitForFinished(10000) && process.exitStatus() == QProcess::NormalExit
            && process.exitCode() == 0;
        if (!ok)
            qWarning(
                "ip %s: %s", qPrintable(arguments.join(' ')), process.readAllStandardError().constData());
        return ok;
    }

    // va here, vb in the peer namespace, fixed neighbours: nothing but the test's datagrams crosses.
    bool createLink()
    {
        const QString peer = QStringLiteral("netns exec %1 ip ").arg(m_peerNs);
        for (const QString& command : { QStringLiteral("link add va address 02:00:00:00:77:01 type veth peer "
                                                       "name vb address 02:00:00:00:77:02 netns ")
                     + m_peerNs,
                 QStringLiteral("addr add 10.77.0.1/24 dev va"), QStringLiteral("link set va up"),
                 QStringLiteral("neigh replace 10.77.0.2 lladdr 02:00:00:00:77:02 dev va nud permanent"),
                 QStringLiteral("route add default via 10.77.0.2 dev va"),
                 peer + QStringLiteral("addr add 10.77.0.2/24 dev vb"),
                 peer + QStringLiteral("link set vb up"),
                 peer
                     + QStringLiteral(
                         "neigh replace 10.77.0.1 lladdr 02:00:00:00:77:01 dev vb nud permanent") }) {
            if (!ip(command.split(' ')))
                return false;
        }
        return true;
    }

    // count datagrams out, half as many back; the peer's socket is made in its namespace.
    bool traffic(int count, int size)
    {
        int peerFd = -1;
        std::thread([&] {
            const int ns = open(qPrintable(QStringLiteral("/run/netns/") + m_peerNs), O_RDONLY | O_CLOEXEC);
            if (ns >= 0 && setns(ns, CLONE_NEWNET) == 0)
                peerFd = boundSocket(kPeer);
            close(ns);
        }).join();
        const int localFd = boundSocket(kLocal);
        const bool ok = peerFd >= 0 && localFd >= 0 && send(localFd, kPeer, count, size)
            && send(peerFd, kLocal, count / 2, size);
        close(peerFd);
        close(localFd);
        QTest::qWait(50); // delivery
        return ok;
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
        m_peerNs = QStringLiteral("netinfo-peer-%1").arg(getpid());
        if (!ip({ "netns", "add", m_peerNs }))
            QSKIP("cannot create a named network namespace");
        m_created = true;
        // No IPv6 chatter (router solicitations, address checks) on the link.
        const QString noIpv6 = QStringLiteral("echo 1 > /proc/sys/net/ipv6/conf/default/disable_ipv6");
        QProcess::execute(QStringLiteral("sh"), { "-c", noIpv6 });
        QProcess::execute(QStringLiteral("ip"), { "netns", "exec", m_peerNs, "sh", "-c", noIpv6 });
        QVERIFY(createLink());
    }

    void cleanupTestCase()
    {
        if (m_created)
            ip({ "netns", "del", m_peerNs });
    }

    void sigtermRightAfterABurst()
    {
        // A recorder sampling every 200 ms; the link deleted and re-created under it, a burst, and
        // SIGTERM before the next sample or commit: the ledger must hold every byte once.
        QTemporaryDir dir;
        const QString database = dir.filePath(QStringLiteral("usage.sqlite"));
        const Counters before = kernelCounters();
        QProcess child;
        child.start(
            QCoreApplication::applicationFilePath(), { QStringLiteral("--record-until-sigterm"), database });
        QVERIFY(child.waitForReadyRead(10000) && child.readLine().startsWith("recording"));
        QVERIFY(traffic(200, 1000));
        QTest::qWait(300); // sampled before the link goes: a veth reports no final receive counter
        const Counters old = kernelCounters();
        QVERIFY(ip({ "link", "del", "va" }) && createLink());
        QVERIFY(traffic(100, 700));
        QTest::qWait(300);
        QVERIFY(traffic(150, 1200));
        child.terminate();
        QVERIFY(child.waitForFinished(10000) && child.exitCode() == 0);
        const Counters now = kernelCounters();
        const Counters expected { old.received - before.received + now.received,
            old.sent - before.sent + now.sent };
        const Usage total = UsageLedger(database, LedgerAccess::ReadOnly).total(0, INT32_MAX);
        QVERIFY(expected.sent > expected.received && expected.received > 100000);
        QCOMPARE(total.received, expected.received);
        QCOMPARE(total.sent, expected.sent);
        qInfo("ledger and kernel agree after SIGTERM: %llu bytes received, %llu sent", total.received,
            total.sent);
    }

private:
    QString m_peerNs;
    bool m_created = false;
};

// The child: records on the real system until SIGTERM, then stops cleanly.
int recordUntilSigterm(const QString& database)
{
    sigset_t term;
    sigemptyset(&term);
    sigaddset(&term, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &term, nullptr); // before any thread: only sigwait takes it
    LinuxOptions options;
    options.databasePath = database;
    options.settingsPath = database + QStringLiteral(".conf");
    options.role = RecordingRole::Recorder;
    options.interfaceNames = { QStringLiteral("va") };
    options.interval = std::chrono::milliseconds(200);
    LinuxBackend backend(options);
    backend.start(nullptr);
    std::printf("recording %s\n", qPrintable(backend.interfaceName()));
    std::fflush(stdout);
    int signal = 0;
    sigwait(&term, &signal);
    backend.stop();
    return 0;
}

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    if (argc == 3 && qstrcmp(argv[1], "--record-until-sigterm") == 0)
        return recordUntilSigterm(QString::fromLocal8Bit(argv[2]));
    TstSdkLinuxNetns test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_sdklinux_netns.moc"
