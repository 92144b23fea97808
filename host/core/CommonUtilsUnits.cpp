#include "CommonUtils.h"

#include "Change.h"

namespace {

// Bytes per unit; 0 marks an entry that cannot scale anything.
unsigned long long unitSize(const TagUnits& unit)
{
    if (unit.ullType > 0)
        return unit.ullType;
    if (unit.iValue > 0)
        return static_cast<unsigned long long>(unit.iValue);
    return 0;
}

QString unitLabel(const TagUnits& unit, const QString& module)
{
    return unit.strLangResID.isEmpty() ? unit.strName : Change::tr(unit.strLangResID, module);
}

// The largest unit that value reaches; when it reaches none, the smallest.
const TagUnits* fittingUnit(unsigned long long value, const TagUnitsTable& table)
{
    const TagUnits* largestReached = nullptr;
    const TagUnits* smallest = nullptr;
    for (const TagUnits& unit : table) {
        const unsigned long long size = unitSize(unit);
        if (size == 0)
            continue;
        if (!smallest || size < unitSize(*smallest))
            smallest = &unit;
        if (size <= value && (!largestReached || size > unitSize(*largestReached)))
            largestReached = &unit;
    }
    return largestReached ? largestReached : smallest;
}

} // namespace

QString CommonUtils::SpeedFluxToString(
    unsigned long long value, const TagUnitsTable& table, const QString& module, const QLocale& locale)
{
    const TagUnits* unit = fittingUnit(value, table);
    if (!unit)
        return locale.toString(value);

    const unsigned long long size = unitSize(*unit);
    const QString number = size == 1
        ? locale.toString(value)
        : locale.toString(static_cast<double>(value) / static_cast<double>(size), 'f', 2);
    const QString label = unitLabel(*unit, module);
    return label.isEmpty() ? number : number + QLatin1Char(' ') + label;
}

QString CommonUtils::SpeedUnitToString(const TagUnitsTable& table, const QString& module)
{
    return table.isEmpty() ? QString() : unitLabel(table.first(), module);
}
