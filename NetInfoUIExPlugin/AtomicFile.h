// Whole-file replacement that survives a crash or power cut at any moment:
// readers see either the old content or the new, never none and never a mix.
// The temporary file is always one this process created itself, so a link
// planted at its name is neither followed nor renamed over the target.
#pragma once

#include <QByteArray>
#include <QString>

#include <sys/types.h>

class AtomicFile
{
public:
    // tempPath must lie in targetPath's directory.
    AtomicFile(const QString& tempPath, const QString& targetPath);
    // Removes a temporary file that was written but never committed.
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    // Writes content to a freshly created temporary file with the target's
    // permissions (0600 when there is no target yet) and flushes it to the
    // disk. The target is not touched.
    bool write(const QByteArray& content);
    // Renames the written temporary file over the target.
    bool commit();
    // Which step failed and why, after a false result.
    QString errorString() const { return m_error; }

    // write() and commit() in one; *error (when given) as errorString().
    static bool replace(const QString& tempPath, const QString& targetPath, const QByteArray& content,
        QString* error = nullptr);

    // Every system call a replacement makes, in the order it makes them.
    enum class Step { Create, Write, Rename, Unlink, Chmod, Sync, Stat, Close, OpenDirectory, SyncDirectory };
    // Makes the next step of that kind fail with the given errno, as a
    // read-only or failing file system would.
    static void failNextForTesting(Step step, int error);
    // Makes the nth system call from now (1: the next) fail with the given errno.
    static void failOperationForTesting(int n, int error);
    // True while an injected failure has not happened yet.
    static bool failurePendingForTesting();

private:
    bool fail(const char* step, const QString& path, int code);
    void discard();

    QString m_tempPath;
    QString m_targetPath;
    QString m_error;
    bool m_bWritten = false;
    dev_t m_device = 0;
    ino_t m_inode = 0;
};
