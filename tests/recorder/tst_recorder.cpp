// The real netinfo-recorder as a child process: a clean stop (usage written)
// on every signal a logout or a kill sends.
#include "TestHome.h"

#include <QtTest>

#include <csignal>

class TestRecorder : public QObject
{
    Q_OBJECT

    // The recorder's own environment: a private home and no system bus, so a
    // real NetworkManager is never asked.
    static QProcessEnvironment environment()
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/netinfo-test-bus");
        env.remove("QT_MESSAGE_PATTERN");
        return env;
    }

private slots:
    void cleanStop_data()
    {
        QTest::addColumn<int>("signalNumber");
        QTest::addColumn<QString>("name");
        QTest::newRow("kill") << SIGTERM << "SIGTERM";
        QTest::newRow("interrupt") << SIGINT << "SIGINT";
        QTest::newRow("hang-up (logout)") << SIGHUP << "SIGHUP";
    }

    void cleanStop()
    {
        QFETCH(int, signalNumber);
        QFETCH(QString, name);
        TestHome home;
        QProcess recorder;
        recorder.setProcessEnvironment(environment());
        recorder.start(NETINFO_RECORDER, { "--interface", "lo" });
        QVERIFY(recorder.waitForStarted(5000));
        QString log;
        QDeadlineTimer deadline(15000);
        while (!log.contains("started (process") && recorder.state() == QProcess::Running
            && !deadline.hasExpired()) {
            recorder.waitForReadyRead(500);
            log += recorder.readAllStandardError();
        }
        if (log.contains("cannot be read"))
            QSKIP("this machine's network counters cannot be read");
        QVERIFY2(log.contains("started (process"), qPrintable(log));

        QCOMPARE(::kill(pid_t(recorder.processId()), signalNumber), 0);
        QVERIFY2(recorder.waitForFinished(10000), "no stop within 10 s");
        log += recorder.readAllStandardError();
        QCOMPARE(recorder.exitStatus(), QProcess::NormalExit);
        QCOMPARE(recorder.exitCode(), 0);
        QVERIFY2(log.contains("stopped cleanly on " + name + "; usage saved"), qPrintable(log));
        QVERIFY(QFileInfo::exists(home.userFile("usage.sqlite")));
    }
};

QTEST_GUILESS_MAIN(TestRecorder)
#include "tst_recorder.moc"
