// One statistics tick end to end on the simulated SDK: the backend fires,
// the bridge emits, the view updates tree, panel and stored figures.
//   bench_tick [ticks]   (default 500; runs offscreen)
#include "HostIds.h"
#include "NetInfoUIService.h"
#include "simulated/SimulatedBackend.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>
#include <QWidget>

#include <algorithm>
#include <chrono>
#include <vector>

int main(int argc, char* argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "netinfo.*.debug=false");

    // A private <home> with the shipped data, so no user file is touched.
    QTemporaryDir home;
    const QString pluginDir = home.path() + QStringLiteral("/plugins/NetInfoUIExPlugin");
    QDir().mkpath(pluginDir);
    const QDir shipped(QStringLiteral(NETINFO_PLUGIN_DATA_DIR));
    for (const QString& name : shipped.entryList(QDir::Files))
        QFile::copy(shipped.filePath(name), pluginDir + QLatin1Char('/') + name);
    qputenv("NETINFO_LIBRARY_PATH", QFile::encodeName(home.path()));
    qputenv("XDG_DATA_HOME", QFile::encodeName(home.path() + QStringLiteral("/data")));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(home.path() + QStringLiteral("/config")));

    QApplication app(argc, argv);
    const int ticks = argc > 1 ? std::max(1, QString::fromLocal8Bit(argv[1]).toInt()) : 500;

    velt::SimulatedBackend* backend = velt::SimulatedBackend::current();
    if (!backend) {
        QTextStream(stderr) << "bench_tick: the SDK has no simulated backend\n";
        return 1;
    }
    backend->setConnected(true);

    CNetInfoUIService* service = CNetInfoUIService::instance();
    service->Init();
    service->Notify(HostIds::MsgCreateStatusPanel, 0, 0);
    QWidget window;
    window.resize(900, 560);
    QRect rect(0, 0, 900, 560);
    service->ShowWindow(&window, rect);
    window.show();
    QCoreApplication::processEvents();

    // Warm-up: first paints, lazy font and style work.
    for (int i = 0; i < 20; ++i) {
        backend->tick();
        QCoreApplication::processEvents();
    }

    std::vector<double> samples;
    samples.reserve(ticks);
    for (int i = 0; i < ticks; ++i) {
        const auto start = std::chrono::steady_clock::now();
        backend->tick();
        QCoreApplication::processEvents();
        const auto end = std::chrono::steady_clock::now();
        samples.push_back(std::chrono::duration<double, std::micro>(end - start).count());
    }
    std::nth_element(samples.begin(), samples.begin() + samples.size() / 2, samples.end());
    const double median = samples[samples.size() / 2];
    QTextStream(stdout) << "tick median: " << qRound64(median) << " us over " << ticks << " ticks\n";

    service->unSDKRegisterEvent();
    CNetInfoUIService::Destroy();
    return 0;
}
