// A throw-away host home for one test: <home> with the plug-in's data files,
// and private per-user data and config directories. Nothing a test does
// reaches the real user's files.
#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

class TestHome
{
public:
    // Points NETINFO_LIBRARY_PATH, XDG_DATA_HOME, XDG_CONFIG_HOME and HOME
    // into a fresh temporary directory. The previous values come back when
    // the object goes away.
    TestHome();
    ~TestHome();
    TestHome(const TestHome&) = delete;
    TestHome& operator=(const TestHome&) = delete;

    bool isValid() const { return m_dir.isValid(); }
    QString homePath() const { return m_dir.path() + QStringLiteral("/home"); }
    QString pluginDir() const { return homePath() + QStringLiteral("/plugins/NetInfoUIExPlugin"); }
    QString dataHome() const { return m_dir.path() + QStringLiteral("/data"); } // XDG_DATA_HOME
    QString configHome() const { return m_dir.path() + QStringLiteral("/config"); } // XDG_CONFIG_HOME
    QString userFile(const QString& name) const { return dataHome() + QStringLiteral("/netinfo/") + name; }

    // Copies a shipped file of the source tree's data/ into the plug-in dir.
    bool installDataFile(const QString& name);
    // The shipped configuration with the named switches turned off and each
    // (from, to) replacement applied; false when a replacement finds nothing.
    bool installConfig(const QStringList& off, const QList<QPair<QByteArray, QByteArray>>& edits = {});
    // Copies the compiled translations of the build tree into <home>/translations.
    bool installTranslations();
    // Writes a file into the plug-in dir (for deliberately broken fixtures).
    bool writePluginFile(const QString& name, const QByteArray& content);
    // Writes one of the user's own files, making its directory.
    bool writeUserFile(const QString& name, const QByteArray& content);

    // A usage-limit file: daily recurrence, a 100 MB data limit warned at
    // 80 %, a 10-hour time limit switched off, both warnings on; each
    // "key=value" of overrides replaces or adds a key.
    static QByteArray limitFile(const QStringList& overrides = {});

    static QString sourceDataDir() { return QStringLiteral(NETINFO_SOURCE_DATA_DIR); }
    static QString buildHomeDir() { return QStringLiteral(NETINFO_BUILD_HOME_DIR); }

private:
    QTemporaryDir m_dir;
    QList<QPair<QByteArray, QByteArray>> m_savedEnv;
};
