#include "GridDelegateLayout.h"

#include <QApplication>
#include <QFont>
#include <QIcon>
#include <QPainter>
#include <QPen>
#include <QStyle>
#include <QTextLayout>
#include <QtMath>

namespace {

// A tick changes a handful of rows; what they showed before is not shown again.
constexpr int kKeptLayouts = 128;
// Wide enough for any row; the line is never wrapped.
constexpr qreal kUnboundedLine = 1 << 20;

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
    QTextOption textOption(Qt::AlignLeft | Qt::AlignAbsolute);
    textOption.setWrapMode(QTextOption::ManualWrap);
    textOption.setTextDirection(key.direction);
    entry.layout->setTextOption(textOption);
    entry.layout->beginLayout();
    QTextLine line = entry.layout->createLine();
    if (line.isValid()) {
        line.setLineWidth(kUnboundedLine);
        entry.width = line.naturalTextWidth();
        entry.advance = line.horizontalAdvance();
        entry.height = line.height();
    }
    entry.layout->endLayout();
    return *m_layouts.insert(key, entry);
}

bool GridDelegateLayout::isPlainText(const QString& text)
{
    return !text.contains(QLatin1Char('\n')) && !text.contains(QChar::LineSeparator);
}

void GridDelegateLayout::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QVariant display = index.data(Qt::DisplayRole);
    const QVariant decoration = index.data(Qt::DecorationRole);
    const bool plain = display.userType() == QMetaType::QString && isPlainText(display.toString())
        && !(option.features & QStyleOptionViewItem::WrapText) && !index.data(Qt::CheckStateRole).isValid()
        && (!decoration.isValid() || decoration.userType() == QMetaType::QIcon);
    if (!plain) {
        QItemDelegate::paint(painter, option, index);
        return;
    }

    const QStyleOptionViewItem opt = setOptions(index, option);
    painter->save();
    if (hasClipping())
        painter->setClipRect(opt.rect);

    QIcon icon;
    QIcon::Mode mode = QIcon::Normal;
    QIcon::State state = (option.state & QStyle::State_Open) ? QIcon::On : QIcon::Off;
    QRect decorationRect;
    if (decoration.isValid()) {
        icon = qvariant_cast<QIcon>(decoration);
        if (!(option.state & QStyle::State_Enabled))
            mode = QIcon::Disabled;
        else if (option.state & QStyle::State_Selected)
            mode = QIcon::Selected;
        decorationRect = QRect(QPoint(0, 0), icon.actualSize(option.decorationSize, mode, state));
    }

    // The measure Qt's own paint takes: the text on one line plus a margin.
    const QString text = display.toString();
    const Shaped& entry = shaped({ text, opt.font, opt.direction });
    const int textMargin = QApplication::style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 1;
    QRect displayRect(0, 0, qCeil(entry.width) + 2 * textMargin, qCeil(entry.height));
    QRect checkRect;
    doLayout(opt, &checkRect, &decorationRect, &displayRect, false);

    drawBackground(painter, opt, index);
    if (!icon.isNull())
        icon.paint(painter, decorationRect, opt.decorationAlignment, mode, state);
    drawDisplay(painter, opt, displayRect, text);
    drawFocus(painter, opt, displayRect);
    painter->restore();
}

void GridDelegateLayout::drawDisplay(
    QPainter* painter, const QStyleOptionViewItem& option, const QRect& rect, const QString& text) const
{
    // Editing frames, wrapping, several lines and centred or justified text
    // stay with Qt's own drawing.
    const Qt::Alignment alignment = QStyle::visualAlignment(option.direction, option.displayAlignment);
    const bool plain = !text.isEmpty() && isPlainText(text) && !(option.state & QStyle::State_Editing)
        && !(option.features & QStyleOptionViewItem::WrapText)
        && !(alignment & (Qt::AlignHCenter | Qt::AlignJustify));
    if (!plain) {
        QItemDelegate::drawDisplay(painter, option, rect, text);
        return;
    }
    const QStyle* style = option.widget ? option.widget->style() : QApplication::style();
    const int textMargin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, option.widget) + 1;
    const QRect textRect = rect.adjusted(textMargin, 0, -textMargin, 0);
    const Shaped& entry = shaped({ text, option.font, option.direction });
    if (textRect.width() < entry.width || textRect.height() < entry.height) {
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
    const QSize layoutSize(textRect.width(), int(entry.height));
    const QRect layoutRect
        = QStyle::alignedRect(option.direction, option.displayAlignment, layoutSize, textRect);
    // Right alignment as Qt's line layout applies it: the line's room less the text's advance.
    const qreal offset = (alignment & Qt::AlignRight) ? textRect.width() - entry.advance : 0;
    entry.layout->draw(painter, QPointF(layoutRect.topLeft()) + QPointF(offset, 0), {}, layoutRect);
}
