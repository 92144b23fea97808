#include "CommonUtils.h"

#include "HostLog.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QStyleOptionButton>

namespace {

// Keeps the text clear of the edge of the area the style gives it.
constexpr int kTextPadding = 4;

// The width the style leaves for the label, after frame, indicator and margins.
int labelWidth(const QAbstractButton* button)
{
    QStyleOptionButton option;
    option.initFrom(button);
    option.icon = button->icon();
    option.iconSize = button->iconSize();

    QStyle::SubElement element;
    if (qobject_cast<const QPushButton*>(button))
        element = QStyle::SE_PushButtonContents;
    else if (qobject_cast<const QCheckBox*>(button))
        element = QStyle::SE_CheckBoxContents;
    else if (qobject_cast<const QRadioButton*>(button))
        element = QStyle::SE_RadioButtonContents;
    else
        return button->width() - 2 * kTextPadding;

    int width = button->style()->subElementRect(element, &option, button).width();
    if (element == QStyle::SE_PushButtonContents && !button->icon().isNull())
        width -= button->iconSize().width() + kTextPadding;
    return width - 2 * kTextPadding;
}

} // namespace

QString CommonUtils::AbstractButtonElidedText(QAbstractButton* button, const QString& text, int mode)
{
    if (!button)
        return text;
    if (mode < Qt::ElideLeft || mode > Qt::ElideNone) {
        qCWarning(lcHost, "CommonUtils: elide mode %d is unknown; eliding on the right", mode);
        mode = Qt::ElideRight;
    }
    QString elided = button->fontMetrics().elidedText(
        text, static_cast<Qt::TextElideMode>(mode), qMax(0, labelWidth(button)));
    button->setText(elided);
    return elided;
}
