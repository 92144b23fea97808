// A plug-in that contributes a view to the host's main window.
#pragma once

#include "IBasePlugin.h"

class QRect;
class QWidget;

class IUIPlugin : public IBasePlugin
{
public:
    virtual int ShowWindow(QWidget* parent, QRect& rect) = 0;
    virtual int DoModal() = 0;
    virtual int Hide() = 0;
    virtual int FitSize(QRect& rect) = 0;
    virtual int IsReady() = 0;
    virtual int ChangeLang(const QString& language) = 0;
};

#define IUIPlugin_iid "com.vantok.skerrowdial.plugin.IUIPlugin"
Q_DECLARE_INTERFACE(IUIPlugin, IUIPlugin_iid)
