// The plug-in module through the host's eyes: the service identifiers and
// the shell's forwarding.
#include "TestHome.h"

#include "INotify.h"
#include "IUIPlugin.h"

#include <QFile>
#include <QPluginLoader>
#include <QRect>
#include <QWidget>
#include <QtTest>

#include <memory>

namespace {
const QString kModulePath = QString::fromLocal8Bit(NETINFO_MODULE_PATH);
} // namespace

class tst_ModulePlugin : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestHome> m_home;
    QPluginLoader m_loader;

    QObject* object()
    {
        QObject* instance = m_loader.instance();
        if (!instance)
            qWarning("no plug-in instance: %s", qPrintable(m_loader.errorString()));
        return instance;
    }
    IUIPlugin* ui() { return qobject_cast<IUIPlugin*>(object()); }
    INotify* notify() { return qobject_cast<INotify*>(object()); }

    // The plug-in with its view service asked for and initialised.
    IUIPlugin* initialised()
    {
        IUIPlugin* plugin = ui();
        QObject* service = nullptr;
        return plugin && plugin->QueryInterface(4098, &service) && plugin->Init() == 1 ? plugin : nullptr;
    }

    static void destroy(IUIPlugin* plugin)
    {
        plugin->UnSDKRegisterEvent();
        plugin->OnDestroy();
    }

private slots:
    void initTestCase()
    {
        m_home = std::make_unique<TestHome>();
        QVERIFY(m_home->isValid());
        // The module's data and icons (drawn at build time) as the build tree has them.
        qputenv("NETINFO_LIBRARY_PATH", QFile::encodeName(TestHome::buildHomeDir()));
        m_loader.setFileName(kModulePath);
        QVERIFY2(m_loader.load(), qPrintable(m_loader.errorString()));
    }

    void cleanupTestCase()
    {
        if (IUIPlugin* plugin = ui())
            destroy(plugin);
        m_home.reset();
    }

    void forwardsToService()
    {
        IUIPlugin* plugin = initialised();
        INotify* notifier = notify();
        QVERIFY(plugin && notifier);
        QObject* other = nullptr;
        QVERIFY(!plugin->QueryInterface(4099, &other) && !other); // only the view service's id is known
        // The service answers these where the shell's fallbacks would not.
        QWidget parent;
        QRect rect(0, 0, 400, 300);
        QCOMPARE(plugin->ShowWindow(&parent, rect), 1);
        QVERIFY2(!parent.findChildren<QWidget*>().isEmpty(), "ShowWindow embedded nothing into the parent");
        QCOMPARE(notifier->Notify(0xFFFF, 0, 0), 0);
        QCOMPARE(notifier->Notify(1536, 1, 0), 0);
        QCOMPARE(notifier->Notify(258, 0, 0), 0);
        plugin->FitSize(rect);
        QCOMPARE(plugin->Hide(), 1);
        QVERIFY(parent.findChild<QWidget*>()->isHidden());
        // DoModal shows the view on its own, out of the host's window.
        QCOMPARE(plugin->DoModal(), 0);
        QVERIFY(parent.findChildren<QWidget*>().isEmpty());
        QCOMPARE(plugin->ShowWindow(&parent, rect), 1);
        destroy(plugin);
        // The view went with the service.
        QVERIFY(parent.findChildren<QWidget*>().isEmpty());
    }

    // Ended twice, the shell falls back to fixed answers and builds nothing
    // behind the host's back; asking for the service brings it back.
    void fallbacksAfterDestroy()
    {
        IUIPlugin* plugin = initialised();
        INotify* notifier = notify();
        QVERIFY(plugin && notifier);
        destroy(plugin);
        destroy(plugin);
        QWidget parent;
        QRect rect(0, 0, 200, 100);
        const QList<int> results { plugin->Init(), plugin->ShowWindow(&parent, rect), plugin->DoModal(),
            plugin->Hide(), plugin->FitSize(rect), notifier->Notify(1536, 1, 0),
            notifier->Notify(0xFFFF, 0, 0) };
        QCOMPARE(results, (QList<int> { 0, 0, -1, 0, 0, -1, -1 }));
        QVERIFY(parent.findChildren<QWidget*>().isEmpty());

        QObject* service = nullptr;
        QVERIFY(plugin->QueryInterface(4098, &service) && service);
        QCOMPARE(notifier->Notify(0xFFFF, 0, 0), 0);
        QCOMPARE(plugin->DoModal(), 0);
        destroy(plugin);
    }
};

QTEST_MAIN(tst_ModulePlugin)
#include "tst_module_plugin.moc"
