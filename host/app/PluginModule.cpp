#include "PluginModule.h"

#include "CommonUtils.h"
#include "INotify.h"
#include "IUIPlugin.h"

#include <QDir>
#include <QFileInfo>
#include <QImageReader>

QString PluginModule::defaultDirectory()
{
    return CommonUtils::GetPluginLibraryPath() + QStringLiteral("/plugins/NetInfoUIExPlugin");
}

QString PluginModule::moduleFileName()
{
    return QStringLiteral("libNetInfoUIExPlugin.so");
}

QStringList PluginModule::requiredDataFiles()
{
    QStringList files { QStringLiteral("NetInfoUIExConfig.xml") };
    for (int n = 1; n <= 9; ++n)
        files << QStringLiteral("Icon_%1").arg(n, 2, 10, QLatin1Char('0'));
    return files;
}

PluginModule::PluginModule(const QString& directory)
    : m_strDirectory(directory)
{ }

// The module is never unloaded: the plug-in answers IsAllowRelease() with 0,
// and its objects may still be referenced while the application winds down.
PluginModule::~PluginModule() = default;

bool PluginModule::checkDataFiles()
{
    const QDir dir(m_strDirectory);
    for (const QString& name : requiredDataFiles()) {
        const QString path = dir.filePath(name);
        const QFileInfo info(path);
        if (!info.exists()) {
            m_strError = QStringLiteral("%1: file is missing").arg(path);
            return false;
        }
        if (!info.isReadable()) {
            m_strError = QStringLiteral("%1: file is not readable").arg(path);
            return false;
        }
        if (name.startsWith(QLatin1String("Icon_"))) {
            // The icons carry no extension, so the reader goes by content.
            QImageReader reader(path);
            reader.setDecideFormatFromContent(true);
            if (reader.read().isNull()) {
                m_strError = QStringLiteral("%1: not a readable image (%2)").arg(path, reader.errorString());
                return false;
            }
        }
    }
    return true;
}

bool PluginModule::load()
{
    m_strError.clear();
    if (!checkDataFiles())
        return false;

    const QString path = QDir(m_strDirectory).filePath(moduleFileName());
    m_loader.setFileName(path);
    QObject* instance = m_loader.instance();
    if (!instance) {
        m_strError = QStringLiteral("%1: %2").arg(path, m_loader.errorString());
        return false;
    }
    m_pUIPlugin = qobject_cast<IUIPlugin*>(instance);
    m_pNotify = qobject_cast<INotify*>(instance);
    if (!m_pUIPlugin || !m_pNotify) {
        m_strError = QStringLiteral("%1: the plug-in object (%2) does not implement %3")
                         .arg(path, QString::fromLatin1(instance->metaObject()->className()),
                             QString::fromLatin1(!m_pUIPlugin ? IUIPlugin_iid : INotify_iid));
        m_pUIPlugin = nullptr;
        m_pNotify = nullptr;
        return false;
    }
    m_pInstance = instance;
    return true;
}
