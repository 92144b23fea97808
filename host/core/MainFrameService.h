// The host's main frame as plug-ins see it: the window and the area a plug-in
// view is placed in.
#pragma once

#include "IMainFrameUIService.h"
#include "hostcore_export.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

class HOSTCORE_EXPORT MainFrameService : public QObject, public IMainFrameUIService
{
    Q_OBJECT
    Q_INTERFACES(IMainFrameUIService)
public:
    explicit MainFrameService(QObject* parent = nullptr);

    // The widgets belong to the host window; a deleted one reads as null.
    void SetTopLevelWidget(QWidget* widget) { m_pTopLevel = widget; }
    void SetCentralWidget(QWidget* widget) { m_pCentral = widget; }

    QWidget* GetCentralWidget() override { return m_pCentral; }
    QWidget* GetTopLevelWidget() override { return m_pTopLevel; }
    void Release() override { }
    int GetLastError() override { return 0; }

private:
    QPointer<QWidget> m_pTopLevel;
    QPointer<QWidget> m_pCentral;
};
