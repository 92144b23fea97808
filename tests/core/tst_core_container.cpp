#include "HostIds.h"
#include "HostServices.h"
#include "IMainFrameUIService.h"
#include "INotifyService.h"
#include "PluginContainer.h"
#include "Startup.h"

#include <QtTest>

#include <memory>

namespace {
const QString kId = QStringLiteral("11111111-2222-3333-4444-555555555555");
const QString kNotifyId = QString::fromLatin1(HostIds::NotifyServicePlugin);
const QString kMainFrameId = QString::fromLatin1(HostIds::MainFramePlugin);
}

class TestContainer : public QObject
{
    Q_OBJECT
private slots:
    void cleanup();
    void lookup_data();
    void lookup();
    void registerReplaces();
    void refusesBadRegistration();
    void startupContainer();
    void hostServicesRegister();
    void hostServicesLeaveReplacements();
    void hostServicesWithoutContainer();
    void notifyCarriesArguments();
};

void TestContainer::cleanup()
{
    Startup::SetPluginContainer(Startup::DefaultPluginContainer());
}

void TestContainer::lookup_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("deleteObject");
    QTest::addColumn<bool>("unregister");
    QTest::addColumn<bool>("found");     // by id and kind
    QTest::addColumn<bool>("available"); // by name

    QTest::newRow("found") << kId << 8209 << "Service" << false << false << true << true;
    QTest::newRow("wrong kind") << kId << 4113 << "Service" << false << false << false << true;
    QTest::newRow("unknown id, other name") << "no-such-id" << 8209 << "Other" << false << false << false << false;
    QTest::newRow("deleted object") << kId << 8209 << "Service" << true << false << false << false;
    QTest::newRow("unregistered") << kId << 8209 << "Service" << false << true << false << false;
}

void TestContainer::lookup()
{
    QFETCH(QString, id);
    QFETCH(int, kind);
    QFETCH(QString, name);
    QFETCH(bool, deleteObject);
    QFETCH(bool, unregister);
    QFETCH(bool, found);
    QFETCH(bool, available);

    PluginContainer container;
    auto object = std::make_unique<QObject>();
    QObject* raw = object.get();
    container.RegisterPlugin(kId, 8209, QStringLiteral("Service"), raw);
    if (deleteObject)
        object.reset();
    if (unregister)
        container.UnregisterPlugin(kId, 8209);

    QCOMPARE(container.GetPlugin(id, kind), found ? raw : nullptr);
    QCOMPARE(container.IsPluginAvailable(name) != 0, available);
}

void TestContainer::registerReplaces()
{
    PluginContainer container;
    QObject first, second;
    container.RegisterPlugin(kId, 1, QStringLiteral("First"), &first);
    container.RegisterPlugin(kId, 1, QStringLiteral("Second"), &second);

    QCOMPARE(container.GetPlugin(kId, 1), &second);
    QCOMPARE(container.IsPluginAvailable(QStringLiteral("First")), 0);
    QVERIFY(container.IsPluginAvailable(QStringLiteral("Second")));
}

void TestContainer::refusesBadRegistration()
{
    PluginContainer container;
    QObject object;
    container.RegisterPlugin(kId, 1, QStringLiteral("Good"), &object);

    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("refusing to register")));
    container.RegisterPlugin(kId, 1, QStringLiteral("Null"), nullptr);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("refusing to register")));
    container.RegisterPlugin(QString(), 1, QStringLiteral("NoId"), &object);

    QCOMPARE(container.GetPlugin(kId, 1), &object);
    QCOMPARE(container.IsPluginAvailable(QStringLiteral("NoId")), 0);
}

void TestContainer::startupContainer()
{
    QVERIFY(Startup::DefaultPluginContainer());
    QCOMPARE(Startup::GetPluginContainer(), Startup::DefaultPluginContainer());

    PluginContainer own;
    Startup::SetPluginContainer(&own);
    QCOMPARE(Startup::GetPluginContainer(), &own);

    Startup::SetPluginContainer(nullptr);
    QCOMPARE(Startup::GetPluginContainer(), nullptr);
}

void TestContainer::hostServicesRegister()
{
    IPluginContainer* container = Startup::GetPluginContainer();
    {
        HostServices services;
        QObject* notify = container->GetPlugin(kNotifyId, HostIds::NotifyServiceKind);
        QObject* mainFrame = container->GetPlugin(kMainFrameId, HostIds::MainFrameKind);
        QVERIFY(qobject_cast<INotifyService*>(notify));
        QVERIFY(qobject_cast<IMainFrameUIService*>(mainFrame));
        QCOMPARE(qobject_cast<INotifyService*>(notify), services.notifyService());
        QVERIFY(!qobject_cast<INotifyService*>(mainFrame));
        QVERIFY(container->IsPluginAvailable(QStringLiteral("NotifyService")));
        QVERIFY(container->IsPluginAvailable(QStringLiteral("MainFrame")));
        QCOMPARE(container->GetPlugin(kNotifyId, HostIds::MainFrameKind), nullptr);
    }
    QCOMPARE(container->GetPlugin(kNotifyId, HostIds::NotifyServiceKind), nullptr);
    QCOMPARE(container->GetPlugin(kMainFrameId, HostIds::MainFrameKind), nullptr);
    QCOMPARE(container->IsPluginAvailable(QStringLiteral("NotifyService")), 0);
}

void TestContainer::hostServicesLeaveReplacements()
{
    PluginContainer container;
    QObject replacement;
    {
        HostServices services(&container);
        container.RegisterPlugin(kNotifyId, HostIds::NotifyServiceKind, QStringLiteral("Other"), &replacement);
    }
    QCOMPARE(container.GetPlugin(kNotifyId, HostIds::NotifyServiceKind), &replacement);
    QCOMPARE(container.GetPlugin(kMainFrameId, HostIds::MainFrameKind), nullptr);
}

void TestContainer::hostServicesWithoutContainer()
{
    Startup::SetPluginContainer(nullptr);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("no plug-in container")));
    HostServices services;
    QCOMPARE(services.notifyService()->Notify(QStringLiteral("x"), 1, 0, 0), 0);
}

void TestContainer::notifyCarriesArguments()
{
    HostServices services;
    auto* notify = qobject_cast<INotifyService*>(
        Startup::GetPluginContainer()->GetPlugin(kNotifyId, HostIds::NotifyServiceKind));
    QVERIFY(notify);
    QSignalSpy spy(services.notifyService(), &NotifyService::notified);
    const quintptr panel = 0x7f0012345678; // a widget address; carried, never touched

    QCOMPARE(notify->Notify(QString::fromLatin1(HostIds::StatusPanelTarget), HostIds::EventStatusPanel, panel,
                            quintptr(7)),
             0);
    QCOMPARE(notify->Notify(QString::fromLatin1(HostIds::ConnectionTarget), HostIds::EventDisconnect, 0, 0), 0);

    QCOMPARE(spy.count(), 2);
    QCOMPARE(spy[0][0].toString(), QString::fromLatin1(HostIds::StatusPanelTarget));
    QCOMPARE(spy[0][1].toUInt(), HostIds::EventStatusPanel);
    QCOMPARE(spy[0][2].value<quintptr>(), panel);
    QCOMPARE(spy[0][3].value<quintptr>(), quintptr(7));
    QCOMPARE(spy[1][0].toString(), QString::fromLatin1(HostIds::ConnectionTarget));
    QCOMPARE(spy[1][1].toUInt(), HostIds::EventDisconnect);
}

QTEST_GUILESS_MAIN(TestContainer)
#include "tst_core_container.moc"
