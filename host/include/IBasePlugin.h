// The base interfaces every host plug-in implements. Slot order is part of the
// contract: hosts built against an older header call through these tables.
#pragma once

#include <QString>
#include <QtPlugin>

class QObject;

class IBaseInterface
{
public:
    virtual ~IBaseInterface() = default;
    virtual void Release() = 0;
    virtual int GetLastError() = 0;
};

class IDestroyEvent
{
public:
    virtual ~IDestroyEvent() = default;
    virtual void OnDestroy() = 0;
    virtual void UnSDKRegisterEvent() = 0;
};

class IBasePlugin : public IBaseInterface, public IDestroyEvent
{
public:
    virtual int Init() = 0;
    virtual int GetPluginType() = 0;
    virtual QString GetCLSID() = 0;
    virtual int GetVersion() = 0;
    virtual QString GetPluginName() = 0;
    virtual int IsAllowRelease() = 0;
    // Writes the object through out and returns true when id is known.
    virtual bool QueryInterface(int id, QObject** out) = 0;
};

#define IBasePlugin_iid "com.vantok.skerrowdial.plugin.IBasePlugin"
Q_DECLARE_INTERFACE(IBasePlugin, IBasePlugin_iid)
