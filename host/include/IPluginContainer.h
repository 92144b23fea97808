// The host's registry of plug-in objects and services.
#pragma once

#include <QString>

class QObject;

class IPluginContainer
{
public:
    virtual ~IPluginContainer() = default;
    // The object registered under id and kind, or null. Ids compare exactly,
    // case included.
    virtual QObject* GetPlugin(const QString& id, int kind) = 0;
    // Registers (or replaces) an object; name answers IsPluginAvailable.
    virtual void RegisterPlugin(const QString& id, int kind, const QString& name, QObject* plugin) = 0;
    // Fifth table entry: non-zero when a plug-in of that name is loaded.
    virtual int IsPluginAvailable(const QString& name) = 0;
    virtual void UnregisterPlugin(const QString& id, int kind) = 0;
};
