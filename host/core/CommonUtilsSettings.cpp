#include "CommonUtils.h"

#include "HostLog.h"
#include "HostPaths.h"

#include <QSettings>

namespace {

QString settingKey(const QString& group, const QString& key)
{
    return group.isEmpty() ? key : group + QLatin1Char('/') + key;
}

} // namespace

void CommonUtils::SetSettings(const QString& group, const QString& key, const QVariant& value)
{
    if (key.isEmpty()) {
        qCWarning(lcHost, "CommonUtils: host setting in group \"%s\" has no key; not written",
            qUtf8Printable(group));
        return;
    }
    QSettings settings(HostPaths::hostSettingsFile(), QSettings::IniFormat);
    settings.setValue(settingKey(group, key), value);
    // The statistics service reads the file, not this process's cache.
    settings.sync();
    if (settings.status() != QSettings::NoError)
        qCWarning(lcHost, "CommonUtils: cannot write host setting %s to %s",
            qUtf8Printable(settingKey(group, key)), qUtf8Printable(settings.fileName()));
}

QVariant CommonUtils::GetSettings(const QString& group, const QString& key, const QVariant& defaultValue)
{
    if (key.isEmpty())
        return defaultValue;
    QSettings settings(HostPaths::hostSettingsFile(), QSettings::IniFormat);
    if (settings.status() != QSettings::NoError)
        qCWarning(
            lcHost, "CommonUtils: cannot read host settings from %s", qUtf8Printable(settings.fileName()));
    return settings.value(settingKey(group, key), defaultValue);
}
