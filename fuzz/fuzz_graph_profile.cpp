// The speed graph's appearance file, and every colour text it names.
#include "FuzzHome.h"
#include "NetInfoGraphConfigParse.h"

#include <QDir>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const FuzzHome home;
    static const bool ready = QDir().mkpath(home.path(QStringLiteral("plugins/NetInfoUIExPlugin")));
    if (!ready)
        std::abort();
    const QByteArray bytes(reinterpret_cast<const char*>(data), int(size));
    home.write(QStringLiteral("plugins/NetInfoUIExPlugin/TrendsCtrlProfile.xml"), bytes);

    QVector<NetInfoColourConfig> colours;
    QVector<NetInfoFontConfig> fonts;
    const int result = NetInfoGraphConfigParse::GetInstance()->GetSettingsFromXML(colours, fonts);
    if (result != 0 && result != 6)
        std::abort();
    for (const NetInfoColourConfig& colour : std::as_const(colours)) {
        const QColor parsed = NetInfoGraphConfigParse::colour(colour.strColor);
        if (parsed.isValid() && parsed.alpha() != 255)
            std::abort(); // the alpha pair is dropped: a valid colour is opaque
    }
    // The raw input as one colour text too: the colour reader sees every shape.
    const QColor direct = NetInfoGraphConfigParse::colour(QString::fromUtf8(bytes.left(64)));
    if (direct.isValid() && direct.alpha() != 255)
        std::abort();
    NetInfoGraphConfigParse::OnDestroy();
    return 0;
}
