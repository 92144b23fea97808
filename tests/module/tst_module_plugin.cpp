// The plug-in module through the host's eyes: the verification data the
// host checks, the service identifiers, and the shell's forwarding.
#include "TestHome.h"

#include "INotify.h"
#include "ISettingUIPlugin.h"
#include "IUIPlugin.h"

#include <QFile>
#include <QLibrary>
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
        QVERIFY(m_home->installDataFile(QStringLiteral("NetInfoUIExConfig.xml")));
        // The icons are drawn at build time, so they come from the build tree.
        for (int n = 1; n <= 9; ++n) {
            const QString name = QStringLiteral("Icon_0%1").arg(n);
            QFile icon(TestHome::buildHomeDir() + QStringLiteral("/plugins/NetInfoUIExPlugin/") + name);
            QVERIFY2(icon.open(QIODevice::ReadOnly), qPrintable(icon.fileName() + ": " + icon.errorString()));
            QVERIFY(m_home->writePluginFile(name, icon.readAll()));
        }
        m_loader.setFileName(kModulePath);
        QVERIFY2(m_loader.load(), qPrintable(m_loader.errorString()));
    }

    void cleanupTestCase()
    {
        if (IUIPlugin* plugin = ui())
            destroy(plugin);
        m_home.reset();
    }

    void verificationData()
    {
        QLibrary library(kModulePath);
        auto function
            = reinterpret_cast<const char* (*)()>(library.resolve("qt_plugin_query_verification_data"));
        QVERIFY2(function, qPrintable(library.errorString()));
        const QStringList lines = QString::fromLatin1(function()).split(QLatin1Char('\n'));
        QCOMPARE(lines.mid(0, 3),
            (QStringList { "pattern=QT_PLUGIN_VERIFICATION_DATA", "version=4.6.2", "debug=false" }));
        QCOMPARE(lines.size(), 4);
        // Architecture, system, compiler, configuration at least.
        const QStringList key = lines.last().split(QLatin1Char(' '));
        QVERIFY2(key.first().startsWith(QLatin1String("buildkey=")) && key.size() >= 4
                && !key.contains(QString()) && !key.contains(QLatin1String("unknown")),
            qPrintable(lines.last()));
    }

    void queryInterface_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<bool>("known");
        QTest::newRow("view service 4098") << 4098 << true;
        QTest::newRow("0") << 0 << false;
        QTest::newRow("4099") << 4099 << false;
    }

    void queryInterface()
    {
        QFETCH(int, id);
        QFETCH(bool, known);
        IUIPlugin* plugin = ui();
        QVERIFY(plugin);
        QObject sentinel;
        QObject* out = &sentinel;
        QCOMPARE(plugin->QueryInterface(id, &out), known);
        if (!known) {
            QCOMPARE(out, &sentinel);
            return;
        }
        QVERIFY(out && out != &sentinel);
        QCOMPARE(out->metaObject()->className(), "CNetInfoUIService");
        QVERIFY(qobject_cast<ISettingUIPlugin*>(out));
        // The service is a singleton: asking again gives the same one.
        QObject* again = nullptr;
        QVERIFY(plugin->QueryInterface(id, &again));
        QCOMPARE(again, out);
    }

    void forwardsToService()
    {
        IUIPlugin* plugin = initialised();
        INotify* notifier = notify();
        QVERIFY(plugin && notifier);
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
