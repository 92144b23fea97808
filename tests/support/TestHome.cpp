#include "TestHome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>

namespace {
const char* const kVariables[]
    = { "NETINFO_LIBRARY_PATH", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "HOME", "XDG_RUNTIME_DIR" };

bool writeFile(const QString& path, const QByteArray& content)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(content) == content.size();
}
} // namespace

TestHome::TestHome()
{
    for (const char* name : kVariables)
        m_savedEnv.append({ name, qgetenv(name) });
    if (!m_dir.isValid())
        return;
    QDir root(m_dir.path());
    for (const char* sub :
        { "home/plugins/NetInfoUIExPlugin", "home/translations", "data", "config", "user", "run" })
        root.mkpath(QLatin1String(sub));
    // A running window elsewhere must not take this test's start for a second one.
    QFile::setPermissions(
        m_dir.path() + QStringLiteral("/run"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_dir.path() + QStringLiteral("/run")));
    qputenv("NETINFO_LIBRARY_PATH", QFile::encodeName(homePath()));
    qputenv("XDG_DATA_HOME", QFile::encodeName(dataHome()));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(configHome()));
    qputenv("HOME", QFile::encodeName(m_dir.path() + QStringLiteral("/user")));
}

TestHome::~TestHome()
{
    for (const auto& [name, value] : m_savedEnv) {
        if (value.isNull())
            qunsetenv(name.constData());
        else
            qputenv(name.constData(), value);
    }
}

bool TestHome::installDataFile(const QString& name)
{
    const QString target = pluginDir() + QLatin1Char('/') + QFileInfo(name).fileName();
    QFile::remove(target);
    return QFile::copy(sourceDataDir() + QLatin1Char('/') + name, target);
}

bool TestHome::installConfig(const QStringList& off, const QList<QPair<QByteArray, QByteArray>>& edits)
{
    QFile file(sourceDataDir() + QStringLiteral("/NetInfoUIExConfig.xml"));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    QByteArray config = file.readAll();
    for (const QString& name : off)
        config.replace("name=\"" + name.toLatin1() + "\" value=\"true\"",
            "name=\"" + name.toLatin1() + "\" value=\"false\"");
    for (const auto& [from, to] : edits) {
        if (!config.contains(from))
            return false;
        config.replace(from, to);
    }
    return writePluginFile(QStringLiteral("NetInfoUIExConfig.xml"), config);
}

bool TestHome::installTranslations()
{
    const QDir source(buildHomeDir() + QStringLiteral("/translations"));
    const QStringList files = source.entryList({ QStringLiteral("*.qm") }, QDir::Files);
    bool ok = !files.isEmpty();
    for (const QString& file : files)
        ok = QFile::copy(source.filePath(file), homePath() + QStringLiteral("/translations/") + file) && ok;
    return ok;
}

bool TestHome::writePluginFile(const QString& name, const QByteArray& content)
{
    return writeFile(pluginDir() + QLatin1Char('/') + name, content);
}

bool TestHome::writeUserFile(const QString& name, const QByteArray& content)
{
    return writeFile(userFile(name), content);
}

QByteArray TestHome::limitFile(const QStringList& overrides)
{
    QMap<QString, QString> keys { { "chkRecurrence", "true" }, { "radioDaily", "true" },
        { "radioWeekly", "false" }, { "radioMonthly", "false" }, { "chkVolume", "true" },
        { "chkTimeVolume", "false" }, { "SizeVolume", "100" }, { "SizeTimeVolume", "10" },
        { "chkWarnbefore", "true" }, { "chkWarnAfter", "true" }, { "WarnBeforPercentage", "80" } };
    for (const QString& line : overrides)
        keys.insert(line.section(QLatin1Char('='), 0, 0), line.section(QLatin1Char('='), 1));
    QByteArray text = "[uselimit]\n";
    for (auto it = keys.cbegin(); it != keys.cend(); ++it)
        text += (it.key() + QLatin1Char('=') + it.value() + QLatin1Char('\n')).toUtf8();
    return text;
}
