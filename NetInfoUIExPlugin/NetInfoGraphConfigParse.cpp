#include "NetInfoGraphConfigParse.h"

#include "NetInfoLog.h"

#include "CommonUtils.h"

#include <QFile>
#include <QXmlStreamReader>

namespace {
const char kSource[] = "NetInfoUIExPlugin/NetInfoGraphConfigParse";
}

NetInfoGraphConfigParse* NetInfoGraphConfigParse::m_pInstance = nullptr;

NetInfoGraphConfigParse* NetInfoGraphConfigParse::GetInstance()
{
    if (!m_pInstance)
        m_pInstance = new NetInfoGraphConfigParse;
    return m_pInstance;
}

void NetInfoGraphConfigParse::OnDestroy()
{
    delete m_pInstance;
    m_pInstance = nullptr;
}

QString NetInfoGraphConfigParse::profilePath()
{
    return CommonUtils::GetPluginLibraryPath() + QStringLiteral("/plugins/NetInfoUIExPlugin/")
        + QStringLiteral("TrendsCtrlProfile.xml");
}

QColor NetInfoGraphConfigParse::colour(const QString& text)
{
    // The profile's alpha was never honoured; the remaining #RRGGBB decides.
    const QString rest = QString(text).remove(1, 2);
    // Qt 6 would take eight digits as #AARRGGBB; the profile's reader only
    // ever knew 3, 6, 9 or 12 digits, so "#FF80FF0000" stays no colour.
    if (rest.startsWith(QLatin1Char('#')) && (rest.size() - 1) % 3 != 0)
        return QColor();
    return QColor::fromString(rest);
}

int NetInfoGraphConfigParse::GetSettingsFromXML(
    QVector<NetInfoColourConfig>& colours, QVector<NetInfoFontConfig>& fonts)
{
    NETINFO_TRACE("%s : %s: %s: Entered", NetInfoLog::now().constData(), kSource, "GetSettingsFromXML");

    const QString path = profilePath();
    if (!QFile::exists(path)) {
        NETINFO_WARN("File %s does not exist", qPrintable(path));
        return 3;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        NETINFO_WARN("open file Error : ");
        return 25;
    }

    QXmlStreamReader reader(&file);
    int result = 0;
    if (!reader.device()) {
        NETINFO_WARN(" %s : %s: %s: not bind with device Stream reader", NetInfoLog::now().constData(),
            kSource, "GetSettingsFromXML");
        result = 13;
    }
    while (result == 0 && !reader.atEnd()) {
        reader.readNext();
        if (reader.hasError()) {
            NETINFO_WARN("%s : %s: %s: Read Fle Error: n", NetInfoLog::now().constData(), kSource,
                "GetSettingsFromXML");
            result = 6;
            break;
        }
        if (reader.isStartElement() && reader.name() == QLatin1String("TrendsCtrlProfile")) {
            reader.readNext();
            result = readGroupInfo(reader, colours, fonts);
        }
    }

    file.close();
    NETINFO_TRACE("%s : %s: %s: Exit", NetInfoLog::now().constData(), kSource, "GetSettingsFromXML");
    return result;
}

int NetInfoGraphConfigParse::readGroupInfo(
    QXmlStreamReader& reader, QVector<NetInfoColourConfig>& colours, QVector<NetInfoFontConfig>& fonts)
{
    NETINFO_TRACE("%s : %s: %s: Entered", NetInfoLog::now().constData(), kSource, "readGroupInfo");
    int result = 0;
    // Every Color and Font after the root counts, however deeply nested. The
    // end is tested first: a reader that already stopped on an error when
    // handed over ends the walk quietly with 0.
    while (!reader.atEnd()) {
        if (reader.isStartElement()) {
            const QXmlStreamAttributes attributes = reader.attributes();
            const auto attribute = [&attributes](const char* name) {
                return attributes.value(QLatin1String(name)).toString();
            };
            if (reader.name() == QLatin1String("Color"))
                colours.append({ attribute("id"), attribute("color") });
            else if (reader.name() == QLatin1String("Font"))
                fonts.append({ attribute("id"), attribute("family"), attribute("style"), attribute("size") });
        }
        reader.readNext();
        if (reader.hasError()) {
            NETINFO_WARN(
                "GroupInfo Read Error %s : %s: %s:", NetInfoLog::now().constData(), kSource, "readGroupInfo");
            result = 6;
            break;
        }
    }
    NETINFO_TRACE("%s : %s: %s: Exit", NetInfoLog::now().constData(), kSource, "readGroupInfo");
    return result;
}
