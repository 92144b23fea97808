// The object the host loads: a thin shell that forwards every view call and
// host notification to the CNetInfoUIService singleton.
#pragma once

#include "INotify.h"
#include "IUIPlugin.h"

#include <QObject>

class CNetInfoUIService;

class CNetInfoUIPlugin : public QObject, public IUIPlugin, public INotify
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.vantok.skerrowdial.plugin.IUIPlugin")
    // Hosts find the parts by these identifiers, in this order; the
    // IBasePlugin identifier answers with the IUIPlugin part, whose primary
    // base it is, so both casts give one address.
    Q_INTERFACES(IBasePlugin INotify IUIPlugin)

public:
    CNetInfoUIPlugin();
    ~CNetInfoUIPlugin() override;

    // IBaseInterface
    void Release() override;
    int GetLastError() override;

    // IDestroyEvent
    void OnDestroy() override;
    void UnSDKRegisterEvent() override;

    // IBasePlugin
    int Init() override;
    int GetPluginType() override;
    QString GetCLSID() override;
    int GetVersion() override;
    QString GetPluginName() override;
    // 0: the host must never unload the module.
    int IsAllowRelease() override;
    bool QueryInterface(int id, QObject** out) override;

    // IUIPlugin
    int ShowWindow(QWidget* parent, QRect& rect) override;
    int DoModal() override;
    int Hide() override;
    int FitSize(QRect& rect) override;
    int IsReady() override;
    // Language changes reach the view through Notify(1024, ...).
    int ChangeLang(const QString& language) override;

    // INotify
    int Notify(unsigned int msg, unsigned int param1, unsigned int param2) override;

private:
    CNetInfoUIService* m_pService = nullptr; // not owned: ended by CNetInfoUIService::Destroy()
};
