// Strings, units, the settings file and message boxes.
#include "Change.h"
#include "CommonUtils.h"
#include "TestHome.h"

#include <QPushButton>
#include <QtTest>

#include <memory>

Q_DECLARE_METATYPE(TagUnits)

namespace {

const QString kModule = QStringLiteral("NetInfoUIExPlugin");
constexpr unsigned long long KiB = 1024, MiB = KiB * 1024, GiB = MiB * 1024, TiB = GiB * 1024;

// The codes ShowMessage answers with for its first, second and third button.
const QMessageBox::StandardButton kCodes[] = { QMessageBox::Ok, QMessageBox::Cancel, QMessageBox::Ignore };

int showMessage(
    const QStringList& keys, bool modal = true, QDialog** dialog = nullptr, QWidget* parent = nullptr)
{
    // Flags without a window type must still give a window, not a child widget of parent.
    return CommonUtils::ShowMessage(QMessageBox::Warning, parent, QStringLiteral("Title"),
        QStringLiteral("Text"), keys.value(0), keys.value(1), keys.value(2), modal, Qt::WindowStaysOnTopHint,
        dialog, {}, true);
}

QAbstractButton* buttonWithText(const QMessageBox& box, const QString& text)
{
    const QList<QAbstractButton*> buttons = box.buttons();
    const auto it = std::find_if(buttons.begin(), buttons.end(), [&](auto* b) { return b->text() == text; });
    return it == buttons.end() ? nullptr : *it;
}

} // namespace

class TestHost : public QObject
{
    Q_OBJECT
    std::unique_ptr<TestHome> m_home;

private slots:
    void initTestCase()
    {
        m_home = std::make_unique<TestHome>();
        QVERIFY(m_home->isValid());
        QVERIFY2(m_home->installTranslations(), "no compiled translations in the build tree");
        // Before any language is loaded the keys themselves are shown.
        QVERIFY(Change::CurrentLanguage().isEmpty());
        QCOMPARE(Change::tr("IDS_TREE_DAILY", kModule), QStringLiteral("IDS_TREE_DAILY"));
        QVERIFY(Change::LoadLanguage(QStringLiteral("en")));
    }

    void cleanup() { CommonUtils::SetMessageHook({}); }

    void fluxToString_data()
    {
        QTest::addColumn<qulonglong>("value");
        QTest::addColumn<TagUnitsTable>("table");
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("expected");

        // Names differ from the translations so the label shows which one was used.
        const TagUnitsTable flux = { { "byte", 0, 1, "IDS_UNIT_BYTE" }, { "kilo", 0, KiB, "IDS_UNIT_KB" },
            { "mega", 0, MiB, "IDS_UNIT_MB" }, { "giga", 0, GiB, "IDS_UNIT_GB" },
            { "tera", 0, TiB, "IDS_UNIT_TB" } };
        const TagUnitsTable shuffled = { flux[3], flux[0], flux[4], flux[2], flux[1] };
        const TagUnitsTable noBytes = { { "MB", 0, MiB, {} }, { "KB", 0, KiB, {} } };
        const auto row = [](const char* name, qulonglong value, const TagUnitsTable& table,
                             const char* locale, const char* expected) {
            QTest::newRow(name) << value << table << QString(locale) << QString(expected);
        };
        row("1023 bytes", 1023, flux, "C", "1023 B");
        row("1024", KiB, flux, "C", "1.00 KB");
        row("above 2^32", 6 * GiB + 512 * MiB, flux, "C", "6.50 GB");
        row("beyond the largest unit", 2048 * TiB, flux, "C", "2048.00 TB");
        row("unsorted", 1536, shuffled, "C", "1.50 KB");
        row("below every unit", 100, noBytes, "C", "0.10 KB");
        row("decimal comma", 1536, flux, "de_DE", "1,50 KB");
        row("empty table, decimal comma", 1234567, TagUnitsTable(), "de_DE", "1.234.567");
    }

    void fluxToString()
    {
        QFETCH(qulonglong, value);
        QFETCH(TagUnitsTable, table);
        QFETCH(QString, locale);
        QTEST(CommonUtils::SpeedFluxToString(value, table, kModule, QLocale(locale)), "expected");
    }

    void settings()
    {
        CommonUtils::SetSettings("uselimit", "startmonthdate", 15);
        CommonUtils::SetSettings("uselimit", "startmonthdate", "last");
        CommonUtils::SetSettings("", "language", "en");
        QCOMPARE(CommonUtils::GetSettings("uselimit", "startmonthdate").toString(), QStringLiteral("last"));
        QCOMPARE(CommonUtils::GetSettings("uselimit", "nosuchkey", 42).toInt(), 42);
        // The statistics service reads the file, so the values must be on disk.
        QFile file(m_home->configHome() + "/netinfo/netinfo-host.conf");
        QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.fileName() + " not written"));
        const QString content = QString::fromUtf8(file.readAll());
        for (const char* line : { "[uselimit]", "startmonthdate=last", "language=en" })
            QVERIFY2(content.contains(QLatin1String(line)), qPrintable(content));
    }

    void messageBox_data()
    {
        QTest::addColumn<QStringList>("keys");
        QTest::addColumn<QStringList>("texts"); // of the first, second and third button; "" for none
        QTest::addColumn<QString>("clicked"); // the label the hook clicks, as a user would
        QTest::addColumn<int>("expected");

        const QStringList three = { "IDS_YES", "IDS_NO", "IDS_OK" }, threeTexts = { "Yes", "No", "OK" };
        QTest::newRow("second") << three << threeTexts << "No" << int(QMessageBox::Cancel);
        QTest::newRow("gap in the middle")
            << QStringList { "IDS_OK", "", "IDS_NO" } << QStringList { "OK", "", "No" } << "No"
            << int(QMessageBox::Ignore);
    }

    void messageBox()
    {
        QFETCH(QStringList, keys);
        QFETCH(QStringList, texts);
        QFETCH(QString, clicked);
        QWidget parent;
        auto check = [&](QMessageBox& box) { // QCOMPARE needs a void function
            QVERIFY(box.isWindow() && box.parentWidget() == &parent);
            QVERIFY(box.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
            QStringList seen;
            for (auto code : kCodes)
                seen << (box.button(code) ? box.button(code)->text() : QString());
            QCOMPARE(seen, texts);
            // Escape (closing the box) counts as the last button.
            const int last = int(texts.lastIndexOf(QRegularExpression(QStringLiteral(".+"))));
            QCOMPARE(box.escapeButton(), box.button(kCodes[last]));
        };
        CommonUtils::SetMessageHook([&](QMessageBox& box) {
            check(box);
            QAbstractButton* button = buttonWithText(box, clicked);
            return button ? int(box.standardButton(button)) : -1;
        });
        QTEST(showMessage(keys, true, nullptr, &parent), "expected");
    }
};

QTEST_MAIN(TestHost)
#include "tst_core_host.moc"
