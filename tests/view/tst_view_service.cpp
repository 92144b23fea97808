// The view service under its host: live and stored figures, the status
// panel, host notifications, the settings page and shut-down.
#include "ViewFixture.h"

#include "NetInfoSettingUIPlugin.h"

#include "HostIds.h"
#include "HostServices.h"

#include <QApplication>
#include <QFormLayout>
#include <QLabel>
#include <QPointer>
#include <QSignalSpy>

#include <atomic>

using namespace viewtest;

namespace {

// The simulated SDK with one more script: the stored report of one kind fails
// while armed. It records which report kinds were asked for.
class FailingKindBackend final : public velt::StatisticsBackend
{
public:
    FailingKindBackend()
        : m_inner(std::make_unique<velt::SimulatedBackend>([] { return qint64(1700000000); }))
    {
    }
    bool isSupported() const override { return true; }
    int start(velt::TickSink* sink) override { return m_inner->start(sink); }
    void stop() override { m_inner->stop(); }
    int report(int kind, velt::StatisticsRecord& record) override
    {
        asked.append(kind);
        if (kind == failKind)
            return velt::CallFailed;
        return m_inner->report(kind, record);
    }
    int history(quint64 seconds, velt::StatisticsRecord& record) override { return m_inner->history(seconds, record); }
    int reset(int flag) override { return m_inner->reset(flag); }
    int customizeName(QByteArray& name) override { return m_inner->customizeName(name); }

    velt::SimulatedBackend* inner() const { return m_inner.get(); }

    std::atomic<int> failKind{-1};
    QList<int> asked;

private:
    std::unique_ptr<velt::SimulatedBackend> m_inner;
};

QString storedTexts(QTreeWidget* tree)
{
    QStringList texts;
    QTreeWidgetItem* statistics = tree->topLevelItem(1);
    for (int node = 1; node <= 3; ++node)
        for (int row = 0; row < 2; ++row)
            texts << statistics->child(node)->child(row)->text(0);
    return texts.join(QLatin1String(" | "));
}

} // namespace

class TestViewService : public QObject
{
    Q_OBJECT

private:
    Fixture m_f;

    QLabel* panelLabel(QWidget* panel, const char* name)
    {
        return panel ? panel->findChild<QLabel*>(QLatin1String(name)) : nullptr;
    }

private slots:
    void initTestCase() { QLocale::setDefault(QLocale::c()); }

    void cleanup() { m_f.tearDown(); }

    void durationFollowsTheTimeText_data()
    {
        QTest::addColumn<QString>("second");
        QTest::addColumn<QString>("shown");
        QTest::newRow("single blank keeps") << QStringLiteral(" ") << QStringLiteral("00:01:00");
        QTest::newRow("empty replaces") << QString() << QString();
        QTest::newRow("two blanks replace") << QStringLiteral("  ") << QStringLiteral("  ");
        QTest::newRow("new time replaces") << QStringLiteral("00:02:00") << QStringLiteral("00:02:00");
    }

    void durationFollowsTheTimeText()
    {
        QFETCH(QString, second);
        QFETCH(QString, shown);
        HostServices services;
        QSignalSpy handed(services.notifyService(), &NotifyService::notified);
        QVERIFY(m_f.setUp());
        QTreeWidget* tree = m_f.show();
        m_f.view->Notify(HostIds::MsgCreateStatusPanel, 0, 0);
        QCOMPARE(handed.count(), 1);
        auto* panel = reinterpret_cast<QWidget*>(handed.first().at(2).value<quintptr>());

        m_f.emitLive(0, 0, 0, 0, QStringLiteral("00:01:00"));
        m_f.emitLive(0, 0, 0, 0, second);
        QCOMPARE(panelLabel(panel, "StatisticsData_Duration")->text(), shown);
        QCOMPARE(tree->topLevelItem(0)->child(0)->text(0), QStringLiteral("IDS_TREE_TIME_TRANSFER ") + shown);
        delete panel;
    }

    void totalsBeyond32BitsThroughTheSdk()
    {
        HostServices services;
        QSignalSpy handed(services.notifyService(), &NotifyService::notified);
        QVERIFY(m_f.setUp());
        QTreeWidget* tree = m_f.show();
        m_f.view->Notify(HostIds::MsgCreateStatusPanel, 0, 0);
        QCOMPARE(handed.count(), 1);
        auto* panel = reinterpret_cast<QWidget*>(handed.first().at(2).value<quintptr>());

        velt::StatisticsRecord live = record(3000000000ull, 2000000000ull, 65);
        live.sendSpeed = 2048;
        live.receiveSpeed = 512;
        m_f.sdk->setReport(VELT_REPORT_LIVE, live);
        m_f.sdk->setConnected(true);
        m_f.sdk->tick();

        QCOMPARE(panelLabel(panel, "StatisticsData_TotalData")->text(), QStringLiteral("4.66 IDS_UNIT_GB"));
        QCOMPARE(panelLabel(panel, "StatisticsData_DataSent")->text(), QStringLiteral("2.79 IDS_UNIT_GB"));
        QCOMPARE(panelLabel(panel, "StatisticsData_DataReceived")->text(), QStringLiteral("1.86 IDS_UNIT_GB"));
        QCOMPARE(panelLabel(panel, "StatisticsData_UpSpeed")->text(), QStringLiteral("2.00 IDS_UNIT_KBPS"));
        QCOMPARE(panelLabel(panel, "StatisticsData_Downloadspeed")->text(), QStringLiteral("512 IDS_UNIT_BPS"));
        QCOMPARE(panelLabel(panel, "StatisticsData_Duration")->text(), QStringLiteral("00:01:05"));
        QTreeWidgetItem* upload = tree->topLevelItem(0)->child(1);
        QCOMPARE(upload->child(0)->text(0), QStringLiteral("IDS_TREE_SPEED 2.00 IDS_UNIT_KBPS"));
        QCOMPARE(upload->child(1)->text(0), QStringLiteral("IDS_TREE_DATA 2.79 IDS_UNIT_GB"));
        delete panel;
    }

    void tickOnSdkThreadArrivesQueued()
    {
        QVERIFY(m_f.setUp());
        QTreeWidget* tree = m_f.show();
        QTreeWidgetItem* sent = tree->topLevelItem(0)->child(1)->child(1);
        const QString before = sent->text(0);
        m_f.sdk->setReport(VELT_REPORT_LIVE, record(4096, 0, 3));
        m_f.sdk->setConnected(true);
        m_f.sdk->tickOnSdkThread();
        // The callback has run on the SDK's thread; the view has not been touched yet.
        QCOMPARE(sent->text(0), before);
        QTRY_COMPARE(sent->text(0), QStringLiteral("IDS_TREE_DATA 4.00 IDS_UNIT_KB"));
    }

    void failedStoredRequestKeepsEveryText()
    {
        auto backend = std::make_unique<FailingKindBackend>();
        FailingKindBackend* sdk = backend.get();
        QVERIFY(m_f.setUp({}, std::move(backend)));
        sdk->inner()->setReport(VELT_REPORT_TODAY, record(1024, 2048));
        sdk->inner()->setReport(VELT_REPORT_MONTH, record(3 * 1024, 4 * 1024));
        sdk->inner()->setReport(VELT_REPORT_YEAR, record(5 * 1024, 6 * 1024));
        QTreeWidget* tree = m_f.show();
        const QString shown = storedTexts(tree);
        QVERIFY2(shown.contains(QLatin1String("IDS_TREE_UPLOADED_DATA 5.00 IDS_UNIT_KB")), qPrintable(shown));
        const QString lastReset = tree->topLevelItem(1)->child(0)->text(0);

        sdk->inner()->reset(0); // a new reset stamp the failed refresh must not show
        sdk->inner()->setReport(VELT_REPORT_TODAY, record(7 * 1024, 7 * 1024));
        sdk->inner()->setReport(VELT_REPORT_MONTH, record(8 * 1024, 8 * 1024));
        sdk->inner()->setReport(VELT_REPORT_YEAR, record(9 * 1024, 9 * 1024));
        sdk->failKind = VELT_REPORT_MONTH;
        sdk->asked.clear();
        m_f.emitLive(0, 0, 0, 0, QStringLiteral(" "));

        QCOMPARE(storedTexts(tree), shown);
        QCOMPARE(tree->topLevelItem(1)->child(0)->text(0), lastReset);
        // The daily figures were fetched; the request stopped at the month.
        QCOMPARE(sdk->asked, (QList<int>{VELT_REPORT_TODAY, VELT_REPORT_MONTH}));

        sdk->failKind = -1;
        sdk->asked.clear();
        m_f.emitLive(0, 0, 0, 0, QStringLiteral(" "));
        QCOMPARE(sdk->asked, (QList<int>{VELT_REPORT_TODAY, VELT_REPORT_MONTH, VELT_REPORT_YEAR, VELT_REPORT_WEEK,
                                         VELT_REPORT_LAST_RESET}));
        QCOMPARE(storedTexts(tree), QStringLiteral("IDS_TREE_UPLOADED_DATA 7.00 IDS_UNIT_KB | "
                                                   "IDS_TREE_DOWNLOADED_DATA 7.00 IDS_UNIT_KB | "
                                                   "IDS_TREE_UPLOADED_DATA 8.00 IDS_UNIT_KB | "
                                                   "IDS_TREE_DOWNLOADED_DATA 8.00 IDS_UNIT_KB | "
                                                   "IDS_TREE_UPLOADED_DATA 9.00 IDS_UNIT_KB | "
                                                   "IDS_TREE_DOWNLOADED_DATA 9.00 IDS_UNIT_KB"));
        QVERIFY(tree->topLevelItem(1)->child(0)->text(0) != lastReset);
    }

    void connectionStatus_data()
    {
        QTest::addColumn<QList<uint>>("statuses");
        QTest::addColumn<uint>("state");
        QTest::addColumn<bool>("connected");
        QTest::newRow("none yet") << QList<uint>{} << ~0u << false;
        QTest::newRow("connected (8)") << QList<uint>{8} << 8u << true;
        QTest::newRow("connected (1)") << QList<uint>{1} << 1u << true;
        QTest::newRow("8 confirmed") << QList<uint>{8, 8} << 8u << true;
        QTest::newRow("dropped") << QList<uint>{8, 2} << 2u << false;
        QTest::newRow("dropped, confirmed") << QList<uint>{8, 2, 2} << 2u << false;
        QTest::newRow("unknown message ignored") << QList<uint>{8, 0xFFFFu} << 8u << true;
    }

    void connectionStatus()
    {
        QFETCH(QList<uint>, statuses);
        QFETCH(uint, state);
        QFETCH(bool, connected);
        QVERIFY(m_f.setUp());
        for (uint status : statuses) {
            // The last row sends an unknown message instead of a status.
            const uint msg = status == 0xFFFFu ? 999u : HostIds::MsgConnectionStatus;
            QCOMPARE(m_f.view->Notify(msg, status == 0xFFFFu ? 2u : status, 0), 0);
        }
        QCOMPARE(m_f.view->connectState(), state);
        QCOMPARE(m_f.view->isConnected(), connected);
    }

    void unknownMessageLeavesTheTreeAlone()
    {
        QVERIFY(m_f.setUp());
        QTreeWidget* tree = m_f.show();
        const int width = tree->columnWidth(0);
        const QString shown = storedTexts(tree);
        QCOMPARE(m_f.view->Notify(4118, 1, 2), 0);
        QCOMPARE(tree->columnWidth(0), width);
        QCOMPARE(storedTexts(tree), shown);
    }

    void doModalBeforeShowWindow()
    {
        QVERIFY(m_f.setUp());
        QCOMPARE(m_f.view->DoModal(), 0);
        QWidget* root = nullptr;
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (widget->objectName() == QLatin1String("NetInfoUIPlugin_WidgetParent"))
                root = widget;
        QVERIFY(root);
        QVERIFY(!root->parentWidget());
        QVERIFY(root->isVisible());
        QCOMPARE(root->pos(), QPoint(0, 0));
        QCOMPARE(m_f.view->Hide(), 1);
        QVERIFY(!root->isVisible());
    }

    void destroyTwiceIsHarmless()
    {
        QVERIFY(m_f.setUp());
        QTreeWidget* tree = m_f.show();
        QPointer<QTreeWidget> guard(tree);
        m_f.view->unSDKRegisterEvent();
        CNetInfoUIService::Destroy();
        QVERIFY(guard.isNull());
        CNetInfoUIService::Destroy();
        m_f.view = nullptr;
    }

    void moduleNameAndColumnFollowTheLimitFeatures_data()
    {
        QTest::addColumn<QStringList>("off");
        QTest::addColumn<QString>("name");
        QTest::addColumn<Qt::ScrollBarPolicy>("policy");
        QTest::newRow("both on") << QStringList() << QStringLiteral("IDS_SETTING_NAME") << Qt::ScrollBarAsNeeded;
        QTest::newRow("time only") << QStringList{"DATAVOLUMELIMIT"} << QStringLiteral("IDS_SETTING_NAME")
                                   << Qt::ScrollBarAsNeeded;
        QTest::newRow("both off") << QStringList{"DATAVOLUMELIMIT", "TIMEVOLUMELIMIT"} << QString()
                                  << Qt::ScrollBarAlwaysOff;
    }

    void moduleNameAndColumnFollowTheLimitFeatures()
    {
        QFETCH(QStringList, off);
        QFETCH(QString, name);
        QFETCH(Qt::ScrollBarPolicy, policy);
        QVERIFY(m_f.setUp(off));
        QCOMPARE(m_f.view->GetModuleName(), name);
        QTreeWidget* tree = m_f.show();
        QCOMPARE(tree->verticalScrollBarPolicy(), policy);
        QCOMPARE(tree->horizontalScrollBarPolicy(), policy);
    }

    void settingsPageComesAndGoes_data()
    {
        QTest::addColumn<bool>("ok");
        QTest::newRow("ok") << true;
        QTest::newRow("cancel") << false;
    }

    void settingsPageComesAndGoes()
    {
        QFETCH(bool, ok);
        QVERIFY(m_f.setUp());
        QWidget dialog;
        QRect rect(10, 20, 300, 200);
        QVERIFY(!m_f.view->IsActiveSetting());
        QVERIFY(m_f.view->ShowSettingDialog(&dialog, rect));
        QVERIFY(m_f.view->IsActiveSetting());
        QWidget* page = NetInfoSettingUIPlugin::GetInstance()->GetPageWidget();
        QVERIFY(page);
        QCOMPARE(page->parentWidget(), &dialog);
        QCOMPARE(page->geometry(), rect);
        QVERIFY(m_f.view->HideSetting());
        QVERIFY(page->isHidden());

        QVERIFY(ok ? m_f.view->OnClickSettingOkButton() : m_f.view->OnClickSettingCancelButton());
        QVERIFY(!m_f.view->IsActiveSetting());
        QVERIFY(!page->parentWidget());
    }

    void settingsPageReceivesTheDataUnit()
    {
        QVERIFY(m_f.setUp());
        emit m_f.view->getXMLUnit(QStringLiteral("MB"));
        QCOMPARE(NetInfoSettingUIPlugin::GetInstance()->unitText(), QStringLiteral("MB"));
    }

    void statusPanelIsHandedToTheHost()
    {
        HostServices services;
        QSignalSpy handed(services.notifyService(), &NotifyService::notified);
        QVERIFY(m_f.setUp());
        m_f.emitLive(0, 0, 0, 0, QStringLiteral("00:00:42"));
        QCOMPARE(m_f.view->Notify(HostIds::MsgCreateStatusPanel, 0, 0), 0);

        QCOMPARE(handed.count(), 1);
        const QList<QVariant> args = handed.first();
        QCOMPARE(args.at(0).toString(), QLatin1String(HostIds::StatusPanelTarget));
        QCOMPARE(args.at(1).toUInt(), HostIds::EventStatusPanel);
        QCOMPARE(args.at(3).value<quintptr>(), quintptr(0));
        auto* panel = reinterpret_cast<QWidget*>(args.at(2).value<quintptr>());
        QVERIFY(panel);
        auto* form = qobject_cast<QFormLayout*>(panel->layout());
        QVERIFY(form);
        QCOMPARE(form->spacing(), 5);
        QCOMPARE(form->rowCount(), 6);

        const char* const names[6][2] = {{"StatisticsData_DurationName", "IDS_STA_DURATION"},
                                         {"StatisticsData_UpSpeedName", "IDS_STA_UPSPEED"},
                                         {"StatisticsData_DownloadspeedName", "IDS_STA_DOWNSPEED"},
                                         {"StatisticsData_DataSentName", "IDS_STA_DATASENT"},
                                         {"StatisticsData_DataReceivedName", "IDS_STA_DATARECEIVED"},
                                         {"StatisticsData_TotalDataName", "IDS_STA_TOTALDATA"}};
        const char* const values[6][2] = {{"StatisticsData_Duration", "00:00:42"},
                                          {"StatisticsData_UpSpeed", "0 IDS_UNIT_BPS"},
                                          {"StatisticsData_Downloadspeed", "0 IDS_UNIT_BPS"},
                                          {"StatisticsData_DataSent", "0 IDS_UNIT_BYTE"},
                                          {"StatisticsData_DataReceived", "0 IDS_UNIT_BYTE"},
                                          {"StatisticsData_TotalData", "0 IDS_UNIT_BYTE"}};
        for (int row = 0; row < 6; ++row) {
            QCOMPARE(form->itemAt(row, QFormLayout::LabelRole)->widget()->objectName(), QLatin1String(names[row][0]));
            QCOMPARE(panelLabel(panel, names[row][0])->text(), QLatin1String(names[row][1]));
            QCOMPARE(form->itemAt(row, QFormLayout::FieldRole)->widget()->objectName(), QLatin1String(values[row][0]));
            QCOMPARE(panelLabel(panel, values[row][0])->text(), QLatin1String(values[row][1]));
        }

        // Once the host has deleted its panel, ticks go on without it.
        delete panel;
        m_f.emitLive(1, 1, 1, 1, QStringLiteral("00:00:43"));
    }
};

QTEST_MAIN(TestViewService)
#include "tst_view_service.moc"
