// The statistics tree's item delegate: items are drawn as usual but never
// with a focus frame.
#pragma once

#include <QFont>
#include <QHash>
#include <QItemDelegate>
#include <QSize>

#include <memory>

class QTextLayout;

class GridDelegateLayout : public QItemDelegate
{
    Q_OBJECT
public:
    explicit GridDelegateLayout(QObject* parent = nullptr);
    ~GridDelegateLayout() override;

    // A changed row asks for its size again, and measuring means shaping its
    // text: most of a tick. A single-line row's size depends on its font, its
    // icon and the shape of its text, not on which digits it shows (digits
    // share one advance in the fonts a tree uses), so each shape is measured once.
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    // Qt lays a row's text out and shapes it twice for every paint (once to
    // measure it, once to draw it), and shaping is most of a repaint. Plain
    // rows (one line of text, an icon at most, no check box) are measured and
    // drawn from one kept layout per text; everything else is Qt's own path.
    // Pixels are the same as Qt's.
    void paint(
        QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

protected:
    void drawDisplay(QPainter* painter, const QStyleOptionViewItem& option, const QRect& rect,
        const QString& text) const override;
    void drawFocus(QPainter* painter, const QStyleOptionViewItem& option, const QRect& rect) const override;

private:
    struct SizeKey
    {
        QString shape; // the text with every digit as 0
        size_t font = 0;
        qint64 icon = 0;
        QSize decoration;
        int features = 0;
        bool operator==(const SizeKey& other) const
        {
            return font == other.font && icon == other.icon && decoration == other.decoration
                && features == other.features && shape == other.shape;
        }
    };
    friend size_t qHash(const SizeKey& key, size_t seed)
    {
        return qHashMulti(seed, key.shape, key.font, key.icon);
    }
    mutable QHash<SizeKey, QSize> m_sizes;

    // Laid out left-aligned on one unbounded line: its measure does not
    // depend on the room it is drawn in, and alignment is an offset.
    struct LayoutKey
    {
        QString text;
        QFont font;
        Qt::LayoutDirection direction = Qt::LeftToRight;
        bool operator==(const LayoutKey& other) const
        {
            return direction == other.direction && text == other.text && font == other.font;
        }
    };
    friend size_t qHash(const LayoutKey& key, size_t seed)
    {
        return qHashMulti(seed, key.text, int(key.direction));
    }
    struct Shaped
    {
        std::shared_ptr<QTextLayout> layout;
        qreal width = 0; // the text without trailing spaces
        qreal advance = 0; // with them, as alignment counts
        qreal height = 0;
    };
    const Shaped& shaped(const LayoutKey& key) const;
    static bool isPlainText(const QString& text);
    mutable QHash<LayoutKey, Shaped> m_layouts;
};
