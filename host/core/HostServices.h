// The services the host puts in its plug-in container for the lifetime of
// this object: the notification service and the main frame.
#pragma once

#include "MainFrameService.h"
#include "NotifyService.h"
#include "Startup.h"
#include "hostcore_export.h"

class IPluginContainer;

class HOSTCORE_EXPORT HostServices
{
public:
    // container must outlive this object; null registers nothing.
    explicit HostServices(IPluginContainer* container = Startup::GetPluginContainer());
    ~HostServices();
    HostServices(const HostServices&) = delete;
    HostServices& operator=(const HostServices&) = delete;

    NotifyService* notifyService() { return &m_notify; }
    MainFrameService* mainFrameService() { return &m_mainFrame; }

private:
    IPluginContainer* m_pContainer;
    NotifyService m_notify;
    MainFrameService m_mainFrame;
};
