// The statistics tree's item delegate: items are drawn as usual but never
// with a focus frame.
#pragma once

#include <QItemDelegate>

class GridDelegateLayout : public QItemDelegate
{
    Q_OBJECT
public:
    explicit GridDelegateLayout(QObject* parent = nullptr);
    ~GridDelegateLayout() override;

protected:
    void drawFocus(QPainter* painter, const QStyleOptionViewItem& option, const QRect& rect) const override;
};
