// The host's dialog frame: a title bar and one main widget.
#pragma once

#include "hostcore_export.h"

#include <QDialog>

class QVBoxLayout;

class HOSTCORE_EXPORT ExtendDialog : public QDialog
{
    Q_OBJECT
public:
    explicit ExtendDialog(QWidget* parent = nullptr, Qt::WindowFlags flags = {});

    // Puts widget into the frame (the frame takes ownership); a second call
    // replaces the first widget.
    void AddMainWidget(QWidget* widget);
    QWidget* MainWidget() const;

private:
    QVBoxLayout* m_pLayout = nullptr;
};
