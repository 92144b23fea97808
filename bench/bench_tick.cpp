// One statistics tick end to end on the simulated SDK: the backend fires,
// the bridge emits, the view updates tree, panel and stored figures.
//   bench_tick [ticks]   (default 500; runs offscreen)
#include "BenchSupport.h"
#include "HostIds.h"
#include "NetInfoUIService.h"
#include "simulated/SimulatedBackend.h"

#include <QApplication>
#include <QTextStream>
#include <QWidget>


int main(int argc, char* argv[])
{
    const BenchHome home;

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

    const double median = medianMicroseconds(ticks, [&] {
        backend->tick();
        QCoreApplication::processEvents();
    });
    QTextStream(stdout) << "tick median: " << qRound64(median) << " us over " << ticks << " ticks\n";

    service->unSDKRegisterEvent();
    CNetInfoUIService::Destroy();
    return 0;
}
