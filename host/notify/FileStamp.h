// A file's identity and version, read without opening it: a reader reloads
// only when this changes. Any write, by whichever process, changes the size
// or the change time; a replaced file changes the inode.
#pragma once

#include <QString>

struct FileStamp
{
    quint64 device = 0;
    quint64 inode = 0; // 0: no such file
    qint64 size = -1;
    qint64 modifiedNs = 0;
    qint64 changedNs = 0;

    static FileStamp of(const QString& path);
    bool operator==(const FileStamp& other) const;
    bool operator!=(const FileStamp& other) const { return !(*this == other); }
};
