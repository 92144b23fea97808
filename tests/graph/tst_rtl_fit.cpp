// Figures inside right-to-left texts keep their reading order.
#include "Allowance.h"
#include "view/TreeRows.h"

#include <QtTest>

using allowance::percentText;

class TestRtlFit : public QObject
{
    Q_OBJECT
private slots:
    void shownText_data()
    {
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("expected");
        QTest::newRow("%") << percentText(54.06, QLocale::c(), Qt::RightToLeft) << "\u206654.1 %\u2069";
        QTest::newRow("%, Arabic") << percentText(54.06, QLocale(QLocale::Arabic)) << "٥٤٫١٪\u061c";
        QTest::newRow("date") << view::rowText("آخر:", "5 Nov 05:30") << "آخر: \u20665 Nov 05:30\u2069";
        QTest::newRow("English") << view::rowText("Reset:", "5 Nov") << "Reset: 5 Nov";
    }
    void shownText()
    {
        QFETCH(QString, shown);
        QTEST(shown, "expected");
    }
};

QTEST_GUILESS_MAIN(TestRtlFit)
#include "tst_rtl_fit.moc"
