// The language files are edited by hand, so nothing but this test notices a
// key that was forgotten, left unfinished or lost its placeholder.
#include "Change.h"
#include "TestHome.h"

#include <QFile>
#include <QRegularExpression>
#include <QXmlStreamReader>
#include <QtTest>

namespace {

const QString kContext = QStringLiteral("NetInfoUIExPlugin");

struct TsFile
{
    QString language; // the TS element's language attribute
    QMap<QString, QString> texts; // key -> translation, kContext only
    QStringList problems;
};

// Other contexts (Qt's own layout-direction entry) are not the plug-in's keys.
TsFile readTs(const QString& language)
{
    TsFile ts;
    QFile file(QStringLiteral(NETINFO_SOURCE_TRANSLATION_DIR "/netinfo_%1.ts").arg(language));
    if (!file.open(QIODevice::ReadOnly)) {
        ts.problems << file.fileName() + QStringLiteral(": ") + file.errorString();
        return ts;
    }
    QXmlStreamReader xml(&file);
    QString context, source;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == u"TS") {
            ts.language = xml.attributes().value(QLatin1String("language")).toString();
        } else if (xml.name() == u"name") {
            context = xml.readElementText();
        } else if (xml.name() == u"source") {
            source = xml.readElementText();
        } else if (xml.name() == u"translation" && context == kContext) {
            // "unfinished", "vanished" and "obsolete" texts never reach the user.
            const QString type = xml.attributes().value(QLatin1String("type")).toString();
            const QString text = xml.readElementText();
            if (!type.isEmpty())
                ts.problems << source + QStringLiteral(": translation is ") + type;
            else if (text.trimmed().isEmpty())
                ts.problems << source + QStringLiteral(": empty translation");
            if (ts.texts.contains(source))
                ts.problems << source + QStringLiteral(": listed twice");
            ts.texts.insert(source, text);
        }
    }
    if (xml.hasError())
        ts.problems
            << QStringLiteral("%1:%2: %3").arg(file.fileName()).arg(xml.lineNumber()).arg(xml.errorString());
    return ts;
}

// What the code substitutes into or wraps around a text; order may change.
QStringList markers(const QString& text)
{
    static const QRegularExpression pattern(QStringLiteral(R"(%s|%\d+|<[^>]*>)"));
    QStringList found;
    for (auto it = pattern.globalMatch(text); it.hasNext();)
        found << it.next().captured();
    found.sort();
    return found;
}

} // namespace

class TestTranslations : public QObject
{
    Q_OBJECT

private slots:
    void languageFile_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("tsLanguage");
        QTest::newRow("English") << QString("en") << QString("en_US");
        QTest::newRow("Arabic") << QString("ar") << QString("ar");
        QTest::newRow("Simplified Chinese") << QString("zh_CN") << QString("zh_CN");
    }

    // The source file against the English one, then the compiled file as
    // the host loads it.
    void languageFile()
    {
        QFETCH(QString, language);
        const TsFile english = readTs(QStringLiteral("en"));
        QVERIFY2(
            english.problems.isEmpty() && !english.texts.isEmpty(), qPrintable(english.problems.join(u'\n')));
        const TsFile ts = readTs(language);
        QTEST(ts.language, "tsLanguage");
        QStringList problems = ts.problems;
        for (auto it = english.texts.cbegin(); it != english.texts.cend(); ++it) {
            if (!ts.texts.contains(it.key()))
                problems << it.key() + QStringLiteral(": missing");
            else if (markers(ts.texts.value(it.key())) != markers(it.value()))
                problems << it.key()
                        + QStringLiteral(": placeholders or tags differ from \"%1\"").arg(it.value());
        }
        for (const QString& key : ts.texts.keys())
            if (!english.texts.contains(key))
                problems << key + QStringLiteral(": not an English key");
        QVERIFY2(problems.isEmpty(), qPrintable(problems.join(u'\n')));

        TestHome home;
        QVERIFY2(home.isValid() && home.installTranslations(), "no compiled translations in the build tree");
        QVERIFY(Change::LoadLanguage(language));
        for (auto it = ts.texts.cbegin(); it != ts.texts.cend(); ++it)
            if (Change::tr(it.key(), kContext) != it.value())
                problems << it.key() + QStringLiteral(" -> ") + Change::tr(it.key(), kContext);
        QVERIFY2(problems.isEmpty(), qPrintable(problems.join(u'\n')));
    }
};

QTEST_MAIN(TestTranslations)
#include "tst_i18n_translations.moc"
