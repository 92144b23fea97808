#include "Change.h"
#include "TestHome.h"

#include <QtTest>

#include <memory>

namespace {
const QString kContext = QStringLiteral("NetInfoUIExPlugin");
}

class TestTranslation : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void keysUnchangedBeforeLoading();
    void english_data();
    void english();
    void everyKeyHasText_data();
    void everyKeyHasText();
    void failedLoadKeepsLanguage_data();
    void failedLoadKeepsLanguage();

private:
    std::unique_ptr<TestHome> m_home;
};

void TestTranslation::initTestCase()
{
    m_home = std::make_unique<TestHome>();
    QVERIFY(m_home->isValid());
    QVERIFY2(m_home->installTranslations(), "no compiled translations in the build tree");
}

void TestTranslation::keysUnchangedBeforeLoading()
{
    QVERIFY(Change::CurrentLanguage().isEmpty());
    QCOMPARE(Change::tr("IDS_TREE_DAILY", kContext), QStringLiteral("IDS_TREE_DAILY"));
}

void TestTranslation::english_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("context");
    QTest::addColumn<QString>("expected");

    QTest::newRow("tree") << "IDS_TREE_DAILY" << kContext << "Today";
    QTest::newRow("misspelt key kept") << "IDS_WEDNESAY" << kContext << "Wednesday";
    QTest::newRow("placeholder kept") << "IDS_TRENDS_SPEED" << kContext << "Speed (%s)";
    QTest::newRow("unit") << "IDS_UNIT_KBPS" << kContext << "KB/s";
    QTest::newRow("unknown key") << "IDS_NO_SUCH_KEY" << kContext << "IDS_NO_SUCH_KEY";
    QTest::newRow("other context") << "IDS_TREE_DAILY" << "SomethingElse" << "IDS_TREE_DAILY";
    QTest::newRow("empty key") << "" << kContext << "";
}

void TestTranslation::english()
{
    QFETCH(QString, key);
    QFETCH(QString, context);
    QFETCH(QString, expected);

    QVERIFY(Change::LoadLanguage(QStringLiteral("en")));
    QCOMPARE(Change::CurrentLanguage(), QStringLiteral("en"));
    QCOMPARE(Change::tr(key, context), expected);
}

// The plug-in looks these up at run time; a key missing from the English file
// would show up as "IDS_..." on screen.
void TestTranslation::everyKeyHasText_data()
{
    QTest::addColumn<QString>("key");
    const char* const keys[] = {
        "IDC_BTN_SETLIMIT", "IDC_RADIO_WEEKLY", "IDC_STA_TIMEVOLUME", "IDC_VOLUMENOTES",
        "IDS_BOX_TIMEWARNAFTER", "IDS_BOX_TIMEWARNBEFORE", "IDS_BOX_WARNAFTER", "IDS_BOX_WARNBEFORE",
        "IDS_BOX_WARNIDOK", "IDS_BOX_WARNTITLE", "IDS_BTN_RESET", "IDS_CHK_AFTER", "IDS_CHK_BEFORE",
        "IDS_CHK_SET", "IDS_CHK_VOLUME", "IDS_CLEAR_VOLUME", "IDS_COLLAPSE_ALL", "IDS_CONFIRM",
        "IDS_DIALUP_TRANSFER", "IDS_DISCONNECTDIALUP", "IDS_EXPAND_ALL", "IDS_FRIDAY", "IDS_GRP_RECURRENCE",
        "IDS_GRP_SETLIMIT", "IDS_GRP_SETPERIOD", "IDS_GRP_SETWARNINGS", "IDS_INPUT_DATA_VOLUME",
        "IDS_INPUT_DATA_WARN_PERCENTAGE", "IDS_INPUT_TIME_VOLUME_LIMIT", "IDS_MONDAY", "IDS_NO", "IDS_NOTES",
        "IDS_OK", "IDS_PROPMT", "IDS_RADIO_DAILY", "IDS_RADIO_MONTHLY", "IDS_RESET_ALLDATA", "IDS_RESET_QUERY",
        "IDS_SATURDAY", "IDS_SETTING_NAME", "IDS_STAT_MAX", "IDS_STA_DATARECEIVED", "IDS_STA_DATASENT",
        "IDS_STA_DOWNSPEED", "IDS_STA_DURATION", "IDS_STA_STARTDATE", "IDS_STA_TOTALDATA",
        "IDS_STA_TOTALVOLUME", "IDS_STA_UPSPEED", "IDS_SUNDAY", "IDS_THURSDAY", "IDS_TREE_DAILY",
        "IDS_TREE_DATA", "IDS_TREE_DOWNLOAD", "IDS_TREE_DOWNLOADED_DATA", "IDS_TREE_MONTHLY", "IDS_TREE_SPEED",
        "IDS_TREE_STATISTICS", "IDS_TREE_TIME_LASTRESET", "IDS_TREE_TIME_TRANSFER", "IDS_TREE_TRANSFER",
        "IDS_TREE_UPLOAD", "IDS_TREE_UPLOADED_DATA", "IDS_TREE_YEARLY", "IDS_TRENDS_DOWNLOAD_SPEED",
        "IDS_TRENDS_SPEED", "IDS_TRENDS_UPLOAD_SPEED", "IDS_TUESDAY", "IDS_UNIT_HOURS", "IDS_VOLUME_LIMIT",
        "IDS_WEDNESAY", "IDS_YES", "IDS_UNIT_BYTE", "IDS_UNIT_KB", "IDS_UNIT_MB", "IDS_UNIT_GB", "IDS_UNIT_TB",
        "IDS_UNIT_BPS", "IDS_UNIT_KBPS", "IDS_UNIT_MBPS", "IDS_UNIT_GBPS"};
    for (const char* key : keys)
        QTest::newRow(key) << QString::fromLatin1(key);
}

void TestTranslation::everyKeyHasText()
{
    QFETCH(QString, key);

    QVERIFY(Change::LoadLanguage(QStringLiteral("en")));
    const QString text = Change::tr(key, kContext);
    QVERIFY2(!text.isEmpty() && text != key, qPrintable(key + " has no English text"));
}

void TestTranslation::failedLoadKeepsLanguage_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QByteArray>("fileContent"); // written as netinfo_<language>.qm when not null

    QTest::newRow("missing file") << "xx" << QByteArray();
    QTest::newRow("corrupt file") << "yy" << QByteArray("this is not a translation file");
    QTest::newRow("empty file") << "zz" << QByteArray("");
    QTest::newRow("empty name") << "" << QByteArray();
    QTest::newRow("path outside the home") << "../../en" << QByteArray();
}

void TestTranslation::failedLoadKeepsLanguage()
{
    QFETCH(QString, language);
    QFETCH(QByteArray, fileContent);

    QVERIFY(Change::LoadLanguage(QStringLiteral("en")));
    if (!fileContent.isNull()) {
        QFile file(m_home->homePath() + "/translations/netinfo_" + language + ".qm");
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(fileContent);
    }

    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("Change: ")));
    QVERIFY(!Change::LoadLanguage(language));
    QCOMPARE(Change::CurrentLanguage(), QStringLiteral("en"));
    QCOMPARE(Change::tr("IDS_TREE_DAILY", kContext), QStringLiteral("Today"));
    QCOMPARE(Change::tr("IDS_NO_SUCH_KEY", kContext), QStringLiteral("IDS_NO_SUCH_KEY"));
}

QTEST_GUILESS_MAIN(TestTranslation)
#include "tst_core_translation.moc"
