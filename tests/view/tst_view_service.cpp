// The view service in a sandboxed host home with a scripted SDK: rows per
// switch, live and stored figures, the status panel, host notifications,
// reset and the graph's placement; and the stored figures'
// refresh on its own.
#include "NetInfoGraphWidget.h"

#include "HostIds.h"
#include "HostServices.h"
#include "PluginFixture.h"
#include "SdkTestSupport.h"
#include "view/TreeRows.h"

#include <QtTest>
#include <QtWidgets>

#include <memory>

namespace {

// Upload and download rows of the today, month and year nodes.
QStringList storedTexts(QTreeWidget* tree)
{
    QStringList texts;
    for (int node = 1; node <= 3; ++node)
        for (int row = 0; row < 2; ++row)
            texts << tree->topLevelItem(1)->child(node)->child(row)->text(0);
    return texts;
}

} // namespace

class TestViewService : public QObject
{
    Q_OBJECT

    PluginFixture m_fixture;
    std::unique_ptr<QWidget> m_host;
    velt::SimulatedBackend* m_sdk = nullptr;
    CNetInfoUIService* m_view = nullptr;
    int m_unexpectedBoxes = 0;

    // Host home with the shipped configuration, the switches in off turned off.
    bool setUp(const QStringList& off = {})
    {
        if (!m_fixture.setUp(
                off, { QStringLiteral("DataUsageLimit.ini"), QStringLiteral("TrendsCtrlProfile.xml") }))
            return false;
        m_sdk = PluginFixture::installSdk();
        m_view = PluginFixture::initView();
        return true;
    }

    // Sets up, then shows the view inside a host widget as the host's main window does.
    QTreeWidget* show(const QStringList& off = {}, QRect rect = QRect(0, 0, 600, 400))
    {
        if (!setUp(off))
            return nullptr;
        m_host = std::make_unique<QWidget>();
        m_host->resize(rect.size());
        m_view->ShowWindow(m_host.get(), rect);
        m_host->show();
        return m_host->findChild<QTreeWidget*>(QStringLiteral("NetInfoUIPlugin_WidgetTree"));
    }

    void emitLive(const QString& time)
    {
        emit NetInfoUILogic::Instance()->statisticsChanged(0, 0, 0, 0, time);
    }

    static QString label(QWidget* panel, const QString& name)
    {
        return panel->findChild<QLabel*>(name) ? panel->findChild<QLabel*>(name)->text()
                                               : QStringLiteral("<none>");
    }

private slots:
    void initTestCase() { QLocale::setDefault(QLocale::c()); }

    // A box no test asked for is declined at once and counted, never left
    // waiting for a human.
    void init()
    {
        m_unexpectedBoxes = 0;
        CommonUtils::SetMessageHook([this](QMessageBox&) {
            ++m_unexpectedBoxes;
            return int(QMessageBox::Cancel);
        });
    }

    void cleanup()
    {
        m_fixture.tearDown();
        m_view = nullptr;
        m_host.reset();
        QCOMPARE(m_unexpectedBoxes, 0);
    }

    void switchesDecideTheRows_data()
    {
        QTest::addColumn<QStringList>("off");
        QTest::addColumn<QStringList>("transferChildren");
        QTest::addColumn<int>("topLevelCount");
        const QString time = QStringLiteral("IDS_TREE_TIME_TRANSFER 00:00:00");
        const QStringList all { time, "IDS_TREE_UPLOAD", "IDS_TREE_DOWNLOAD" };
        const QStringList noLimits { "DATAVOLUMELIMIT", "TIMEVOLUMELIMIT" };
        QTest::newRow("everything on") << QStringList() << all << 2;
        QTest::newRow("upload off") << QStringList { "TRANSFERUPLOAD" }
                                    << QStringList { time, "IDS_TREE_DOWNLOAD" } << 2;
        QTest::newRow("time off") << QStringList { "TRANSFERTIME" }
                                  << QStringList { "IDS_TREE_UPLOAD", "IDS_TREE_DOWNLOAD" } << 2;
        QTest::newRow("statistics off") << QStringList { "STATISTICS" } << all << 2;
        QTest::newRow("time limit only") << QStringList { "DATAVOLUMELIMIT" } << all << 2;
        QTest::newRow("no limit feature") << noLimits << all << 4;
        QTest::newRow("no limit feature, notes off")
            << noLimits + QStringList { "STATISTICSNOTES" } << all << 4;
    }

    void switchesDecideTheRows()
    {
        QFETCH(QStringList, off);
        QFETCH(int, topLevelCount);
        QTreeWidget* tree = show(off);
        QVERIFY(tree);
        // Without a limit feature there is no settings page.
        QCOMPARE(
            m_view->GetModuleName(), topLevelCount == 2 ? QStringLiteral("IDS_SETTING_NAME") : QString());
        QCOMPARE(tree->topLevelItemCount(), topLevelCount);
        QStringList children;
        for (int i = 0; i < tree->topLevelItem(0)->childCount(); ++i)
            children << tree->topLevelItem(0)->child(i)->text(0);
        QTEST(children, "transferChildren");
        QTreeWidgetItem* statistics = tree->topLevelItem(1);
        QCOMPARE(statistics->isHidden(), off.contains(QStringLiteral("STATISTICS")));
        QCOMPARE(statistics->childCount(), 4);
        // A hidden statistics node still has its rows refreshed.
        m_sdk->setReport(VELT_REPORT_TODAY, record(0, 2048, 0, 0, 0));
        emitLive(QStringLiteral(" "));
        QCOMPARE(statistics->child(1)->child(0)->text(0),
            QStringLiteral("IDS_TREE_UPLOADED_DATA 2.00 IDS_UNIT_KB"));

        if (topLevelCount == 4) {
            QVERIFY(!(tree->topLevelItem(2)->flags() & (Qt::ItemIsSelectable | Qt::ItemIsEnabled)));
            QCOMPARE(tree->topLevelItem(3)->text(0), QStringLiteral("     IDS_NOTES"));
            QCOMPARE(tree->topLevelItem(3)->isHidden(), off.contains(QStringLiteral("STATISTICSNOTES")));
        }
    }

    void statusPanelIsHandedToTheHost()
    {
        HostServices services;
        QSignalSpy handed(services.notifyService(), &NotifyService::notified);
        QTreeWidget* tree = show();
        QVERIFY(tree);
        handed.clear(); // the graph's minimum width
        emitLive(QStringLiteral("00:01:00"));
        emitLive(QStringLiteral(" ")); // the labels only
        QCOMPARE(tree->topLevelItem(0)->child(0)->text(0), QStringLiteral("IDS_TREE_TIME_TRANSFER 00:01:00"));
        QCOMPARE(m_view->Notify(HostIds::MsgCreateStatusPanel, 0, 0), 0);
        QCOMPARE(handed.count(), 1);
        QCOMPARE(handed.first().at(0).toString(), QLatin1String(HostIds::StatusPanelTarget));
        QCOMPARE(handed.first().at(1).toUInt(), HostIds::EventStatusPanel);
        QCOMPARE(handed.first().at(3).value<quintptr>(), quintptr(0));
        auto* panel = reinterpret_cast<QWidget*>(handed.first().at(2).value<quintptr>());

        // Per row: label name, value at first and after a tick whose totals pass 2^32 bytes.
        const char* const rows[6][3]
            = { { "Duration", "00:01:00", "00:01:05" }, { "UpSpeed", "0 IDS_UNIT_BPS", "2.00 IDS_UNIT_KBPS" },
                  { "Downloadspeed", "0 IDS_UNIT_BPS", "512 IDS_UNIT_BPS" },
                  { "DataSent", "0 IDS_UNIT_BYTE", "2.79 IDS_UNIT_GB" },
                  { "DataReceived", "0 IDS_UNIT_BYTE", "1.86 IDS_UNIT_GB" },
                  { "TotalData", "0 IDS_UNIT_BYTE", "4.66 IDS_UNIT_GB" } };
        for (int row = 0; row < 6; ++row)
            QCOMPARE(
                label(panel, QStringLiteral("StatisticsData_") + rows[row][0]), QLatin1String(rows[row][1]));

        m_sdk->setReport(VELT_REPORT_LIVE, record(2000000000ull, 3000000000ull, 512, 2048, 65));
        m_sdk->setConnected(true);
        m_sdk->tickOnSdkThread();
        // The callback has run on the SDK's thread; the view gets it queued.
        QCOMPARE(label(panel, QStringLiteral("StatisticsData_DataSent")), QStringLiteral("0 IDS_UNIT_BYTE"));
        for (int row = 0; row < 6; ++row)
            QTRY_COMPARE(
                label(panel, QStringLiteral("StatisticsData_") + rows[row][0]), QLatin1String(rows[row][2]));
        QTreeWidgetItem* upload = tree->topLevelItem(0)->child(1);
        QCOMPARE(upload->child(0)->text(0), QStringLiteral("IDS_TREE_SPEED 2.00 IDS_UNIT_KBPS"));
        QCOMPARE(upload->child(1)->text(0), QStringLiteral("IDS_TREE_DATA 2.79 IDS_UNIT_GB"));

        // Once the host has deleted its panel, ticks go on without it.
        delete panel;
        emitLive(QStringLiteral("00:00:43"));
    }

    void resetAsksFirst_data()
    {
        QTest::addColumn<bool>("fromGraph"); // else from the context menu
        QTest::addColumn<int>("answer");
        QTest::newRow("menu, declined") << false << int(QMessageBox::Cancel);
        QTest::newRow("graph button, confirmed") << true << int(QMessageBox::Ok);
    }

    void resetAsksFirst()
    {
        QFETCH(bool, fromGraph);
        QFETCH(int, answer);
        QTreeWidget* tree = show();
        QVERIFY(tree);
        const int kinds[3] = { VELT_REPORT_TODAY, VELT_REPORT_MONTH, VELT_REPORT_YEAR };
        for (int i = 0; i < 3; ++i)
            m_sdk->setReport(kinds[i], record((2 * i + 2) * 1024, (2 * i + 1) * 1024, 0, 0, 0));
        emit NetInfoUILogic::Instance()->statisticsChanged(2048, 512, 3072, 1024, QStringLiteral("00:00:05"));
        const QStringList stored = storedTexts(tree);
        const QString live = tree->topLevelItem(0)->child(1)->child(1)->text(0);
        const QString lastReset = tree->topLevelItem(1)->child(0)->text(0);

        QStringList asked;
        CommonUtils::SetMessageHook([&](QMessageBox& box) {
            asked << box.windowTitle() << box.text() << box.parentWidget()->objectName();
            for (QAbstractButton* button : box.buttons())
                asked << button->text();
            asked << QString::number(box.icon());
            return answer;
        });
        const int reads = m_sdk->callCount(velt::SdkCall::GetReport);
        QAbstractButton* button
            = m_host->findChild<QPushButton*>(QStringLiteral("NetInfoGraphWidget_ResetButton"));
        QAction* action = tree->findChild<QAction*>(QStringLiteral("NetInfoUIPlugin_ActionResetAll"));
        QVERIFY(button && action);
        fromGraph ? button->click() : action->trigger();

        QCOMPARE(asked,
            (QStringList { "IDS_CONFIRM", "IDS_RESET_QUERY", "NetInfoUIPlugin_WidgetParent", "IDS_YES",
                "IDS_NO", QString::number(QMessageBox::Question) }));
        const bool confirmed = answer == QMessageBox::Ok;
        QCOMPARE(m_sdk->callCount(velt::SdkCall::GetReport) > reads, confirmed); // no refresh unless reset
        const QString up = "IDS_TREE_UPLOADED_DATA 0 IDS_UNIT_BYTE",
                      down = "IDS_TREE_DOWNLOADED_DATA 0 IDS_UNIT_BYTE";
        QCOMPARE(storedTexts(tree), confirmed ? (QStringList { up, down, up, down, up, down }) : stored);
        QCOMPARE(tree->topLevelItem(1)->child(0)->text(0) != lastReset, confirmed);
        QCOMPARE(
            tree->topLevelItem(0)->child(1)->child(1)->text(0), live); // the connection's own figures stay
    }

    void graphPlacement()
    {
        QVERIFY(show({}, QRect(0, 0, 900, 400)));
        auto* graph = m_host->findChild<GraphWidget*>(QStringLiteral("NetInfoUIPlugin_WidgetGraph"));
        QVERIFY(graph);
        // Plotted in the first speed unit of the configuration, KB/s.
        emit NetInfoUILogic::Instance()->statisticsChanged(2048, 512, 0, 0, QStringLiteral(" "));
        QCOMPARE(graph->uploadSamples(), QList<double> { 2.0 });
        QCOMPARE(graph->downloadSamples(), QList<double> { 0.5 });
    }

    // Periods are asked daily, monthly, yearly, weekly; the first failure
    // stops the refresh and leaves the kept copies and reset time alone.
    void refresh_data()
    {
        QTest::addColumn<int>("failing"); // -1: none
        QTest::addColumn<QList<int>>("asked");
        QTest::addColumn<bool>("complete");
        QTest::newRow("all answer") << -1 << QList<int> { 0, 2, 3, 1 } << true;
        QTest::newRow("month fails") << int(NETINFO_MONTHLY) << QList<int> { 0, 2 } << false;
    }

    void refresh()
    {
        QFETCH(int, failing);
        QFETCH(bool, complete);
        view::StatisticsSnapshot snapshot;
        snapshot.lastReset = QStringLiteral("old");
        QList<int> asked;
        const bool done = snapshot.refresh(
            [&](_enNetInfoType type, NetInfoData& data) {
                asked << type;
                data.ullUpData = 100 + type;
                return int(type) == failing;
            },
            [](QString& text) { text += QStringLiteral("new"); });
        QCOMPARE(done, complete);
        QTEST(asked, "asked");
        QCOMPARE(snapshot.lastReset, complete ? QStringLiteral("new") : QStringLiteral("old"));
        // The daily record is fetched either way; its kept copy only when complete.
        QCOMPARE(snapshot.record(view::LimitPeriod::Daily).ullUpData, 100ull);
        QCOMPARE(snapshot.kept(view::LimitPeriod::Daily).ullUpData, complete ? 100ull : 0ull);
    }
};

QTEST_MAIN(TestViewService)
#include "tst_view_service.moc"
