// Period sums on a one-year ledger (two interfaces, every 15-minute bucket):
// today, month and year as the sampler asks them when a new bucket begins,
// each with an end that moves, so no answer comes from the cache. The floor
// is the bare SELECT of one row.
//   bench_ledger [queries]   (default 500)
#include "UsageLedger.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>
#include <chrono>
#include <vector>

namespace {
double percentile(std::vector<double> samples, double p)
{
    const size_t index = std::min(samples.size() - 1, size_t(p * samples.size()));
    std::nth_element(samples.begin(), samples.begin() + index, samples.end());
    return samples[index];
}

template <class Work> std::vector<double> timed(int runs, Work&& work)
{
    std::vector<double> samples;
    for (int i = 0; i < runs; ++i) {
        const auto start = std::chrono::steady_clock::now();
        work(i);
        samples.push_back(
            std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count());
    }
    return samples;
}

QString line(const char* name, const std::vector<double>& samples, double floor)
{
    const double median = percentile(samples, 0.5);
    return QStringLiteral("%1: median %2 us, p90 %3 us, floor %4 us, ratio %5")
        .arg(QLatin1String(name), QString::number(median, 'f', 1),
            QString::number(percentile(samples, 0.9), 'f', 1), QString::number(floor, 'f', 1),
            QString::number(median / floor, 'f', 1));
}
} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    const int runs = argc > 1 ? std::max(10, QString::fromLocal8Bit(argv[1]).toInt()) : 500;
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("usage.sqlite"));
    const qint64 end = QDateTime(QDate(2025, 12, 20), QTime(12, 0)).toSecsSinceEpoch();
    const qint64 start = end - 365 * 86400;
    {
        velt::UsageLedger ledger(path);
        ledger.open(start);
        for (qint64 t = start; t < end; t += velt::UsageLedger::BucketSeconds) {
            ledger.add({ QStringLiteral("wwan0"), QStringLiteral("Provider") }, t,
                { quint64(t % 7919) * 100, 4000, 900000 });
            ledger.add({ QStringLiteral("wlan0"), QStringLiteral("Hotspot") }, t,
                { quint64(t % 104729), 800, 450000 });
        }
        if (!ledger.commit()) {
            QTextStream(stderr) << "bench_ledger: cannot write " << path << "\n";
            return 1;
        }
    }

    velt::UsageLedger ledger(path, velt::LedgerAccess::ReadOnly);
    const QDateTime now = QDateTime::fromSecsSinceEpoch(end);
    const qint64 today = now.date().startOfDay().toSecsSinceEpoch();
    const qint64 month = QDate(now.date().year(), now.date().month(), 1).startOfDay().toSecsSinceEpoch();
    const qint64 year = QDate(now.date().year(), 1, 1).startOfDay().toSecsSinceEpoch();
    quint64 sink = 0;
    auto sums = [&](qint64 from) {
        return timed(runs,
            [&](int i) { sink += ledger.total(from, end + i * velt::UsageLedger::BucketSeconds).received; });
    };
    const std::vector<double> todaySums = sums(today);
    const std::vector<double> monthSums = sums(month);
    const std::vector<double> yearSums = sums(year);

    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("floor"));
    db.setDatabaseName(path);
    db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
    db.open();
    QSqlQuery row(db);
    row.prepare(QStringLiteral(
        "SELECT received FROM usage WHERE interface = 'wwan0' AND connection = 'Provider' AND bucket = ?"));
    const std::vector<double> floor = timed(runs, [&](int i) {
        row.bindValue(0, start + (i * 37 % 30000) * velt::UsageLedger::BucketSeconds);
        row.exec();
        sink += row.next() ? row.value(0).toULongLong() : 0;
        row.finish();
    });
    const double floorMedian = percentile(floor, 0.5);

    QTextStream out(stdout);
    out << line("ledger_today_sum", todaySums, floorMedian) << "\n"
        << line("ledger_month_sum", monthSums, floorMedian) << "\n"
        << (sink ? "" : "(no data)\n") << line("ledger_year_sum", yearSums, floorMedian) << "\n";
    return 0;
}
