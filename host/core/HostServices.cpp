#include "HostServices.h"

#include "HostIds.h"
#include "HostLog.h"
#include "IPluginContainer.h"

namespace {

const QString kNotifyId = QString::fromLatin1(HostIds::NotifyServicePlugin);
const QString kMainFrameId = QString::fromLatin1(HostIds::MainFramePlugin);

} // namespace

HostServices::HostServices(IPluginContainer* container)
    : m_pContainer(container)
{
    m_notify.setObjectName(QStringLiteral("NotifyService"));
    m_mainFrame.setObjectName(QStringLiteral("MainFrame"));
    if (!m_pContainer) {
        qCWarning(lcHost, "HostServices: no plug-in container; plug-ins will not find the host's services");
        return;
    }
    m_pContainer->RegisterPlugin(
        kNotifyId, HostIds::NotifyServiceKind, QStringLiteral("NotifyService"), &m_notify);
    m_pContainer->RegisterPlugin(
        kMainFrameId, HostIds::MainFrameKind, QStringLiteral("MainFrame"), &m_mainFrame);
}

HostServices::~HostServices()
{
    if (!m_pContainer)
        return;
    // Leave alone whatever has replaced these services meanwhile.
    if (m_pContainer->GetPlugin(kNotifyId, HostIds::NotifyServiceKind) == &m_notify)
        m_pContainer->UnregisterPlugin(kNotifyId, HostIds::NotifyServiceKind);
    if (m_pContainer->GetPlugin(kMainFrameId, HostIds::MainFrameKind) == &m_mainFrame)
        m_pContainer->UnregisterPlugin(kMainFrameId, HostIds::MainFrameKind);
}
