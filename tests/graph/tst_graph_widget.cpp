// The speed graph and its appearance profile: the reader's codes and entries,
// the colours and font the graph takes, the scale rule, the two sample
// lists, where the newest sample is drawn, and the width the host is told.
#include "NetInfoGraphWidget.h"

#include "Change.h"
#include "HostIds.h"
#include "HostServices.h"
#include "PluginFixture.h"

#include <QtTest>
#include <QtWidgets>

#include <memory>

namespace {
QByteArray profile(const QByteArray& body)
{
    return "<?xml version=\"1.0\"?>\n<TrendsCtrlProfile>" + body + "</TrendsCtrlProfile>\n";
}

// White, unused, red, blue, grey: every colour opaque whatever its alpha
// pair; a grid without its pair reads as no colour.
const QByteArray kColours = "<Color color=\"#10FFFFFF\"/><Color/><Color color=\"#80FF0000\"/>"
                            "<Color color=\"#000000FF\"/>";
const QByteArray kKnown = profile(kColours
    + "<Color color=\"#40808080\"/><Font/><Font/><Font/>"
      "<Font family=\"DejaVu Sans\" style=\"bold\" size=\"13\"/>");
} // namespace

class TestGraphWidget : public QObject
{
    Q_OBJECT

    PluginFixture m_fixture;

    // The shipped switches ("RESETALLDATA" on) and the given profile, if any.
    bool setUp(const QByteArray& content = kKnown)
    {
        return m_fixture.setUp()
            && (content.isNull()
                || m_fixture.home->writePluginFile(QStringLiteral("TrendsCtrlProfile.xml"), content));
    }

private slots:
    void cleanup()
    {
        m_fixture.tearDown(); // the view comes up with the graph's reset button
        QGuiApplication::setLayoutDirection(Qt::LeftToRight);
    }

    void profileIsRead_data()
    {
        QTest::addColumn<QByteArray>("content"); // null: no file
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("warning");
        QTest::addColumn<QStringList>("entries");
        QTest::newRow("missing") << QByteArray() << 3 << "^File .*/TrendsCtrlProfile.xml does not exist$"
                                 << QStringList();
        QTest::newRow("broken before the root")
            << QByteArray("<?xml version=\"1.0\"?><<") << 6 << "Read Fle Error: n$" << QStringList();
        QTest::newRow("broken inside keeps what came first") << QByteArray(
            "<TrendsCtrlProfile><Color id=\"a\" color=\"#FF000001\"/><Font id=\"f\"></TrendsCtrlProfile>")
                                                             << 6 << "^GroupInfo Read Error "
                                                             << QStringList { "a=#FF000001", "f=//" };
        QTest::newRow("nested, repeated ids, missing attributes, case")
            << profile("<G><Color id=\"x\" color=\"#FF0000FF\"/></G><Color id=\"x\"/><color id=\"lower\"/>"
                       "<Font family=\"Serif\" size=\"9\"/><Other color=\"#FFFFFFFF\"/>")
            << 0 << QString() << QStringList { "x=#FF0000FF", "x=", "=Serif//9" };
    }

    void profileIsRead()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, warning);
        QFETCH(QStringList, entries);
        QVERIFY(setUp(content));
        if (!warning.isEmpty())
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(warning));
        QVector<NetInfoColourConfig> colours { { QStringLiteral("kept"), QString() } };
        QVector<NetInfoFontConfig> fonts;
        QTEST(NetInfoGraphConfigParse::GetInstance()->GetSettingsFromXML(colours, fonts), "code");
        QStringList read;
        for (const NetInfoColourConfig& colour : colours)
            read << colour.strId + '=' + colour.strColor;
        for (const NetInfoFontConfig& font : fonts)
            read << font.strId + '=' + font.strFamily + '/' + font.strStyle + '/' + font.strSize;
        QCOMPARE(read, QStringList { "kept=" } + entries); // appended, never cleared
    }

    void graphTakesEntriesByPosition_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QColor>("grid");
        QTest::addColumn<bool>("font"); // else the widget's own family and size
        const QByteArray threeFonts = "<Font/><Font/><Font/>";
        QTest::newRow("five colours, four fonts") << kKnown << QColor(0x80, 0x80, 0x80) << true;
        QTest::newRow("four colours, three fonts") << profile(kColours + threeFonts) << QColor() << false;
        QTest::newRow("grid without its alpha pair")
            << profile(kColours + "<Color color=\"#808080\"/>" + threeFonts) << QColor() << false;
    }

    void graphTakesEntriesByPosition()
    {
        QFETCH(QByteArray, content);
        QFETCH(bool, font);
        QVERIFY(setUp(content));
        GraphWidget graph;
        QTEST(graph.gridColour(), "grid");
        QCOMPARE(graph.uploadColour(), QColor(Qt::red));
        QCOMPARE(graph.downloadColour(), QColor(Qt::blue));
        QCOMPARE(graph.graphFont().family(), font ? QStringLiteral("DejaVu Sans") : graph.font().family());
        QCOMPARE(graph.graphFont().pixelSize(), font ? 13 : graph.font().pixelSize());
        QCOMPARE(graph.graphFont().weight(), QFont::Normal); // the profile's style is not read
    }

    // Samples as "up,down" and the scale after each.
    void scaleOnlyGrows_data()
    {
        QTest::addColumn<QString>("samples");
        QTest::addColumn<QString>("scales");
        QTest::newRow("61, 120, 121, 10") << QString("61,0 120,0 121,0 10,0") << QString("120 120 180 180");
        QTest::newRow("60 fits, 120 then takes the next step") << QString("60,60 120,0") << QString("60 180");
        QTest::newRow("fractions truncated") << QString("60.99,0 0,119.99") << QString("60 120");
        QTest::newRow("negatives truncated toward zero") << QString("-500,-60.5") << QString("60");
        QTest::newRow("download alone") << QString("0,250.5") << QString("300");
        QTest::newRow("odd values stay in range")
            << QString("inf,1e12 nan,-1e12") << QString("1000000020 1000000020");
    }

    void scaleOnlyGrows()
    {
        QFETCH(QString, samples);
        QVERIFY(setUp());
        GraphWidget graph;
        QStringList seen;
        for (const QString& sample : samples.split(' ')) {
            graph.DrawGraph(sample.section(',', 0, 0).toDouble(), sample.section(',', 1).toDouble());
            seen << QString::number(graph.maxSpeed());
        }
        QTEST(seen.join(' '), "scales");
    }

    void uploadTrimmedDownloadNot_data()
    {
        QTest::addColumn<int>("extra"); // updates beyond the sample limit
        for (int extra = 0; extra < 4; ++extra)
            QTest::addRow("limit + %d", extra) << extra;
    }

    void uploadTrimmedDownloadNot()
    {
        QFETCH(int, extra);
        QVERIFY(setUp());
        GraphWidget graph;
        QCOMPARE(graph.maxSamples(), graph.width()); // the width it was made with
        QVERIFY(!graph.grab().isNull()); // painted before any sample
        const int updates = graph.maxSamples() + extra;
        for (int i = 1; i <= updates; ++i)
            graph.DrawGraph(i, -i);
        // The upload list alternates between the limit and one more, losing
        // its oldest; the download list keeps everything. Newest first.
        const QList<double>& up = graph.uploadSamples();
        QCOMPARE(up.size(), graph.maxSamples() + extra % 2);
        QCOMPARE(up.last(), double(updates - up.size() + 1));
        QCOMPARE(graph.downloadSamples().size(), updates);
        QCOMPARE(graph.downloadSamples().last(), -1.0);
    }

    void newestSampleAtTheLeadingEdge_data()
    {
        QTest::addColumn<bool>("rightToLeft");
        QTest::addColumn<int>("samples");
        QTest::newRow("left to right") << false << 50;
        QTest::newRow("right to left") << true << 50;
        QTest::newRow("one sample draws no curve") << false << 1;
    }

    void newestSampleAtTheLeadingEdge()
    {
        QFETCH(bool, rightToLeft);
        QFETCH(int, samples);
        QGuiApplication::setLayoutDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
        QVERIFY(setUp());
        GraphWidget graph;
        graph.resize(400, 300);
        // Idle, then the top of the scale: red rises only at the newest end.
        for (int i = 1; i < samples; ++i)
            graph.DrawGraph(0, 0);
        graph.DrawGraph(60, 0);
        const QImage image = graph.grab().toImage();
        QCOMPARE(QColor(image.pixel(200, 5)), QColor(Qt::white));
        int left = image.width(), right = -1;
        for (int y = 0; y < 150; ++y)
            for (int x = 0; x < image.width(); ++x)
                if (QColor(image.pixel(x, y)) == QColor(Qt::red)) {
                    left = std::min(left, x);
                    right = std::max(right, x);
                }
        const QByteArray where = QByteArray::number(left) + ".." + QByteArray::number(right);
        if (samples < 2)
            QVERIFY2(right < 0, where);
        else if (rightToLeft)
            QVERIFY2(left >= 8 && right <= 14, where);
        else
            QVERIFY2(left >= image.width() - 14 && right <= image.width() - 8, where);

        // The reset button sits in the bottom corner on the trailing side.
        auto* button = graph.findChild<QPushButton*>(QStringLiteral("NetInfoGraphWidget_ResetButton"));
        QVERIFY(button && button->geometry().bottom() == graph.height() - 2);
        QCOMPARE(rightToLeft ? button->x() : button->geometry().right(), rightToLeft ? 9 : graph.width() - 9);
    }

    void minimumWidthGoesToTheHost()
    {
        QVERIFY(setUp());
        HostServices services;
        QSignalSpy told(services.notifyService(), &NotifyService::notified);
        GraphWidget graph;
        graph.setGraphMinmumWidth(225);
        QCOMPARE(told.count(), 1);
        QCOMPARE(told.first().at(0).toString(), QLatin1String(HostIds::MainFrameTarget));
        QCOMPARE(told.first().at(1).toUInt(), HostIds::EventMinimumWidth);
        // The wider legend text in the graph's font with its key, the tree's
        // width, a margin, and the reset button beside the legend.
        auto* button = graph.findChild<QPushButton*>(QStringLiteral("NetInfoGraphWidget_ResetButton"));
        QVERIFY(button && !button->isHidden());
        const QFontMetrics metrics(graph.graphFont());
        const int legend
            = std::max(metrics.horizontalAdvance(Change::tr("IDS_TRENDS_UPLOAD_SPEED", "NetInfoUIExPlugin")),
                metrics.horizontalAdvance(Change::tr("IDS_TRENDS_DOWNLOAD_SPEED", "NetInfoUIExPlugin")));
        QCOMPARE(told.first().at(2).value<quintptr>(), quintptr(legend + 225 + 70 + button->width()));
        QCOMPARE(graph.minimumWidth(), legend + 70 + button->width());
    }

    // A graph painted before a change looks, after it, like one made anew;
    // "ticks" paints after every sample, past the sample limit, with
    // curves that cross, fall below the plot and rise to the top.
    void changesReachThePicture_data()
    {
        QTest::addColumn<QString>("change");
        for (const char* change :
            { "scale", "size", "direction", "language", "ticks", "ticks right to left" })
            QTest::newRow(change) << change;
    }

    void changesReachThePicture()
    {
        QFETCH(QString, change);
        QVERIFY(setUp() && m_fixture.home->installTranslations());
        QGuiApplication::setLayoutDirection(
            change.endsWith(QLatin1String("left")) ? Qt::RightToLeft : Qt::LeftToRight);
        const auto feed = [&change](GraphWidget& graph, bool before, bool paint) {
            graph.setMaxSamples(90);
            for (int i = 0; i < (before ? 40 : 0); ++i)
                graph.DrawGraph(30, 15);
            if (!before && change == QLatin1String("scale"))
                graph.DrawGraph(500, 0);
            for (int i = 0; !before && change.startsWith(QLatin1String("ticks")) && i < 120; ++i) {
                graph.DrawGraph(
                    30 + 29 * std::sin(i / 3.0), i % 40 == 0 ? -20.0 : 30 + 30 * std::cos(i / 5.0));
                if (paint)
                    QCoreApplication::processEvents();
            }
        };
        GraphWidget graph;
        graph.resize(400, 300);
        graph.show();
        QVERIFY(QTest::qWaitForWindowExposed(&graph));
        feed(graph, true, true);
        graph.grab();
        feed(graph, false, true);
        if (change == QLatin1String("size"))
            graph.resize(330, 260);
        if (change == QLatin1String("direction"))
            QGuiApplication::setLayoutDirection(Qt::RightToLeft);
        QVERIFY(change != QLatin1String("language") || Change::LoadLanguage(QStringLiteral("zh_CN")));
        graph.grab(); // the button follows a new text one paint late, as always
        GraphWidget fresh;
        fresh.resize(graph.size());
        feed(fresh, true, false);
        feed(fresh, false, false);
        const QImage made = fresh.grab().toImage();
        // The button keeps the height it was made with: the graph above it.
        const int top = std::min(graph.findChild<QPushButton*>()->y(), fresh.findChild<QPushButton*>()->y());
        QVERIFY(top > graph.height() / 2);
        QCoreApplication::processEvents(); // what the screen shows, painted a part at a time
        const QImage shown
            = graph.screen()->grabWindow(graph.winId()).toImage().convertToFormat(made.format());
        QCOMPARE(made.copy(0, 0, graph.width(), top), shown.copy(0, 0, graph.width(), top));
    }
};

QTEST_MAIN(TestGraphWidget)
#include "tst_graph_widget.moc"
