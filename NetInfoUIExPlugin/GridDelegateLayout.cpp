#include "GridDelegateLayout.h"

#include <QApplication>
#include <QFont>
#include <QIcon>
#include <QPainter>
#include <QPen>
#include <QStyle>
#include <QTextLayout>

namespace {

// A tick changes a handful of rows; what they showed before is not shown again.
constexpr int kKeptLayouts = 128;

} // namespace

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

const GridDelegateLayout::Shaped& GridDelegateLayout::shaped(const LayoutKey& key) const
{
    const auto found = m_layouts.constFind(key);
    if (found != m_layouts.constEnd())
        return *found;
    if (m_layouts.size() >= kKeptLayouts)
        m_layouts.clear();
    Shaped entry;
    entry.layout = std::make_shared<QTextLayout>(key.text, key.font);
    entry.layout->setCacheEnabled(true); // keep the shaped glyphs for the next paint
    QTextOption textOption;
    textOption.setWrapMode(QTextOption::ManualWrap);
    textOption.setTextDirection(key.direction);
    textOption.setAlignment(QStyle::visualAlignment(key.direction, Qt::Alignment(key.alignment)));
    entry.layout->setTextOption(textOption);
    qreal height = 0;
    qreal widthUsed = 0;
    entry.layout->beginLayout();
    for (QTextLine line = entry.layout->createLine(); line.isValid(); line = entry.layout->createLine()) {
        line.setLineWidth(key.width);
        line.setPosition(QPointF(0, height));
        height += line.height();
        widthUsed = qMax(widthUsed, line.naturalTextWidth());
    }
    entry.layout->endLayout();
    entry.size = QSizeF(widthUsed, height);
    return *m_layouts.insert(key, entry);
}

void GridDelegateLayout::drawDisplay(
    QPainter* painter, const QStyleOptionViewItem& option, const QRect& rect, const QString& text) const
{
    // Editing frames, wrapping and several lines stay with Qt's own drawing.
    const bool plain = !text.isEmpty() && !(option.state & QStyle::State_Editing)
        && !(option.features & QStyleOptionViewItem::WrapText) && !text.contains(QLatin1Char('\n'))
        && !text.contains(QChar::LineSeparator);
    if (!plain) {
        QItemDelegate::drawDisplay(painter, option, rect, text);
        return;
    }
    const QStyle* style = option.widget ? option.widget->style() : QApplication::style();
    const int textMargin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, option.widget) + 1;
    const QRect textRect = rect.adjusted(textMargin, 0, -textMargin, 0);
    const Shaped& entry
        = shaped({ text, option.font, textRect.width(), option.direction, int(option.displayAlignment) });
    if (textRect.width() < entry.size.width() || textRect.height() < entry.size.height()) {
        QItemDelegate::drawDisplay(painter, option, rect, text); // elided
        return;
    }

    QPalette::ColorGroup group
        = (option.state & QStyle::State_Enabled) ? QPalette::Normal : QPalette::Disabled;
    if (group == QPalette::Normal && !(option.state & QStyle::State_Active))
        group = QPalette::Inactive;
    if (option.state & QStyle::State_Selected) {
        painter->fillRect(rect, option.palette.brush(group, QPalette::Highlight));
        painter->setPen(option.palette.color(group, QPalette::HighlightedText));
    } else {
        painter->setPen(option.palette.color(group, QPalette::Text));
    }
    const QSize layoutSize(textRect.width(), int(entry.size.height()));
    const QRect layoutRect
        = QStyle::alignedRect(option.direction, option.displayAlignment, layoutSize, textRect);
    entry.layout->draw(painter, layoutRect.topLeft(), {}, layoutRect);
}
