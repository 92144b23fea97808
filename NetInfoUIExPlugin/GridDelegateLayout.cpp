#include "GridDelegateLayout.h"

#include <QPainter>
#include <QPen>
#include <QStyle>

GridDelegateLayout::GridDelegateLayout(QObject* parent)
    : QItemDelegate(parent)
{
}

GridDelegateLayout::~GridDelegateLayout() = default;

void GridDelegateLayout::drawFocus(QPainter* painter, const QStyleOptionViewItem& option, const QRect&) const
{
    // The focused item keeps a white hairline pen for whatever is drawn next;
    // the dotted focus frame itself is never drawn.
    if (painter && (option.state & QStyle::State_HasFocus))
        painter->setPen(QPen(Qt::white, 0));
}
