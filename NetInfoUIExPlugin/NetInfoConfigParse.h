// Reader of NetInfoUIExConfig.xml: feature switches, units and formats of one
// group and module, plus the progress colours and limit entries of every
// module.
#pragma once

#include "NetInfoTypes.h"

#include <QStringList>
#include <QVector>

class QXmlStreamReader;

class NetInfoConfigParse
{
public:
    static NetInfoConfigParse* GetInstance();
    static void OnDestroy();
    ~NetInfoConfigParse();

    // 0 on success; 3 missing file, 6 XML error, 13 no device, 25 cannot open.
    // out is emptied first; entries read before an error stay in it.
    int GetSettingsFromXML(QString& group, QString& module, QVector<NetInfoConfig>& out);
    int readGroupInfo(QXmlStreamReader& reader, QString& group, QString& module, QVector<NetInfoConfig>& out);
    // context: category, wanted group, current group, wanted module, current module.
    void parseItem(QXmlStreamReader& reader, QStringList context, QVector<NetInfoConfig>& out);

    // Collected from every module and appended again on every parse.
    const QVector<NetInfoProgressColor>& progressColors() const { return m_vecProgressColor; }
    const QVector<NetInfoLimitCfg>& limitConfigs() const { return m_vecLimitCfg; }

    static QString configFilePath();

private:
    NetInfoConfigParse() = default;

    static NetInfoConfigParse* m_pNetInfoInstance;
    QVector<NetInfoProgressColor> m_vecProgressColor;
    QVector<NetInfoLimitCfg> m_vecLimitCfg;
};
