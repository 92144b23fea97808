// The limit warnings due per period, each step checked by a fresh watch as
// after a restart: only the state file carries what already fired.
#include "LimitWatch.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using notify::Crossing;

class LimitWatchTest : public QObject
{
    Q_OBJECT
private slots:
    void crossings_data();
    void crossings();
};

void LimitWatchTest::crossings_data()
{
    QTest::addColumn<QString>("settings"); // overrides key=value,...
    QTest::addColumn<QString>("steps"); // period,MB,minutes;...
    QTest::addColumn<QString>("fired"); // per step: W L t T joined, ';' between steps
    QTest::addColumn<QString>("colour"); // the bar after the last step

    QTest::newRow("below the warning") << ""
                                       << "1,79,0"
                                       << ""
                                       << "NoWarningColor";
    QTest::newRow("at the warning") << ""
                                    << "1,80,0"
                                    << "W"
                                    << "BeforeWarningColor";
    QTest::newRow("restart does not re-send") << ""
                                              << "1,85,0;1,90,0;1,99,0"
                                              << "W;;"
                                              << "BeforeWarningColor";
    QTest::newRow("warning then limit") << ""
                                        << "1,85,0;1,100,0;1,130,0"
                                        << "W;L;"
                                        << "ReachedWarningColor";
    QTest::newRow("straight past the limit") << ""
                                             << "1,150,0"
                                             << "L"
                                             << "ReachedWarningColor";
    QTest::newRow("new period re-arms") << ""
                                        << "1,85,0;1,100,0;2,85,0;2,101,0"
                                        << "W;L;W;L"
                                        << "ReachedWarningColor";
    QTest::newRow("only the early warning asked") << "chkWarnAfter=false"
                                                  << "1,150,0;1,160,0"
                                                  << "W;"
                                                  << "ReachedWarningColor";
    QTest::newRow("warnings off") << "chkWarnbefore=false,chkWarnAfter=false"
                                  << "1,85,0;1,150,0"
                                  << ";"
                                  << "ReachedWarningColor";
    QTest::newRow("time limit") << ""
                                << "1,0,59;1,0,60;1,0,90;2,0,60"
                                << ";T;;T"
                                << "NoWarningColor";
    QTest::newRow("data limit off, time on") << "chkVolume=false"
                                             << "1,500,60"
                                             << "T"
                                             << "ReachedWarningColor";
    QTest::newRow("no settings file yet") << "-"
                                          << "1,150,90"
                                          << ""
                                          << "NoWarningColor";
    QTest::newRow("no percentage: limit only") << "WarnBeforPercentage=0"
                                               << "1,90,0;1,100,0"
                                               << ";L"
                                               << "ReachedWarningColor";
}

void LimitWatchTest::crossings()
{
    QFETCH(QString, settings);
    QFETCH(QString, steps);
    QFETCH(QString, fired);
    QFETCH(QString, colour);

    QTemporaryDir dir;
    QMap<QString, QString> values { { "chkVolume", "true" }, { "chkTimeVolume", "true" },
        { "chkWarnbefore", "true" }, { "chkWarnAfter", "true" }, { "radioDaily", "false" },
        { "radioWeekly", "false" }, { "radioMonthly", "true" }, { "SizeVolume", "100" },
        { "WarnBeforPercentage", "80" }, { "SizeTimeVolume", "1" } };
    for (const QString& pair : settings.split(',', Qt::SkipEmptyParts))
        values.insert(pair.section('=', 0, 0), pair.section('=', 1));
    QByteArray text = "[uselimit]\n";
    for (auto it = values.cbegin(); it != values.cend(); ++it)
        text += (it.key() + '=' + it.value() + '\n').toUtf8();
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
        QVERIFY2(got == expected[i],
            qPrintable(QString("step %1 (%2): fired \"%3\", expected \"%4\"")
                           .arg(i)
                           .arg(stepList[i], got, expected[i])));
        status = watch.status(figures, today);
    }
    QCOMPARE(QString::fromLatin1(status.colorName), colour);
}

QTEST_GUILESS_MAIN(LimitWatchTest)
#include "tst_limit_watch.moc"
