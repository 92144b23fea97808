#include "ButtonTextFit.h"

#include "CommonUtils.h"

#include <QAbstractButton>
#include <QEvent>

ButtonTextFit::ButtonTextFit(QAbstractButton* button, const QString& text)
    : QObject(button)
    , m_pButton(button)
    , m_strText(text)
{
    button->installEventFilter(this);
}

void ButtonTextFit::fit(QAbstractButton* button, const QString& text)
{
    if (!button)
        return;
    ButtonTextFit* fitter = button->findChild<ButtonTextFit*>(QString(), Qt::FindDirectChildrenOnly);
    if (fitter)
        fitter->m_strText = text;
    else
        fitter = new ButtonTextFit(button, text);
    fitter->apply();
}

void ButtonTextFit::apply()
{
    CommonUtils::AbstractButtonElidedText(m_pButton, m_strText, Qt::ElideRight);
}

bool ButtonTextFit::eventFilter(QObject* watched, QEvent* event)
{
    // A new text changes the button's size hint, and the layout may then give
    // it another width: the next resize elides again, until the width holds.
    if (watched == m_pButton && event->type() == QEvent::Resize)
        apply();
    return QObject::eventFilter(watched, event);
}
