// The host application as a user runs it: its command line, and the whole
// path from usage crossing a limit to the connection being dropped.
#include "HostApplication.h"

#include "ConnectionControl.h"

#include "Change.h"
#include "ExtendDialog.h"
#include "TestHome.h"
#include "simulated/SimulatedBackend.h"

#include <QtTest>
#include <QtWidgets>

namespace {

// Refuses every disconnect, as NetworkManager does when it is not running.
class RefusingControl final : public ConnectionControl
{
public:
    bool canDisconnect() const override { return false; }
    void disconnectInterface(const QString& name) override
    {
        asked << name;
        finishLater(name, {false, QStringLiteral("not available here")});
    }
    QStringList asked;
};

} // namespace

class TestHostApp : public QObject
{
    Q_OBJECT

private slots:
    void commandLine_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<bool>("simulate");
        QTest::addColumn<QString>("interfaceName");
        QTest::addColumn<QString>("language");

        QTest::newRow("defaults: the real connection") << QStringList{} << true << false << "" << "";
        QTest::newRow("demo traffic in Arabic")
            << QStringList{"--simulate", "--lang", "ar"} << true << true << "" << "ar";
        QTest::newRow("a fixed interface") << QStringList{"--interface", "wwan0"} << true << false << "wwan0" << "";
        QTest::newRow("unknown language") << QStringList{"--lang", "de"} << false << false << "" << "";
        QTest::newRow("blank interface") << QStringList{"--interface", " "} << false << false << "" << "";
        QTest::newRow("unknown option") << QStringList{"--bogus"} << false << false << "" << "";
        QTest::newRow("bad duration") << QStringList{"--quit-after", "soon"} << false << false << "" << "";
    }

    void commandLine()
    {
        QFETCH(QStringList, arguments);
        QFETCH(bool, accepted);
        HostOptions options;
        QString message;
        QCOMPARE(HostOptions::parse(QStringList{"netinfo"} + arguments, options, message), accepted);
        QCOMPARE(message.isEmpty(), accepted);
        if (!accepted)
            return;
        QTEST(options.connection.simulate, "simulate");
        QTEST(options.connection.interfaceName, "interfaceName");
        QTEST(options.language, "language");
    }

    // Usage passes the warning percentage; the user ticks "disconnect" and
    // confirms; the simulated link drops and the view hears of it.
    void warningDisconnectsTheLink()
    {
        TestHome home;
        qputenv("NETINFO_LIBRARY_PATH", QFile::encodeName(TestHome::buildHomeDir()));
        QVERIFY(home.writeUserFile("DataUsageLimit.ini",
                                   "[uselimit]\nchkRecurrence=true\nradioDaily=true\nradioWeekly=false\nradioMonthly=false\n"
                                   "chkVolume=true\nSizeVolume=100\nWarnBeforPercentage=80\nchkWarnbefore=true\n"
                                   "chkWarnAfter=true\nchkTimeVolume=false\n"));

        velt::SimulatedBackend* sdk = velt::SimulatedBackend::current();
        QVERIFY(sdk);
        sdk->setConnected(true);
        sdk->setReport(VELT_REPORT_TODAY, {50 * 1024 * 1024, 35 * 1024 * 1024, 0, 0, 0, 0});

        HostOptions options;
        options.connection.simulate = true;
        options.connection.demoTraffic = false;
        options.language = "en";
        HostApplication host(options);
        QCOMPARE(host.start(), 0);
        sdk->tick();

        ExtendDialog* dialog = nullptr;
        const auto shown = [&dialog] {
            for (QWidget* widget : QApplication::topLevelWidgets())
                if (widget->objectName() == "WarnDlg_ExtendedDlg" && widget->isVisible())
                    dialog = qobject_cast<ExtendDialog*>(widget);
            return dialog != nullptr;
        };
        QTRY_VERIFY(shown());
        QCOMPARE(dialog->findChild<QLabel*>("WarnDlg_LabelWarn")->text(),
                 Change::tr("IDS_BOX_WARNBEFORE", "NetInfoUIExPlugin"));
        auto* box = dialog->findChild<QCheckBox*>("WarnDlg_CheckBox");
        QTRY_VERIFY(box->isEnabled()); // the host reported the connection up
        box->click();
        dialog->findChild<QPushButton*>("WarnDlg_ButtonOk")->click();

        QTRY_VERIFY(!sdk->isConnected());
        QTRY_VERIFY(!box->isEnabled()); // the view was told the link is down
        host.shutdown();
    }

    // A language from the menu reaches every text, mirrors the layout for
    // Arabic and is remembered for the next start.
    void languageMenuSwitchesEverything()
    {
        TestHome home;
        qputenv("NETINFO_LIBRARY_PATH", QFile::encodeName(TestHome::buildHomeDir()));
        HostOptions options;
        options.connection.simulate = true;
        options.connection.demoTraffic = false;
        options.language = "en";
        {
            HostApplication host(options);
            QCOMPARE(host.start(), 0);
            auto* arabic = host.window().findChild<QAction*>("NetInfo_Language_ar");
            QVERIFY(arabic);
            arabic->trigger();
            QCOMPARE(QGuiApplication::layoutDirection(), Qt::RightToLeft);
            QVERIFY(arabic->isChecked());
            auto* caption = host.window().findChild<QLabel*>("NetInfoUIPlugin_LabelDataVolume");
            QVERIFY(caption && caption->text() != QLatin1String("Data volume"));
            QCOMPARE(caption->text(), Change::tr("IDS_STA_TOTALVOLUME", "NetInfoUIExPlugin"));
            host.shutdown();
        }
        options.language.clear();
        HostApplication again(options);
        QCOMPARE(again.start(), 0);
        QCOMPARE(Change::CurrentLanguage(), QStringLiteral("ar"));
        QVERIFY(again.window().findChild<QAction*>("NetInfo_Language_ar")->isChecked());
        again.setLanguage("en");
        QCOMPARE(QGuiApplication::layoutDirection(), Qt::LeftToRight);
        again.shutdown();
    }

    // On the real counters a refused disconnect reaches the user as a
    // message, and the link is left alone.
    void refusedDisconnectIsReported()
    {
        TestHome home;
        ConnectionLayer layer;
        auto control = std::make_unique<RefusingControl>();
        RefusingControl* refusing = control.get();
        layer.setConnectionControl(std::move(control));
        QSignalSpy messages(&layer, &ConnectionLayer::message);
        layer.start({});
        if (layer.source() != ConnectionLayer::Source::Real)
            QSKIP("this machine's interface counters cannot be read");
        layer.disconnectLink();
        QTRY_COMPARE(messages.count(), 1);
        const QString name = layer.interfaceName();
        QCOMPARE(refusing->asked, name.isEmpty() ? QStringList{} : QStringList{name});
        QCOMPARE(messages.first().first().toString(),
                 name.isEmpty() ? QStringLiteral("There is no connection to disconnect.")
                                : QStringLiteral("not available here"));
        layer.stop();
    }
};

QTEST_MAIN(TestHostApp)
#include "tst_host_app.moc"
