// A sandboxed view: host home with the shipped configuration (switches
// turned off on request), drawn test icons and a scripted SDK.
#pragma once

#include "NetInfoUILogic.h"
#include "NetInfoUIService.h"

#include "TestHome.h"

#include "Sdk.h"
#include "simulated/SimulatedBackend.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QTreeWidget>
#include <QtTest>

#include <memory>

namespace viewtest {

// Left half red, right half blue, with a green block in the top-left corner:
// a horizontal mirror moves the green to the right and keeps it on top.
inline QImage asymmetricIcon()
{
    QImage image(16, 16, QImage::Format_ARGB32);
    image.fill(Qt::blue);
    QPainter painter(&image);
    painter.fillRect(0, 0, 8, 16, Qt::red);
    painter.fillRect(0, 0, 4, 4, Qt::green);
    return image;
}

inline QByteArray configWithSwitchesOff(const QStringList& off)
{
    QFile file(TestHome::sourceDataDir() + QStringLiteral("/NetInfoUIExConfig.xml"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QByteArray content = file.readAll();
    for (const QString& name : off)
        content.replace("name=\"" + name.toLatin1() + "\" value=\"true\"", "name=\"" + name.toLatin1() + "\" value=\"false\"");
    return content;
}

inline void expectRefusedResetConnection()
{
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("QObject::connect: No such slot .*onResetButtonClicked")));
}

class Fixture
{
public:
    // backend: null for a fresh simulated one.
    bool setUp(const QStringList& off = {}, std::unique_ptr<velt::StatisticsBackend> backend = {})
    {
        home = std::make_unique<TestHome>();
        if (!home->isValid() || !home->writePluginFile(QStringLiteral("NetInfoUIExConfig.xml"), configWithSwitchesOff(off)))
            return false;
        const QImage icon = asymmetricIcon();
        for (int i = 1; i <= 9; ++i) {
            if (!icon.save(home->pluginDir() + QStringLiteral("/Icon_0%1").arg(i), "PNG"))
                return false;
        }
        if (!backend)
            backend = std::make_unique<velt::SimulatedBackend>([] { return qint64(1700000000); });
        velt::Sdk::instance().setBackend(std::move(backend));
        sdk = velt::SimulatedBackend::current();
        view = CNetInfoUIService::instance();
        expectRefusedResetConnection();
        view->Init();
        return true;
    }

    void tearDown()
    {
        if (view)
            view->unSDKRegisterEvent();
        CNetInfoUIService::Destroy();
        view = nullptr;
        host.reset();
        home.reset();
    }

    // Shows the view inside a host widget, as the host's main window does.
    QTreeWidget* show(const QRect& rect = QRect(0, 0, 600, 400))
    {
        host = std::make_unique<QWidget>();
        host->resize(rect.size());
        QRect r = rect;
        view->ShowWindow(host.get(), r);
        host->show();
        return tree();
    }

    QTreeWidget* tree() const
    {
        return host ? host->findChild<QTreeWidget*>(QStringLiteral("NetInfoUIPlugin_WidgetTree")) : nullptr;
    }

    void emitLive(ulong up, ulong down, qulonglong sent, qulonglong received, const QString& time)
    {
        emit NetInfoUILogic::Instance()->statisticsChanged(up, down, sent, received, time);
    }

    std::unique_ptr<TestHome> home;
    std::unique_ptr<QWidget> host;
    velt::SimulatedBackend* sdk = nullptr;
    CNetInfoUIService* view = nullptr;
};

inline velt::StatisticsRecord record(quint64 sent, quint64 received, qint64 duration = 0)
{
    velt::StatisticsRecord r;
    r.bytesSent = sent;
    r.bytesReceived = received;
    r.duration = duration;
    return r;
}

} // namespace viewtest
