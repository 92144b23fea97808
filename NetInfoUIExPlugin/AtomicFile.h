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

    // Makes the next step of that kind fail with the given errno, as a
    // read-only or failing file system would.
    enum class Step { Create, Write, Rename };
    static void failNextForTesting(Step step, int error);

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
