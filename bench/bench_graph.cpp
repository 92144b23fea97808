// Painting the speed graph with a full sample list, offscreen.
//   bench_graph [paints] [width] [height]   (defaults 500, 500, 300)
#include "NetInfoGraphConfigParse.h"
#include "NetInfoGraphWidget.h"
#include "NetInfoUILogic.h"
#include "NetInfoUIService.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>
#include <chrono>
#include <cmath>
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
    const auto argument = [&](int index, int fallback) {
        return argc > index ? std::max(1, QString::fromLocal8Bit(argv[index]).toInt()) : fallback;
    };
    const int paints = argument(1, 500);
    const QSize size(argument(2, 500), argument(3, 300));

    std::vector<double> samples;
    {
        GraphWidget graph;
        graph.resize(size);
        // Past the sample limit, so the upload list is as long as it gets.
        for (int i = 0; i <= graph.maxSamples() + 1; ++i)
            graph.DrawGraph(40 + 35 * std::sin(i / 9.0), 150 + 120 * std::sin(i / 23.0));

        QImage target(size, QImage::Format_ARGB32_Premultiplied);
        for (int i = 0; i < 20; ++i) // warm-up: fonts, glyph caches
            graph.render(&target);
        samples.reserve(paints);
        for (int i = 0; i < paints; ++i) {
            const auto start = std::chrono::steady_clock::now();
            graph.render(&target);
            const auto end = std::chrono::steady_clock::now();
            samples.push_back(std::chrono::duration<double, std::micro>(end - start).count());
        }
        QTextStream(stdout) << "graph paint median: ";
        std::nth_element(samples.begin(), samples.begin() + samples.size() / 2, samples.end());
        QTextStream(stdout) << qRound64(samples[samples.size() / 2]) << " us over " << paints << " paints at "
                            << size.width() << "x" << size.height() << ", " << graph.uploadSamples().size()
                            << " samples\n";
    }

    CNetInfoUIService::Destroy();
    NetInfoUILogic::UnregSDK();
    NetInfoUILogic::Destroy();
    NetInfoGraphConfigParse::OnDestroy();
    return 0;
}
