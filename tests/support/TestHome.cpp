#include "TestHome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {
const char* const kVariables[] = { "NETINFO_LIBRARY_PATH", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "HOME" };

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
        { "home/plugins/NetInfoUIExPlugin", "home/translations", "data", "config", "user" })
        root.mkpath(QLatin1String(sub));
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

QString TestHome::homePath() const
{
    return m_dir.path() + QStringLiteral("/home");
}
QString TestHome::pluginDir() const
{
    return homePath() + QStringLiteral("/plugins/NetInfoUIExPlugin");
}
QString TestHome::dataHome() const
{
    return m_dir.path() + QStringLiteral("/data");
}
QString TestHome::configHome() const
{
    return m_dir.path() + QStringLiteral("/config");
}
QString TestHome::userFile(const QString& name) const
{
    return dataHome() + QStringLiteral("/netinfo/") + name;
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

QString TestHome::sourceDataDir()
{
    return QStringLiteral(NETINFO_SOURCE_DATA_DIR);
}
QString TestHome::buildHomeDir()
{
    return QStringLiteral(NETINFO_BUILD_HOME_DIR);
}
