// The host application as a user runs it: its command line, and the whole
// path from usage crossing a limit to the connection being dropped.
#include "HostApplication.h"

#include "AllowancePanel.h"
#include "BackgroundRecording.h"
#include "ConnectionControl.h"
#include "HostPaths.h"
#include "UsageLedger.h"

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
        finishLater(name, { false, QStringLiteral("not available here") });
    }
    QStringList asked;
};

} // namespace

class TestHostApp : public QObject
{
    Q_OBJECT

    // Demo figures without demo traffic, the module and its data from the build tree.
    static HostOptions simulated(const QString& language)
    {
        qputenv("NETINFO_LIBRARY_PATH", QFile::encodeName(TestHome::buildHomeDir()));
        HostOptions options;
        options.connection.simulate = true;
        options.connection.demoTraffic = false;
        options.language = language;
        return options;
    }

private slots:
    void commandLine_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QString>("error"); // part of the message; empty: accepted
        QTest::addColumn<bool>("simulate");
        QTest::addColumn<QString>("interfaceNames");
        QTest::addColumn<QString>("language");
        const auto row = [](const char* name, const char* arguments, const char* error, bool simulate = false,
                             const char* interfaces = "", const char* language = "") {
            QTest::newRow(name) << QString(arguments) << QString(error) << simulate << QString(interfaces)
                                << QString(language);
        };
        row("defaults: the real connection", "", "");
        row("demo traffic in Arabic", "--simulate --lang ar", "", true, "", "ar");
        row("fixed interfaces", "--interface wwan0 --interface usb1", "", false, "wwan0 usb1");
        row("interface not present", "--interface wwan0 --interface doesnotexist",
            "doesnotexist on this system; ");
        row("no interface to name", "--interface ../wwan0", "present: usb1, wwan0");
        row("unknown language", "--lang de", "de");
    }

    void commandLine()
    {
        QFETCH(QString, arguments);
        QFETCH(QString, error);
        QFETCH(QString, interfaceNames);
        QTemporaryDir sysClassNet;
        for (const char* name : { "lo", "usb1", "wwan0" })
            QVERIFY(QDir(sysClassNet.path()).mkdir(name));
        HostOptions options;
        QString message;
        QCOMPARE(HostOptions::parse(("netinfo " + arguments).split(' ', Qt::SkipEmptyParts), options, message,
                     sysClassNet.path()),
            error.isEmpty());
        QVERIFY2(error.isEmpty() ? message.isEmpty() : message.contains(error), qPrintable(message));
        if (!error.isEmpty())
            return;
        QTEST(options.connection.simulate, "simulate");
        QCOMPARE(options.connection.interfaceNames, interfaceNames.split(' ', Qt::SkipEmptyParts));
        QTEST(options.language, "language");
    }

    // Usage passes the warning percentage; the user ticks "disconnect" and
    // confirms; the simulated link drops and the view hears of it.
    void warningDisconnectsTheLink()
    {
        TestHome home;
        HostOptions options = simulated("en");
        QVERIFY(home.writeUserFile("DataUsageLimit.ini", TestHome::limitFile()));

        velt::SimulatedBackend* sdk = velt::SimulatedBackend::current();
        QVERIFY(sdk);
        sdk->setConnected(true);
        sdk->setReport(VELT_REPORT_TODAY, { 50 * 1024 * 1024, 35 * 1024 * 1024, 0, 0, 0, 0 });
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

    // The menu's language reaches every text (the view's, the host's and
    // Qt's own buttons) and is remembered; --lang and -reverse last one run.
    void language_data()
    {
        QTest::addColumn<QString>("commandLine"); // --lang
        QTest::addColumn<bool>("mirrored"); // -reverse
        QTest::addColumn<QString>("menu"); // chosen from the menu; empty: none
        QTest::addColumn<Qt::LayoutDirection>("direction");
        QTest::addColumn<QString>("nextStart");
        QTest::newRow("menu: Arabic, remembered") << "en" << false << "ar" << Qt::RightToLeft << "ar";
        QTest::newRow("menu: back to English") << "ar" << false << "en" << Qt::LeftToRight << "en";
        QTest::newRow("--lang: one run only") << "ar" << false << "" << Qt::RightToLeft << "en";
        QTest::newRow("-reverse mirrors English") << "en" << true << "" << Qt::RightToLeft << "en";
    }

    void language()
    {
        QFETCH(QString, menu);
        QFETCH(QString, commandLine);
        TestHome home;
        HostOptions options = simulated(commandLine);
        QFETCH(bool, mirrored);
        options.mirrored = mirrored;
        {
            HostApplication host(options);
            QCOMPARE(host.start(), 0);
            if (!menu.isEmpty())
                host.window().findChild<QAction*>("NetInfo_Language_" + menu)->trigger();
            const QString shown = menu.isEmpty() ? commandLine : menu;
            QVERIFY(host.window().findChild<QAction*>("NetInfo_Language_" + shown)->isChecked());
            QTEST(QGuiApplication::layoutDirection(), "direction");
            // The view was built anew in the language, not merely notified.
            auto* caption = host.window().findChild<QLabel*>("NetInfoUIPlugin_LabelDataVolume");
            QCOMPARE(caption->text(), Change::tr("IDS_STA_TOTALVOLUME", "NetInfoUIExPlugin"));
            // The data-limit panel, built before the language is loaded, follows it.
            auto* calibrate = host.window().findChild<QPushButton*>("NetInfo_CalibrateButton");
            QTRY_COMPARE(calibrate->text(), QCoreApplication::translate("AllowancePanel", "Calibrate\u2026"));
            // So do the texts added to the window and the tray's own menu.
            QTRY_COMPARE(host.window().findChild<QAction*>("NetInfo_AutostartAction")->text(),
                QCoreApplication::translate("HostApplication", "Start in the tray at login"));
            QTRY_COMPARE(host.tray()->menu()->actions().constFirst()->text(),
                QCoreApplication::translate("TrayIcon", "Open"));
            host.shutdown();
        }
        options.language.clear();
        options.mirrored = false;
        HostApplication again(options);
        QCOMPARE(again.start(), 0);
        QTEST(Change::CurrentLanguage(), "nextStart");
        again.setLanguage("en"); // for the tests that follow
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
        const QString gone = "wwan0 is no longer connected, so nothing was disconnected for it.";
        const auto row = [](const char* name, const char* upWhenReported, const char* upNow,
                             const char* asked, const QStringList& messages) {
            const auto list = [](const char* words) { return QString(words).split(' ', Qt::SkipEmptyParts); };
            QTest::newRow(name) << list(upWhenReported) << list(upNow) << list(asked) << messages;
        };
        row("still connected", "wwan0", "eth0 wwan0", "wwan0", { refused });
        row("modem gone, wired took over", "wwan0", "eth0", "", { gone });
        row("one of two left", "wwan0 wwan1", "wwan1", "wwan1", { gone, refused });
        row("never reported up", "", "eth0", "", { "There is no connection to disconnect." });
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

    // A start that cannot go on says what stands in the way.
    void startRefused_data()
    {
        QTest::addColumn<QString>("obstacle");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("expected");
        QTest::newRow("already running")
            << "instance" << 1
            << QStringLiteral("already running (process %1)").arg(QCoreApplication::applicationPid());
        QTest::newRow("data folder blocked") << "file" << 1 << "cannot create its data folder";
        QTest::newRow("HOME unset") << "home" << 2 << "HOME is not set";
    }

    void startRefused()
    {
        QFETCH(QString, obstacle);
        QFETCH(QString, expected);
        TestHome home;
        qputenv("NETINFO_LIBRARY_PATH", QFile::encodeName(TestHome::buildHomeDir()));
        const QString dir = HostPaths::userDataDir();
        QLockFile other(dir + "/netinfo.lock");
        if (obstacle == "instance") {
            QVERIFY(QDir().mkpath(dir) && other.tryLock());
        } else if (obstacle == "file") {
            QFile blocker(dir); // a file where the folder belongs
            QVERIFY(QDir().mkpath(QFileInfo(dir).path()) && blocker.open(QIODevice::WriteOnly));
        } else {
            for (const char* name : { "HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME" })
                qunsetenv(name); // TestHome puts them back
        }
        QString shown;
        CommonUtils::SetMessageHook([&shown](QMessageBox& box) {
            shown = box.text();
            return int(QMessageBox::Ok);
        });
        HostOptions options;
        options.language = "en";
        HostApplication host(options);
        QTEST(host.start(), "exitCode");
        CommonUtils::SetMessageHook({});
        QVERIFY2(
            shown.contains(expected) && shown.contains(obstacle == "file" ? dir : ""), qPrintable(shown));
        QVERIFY(!QFile::exists("/.local/share/netinfo"));
    }

    // The limit panel adds what the statistics service counted and has not
    // written yet, so it agrees with the view's month; once, not twice.
    void allowanceCountsUnwrittenUsage()
    {
        TestHome home;
        const QDateTime now = QDateTime::currentDateTime();
        {
            velt::UsageLedger ledger(home.userFile("usage.sqlite"));
            QVERIFY(ledger.open(now.toSecsSinceEpoch()));
            ledger.add({ "wwan0", "" }, now.toSecsSinceEpoch(), { 1000, 200, 0 });
            QVERIFY(ledger.commit());
        }
        AllowanceSources sources = AllowanceSources::user();
        QCOMPARE(currentAllowance(sources, now).used, 1200u);
        sources.serviceMonth = [] { return std::optional<quint64>(1700); };
        QCOMPARE(currentAllowance(sources, now).used, 1700u);
        AllowancePanel panel(sources); // keeps its reading of the ledger, but not past a change
        QVERIFY(panel.calibrate(5000) && panel.figures().used == 5000);
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
            setup.systemctl = script("systemctl",
                QStringLiteral("echo \"$*\" >> %1/calls\n"
                               "[ \"$2\" = cat ] && exit %2\n"
                               "[ %3 = 0 ] || echo 'Access denied' >&2\nexit %3\n")
                    .arg(dir.path())
                    .arg(catExit)
                    .arg(enableExit));
        setup.recorder = recorderPresent
            ? script("netinfo-recorder", "touch " + dir.filePath("started") + "\n")
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
};

QTEST_MAIN(TestHostApp)
#include "tst_host_app.moc"
