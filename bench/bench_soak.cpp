// Seven days at an accelerated clock, one tick per simulated minute, across
// a day, week, month and year boundary (Saturday 26 December to Saturday
// 2 January): the host application runs in-process on a simulated backend
// whose reports roll over at those boundaries, the settings page is saved
// once a simulated day and the language switched twice a day. Beside it a
// Linux backend on a /proc look-alike, on the same fake clock, books the
// same minutes; its today, week, month and year are checked every hour
// against the minutes since each start. The plug-in's own date logic reads
// the real date and does not see the fake boundaries.
// Prints RSS after the first simulated day and at the end, the slowest tick,
// and the tick line against the bare read of the counters file.
//   bench_soak [days]   (default 7)
#include "BenchSupport.h"
#include "KillLoop.h"

#include "HostApplication.h"
#include "Sdk.h"
#include "SettingsDialog.h"
#include "simulated/SimulatedBackend.h"

#include <QApplication>
#include <QTimer>

#include <unistd.h>

namespace {

constexpr qint64 kMinute = 60;
constexpr int kKinds[] = { VELT_REPORT_TODAY, VELT_REPORT_WEEK, VELT_REPORT_MONTH, VELT_REPORT_YEAR };

qint64 residentKiB()
{
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly))
        return -1;
    const QList<QByteArray> fields = statm.readAll().split(' ');
    return fields.size() > 1 ? fields[1].toLongLong() * ::sysconf(_SC_PAGESIZE) / 1024 : -1;
}

// Period starts for weeks from Sunday and months from the 1st.
std::array<qint64, 4> periodStarts(qint64 seconds)
{
    const QDate day = QDateTime::fromSecsSinceEpoch(seconds).date();
    const QDate starts[] = { day, day.addDays(-(day.dayOfWeek() % 7)), QDate(day.year(), day.month(), 1),
        QDate(day.year(), 1, 1) };
    std::array<qint64, 4> result {};
    for (int i = 0; i < 4; ++i)
        result[size_t(i)] = starts[i].startOfDay().toSecsSinceEpoch();
    return result;
}

// Saves the settings page through the host's own dialog.
void saveSettings(HostApplication& host)
{
    QTimer::singleShot(0, [] {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (auto* dialog = qobject_cast<SettingsDialog*>(widget); dialog && dialog->isVisible()) {
                dialog->accept();
                if (dialog->isVisible())
                    dialog->reject(); // a page that refused OK must not stall the soak
            }
        }
    });
    emit host.window().settingsRequested();
}

} // namespace

// One scenario, read from top to bottom: split, it would hide its own timeline.
// NOLINTNEXTLINE(readability-function-size)
int main(int argc, char* argv[])
{
    const BenchHome home;
    qputenv("NETINFO_LIBRARY_PATH", NETINFO_BUILD_HOME_DIR);
    QApplication app(argc, argv);
    const int days = argc > 1 ? std::max(1, QByteArray(argv[1]).toInt()) : 7;
    const qint64 begin = QDateTime(QDate(2026, 12, 26), QTime(0, 0)).toSecsSinceEpoch();
    qint64 now = begin;

    QTemporaryDir proc;
    killloop::put(proc.path(), "sys/kernel/random/boot_id", "soak-boot");
    killloop::writeCounters(proc.path(), 0);
    velt::LinuxOptions options;
    options.interfaceNames = { QStringLiteral("wwan0") };
    options.databasePath = proc.path() + QStringLiteral("/data/usage.sqlite");
    options.settingsPath = proc.path() + QStringLiteral("/netinfo-host.conf");
    options.procRoot = proc.path();
    options.sysRoot = proc.path() + QStringLiteral("/sysfs");
    options.interval = std::chrono::milliseconds(0);
    options.linkState = [](const QString&) { return velt::LinkState { true, true, true, true, 2 }; };
    options.wallClockMs = [&now] { return now * 1000; };
    options.monotonicMs = [&now, begin] { return (now - begin) * 1000 + 100000; };
    velt::LinuxBackend linux(options);
    if (linux.start(nullptr) != 0) {
        std::fprintf(stderr, "bench_soak: the Linux backend did not start\n");
        return 1;
    }

    HostOptions hostOptions;
    hostOptions.connection.simulate = true;
    hostOptions.connection.demoTraffic = false;
    hostOptions.language = QStringLiteral("en");
    HostApplication host(hostOptions);
    if (host.start() != 0)
        return 1;
    // Swapped in once the host has set up its own, as a backend change at run time.
    auto owned = std::make_unique<velt::SimulatedBackend>([&now] { return now; });
    velt::SimulatedBackend* simulated = owned.get();
    velt::Sdk::instance().setBackend(std::move(owned));
    simulated->setConnected(true);
    const auto languages = HostOptions::languages();

    std::vector<std::pair<qint64, quint64>> minutes; // sample time, bytes received
    std::array<quint64, 4> simulatedPeriods {}; // today, week, month, year
    std::array<qint64, 4> lastStarts = periodStarts(now);
    quint64 counter = 0;
    quint64 liveReceived = 0;
    int mismatches = 0;
    int saves = 0;
    int switches = 0;
    qint64 rssDayOne = -1;
    QStringList rssByDay;
    double slowest = 0;
    qint64 slowestAt = 0;
    std::vector<double> ticks;
    const int total = days * 1440;
    for (int i = 1; i <= total; ++i) {
        now = begin + i * kMinute - 30; // never on a boundary
        const quint64 bytes = 40000 + quint64((i * 7919) % 90000);
        counter += bytes;
        minutes.emplace_back(now, bytes);
        const auto starts = periodStarts(now);
        for (size_t p = 0; p < 4; ++p) {
            if (starts[p] != lastStarts[p])
                simulatedPeriods[p] = 0;
            simulatedPeriods[p] += bytes;
        }
        lastStarts = starts;
        liveReceived += bytes;

        const auto start = std::chrono::steady_clock::now();
        killloop::writeCounters(proc.path(), counter);
        linux.tickNow();
        simulated->setReport(VELT_REPORT_LIVE,
            { liveReceived, liveReceived / 10, quint32(bytes / 60), quint32(bytes / 600), i * kMinute, 0 });
        for (size_t p = 0; p < 4; ++p)
            simulated->setReport(kKinds[p], { simulatedPeriods[p], simulatedPeriods[p] / 10, 0, 0, 0, 0 });
        simulated->tick();
        QCoreApplication::processEvents();
        const double took = elapsedMicroseconds(start);
        ticks.push_back(took);
        if (took > slowest) {
            slowest = took;
            slowestAt = now;
        }

        if (i % 60 == 0) {
            for (size_t p = 0; p < 4; ++p) {
                quint64 expected = 0;
                for (const auto& [at, amount] : minutes)
                    expected += at >= starts[p] ? amount : 0;
                velt::StatisticsRecord record;
                linux.report(kKinds[p], record);
                if (record.bytesReceived != expected) {
                    ++mismatches;
                    std::fprintf(stderr, "bench_soak: %s, kind %d: %llu booked, %llu expected\n",
                        qPrintable(QDateTime::fromSecsSinceEpoch(now).toString(Qt::ISODate)), kKinds[p],
                        static_cast<unsigned long long>(record.bytesReceived),
                        static_cast<unsigned long long>(expected));
                }
            }
        }
        if (i % 720 == 0 && !languages.isEmpty()) {
            host.setLanguage(languages[(i / 720) % languages.size()].first);
            ++switches;
        }
        if (i % 1440 == 600) {
            saveSettings(host);
            ++saves;
        }
        if (i % 1440 == 0)
            rssByDay << QString::number(residentKiB());
        if (i == 1440)
            rssDayOne = residentKiB();
    }
    host.setLanguage(QStringLiteral("en"));
    const qint64 rssEnd = residentKiB();

    const QString dev = proc.path() + QStringLiteral("/self/net/dev");
    std::vector<double> floor;
    for (int i = 0; i < 500; ++i) {
        const auto start = std::chrono::steady_clock::now();
        QFile file(dev);
        if (file.open(QIODevice::ReadOnly))
            file.readAll();
        floor.push_back(elapsedMicroseconds(start));
    }
    std::printf(
        "%d simulated days, %d ticks, %d settings saves, %d language switches, %d period mismatches\n", days,
        total, saves, switches, mismatches);
    std::printf("RSS after day 1: %lld KiB, at the end: %lld KiB; slowest tick %.0f us at %s\n", rssDayOne,
        rssEnd, slowest, qPrintable(QDateTime::fromSecsSinceEpoch(slowestAt).toString(Qt::ISODate)));
    std::printf("RSS at the end of each day (KiB): %s\n", qPrintable(rssByDay.join(QLatin1Char(' '))));
    std::fflush(stdout);
    printBenchLine(QStringLiteral("bench_soak"), benchTiming(ticks), benchTiming(floor).median);
    host.shutdown();
    linux.stop();
    velt::Sdk::instance().setBackend(nullptr);
    return mismatches == 0 ? 0 : 1;
}
