// The plug-in's only door to the host's statistics service: turns the SDK's
// ticks into statisticsChanged, answers stored statistics, resets them, and
// holds the merged feature configuration.
#pragma once

#include "NetInfoTypes.h"

#include <QObject>
#include <QString>
#include <QVector>

#include <atomic>

class NetInfoConfigParse;

class NetInfoUILogic : public QObject
{
    Q_OBJECT
public:
    static NetInfoUILogic* Instance();
    static void Destroy();
    static void UnregSDK();
    // Handed to the SDK; runs on whatever thread the SDK ticks on.
    static int StatisticsEventCallBack(int event, void* data);

    ~NetInfoUILogic() override;

    // Registers the callback and loads the configuration; 0 on success.
    // Safe to call again: the configuration is rebuilt from the file.
    int Init();

    // These three return true when the SDK call FAILED; the output is then
    // left as it was.
    bool GetStatistics(_enNetInfoType type, NetInfoData& data);
    bool ResetStatistics();
    bool GetLastResetTime(QString& text);

    // The usage of the last key seconds; a negative key asks for 0.
    void GetHistrorySpecData(int key, NetInfoData& data);
    // Appends "hh:mm:ss" (hours may have more digits) to text.
    void convertTimeToString(long long seconds, QString& text);
    void OnDestroy();

    int getConfigData();
    void eraseCommonConfig(QString category, QVector<NetInfoConfig>& merged, QVector<NetInfoConfig> edition);
    bool IsFunctionEnable(QString name);
    void GetFluxUnitData(QVector<TagUnits>& units);
    void GetSpeedUnitData(QVector<TagUnits>& units);

    const QVector<NetInfoConfig>& mergedConfig() const { return m_vecConfig; }
    NetInfoConfigParse* configParser() const { return m_pConfigParse; }

signals:
    void statisticsChanged(unsigned long ulUpSpeed, unsigned long ulDownSpeed, qulonglong ullUpData,
        qulonglong ullDownData, QString stringTime);

private:
    NetInfoUILogic() = default;
    void appendUnits(const QString& category, QVector<TagUnits>& units, const char* function);

    // Read by the SDK callback on its own thread.
    static std::atomic<NetInfoUILogic*> m_pNetInfoInstance;
    QVector<NetInfoConfig> m_vecCustomizeConfig;
    NetInfoConfigParse* m_pConfigParse = nullptr;
    QVector<NetInfoConfig> m_vecConfig;
};
