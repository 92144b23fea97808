// The user's usage-limit settings: the file DataUsageLimit.ini in the
// per-user data directory and an in-memory map of its keys. A fresh user
// file is built from the template that ships with the plug-in.
#pragma once

#include <QMap>
#include <QString>

#include <functional>

class NetInfoSettingUILogic
{
public:
    static NetInfoSettingUILogic* GetInstance();
    static void Destroy();

    // (Re)loads the map: the user file, then template keys the user file
    // lacks, then empty start keys where still missing.
    void GetUseLimitSetting();
    // Changes a key already in the map; never adds one.
    void updateUseLimitSetting(QString key, QString value);
    // Writes the 18 known keys to the user file, replacing it atomically,
    // and publishes the period start days to the host. beforeReplacing runs
    // once the new content is safely on the disk, just before it takes the
    // user file's place. False when the file could not be written: it then
    // holds what it held and nothing is published.
    bool saveUseLimitSetting(const std::function<void()>& beforeReplacing = {});
    // The per-user data directory with a trailing "/", created private if
    // needed.
    QString GetUserDataDirectory();
    // The user file's path, building the file from the template when it is
    // missing or empty; empty when neither the file nor the template exists.
    QString GetConfigFilePath();

    // Readers look keys up here; an absent key reads as a null string.
    QMap<QString, QString>& useLimitSettings() { return m_mapSettings; }

    static QString templateFilePath();

private:
    NetInfoSettingUILogic() = default;

    static NetInfoSettingUILogic* m_pInstance;
    QMap<QString, QString> m_mapSettings;
};
