// The usage-limit settings file: whatever a load makes of it, saving that and
// loading again must give the same settings.
#include "FuzzHome.h"
#include "NetInfoSettingUILogic.h"

#include <QDir>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const FuzzHome home;
    static const bool ready = QDir().mkpath(home.path(QStringLiteral("data/netinfo")));
    if (!ready)
        std::abort();
    home.write(QStringLiteral("data/netinfo/DataUsageLimit.ini"),
        QByteArray(reinterpret_cast<const char*>(data), int(size)));

    NetInfoSettingUILogic* store = NetInfoSettingUILogic::GetInstance();
    store->GetUseLimitSetting();
    const QMap<QString, QString> first = store->useLimitSettings();
    store->saveUseLimitSetting();
    store->GetUseLimitSetting();
    const QMap<QString, QString>& second = store->useLimitSettings();
    // Only the known keys are saved; each must come back as it was loaded.
    for (auto it = second.cbegin(); it != second.cend(); ++it) {
        if (first.value(it.key()) != it.value()) {
            qFatal("settings round trip changed %s: '%s' became '%s'", qPrintable(it.key()),
                qPrintable(first.value(it.key())), qPrintable(it.value()));
        }
    }
    NetInfoSettingUILogic::Destroy();
    return 0;
}
