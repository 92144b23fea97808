// The configuration reader: error codes, section selection and the colour and
// limit lists.
#include "NetInfoConfigParse.h"

#include "TestHome.h"

#include <QDir>
#include <QFile>
#include <QtTest>

namespace {
QByteArray document(const QByteArray& body)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<veltdoc>\n" + body + "\n</veltdoc>\n";
}

QStringList names(const QVector<NetInfoConfig>& entries)
{
    QStringList result;
    for (const NetInfoConfig& entry : entries)
        result << entry.strCategory + QLatin1Char('/') + entry.strName + QLatin1Char('=') + entry.strValue;
    return result;
}
}

class TestConfigParse : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { NetInfoConfigParse::OnDestroy(); }

    void missingFileGivesThree()
    {
        TestHome home;
        QVector<NetInfoConfig> out{{QStringLiteral("stale"), {}, {}, {}, {}}};
        QString group = QStringLiteral("customize"), module = QStringLiteral("common");
        QTest::ignoreMessage(QtWarningMsg,
                             qPrintable(QStringLiteral("File %1 does not exist").arg(NetInfoConfigParse::configFilePath())));
        QCOMPARE(NetInfoConfigParse::GetInstance()->GetSettingsFromXML(group, module, out), 3);
        QVERIFY2(out.isEmpty(), "the output is emptied before anything is read");
    }

    void unopenableFileGivesTwentyFive()
    {
        TestHome home;
        // A directory in the file's place exists but cannot be read as a file,
        // even by root.
        QVERIFY(QDir().mkpath(NetInfoConfigParse::configFilePath()));
        QVector<NetInfoConfig> out;
        QString group = QStringLiteral("customize"), module = QStringLiteral("common");
        QTest::ignoreMessage(QtWarningMsg, "Error open file: ");
        QCOMPARE(NetInfoConfigParse::GetInstance()->GetSettingsFromXML(group, module, out), 25);
    }

    void malformedFileGivesSixAndKeepsEarlierEntries()
    {
        TestHome home;
        QFile fixture(QFINDTESTDATA("../data/config_malformed.xml"));
        QVERIFY(fixture.open(QIODevice::ReadOnly));
        QVERIFY(home.writePluginFile(QStringLiteral("NetInfoUIExConfig.xml"), fixture.readAll()));
        QVector<NetInfoConfig> out;
        QString group = QStringLiteral("customize"), module = QStringLiteral("common");
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^GroupInfo Read Error ")));
        QCOMPARE(NetInfoConfigParse::GetInstance()->GetSettingsFromXML(group, module, out), 6);
        QCOMPARE(names(out), QStringList({"function/SHOWGRAPH=true", "function/STATISTICS=true"}));
    }

    void garbageBeforeRootGivesSix()
    {
        TestHome home;
        QVERIFY(home.writePluginFile(QStringLiteral("NetInfoUIExConfig.xml"), "this is not xml <<"));
        QVector<NetInfoConfig> out;
        QString group = QStringLiteral("customize"), module = QStringLiteral("common");
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral(": Read Error: n$")));
        QCOMPARE(NetInfoConfigParse::GetInstance()->GetSettingsFromXML(group, module, out), 6);
        QVERIFY(out.isEmpty());
    }

    void selectsTheWantedSection_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("module");
        QTest::addColumn<QStringList>("expected");

        const QByteArray twoModules =
            "<group name=\"customize\">"
            "<module name=\"common\"><function><item name=\"A\" value=\"true\"/></function></module>"
            "<module name=\"datacard\"><function><item name=\"B\" value=\"false\"/></function>"
            "<speedunit><item name=\"KB/s\" value=\"1024\"/></speedunit></module>"
            "</group>"
            "<group name=\"other\"><module name=\"common\"><function><item name=\"C\" value=\"true\"/>"
            "</function></module></group>";
        QTest::newRow("common module") << document(twoModules) << "common" << QStringList{"function/A=true"};
        QTest::newRow("edition module")
            << document(twoModules) << "datacard" << QStringList{"function/B=false", "speedunit/KB/s=1024"};
        QTest::newRow("unknown module") << document(twoModules) << "nothere" << QStringList{};
        QTest::newRow("item before any category")
            << document("<group name=\"customize\"><module name=\"common\"><item name=\"X\" value=\"1\"/>"
                        "</module></group>")
            << "common" << QStringList{"/X=1"};
        QTest::newRow("names are case-sensitive")
            << document("<group name=\"customize\"><module name=\"common\"><Function>"
                        "<item name=\"X\" value=\"1\"/><Item name=\"Y\" value=\"2\"/></Function></module></group>")
            << "common" << QStringList{"/X=1"};
        QTest::newRow("nesting is not enforced")
            << document("<group name=\"customize\"/><module name=\"common\"/><format/>"
                        "<item name=\"F\" value=\"v\" type=\"t\" langResID=\"IDS_F\"/>")
            << "common" << QStringList{"format/F=v"};
        QTest::newRow("another root element")
            << QByteArray("<?xml version=\"1.0\"?><other><group name=\"customize\"><module name=\"common\">"
                          "<function><item name=\"A\" value=\"true\"/></function></module></group></other>")
            << "common" << QStringList{};
    }

    void selectsTheWantedSection()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, module);
        QFETCH(QStringList, expected);
        TestHome home;
        QVERIFY(home.writePluginFile(QStringLiteral("NetInfoUIExConfig.xml"), content));
        QVector<NetInfoConfig> out;
        QString group = QStringLiteral("customize");
        QCOMPARE(NetInfoConfigParse::GetInstance()->GetSettingsFromXML(group, module, out), 0);
        QCOMPARE(names(out), expected);
    }

    void readsEveryAttributeOfAnEntry()
    {
        TestHome home;
        QVERIFY(home.writePluginFile(QStringLiteral("NetInfoUIExConfig.xml"),
                                     document("<group name=\"customize\"><module name=\"common\"><fluxunit>"
                                              "<item name=\"MB\" value=\"1048576\" type=\"42\" langResID=\"IDS_UNIT_MB\"/>"
                                              "<item name=\"bare\"/></fluxunit></module></group>")));
        QVector<NetInfoConfig> out;
        QString group = QStringLiteral("customize"), module = QStringLiteral("common");
        QCOMPARE(NetInfoConfigParse::GetInstance()->GetSettingsFromXML(group, module, out), 0);
        QCOMPARE(out.size(), 2);
        QCOMPARE(out[0].strCategory, QStringLiteral("fluxunit"));
        QCOMPARE(out[0].strType, QStringLiteral("42"));
        QCOMPARE(out[0].strLangResID, QStringLiteral("IDS_UNIT_MB"));
        QVERIFY2(out[1].strValue.isEmpty() && out[1].strType.isEmpty() && out[1].strLangResID.isEmpty(),
                 "missing attributes read as empty strings");
    }

    void collectsColoursAndLimitsFromEveryModule()
    {
        TestHome home;
        QVERIFY(home.writePluginFile(
            QStringLiteral("NetInfoUIExConfig.xml"),
            document("<group name=\"customize\"><module name=\"common\">"
                     "<Color><item name=\"NoWarningColor\" R=\"1\" G=\"2\" B=\"3\"/></Color></module>"
                     "<module name=\"unrelated\"><Color><item name=\"ReachedWarningColor\" R=\"255\" G=\"0\" B=\"0\"/>"
                     "</Color><Limit><item name=\"SizeVolume\" value=\"1\" value1=\"999\"/></Limit>"
                     "<function><item name=\"HIDDEN\" value=\"true\"/></function></module></group>")));
        NetInfoConfigParse* parser = NetInfoConfigParse::GetInstance();
        QVector<NetInfoConfig> out;
        QString group = QStringLiteral("customize"), module = QStringLiteral("common");
        QCOMPARE(parser->GetSettingsFromXML(group, module, out), 0);
        QVERIFY2(out.isEmpty(), "colours and limits are not configuration entries");
        QCOMPARE(parser->progressColors().size(), 2);
        QCOMPARE(parser->progressColors()[0].color, QColor(1, 2, 3));
        QCOMPARE(parser->progressColors()[1].strName, QStringLiteral("ReachedWarningColor"));
        QCOMPARE(parser->progressColors()[1].color.alpha(), 255);
        QCOMPARE(parser->limitConfigs().size(), 1);
        QCOMPARE(parser->limitConfigs()[0].strValue1, QStringLiteral("999"));

        // A second parse appends the lists again rather than replacing them.
        QCOMPARE(parser->GetSettingsFromXML(group, module, out), 0);
        QCOMPARE(parser->progressColors().size(), 4);
        QCOMPARE(parser->limitConfigs().size(), 2);
    }

    void shippedFileParses()
    {
        TestHome home;
        QVERIFY(home.installDataFile(QStringLiteral("NetInfoUIExConfig.xml")));
        QVector<NetInfoConfig> out;
        QString group = QStringLiteral("customize"), module = QStringLiteral("common");
        QCOMPARE(NetInfoConfigParse::GetInstance()->GetSettingsFromXML(group, module, out), 0);
        QStringList colours;
        for (const NetInfoProgressColor& colour : NetInfoConfigParse::GetInstance()->progressColors())
            colours << colour.strName;
        QCOMPARE(colours, QStringList({"NoWarningColor", "BeforeWarningColor", "ReachedWarningColor"}));
    }
};

QTEST_GUILESS_MAIN(TestConfigParse)
#include "tst_plugin_configparse.moc"
