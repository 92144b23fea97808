// Saving the settings while the file system fails in every way it can: after
// each failure the user's file holds the old content or the new, byte for
// byte, keeps the mode the user chose, and no temporary file is left behind.
#include "AtomicFile.h"
#include "FileChecks.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <cerrno>
#include <csignal>
#include <sys/mount.h>
#include <sys/resource.h>

namespace {

const QByteArray kOld = "[uselimit]\nvolume=500\n";

void writeOld(const QString& path)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QCOMPARE(file.write(kOld), kOld.size());
    file.close();
    QCOMPARE(::chmod(QFile::encodeName(path).constData(), 0640), 0);
}

// A tmpfs of a few pages, filled up to the last byte.
struct FullDevice
{
    QString dir;
    bool mounted = false;
    explicit FullDevice(const QString& at)
        : dir(at)
    {
        mounted = ::mount("tmpfs", QFile::encodeName(dir).constData(), "tmpfs", 0, "size=64k") == 0;
    }
    ~FullDevice()
    {
        if (mounted)
            ::umount(QFile::encodeName(dir).constData());
    }
    void fill()
    {
        QFile filler(dir + QStringLiteral("/filler"));
        if (!filler.open(QIODevice::WriteOnly))
            return;
        const QByteArray page(4096, 'x');
        while (filler.write(page) == page.size() && filler.flush()) { }
        const QByteArray byte(1, 'x');
        while (filler.write(byte) == 1 && filler.flush()) { }
    }
};

} // namespace

class FaultsSave : public QObject
{
    Q_OBJECT

private slots:
    void everyOperationFails_data()
    {
        QTest::addColumn<int>("error");
        QTest::newRow("I/O error") << EIO;
        QTest::newRow("no space") << ENOSPC;
    }
    void everyOperationFails()
    {
        QFETCH(int, error);
        QTemporaryDir dir;
        const QString target = dir.filePath(QStringLiteral("netinfo.ini"));
        const QString temp = dir.filePath(QStringLiteral("netinfo.ini.tmp"));
        const QByteArray updated = "[uselimit]\nvolume=250\n" + QByteArray(70000, '#');
        int failed = 0;
        int n = 1;
        for (;; ++n) {
            writeOld(target);
            AtomicFile::failOperationForTesting(n, error);
            QString why;
            const bool saved = AtomicFile::replace(temp, target, updated, &why);
            const bool notReached = AtomicFile::failurePendingForTesting();
            AtomicFile::failOperationForTesting(0, 0);
            QVERIFY2(saved || !why.isEmpty(), qPrintable(QString::number(n)));
            QCOMPARE(contentOf(target), saved ? updated : kOld);
            QCOMPARE(modeOf(target), mode_t(0640));
            QVERIFY2(!QFile::exists(temp), qPrintable(QString::number(n)));
            failed += saved ? 0 : 1;
            if (notReached) {
                QVERIFY(saved);
                break;
            }
        }
        qInfo("%d operations tried, %d refused the save, the rest happened after the new file was in place",
            n - 1, failed);
        QVERIFY(failed >= 7);
    }

    void exhaustedSpace_data()
    {
        QTest::addColumn<bool>("fullDevice");
        QTest::newRow("full device") << true;
        QTest::newRow("file size limit") << false;
    }
    void exhaustedSpace()
    {
        QFETCH(bool, fullDevice);
        QTemporaryDir dir;
        FullDevice device(dir.path());
        if (fullDevice && !device.mounted)
            QSKIP("mounting a small file system needs privileges");
        const QString target = dir.filePath(QStringLiteral("netinfo.ini"));
        const QString temp = dir.filePath(QStringLiteral("netinfo.ini.tmp"));
        const QByteArray updated = "[uselimit]\nvolume=250\n" + QByteArray(16384, '#');
        writeOld(target);

        rlimit saved {};
        QCOMPARE(::getrlimit(RLIMIT_FSIZE, &saved), 0);
        const auto previous = std::signal(SIGXFSZ, SIG_IGN);
        if (fullDevice) {
            device.fill();
        } else {
            rlimit small = saved;
            small.rlim_cur = rlim_t(updated.size() / 2);
            QCOMPARE(::setrlimit(RLIMIT_FSIZE, &small), 0);
        }
        QString why;
        const bool refused = !AtomicFile::replace(temp, target, updated, &why);
        ::setrlimit(RLIMIT_FSIZE, &saved);
        std::signal(SIGXFSZ, previous);
        QVERIFY(refused);
        QVERIFY2(why.contains(QLatin1String(fullDevice ? "space" : "large")), qPrintable(why));
        QCOMPARE(contentOf(target), kOld);
        QCOMPARE(modeOf(target), mode_t(0640));
        QVERIFY(!QFile::exists(temp));

        // Once there is room again the same save goes through.
        QFile::remove(dir.filePath(QStringLiteral("filler")));
        QVERIFY2(AtomicFile::replace(temp, target, updated, &why), qPrintable(why));
        QCOMPARE(contentOf(target), updated);
        QCOMPARE(modeOf(target), mode_t(0640));
    }
};

QTEST_GUILESS_MAIN(FaultsSave)
#include "tst_faults_save.moc"
