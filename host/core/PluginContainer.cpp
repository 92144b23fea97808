#include "PluginContainer.h"

#include "HostLog.h"

QObject* PluginContainer::GetPlugin(const QString& id, int kind)
{
    const auto it = m_entries.find({ id, kind });
    return it == m_entries.end() ? nullptr : it->second.object.data();
}

void PluginContainer::RegisterPlugin(const QString& id, int kind, const QString& name, QObject* plugin)
{
    if (id.isEmpty() || !plugin) {
        qCWarning(lcHost, "PluginContainer: refusing to register \"%s\" (id \"%s\", kind %d): %s",
            qUtf8Printable(name), qUtf8Printable(id), kind, plugin ? "empty id" : "no object");
        return;
    }
    m_entries[{ id, kind }] = Entry { plugin, name };
}

int PluginContainer::IsPluginAvailable(const QString& name)
{
    for (const auto& [key, entry] : m_entries) {
        if (entry.object && entry.name == name)
            return 1;
    }
    return 0;
}

void PluginContainer::UnregisterPlugin(const QString& id, int kind)
{
    m_entries.erase({ id, kind });
}
