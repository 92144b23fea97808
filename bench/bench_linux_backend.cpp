// Per-tick cost of the Linux backend: one sample of a fake /proc, the ledger
// update (a commit every tenth tick, as at one tick a second) and the five
// report queries the view makes per tick. Time advances one second per tick.
//   bench_linux_backend [ticks]   (default 3000)
#include "LinuxBackend.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <vector>

namespace {
bool writeFile(const QString& path, const QByteArray& content)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(content) == content.size();
}

QByteArray netDev(quint64 received, quint64 sent)
{
    QByteArray text = "Inter-|   Receive |  Transmit\n face |bytes packets|bytes\n"
                      "    lo: 6534 58 0 0 0 0 0 0 6534 58 0 0 0 0 0 0\n"
                      "  eth0: 41053423 894 0 0 0 0 0 0 51408 585 0 0 0 0 0 0\n";
    text += QStringLiteral("wwan0: %1 1 0 0 0 0 0 0 %2 1 0 0 0 0 0 0\n").arg(received).arg(sent).toUtf8();
    return text;
}

double percentile(std::vector<double> samples, double p)
{
    const size_t index = std::min(samples.size() - 1, size_t(p * samples.size()));
    std::nth_element(samples.begin(), samples.begin() + index, samples.end());
    return samples[index];
}
} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    const int ticks = argc > 1 ? std::max(1, QString::fromLocal8Bit(argv[1]).toInt()) : 3000;

    QTemporaryDir dir;
    const QString root = dir.path();
    writeFile(root + QStringLiteral("/sys/kernel/random/boot_id"), "bench-boot\n");
    writeFile(root + QStringLiteral("/self/net/route"), "Iface\tDestination\tGateway\tFlags\tRefCnt\tUse\tMetric\tMask\n");
    writeFile(root + QStringLiteral("/self/net/dev"), netDev(0, 0));

    auto wallMs = std::make_shared<std::atomic<qint64>>(1718445600000); // a June noon
    auto monoMs = std::make_shared<std::atomic<qint64>>(1000000);
    velt::LinuxOptions options;
    options.procRoot = root;
    options.databasePath = root + QStringLiteral("/usage.sqlite");
    options.settingsPath = root + QStringLiteral("/netinfo-host.conf");
    options.interval = std::chrono::milliseconds(0);
    options.linkState = [](const QString&) { return velt::LinkState{true, true, true, true, 3}; };
    options.wallClockMs = [wallMs] { return wallMs->load(); };
    options.monotonicMs = [monoMs] { return monoMs->load(); };

    velt::LinuxBackend backend(options);
    backend.start(nullptr);

    std::vector<double> samples;
    samples.reserve(ticks);
    quint64 received = 0;
    quint64 sent = 0;
    const int kinds[] = {VELT_REPORT_LIVE, VELT_REPORT_TODAY, VELT_REPORT_WEEK, VELT_REPORT_MONTH, VELT_REPORT_YEAR};
    for (int i = 0; i < ticks; ++i) {
        received += 150000 + (i % 7) * 1000;
        sent += 12000;
        writeFile(root + QStringLiteral("/self/net/dev"), netDev(received, sent));
        *wallMs += 1000;
        *monoMs += 1000;

        const auto start = std::chrono::steady_clock::now();
        backend.tickNow();
        velt::StatisticsRecord record;
        for (int kind : kinds)
            backend.report(kind, record);
        const auto end = std::chrono::steady_clock::now();
        samples.push_back(std::chrono::duration<double, std::micro>(end - start).count());
    }
    velt::StatisticsRecord year;
    backend.report(VELT_REPORT_YEAR, year);
    backend.stop();

    QTextStream out(stdout);
    out << "linux backend tick (sample + ledger + 5 reports) over " << ticks << " ticks: median "
        << qRound64(percentile(samples, 0.5)) << " us, p90 " << qRound64(percentile(samples, 0.9)) << " us, p99 "
        << qRound64(percentile(samples, 0.99)) << " us, max " << qRound64(percentile(samples, 1.0)) << " us\n";
    if (year.bytesReceived != received) {
        out << "bench_linux_backend: the year's total " << year.bytesReceived << " is not the " << received
            << " bytes sampled\n";
        return 1;
    }
    return 0;
}
