#include "GridDelegateLayout.h"

#include <QFont>
#include <QIcon>
#include <QPainter>
#include <QPen>
#include <QStyle>

GridDelegateLayout::GridDelegateLayout(QObject* parent)
    : QItemDelegate(parent)
{ }

GridDelegateLayout::~GridDelegateLayout() = default;

void GridDelegateLayout::drawFocus(QPainter* painter, const QStyleOptionViewItem& option, const QRect&) const
{
    // The focused item keeps a white hairline pen for whatever is drawn next;
    // the dotted focus frame itself is never drawn.
    if (painter && (option.state & QStyle::State_HasFocus))
        painter->setPen(QPen(Qt::white, 0));
}

QSize GridDelegateLayout::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    SizeKey key;
    key.shape = index.data(Qt::DisplayRole).toString();
    if (key.shape.contains(QLatin1Char('\n')))
        return QItemDelegate::sizeHint(option, index);
    for (QChar& c : key.shape) {
        if (c.isDigit())
            c = QLatin1Char('0');
    }
    const QVariant font = index.data(Qt::FontRole);
    const QVariant icon = index.data(Qt::DecorationRole);
    key.font = qHash(font.isValid() ? font.value<QFont>() : option.font);
    key.icon = icon.isValid() ? icon.value<QIcon>().cacheKey() : 0;
    key.decoration = option.decorationSize;
    key.features = int(option.features);
    const auto found = m_sizes.constFind(key);
    if (found != m_sizes.constEnd())
        return *found;
    if (m_sizes.size() > 512)
        m_sizes.clear();
    const QSize size = QItemDelegate::sizeHint(option, index);
    m_sizes.insert(key, size);
    return size;
}
