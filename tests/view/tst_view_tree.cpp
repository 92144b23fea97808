// The statistics tree: which rows the switches build, the column-width rule,
// mirrored icons and what the shown view draws.
#include "ViewFixture.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QSplitter>
#include <QTreeWidgetItemIterator>

using namespace viewtest;

namespace {
const QRect kNarrow(0, 0, 220, 300);
}

class TestViewTree : public QObject
{
    Q_OBJECT

private:
    Fixture m_f;

    static QStringList childTexts(const QTreeWidgetItem* item)
    {
        QStringList texts;
        for (int i = 0; i < item->childCount(); ++i)
            texts << item->child(i)->text(0);
        return texts;
    }

    static bool hasInk(const QImage& image, const QRect& rect)
    {
        const QRgb background = image.pixel(rect.topLeft());
        for (int y = rect.top(); y <= rect.bottom(); ++y)
            for (int x = rect.left(); x <= rect.right(); ++x)
                if (image.pixel(x, y) != background)
                    return true;
        return false;
    }

    // Duration text and indentation that make the transfer-time row (one
    // ancestor) need exactly `target` pixels.
    bool findRowOfWidth(QTreeWidget* tree, int target, QString& duration, int& indentation)
    {
        const QString prefix = tree->topLevelItem(0)->child(0)->text(0).section(QLatin1Char(' '), 0, 0) + QLatin1Char(' ');
        const QFontMetrics metrics{QFont()};
        for (int n = 0; n < 200; ++n) {
            const QString text = QString(n, QLatin1Char('x'));
            const int textWidth = metrics.horizontalAdvance(prefix + text);
            for (int ind = 0; ind <= 20; ++ind) {
                if (textWidth + ind * 3 + 30 == target) {
                    duration = text;
                    indentation = ind;
                    return true;
                }
            }
        }
        return false;
    }

    int widthForRow(QTreeWidget* tree, int target)
    {
        QString duration;
        int indentation = 0;
        if (!findRowOfWidth(tree, target, duration, indentation))
            return -1;
        tree->setIndentation(indentation);
        m_f.emitLive(0, 0, 0, 0, duration);
        m_f.view->Notify(258, 0, 0);
        return tree->columnWidth(0);
    }

private slots:
    void initTestCase()
    {
        QLocale::setDefault(QLocale::c());
        // Small fixed-pitch letters keep every other row well under the
        // column threshold.
        QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
        font.setPixelSize(6);
        QApplication::setFont(font);
    }

    void cleanup()
    {
        m_f.tearDown();
        QGuiApplication::setLayoutDirection(Qt::LeftToRight);
    }

    void switchesDecideTheRows_data()
    {
        QTest::addColumn<QStringList>("off");
        QTest::addColumn<QStringList>("transferChildren");
        QTest::addColumn<bool>("statisticsHidden");
        QTest::addColumn<bool>("notesShown");
        QTest::addColumn<int>("topLevelCount");

        const QStringList allTransfer{"IDS_TREE_TIME_TRANSFER 00:00:00", "IDS_TREE_UPLOAD", "IDS_TREE_DOWNLOAD"};
        const QStringList noLimits{"DATAVOLUMELIMIT", "TIMEVOLUMELIMIT"};
        QTest::newRow("everything on") << QStringList() << allTransfer << false << false << 2;
        QTest::newRow("upload off") << QStringList{"TRANSFERUPLOAD"}
                                    << QStringList{"IDS_TREE_TIME_TRANSFER 00:00:00", "IDS_TREE_DOWNLOAD"} << false
                                    << false << 2;
        QTest::newRow("time off") << QStringList{"TRANSFERTIME"} << QStringList{"IDS_TREE_UPLOAD", "IDS_TREE_DOWNLOAD"}
                                  << false << false << 2;
        QTest::newRow("statistics off") << QStringList{"STATISTICS"} << allTransfer << true << false << 2;
        QTest::newRow("data limit only") << QStringList{"TIMEVOLUMELIMIT"} << allTransfer << false << false << 2;
        QTest::newRow("no limit feature") << noLimits << allTransfer << false << true << 4;
        QTest::newRow("no limit feature, notes off") << (noLimits + QStringList{"STATISTICSNOTES"}) << allTransfer
                                                     << false << false << 4;
    }

    void switchesDecideTheRows()
    {
        QFETCH(QStringList, off);
        QFETCH(QStringList, transferChildren);
        QFETCH(bool, statisticsHidden);
        QFETCH(bool, notesShown);
        QFETCH(int, topLevelCount);
        QVERIFY(m_f.setUp(off));
        QTreeWidget* tree = m_f.show();
        QVERIFY(tree);

        QCOMPARE(tree->topLevelItemCount(), topLevelCount);
        QCOMPARE(childTexts(tree->topLevelItem(0)), transferChildren);
        QTreeWidgetItem* statistics = tree->topLevelItem(1);
        QCOMPARE(statistics->isHidden(), statisticsHidden);
        QCOMPARE(statistics->text(0), QStringLiteral("IDS_TREE_STATISTICS"));
        QCOMPARE(statistics->childCount(), 4);

        // A hidden statistics node still has its rows refreshed.
        m_f.sdk->setReport(VELT_REPORT_TODAY, record(2048, 0));
        m_f.emitLive(0, 0, 0, 0, QStringLiteral(" "));
        QCOMPARE(statistics->child(1)->child(0)->text(0), QStringLiteral("IDS_TREE_UPLOADED_DATA 2.00 IDS_UNIT_KB"));

        if (topLevelCount == 4) {
            QTreeWidgetItem* spacer = tree->topLevelItem(2);
            QVERIFY(!(spacer->flags() & Qt::ItemIsSelectable));
            QVERIFY(!(spacer->flags() & Qt::ItemIsEnabled));
            QTreeWidgetItem* notes = tree->topLevelItem(3);
            QCOMPARE(notes->text(0), QStringLiteral("     IDS_NOTES"));
            QCOMPARE(!notes->isHidden(), notesShown);
            QVERIFY(tree->expandsOnDoubleClick());
        }
    }

    void widgetHierarchyCarriesItsNames()
    {
        QVERIFY(m_f.setUp());
        // Narrower than the column, which otherwise stretches to the view.
        QTreeWidget* tree = m_f.show(kNarrow);
        QVERIFY(tree);
        auto* root = m_f.host->findChild<QWidget*>(QStringLiteral("NetInfoUIPlugin_WidgetParent"));
        QVERIFY(root);
        QCOMPARE(root->contentsMargins(), QMargins(4, 0, 4, 0));
        auto* layout = root->findChild<QHBoxLayout*>(QStringLiteral("NetInfoUIPlugin_LayoutParent"));
        QVERIFY(layout);
        QCOMPARE(layout->contentsMargins(), QMargins(3, 8, 3, 8));
        auto* splitter = root->findChild<QSplitter*>(QStringLiteral("NetInfoUIPlugin_SplitterPane"));
        QVERIFY(splitter);
        QCOMPARE(splitter->handleWidth(), 4);
        auto* left = splitter->widget(0);
        QCOMPARE(left->objectName(), QStringLiteral("NetInfoUIPlugin_WidgetLeftAreaParent"));
        QCOMPARE(left->layout()->objectName(), QStringLiteral("NetInfoUIPlugin_LayoutVerticalLeft"));
        QCOMPARE(tree->parentWidget(), left);
        QVERIFY(tree->isHeaderHidden());
        QVERIFY(!tree->rootIsDecorated());
        QCOMPARE(tree->textElideMode(), Qt::ElideNone);
        QCOMPARE(tree->contextMenuPolicy(), Qt::CustomContextMenu);
        QVERIFY(tree->itemDelegate()->inherits("GridDelegateLayout"));
        // With a limit feature on, showing sets the column and lets the bars scroll.
        QCOMPARE(tree->columnWidth(0), 280);
        QCOMPARE(tree->horizontalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
    }

    void columnWidensOnlyPast280_data()
    {
        QTest::addColumn<int>("required");
        QTest::addColumn<bool>("widened");
        QTest::newRow("exactly 280") << 280 << false;
        QTest::newRow("281") << 281 << true;
        QTest::newRow("300") << 300 << true;
    }

    void columnWidensOnlyPast280()
    {
        QFETCH(int, required);
        QFETCH(bool, widened);
        QVERIFY(m_f.setUp());
        QTreeWidget* tree = m_f.show(kNarrow);
        QVERIFY(tree);

        const int width = widthForRow(tree, required);
        QVERIFY2(width >= 0, "no duration text reaches the width under test in this font");
        // Not widened, the only column fills the visible width.
        QCOMPARE(width, widened ? required : tree->viewport()->width());
        QVERIFY(tree->viewport()->width() < 280);
    }

    void columnKeepsTheWidestUntilLanguageChange()
    {
        QVERIFY(m_f.setUp());
        QTreeWidget* tree = m_f.show(kNarrow);
        QVERIFY(tree);
        QCOMPARE(widthForRow(tree, 300), 300);
        QCOMPARE(widthForRow(tree, 290), 300);
        m_f.view->Notify(1024, 0, 0);
        QCOMPARE(tree->columnWidth(0), 280);
        QCOMPARE(widthForRow(tree, 290), 290);
    }

    void iconsMirrorInRightToLeft_data()
    {
        QTest::addColumn<bool>("rightToLeft");
        QTest::newRow("left to right") << false;
        QTest::newRow("right to left") << true;
    }

    void iconsMirrorInRightToLeft()
    {
        QFETCH(bool, rightToLeft);
        QGuiApplication::setLayoutDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
        QVERIFY(m_f.setUp());
        QTreeWidget* tree = m_f.show();
        QVERIFY(tree);
        m_f.emitLive(0, 0, 0, 0, QStringLiteral(" "));

        int icons = 0;
        for (QTreeWidgetItemIterator it(tree); *it; ++it) {
            const QIcon icon = (*it)->icon(0);
            if (icon.isNull())
                continue;
            ++icons;
            const QImage image = icon.pixmap(16, 16).toImage().convertToFormat(QImage::Format_ARGB32);
            const QString row = (*it)->text(0);
            QVERIFY2(QColor(image.pixel(rightToLeft ? 13 : 2, 1)) == QColor(Qt::green), qPrintable(row));
            QVERIFY2(QColor(image.pixel(rightToLeft ? 13 : 2, 12)) == QColor(Qt::red), qPrintable(row));
            QVERIFY2(QColor(image.pixel(rightToLeft ? 2 : 13, 12)) == QColor(Qt::blue), qPrintable(row));
        }
        QCOMPARE(icons, 19);
    }

    void shownViewDrawsTheTree()
    {
        QVERIFY(m_f.setUp());
        QTreeWidget* tree = m_f.show();
        QVERIFY(tree);
        QVERIFY(QTest::qWaitForWindowExposed(m_f.host.get()));
        const QImage image = m_f.host->grab().toImage();
        QCOMPARE(image.size(), QSize(600, 400));

        QStringList drawn;
        for (QTreeWidgetItemIterator it(tree, QTreeWidgetItemIterator::NotHidden); *it; ++it) {
            const QRect itemRect = tree->visualItemRect(*it);
            if (itemRect.isEmpty() || !tree->viewport()->rect().contains(itemRect.topLeft()))
                continue;
            const QRect onHost(tree->viewport()->mapTo(m_f.host.get(), itemRect.topLeft()), itemRect.size());
            const QRect textArea = onHost.adjusted(tree->indentation() + 20, 0, 0, 0) & image.rect();
            if (hasInk(image, textArea))
                drawn << (*it)->text(0);
        }
        QVERIFY2(drawn.contains(QStringLiteral("IDS_TREE_TRANSFER")), qPrintable(drawn.join(QLatin1String(" | "))));
        QVERIFY2(drawn.contains(QStringLiteral("IDS_TREE_STATISTICS")), qPrintable(drawn.join(QLatin1String(" | "))));
        QVERIFY2(drawn.size() >= 10, qPrintable(drawn.join(QLatin1String(" | "))));
    }
};

QTEST_MAIN(TestViewTree)
#include "tst_view_tree.moc"
