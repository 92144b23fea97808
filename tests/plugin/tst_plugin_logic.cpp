// The statistics bridge on a scripted SDK: report kinds, the callback, failures
// and the merged configuration.
#include "PluginFixture.h"
#include "SdkTestSupport.h"

#include "veltsdk.h"

#include <QSignalSpy>
#include <QtTest>

using velt::SdkCall;
using velt::SimulatedBackend;
using velt::StatisticsRecord;

namespace {
QByteArray configDocument(const QByteArray& common, const QByteArray& edition = {})
{
    return "<?xml version=\"1.0\"?><veltdoc><group name=\"customize\"><module name=\"common\">" + common
        + "</module><module name=\"edition\">" + edition + "</module></group></veltdoc>";
}

QStringList unitNames(const QVector<TagUnits>& units)
{
    QStringList names;
    for (const TagUnits& unit : units)
        names << unit.strName;
    return names;
}
} // namespace

class TestLogic : public QObject
{
    Q_OBJECT

private:
    SimulatedBackend* m_sdk = nullptr;
    PluginFixture m_fixture;

private slots:
    void init()
    {
        m_fixture.home = std::make_unique<TestHome>();
        m_sdk = PluginFixture::installSdk();
    }

    void cleanup() { m_fixture.tearDown(); }

    // Each period asks its own report kind; the history key goes out
    // unsigned, so a negative one asks for now. A failed call answers true
    // and leaves the output as it was ({ 1, 2, 3 }, the figures of kind 0).
    void queries_data()
    {
        QTest::addColumn<int>("type"); // -1: the history at "key"
        QTest::addColumn<qlonglong>("key");
        QTest::addColumn<int>("source"); // the report kind the figures come from; 9: the history
        QTest::addColumn<bool>("fails");
        QTest::newRow("daily") << int(NETINFO_DAILY) << 0ll << int(VELT_REPORT_TODAY) << false;
        QTest::newRow("monthly") << int(NETINFO_MONTHLY) << 0ll << int(VELT_REPORT_MONTH) << false;
        QTest::newRow("unknown type") << 7 << 0ll << int(VELT_REPORT_TODAY) << false;
        QTest::newRow("history, negative key") << -1 << -1ll << 9 << false;
        QTest::newRow("history, an hour") << -1 << 3600ll << 9 << false;
        QTest::newRow("monthly fails") << int(NETINFO_MONTHLY) << 0ll << 0 << true;
        QTest::newRow("history fails") << -1 << 60ll << 0 << true;
    }

    void queries()
    {
        QFETCH(int, type);
        QFETCH(qlonglong, key);
        QFETCH(int, source);
        QFETCH(bool, fails);
        for (int k = VELT_REPORT_LIVE; k <= VELT_REPORT_YEAR; ++k)
            m_sdk->setReport(k, record(k * 100 + 2, k * 100 + 1, 0, 0, k * 100 + 3));
        m_sdk->setHistory(record(902, 901, 0, 0, 903));
        if (fails)
            m_sdk->failNext(type < 0 ? SdkCall::GetSpecHistory : SdkCall::GetReport);
        NetInfoData data { 1, 2, 3 };
        if (type < 0)
            NetInfoUILogic::Instance()->GetHistrorySpecData(key, data);
        else
            QCOMPARE(
                NetInfoUILogic::Instance()->GetStatistics(static_cast<_enNetInfoType>(type), data), fails);
        QCOMPARE(data.ullUpData, quint64(source * 100 + 1));
        QCOMPARE(data.ullDownData, quint64(source * 100 + 2));
        QCOMPARE(data.ullDuration, quint64(source * 100 + 3));
        if (!fails)
            QCOMPARE(m_sdk->lastHistoryKey(), type < 0 ? quint64(std::max(key, 0ll)) : 0ull);
    }

    void callbackPaths_data()
    {
        QTest::addColumn<int>("event");
        QTest::addColumn<int>("firstByte"); // -1: null data
        QTest::addColumn<bool>("reportFails");
        QTest::addColumn<int>("result");
        QTest::addColumn<QVariantList>("emitted"); // empty: nothing emitted
        QTest::addColumn<int>("reportCalls");
        // Rows named "bridge gone" call back after the bridge was destroyed.

        const QVariantList live { QVariant::fromValue(300ul), QVariant::fromValue(4000ul),
            QVariant::fromValue(qulonglong(1) << 33), QVariant::fromValue(qulonglong(777)),
            QStringLiteral("01:00:05") };
        const QVariantList idle { QVariant::fromValue(0ul), QVariant::fromValue(0ul),
            QVariant::fromValue(0ull), QVariant::fromValue(0ull), QStringLiteral("00:00:00") };
        QTest::newRow("other event") << 7999 << 1 << false << 1 << QVariantList() << 0;
        QTest::newRow("null data") << 8000 << -1 << false << 0 << QVariantList() << 0;
        QTest::newRow("disconnected") << 8000 << 0 << false << 1 << idle << 0;
        QTest::newRow("connected") << 8000 << 1 << false << 1 << live << 1;
        QTest::newRow("live report fails") << 8000 << 1 << true << 1 << QVariantList() << 1;
        QTest::newRow("bridge gone") << 8000 << 1 << false << 0 << QVariantList() << 0;
    }

    void callbackPaths()
    {
        QFETCH(int, event);
        QFETCH(int, firstByte);
        QFETCH(bool, reportFails);
        QFETCH(QVariantList, emitted);

        m_sdk->setReport(VELT_REPORT_LIVE, record(777, qulonglong(1) << 33, 4000, 300, 3605));
        if (reportFails)
            m_sdk->failNext(SdkCall::GetReport);
        QSignalSpy spy(NetInfoUILogic::Instance(), &NetInfoUILogic::statisticsChanged);
        if (QTest::currentDataTag() == QLatin1String("bridge gone"))
            NetInfoUILogic::Destroy();
        unsigned char data = static_cast<unsigned char>(firstByte);
        QTEST(NetInfoUILogic::StatisticsEventCallBack(event, firstByte < 0 ? nullptr : &data), "result");
        QCOMPARE(spy.size(), emitted.isEmpty() ? 0 : 1);
        if (!emitted.isEmpty())
            QCOMPARE(spy.first(), emitted);
        QTEST(m_sdk->callCount(SdkCall::GetReport), "reportCalls");
    }

    void initResult_data()
    {
        QTest::addColumn<QByteArray>("config"); // null: no file
        QTest::addColumn<QByteArray>("edition");
        QTest::addColumn<bool>("nameFails");
        QTest::addColumn<int>("result");

        const QByteArray good = configDocument("<function><item name=\"A\" value=\"true\"/></function>");
        QTest::newRow("common edition") << good << QByteArray("common") << false << 0;
        QTest::newRow("named edition") << good << QByteArray("edition") << false << 0;
        QTest::newRow("edition name unavailable") << good << QByteArray("edition") << true << 1;
        QTest::newRow("no file") << QByteArray() << QByteArray("common") << false << 3;
        QTest::newRow("broken file") << QByteArray("<veltdoc><group>") << QByteArray("common") << false << 6;
    }

    void initResult()
    {
        QFETCH(QByteArray, config);
        QFETCH(QByteArray, edition);
        QFETCH(bool, nameFails);
        QFETCH(int, result);
        if (!config.isNull())
            QVERIFY(m_fixture.home->writePluginFile(QStringLiteral("NetInfoUIExConfig.xml"), config));
        m_sdk->setCustomizeName(edition);
        if (nameFails)
            m_sdk->failNext(SdkCall::GetCustomizeName);
        if (result == 3)
            QTest::ignoreMessage(
                QtWarningMsg, QRegularExpression(QStringLiteral("^File .* does not exist$")));
        if (result == 6)
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("Read Error")));
        NetInfoUILogic* logic = NetInfoUILogic::Instance();
        QCOMPARE(logic->Init(), result);
        QCOMPARE(logic->IsFunctionEnable(QStringLiteral("A")), result == 0 || result == 1);
        QCOMPARE(m_sdk->callCount(SdkCall::Register), 1);
    }

    // The edition's entries over the common ones: switches by name, unit
    // tables as a whole.
    void mergedConfiguration_data()
    {
        QTest::addColumn<QByteArray>("common");
        QTest::addColumn<QByteArray>("edition");
        QTest::addColumn<bool>("enabled"); // "SHOWGRAPH"
        QTest::addColumn<QStringList>("units"); // speeds, then fluxes
        const QByteArray on = "<function><item name=\"SHOWGRAPH\" value=\"true\"/></function>";
        const QByteArray off = "<function><item name=\"SHOWGRAPH\" value=\"false\"/></function>";
        const QByteArray units = on
            + "<speedunit><item name=\"KB/s\" value=\"1024\"/><item name=\"B/s\"/></speedunit>"
              "<fluxunit><item name=\"B\"/><item name=\"MB\"/><item name=\"KB\"/></fluxunit>";
        QTest::newRow("last of two wins") << on + off << QByteArray() << false << QStringList();
        QTest::newRow("edition overrides common") << on << off << false << QStringList();
        QTest::newRow("no edition units")
            << units << QByteArray() << true << QStringList { "KB/s", "B/s", "B", "MB", "KB" };
        QTest::newRow("one speed unit")
            << units << QByteArray("<speedunit><item name=\"bit/s\" value=\"1\"/></speedunit>") << true
            << QStringList { "bit/s", "B", "MB", "KB" };
    }

    void mergedConfiguration()
    {
        QFETCH(QByteArray, common);
        QFETCH(QByteArray, edition);
        QVERIFY(m_fixture.home->writePluginFile("NetInfoUIExConfig.xml", configDocument(common, edition)));
        m_sdk->setCustomizeName("edition");
        NetInfoUILogic* logic = NetInfoUILogic::Instance();
        logic->Init();
        QTEST(logic->IsFunctionEnable(QStringLiteral("SHOWGRAPH")), "enabled");
        QVector<TagUnits> speedUnits, fluxUnits;
        logic->GetSpeedUnitData(speedUnits);
        logic->GetFluxUnitData(fluxUnits);
        QTEST(unitNames(speedUnits) + unitNames(fluxUnits), "units");
    }
};

QTEST_GUILESS_MAIN(TestLogic)
#include "tst_plugin_logic.moc"
