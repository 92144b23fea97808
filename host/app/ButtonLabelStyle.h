// The application's style with one correction for right-to-left layouts.
#pragma once

#include <QProxyStyle>

// A push button with an icon and a text, laid out right to left, has its text
// put against the icon's side and then, when the text is drawn, that side
// mirrored once more: the text lands on the button's far edge and is cut
// ("OK" and "Cancel" of every dialog). Here the text of a button label is
// drawn where it was placed.
class ButtonLabelStyle : public QProxyStyle
{
    Q_OBJECT
public:
    explicit ButtonLabelStyle(const QString& baseStyle);

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
        const QWidget* widget = nullptr) const override;
    void drawItemText(QPainter* painter, const QRect& rect, int flags, const QPalette& palette, bool enabled,
        const QString& text, QPalette::ColorRole textRole = QPalette::NoRole) const override;

private:
    mutable bool m_bInButtonLabel = false;
};
