// CPU time the real sampler spends per second: the backend runs at its
// normal interval on the real /proc, sysfs and netlink, counting lo while
// this thread sends datagrams over it, so the counters and the ledger change
// every second. Measured on the sampler thread's own CPU clock. The floor is
// a bare thread that only wakes once a second, measured beside it in the same
// run: on a virtual machine the wake-up alone can cost more than everything
// the sampler does, and it moves with the machine's load.
//   bench_sampler [seconds]   (default 20)
#include "LinuxBackend.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <pthread.h>
#include <sys/socket.h>
#include <time.h>
#include <unistd.h>

namespace {
QList<int> threadIds()
{
    QList<int> ids;
    for (const QString& name :
        QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        ids.append(name.toInt());
    return ids;
}

// The kernel's CPU clock of one thread of this process (what pthread_getcpuclockid returns).
clockid_t threadClock(int tid)
{
    return clockid_t((~unsigned(tid) << 3) | 6);
}

qint64 nanoseconds(clockid_t clock)
{
    timespec t {};
    clock_gettime(clock, &t);
    return qint64(t.tv_sec) * 1000000000 + t.tv_nsec;
}

double percentile(std::vector<double> samples, double p)
{
    const size_t index = std::min(samples.size() - 1, size_t(p * samples.size()));
    std::nth_element(samples.begin(), samples.begin() + index, samples.end());
    return samples[index];
}
} // namespace

// The thread that was not there before: the sampler's.
int newThread(const QList<int>& before)
{
    int found = 0;
    for (int id : threadIds()) {
        if (!before.contains(id))
            found = id;
    }
    return found;
}

// Port 9 on lo: nothing listens, the bytes still cross the interface.
sockaddr_in discardAddress()
{
    sockaddr_in to {};
    to.sin_family = AF_INET;
    to.sin_port = htons(9);
    to.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return to;
}

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    qputenv("QT_LOGGING_RULES", "netinfo.*.info=false");
    const int seconds = argc > 1 ? std::max(3, QString::fromLocal8Bit(argv[1]).toInt()) : 20;

    QTemporaryDir dir;
    velt::LinuxOptions options;
    options.databasePath = dir.filePath(QStringLiteral("usage.sqlite"));
    options.settingsPath = dir.filePath(QStringLiteral("netinfo-host.conf"));
    options.interfaceNames = { QStringLiteral("lo") };
    options.role = velt::RecordingRole::Recorder;

    const QList<int> before = threadIds();
    velt::LinuxBackend backend(options);
    backend.start(nullptr);
    const int sampler = newThread(before);
    if (!sampler) {
        QTextStream(stderr) << "bench_sampler: cannot find the sampler thread\n";
        return 1;
    }

    const int out = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    const sockaddr_in to = discardAddress();
    const QByteArray payload(1000, 'x');

    std::mutex mutex;
    std::condition_variable wake;
    bool done = false;
    clockid_t idleClock {};
    std::thread idle([&] {
        std::unique_lock lock(mutex);
        auto next = std::chrono::steady_clock::now();
        while (!done) {
            next += std::chrono::seconds(1);
            wake.wait_until(lock, next);
        }
    });
    pthread_getcpuclockid(idle.native_handle(), &idleClock);

    std::vector<double> perSecond, idlePerSecond;
    const clockid_t clock = threadClock(sampler);
    std::this_thread::sleep_for(std::chrono::milliseconds(1500)); // past start-up
    qint64 last = nanoseconds(clock);
    qint64 idleLast = nanoseconds(idleClock);
    for (int i = 0; i < seconds; ++i) {
        for (int n = 0; n <= i % 5; ++n)
            sendto(out, payload.constData(), size_t(payload.size()), 0,
                reinterpret_cast<const sockaddr*>(&to), sizeof to);
        std::this_thread::sleep_for(std::chrono::seconds(1));
        const qint64 now = nanoseconds(clock);
        perSecond.push_back((now - last) / 1000.0);
        last = now;
        const qint64 idleNow = nanoseconds(idleClock);
        idlePerSecond.push_back((idleNow - idleLast) / 1000.0);
        idleLast = idleNow;
    }
    {
        std::lock_guard lock(mutex);
        done = true;
    }
    wake.notify_all();
    idle.join();
    backend.stop();
    ::close(out);

    const double median = percentile(perSecond, 0.5);
    const double floorMedian = std::max(0.1, percentile(idlePerSecond, 0.5));
    QTextStream(stdout) << "sampler_cpu_per_s: median " << QString::number(median, 'f', 1) << " us, p90 "
                        << QString::number(percentile(perSecond, 0.9), 'f', 1) << " us, floor "
                        << QString::number(floorMedian, 'f', 1) << " us, ratio "
                        << QString::number(median / floorMedian, 'f', 1) << "\n";
    return 0;
}
