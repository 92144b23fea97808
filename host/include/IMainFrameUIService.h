// The host's main frame, as plug-ins may see it.
#pragma once

#include "IBasePlugin.h"

class QWidget;

class IMainFrameUIService : public IBaseInterface
{
public:
    // The area the host gives to the current plug-in view.
    virtual QWidget* GetCentralWidget() = 0;
    // Sixth table entry: the main frame's top-level window.
    virtual QWidget* GetTopLevelWidget() = 0;
};

#define IMainFrameUIService_iid "com.vantok.skerrowdial.plugin.IMainFrameUIService"
Q_DECLARE_INTERFACE(IMainFrameUIService, IMainFrameUIService_iid)
