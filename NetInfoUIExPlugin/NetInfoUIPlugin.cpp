#include "NetInfoUIPlugin.h"

#include "HostIds.h"
#include "NetInfoLog.h"
#include "NetInfoUIService.h"

namespace {
const char kSource[] = "NetInfoUIExPlugin/NetInfoUIPlugin";
}

CNetInfoUIPlugin::CNetInfoUIPlugin()
{
    NETINFO_TRACE("%s: %s called", kSource, "CNetInfoUIPlugin");
    m_pService = CNetInfoUIService::instance();
}

// The service outlives the shell: only OnDestroy() ends it.
CNetInfoUIPlugin::~CNetInfoUIPlugin() = default;

void CNetInfoUIPlugin::Release()
{ }

int CNetInfoUIPlugin::GetLastError()
{
    return 0;
}

void CNetInfoUIPlugin::OnDestroy()
{
    CNetInfoUIService::Destroy();
    m_pService = nullptr;
}

void CNetInfoUIPlugin::UnSDKRegisterEvent()
{
    NETINFO_TRACE("%s: %s called", kSource, "UnSDKRegisterEvent");
    if (CNetInfoUIService* service = CNetInfoUIService::instance())
        service->unSDKRegisterEvent();
    NETINFO_TRACE("%s: %s exit", kSource, "UnSDKRegisterEvent");
}

int CNetInfoUIPlugin::Init()
{
    return m_pService ? m_pService->Init() : 0;
}

int CNetInfoUIPlugin::GetPluginType()
{
    return 0;
}

QString CNetInfoUIPlugin::GetCLSID()
{
    return QString();
}

int CNetInfoUIPlugin::GetVersion()
{
    return 0;
}

QString CNetInfoUIPlugin::GetPluginName()
{
    return QStringLiteral("NetInfoUIPlugin");
}

int CNetInfoUIPlugin::IsAllowRelease()
{
    return 0;
}

bool CNetInfoUIPlugin::QueryInterface(int id, QObject** out)
{
    NETINFO_TRACE("%s: %s called", kSource, "QueryInterface");
    if (id != HostIds::ViewServiceId)
        return false;
    // Also the way back after OnDestroy(): a fresh service is created here.
    m_pService = CNetInfoUIService::instance();
    if (out)
        *out = m_pService;
    return true;
}

int CNetInfoUIPlugin::ShowWindow(QWidget* parent, QRect& rect)
{
    return m_pService ? m_pService->ShowWindow(parent, rect) : 0;
}

int CNetInfoUIPlugin::DoModal()
{
    return m_pService ? m_pService->DoModal() : -1;
}

int CNetInfoUIPlugin::Hide()
{
    return m_pService ? m_pService->Hide() : 0;
}

int CNetInfoUIPlugin::FitSize(QRect& rect)
{
    return m_pService ? m_pService->FitSize(rect) : 0;
}

int CNetInfoUIPlugin::IsReady()
{
    return 1;
}

int CNetInfoUIPlugin::ChangeLang(const QString&)
{
    return 0;
}

int CNetInfoUIPlugin::Notify(unsigned int msg, unsigned int param1, unsigned int param2)
{
    return m_pService ? m_pService->Notify(msg, param1, param2) : -1;
}
