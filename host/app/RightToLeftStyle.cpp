#include "RightToLeftStyle.h"

#include <QStyleFactory>
#include <QStyleOption>

RightToLeftStyle::RightToLeftStyle(const QString& baseStyle)
    : QProxyStyle(QStyleFactory::create(baseStyle))
{ }

void RightToLeftStyle::drawControl(
    ControlElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const
{
    if (option->direction != Qt::RightToLeft) {
        QProxyStyle::drawControl(element, option, painter, widget);
        return;
    }
    if (element == CE_MenuItem) {
        // The shortcut follows the tab; a key sequence reads left to right.
        const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
        const qsizetype tab = item ? item->text.indexOf(QLatin1Char('\t')) : -1;
        if (tab >= 0) {
            QStyleOptionMenuItem isolated(*item);
            isolated.text
                = item->text.left(tab + 1) + QChar(0x2066) + item->text.mid(tab + 1) + QChar(0x2069);
            QProxyStyle::drawControl(element, &isolated, painter, widget);
            return;
        }
    }
    m_bInButtonLabel = element == CE_PushButtonLabel;
    QProxyStyle::drawControl(element, option, painter, widget);
    m_bInButtonLabel = false;
}

void RightToLeftStyle::drawItemText(QPainter* painter, const QRect& rect, int flags, const QPalette& palette,
    bool enabled, const QString& text, QPalette::ColorRole textRole) const
{
    // The label's alignment is already the visual one.
    if (m_bInButtonLabel)
        flags |= Qt::AlignAbsolute;
    QProxyStyle::drawItemText(painter, rect, flags, palette, enabled, text, textRole);
}
