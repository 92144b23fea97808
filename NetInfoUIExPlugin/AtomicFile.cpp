#include "AtomicFile.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace {

struct InjectedFailure
{
    std::optional<AtomicFile::Step> step; // any step when empty
    int countdown = 0;
    int error = 0;
};
InjectedFailure g_injected;

// True (with errno set) when a test asked this step to fail.
bool injected(AtomicFile::Step step)
{
    if (g_injected.countdown == 0 || (g_injected.step && *g_injected.step != step))
        return false;
    if (--g_injected.countdown > 0)
        return false;
    errno = g_injected.error;
    return true;
}

bool writeAll(int fd, const QByteArray& content)
{
    const char* data = content.constData();
    qsizetype left = content.size();
    while (left > 0) {
        const ssize_t written = injected(AtomicFile::Step::Write) ? -1 : ::write(fd, data, size_t(left));
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
    const int fd = injected(AtomicFile::Step::OpenDirectory)
        ? -1
        : ::open(QFile::encodeName(QFileInfo(filePath).absolutePath()).constData(),
            O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return;
    if (!injected(AtomicFile::Step::SyncDirectory))
        ::fsync(fd);
    ::close(fd);
}

} // namespace

AtomicFile::AtomicFile(const QString& tempPath, const QString& targetPath)
    : m_tempPath(tempPath)
    , m_targetPath(targetPath)
{ }

AtomicFile::~AtomicFile()
{
    discard();
}

void AtomicFile::failNextForTesting(Step step, int error)
{
    g_injected = InjectedFailure { step, 1, error };
}

void AtomicFile::failOperationForTesting(int n, int error)
{
    g_injected = InjectedFailure { std::nullopt, n, error };
}

bool AtomicFile::failurePendingForTesting()
{
    return g_injected.countdown > 0;
}

bool AtomicFile::fail(const char* step, const QString& path, int code)
{
    m_error = QStringLiteral("%1 %2: %3")
                  .arg(QLatin1String(step), path, QString::fromLocal8Bit(std::strerror(code)));
    return false;
}

void AtomicFile::discard()
{
    if (m_bWritten)
        ::unlink(QFile::encodeName(m_tempPath).constData());
    m_bWritten = false;
}

bool AtomicFile::write(const QByteArray& content)
{
    discard();
    const QByteArray temp = QFile::encodeName(m_tempPath);
    // Whatever lies at the temporary name is a leftover or a plant; unlink
    // removes a link itself, never its target.
    if ((injected(Step::Unlink) || ::unlink(temp.constData()) != 0) && errno != ENOENT && errno != EISDIR)
        return fail("cannot remove", m_tempPath, errno);

    // The user may have narrowed the file's permissions; a new file is
    // private from the start.
    struct stat target
    {
    };
    const bool found
        = !injected(Step::Stat) && ::lstat(QFile::encodeName(m_targetPath).constData(), &target) == 0;
    // Not knowing the user's mode is no reason to replace it with ours.
    if (!found && errno != ENOENT)
        return fail("cannot inspect", m_targetPath, errno);
    const bool hadTarget = found && S_ISREG(target.st_mode);
    const mode_t mode = hadTarget ? (target.st_mode & 07777) : 0600;

    const int fd = injected(Step::Create)
        ? -1
        : ::open(temp.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (fd < 0)
        return fail("cannot create", m_tempPath, errno);
    m_bWritten = true;

    // Without the fsync a power cut after the rename could leave the new
    // name pointing at blocks that never reached the disk.
    struct stat created
    {
    };
    if (injected(Step::Chmod) || ::fchmod(fd, mode) != 0 || !writeAll(fd, content) || injected(Step::Sync)
        || ::fsync(fd) != 0 || injected(Step::Stat) || ::fstat(fd, &created) != 0) {
        const int code = errno;
        ::close(fd);
        discard();
        return fail("cannot write", m_tempPath, code);
    }
    const bool closed = !injected(Step::Close);
    if (::close(fd) != 0 || !closed) {
        const int code = closed ? errno : g_injected.error;
        discard();
        return fail("cannot write", m_tempPath, code);
    }
    m_device = created.st_dev;
    m_inode = created.st_ino;
    return true;
}

bool AtomicFile::commit()
{
    if (!m_bWritten)
        return fail("nothing written for", m_targetPath, EINVAL);
    const QByteArray temp = QFile::encodeName(m_tempPath);
    // Only the file written above may take the target's name, not whatever
    // was swapped in at the temporary name since.
    struct stat current
    {
    };
    if (injected(Step::Stat) || ::lstat(temp.constData(), &current) != 0) {
        const int code = errno;
        discard();
        return fail("cannot inspect", m_tempPath, code);
    }
    if (!S_ISREG(current.st_mode) || current.st_dev != m_device || current.st_ino != m_inode) {
        m_bWritten = false; // not ours any more: left alone
        return fail("replaced behind our back:", m_tempPath, EEXIST);
    }
    if (injected(Step::Rename)
        || ::rename(temp.constData(), QFile::encodeName(m_targetPath).constData()) != 0) {
        const int code = errno;
        discard();
        return fail("cannot replace", m_targetPath, code);
    }
    m_bWritten = false;
    syncDirectory(m_targetPath);
    return true;
}

bool AtomicFile::replace(
    const QString& tempPath, const QString& targetPath, const QByteArray& content, QString* error)
{
    AtomicFile file(tempPath, targetPath);
    const bool done = file.write(content) && file.commit();
    if (!done && error)
        *error = file.errorString();
    return done;
}
