// Host-to-plug-in notifications (language, connection status, re-fit, panels).
#pragma once

#include <QtPlugin>

class INotify
{
public:
    virtual ~INotify() = default;
    virtual int Notify(unsigned int msg, unsigned int param1, unsigned int param2) = 0;
};

#define INotify_iid "com.vantok.skerrowdial.plugin.INotify"
Q_DECLARE_INTERFACE(INotify, INotify_iid)
