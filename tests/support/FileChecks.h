// What a test checks of a file on disk: its bytes and its permission bits.
#pragma once

#include <QFile>

#include <sys/stat.h>

// The whole file, or "<missing>" when it cannot be read.
inline QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

// The permission bits, or 0 when the file is not there.
inline mode_t modeOf(const QString& path)
{
    struct stat info
    {
    };
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? info.st_mode & 07777 : 0;
}
