// A recorder killed with SIGKILL at random moments under traffic, 1000 times
// (or argv[1]): integrity failures, totals gone backwards and the largest
// loss, then the time to read the total back after a kill against the bare
// open and query beneath it.
//   bench_killloop [runs]
#include "KillLoop.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <algorithm>

namespace {
double percentile(QList<double> samples, double p)
{
    if (samples.isEmpty())
        return 0;
    std::sort(samples.begin(), samples.end());
    return samples[qsizetype(p * double(samples.size() - 1))];
}
} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    if (argc == 3 && qstrcmp(argv[1], "--record") == 0)
        return killloop::record(QString::fromLocal8Bit(argv[2]));
    const int runs = argc > 1 ? std::max(1, QByteArray(argv[1]).toInt()) : 1000;
    QTemporaryDir dir;
    const killloop::Result result = killloop::run(QCoreApplication::applicationFilePath(), dir.path(), runs);
    std::printf("%d kills (%d recorders did not start), %d integrity failures, %d totals went backwards, "
                "largest loss "
                "%lld ms (commit interval %lld ms, sampling %d ms)\n",
        result.runs, result.notStarted, result.integrityFailures, result.wentBackwards, result.maxLossMs,
        killloop::kCommitIntervalMs, killloop::kIntervalMs);
    const double median = percentile(result.readUs, 0.5);
    const double floor = percentile(result.floorUs, 0.5);
    std::printf("bench_killloop: median %.1f us, p90 %.1f us, floor %.1f us, ratio %.1f\n", median,
        percentile(result.readUs, 0.9), floor, floor > 0 ? median / floor : 0.0);
    return result.integrityFailures == 0 && result.wentBackwards == 0 && result.runs == runs ? 0 : 1;
}
