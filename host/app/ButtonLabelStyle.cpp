#include "ButtonLabelStyle.h"

#include <QStyleFactory>
#include <QStyleOption>

ButtonLabelStyle::ButtonLabelStyle(const QString& baseStyle)
    : QProxyStyle(QStyleFactory::create(baseStyle))
{ }

void ButtonLabelStyle::drawControl(
    ControlElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const
{
    const bool label = element == CE_PushButtonLabel && option->direction == Qt::RightToLeft;
    m_bInButtonLabel = label;
    QProxyStyle::drawControl(element, option, painter, widget);
    m_bInButtonLabel = false;
}

void ButtonLabelStyle::drawItemText(QPainter* painter, const QRect& rect, int flags, const QPalette& palette,
    bool enabled, const QString& text, QPalette::ColorRole textRole) const
{
    // The label's alignment is already the visual one.
    if (m_bInButtonLabel)
        flags |= Qt::AlignAbsolute;
    QProxyStyle::drawItemText(painter, rect, flags, palette, enabled, text, textRole);
}
