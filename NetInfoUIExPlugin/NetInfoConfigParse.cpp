#include "NetInfoConfigParse.h"

#include "NetInfoLog.h"

#include "CommonUtils.h"

#include <QFile>
#include <QXmlStreamReader>

namespace {
const char* const kSource = "NetInfoUIExPlugin/NetInfoConfigParse";

enum ContextField { Category, WantedGroup, CurrentGroup, WantedModule, CurrentModule };
} // namespace

NetInfoConfigParse* NetInfoConfigParse::m_pNetInfoInstance = nullptr;

NetInfoConfigParse* NetInfoConfigParse::GetInstance()
{
    if (!m_pNetInfoInstance)
        m_pNetInfoInstance = new NetInfoConfigParse;
    return m_pNetInfoInstance;
}

void NetInfoConfigParse::OnDestroy()
{
    delete m_pNetInfoInstance;
    m_pNetInfoInstance = nullptr;
}

NetInfoConfigParse::~NetInfoConfigParse()
{
    // The bridge deletes the parser directly; forgetting it here keeps a later
    // GetInstance() from handing out a dead object.
    if (m_pNetInfoInstance == this)
        m_pNetInfoInstance = nullptr;
}

QString NetInfoConfigParse::configFilePath()
{
    return CommonUtils::GetPluginLibraryPath() + QStringLiteral("/plugins/NetInfoUIExPlugin/")
        + QStringLiteral("NetInfoUIExConfig.xml");
}

int NetInfoConfigParse::GetSettingsFromXML(QString& group, QString& module, QVector<NetInfoConfig>& out)
{
    out.clear();
    NETINFO_TRACE("%s : %s: %s: Entered", NetInfoLog::now().constData(), kSource, "GetSettingsFromXML");

    const QString path = configFilePath();
    if (!QFile::exists(path)) {
        NETINFO_WARN("File %s does not exist", qPrintable(path));
        return 3;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        NETINFO_WARN("Error open file: ");
        return 25;
    }

    QXmlStreamReader reader(&file);
    int result = 0;
    if (!reader.device()) {
        NETINFO_WARN("%s : %s: %s: Stream reader not bind with device", NetInfoLog::now().constData(),
            kSource, "GetSettingsFromXML");
        result = 13;
    }
    while (result == 0 && !reader.atEnd()) {
        reader.readNext();
        if (reader.hasError()) {
            NETINFO_WARN(
                "%s : %s: %s: Read Error: n", NetInfoLog::now().constData(), kSource, "GetSettingsFromXML");
            result = 6;
            break;
        }
        if (reader.isStartElement() && reader.name() == QLatin1String("veltdoc")) {
            reader.readNext();
            result = readGroupInfo(reader, group, module, out);
        }
    }

    file.close();
    NETINFO_TRACE("%s : %s: %s: Exited", NetInfoLog::now().constData(), kSource, "GetSettingsFromXML");
    return result;
}

int NetInfoConfigParse::readGroupInfo(
    QXmlStreamReader& reader, QString& group, QString& module, QVector<NetInfoConfig>& out)
{
    QString currentGroup;
    QString currentModule;
    QString currentCategory;
    static const QStringList categories
        = { QStringLiteral("fluxunit"), QStringLiteral("speedunit"), QStringLiteral("format"),
              QStringLiteral("function"), QStringLiteral("Limit"), QStringLiteral("Color") };
    for (;;) {
        if (reader.atEnd())
            return 0;
        if (reader.isStartElement()) {
            const QStringView name = reader.name();
            if (name == QLatin1String("group")) {
                currentGroup = reader.attributes().value(QLatin1String("name")).toString();
            } else if (name == QLatin1String("module")) {
                currentModule = reader.attributes().value(QLatin1String("name")).toString();
            } else if (categories.contains(name)) {
                currentCategory = name.toString();
            } else if (name == QLatin1String("item")) {
                parseItem(reader, { currentCategory, group, currentGroup, module, currentModule }, out);
            }
        }
        reader.readNext();
        if (reader.hasError()) {
            NETINFO_WARN(
                "GroupInfo Read Error %s : %s: %s:", NetInfoLog::now().constData(), kSource, "readGroupInfo");
            return 6;
        }
    }
}

void NetInfoConfigParse::parseItem(QXmlStreamReader& reader, QStringList context, QVector<NetInfoConfig>& out)
{
    const QXmlStreamAttributes attributes = reader.attributes();
    const auto attribute
        = [&attributes](const char* name) { return attributes.value(QLatin1String(name)).toString(); };
    const QString& category = context.at(Category);

    if (category == QLatin1String("Color")) {
        const QColor color(attribute("R").toInt(), attribute("G").toInt(), attribute("B").toInt(), 255);
        m_vecProgressColor.append({ category, attribute("name"), color });
    } else if (category == QLatin1String("Limit")) {
        m_vecLimitCfg.append({ category, attribute("name"), attribute("value"), attribute("value1") });
    } else if (context.at(WantedGroup) == context.at(CurrentGroup)
        && context.at(WantedModule) == context.at(CurrentModule)) {
        out.append(
            { category, attribute("name"), attribute("value"), attribute("type"), attribute("langResID") });
    }
}
