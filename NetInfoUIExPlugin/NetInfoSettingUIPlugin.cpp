#include "NetInfoSettingUIPlugin.h"

#include "NetInfoSettingTrace.h"
#include "NetInfoSettingUILogic.h"

#include <QRect>
#include <QWidget>

NetInfoSettingUIPlugin* NetInfoSettingUIPlugin::m_pInstance = nullptr;

NetInfoSettingUIPlugin* NetInfoSettingUIPlugin::GetInstance()
{
    if (!m_pInstance)
        m_pInstance = new NetInfoSettingUIPlugin;
    return m_pInstance;
}

void NetInfoSettingUIPlugin::ReleaseInstance()
{
    delete m_pInstance;
    m_pInstance = nullptr;
}

NetInfoSettingUIPlugin::~NetInfoSettingUIPlugin()
{
    // The host's dialog may still hold the page as a child; deleting it
    // removes it from there as well.
    delete m_pPageWidget;
}

bool NetInfoSettingUIPlugin::InitNetInfoSetting()
{
    if (!m_pPageWidget)
        m_pPageWidget = new QWidget;
    return m_pPageWidget != nullptr;
}

bool NetInfoSettingUIPlugin::ShowNetInfoSettingDlg(QWidget* parent, QRect& rect)
{
    if (!m_pPageWidget)
        InitNetInfoSetting();
    if (!m_pPageWidget)
        return false;
    m_pPageWidget->setParent(parent);
    m_pPageWidget->setGeometry(rect);
    m_pPageWidget->setVisible(true);
    return true;
}

bool NetInfoSettingUIPlugin::HideNetInfoSetting()
{
    if (!m_pPageWidget)
        return false;
    m_pPageWidget->setVisible(false);
    return true;
}

void NetInfoSettingUIPlugin::SetLanguage() {}

// Nothing on the page can be wrong yet, so OK always saves.
bool NetInfoSettingUIPlugin::SaveNetInfoSettings() { return true; }

bool NetInfoSettingUIPlugin::CancelNetInfoSetting() { return true; }

void NetInfoSettingUIPlugin::ongetXMLUnit(QString text) { m_strUnitText = text; }

QString NetInfoSettingUIPlugin::getVolumeLimitSettings(QString key)
{
    if (!m_pStore) {
        m_pStore = NetInfoSettingUILogic::GetInstance();
        if (!m_pStore)
            return QStringLiteral("");
        m_pStore->GetUseLimitSetting();
    }
    NETINFO_TRACE("Returning from : %s: %s: %s %d", NetInfoLog::now().constData(),
                  "NetInfoUIExPlugin/NetInfoSettingUIPlugin", __func__, __LINE__);
    return m_pStore->useLimitSettings().value(key);
}
