// A value label changes its text without laying its panel out again unless
// the text no longer fits; it never shrinks until fitted afresh.
#include "view/SteadyLabel.h"

#include <QtTest>
#include <QtWidgets>

class TestSteadyLabel : public QObject
{
    Q_OBJECT
private slots:
    void texts_data()
    {
        QTest::addColumn<QString>("next");
        QTest::addColumn<bool>("relayout");
        QTest::newRow("narrower: kept") << "1 B/s" << false;
        QTest::newRow("wider: grows") << "1234.56 MB/s" << true;
        QTest::newRow("two lines: grows") << "10.2 KB/s\n1 B/s" << true;
    }
    void texts()
    {
        QFETCH(QString, next);
        QWidget panel;
        auto* label = new QLabel(QStringLiteral("10.2 KB/s"));
        (new QFormLayout(&panel))->addRow(QStringLiteral("Speed"), label);
        panel.show();
        view::refitSteady(label);
        panel.layout()->activate();
        const QSize held = label->size();
        view::setSteadyText(label, next);
        QTEST(panel.layout()->activate(), "relayout");
        QLabel fresh(next);
        QCOMPARE(label->size(), held.expandedTo(fresh.sizeHint()));
        view::refitSteady(label); // another language: it may shrink
        QCOMPARE(label->size(), fresh.sizeHint());
        // A new font lets go of the held size; the next text fits it afresh.
        fresh.setFont(QFont(label->font().family(), label->font().pointSize() / 2));
        label->setFont(fresh.font());
        view::setSteadyText(label, next);
        QCOMPARE(label->size(), fresh.sizeHint());
    }
};

QTEST_MAIN(TestSteadyLabel)
#include "tst_steady_label.moc"
