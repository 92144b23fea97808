#include "AtomicFile.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace {

bool report(QString* error, const char* step, const QString& path, int code)
{
    if (error)
        *error = QStringLiteral("%1 %2: %3")
                     .arg(QLatin1String(step), path, QString::fromLocal8Bit(std::strerror(code)));
    return false;
}

bool writeAll(int fd, const QByteArray& content)
{
    const char* data = content.constData();
    qsizetype left = content.size();
    while (left > 0) {
        const ssize_t written = ::write(fd, data, size_t(left));
        if (written < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        data += written;
        left -= written;
    }
    return true;
}

// Makes the rename itself durable. Some file systems cannot sync a
// directory; the data is safe by then either way, so this never fails the
// replacement.
void syncDirectory(const QString& filePath)
{
    const int fd = ::open(QFile::encodeName(QFileInfo(filePath).absolutePath()).constData(),
        O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return;
    ::fsync(fd);
    ::close(fd);
}

} // namespace

bool AtomicFile::replace(
    const QString& tempPath, const QString& targetPath, const QByteArray& content, QString* error)
{
    const QByteArray temp = QFile::encodeName(tempPath);
    const int fd = ::open(temp.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (fd < 0)
        return report(error, "cannot create", tempPath, errno);

    // Without the fsync a power cut after the rename could leave the new
    // name pointing at blocks that never reached the disk.
    if (!writeAll(fd, content) || ::fsync(fd) != 0) {
        const int code = errno;
        ::close(fd);
        ::unlink(temp.constData());
        return report(error, "cannot write", tempPath, code);
    }
    if (::close(fd) != 0) {
        const int code = errno;
        ::unlink(temp.constData());
        return report(error, "cannot write", tempPath, code);
    }
    if (::rename(temp.constData(), QFile::encodeName(targetPath).constData()) != 0) {
        const int code = errno;
        ::unlink(temp.constData());
        return report(error, "cannot replace", targetPath, code);
    }
    syncDirectory(targetPath);
    return true;
}
