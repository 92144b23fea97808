// The plug-in module through the host's eyes: loading, identifiers and
// addresses, the exported entry points, and the shell's forwarding.
#include "TestHome.h"

#include "INotify.h"
#include "ISettingUIPlugin.h"
#include "IUIPlugin.h"
// Only for static_cast arithmetic on the loaded object; nothing of the class
// is linked in.
#include "NetInfoUIPlugin.h"

#include <QFile>
#include <QJsonObject>
#include <QLibrary>
#include <QPluginLoader>
#include <QPointer>
#include <QRect>
#include <QTemporaryDir>
#include <QWidget>
#include <QtTest>

#include <memory>

namespace {

const char kModulePath[] = NETINFO_MODULE_PATH;

using InstanceFunction = QObject* (*)();
using VerificationFunction = const char* (*)();

enum class Part { Self, UIPlugin, Notify, None };

} // namespace

Q_DECLARE_METATYPE(Part)

class tst_ModulePlugin : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void loadsAsQtPlugin();
    void loadFailure_data();
    void loadFailure();

    void metacast_data();
    void metacast();
    void interfaceCastsAgree();

    void pluginInstance();
    void verificationData_data();
    void verificationData();

    void queryInterface_data();
    void queryInterface();
    void fixedAnswers_data();
    void fixedAnswers();
    void forwardsToService();
    void fallbacksAfterDestroy_data();
    void fallbacksAfterDestroy();
    void queryInterfaceRevivesService();
    void destroyTwice();

    void cleanupTestCase();

private:
    QObject* object();
    IUIPlugin* ui() { return qobject_cast<IUIPlugin*>(object()); }
    INotify* notify() { return qobject_cast<INotify*>(object()); }

    std::unique_ptr<TestHome> m_home;
    QPluginLoader m_loader;
};

QObject* tst_ModulePlugin::object()
{
    QObject* instance = m_loader.instance();
    if (!instance)
        qWarning("no plug-in instance: %s", qPrintable(m_loader.errorString()));
    return instance;
}

void tst_ModulePlugin::initTestCase()
{
    m_home = std::make_unique<TestHome>();
    QVERIFY(m_home->isValid());
    QVERIFY(m_home->installDataFile(QStringLiteral("NetInfoUIExConfig.xml")));
    // The icons are drawn at build time, so they come from the build tree.
    for (int n = 1; n <= 9; ++n) {
        const QString name = QStringLiteral("Icon_%1").arg(n, 2, 10, QLatin1Char('0'));
        QFile icon(TestHome::buildHomeDir() + QStringLiteral("/plugins/NetInfoUIExPlugin/") + name);
        QVERIFY2(icon.open(QIODevice::ReadOnly), qPrintable(icon.fileName() + ": " + icon.errorString()));
        QVERIFY(m_home->writePluginFile(name, icon.readAll()));
    }
    m_loader.setFileName(QString::fromLocal8Bit(kModulePath));
    QVERIFY2(m_loader.load(), qPrintable(m_loader.errorString()));
}

void tst_ModulePlugin::loadsAsQtPlugin()
{
    const QJsonObject meta = m_loader.metaData();
    QCOMPARE(meta.value(QLatin1String("IID")).toString(), QStringLiteral(IUIPlugin_iid));
    QCOMPARE(meta.value(QLatin1String("className")).toString(), QStringLiteral("CNetInfoUIPlugin"));
    QObject* instance = object();
    QVERIFY(instance);
    QCOMPARE(instance->metaObject()->className(), "CNetInfoUIPlugin");
}

void tst_ModulePlugin::loadFailure_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QByteArray>("content"); // null: the file does not exist
    QTest::addColumn<bool>("namesFile");

    QTest::newRow("missing") << QStringLiteral("libNetInfoUIExPlugin.so") << QByteArray() << false;
    QTest::newRow("not a library") << QStringLiteral("libNetInfoUIExPlugin.so")
                                   << QByteArray("this is not an ELF file\n") << true;
    QTest::newRow("empty") << QStringLiteral("libNetInfoUIExPlugin.so") << QByteArray("") << true;
}

void tst_ModulePlugin::loadFailure()
{
    QFETCH(QString, fileName);
    QFETCH(QByteArray, content);
    QFETCH(bool, namesFile);

    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString path = dir.filePath(fileName);
    if (!content.isNull()) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    QPluginLoader loader(path);
    QVERIFY(!loader.load());
    QVERIFY(!loader.instance());
    const QString error = loader.errorString();
    // Qt names the file only once it has found one; the host adds the path.
    if (namesFile)
        QVERIFY2(error.contains(path), qPrintable(error));
    QVERIFY2(!error.isEmpty() && error != QLatin1String("Unknown error"), qPrintable(error));
}

void tst_ModulePlugin::metacast_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<Part>("part");

    QTest::newRow("class name") << QByteArray("CNetInfoUIPlugin") << Part::Self;
    QTest::newRow("IUIPlugin") << QByteArray("IUIPlugin") << Part::UIPlugin;
    QTest::newRow("INotify") << QByteArray("INotify") << Part::Notify;
    QTest::newRow("IBasePlugin id") << QByteArray(IBasePlugin_iid) << Part::UIPlugin;
    QTest::newRow("INotify id") << QByteArray(INotify_iid) << Part::Notify;
    QTest::newRow("IUIPlugin id") << QByteArray(IUIPlugin_iid) << Part::UIPlugin;
    QTest::newRow("QObject") << QByteArray("QObject") << Part::Self;
    QTest::newRow("ISettingUIPlugin id") << QByteArray(ISettingUIPlugin_iid) << Part::None;
    QTest::newRow("IBaseInterface id") << QByteArray("com.vantok.skerrowdial.plugin.IBaseInterface") << Part::None;
    QTest::newRow("IDestroyEvent id") << QByteArray("com.vantok.skerrowdial.plugin.IDestroyEvent") << Part::None;
    QTest::newRow("plain IBasePlugin") << QByteArray("IBasePlugin") << Part::None;
    QTest::newRow("id in other case") << QByteArray("COM.VANTOK.SKERRowdial.plugin.IUIPlugin") << Part::None;
    QTest::newRow("empty") << QByteArray("") << Part::None;
}

void tst_ModulePlugin::metacast()
{
    QFETCH(QByteArray, name);
    QFETCH(Part, part);

    QObject* instance = object();
    QVERIFY(instance);
    auto* plugin = static_cast<CNetInfoUIPlugin*>(instance);
    void* expected = nullptr;
    switch (part) {
    case Part::Self: expected = instance; break;
    case Part::UIPlugin: expected = static_cast<IUIPlugin*>(plugin); break;
    case Part::Notify: expected = static_cast<INotify*>(plugin); break;
    case Part::None: break;
    }
    QCOMPARE(instance->qt_metacast(name.constData()), expected);
}

void tst_ModulePlugin::interfaceCastsAgree()
{
    QObject* instance = object();
    QVERIFY(instance);
    QCOMPARE(instance->qt_metacast(nullptr), nullptr);

    IUIPlugin* uiPlugin = qobject_cast<IUIPlugin*>(instance);
    IBasePlugin* basePlugin = qobject_cast<IBasePlugin*>(instance);
    INotify* notifyPart = qobject_cast<INotify*>(instance);
    QVERIFY(uiPlugin);
    QVERIFY(notifyPart);
    QCOMPARE(basePlugin, static_cast<IBasePlugin*>(uiPlugin));
    QCOMPARE(instance->qt_metacast(IBasePlugin_iid), instance->qt_metacast("IUIPlugin"));
    // Distinct sub-objects: a host that mixed them up would call the wrong table.
    QVERIFY(static_cast<void*>(notifyPart) != static_cast<void*>(uiPlugin));
    QVERIFY(qobject_cast<ISettingUIPlugin*>(instance) == nullptr);
}

void tst_ModulePlugin::pluginInstance()
{
    QLibrary library(QString::fromLocal8Bit(kModulePath));
    auto instanceFunction = reinterpret_cast<InstanceFunction>(library.resolve("qt_plugin_instance"));
    QVERIFY2(instanceFunction, qPrintable(library.errorString()));

    QObject* first = instanceFunction();
    QVERIFY(first);
    QCOMPARE(instanceFunction(), first);
    QCOMPARE(object(), first); // the loader hands out the same object

    // Mark the object: a new one may well reuse the address.
    first->setProperty("tst_marker", true);
    QPointer<QObject> guard(first);
    delete first;
    QVERIFY(guard.isNull());

    QObject* second = instanceFunction();
    QVERIFY(second);
    QVERIFY(!second->property("tst_marker").isValid());
    QCOMPARE(second->metaObject()->className(), "CNetInfoUIPlugin");
    QCOMPARE(instanceFunction(), second);
    QCOMPARE(object(), second);
}

void tst_ModulePlugin::verificationData_data()
{
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("expected"); // a trailing '*' matches any rest

    QTest::newRow("pattern") << 0 << QStringLiteral("pattern=QT_PLUGIN_VERIFICATION_DATA");
    QTest::newRow("version") << 1 << QStringLiteral("version=4.6.2");
    QTest::newRow("debug") << 2 << QStringLiteral("debug=false");
    QTest::newRow("buildkey") << 3 << QStringLiteral("buildkey=*");
}

void tst_ModulePlugin::verificationData()
{
    QFETCH(int, line);
    QFETCH(QString, expected);

    QLibrary library(QString::fromLocal8Bit(kModulePath));
    auto function = reinterpret_cast<VerificationFunction>(library.resolve("qt_plugin_query_verification_data"));
    QVERIFY2(function, qPrintable(library.errorString()));
    const QStringList lines = QString::fromLatin1(function()).split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), 4);
    if (expected.endsWith(QLatin1Char('*'))) {
        const QString prefix = expected.chopped(1);
        QVERIFY2(lines.at(line).startsWith(prefix), qPrintable(lines.at(line)));
        const QStringList fields = lines.at(line).mid(prefix.size()).split(QLatin1Char(' '));
        // Architecture, system, compiler, configuration at least.
        QVERIFY2(fields.size() >= 4 && !fields.contains(QString()), qPrintable(lines.at(line)));
        QVERIFY2(!fields.contains(QLatin1String("unknown")), qPrintable(lines.at(line)));
    } else {
        QCOMPARE(lines.at(line), expected);
    }
}

void tst_ModulePlugin::queryInterface_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<bool>("known");

    QTest::newRow("view service 4098") << 4098 << true;
    QTest::newRow("0") << 0 << false;
    QTest::newRow("4097") << 4097 << false;
    QTest::newRow("4099") << 4099 << false;
    QTest::newRow("container kind 8209") << 8209 << false;
    QTest::newRow("negative") << -4098 << false;
}

void tst_ModulePlugin::queryInterface()
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

void tst_ModulePlugin::fixedAnswers_data()
{
    QTest::addColumn<QString>("stage");
    QTest::newRow("before Init") << QStringLiteral("fresh");
    QTest::newRow("after Init") << QStringLiteral("init");
    QTest::newRow("after OnDestroy") << QStringLiteral("destroyed");
}

void tst_ModulePlugin::fixedAnswers()
{
    QFETCH(QString, stage);

    IUIPlugin* plugin = ui();
    QVERIFY(plugin);
    QObject* service = nullptr;
    QVERIFY(plugin->QueryInterface(4098, &service));
    if (stage == QLatin1String("init"))
        QCOMPARE(plugin->Init(), 1);
    else if (stage == QLatin1String("destroyed"))
        plugin->OnDestroy();

    QCOMPARE(plugin->IsAllowRelease(), 0);
    QCOMPARE(plugin->IsReady(), 1);
    QCOMPARE(plugin->GetPluginName(), QStringLiteral("NetInfoUIPlugin"));
    QVERIFY(plugin->GetCLSID().isNull());
    QCOMPARE(plugin->GetPluginType(), 0);
    QCOMPARE(plugin->GetVersion(), 0);
    QCOMPARE(plugin->GetLastError(), 0);
    QCOMPARE(plugin->ChangeLang(QStringLiteral("de")), 0);
    plugin->Release(); // must leave the object usable
    QCOMPARE(plugin->IsReady(), 1);

    plugin->UnSDKRegisterEvent();
    plugin->OnDestroy();
}

void tst_ModulePlugin::forwardsToService()
{
    IUIPlugin* plugin = ui();
    INotify* notifier = notify();
    QVERIFY(plugin && notifier);
    QObject* service = nullptr;
    QVERIFY(plugin->QueryInterface(4098, &service));

    // The service answers these where the shell's fallbacks would not.
    QCOMPARE(plugin->Init(), 1);
    QWidget parent;
    QRect rect(0, 0, 400, 300);
    QCOMPARE(plugin->ShowWindow(&parent, rect), 1);
    QVERIFY2(!parent.findChildren<QWidget*>().isEmpty(), "ShowWindow embedded nothing into the parent");
    QCOMPARE(notifier->Notify(0xFFFF, 0, 0), 0);
    QCOMPARE(notifier->Notify(1536, 1, 0), 0);
    QCOMPARE(notifier->Notify(258, 0, 0), 0);
    QRect fit(0, 0, 500, 320);
    plugin->FitSize(fit);
    QCOMPARE(plugin->Hide(), 1);
    // DoModal shows the view on its own, out of the host's window.
    QCOMPARE(plugin->DoModal(), 0);
    QVERIFY(parent.findChildren<QWidget*>().isEmpty());
    QCOMPARE(plugin->ShowWindow(&parent, rect), 1);

    plugin->UnSDKRegisterEvent();
    plugin->OnDestroy();
    // The view went with the service.
    QVERIFY(parent.findChildren<QWidget*>().isEmpty());
}

void tst_ModulePlugin::fallbacksAfterDestroy_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<int>("expected");

    QTest::newRow("Init") << QStringLiteral("Init") << 0;
    QTest::newRow("ShowWindow") << QStringLiteral("ShowWindow") << 0;
    QTest::newRow("DoModal") << QStringLiteral("DoModal") << -1;
    QTest::newRow("Hide") << QStringLiteral("Hide") << 0;
    QTest::newRow("FitSize") << QStringLiteral("FitSize") << 0;
    QTest::newRow("Notify known") << QStringLiteral("Notify1536") << -1;
    QTest::newRow("Notify unknown") << QStringLiteral("Notify") << -1;
}

void tst_ModulePlugin::fallbacksAfterDestroy()
{
    QFETCH(QString, operation);
    QFETCH(int, expected);

    IUIPlugin* plugin = ui();
    INotify* notifier = notify();
    QVERIFY(plugin && notifier);
    QObject* service = nullptr;
    QVERIFY(plugin->QueryInterface(4098, &service));
    QCOMPARE(plugin->Init(), 1);
    plugin->UnSDKRegisterEvent();
    plugin->OnDestroy();

    QWidget parent;
    QRect rect(0, 0, 200, 100);
    int result = 12345;
    if (operation == QLatin1String("Init"))
        result = plugin->Init();
    else if (operation == QLatin1String("ShowWindow"))
        result = plugin->ShowWindow(&parent, rect);
    else if (operation == QLatin1String("DoModal"))
        result = plugin->DoModal();
    else if (operation == QLatin1String("Hide"))
        result = plugin->Hide();
    else if (operation == QLatin1String("FitSize"))
        result = plugin->FitSize(rect);
    else if (operation == QLatin1String("Notify1536"))
        result = notifier->Notify(1536, 1, 0);
    else if (operation == QLatin1String("Notify"))
        result = notifier->Notify(0xFFFF, 0, 0);
    QCOMPARE(result, expected);
    // Nothing was built behind the host's back.
    QVERIFY(parent.findChildren<QWidget*>().isEmpty());
}

void tst_ModulePlugin::queryInterfaceRevivesService()
{
    IUIPlugin* plugin = ui();
    INotify* notifier = notify();
    QVERIFY(plugin && notifier);
    plugin->OnDestroy();
    QCOMPARE(notifier->Notify(0xFFFF, 0, 0), -1);

    QObject* service = nullptr;
    QVERIFY(plugin->QueryInterface(4098, &service));
    QVERIFY(service);
    // Forwarding is back: the service answers 0 where the fallback was -1.
    QCOMPARE(notifier->Notify(0xFFFF, 0, 0), 0);
    QCOMPARE(plugin->DoModal(), 0);
    plugin->OnDestroy();
}

void tst_ModulePlugin::destroyTwice()
{
    IUIPlugin* plugin = ui();
    QVERIFY(plugin);
    QObject* service = nullptr;
    QVERIFY(plugin->QueryInterface(4098, &service));
    QCOMPARE(plugin->Init(), 1);
    plugin->UnSDKRegisterEvent();
    plugin->OnDestroy();
    plugin->UnSDKRegisterEvent();
    plugin->OnDestroy();
    QCOMPARE(plugin->DoModal(), -1);
    QCOMPARE(plugin->IsReady(), 1);
}

void tst_ModulePlugin::cleanupTestCase()
{
    if (IUIPlugin* plugin = ui()) {
        plugin->UnSDKRegisterEvent();
        plugin->OnDestroy();
    }
    m_home.reset();
}

QTEST_MAIN(tst_ModulePlugin)
#include "tst_module_plugin.moc"
