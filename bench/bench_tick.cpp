// One statistics tick with figures that change every time, on the simulated
// backend and, where /proc is readable, on the Linux backend counting `lo`.
// Two measures per backend, each beside its floor from the same run:
//   handler      the view's slot on the GUI thread: tree and panel texts,
//                bars, graph data and the five stored queries (floor:
//                formatting the same figures); on the simulated backend,
//                which calls back inside its tick, the tick too
//   end to end   handler (with the tick where it is the view's) and the repaint of what changed in the shown
//                window (floor: the formatting plus drawing the changed rows
//                and two curves bare into an image of the window's size)
//   bench_tick [ticks]   (default 500; runs offscreen)
#include "BenchSupport.h"

#include "Change.h"
#include "CommonUtils.h"
#include "HostIds.h"
#include "LinuxBackend.h"
#include "NetInfoUILogic.h"
#include "NetInfoUIService.h"
#include "Sdk.h"
#include "simulated/SimulatedBackend.h"

#include <QApplication>
#include <QDockWidget>
#include <QFileInfo>
#include <QImage>
#include <QMainWindow>
#include <QPainter>
#include <QPolygonF>
#include <QWidget>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <memory>

namespace {

constexpr int kWidth = 900;
constexpr int kHeight = 560;

// What a backend needs to run one tick: change the figures and tick. A
// backend sampling on its own thread hands the view a queued call; its own
// work is the sampler's (bench_sampler), not the view's.
struct Driver
{
    std::function<void(int)> change;
    std::function<void()> tick;
    bool samplesOnOwnThread = false;
};

// The figures a tick formats: four live, their total, six stored.
double formattingFloor(int ticks)
{
    QVector<TagUnits> speed;
    QVector<TagUnits> flux;
    NetInfoUILogic::Instance()->GetSpeedUnitData(speed);
    NetInfoUILogic::Instance()->GetFluxUnitData(flux);
    const QString module = QStringLiteral("NetInfoUIExPlugin");
    std::vector<double> samples;
    QString sink;
    for (int i = 0; i < ticks; ++i) {
        const auto start = std::chrono::steady_clock::now();
        for (int f = 0; f < 11; ++f)
            sink = CommonUtils::SpeedFluxToString(
                quint64(i) * 1237 + quint64(f) * 1000003, f < 2 ? speed : flux, module);
        samples.push_back(elapsedMicroseconds(start));
    }
    return benchTiming(samples).median;
}

// The rows whose figures a tick changes and two 60-point curves, each drawn
// bare over its own cleared strip of an image the window's size.
double paintFloor(int ticks)
{
    QImage image(kWidth, kHeight, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    std::vector<double> samples;
    for (int i = 0; i < ticks; ++i) {
        QPolygonF up;
        QPolygonF down;
        for (int p = 0; p < 60; ++p) {
            up << QPointF(300 + p * 6, 400 - ((p * 7 + i) % 50));
            down << QPointF(300 + p * 6, 400 - ((p * 13 + i) % 120));
        }
        const auto start = std::chrono::steady_clock::now();
        QPainter painter(&image);
        for (int row = 0; row < 11; ++row) {
            const QRect strip(30, 8 + row * 16, 220, 16);
            painter.fillRect(strip, Qt::white);
            painter.drawText(strip, Qt::AlignLeft | Qt::AlignVCenter,
                QStringLiteral("Received: %1.%2 MB").arg(row * 37 + i).arg(i % 100));
        }
        painter.fillRect(QRect(300, 270, 360, 140), Qt::white);
        painter.drawPolyline(up);
        painter.drawPolyline(down);
        painter.end();
        samples.push_back(elapsedMicroseconds(start));
    }
    return benchTiming(samples).median;
}

// Shows the view as the host does, runs the ticks and prints both lines.
void run(const QString& name, const Driver& driver, int ticks)
{
    CNetInfoUIService* service = CNetInfoUIService::instance();
    service->Init();
    service->Notify(HostIds::MsgCreateStatusPanel, 0, 0);
    // As the host shows it: the view in the central area, the status panel
    // docked beside it, so a label that asks for a new layout costs what it
    // costs there.
    QMainWindow window;
    window.resize(kWidth, kHeight);
    auto* viewArea = new QWidget(&window);
    window.setCentralWidget(viewArea);
    auto* dock = new QDockWidget(&window);
    window.addDockWidget(Qt::RightDockWidgetArea, dock);
    const QList<QWidget*> all = QApplication::allWidgets();
    for (QWidget* widget : all)
        if (widget->objectName() == QLatin1String("StatisticsData_Duration"))
            dock->setWidget(widget->parentWidget());
    window.show();
    QCoreApplication::processEvents();
    QRect rect(QPoint(0, 0), viewArea->size());
    service->ShowWindow(viewArea, rect);
    QCoreApplication::processEvents();

    // Warm-up: first paints, lazy font and style work.
    for (int i = 0; i < 20; ++i) {
        driver.change(i);
        driver.tick();
        QCoreApplication::processEvents();
    }

    std::vector<double> handler;
    std::vector<double> endToEnd;
    for (int i = 20; i < ticks + 20; ++i) {
        driver.change(i);
        const auto start = std::chrono::steady_clock::now();
        driver.tick();
        // A tick from the SDK's own thread reaches the view as a queued call.
        const auto delivered = std::chrono::steady_clock::now();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
        const double handled = elapsedMicroseconds(delivered);
        QCoreApplication::processEvents();
        endToEnd.push_back(elapsedMicroseconds(driver.samplesOnOwnThread ? delivered : start));
        const double ticked = std::chrono::duration<double, std::micro>(delivered - start).count();
        handler.push_back(driver.samplesOnOwnThread ? handled : handled + ticked);
    }

    const double formatting = formattingFloor(ticks);
    const double painting = paintFloor(ticks);
    printBenchLine(QStringLiteral("tick_handler_%1").arg(name), benchTiming(handler), formatting);
    printBenchLine(
        QStringLiteral("tick_end_to_end_%1").arg(name), benchTiming(endToEnd), formatting + painting);

    service->unSDKRegisterEvent();
    CNetInfoUIService::Destroy();
}

velt::StatisticsRecord figures(quint64 base, int i)
{
    velt::StatisticsRecord record;
    record.bytesSent = base + quint64(i) * 12000;
    record.bytesReceived = base * 10 + quint64(i) * 150000 + (i % 7) * 1000;
    record.sendSpeed = 12000 + (i % 5) * 100;
    record.receiveSpeed = 150000 + (i % 7) * 1000;
    record.duration = i;
    return record;
}

} // namespace

int main(int argc, char* argv[])
{
    const BenchHome home;
    QApplication app(argc, argv);
    if (!Change::LoadLanguage(QStringLiteral("en")))
        QTextStream(stderr) << "bench_tick: the English texts did not load; rows show their keys\n";
    const int ticks = argc > 1 ? std::max(1, QString::fromLocal8Bit(argv[1]).toInt()) : 500;

    auto simulated = std::make_unique<velt::SimulatedBackend>();
    velt::SimulatedBackend* backend = simulated.get();
    velt::Sdk::instance().setBackend(std::move(simulated));
    backend->setConnected(true);
    // The handler's own time includes the tick: the simulated SDK calls back on this thread.
    run(QStringLiteral("simulated"),
        { [backend](int i) {
             backend->setReport(VELT_REPORT_LIVE, figures(0, i));
             backend->setReport(VELT_REPORT_TODAY, figures(50000000, i));
             backend->setReport(VELT_REPORT_WEEK, figures(300000000, i));
             backend->setReport(VELT_REPORT_MONTH, figures(900000000, i));
             backend->setReport(VELT_REPORT_YEAR, figures(9000000000ull, i));
         },
            [backend] { backend->tick(); } },
        ticks);

    if (!QFileInfo(QStringLiteral("/proc/net/dev")).isReadable()) {
        QTextStream(stdout) << "bench_tick: /proc/net/dev is not readable; the Linux backend is left out\n";
        return 0;
    }
    // Datagrams to a closed port on lo move its counters between ticks.
    const int sock = ::socket(AF_INET, SOCK_DGRAM, 0);
    sockaddr_in target {};
    target.sin_family = AF_INET;
    target.sin_port = htons(9);
    target.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    QTemporaryDir ledger;
    velt::LinuxOptions options;
    options.interfaceNames = { QStringLiteral("lo") };
    options.databasePath = ledger.path() + QStringLiteral("/usage.sqlite");
    options.settingsPath = ledger.path() + QStringLiteral("/netinfo-host.conf");
    options.interval = std::chrono::milliseconds(0);
    auto linuxBackend = std::make_unique<velt::LinuxBackend>(options);
    velt::LinuxBackend* real = linuxBackend.get();
    if (!real->isSupported()) {
        QTextStream(stdout) << "bench_tick: the Linux backend is not supported here; left out\n";
        return 0;
    }
    velt::Sdk::instance().setBackend(std::move(linuxBackend));
    run(QStringLiteral("linux_lo"),
        { [sock, &target](int i) {
             const QByteArray payload(200 + i % 50, 'x');
             ::sendto(sock, payload.constData(), size_t(payload.size()), 0,
                 reinterpret_cast<sockaddr*>(&target), sizeof target);
         },
            [real] { real->tickNow(); }, true },
        ticks);
    ::close(sock);
    velt::Sdk::instance().setBackend(nullptr);
    return 0;
}
