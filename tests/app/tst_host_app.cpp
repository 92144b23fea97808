// The host application as a user runs it: its command line, and the whole
// path from usage crossing a limit to the connection being dropped.
#include "HostApplication.h"

#include "BackgroundRecording.h"
#include "ConnectionControl.h"
#include "CountedInterfacesDialog.h"
#include "HostPaths.h"

#include "Change.h"
#include "CommonUtils.h"
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
        QTest::addColumn<QStringList>("interfaceNames");
        QTest::addColumn<QString>("language");
        const QStringList none;

        QTest::newRow("defaults: the real connection") << QStringList{} << true << false << none << "";
        QTest::newRow("demo traffic in Arabic")
            << QStringList{"--simulate", "--lang", "ar"} << true << true << none << "ar";
        QTest::newRow("fixed interfaces") << QStringList{"--interface", "wwan0", "--interface", "usb1"} << true
                                          << false << QStringList{"wwan0", "usb1"} << "";
        QTest::newRow("unknown language") << QStringList{"--lang", "de"} << false << false << none << "";
        QTest::newRow("blank interface") << QStringList{"--interface", " "} << false << false << none << "";
        QTest::newRow("unknown option") << QStringList{"--bogus"} << false << false << none << "";
        QTest::newRow("bad duration") << QStringList{"--quit-after", "soon"} << false << false << none << "";
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
        QTEST(options.connection.interfaceNames, "interfaceNames");
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

    // A warning's disconnect acts on the links that were up when the
    // connection was last reported up, and only while they still are.
    void disconnectActsOnWarnedLinks_data()
    {
        QTest::addColumn<QStringList>("upWhenReported");
        QTest::addColumn<QStringList>("upNow");
        QTest::addColumn<QStringList>("asked");
        QTest::addColumn<QStringList>("messages");
        const QString refused = "not available here";
        QTest::newRow("still connected") << QStringList{"wwan0"} << QStringList{"eth0", "wwan0"}
                                         << QStringList{"wwan0"} << QStringList{refused};
        QTest::newRow("modem gone, wired took over")
            << QStringList{"wwan0"} << QStringList{"eth0"} << QStringList{}
            << QStringList{"wwan0 is no longer connected, so nothing was disconnected for it."};
        QTest::newRow("one of two left")
            << QStringList{"wwan0", "wwan1"} << QStringList{"wwan1"} << QStringList{"wwan1"}
            << QStringList{"wwan0 is no longer connected, so nothing was disconnected for it.", refused};
        QTest::newRow("never reported up") << QStringList{} << QStringList{"eth0"} << QStringList{}
                                           << QStringList{"There is no connection to disconnect."};
    }

    void disconnectActsOnWarnedLinks()
    {
        QFETCH(QStringList, upWhenReported);
        QFETCH(QStringList, upNow);
        QFETCH(QStringList, messages);
        TestHome home;
        ConnectionLayer layer;
        auto control = std::make_unique<RefusingControl>();
        RefusingControl* refusing = control.get();
        layer.setConnectionControl(std::move(control));
        QSignalSpy said(&layer, &ConnectionLayer::message);
        layer.start({});
        if (layer.source() != ConnectionLayer::Source::Real)
            QSKIP("this machine's interface counters cannot be read");
        QStringList up = upWhenReported;
        layer.setLinkProbe([&up] { return up; });
        layer.noteStatus(1);
        up = upNow;
        layer.disconnectLink();
        QTRY_COMPARE(said.count(), messages.size());
        QStringList texts;
        for (const auto& arguments : said)
            texts << arguments.first().toString();
        QCOMPARE(texts, messages);
        QTEST(refusing->asked, "asked");
        layer.stop();
    }

    // The single-instance lock says what stands in the way.
    void instanceLock_data()
    {
        QTest::addColumn<bool>("otherInstance");
        QTest::addColumn<QString>("expected");
        QTest::newRow("already running")
            << true << QStringLiteral("already running (process %1)").arg(QCoreApplication::applicationPid());
        QTest::newRow("data folder blocked") << false << "cannot create its data folder";
    }

    void instanceLock()
    {
        QFETCH(bool, otherInstance);
        QFETCH(QString, expected);
        TestHome home;
        qputenv("NETINFO_LIBRARY_PATH", QFile::encodeName(TestHome::buildHomeDir()));
        const QString dir = HostPaths::userDataDir();
        QLockFile other(dir + "/netinfo.lock");
        if (otherInstance) {
            QVERIFY(QDir().mkpath(dir) && other.tryLock());
        } else {
            QFile blocker(dir); // a file where the folder belongs
            QVERIFY(QDir().mkpath(QFileInfo(dir).path()) && blocker.open(QIODevice::WriteOnly));
        }
        QString shown;
        CommonUtils::SetMessageHook([&shown](QMessageBox& box) {
            shown = box.text();
            return int(QMessageBox::Ok);
        });
        HostOptions options;
        options.language = "en";
        HostApplication host(options);
        QCOMPARE(host.start(), 1);
        CommonUtils::SetMessageHook({});
        QVERIFY2(shown.contains(expected) && shown.contains(otherInstance ? "" : dir), qPrintable(shown));
    }

    void backgroundRecording_data()
    {
        QTest::addColumn<int>("catExit"); // systemctl --user cat: 0 the unit is known; -1 no systemctl
        QTest::addColumn<int>("enableExit");
        QTest::addColumn<bool>("recorderPresent");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<QString>("message");
        QTest::addColumn<bool>("autostart"); // an entry was written and the recorder started
        QTest::newRow("systemd unit") << 0 << 0 << true << true << "systemd user unit" << false;
        QTest::newRow("systemd refuses") << 0 << 1 << true << false << "Access denied" << false;
        QTest::newRow("unit not installed") << 1 << 0 << true << true << "autostart" << true;
        QTest::newRow("no systemd") << -1 << 0 << true << true << "autostart" << true;
        QTest::newRow("no recorder") << -1 << 0 << false << false << "is missing" << false;
    }

    void backgroundRecording()
    {
        QFETCH(int, catExit);
        QFETCH(int, enableExit);
        QFETCH(bool, recorderPresent);
        QFETCH(bool, autostart);
        QFETCH(QString, message);
        QTemporaryDir dir;
        const auto script = [&dir](const QString& name, const QString& body) {
            QFile file(dir.filePath(name));
            file.open(QIODevice::WriteOnly);
            file.write(("#!/bin/sh\n" + body).toUtf8());
            file.setPermissions(file.permissions() | QFile::ExeOwner);
            return file.fileName();
        };
        BackgroundRecording::Setup setup;
        if (catExit >= 0)
            setup.systemctl = script("systemctl", QStringLiteral("echo \"$*\" >> %1/calls\n"
                                                                 "[ \"$2\" = cat ] && exit %2\n"
                                                                 "[ %3 = 0 ] || echo 'Access denied' >&2\nexit %3\n")
                                                      .arg(dir.path()).arg(catExit).arg(enableExit));
        setup.recorder = recorderPresent ? script("netinfo-recorder", "touch " + dir.filePath("started") + "\n")
                                         : dir.filePath("missing");
        setup.autostartDir = dir.filePath("autostart");
        QString said;
        QTEST(BackgroundRecording::enable(setup, said), "ok");
        QVERIFY2(said.contains(message), qPrintable(said));
        QFile entry(setup.autostartDir + "/netinfo-recorder.desktop");
        QCOMPARE(entry.open(QIODevice::ReadOnly), autostart);
        if (autostart) {
            QVERIFY(entry.readAll().contains("\nExec=\"" + setup.recorder.toUtf8() + "\"\n"));
            QTRY_VERIFY(QFile::exists(dir.filePath("started")));
        }
        QFile calls(dir.filePath("calls"));
        calls.open(QIODevice::ReadOnly);
        QCOMPARE(calls.readAll().contains("--user enable --now netinfo-recorder.service"), catExit == 0);
    }

    // Ticked interfaces are the choice; a chosen one that is gone stays listed.
    void countedInterfacesDialog()
    {
        CountedInterfacesDialog dialog({"eth0", "wwan0"}, {"usb0", "wwan0"});
        auto* list = dialog.findChild<QListWidget*>("NetInfo_CountedInterfacesList");
        QVERIFY(list);
        QStringList shown;
        for (int i = 0; i < list->count(); ++i)
            shown << list->item(i)->text();
        QCOMPARE(shown, (QStringList{"eth0", "usb0 (not present)", "wwan0"}));
        QCOMPARE(dialog.chosen(), (QStringList{"usb0", "wwan0"}));
        list->item(0)->setCheckState(Qt::Checked);
        list->item(1)->setCheckState(Qt::Unchecked);
        QCOMPARE(dialog.chosen(), (QStringList{"eth0", "wwan0"}));
    }
};

QTEST_MAIN(TestHostApp)
#include "tst_host_app.moc"
