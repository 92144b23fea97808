#include "Change.h"

#include "CommonUtils.h"
#include "HostLog.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QHash>
#include <QLibraryInfo>
#include <QLocale>
#include <QMutex>
#include <QPointer>
#include <QRegularExpression>
#include <QTranslator>

#include <memory>

namespace {

// The translator is parented to the application, so it goes away with it;
// the QPointer notices.
struct LanguageState
{
    QPointer<QTranslator> translator;
    QPointer<QTranslator> qtTranslator; // Qt's own texts (standard buttons, dialogs)
    QString name;
    // The view asks for the same unit and caption texts every second; they
    // change only with the translator, which all loading goes through.
    QMutex memoLock;
    QHash<QString, QHash<QString, QString>> memo; // context → key → text
    const QTranslator* memoFor = nullptr;
};

LanguageState& current()
{
    static LanguageState language;
    return language;
}

// A language name becomes part of a file path, so it must not reach outside
// <home>/translations.
bool isLanguageName(const QString& language)
{
    static const QRegularExpression pattern(QStringLiteral("^[A-Za-z]{2,3}([_-][A-Za-z0-9]+)*$"));
    return pattern.match(language).hasMatch();
}

} // namespace

QString Change::tr(const QString& key, const QString& context)
{
    LanguageState& state = current();
    QMutexLocker lock(&state.memoLock);
    if (state.memoFor != state.translator.data()) {
        state.memo.clear();
        state.memoFor = state.translator.data();
    }
    QHash<QString, QString>& texts = state.memo[context];
    const auto found = texts.constFind(key);
    if (found != texts.constEnd())
        return *found;
    QString text = QCoreApplication::translate(context.toUtf8().constData(), key.toUtf8().constData());
    if (texts.size() < 4096) // keys are a fixed vocabulary; a runaway caller is not kept
        texts.insert(key, text);
    return text;
}

bool Change::LoadLanguage(const QString& language)
{
    QCoreApplication* app = QCoreApplication::instance();
    if (!app) {
        qCWarning(lcHost, "Change: cannot load language \"%s\" without an application object",
            qUtf8Printable(language));
        return false;
    }
    if (!isLanguageName(language)) {
        qCWarning(lcHost, "Change: \"%s\" is not a language name", qUtf8Printable(language));
        return false;
    }
    const QString file = CommonUtils::GetPluginLibraryPath() + QStringLiteral("/translations/netinfo_")
        + language + QStringLiteral(".qm");
    // QTranslator::load falls back to shorter names; only this exact file counts.
    if (!QFileInfo(file).isFile()) {
        qCWarning(lcHost, "Change: translation file %s does not exist", qUtf8Printable(file));
        return false;
    }
    auto next = std::make_unique<QTranslator>();
    if (!next->load(file)) {
        qCWarning(lcHost, "Change: cannot load translation file %s", qUtf8Printable(file));
        return false;
    }
    if (!app->installTranslator(next.get())) {
        qCWarning(lcHost, "Change: cannot install translation file %s", qUtf8Printable(file));
        return false;
    }

    LanguageState& state = current();
    if (state.translator) {
        app->removeTranslator(state.translator);
        delete state.translator;
    }
    next->setParent(app);
    {
        QMutexLocker lock(&state.memoLock);
        state.memo.clear();
        state.translator = next.release();
        state.memoFor = state.translator.data();
    }

    // Qt's translations are optional (a separate Debian package); English
    // needs none, so the previous language's go away in any case.
    delete state.qtTranslator;
    auto qt = std::make_unique<QTranslator>();
    if (qt->load(QLocale(language), QStringLiteral("qtbase"), QStringLiteral("_"),
            QLibraryInfo::path(QLibraryInfo::TranslationsPath))
        && app->installTranslator(qt.get())) {
        qt->setParent(app);
        state.qtTranslator = qt.release();
    }
    state.name = language;
    qCDebug(lcHost, "Change: language \"%s\" loaded from %s", qUtf8Printable(language), qUtf8Printable(file));
    return true;
}

QString Change::CurrentLanguage()
{
    const auto& state = current();
    return state.translator ? state.name : QString();
}
