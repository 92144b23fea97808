// Painting the speed graph with a full sample list, offscreen.
//   bench_graph [paints] [width] [height]   (defaults 500, 500, 300)
#include "BenchSupport.h"
#include "NetInfoGraphConfigParse.h"
#include "NetInfoGraphWidget.h"
#include "NetInfoUILogic.h"
#include "NetInfoUIService.h"

#include <QApplication>
#include <QImage>
#include <QTextStream>

#include <cmath>

int main(int argc, char* argv[])
{
    const BenchHome home;

    QApplication app(argc, argv);
    const auto argument = [&](int index, int fallback) {
        return argc > index ? std::max(1, QString::fromLocal8Bit(argv[index]).toInt()) : fallback;
    };
    const int paints = argument(1, 500);
    const QSize size(argument(2, 500), argument(3, 300));

    {
        GraphWidget graph;
        graph.resize(size);
        // Past the sample limit, so the upload list is as long as it gets.
        for (int i = 0; i <= graph.maxSamples() + 1; ++i)
            graph.DrawGraph(40 + 35 * std::sin(i / 9.0), 150 + 120 * std::sin(i / 23.0));

        QImage target(size, QImage::Format_ARGB32_Premultiplied);
        for (int i = 0; i < 20; ++i) // warm-up: fonts, glyph caches
            graph.render(&target);
        const double median = medianMicroseconds(paints, [&] { graph.render(&target); });
        QTextStream(stdout) << "graph paint median: " << qRound64(median) << " us over " << paints << " paints at "
                            << size.width() << "x" << size.height() << ", " << graph.uploadSamples().size()
                            << " samples\n";
    }

    CNetInfoUIService::Destroy();
    NetInfoUILogic::UnregSDK();
    NetInfoUILogic::Destroy();
    NetInfoGraphConfigParse::OnDestroy();
    return 0;
}
