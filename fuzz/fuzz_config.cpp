// The feature and unit configuration as the bridge reads it: the common
// module, then an edition's module of the same group.
#include "FuzzHome.h"
#include "NetInfoConfigParse.h"

#include <QDir>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const FuzzHome home;
    static const bool ready = QDir().mkpath(home.path(QStringLiteral("plugins/NetInfoUIExPlugin")));
    if (!ready)
        std::abort();
    home.write(QStringLiteral("plugins/NetInfoUIExPlugin/NetInfoUIExConfig.xml"),
        QByteArray(reinterpret_cast<const char*>(data), int(size)));

    NetInfoConfigParse* parser = NetInfoConfigParse::GetInstance();
    for (const char* module : { "common", "datacard" }) {
        QString group = QStringLiteral("customize");
        QString name = QLatin1String(module);
        QVector<NetInfoConfig> entries;
        const int result = parser->GetSettingsFromXML(group, name, entries);
        if (result != 0 && result != 6)
            std::abort(); // the file exists and opens: only success or an XML error are possible
    }
    NetInfoConfigParse::OnDestroy();
    return 0;
}
