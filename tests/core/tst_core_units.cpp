#include "Change.h"
#include "CommonUtils.h"
#include "TestHome.h"

#include <QtTest>

#include <memory>

Q_DECLARE_METATYPE(TagUnits)

namespace {

const QString kModule = QStringLiteral("NetInfoUIExPlugin");
constexpr unsigned long long KiB = 1024, MiB = KiB * 1024, GiB = MiB * 1024, TiB = GiB * 1024;

TagUnits unit(const QString& name, unsigned long long size, const QString& id = {}, int iValue = 0)
{
    TagUnits u;
    u.strName = name;
    u.ullType = size;
    u.strLangResID = id;
    u.iValue = iValue;
    return u;
}

// Names differ from the translations so the label shows which one was used.
TagUnitsTable fluxTable()
{
    return {unit("byte", 1, "IDS_UNIT_BYTE"), unit("kilo", KiB, "IDS_UNIT_KB"), unit("mega", MiB, "IDS_UNIT_MB"),
            unit("giga", GiB, "IDS_UNIT_GB"), unit("tera", TiB, "IDS_UNIT_TB")};
}

} // namespace

class TestUnits : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void fluxToString_data();
    void fluxToString();
    void unitToString_data();
    void unitToString();

private:
    std::unique_ptr<TestHome> m_home;
};

void TestUnits::initTestCase()
{
    m_home = std::make_unique<TestHome>();
    QVERIFY(m_home->isValid());
    QVERIFY2(m_home->installTranslations(), "no compiled translations in the build tree");
    QVERIFY(Change::LoadLanguage(QStringLiteral("en")));
}

void TestUnits::fluxToString_data()
{
    QTest::addColumn<qulonglong>("value");
    QTest::addColumn<TagUnitsTable>("table");
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("expected");

    const QLocale c = QLocale::c();
    const QLocale german(QLocale::German, QLocale::Germany);
    const TagUnitsTable flux = fluxTable();
    TagUnitsTable shuffled = {flux[3], flux[0], flux[4], flux[2], flux[1]};

    QTest::newRow("zero") << 0ull << flux << c << "0 B";
    QTest::newRow("512") << 512ull << flux << c << "512 B";
    QTest::newRow("1023") << 1023ull << flux << c << "1023 B";
    QTest::newRow("1024") << KiB << flux << c << "1.00 KB";
    QTest::newRow("1536") << 1536ull << flux << c << "1.50 KB";
    QTest::newRow("rounds to two decimals") << 1023 * KiB + 1000 << flux << c << "1023.98 KB";
    QTest::newRow("5 MiB") << 5 * MiB << flux << c << "5.00 MB";
    QTest::newRow("2^32") << 4 * GiB << flux << c << "4.00 GB";
    QTest::newRow("6.5 GiB") << 6 * GiB + 512 * MiB << flux << c << "6.50 GB";
    QTest::newRow("3 TiB") << 3 * TiB << flux << c << "3.00 TB";
    QTest::newRow("beyond the largest unit") << 2048 * TiB << flux << c << "2048.00 TB";
    QTest::newRow("unsorted, zero") << 0ull << shuffled << c << "0 B";
    QTest::newRow("unsorted, 1536") << 1536ull << shuffled << c << "1.50 KB";
    QTest::newRow("unsorted, 5 MiB") << 5 * MiB << shuffled << c << "5.00 MB";

    const TagUnitsTable byIValue = {unit("B", 0, {}, 1), unit("KB", 0, {}, 1024)};
    QTest::newRow("only iValue") << 2048ull << byIValue << c << "2.00 KB";
    const TagUnitsTable bothSizes = {unit("B", 1), unit("MB", MiB, {}, 1000)};
    QTest::newRow("ullType wins over iValue") << 2 * MiB << bothSizes << c << "2.00 MB";
    const TagUnitsTable withUnsized = {unit("none", 0), unit("B", 1), unit("KB", KiB)};
    QTest::newRow("unsized entry skipped") << 0ull << withUnsized << c << "0 B";
    const TagUnitsTable noBytes = {unit("MB", MiB), unit("KB", KiB)};
    QTest::newRow("below every unit: smallest") << 100ull << noBytes << c << "0.10 KB";
    const TagUnitsTable untranslated = {unit("thing", 1, "IDS_UNIT_NO_SUCH_KEY")};
    QTest::newRow("untranslated id shows the id") << 7ull << untranslated << c << "7 IDS_UNIT_NO_SUCH_KEY";
    QTest::newRow("empty table") << 1536ull << TagUnitsTable() << c << "1536";
    QTest::newRow("only unsized entries") << 1536ull << TagUnitsTable{unit("none", 0)} << c << "1536";

    QTest::newRow("German, decimal comma") << 1536ull << flux << german << "1,50 KB";
    QTest::newRow("German, bytes") << 512ull << flux << german << "512 B";
    QTest::newRow("German, large") << 6 * GiB + 512 * MiB << shuffled << german << "6,50 GB";
    QTest::newRow("German, empty table") << 1234567ull << TagUnitsTable() << german << "1.234.567";
}

void TestUnits::fluxToString()
{
    QFETCH(qulonglong, value);
    QFETCH(TagUnitsTable, table);
    QFETCH(QLocale, locale);
    QFETCH(QString, expected);

    QCOMPARE(CommonUtils::SpeedFluxToString(value, table, kModule, locale), expected);
}

void TestUnits::unitToString_data()
{
    QTest::addColumn<TagUnitsTable>("table");
    QTest::addColumn<QString>("expected");

    const TagUnitsTable speed = {unit("bps", 1, "IDS_UNIT_BPS"), unit("kbps", KiB, "IDS_UNIT_KBPS")};
    QTest::newRow("translated first entry") << speed << "B/s";
    QTest::newRow("first entry, not the smallest") << TagUnitsTable{speed[1], speed[0]} << "KB/s";
    QTest::newRow("name without id") << TagUnitsTable{unit("kB/s", KiB)} << "kB/s";
    QTest::newRow("empty table") << TagUnitsTable() << "";
}

void TestUnits::unitToString()
{
    QFETCH(TagUnitsTable, table);
    QFETCH(QString, expected);

    QCOMPARE(CommonUtils::SpeedUnitToString(table, kModule), expected);
}

QTEST_GUILESS_MAIN(TestUnits)
#include "tst_core_units.moc"
