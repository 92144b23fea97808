// The host core's plug-in container. It holds objects weakly: an object that
// is deleted elsewhere simply stops being found.
#pragma once

#include "IPluginContainer.h"
#include "hostcore_export.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <map>
#include <utility>

class HOSTCORE_EXPORT PluginContainer : public IPluginContainer
{
public:
    QObject* GetPlugin(const QString& id, int kind) override;
    void RegisterPlugin(const QString& id, int kind, const QString& name, QObject* plugin) override;
    int IsPluginAvailable(const QString& name) override;
    void UnregisterPlugin(const QString& id, int kind) override;

private:
    struct Entry
    {
        QPointer<QObject> object;
        QString name;
    };
    std::map<std::pair<QString, int>, Entry> m_entries;
};
