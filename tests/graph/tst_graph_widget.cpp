// The speed graph and its appearance profile: codes and entries of the
// reader, colour texts, what the graph takes from which position, the scale
// rule, the two sample lists, where the newest sample is drawn, and the
// minimum width the host is told.
#include "NetInfoGraphConfigParse.h"
#include "NetInfoGraphWidget.h"
#include "NetInfoUILogic.h"
#include "NetInfoUIService.h"

#include "HostIds.h"
#include "HostServices.h"
#include "TestHome.h"

#include <QtTest>
#include <QtWidgets>

#include <memory>

namespace {
QByteArray profile(const QByteArray& body)
{
    return "<?xml version=\"1.0\"?>\n<TrendsCtrlProfile>\n" + body + "\n</TrendsCtrlProfile>\n";
}

// Background white, grid grey, upload red, download blue; every alpha pair
// differs, and none may matter.
const QByteArray kKnownColours = "<Color id=\"bg\" color=\"#10FFFFFF\"/><Color id=\"unused\" color=\"#FF00FF00\"/>"
                                 "<Color id=\"up\" color=\"#20FF0000\"/><Color id=\"down\" color=\"#300000FF\"/>";
const QByteArray kKnownGrid = "<Color id=\"grid\" color=\"#40808080\"/>";
const QByteArray kFonts = "<Font/><Font/><Font/><Font id=\"scale\" family=\"DejaVu Sans\" style=\"bold\" size=\"13\"/>";
}

class TestGraphWidget : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestHome> m_home;

    // A host home with the shipped switches and the given profile; a null
    // profile leaves the file out.
    bool setUp(const QByteArray& content)
    {
        m_home = std::make_unique<TestHome>();
        return m_home->isValid() && m_home->installDataFile(QStringLiteral("NetInfoUIExConfig.xml"))
               && (content.isNull() || m_home->writePluginFile(QStringLiteral("TrendsCtrlProfile.xml"), content));
    }

    static QStringList describe(const QVector<NetInfoColourConfig>& colours, const QVector<NetInfoFontConfig>& fonts)
    {
        QStringList entries;
        for (const NetInfoColourConfig& colour : colours)
            entries << colour.strId + '=' + colour.strColor;
        for (const NetInfoFontConfig& font : fonts)
            entries << font.strId + '=' + font.strFamily + '/' + font.strStyle + '/' + font.strSize;
        return entries;
    }

private slots:
    void cleanup()
    {
        // With "RESETALLDATA" on the graph's button brought up the view service.
        CNetInfoUIService::Destroy();
        NetInfoUILogic::UnregSDK();
        NetInfoUILogic::Destroy();
        NetInfoGraphConfigParse::OnDestroy();
        m_home.reset();
        QGuiApplication::setLayoutDirection(Qt::LeftToRight);
    }

    void profileIsRead_data()
    {
        QTest::addColumn<QByteArray>("content"); // null: no file; "dir": a directory in its place
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("warning");
        QTest::addColumn<QStringList>("entries");
        QTest::newRow("missing") << QByteArray() << 3 << "^File .*/TrendsCtrlProfile.xml does not exist$" << QStringList();
        QTest::newRow("unopenable") << QByteArray("dir") << 25 << "^open file Error : $" << QStringList();
        QTest::newRow("broken before the root") << QByteArray("<?xml version=\"1.0\"?><<") << 6 << "Read Fle Error: n$"
                                                << QStringList();
        QTest::newRow("broken inside keeps what came first")
            << QByteArray("<TrendsCtrlProfile><Color id=\"a\" color=\"#FF000001\"/><Font id=\"f\"></TrendsCtrlProfile>")
            << 6 << "^GroupInfo Read Error " << QStringList{"a=#FF000001", "f=//"};
        QTest::newRow("nested, repeated ids, missing attributes, case")
            << profile("<Group><Color id=\"x\" color=\"#FF0000FF\"/></Group><Color id=\"x\"/><color id=\"lower\"/>"
                       "<Font family=\"Serif\" size=\"9\"/><Other color=\"#FFFFFFFF\"/>")
            << 0 << QString() << QStringList{"x=#FF0000FF", "x=", "=Serif//9"};
        QTest::newRow("entries before the root are not read")
            << QByteArray("<Doc><Color id=\"early\"/><TrendsCtrlProfile><Color id=\"late\"/></TrendsCtrlProfile></Doc>")
            << 0 << QString() << QStringList{"late="};
    }

    void profileIsRead()
    {
        QFETCH(QByteArray, content);
        QFETCH(int, code);
        QFETCH(QString, warning);
        QFETCH(QStringList, entries);
        QVERIFY(setUp(content == "dir" ? QByteArray() : content));
        if (content == "dir")
            QVERIFY(QDir(m_home->pluginDir()).mkdir(QStringLiteral("TrendsCtrlProfile.xml")));
        if (!warning.isEmpty())
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(warning));
        QVector<NetInfoColourConfig> colours{{QStringLiteral("kept"), QStringLiteral("#FF123456")}};
        QVector<NetInfoFontConfig> fonts;
        QCOMPARE(NetInfoGraphConfigParse::GetInstance()->GetSettingsFromXML(colours, fonts), code);
        QCOMPARE(describe(colours, fonts), QStringList{"kept=#FF123456"} + entries); // appended, never cleared
    }

    void colourText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QColor>("colour");
        QTest::newRow("alpha pair dropped") << "#80FF0000" << QColor(255, 0, 0);
        QTest::newRow("transparent still opaque") << "#00123456" << QColor(0x12, 0x34, 0x56);
        QTest::newRow("empty") << "" << QColor();
        QTest::newRow("no alpha pair") << "#FF0000" << QColor();
        QTest::newRow("not hexadecimal") << "#FFGG0000" << QColor();
    }

    void colourText()
    {
        QFETCH(QString, text);
        QFETCH(QColor, colour);
        const QColor read = NetInfoGraphConfigParse::colour(text);
        QCOMPARE(read.isValid(), colour.isValid());
        if (colour.isValid())
            QCOMPARE(read.rgba(), colour.rgba());
    }

    void graphTakesEntriesByPosition_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QColor>("grid");
        QTest::addColumn<QString>("family"); // empty: the widget's own
        QTest::addColumn<int>("pixelSize");  // 0: the widget's own
        QTest::newRow("full profile") << profile(kKnownColours + kKnownGrid + kFonts) << QColor(0x80, 0x80, 0x80)
                                      << "DejaVu Sans" << 13;
        QTest::newRow("four colours, three fonts") << profile(kKnownColours + "<Font/><Font/><Font/>") << QColor()
                                                   << QString() << 0;
        QTest::newRow("no profile") << QByteArray() << QColor() << QString() << 0;
    }

    void graphTakesEntriesByPosition()
    {
        QFETCH(QByteArray, content);
        QFETCH(QColor, grid);
        QFETCH(QString, family);
        QFETCH(int, pixelSize);
        QVERIFY(setUp(content));
        if (content.isNull())
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("does not exist$")));
        GraphWidget graph;
        QCOMPARE(graph.gridColour().isValid(), grid.isValid());
        if (grid.isValid())
            QCOMPARE(graph.gridColour(), grid);
        const bool colours = !content.isNull();
        QCOMPARE(graph.uploadColour(), colours ? QColor(Qt::red) : QColor());
        QCOMPARE(graph.downloadColour(), colours ? QColor(Qt::blue) : QColor());
        QCOMPARE(graph.graphFont().family(), family.isEmpty() ? graph.font().family() : family);
        QCOMPARE(graph.graphFont().pixelSize(), pixelSize ? pixelSize : graph.font().pixelSize());
        // The profile's style is not read; the weight is always the normal one.
        QCOMPARE(graph.graphFont().weight(), QFont::Normal);
    }

    void scaleOnlyGrows_data()
    {
        QTest::addColumn<QList<QPointF>>("samples"); // (up, down)
        QTest::addColumn<QList<int>>("scales");
        QTest::newRow("61, 120, 121, 10") << QList<QPointF>{{61, 0}, {120, 0}, {121, 0}, {10, 0}}
                                          << QList<int>{120, 120, 180, 180};
        QTest::newRow("60 fits the first scale") << QList<QPointF>{{60, 60}} << QList<int>{60};
        QTest::newRow("a first 120 needs the next step") << QList<QPointF>{{120, 0}} << QList<int>{180};
        QTest::newRow("fractions truncated") << QList<QPointF>{{60.99, 0}, {0, 119.99}} << QList<int>{60, 120};
        QTest::newRow("negatives truncated toward zero") << QList<QPointF>{{-500, -60.5}} << QList<int>{60};
        QTest::newRow("download alone") << QList<QPointF>{{0, 250.5}} << QList<int>{300};
    }

    void scaleOnlyGrows()
    {
        QFETCH(QList<QPointF>, samples);
        QFETCH(QList<int>, scales);
        QVERIFY(setUp(profile(kKnownColours + kKnownGrid + kFonts)));
        GraphWidget graph;
        QCOMPARE(graph.maxSpeed(), 60);
        QList<int> seen;
        for (const QPointF& sample : samples) {
            graph.DrawGraph(sample.x(), sample.y());
            seen << graph.maxSpeed();
        }
        QCOMPARE(seen, scales);
    }

    void uploadTrimmedDownloadNot_data()
    {
        QTest::addColumn<int>("extra"); // updates beyond the sample limit
        QTest::addColumn<int>("uploadBeyond");
        for (int extra = 0; extra < 4; ++extra)
            QTest::addRow("limit + %d", extra) << extra << extra % 2;
    }

    void uploadTrimmedDownloadNot()
    {
        QFETCH(int, extra);
        QFETCH(int, uploadBeyond);
        QVERIFY(setUp(profile(kKnownColours + kKnownGrid + kFonts)));
        GraphWidget graph;
        // The limit is the width the widget had when it was made.
        QCOMPARE(graph.maxSamples(), graph.width());
        const int updates = graph.maxSamples() + extra;
        for (int i = 1; i <= updates; ++i)
            graph.DrawGraph(i, -i);
        const QList<double>& up = graph.uploadSamples();
        const QList<double>& down = graph.downloadSamples();
        QCOMPARE(up.size(), graph.maxSamples() + uploadBeyond);
        QCOMPARE(down.size(), updates);
        // Newest first; only the oldest uploads went.
        QCOMPARE(up.first(), double(updates));
        QCOMPARE(up.last(), double(updates - up.size() + 1));
        QCOMPARE(down.last(), -1.0);
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
        QVERIFY(setUp(profile(kKnownColours + kKnownGrid + kFonts)));
        GraphWidget graph;
        graph.resize(400, 300);
        // Idle, then the newest sample at the top of the scale: a rise only at
        // the newest end, drawn in the upload colour.
        for (int i = 1; i < samples; ++i)
            graph.DrawGraph(0, 0);
        graph.DrawGraph(60, 0);
        QCOMPARE(graph.maxSpeed(), 60);
        const QImage image = graph.grab().toImage();

        QCOMPARE(QColor(image.pixel(200, 5)), QColor(Qt::white));
        int left = image.width();
        int right = -1;
        for (int y = 0; y < 150; ++y)
            for (int x = 0; x < image.width(); ++x)
                if (QColor(image.pixel(x, y)) == QColor(Qt::red)) {
                    left = std::min(left, x);
                    right = std::max(right, x);
                }
        if (samples < 2) {
            QCOMPARE(right, -1);
            return;
        }
        QVERIFY2(right >= 0, "no rise drawn");
        const QByteArray where = QByteArray::number(left) + ".." + QByteArray::number(right);
        if (rightToLeft)
            QVERIFY2(left >= 8 && right <= 14, where);
        else
            QVERIFY2(left >= image.width() - 14 && right <= image.width() - 8, where);

        // The reset button sits in the bottom corner on the trailing side.
        auto* button = graph.findChild<QPushButton*>(QStringLiteral("NetInfoGraphWidget_ResetButton"));
        QVERIFY(button);
        QCOMPARE(button->geometry().bottom(), graph.height() - 2);
        if (rightToLeft)
            QCOMPARE(button->x(), 9);
        else
            QCOMPARE(button->geometry().right(), graph.width() - 9);
    }

    void minimumWidthGoesToTheHost()
    {
        QVERIFY(setUp(profile(kKnownColours + kKnownGrid + kFonts)));
        HostServices services;
        QSignalSpy told(services.notifyService(), &NotifyService::notified);
        GraphWidget graph;
        auto* button = graph.findChild<QPushButton*>(QStringLiteral("NetInfoGraphWidget_ResetButton"));
        QVERIFY(button && !button->isHidden());
        graph.setGraphMinmumWidth(225);
        QCOMPARE(told.count(), 1);
        QCOMPARE(told.first().at(0).toString(), QLatin1String(HostIds::MainFrameTarget));
        QCOMPARE(told.first().at(1).toUInt(), HostIds::EventMinimumWidth);
        // The graph's own need, the tree's width and a margin.
        QCOMPARE(told.first().at(2).value<quintptr>(), quintptr(graph.minimumWidth() + 225 + 70));
        QVERIFY(graph.minimumWidth() > button->width() + 70);
    }
};

QTEST_MAIN(TestGraphWidget)
#include "tst_graph_widget.moc"
