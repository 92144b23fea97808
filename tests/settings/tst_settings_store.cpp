// The usage-limit store: loading the user file over the template, building a
// fresh user file, the fixed set of keys, the save's layout and its
// all-or-nothing replacement of the user file.
#include "NetInfoSettingUILogic.h"

#include "CommonUtils.h"
#include "TestHome.h"

#include <QtTest>

#include <csignal>
#include <memory>
#include <sys/resource.h>

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

QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
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

    void loads_data()
    {
        QTest::addColumn<QByteArray>("user");
        QTest::addColumn<QByteArray>("templ");
        QTest::addColumn<QString>("map");
        const QString starts = QStringLiteral("startdate=;startmonthdate=;startweekdate=");
        QTest::newRow("empty value kept")
            << QByteArray("[uselimit]\nSizeVolume=\n") << QByteArray() << "SizeVolume=;" + starts;
        QTest::newRow("two '=' ignored") << QByteArray("[uselimit]\nSizeVolume=1=2\nchkVolume=true")
                                         << QByteArray() << "chkVolume=true;" + starts;
        QTest::newRow("header never parsed")
            << QByteArray("chkVolume=true\nradioDaily=true\n") << QByteArray() << "radioDaily=true;" + starts;
        QTest::newRow("later line wins") << QByteArray("[uselimit]\nstartweekdate=2\nstartweekdate=5\n")
                                         << QByteArray() << "startdate=;startmonthdate=;startweekdate=5";
        QTest::newRow("template fills gaps, user wins")
            << QByteArray("[uselimit]\nSizeVolume=77\nstartdate=2010-01-31\n") << kTemplate
            << "SizeVolume=77;chkVolume=true;radioDaily=false;startdate=2010-01-31;startmonthdate=;"
               "startweekdate=";
        QTest::newRow("no files at all") << QByteArray() << QByteArray() << starts;
    }

    void loads()
    {
        QFETCH(QByteArray, user);
        QFETCH(QByteArray, templ);
        QFETCH(QString, map);
        QVERIFY(prepare(user, templ));
        m_store->GetUseLimitSetting();
        QCOMPARE(dump(m_store->useLimitSettings()), map);
    }

    // A missing or zero-size user file is rebuilt from the template with
    // today's date as the start.
    void buildsFreshUserFile_data()
    {
        QTest::addColumn<QByteArray>("user");
        QTest::newRow("missing") << QByteArray();
        QTest::newRow("zero size") << QByteArray("");
    }

    void buildsFreshUserFile()
    {
        QFETCH(QByteArray, user);
        QVERIFY(prepare(user, kTemplate));
        m_store->GetUseLimitSetting();
        const QString today = QDate::currentDate().toString(QStringLiteral("yyyy-MM-dd"));
        QCOMPARE(m_store->GetConfigFilePath(), userFile());
        QCOMPARE(readAll(userFile()),
            kTemplate + "startdate=" + today.toLatin1() + "\nstartweekdate=0\nstartmonthdate=0");
        QCOMPARE(m_store->useLimitSettings().value(QStringLiteral("startdate")), today);
        QVERIFY(!QFileInfo::exists(tempFile()));
    }

    // Keys in any order, one unknown, one missing (which an update does not
    // add), one non-ASCII value: the file gets the 18 known keys in their
    // fixed order under the header.
    void savesFixedLayout()
    {
        QVERIFY(prepare(
            "[whatever]\nWarnBeforPercentage=80\nstartmonthdate=14\nextra=1\nstartweekdate=3\n"
            "chkRecurrence=true\nradioDaily=false\nradioWeekly=true\nradioMonthly=false\n"
            "chkVolume=true\nchkTimeVolume=false\nSizeVolume=500\nSizeTimeVolume=0\n"
            "chkWarnbefore=true\nchkWarnAfter=true\nShowDataWarnAfter=false\nShowDataWarnBefor=false\n"
            "ShowTimeWarnBefor=false\nstartdate=2010-01-01\n",
            QByteArray()));
        m_store->GetUseLimitSetting();
        const QStringList keys = m_store->useLimitSettings().keys();
        m_store->updateUseLimitSetting(QStringLiteral("SizeTimeVolume"), QString::fromUtf8("7\u00e9"));
        m_store->updateUseLimitSetting(QStringLiteral("ShowTimeWarnAfter"), QStringLiteral("true"));
        QCOMPARE(m_store->useLimitSettings().keys(), keys);
        m_store->saveUseLimitSetting();
        QCOMPARE(readAll(userFile()),
            QByteArray(
                "[uselimit]\nchkRecurrence=true\nradioDaily=false\nradioWeekly=true\nradioMonthly=false\n"
                "chkVolume=true\nchkTimeVolume=false\nSizeVolume=500\nSizeTimeVolume=7\xc3\xa9\n"
                "chkWarnbefore=true\nchkWarnAfter=true\nShowDataWarnAfter=false\nShowDataWarnBefor=false\n"
                "ShowTimeWarnBefor=false\nShowTimeWarnAfter=\nstartdate=2010-01-01\nstartweekdate=3\n"
                "startmonthdate=14\nWarnBeforPercentage=80\n"));
        QVERIFY(!QFileInfo::exists(tempFile()));
        QCOMPARE(published("startweekdate").toString() + published("startmonthdate").toString(), QStringLiteral("314"));
        m_store->GetUseLimitSetting();
        QCOMPARE(m_store->useLimitSettings().value(QStringLiteral("SizeTimeVolume")), QString::fromUtf8("7\u00e9"));
    }

    // A save that cannot complete leaves the previous file byte for byte and
    // publishes nothing.
    void failedSaveKeepsOldFile_data()
    {
        QTest::addColumn<QString>("obstacle");
        QTest::newRow("temporary path is a directory") << "directory";
        QTest::newRow("disk full while writing") << "full";
    }

    void failedSaveKeepsOldFile()
    {
        QFETCH(QString, obstacle);
        const QByteArray old = "[uselimit]\nSizeVolume=500\nstartweekdate=2\n";
        QVERIFY(prepare(old, QByteArray()));
        m_store->GetUseLimitSetting();
        m_store->updateUseLimitSetting(QStringLiteral("SizeVolume"), QStringLiteral("9"));

        rlimit saved {};
        QVERIFY(getrlimit(RLIMIT_FSIZE, &saved) == 0);
        auto* previousHandler = std::signal(SIGXFSZ, SIG_IGN);
        if (obstacle == QLatin1String("directory")) {
            QVERIFY(QDir().mkpath(tempFile() + QStringLiteral("/child")));
        } else {
            // Writes past 16 bytes fail as they would on a full disk.
            rlimit tiny = saved;
            tiny.rlim_cur = 16;
            QVERIFY(setrlimit(RLIMIT_FSIZE, &tiny) == 0);
        }
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("settings not saved")));
        m_store->saveUseLimitSetting();
        setrlimit(RLIMIT_FSIZE, &saved);
        std::signal(SIGXFSZ, previousHandler);

        QCOMPARE(readAll(userFile()), old);
        QVERIFY(!QFileInfo(tempFile()).isFile());
        QVERIFY(!published("startweekdate").isValid());
    }
};

QTEST_GUILESS_MAIN(TestSettingsStore)
#include "tst_settings_store.moc"
