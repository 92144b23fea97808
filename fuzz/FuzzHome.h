// A private host home and user folders for one fuzzing process, so the
// readers under test find their files where the application would.
#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QTemporaryDir>

#include <cstdlib>

class FuzzHome
{
public:
    // On tmpfs where there is one: the settings save syncs, and a disk would
    // make that the whole cost of an execution.
    FuzzHome()
        : m_dir(QDir(
            QFileInfo::exists(QStringLiteral("/dev/shm")) ? QStringLiteral("/dev/shm") : QDir::tempPath())
                    .filePath(QStringLiteral("netinfo-fuzz-XXXXXX")))
    {
        qputenv("NETINFO_LIBRARY_PATH", m_dir.path().toUtf8());
        qputenv("XDG_DATA_HOME", (m_dir.path() + QStringLiteral("/data")).toUtf8());
        qputenv("XDG_CONFIG_HOME", (m_dir.path() + QStringLiteral("/config")).toUtf8());
        qputenv("QT_LOGGING_RULES", "*=false");
    }

    QString path(const QString& relative) const { return m_dir.path() + QLatin1Char('/') + relative; }

    // Writes the input where a reader will look for it; aborts if it cannot,
    // since every later result would be meaningless.
    void write(const QString& relative, const QByteArray& bytes) const
    {
        QFile file(path(relative));
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size())
            std::abort();
    }

private:
    QTemporaryDir m_dir;
};
