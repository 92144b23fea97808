#include "FileStamp.h"

#include <QFile>

#include <sys/stat.h>

FileStamp FileStamp::of(const QString& path)
{
    FileStamp stamp;
    struct stat info
    {
    };
    if (::stat(QFile::encodeName(path).constData(), &info) != 0)
        return stamp;
    stamp.device = quint64(info.st_dev);
    stamp.inode = quint64(info.st_ino);
    stamp.size = qint64(info.st_size);
    stamp.modifiedNs = qint64(info.st_mtim.tv_sec) * 1000000000 + info.st_mtim.tv_nsec;
    stamp.changedNs = qint64(info.st_ctim.tv_sec) * 1000000000 + info.st_ctim.tv_nsec;
    return stamp;
}

bool FileStamp::operator==(const FileStamp& other) const
{
    return device == other.device && inode == other.inode && size == other.size
        && modifiedNs == other.modifiedNs && changedNs == other.changedNs;
}
