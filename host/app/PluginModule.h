// Loads the NetInfo plug-in module and checks the data files it reads, so a
// broken installation fails at start with the file and the reason.
#pragma once

#include <QPluginLoader>
#include <QString>

class INotify;
class IUIPlugin;

class PluginModule
{
public:
    // <home>/plugins/NetInfoUIExPlugin
    static QString defaultDirectory();
    static QString moduleFileName();
    // The files next to the module that the view cannot do without.
    static QStringList requiredDataFiles();

    explicit PluginModule(const QString& directory = defaultDirectory());
    ~PluginModule();
    PluginModule(const PluginModule&) = delete;
    PluginModule& operator=(const PluginModule&) = delete;

    // Checks the data files, loads the module and casts its object; on
    // failure errorString() says which file and why.
    bool load();
    QString errorString() const { return m_strError; }

    QObject* instance() const { return m_pInstance; }
    IUIPlugin* uiPlugin() const { return m_pUIPlugin; }
    INotify* notify() const { return m_pNotify; }

private:
    bool checkDataFiles();

    QString m_strDirectory;
    QPluginLoader m_loader;
    QString m_strError;
    QObject* m_pInstance = nullptr;
    IUIPlugin* m_pUIPlugin = nullptr;
    INotify* m_pNotify = nullptr;
};
