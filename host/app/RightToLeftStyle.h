// The application's style with two corrections for right-to-left layouts.
#pragma once

#include <QProxyStyle>

// A push button with an icon and a text has its text put against the icon's
// side and then, when the text is drawn, that side mirrored once more: the
// text landed on the button's far edge and was cut ("OK" and "Cancel" of
// every dialog). A menu item's shortcut such as "Ctrl+," had its trailing
// punctuation moved before it (",+Ctrl").
class RightToLeftStyle : public QProxyStyle
{
    Q_OBJECT
public:
    explicit RightToLeftStyle(const QString& baseStyle);

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
        const QWidget* widget = nullptr) const override;
    void drawItemText(QPainter* painter, const QRect& rect, int flags, const QPalette& palette, bool enabled,
        const QString& text, QPalette::ColorRole textRole = QPalette::NoRole) const override;

private:
    mutable bool m_bInButtonLabel = false;
};
