#include "ExtendDialog.h"

#include "HostLog.h"

#include <QLayoutItem>
#include <QVBoxLayout>

ExtendDialog::ExtendDialog(QWidget* parent, Qt::WindowFlags flags)
    : QDialog(parent, flags)
    , m_pLayout(new QVBoxLayout(this))
{
    m_pLayout->setContentsMargins(0, 0, 0, 0);
    m_pLayout->setSpacing(0);
}

void ExtendDialog::AddMainWidget(QWidget* widget)
{
    if (!widget) {
        qCWarning(lcHost, "ExtendDialog: no main widget given; keeping the current one");
        return;
    }
    QWidget* previous = MainWidget();
    if (previous == widget)
        return;
    if (previous) {
        m_pLayout->removeWidget(previous);
        delete previous;
    }
    m_pLayout->addWidget(widget);
}

QWidget* ExtendDialog::MainWidget() const
{
    // Asking the layout rather than keeping a pointer: it forgets a widget
    // that is deleted behind the frame's back.
    QLayoutItem* item = m_pLayout->count() > 0 ? m_pLayout->itemAt(0) : nullptr;
    return item ? item->widget() : nullptr;
}
