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
