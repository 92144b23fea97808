// Painting the speed graph offscreen: 500 points a curve at 600x300, new
// values every frame, against the bare 500-point polyline on the same image.
//   bench_graph [paints] [width] [height]   (defaults 500, 600, 300)
#include "BenchSupport.h"
#include "NetInfoGraphConfigParse.h"
#include "NetInfoGraphWidget.h"
#include "NetInfoUILogic.h"
#include "NetInfoUIService.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QTextStream>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <vector>

namespace {

constexpr int kPoints = 500;

struct Timing
{
    double median = 0;
    double p90 = 0;
};

template <class Work> Timing measure(int runs, Work&& work)
{
    std::vector<double> samples;
    samples.reserve(runs);
    for (int i = 0; i < runs; ++i) {
        const auto start = std::chrono::steady_clock::now();
        work(i);
        const auto end = std::chrono::steady_clock::now();
        samples.push_back(std::chrono::duration<double, std::micro>(end - start).count());
    }
    std::sort(samples.begin(), samples.end());
    return { samples[samples.size() / 2], samples[samples.size() * 9 / 10] };
}

double upSpeed(int i)
{
    return 40 + 35 * std::sin(i / 9.0);
}
double downSpeed(int i)
{
    return 150 + 120 * std::sin(i / 23.0);
}

} // namespace

int main(int argc, char* argv[])
{
    const BenchHome home;

    QApplication app(argc, argv);
    const auto argument = [&](int index, int fallback) {
        return argc > index ? std::max(1, QString::fromLocal8Bit(argv[index]).toInt()) : fallback;
    };
    const int paints = argument(1, 500);
    const QSize size(argument(2, 600), argument(3, 300));

    Timing graphTiming;
    Timing floorTiming;
    int drawn = 0;
    {
        GraphWidget graph;
        graph.resize(size);
        // The trim drops two samples once past the limit, so with two new
        // samples a frame the upload list holds exactly kPoints when painted.
        graph.setMaxSamples(kPoints - 1);
        int sample = 0;
        for (; sample < kPoints; ++sample)
            graph.DrawGraph(upSpeed(sample), downSpeed(sample));

        QImage target(size, QImage::Format_ARGB32_Premultiplied);
        const auto frame = [&](int) {
            graph.DrawGraph(upSpeed(sample), downSpeed(sample));
            ++sample;
            graph.DrawGraph(upSpeed(sample), downSpeed(sample));
            ++sample;
            graph.render(&target);
        };
        measure(20, frame); // warm-up: fonts, glyph caches, the fixed layer

        // The floor: one bare polyline of as many points, of the same kind of
        // figures on the same scale, also changing every frame.
        const double plotHeight = size.height() - 50;
        std::vector<double> heights(4 * kPoints);
        for (size_t p = 0; p < heights.size(); ++p)
            heights[p] = plotHeight + 20 - plotHeight * downSpeed(int(p)) / graph.maxSpeed();
        QPolygonF line(kPoints);
        const auto bare = [&](int i) {
            for (int p = 0; p < kPoints; ++p)
                line[p] = QPointF(size.width() - 10 - p, heights[(i + p) % heights.size()]);
            QPainter painter(&target);
            painter.setPen(QPen(Qt::red, 1));
            painter.drawPolyline(line);
        };
        measure(20, bare);

        // Interleaved rounds, so that both see the same machine load.
        Timing graphRound[5];
        Timing floorRound[5];
        for (int round = 0; round < 5; ++round) {
            graphRound[round] = measure(paints / 5 + 1, frame);
            floorRound[round] = measure(paints / 5 + 1, bare);
        }
        const auto middle = [](Timing* rounds) {
            std::sort(
                rounds, rounds + 5, [](const Timing& a, const Timing& b) { return a.median < b.median; });
            return rounds[2];
        };
        graphTiming = middle(graphRound);
        floorTiming = middle(floorRound);
        drawn = int(graph.uploadSamples().size());
    }

    CNetInfoUIService::Destroy();
    NetInfoUILogic::UnregSDK();
    NetInfoUILogic::Destroy();
    NetInfoGraphConfigParse::OnDestroy();

    QTextStream out(stdout);
    out << "graph " << size.width() << "x" << size.height() << ", " << drawn << " points a curve, " << paints
        << " paints\n";
    out << "bench_graph: median " << qRound64(graphTiming.median) << " us, p90 " << qRound64(graphTiming.p90)
        << " us, floor " << qRound64(floorTiming.median) << " us, ratio "
        << QString::number(graphTiming.median / floorTiming.median, 'f', 2) << "\n";
    return 0;
}
