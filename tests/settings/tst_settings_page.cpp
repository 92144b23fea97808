// The usage-limit page: its widget tree, the period rules, and OK and Cancel
// against the store and the file.
#include "AtomicFile.h"
#include "PluginFixture.h"

#include <QtTest>
#include <QtWidgets>

#include <memory>

namespace {

const char kStored[]
    = "[uselimit]\nchkRecurrence=true\nradioDaily=false\nradioWeekly=false\nradioMonthly=true\n"
      "chkVolume=true\nchkTimeVolume=true\nSizeVolume=500\nSizeTimeVolume=100\nchkWarnbefore=true\n"
      "chkWarnAfter=true\nShowDataWarnAfter=true\nShowDataWarnBefor=true\nShowTimeWarnBefor=true\n"
      "ShowTimeWarnAfter=true\nstartdate=2010-01-31\nstartweekdate=4\nstartmonthdate=0\n"
      "WarnBeforPercentage=80\n";

} // namespace

class TestSettingsPage : public QObject
{
    Q_OBJECT

    PluginFixture m_fixture;
    NetInfoSettingUIPlugin* m_page = nullptr;

    QString userFile() const { return m_fixture.home->userFile(QStringLiteral("DataUsageLimit.ini")); }

    template <class T = QWidget> T* find(const char* name) const
    {
        return m_page->GetPageWidget()->findChild<T*>(
            QLatin1String("NetInfoSettingDlg_") + QLatin1String(name));
    }

    // Builds the page over the stored file with "key=value" lines replaced
    // and the named functions switched off.
    bool build(const QStringList& stored = {}, const QStringList& off = {})
    {
        QString text = QString::fromLatin1(kStored);
        for (const QString& line : stored)
            text.replace(
                QRegularExpression("\n" + line.section(QLatin1Char('='), 0, 0) + "=[^\n]*"), "\n" + line);
        if (!m_fixture.setUp(off)
            || !m_fixture.home->writeUserFile(QStringLiteral("DataUsageLimit.ini"), text.toLatin1()))
            return false;
        PluginFixture::installSdk();
        NetInfoUILogic::Instance()->Init();
        m_page = NetInfoSettingUIPlugin::GetInstance();
        m_page->ongetXMLUnit(QStringLiteral("MB"));
        return m_page->InitNetInfoSetting();
    }

    static QStringList list(const QString& words)
    {
        return words.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    }

    void click(const QStringList& names)
    {
        for (const QString& name : names)
            find<QAbstractButton>(qPrintable(name))->click();
    }

    // Enabled or not: date, the three radios, week and month; then the
    // recurrence box, the radio chosen and the two indexes.
    QString periodState() const
    {
        QString enabled, radio = QStringLiteral("none");
        for (const char* name :
            { "dateedit", "radioDaily", "radioWeekly", "radioMonthly", "comboBoxWeekly", "comboBoxMonthly" })
            enabled += find(name)->isEnabled() ? '1' : '0';
        for (const char* period : { "Daily", "Weekly", "Monthly" })
            if (find<QRadioButton>(qPrintable(QStringLiteral("radio") + period))->isChecked())
                radio = QString::fromLatin1(period).toLower();
        return QStringLiteral("enabled=%1 rec=%2 radio=%3 wday=%4 mday=%5")
            .arg(enabled)
            .arg(find<QCheckBox>("dateeditSetDate")->isChecked())
            .arg(radio)
            .arg(find<QComboBox>("comboBoxWeekly")->currentIndex())
            .arg(find<QComboBox>("comboBoxMonthly")->currentIndex());
    }

private slots:
    void cleanup() { m_fixture.tearDown(); }

    // A rebuild replaces the tree; a dialog that takes the page with it
    // leaves no dangling parts behind.
    void rebuildAndDialogLoss()
    {
        QVERIFY(build());
        QPointer<QWidget> first = m_page->GetPageWidget();
        QVERIFY(m_page->InitNetInfoSetting());
        QVERIFY(first.isNull());
        auto dialog = std::make_unique<QWidget>();
        QRect rect(0, 0, 400, 300);
        QVERIFY(m_page->ShowNetInfoSettingDlg(dialog.get(), rect));
        dialog.reset();
        QVERIFY(!m_page->GetPageWidget());
        QVERIFY(!m_page->SaveNetInfoSettings());
        QVERIFY(!m_page->HideNetInfoSetting());
    }

    // Lists are space-separated: "key=value" lines of the stored file,
    // check boxes and radio buttons clicked, functions switched off.
    void periodMode_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("clicks");
        QTest::addColumn<QString>("state");
        const auto row = [](const char* name, const QString& stored, const char* clicks, const char* state) {
            QTest::newRow(name) << stored << QString(clicks) << QString(state);
        };
        row("start date, monthly chosen", "chkRecurrence=false", "",
            "enabled=100000 rec=0 radio=monthly wday=4 mday=0");
        row("weekly from Wednesday", "radioWeekly=true radioMonthly=false startweekdate=3", "",
            "enabled=011110 rec=1 radio=weekly wday=3 mday=0");
        row("indexes out of range or not numbers", "startweekdate=9 startmonthdate=x", "",
            "enabled=011101 rec=1 radio=monthly wday=0 mday=0");
        row("recurrence off", "", "dateeditSetDate", "enabled=100000 rec=0 radio=monthly wday=4 mday=0");
        row("recurrence on, no radio", "chkRecurrence=false radioMonthly=false", "dateeditSetDate",
            "enabled=011100 rec=1 radio=none wday=4 mday=0");
    }

    void periodMode()
    {
        QFETCH(QString, stored);
        QFETCH(QString, clicks);
        QVERIFY(build(list(stored)));
        click(list(clicks));
        QTEST(periodState(), "state");
    }

    // Entries and faults: the entry is cleared (or given "250" when the disk
    // fails); -1 for no fault, else the file step that fails.
    void okRefuses_data()
    {
        QTest::addColumn<QStringList>("stored");
        QTest::addColumn<QString>("edit");
        QTest::addColumn<int>("fault");
        QTest::addColumn<QString>("prompt");
        QTest::addColumn<QStringList>("told");
        QTest::addColumn<QString>("period"); // after Cancel
        const QString picked = QStringLiteral("enabled=011110 rec=1 radio=weekly wday=6 mday=0");
        const QString stored = QStringLiteral("enabled=011101 rec=1 radio=monthly wday=4 mday=0");
        QTest::newRow("data volume empty, limit off")
            << QStringList { "chkVolume=false" } << "lineEditDataVolume" << -1 << "IDS_INPUT_DATA_VOLUME"
            << QStringList() << picked;
        QTest::newRow("percentage empty, warning off")
            << QStringList { "chkWarnbefore=false" } << "lineEditWarnPercent" << -1
            << "IDS_INPUT_DATA_WARN_PERCENTAGE" << QStringList() << picked;
        QTest::newRow("folder refuses the file")
            << QStringList() << "lineEditDataVolume" << int(AtomicFile::Step::Create)
            << "IDS_SAVE_SETTINGS_FAILED" << QStringList() << stored;
        QTest::newRow("disk fails the replacement")
            << QStringList() << "lineEditDataVolume" << int(AtomicFile::Step::Rename)
            << "IDS_SAVE_SETTINGS_FAILED" << QStringList { "250,100,1,1", "500,100,1,1" } << stored;
    }

    // The page stays open with the entries as they are and nothing reaches
    // the file or the host's settings. An empty entry leaves the period
    // choices in the map, so Cancel brings them back; a disk that fails
    // leaves the map as it was, and a view already told hears the old
    // values again.
    void okRefuses()
    {
        QFETCH(QStringList, stored);
        QFETCH(QString, edit);
        QFETCH(int, fault);
        QFETCH(QString, prompt);
        QVERIFY(build(stored));
        QFile file(userFile());
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray old = file.readAll();
        QStringList prompts;
        CommonUtils::SetMessageHook([&prompts](QMessageBox& box) {
            prompts << box.windowTitle() + QLatin1Char('/') + box.text() + QLatin1Char('/')
                    + box.buttons().first()->text() + QString::number(box.buttons().size());
            return int(QMessageBox::Ok);
        });
        QStringList told;
        connect(m_page, &NetInfoSettingUIPlugin::netInfoSettingsChanged, this,
            [&told](int data, int time, bool before, bool exceeds) {
                told << QStringLiteral("%1,%2,%3,%4").arg(data).arg(time).arg(before).arg(exceeds);
            });
        click({ QStringLiteral("radioWeekly") });
        find<QComboBox>("comboBoxWeekly")->setCurrentIndex(6);
        find<QLineEdit>(qPrintable(edit))->setText(fault < 0 ? QString() : QStringLiteral("250"));
        if (fault >= 0) {
            AtomicFile::failNextForTesting(AtomicFile::Step(fault), EROFS);
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("settings not saved")));
        }
        QVERIFY(!m_page->SaveNetInfoSettings());
        QCOMPARE(prompts, QStringList { "IDS_PROPMT/" + prompt + "/IDS_OK1" });
        QTEST(told, "told");
        QVERIFY(file.seek(0));
        QCOMPARE(file.readAll(), old);
        QVERIFY(
            !CommonUtils::GetSettings(QStringLiteral("uselimit"), QStringLiteral("startweekdate")).isValid());
        QCOMPARE(find<QLineEdit>(qPrintable(edit))->text(), fault < 0 ? QString() : QStringLiteral("250"));

        click({ QStringLiteral("radioMonthly") });
        QVERIFY(m_page->CancelNetInfoSetting());
        QTEST(periodState(), "period");
    }

    void okSendsSettingsThenWritesFile_data()
    {
        QTest::addColumn<QStringList>("off");
        QTest::addColumn<QString>("payload");
        QTest::addColumn<QString>("sizes");
        QTest::newRow("typed sizes, data limit off") << QStringList() << "250,7,1,0"
                                                     << "SizeVolume=250 SizeTimeVolume=7";
        QTest::newRow("hidden time row keeps stored size")
            << QStringList { "TIMEVOLUMELIMIT" } << "250,100,0,0"
            << "SizeVolume=250 SizeTimeVolume=100";
    }

    void okSendsSettingsThenWritesFile()
    {
        QFETCH(QStringList, off);
        QFETCH(QString, sizes);
        QVERIFY(build({}, off));
        click({ QStringLiteral("checkBoxDataVolume"), QStringLiteral("checkBoxWarnExceed") });
        find<QLineEdit>("lineEditDataVolume")->setText(QStringLiteral("250"));
        if (auto* time = find<QLineEdit>("lineEditTimeVolume"))
            time->setText(QStringLiteral("7"));
        find<QDateEdit>("dateedit")->setDate(QDate(2011, 2, 3));

        QString sent;
        connect(m_page, &NetInfoSettingUIPlugin::netInfoSettingsChanged, this,
            [&](int data, int time, bool before, bool exceeds) {
                QFile file(userFile());
                sent = QStringLiteral("%1,%2,%3,%4").arg(data).arg(time).arg(before).arg(exceeds);
                // The map is already new, the file still old.
                if (!file.open(QIODevice::ReadOnly) || file.readAll() != kStored
                    || m_page->getVolumeLimitSettings(QStringLiteral("SizeVolume")) != QLatin1String("250"))
                    sent += QStringLiteral(" too late");
            });
        QVERIFY(m_page->SaveNetInfoSettings());
        QTEST(sent, "payload");
        QFile file(userFile());
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString saved = QString::fromUtf8(file.readAll());
        for (const QString& line : sizes.split(QLatin1Char(' '))
                + QStringList {
                    "chkVolume=false", "chkWarnAfter=false", "startdate=2011-02-03", "startweekdate=4" })
            QVERIFY2(saved.contains(QLatin1Char('\n') + line + QLatin1Char('\n')),
                qPrintable(line + " in\n" + saved));
    }
};

QTEST_MAIN(TestSettingsPage)
#include "tst_settings_page.moc"
