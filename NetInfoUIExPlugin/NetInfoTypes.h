// Records shared by the plug-in's classes.
#pragma once

#include "TagUnits.h"

#include <QColor>
#include <QString>
#include <QVector>

// One statistics record.
struct NetInfoData
{
    unsigned long long ullUpData = 0; // bytes sent
    unsigned long long ullDownData = 0; // bytes received
    unsigned long long ullDuration = 0; // connection time in seconds
};

// The stored period asked of the bridge.
enum _enNetInfoType { NETINFO_DAILY = 0, NETINFO_WEEKLY = 1, NETINFO_MONTHLY = 2, NETINFO_YEARLY = 3 };

// One entry of the feature configuration.
struct NetInfoConfig
{
    QString strCategory;
    QString strName;
    QString strValue;
    QString strType;
    QString strLangResID;
};

// A progress colour of the configuration ("Color" category).
struct NetInfoProgressColor
{
    QString strCategory;
    QString strName;
    QColor color;
};

// A limit entry of the configuration ("Limit" category).
struct NetInfoLimitCfg
{
    QString strCategory;
    QString strName;
    QString strValue;
    QString strValue1;
};
