// One display unit of a unit table (data amounts or speeds), read from the
// plug-in's configuration file.
#pragma once

#include <QString>
#include <QVector>

struct TagUnits
{
    QString strName; // the unit's name when it has no text id
    int iValue = 0; // 32-bit factor the view scales with (bytes per unit)
    unsigned long long ullType = 0; // 64-bit size of the unit in bytes; picks the unit
    QString strLangResID; // text id of the unit's label
};

using TagUnitsTable = QVector<TagUnits>;
