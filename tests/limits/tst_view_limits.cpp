// Usage limits in a sandboxed host home with the simulated SDK: the warning
// scenarios, the bars' colours and pixels, the percentage boundaries and the
// time-of-day rules the look-back depends on.
#include "LwProgressBar.h"
#include "NetInfoUIService.h"
#include "TimeOfDay.h"
#include "WarnPrompt.h"

#include "HostIds.h"
#include "HostServices.h"
#include "Sdk.h"
#include "TestHome.h"
#include "simulated/SimulatedBackend.h"

#include <QtTest>
#include <QtWidgets>

#include <memory>

namespace {

constexpr quint64 MB = 1024 * 1024;

// A user limit file: daily recurrence, the given limit switches and figures.
QByteArray limitFile(const QMap<QString, QString>& overrides)
{
    QMap<QString, QString> keys { { "chkRecurrence", "true" }, { "radioDaily", "true" },
        { "radioWeekly", "false" }, { "radioMonthly", "false" }, { "chkVolume", "true" },
        { "chkTimeVolume", "false" }, { "SizeVolume", "100" }, { "SizeTimeVolume", "10" },
        { "chkWarnbefore", "true" }, { "chkWarnAfter", "true" }, { "WarnBeforPercentage", "80" } };
    for (auto it = overrides.cbegin(); it != overrides.cend(); ++it)
        keys[it.key()] = it.value();
    QByteArray text = "[DataUsageLimit]\n";
    for (auto it = keys.cbegin(); it != keys.cend(); ++it)
        text += it.key().toUtf8() + '=' + it.value().toUtf8() + '\n';
    return text;
}

} // namespace

using Limits = QMap<QString, QString>;

class TestViewLimits : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestHome> m_home;
    velt::SimulatedBackend* m_sdk = nullptr;
    CNetInfoUIService* m_view = nullptr;

    bool setUp(const Limits& limits, const QList<QPair<QByteArray, QByteArray>>& edits = {})
    {
        m_home = std::make_unique<TestHome>();
        if (!m_home->isValid() || !m_home->writeUserFile("DataUsageLimit.ini", limitFile(limits))
            || !m_home->installConfig({}, edits) || !m_home->installDataFile("TrendsCtrlProfile.xml"))
            return false;
        auto backend = std::make_unique<velt::SimulatedBackend>([] { return qint64(1700000000); });
        m_sdk = backend.get();
        velt::Sdk::instance().setBackend(std::move(backend));
        m_view = CNetInfoUIService::instance();
        // The two refused connections the view keeps on purpose.
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("No such slot .*onResetButtonClicked"));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("No such signal .*ResetButtonClicked"));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("sender name"));
        m_view->Init();
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
        CNetInfoUIService::Destroy();
        m_view = nullptr;
        velt::Sdk::instance().setBackend(nullptr);
        m_home.reset();
    }

    // What the dialog shows as the view feeds the policy; the rules
    // themselves are the policy's own suite's. Each step is a usage in MB,
    // "time " and seconds, or "connect" (host event 1536 with status 1).
    void warnings_data()
    {
        QTest::addColumn<Limits>("limits");
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<QStringList>("shown");

        QTest::newRow("a new connection re-arms")
            << Limits {} << QStringList { "85", "86", "connect", "87", "100" }
            << QStringList { "IDS_BOX_WARNBEFORE", "", "", "IDS_BOX_WARNBEFORE", "IDS_BOX_WARNAFTER" };
        QTest::newRow("time limit reached warns once")
            << Limits { { "chkVolume", "false" }, { "chkTimeVolume", "true" }, { "SizeTimeVolume", "1" } }
            << QStringList { "time 3599", "time 3600", "time 4000" }
            << QStringList { "", "IDS_BOX_TIMEWARNAFTER", "" };
    }

    void warnings()
    {
        QFETCH(Limits, limits);
        QFETCH(QStringList, steps);
        QFETCH(QStringList, shown);
        QVERIFY(setUp(limits));
        QStringList seen;
        for (const QString& step : steps) {
            if (step == QLatin1String("connect")) {
                m_view->Notify(HostIds::MsgConnectionStatus, HostIds::StatusConnected, 0);
            } else if (step.startsWith(QLatin1String("time "))) {
                useToday(0, step.mid(5).toLongLong());
            } else {
                useToday(step.toDouble());
            }
            seen << takeWarning();
        }
        QCOMPARE(seen, shown);
    }

    // A bar after a tick: the configured colour, the formatted text, value
    // and maximum (bytes for data, seconds for time).
    void bars_data()
    {
        QTest::addColumn<Limits>("limits");
        QTest::addColumn<double>("usedMb");
        QTest::addColumn<qint64>("seconds");
        QTest::addColumn<QString>("bar");
        QTest::addColumn<QColor>("color");
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("value");
        QTest::addColumn<double>("maximum");
        const QColor none(76, 175, 80), before(255, 167, 38);
        const Limits time { { "chkTimeVolume", "true" }, { "SizeTimeVolume", "20" } };
        const qint64 hour = 3600;
        QTest::newRow("data: warning band") << Limits {} << 80.0 << 0ll << "Datavolume" << before
                                            << "80.00 IDS_UNIT_MB" << 80.0 * MB << 100.0 * MB;
        QTest::newRow("time: under the limit")
            << time << 0.0 << 46860ll << "Volume" << none << "13:01 IDS_UNIT_HOURS" << 46860.0 << 20.0 * hour;
    }

    void bars()
    {
        QFETCH(Limits, limits);
        QFETCH(double, usedMb);
        QFETCH(qint64, seconds);
        QFETCH(QString, bar);
        QVERIFY(setUp(limits));
        useToday(usedMb, seconds);
        auto* shown = widgetNamed<LwProgressBar>("NetInfoUIPlugin_Progress" + bar);
        QVERIFY(shown);
        QTEST(shown->color(), "color");
        QTEST(shown->text(), "text");
        QTEST(double(shown->value()), "value");
        QTEST(double(shown->maximum()), "maximum");
    }

    // Colours come from the feature file by name: the last entry of a name
    // wins, and a file without colours paints in transparent white.
    void barColourLookup_data()
    {
        QTest::addColumn<QByteArray>("from");
        QTest::addColumn<QByteArray>("to");
        QTest::addColumn<QColor>("color");
        const QByteArray normal = "<item name=\"NoWarningColor\" R=\"76\" G=\"175\" B=\"80\"/>";
        QTest::newRow("last match wins")
            << normal << normal + "<item name=\"NoWarningColor\" R=\"1\" G=\"2\" B=\"3\"/>"
            << QColor(1, 2, 3);
        QTest::newRow("no colour list")
            << QByteArray("<Color>") << QByteArray("<Colour>") << QColor(255, 255, 255, 0);
    }

    void barColourLookup()
    {
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        QVERIFY(setUp({}, { { from, to }, { "</Color>", to == "<Colour>" ? "</Colour>" : "</Color>" } }));
        useToday(10);
        auto* data = widgetNamed<LwProgressBar>("NetInfoUIPlugin_ProgressDatavolume");
        QVERIFY(data);
        QTEST(data->color(), "color");
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
        QFETCH(QColor, border);
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
        QCOMPARE(image.pixelColor(0, 10), border);
        for (int x : { 10, 48, 60, 97 }) {
            const QColor expected = x <= filledUpTo ? QColor(Qt::red) : QColor(Qt::white);
            QVERIFY2(image.pixelColor(x, 10) == expected, qPrintable(QStringLiteral("column %1").arg(x)));
        }
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
        QVERIFY(setUp({ { "chkRecurrence", "false" } }));
        m_sdk->setHistory({ 85 * MB, 0, 0, 0, 0, 0 });
        const int before = QTime::currentTime().msecsSinceStartOfDay() / 1000;
        m_view->onStatisticsChanged(0, 0, 0, 0, QStringLiteral(" "));
        const int after = QTime::currentTime().msecsSinceStartOfDay() / 1000;
        QVERIFY2(m_sdk->lastHistoryKey() >= quint64(before) && m_sdk->lastHistoryKey() <= quint64(after),
            qPrintable(QString::number(m_sdk->lastHistoryKey())));
        QCOMPARE(takeWarning(), QStringLiteral("IDS_BOX_WARNBEFORE"));
    }

    // Disconnect is offered only while connected, fires once, and the
    // choice does not carry over; the request reaches the host as 1537.
    void disconnectFromWarning()
    {
        HostServices services;
        QSignalSpy notified(services.notifyService(), &NotifyService::notified);
        QVERIFY(setUp({}));
        useToday(85);
        ExtendDialog* dialog = m_view->warnPrompt()->dialog();
        QVERIFY(dialog);
        auto* box = dialog->findChild<QCheckBox*>("WarnDlg_CheckBox");
        auto* ok = dialog->findChild<QPushButton*>("WarnDlg_ButtonOk");
        QVERIFY(box && ok && !box->isEnabled());

        m_view->Notify(HostIds::MsgConnectionStatus, HostIds::StatusConnected, 0);
        QVERIFY(box->isEnabled());
        box->click();
        ok->click();
        QVERIFY(!dialog->isVisible() && !box->isChecked());
        ok->click();
        QList<QString> disconnects;
        for (const QList<QVariant>& event : notified)
            if (event.at(1).toUInt() == HostIds::EventDisconnect)
                disconnects << event.at(0).toString();
        QCOMPARE(disconnects, QList<QString> { HostIds::ConnectionTarget });
    }
};

QTEST_MAIN(TestViewLimits)
#include "tst_view_limits.moc"
