// The tree's delegate keeps laid-out texts between paints; what it draws must
// stay what Qt's own item delegate draws, first paint and repaint alike.
#include "GridDelegateLayout.h"

#include <QApplication>
#include <QIcon>
#include <QImage>
#include <QItemDelegate>
#include <QPainter>
#include <QStandardItemModel>
#include <QTest>

class TestTreeDelegate : public QObject
{
    Q_OBJECT
private slots:
    void drawsAsQt_data();
    void drawsAsQt();
};

namespace {

QImage paintItem(
    const QAbstractItemDelegate& delegate, const QStyleOptionViewItem& option, const QModelIndex& index)
{
    QImage image(option.rect.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    delegate.paint(&painter, option, index);
    return image;
}

} // namespace

void TestTreeDelegate::drawsAsQt_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("width");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::addColumn<int>("alignment");
    QTest::addColumn<bool>("selected");
    QTest::addColumn<bool>("icon");

    const int left = int(Qt::AlignLeft | Qt::AlignVCenter);
    QTest::newRow("figure") << "Received: 12.34 MB" << 220 << Qt::LeftToRight << left << false << false;
    QTest::newRow("mirrored") << "Received: 12.34 MB" << 220 << Qt::RightToLeft << left << false << false;
    QTest::newRow("arabic") << QStringLiteral("تم الاستلام: 12 MB") << 220 << Qt::RightToLeft << left << false
                            << false;
    QTest::newRow("selected") << "00:01:02" << 220 << Qt::LeftToRight << left << true << false;
    QTest::newRow("right aligned") << "5 KB/s" << 220 << Qt::LeftToRight
                                   << int(Qt::AlignRight | Qt::AlignVCenter) << false << false;
    QTest::newRow("elided") << "Total this month: 123456.78 MB" << 60 << Qt::LeftToRight << left << false
                            << false;
    QTest::newRow("trailing space, mirrored") << "Sent: " << 220 << Qt::RightToLeft << left << false << false;
    QTest::newRow("icon") << "Today" << 220 << Qt::LeftToRight << left << false << true;
    QTest::newRow("icon, mirrored, selected") << "Today" << 220 << Qt::RightToLeft << left << true << true;
    QTest::newRow("two lines") << "Sent\n1 MB" << 220 << Qt::LeftToRight << left << false << false;
}

void TestTreeDelegate::drawsAsQt()
{
    QFETCH(QString, text);
    QFETCH(int, width);
    QFETCH(Qt::LayoutDirection, direction);
    QFETCH(int, alignment);
    QFETCH(bool, selected);
    QFETCH(bool, icon);

    QStandardItemModel model;
    auto* item = new QStandardItem(text);
    if (icon) {
        QPixmap pixmap(16, 16);
        pixmap.fill(Qt::darkGreen);
        item->setIcon(QIcon(pixmap));
    }
    model.appendRow(item);
    const QModelIndex index = model.index(0, 0);
    QStyleOptionViewItem option;
    option.rect = QRect(0, 0, width, text.contains(QLatin1Char('\n')) ? 44 : 28);
    option.direction = direction;
    option.displayAlignment = Qt::Alignment(alignment);
    option.font = QApplication::font();
    option.fontMetrics = QFontMetrics(option.font);
    option.palette = QApplication::palette();
    option.decorationSize = QSize(16, 16);
    option.decorationAlignment = Qt::AlignCenter;
    option.state = QStyle::State_Enabled | QStyle::State_Active;
    if (selected)
        option.state |= QStyle::State_Selected;

    const QItemDelegate qt;
    const GridDelegateLayout delegate;
    const QImage expected = paintItem(qt, option, index);
    QCOMPARE(paintItem(delegate, option, index), expected);
    QCOMPARE(paintItem(delegate, option, index), expected); // from the kept layout
}

QTEST_MAIN(TestTreeDelegate)
#include "tst_tree_delegate.moc"
