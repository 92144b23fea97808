// A page of the host's settings dialog, driven by the dialog's OK and Cancel.
#pragma once

#include <QString>
#include <QtPlugin>

class QRect;
class QWidget;

class ISettingUIPlugin
{
public:
    virtual ~ISettingUIPlugin() = default;
    // False keeps the page shown: the entries need correcting.
    virtual bool OnClickSettingOkButton() = 0;
    virtual bool OnClickSettingCancelButton() = 0;
    virtual bool ShowSettingDialog(QWidget* parent, QRect& rect) = 0;
    // The page's name in the dialog's list; empty means "no page".
    virtual QString GetModuleName() = 0;
    virtual bool HideSetting() = 0;
    virtual bool IsActiveSetting() = 0;
};

#define ISettingUIPlugin_iid "com.vantok.skerrowdial.plugin.ISettingUIPlugin"
Q_DECLARE_INTERFACE(ISettingUIPlugin, ISettingUIPlugin_iid)
