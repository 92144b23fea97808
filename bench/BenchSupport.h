// What the benchmarks share: a private <home> holding the shipped plug-in
// data (so no user file is touched), and a median over timed runs.
#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <vector>

class BenchHome
{
public:
    // Call before the application object exists: it sets the environment.
    BenchHome()
    {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("QT_LOGGING_RULES", "netinfo.*.debug=false");
        const QString pluginDir = m_home.path() + QStringLiteral("/plugins/NetInfoUIExPlugin");
        QDir().mkpath(pluginDir);
        const QDir shipped(QStringLiteral(NETINFO_PLUGIN_DATA_DIR));
        for (const QString& name : shipped.entryList(QDir::Files))
            QFile::copy(shipped.filePath(name), pluginDir + QLatin1Char('/') + name);
        qputenv("NETINFO_LIBRARY_PATH", QFile::encodeName(m_home.path()));
        qputenv("XDG_DATA_HOME", QFile::encodeName(m_home.path() + QStringLiteral("/data")));
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_home.path() + QStringLiteral("/config")));
    }

private:
    QTemporaryDir m_home;
};

// Median in microseconds of `runs` calls of `work`.
template<class Work>
double medianMicroseconds(int runs, Work&& work)
{
    std::vector<double> samples;
    samples.reserve(runs);
    for (int i = 0; i < runs; ++i) {
        const auto start = std::chrono::steady_clock::now();
        work();
        const auto end = std::chrono::steady_clock::now();
        samples.push_back(std::chrono::duration<double, std::micro>(end - start).count());
    }
    std::nth_element(samples.begin(), samples.begin() + samples.size() / 2, samples.end());
    return samples[samples.size() / 2];
}
