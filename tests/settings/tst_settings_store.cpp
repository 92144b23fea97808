// The usage-limit store: loading the user file over the template, building a
// fresh user file, the fixed set of keys, the save's layout and its
// all-or-nothing replacement of the user file.
#include "NetInfoSettingUILogic.h"

#include "CommonUtils.h"
#include "FileChecks.h"
#include "TestHome.h"

#include <QtTest>

#include <memory>

namespace {

const QByteArray kTemplate
    = "[uselimit]\nchkVolume=true\nSizeVolume=1024\nnot a key line\nradioDaily=false\n";

// The whole map as "key=value" pairs in key order, so a row states all of it.
QString dump(const QMap<QString, QString>& map)
{
    QStringList pairs;
    for (auto it = map.cbegin(); it != map.cend(); ++it)
        pairs << it.key() + QLatin1Char('=') + it.value();
    return pairs.join(QLatin1Char(';'));
}

QVariant published(const char* key)
{
    return CommonUtils::GetSettings(QStringLiteral("uselimit"), QLatin1String(key));
}

} // namespace

class TestSettingsStore : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestHome> m_home;
    NetInfoSettingUILogic* m_store = nullptr;

    QString userFile() const { return m_home->userFile(QStringLiteral("DataUsageLimit.ini")); }
    QString tempFile() const { return m_home->userFile(QStringLiteral("tempDataUsageLimit.ini")); }

    // A null content leaves that file out.
    bool prepare(const QByteArray& user, const QByteArray& templ)
    {
        return (user.isNull() || m_home->writeUserFile(QStringLiteral("DataUsageLimit.ini"), user))
            && (templ.isNull() || m_home->writePluginFile(QStringLiteral("DataUsageLimit.ini"), templ));
    }

private slots:
    void init()
    {
        m_home = std::make_unique<TestHome>();
        QVERIFY(m_home->isValid());
        m_store = NetInfoSettingUILogic::GetInstance();
    }

    void cleanup()
    {
        NetInfoSettingUILogic::Destroy();
        m_home.reset();
    }

    // A missing or zero-size user file is first rebuilt from the template
    // with today's date as the start: "file" is then what it holds.
    void loads_data()
    {
        QTest::addColumn<QByteArray>("user");
        QTest::addColumn<QByteArray>("templ");
        QTest::addColumn<QString>("map");
        QTest::addColumn<QByteArray>("file");
        const QString starts = QStringLiteral("startdate=;startmonthdate=;startweekdate=");
        const QString today = QDate::currentDate().toString(QStringLiteral("yyyy-MM-dd"));
        const QString rebuilt = "SizeVolume=1024;chkVolume=true;radioDaily=false;startdate=" + today
            + ";startmonthdate=0;startweekdate=0";
        const QByteArray fresh
            = kTemplate + "startdate=" + today.toLatin1() + "\nstartweekdate=0\nstartmonthdate=0";
        QTest::newRow("empty value kept") << QByteArray("[uselimit]\nSizeVolume=\n") << QByteArray()
                                          << "SizeVolume=;" + starts << QByteArray();
        QTest::newRow("template fills gaps, user wins")
            << QByteArray("[uselimit]\nSizeVolume=77\nstartdate=2010-01-31\n") << kTemplate
            << "SizeVolume=77;chkVolume=true;radioDaily=false;startdate=2010-01-31;startmonthdate=;"
               "startweekdate="
            << QByteArray();
        QTest::newRow("no files at all") << QByteArray() << QByteArray() << starts << QByteArray();
        QTest::newRow("missing user file") << QByteArray() << kTemplate << rebuilt << fresh;
        QTest::newRow("zero-size user file") << QByteArray("") << kTemplate << rebuilt << fresh;
    }

    void loads()
    {
        QFETCH(QByteArray, user);
        QFETCH(QByteArray, templ);
        QFETCH(QByteArray, file);
        QVERIFY(prepare(user, templ));
        m_store->GetUseLimitSetting();
        QTEST(dump(m_store->useLimitSettings()), "map");
        const QByteArray untouched = user.isNull() ? QByteArray("<missing>") : user; // loading never writes
        QCOMPARE(contentOf(userFile()), file.isNull() ? untouched : file);
        QVERIFY(!QFileInfo::exists(tempFile()));
        if (user.isNull() && !templ.isNull()) { // made private, folder and file
            QCOMPARE(modeOf(QFileInfo(userFile()).path()), mode_t(0700));
            QCOMPARE(modeOf(userFile()), mode_t(0600));
        }
    }

    // A save either writes the 18 known keys in their fixed order under the
    // header (whatever the loaded order, an unknown key left out, a missing
    // one not added, a non-ASCII value kept) to a regular file with the
    // user's permissions, and publishes the period; or it leaves the
    // previous file byte for byte and publishes nothing. A link at the
    // temporary name is never followed.
    void saveReplacesOrKeeps_data()
    {
        QTest::addColumn<QString>("obstacle");
        QTest::addColumn<bool>("saved");
        QTest::newRow("nothing in the way") << "" << true;
        QTest::newRow("link at the temporary path") << "link" << true;
        QTest::newRow("temporary path is a directory") << "directory" << false;
    }

    void saveReplacesOrKeeps()
    {
        QFETCH(QString, obstacle);
        QFETCH(bool, saved);
        const QByteArray old
            = "[whatever]\nWarnBeforPercentage=80\nstartmonthdate=14\nextra=1\nstartweekdate=3\n"
              "chkRecurrence=true\nradioDaily=false\nradioWeekly=true\nradioMonthly=false\n"
              "chkVolume=true\nchkTimeVolume=false\nSizeVolume=500\nSizeTimeVolume=0\n"
              "chkWarnbefore=true\nchkWarnAfter=true\nShowDataWarnAfter=false\nShowDataWarnBefor=false\n"
              "ShowTimeWarnBefor=false\nstartdate=2010-01-01\n";
        QVERIFY(prepare(old, QByteArray()) && m_home->writeUserFile(QStringLiteral("victim"), "precious"));
        QVERIFY(::chmod(QFile::encodeName(userFile()).constData(), 0640) == 0); // the user's choice
        m_store->GetUseLimitSetting();
        const QStringList keys = m_store->useLimitSettings().keys();
        m_store->updateUseLimitSetting(QStringLiteral("SizeTimeVolume"), QString::fromUtf8("7\u00e9"));
        m_store->updateUseLimitSetting(QStringLiteral("ShowTimeWarnAfter"), QStringLiteral("true"));
        QCOMPARE(m_store->useLimitSettings().keys(), keys);

        if (obstacle == QLatin1String("directory"))
            QVERIFY(QDir().mkpath(tempFile() + QStringLiteral("/child")));
        if (obstacle == QLatin1String("link"))
            QVERIFY(QFile::link(m_home->userFile(QStringLiteral("victim")), tempFile()));
        if (!saved)
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("settings not saved")));
        QCOMPARE(m_store->saveUseLimitSetting(), saved);

        QCOMPARE(contentOf(m_home->userFile(QStringLiteral("victim"))), QByteArray("precious"));
        QVERIFY(!QFileInfo(tempFile()).isFile() && !QFileInfo(userFile()).isSymLink());
        QCOMPARE(modeOf(userFile()), mode_t(0640));
        QCOMPARE(contentOf(userFile()),
            saved ? QByteArray(
                "[uselimit]\nchkRecurrence=true\nradioDaily=false\nradioWeekly=true\nradioMonthly=false\n"
                "chkVolume=true\nchkTimeVolume=false\nSizeVolume=500\nSizeTimeVolume=7\xc3\xa9\n"
                "chkWarnbefore=true\nchkWarnAfter=true\nShowDataWarnAfter=false\nShowDataWarnBefor=false\n"
                "ShowTimeWarnBefor=false\nShowTimeWarnAfter=\nstartdate=2010-01-01\nstartweekdate=3\n"
                "startmonthdate=14\nWarnBeforPercentage=80\n")
                  : old);
        QCOMPARE(published("startweekdate").toString() + published("startmonthdate").toString(),
            saved ? QStringLiteral("314") : QString());
        m_store->GetUseLimitSetting();
        QCOMPARE(m_store->useLimitSettings().value(QStringLiteral("SizeTimeVolume")),
            saved ? QString::fromUtf8("7\u00e9") : QStringLiteral("0"));
    }
};

QTEST_GUILESS_MAIN(TestSettingsStore)
#include "tst_settings_store.moc"
