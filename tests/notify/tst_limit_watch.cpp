// The limit warnings due per period, each step checked by a fresh watch as
// after a restart: only the state file carries what already fired.
#include "LimitWatch.h"
#include "TestHome.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using notify::Crossing;

class LimitWatchTest : public QObject
{
    Q_OBJECT
private slots:
    void crossings_data()
    {
        QTest::addColumn<QString>("settings"); // overrides key=value,...
        QTest::addColumn<QString>("steps"); // period,MB,minutes;...
        QTest::addColumn<QString>("fired"); // per step: W L t T joined, ';' between steps
        QTest::addColumn<QString>("colour"); // the bar after the last step

        const auto row = [](const char* name, const char* settings, const char* steps, const char* fired,
                             const char* colour) {
            QTest::newRow(name) << QString(settings) << QString(steps) << QString(fired) << QString(colour);
        };
        row("restart does not re-send", "", "1,85,0;1,90,0;1,99,0", "W;;", "BeforeWarningColor");
        row("new period re-arms", "", "1,85,0;1,100,0;2,85,0;2,101,0", "W;L;W;L", "ReachedWarningColor");
        row("time limit", "", "1,0,59;1,0,60;1,0,90;2,0,60", ";T;;T", "NoWarningColor");
        row("data limit off, time on", "chkVolume=false", "1,500,60", "T", "ReachedWarningColor");
        row("no settings file yet", "-", "1,150,90", "", "NoWarningColor");
        row("time limit of no size", "SizeTimeVolume=", "1,0,90", "", "NoWarningColor");
    }

    void crossings()
    {
        QFETCH(QString, settings);
        QFETCH(QString, steps);
        QFETCH(QString, fired);
        QFETCH(QString, colour);

        QTemporaryDir dir;
        const QByteArray text = TestHome::limitFile(
            QStringList { "chkTimeVolume=true", "radioDaily=false", "radioMonthly=true", "SizeTimeVolume=1" }
            + settings.split(',', Qt::SkipEmptyParts));
        QFile file(dir.filePath("DataUsageLimit.ini"));
        if (settings != "-") {
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
            file.close();
        }

        const QDate today(2026, 3, 10);
        const QStringList stepList = steps.split(';');
        const QStringList expected = fired.split(';');
        QCOMPARE(stepList.size(), expected.size());
        notify::LimitStatus status;
        for (int i = 0; i < stepList.size(); ++i) {
            const QStringList f = stepList[i].split(',');
            notify::PeriodFigures figures;
            figures.start = QDateTime(QDate(2026, f[0].toInt(), 1), QTime(0, 0));
            figures.end = figures.start.addMonths(1);
            figures.bytes = f[1].toULongLong() * notify::LimitWatch::LimitUnit;
            figures.seconds = f[2].toLongLong() * 60;
            notify::LimitWatch watch(file.fileName(), dir.filePath("state.ini"));
            QString got;
            for (Crossing c : watch.check(figures, today))
                got += QString("WLtT").at(int(c));
            QCOMPARE(stepList[i] + " fired " + got, stepList[i] + " fired " + expected[i]);
            status = watch.status(figures, today);
        }
        QCOMPARE(QString::fromLatin1(status.colorName), colour);
    }
};

QTEST_GUILESS_MAIN(LimitWatchTest)
#include "tst_limit_watch.moc"
