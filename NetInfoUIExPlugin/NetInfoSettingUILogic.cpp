#include "NetInfoSettingUILogic.h"

#include "AtomicFile.h"
#include "NetInfoSettingTrace.h"

#include "CommonUtils.h"
#include "HostPaths.h"

#include <QDate>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>

#include <sys/stat.h>

namespace {

const char kSource[] = "NetInfoUIExPlugin/NetInfoSettingUILogic";
const QString kFileName = QStringLiteral("DataUsageLimit.ini");
const QString kTempFileName = QStringLiteral("tempDataUsageLimit.ini");

// The file's vocabulary in the order it is written; the spellings are those
// of existing files and must not be corrected.
const char* const kSavedKeys[] = { "chkRecurrence", "radioDaily", "radioWeekly", "radioMonthly", "chkVolume",
    "chkTimeVolume", "SizeVolume", "SizeTimeVolume", "chkWarnbefore", "chkWarnAfter", "ShowDataWarnAfter",
    "ShowDataWarnBefor", "ShowTimeWarnBefor", "ShowTimeWarnAfter", "startdate", "startweekdate",
    "startmonthdate", "WarnBeforPercentage" };

// The settings say how much the user pays for and when: folders made for
// them are private, as per-user data folders are meant to be.
bool makePrivatePath(const QString& dir)
{
    const QFileInfo info(dir);
    if (info.isDir())
        return true;
    if (info.exists() || !makePrivatePath(info.absolutePath()))
        return false;
    const QByteArray path = QFile::encodeName(dir);
    return (::mkdir(path.constData(), 0700) == 0 && ::chmod(path.constData(), 0700) == 0)
        || QFileInfo(dir).isDir();
}

bool isMissingOrEmpty(const QString& path)
{
    const QFileInfo info(path);
    return !info.exists() || info.size() == 0;
}

// Reads the lines after the header; false when the file cannot be opened.
bool readBody(const QString& path, QStringList& lines)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return false;
    QTextStream in(&file);
    in.setEncoding(QStringConverter::Utf8);
    in.readLine();
    while (!in.atEnd())
        lines << in.readLine();
    return true;
}

} // namespace

NetInfoSettingUILogic* NetInfoSettingUILogic::m_pInstance = nullptr;

NetInfoSettingUILogic* NetInfoSettingUILogic::GetInstance()
{
    NETINFO_SETTING_TRACE(kSource);
    if (!m_pInstance)
        m_pInstance = new NetInfoSettingUILogic;
    return m_pInstance;
}

void NetInfoSettingUILogic::Destroy()
{
    NETINFO_SETTING_TRACE(kSource);
    // Cleared as well, so that a plug-in brought up again after a tear-down
    // gets a fresh store instead of a dangling one.
    delete m_pInstance;
    m_pInstance = nullptr;
}

QString NetInfoSettingUILogic::templateFilePath()
{
    return CommonUtils::GetPluginLibraryPath() + QStringLiteral("/plugins/NetInfoUIExPlugin/") + kFileName;
}

QString NetInfoSettingUILogic::GetUserDataDirectory()
{
    NETINFO_SETTING_TRACE(kSource);
    const QString dir = HostPaths::userDataDir();
    if (!makePrivatePath(dir))
        NETINFO_WARN("%s: cannot create the data directory %s", kSource, qUtf8Printable(dir));
    return dir + QLatin1Char('/');
}

QString NetInfoSettingUILogic::GetConfigFilePath()
{
    NETINFO_SETTING_TRACE(kSource);
    const QString directory = GetUserDataDirectory();
    QString path = directory + kFileName;
    if (!isMissingOrEmpty(path))
        return path;

    const QString today = QDate::currentDate().toString(QStringLiteral("yyyy-MM-dd"));
    const QString templatePath = templateFilePath();
    if (!QFileInfo::exists(templatePath)) {
        NETINFO_WARN("%s: no settings template at %s", kSource, qUtf8Printable(templatePath));
        return QString();
    }
    QFile templateFile(templatePath);
    if (!templateFile.open(QIODevice::ReadOnly | QIODevice::Text)) {
        NETINFO_WARN("%s: cannot open the settings template %s: %s", kSource, qUtf8Printable(templatePath),
            qUtf8Printable(templateFile.errorString()));
        return path;
    }
    QTextStream in(&templateFile);
    in.setEncoding(QStringConverter::Utf8);
    QString content;
    while (!in.atEnd())
        content += in.readLine() + QLatin1Char('\n');
    // The start lines come last so that they win over any in the template.
    content += QStringLiteral("startdate=") + today + QStringLiteral("\nstartweekdate=0\nstartmonthdate=0");

    QString error;
    if (!AtomicFile::replace(directory + kTempFileName, path, content.toUtf8(), &error))
        NETINFO_WARN("%s: cannot create the settings file: %s", kSource, qUtf8Printable(error));
    return path;
}

void NetInfoSettingUILogic::GetUseLimitSetting()
{
    NETINFO_SETTING_TRACE(kSource);
    m_mapSettings.clear();
    QString path = GetUserDataDirectory() + kFileName;
    if (isMissingOrEmpty(path))
        path = GetConfigFilePath();

    QStringList lines;
    if (!path.isEmpty() && readBody(path, lines)) {
        for (const QString& line : std::as_const(lines)) {
            const QStringList parts = line.split(QLatin1Char('='), Qt::KeepEmptyParts);
            if (parts.size() == 2)
                m_mapSettings[parts[0]] = parts[1];
        }
    }
    // Keys that a newer template adds to an older user file.
    lines.clear();
    if (readBody(templateFilePath(), lines)) {
        for (const QString& line : std::as_const(lines)) {
            const QStringList parts = line.split(QLatin1Char('='), Qt::KeepEmptyParts);
            if (parts.size() >= 2 && !m_mapSettings.contains(parts[0]))
                m_mapSettings.insert(parts[0], parts[1]);
        }
    }
    for (const char* key : { "startdate", "startmonthdate", "startweekdate" }) {
        if (!m_mapSettings.contains(QLatin1String(key)))
            m_mapSettings.insert(QLatin1String(key), QString());
    }
}

void NetInfoSettingUILogic::updateUseLimitSetting(QString key, QString value)
{
    NETINFO_SETTING_TRACE(kSource);
    const auto it = m_mapSettings.find(key);
    if (it != m_mapSettings.end())
        *it = value;
}

bool NetInfoSettingUILogic::saveUseLimitSetting(const std::function<void()>& beforeReplacing)
{
    NETINFO_SETTING_TRACE(kSource);
    const QString directory = GetUserDataDirectory();
    const QString path = directory + kFileName;

    // Written as UTF-8 because that is how the file is read back; for the
    // ASCII the file holds this is byte for byte what any locale would give.
    QString content = QStringLiteral("[uselimit]\n");
    for (const char* key : kSavedKeys)
        content += QLatin1String(key) + QLatin1Char('=') + m_mapSettings.value(QLatin1String(key))
            + QLatin1Char('\n');

    AtomicFile file(directory + kTempFileName, path);
    if (!file.write(content.toUtf8())) {
        NETINFO_WARN("%s: settings not saved, %s kept as it was: %s", kSource, qUtf8Printable(path),
            qUtf8Printable(file.errorString()));
        return false;
    }
    if (beforeReplacing)
        beforeReplacing();
    if (!file.commit()) {
        NETINFO_WARN("%s: settings not saved, %s kept as it was: %s", kSource, qUtf8Printable(path),
            qUtf8Printable(file.errorString()));
        return false;
    }
    // Published only once the file holds them, so the statistics service
    // and the file never disagree about the period.
    CommonUtils::SetSettings(QStringLiteral("uselimit"), QStringLiteral("startmonthdate"),
        m_mapSettings.value(QStringLiteral("startmonthdate")));
    CommonUtils::SetSettings(QStringLiteral("uselimit"), QStringLiteral("startweekdate"),
        m_mapSettings.value(QStringLiteral("startweekdate")));
    return true;
}
