// The configuration reader: error codes, section selection and the colour and
// limit lists.
#include "NetInfoConfigParse.h"

#include "TestHome.h"

#include <QFile>
#include <QtTest>

namespace {
QByteArray document(const QByteArray& body)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<veltdoc>\n" + body + "\n</veltdoc>\n";
}

int parse(const QString& module, QVector<NetInfoConfig>& out)
{
    QString group = QStringLiteral("customize"), wanted = module;
    return NetInfoConfigParse::GetInstance()->GetSettingsFromXML(group, wanted, out);
}

QStringList names(const QVector<NetInfoConfig>& entries)
{
    QStringList result;
    for (const NetInfoConfig& entry : entries)
        result << entry.strCategory + QLatin1Char('/') + entry.strName + QLatin1Char('=') + entry.strValue;
    return result;
}
} // namespace

class TestConfigParse : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { NetInfoConfigParse::OnDestroy(); }

    // The output is cleared first; what was read before an error stays.
    void reads_data()
    {
        QTest::addColumn<QByteArray>("content"); // "missing" or "data:" and a tests/data file
        QTest::addColumn<QString>("module");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("warning");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("missing file") << QByteArray("missing") << "common" << 3
                                      << "^File .*NetInfoUIExConfig.xml does not exist$" << QStringList();
        QTest::newRow("malformed") << QByteArray("data:config_malformed.xml") << "common" << 6
                                   << "^GroupInfo Read Error "
                                   << QStringList { "function/SHOWGRAPH=true", "function/STATISTICS=true" };

        const QByteArray twoModules = document(
            "<group name=\"customize\">"
            "<module name=\"common\"><function><item name=\"A\" value=\"true\"/></function></module>"
            "<module name=\"datacard\"><function><item name=\"B\" value=\"false\"/></function>"
            "<speedunit><item name=\"KB/s\" value=\"1024\"/></speedunit></module></group>"
            "<group name=\"other\"><module name=\"common\"><function><item name=\"C\" value=\"true\"/>"
            "</function></module></group>");
        QTest::newRow("common module")
            << twoModules << "common" << 0 << QString() << QStringList { "function/A=true" };
        QTest::newRow("edition module") << twoModules << "datacard" << 0 << QString()
                                        << QStringList { "function/B=false", "speedunit/KB/s=1024" };
        QTest::newRow("unknown module") << twoModules << "nothere" << 0 << QString() << QStringList {};
    }

    void reads()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, module);
        QFETCH(QString, warning);
        TestHome home;
        if (content.startsWith("data:")) {
            QFile file(QFINDTESTDATA("../data/" + QString::fromLatin1(content.mid(5))));
            QVERIFY(file.open(QIODevice::ReadOnly));
            QVERIFY(home.writePluginFile(QStringLiteral("NetInfoUIExConfig.xml"), file.readAll()));
        } else if (content != "missing") {
            QVERIFY(home.writePluginFile(QStringLiteral("NetInfoUIExConfig.xml"), content));
        }
        QVector<NetInfoConfig> out { { QStringLiteral("stale"), {}, {}, {}, {} } };
        if (!warning.isEmpty())
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(warning));
        QTEST(parse(module, out), "code");
        QTEST(names(out), "expected");
    }

    void collectsColoursAndLimitsFromEveryModule()
    {
        TestHome home;
        QVERIFY(home.writePluginFile(QStringLiteral("NetInfoUIExConfig.xml"),
            document("<group name=\"customize\"><module name=\"common\">"
                     "<Color><item name=\"NoWarningColor\" R=\"1\" G=\"2\" B=\"3\"/></Color></module>"
                     "<module name=\"unrelated\"><Color><item name=\"ReachedWarningColor\" R=\"255\" G=\"0\" "
                     "B=\"0\"/>"
                     "</Color><Limit><item name=\"SizeVolume\" value=\"1\" "
                     "value1=\"999\"/></Limit></module></group>")));
        NetInfoConfigParse* parser = NetInfoConfigParse::GetInstance();
        QVector<NetInfoConfig> out;
        QCOMPARE(parse(QStringLiteral("common"), out), 0);
        QVERIFY2(out.isEmpty(), "colours and limits are not configuration entries");
        QCOMPARE(parser->progressColors().size(), 2);
        QCOMPARE(parser->progressColors()[0].color, QColor(1, 2, 3));
        QCOMPARE(parser->progressColors()[1].strName, QStringLiteral("ReachedWarningColor"));
        QCOMPARE(parser->limitConfigs().size(), 1);
        QCOMPARE(parser->limitConfigs()[0].strValue1, QStringLiteral("999"));

        // A second parse appends the lists again rather than replacing them.
        QCOMPARE(parse(QStringLiteral("common"), out), 0);
        QCOMPARE(parser->progressColors().size(), 4);
        QCOMPARE(parser->limitConfigs().size(), 2);
    }
};

QTEST_GUILESS_MAIN(TestConfigParse)
#include "tst_plugin_configparse.moc"
