// Usage limits in a sandboxed host home with the simulated SDK: the warning
// scenarios, the bars' colours and pixels, the percentage boundaries and the
// time-of-day rules the look-back depends on.
#include "LwProgressBar.h"
#include "TimeOfDay.h"
#include "WarnPrompt.h"

#include "HostIds.h"
#include "PluginFixture.h"

#include <QtTest>
#include <QtWidgets>

#include <memory>

namespace {
constexpr quint64 MB = 1024 * 1024;
} // namespace

using Limits = QStringList; // "key=value" over TestHome::limitFile()

class TestViewLimits : public QObject
{
    Q_OBJECT

    PluginFixture m_fixture;
    velt::SimulatedBackend* m_sdk = nullptr;
    CNetInfoUIService* m_view = nullptr;

    bool setUp(const Limits& limits, const QList<QPair<QByteArray, QByteArray>>& edits = {})
    {
        if (!m_fixture.setUp({}, { "TrendsCtrlProfile.xml" }, edits)
            || !m_fixture.home->writeUserFile("DataUsageLimit.ini", TestHome::limitFile(limits)))
            return false;
        m_sdk = PluginFixture::installSdk();
        m_view = PluginFixture::initView();
        return true;
    }

    // Today's usage becomes `mb` megabytes in `seconds` and the view refreshes as on a tick.
    void useToday(double mb, qint64 seconds = 0)
    {
        const auto bytes = static_cast<quint64>(mb * MB);
        m_sdk->setReport(VELT_REPORT_TODAY, { bytes / 2, bytes - bytes / 2, 0, 0, seconds, 0 });
        m_view->onStatisticsChanged(0, 0, 0, 0, QStringLiteral(" "));
    }

    // The warning text on screen, if any; the dialog is closed afterwards.
    QString takeWarning()
    {
        ExtendDialog* dialog = m_view->warnPrompt()->dialog();
        if (!dialog || !dialog->isVisible())
            return QString();
        QString text = dialog->findChild<QLabel*>("WarnDlg_LabelWarn")->text();
        m_view->warnPrompt()->CloseDlg();
        return text;
    }

    // The view's widgets have no parent until a host embeds them.
    template <class T> static T* widgetNamed(const QString& name)
    {
        for (QWidget* widget : QApplication::allWidgets())
            if (widget->objectName() == name)
                return qobject_cast<T*>(widget);
        return nullptr;
    }

private slots:
    void cleanup()
    {
        m_fixture.tearDown();
        m_view = nullptr;
    }

    // What the dialog shows as the view feeds the policy (the rules are the
    // policy's own suite's): a new connection (host event 1536, status 1) re-arms.
    void newConnectionReArms()
    {
        QVERIFY(setUp({}));
        QStringList seen;
        for (const char* step : { "85", "86", "connect", "87", "100" }) {
            if (qstrcmp(step, "connect") == 0)
                m_view->Notify(HostIds::MsgConnectionStatus, HostIds::StatusConnected, 0);
            else
                useToday(QByteArray(step).toDouble());
            seen << takeWarning();
        }
        QCOMPARE(
            seen, (QStringList { "IDS_BOX_WARNBEFORE", "", "", "IDS_BOX_WARNBEFORE", "IDS_BOX_WARNAFTER" }));
    }

    // A bar after a tick: the configured colour, the formatted text, value
    // and maximum (bytes for data, seconds for time). Colours come from the
    // feature file by name, edited by (from, to): the last entry of a name
    // wins, and a file without colours paints in transparent white.
    void bars_data()
    {
        QTest::addColumn<Limits>("limits");
        QTest::addColumn<double>("usedMb");
        QTest::addColumn<qint64>("seconds");
        QTest::addColumn<QString>("bar");
        QTest::addColumn<QByteArray>("from");
        QTest::addColumn<QByteArray>("to");
        QTest::addColumn<QColor>("color");
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("value");
        QTest::addColumn<double>("maximum");
        const QColor none(76, 175, 80), before(255, 167, 38);
        const Limits time { "chkTimeVolume=true", "SizeTimeVolume=20" };
        const QByteArray normal = "<item name=\"NoWarningColor\" R=\"76\" G=\"175\" B=\"80\"/>";
        const QByteArray other = normal + "<item name=\"NoWarningColor\" R=\"1\" G=\"2\" B=\"3\"/>";
        QTest::newRow("data: warning band")
            << Limits {} << 80.0 << 0ll << "Datavolume" << QByteArray() << QByteArray() << before
            << "80.00 IDS_UNIT_MB" << 80.0 * MB << 100.0 * MB;
        QTest::newRow("time: under the limit")
            << time << 0.0 << 46860ll << "Volume" << QByteArray() << QByteArray() << none
            << "13:01 IDS_UNIT_HOURS" << 46860.0 << 20.0 * 3600;
        QTest::newRow("last colour of a name wins")
            << Limits {} << 10.0 << 0ll << "Datavolume" << normal << other << QColor(1, 2, 3)
            << "10.00 IDS_UNIT_MB" << 10.0 * MB << 100.0 * MB;
        QTest::newRow("no colour list")
            << Limits {} << 10.0 << 0ll << "Datavolume" << QByteArray("<Color>") << QByteArray("<Colour>")
            << QColor(255, 255, 255, 0) << "10.00 IDS_UNIT_MB" << 10.0 * MB << 100.0 * MB;
    }

    void bars()
    {
        QFETCH(Limits, limits);
        QFETCH(double, usedMb);
        QFETCH(qint64, seconds);
        QFETCH(QString, bar);
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        QList<QPair<QByteArray, QByteArray>> edits;
        if (!from.isEmpty())
            edits = { { from, to }, { "</Color>", to == "<Colour>" ? "</Colour>" : "</Color>" } };
        QVERIFY(setUp(limits, edits));
        useToday(usedMb, seconds);
        auto* shown = widgetNamed<LwProgressBar>("NetInfoUIPlugin_Progress" + bar);
        QVERIFY(shown);
        QTEST(shown->color(), "color");
        QTEST(shown->text(), "text");
        QTEST(double(shown->value()), "value");
        QTEST(double(shown->maximum()), "maximum");
    }

    // The bar's own painting: fill clamped to the bar, border from the skin.
    void barPixels_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<QColor>("skinPixel");
        QTest::addColumn<int>("filledUpTo"); // last red column, -1 for none
        QTest::addColumn<QColor>("border");
        QTest::newRow("half") << 50.0 << QColor(Qt::white) << 49 << QColor(Qt::gray);
        QTest::newRow("empty") << 0.0 << QColor(Qt::darkBlue) << -1 << QColor(Qt::darkBlue);
        QTest::newRow("over the maximum") << 300.0 << QColor(Qt::darkBlue) << 99 << QColor(Qt::darkBlue);
    }

    void barPixels()
    {
        QFETCH(double, value);
        QFETCH(QColor, skinPixel);
        QFETCH(int, filledUpTo);
        TestHome home;
        QImage skin(4, 4, QImage::Format_RGB32);
        skin.fill(skinPixel);
        const QString skinPath = LwProgressBar::skinImagePath();
        QVERIFY(QDir().mkpath(QFileInfo(skinPath).path()) && skin.save(skinPath, "PNG"));

        LwProgressBar bar;
        bar.resize(100, 20);
        bar.setColor(Qt::red);
        bar.setValue(value);
        bar.setMaximum(100);
        const QImage image = bar.grab().toImage();
        QTEST(image.pixelColor(0, 10), "border");
        for (int x : { 10, 48, 60, 97 })
            QCOMPARE(image.pixelColor(x, 10), x <= filledUpTo ? QColor(Qt::red) : QColor(Qt::white));
    }

    // The older time-of-day rules the view relies on.
    void timeOfDay_data()
    {
        QTest::addColumn<QDate>("today");
        QTest::addColumn<QDate>("threeMonthsBack");
        QTest::addColumn<int>("seconds");
        QTest::addColumn<QString>("clock");
        QTest::newRow("31 May has no 31 February") << QDate(2026, 5, 31) << QDate() << 61 << "0:01";
        QTest::newRow("January goes to October")
            << QDate(2026, 1, 15) << QDate(2025, 10, 15) << 25 * 3600 << "1:00";
        QTest::newRow("milliseconds wrap past 596 hours")
            << QDate(2026, 4, 30) << QDate(2026, 1, 30) << 2200000 << "18:03";
    }

    void timeOfDay()
    {
        QFETCH(QDate, today);
        QFETCH(int, seconds);
        QTEST(TimeOfDay::threeMonthsBack(today), "threeMonthsBack");
        QTEST(TimeOfDay::hoursMinutes(seconds), "clock");
    }

    // Without recurrence the limit measures the look-back, whose key is the
    // seconds since midnight (both ends of the span are invalid times).
    void lookBackWithoutRecurrence()
    {
        QVERIFY(setUp({ "chkRecurrence=false" }));
        m_sdk->setHistory({ 85 * MB, 0, 0, 0, 0, 0 });
        const int before = QTime::currentTime().msecsSinceStartOfDay() / 1000;
        m_view->onStatisticsChanged(0, 0, 0, 0, QStringLiteral(" "));
        const int after = QTime::currentTime().msecsSinceStartOfDay() / 1000;
        QVERIFY(m_sdk->lastHistoryKey() >= quint64(before) && m_sdk->lastHistoryKey() <= quint64(after));
        QCOMPARE(takeWarning(), QStringLiteral("IDS_BOX_WARNBEFORE"));
    }
};

QTEST_MAIN(TestViewLimits)
#include "tst_view_limits.moc"
