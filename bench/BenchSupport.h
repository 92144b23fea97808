// What the benchmarks share: a private <home> holding the shipped plug-in
// data (so no user file is touched), and a median over timed runs.
#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

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
#ifdef NETINFO_TRANSLATION_DATA_DIR
        // Untranslated keys are longer than any language's texts and get elided.
        const QString translationDir = m_home.path() + QStringLiteral("/translations");
        QDir().mkpath(translationDir);
        const QDir built(QStringLiteral(NETINFO_TRANSLATION_DATA_DIR));
        for (const QString& name : built.entryList({ QStringLiteral("*.qm") }, QDir::Files))
            QFile::copy(built.filePath(name), translationDir + QLatin1Char('/') + name);
#endif
        qputenv("NETINFO_LIBRARY_PATH", QFile::encodeName(m_home.path()));
        qputenv("XDG_DATA_HOME", QFile::encodeName(m_home.path() + QStringLiteral("/data")));
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_home.path() + QStringLiteral("/config")));
    }

private:
    QTemporaryDir m_home;
};

// Median in microseconds of `runs` calls of `work`.
template <class Work> double medianMicroseconds(int runs, Work&& work)
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

// Median and 90th percentile of samples in microseconds.
struct BenchTiming
{
    double median = 0;
    double p90 = 0;
};

inline BenchTiming benchTiming(std::vector<double> samples)
{
    if (samples.empty())
        return {};
    const auto at = [&samples](double share) {
        const size_t index = std::min(samples.size() - 1, size_t(share * samples.size()));
        std::nth_element(samples.begin(), samples.begin() + index, samples.end());
        return samples[index];
    };
    return { at(0.5), at(0.9) };
}

// The one line every benchmark ends with; the ratio sets the median against
// the bare work measured in the same run.
inline void printBenchLine(const QString& name, const BenchTiming& timing, double floor)
{
    QTextStream(stdout) << name << ": median " << QString::number(timing.median, 'f', 1) << " us, p90 "
                        << QString::number(timing.p90, 'f', 1) << " us, floor "
                        << QString::number(floor, 'f', 1) << " us, ratio "
                        << QString::number(floor > 0 ? timing.median / floor : 0, 'f', 2) << '\n';
}

// Microseconds since `start`.
inline double elapsedMicroseconds(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count();
}
