#include "CommonUtils.h"
#include "TestHome.h"

#include <QtTest>

#include <memory>

class TestPaths : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void libraryPath_data();
    void libraryPath();
    void settingsRoundTrip_data();
    void settingsRoundTrip();
    void settingsDefault();
    void settingsWriteFailure();

private:
    std::unique_ptr<TestHome> m_home;
};

void TestPaths::initTestCase()
{
    m_home = std::make_unique<TestHome>();
    QVERIFY(m_home->isValid());
}

void TestPaths::libraryPath_data()
{
    QTest::addColumn<QByteArray>("env"); // null: unset
    QTest::addColumn<QString>("expected");

    const QString home = m_home->homePath();
    const QString aboveBinary = QFileInfo(QCoreApplication::applicationFilePath()).dir().absolutePath();
    const QString aboveBinaryDir = QFileInfo(aboveBinary).absolutePath();

    QTest::newRow("set") << QFile::encodeName(home) << home;
    QTest::newRow("trailing slash") << QFile::encodeName(home + "/") << home;
    QTest::newRow("dot segments") << QFile::encodeName(home + "/plugins/../") << home;
    QTest::newRow("unset") << QByteArray() << aboveBinaryDir;
    QTest::newRow("empty") << QByteArray("") << aboveBinaryDir;
}

void TestPaths::libraryPath()
{
    QFETCH(QByteArray, env);
    QFETCH(QString, expected);

    const QByteArray saved = qgetenv("NETINFO_LIBRARY_PATH");
    if (env.isNull())
        qunsetenv("NETINFO_LIBRARY_PATH");
    else
        qputenv("NETINFO_LIBRARY_PATH", env);
    const QString path = CommonUtils::GetPluginLibraryPath();
    qputenv("NETINFO_LIBRARY_PATH", saved);

    QCOMPARE(path, expected);
}

void TestPaths::settingsRoundTrip_data()
{
    QTest::addColumn<QString>("group");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("fileLine"); // what the INI file holds after the write

    QTest::newRow("number") << "uselimit" << "startmonthdate" << QVariant(15) << "startmonthdate=15";
    QTest::newRow("text") << "uselimit" << "startweekday" << QVariant("Monday") << "startweekday=Monday";
    QTest::newRow("overwrite") << "uselimit" << "startmonthdate" << QVariant(28) << "startmonthdate=28";
    QTest::newRow("no group") << "" << "language" << QVariant("en") << "language=en";
}

void TestPaths::settingsRoundTrip()
{
    QFETCH(QString, group);
    QFETCH(QString, key);
    QFETCH(QVariant, value);
    QFETCH(QString, fileLine);

    CommonUtils::SetSettings(group, key, value);

    QCOMPARE(CommonUtils::GetSettings(group, key).toString(), value.toString());
    // The statistics service reads the file, so the value must be on disk.
    QFile file(m_home->configHome() + "/netinfo/netinfo-host.conf");
    QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.fileName() + " not written"));
    const QString content = QString::fromUtf8(file.readAll());
    QVERIFY2(content.contains(fileLine), qPrintable(content));
    if (!group.isEmpty())
        QVERIFY2(content.contains("[" + group + "]"), qPrintable(content));
}

void TestPaths::settingsDefault()
{
    QCOMPARE(CommonUtils::GetSettings("uselimit", "nosuchkey", 42).toInt(), 42);
    QVERIFY(!CommonUtils::GetSettings("nosuchgroup", "startmonthdate").isValid());
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("has no key")));
    CommonUtils::SetSettings("uselimit", "", 1);
}

void TestPaths::settingsWriteFailure()
{
    TestHome home;
    // A file where the settings directory should be: the write cannot succeed.
    QFile blocker(home.configHome() + "/netinfo");
    QVERIFY(blocker.open(QIODevice::WriteOnly));
    blocker.close();

    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("cannot write host setting uselimit/")));
    CommonUtils::SetSettings("uselimit", "startmonthdate", 3);
}

QTEST_GUILESS_MAIN(TestPaths)
#include "tst_core_paths.moc"
