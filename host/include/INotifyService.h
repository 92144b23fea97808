// The host's notification service: plug-ins send events to host components
// through it. The two words are pointer-sized because some events carry a
// widget (the status panel of event 4116).
#pragma once

#include "IBasePlugin.h"

#include <QtGlobal>

class INotifyService : public IBaseInterface
{
public:
    // Fifth table entry (after the destructor pair, Release and GetLastError).
    virtual int Notify(const QString& target, unsigned int code, quintptr param1, quintptr param2) = 0;
};

#define INotifyService_iid "com.vantok.skerrowdial.plugin.INotifyService"
Q_DECLARE_INTERFACE(INotifyService, INotifyService_iid)
