// Translation of the host's text keys ("IDS_..."). A key without translation
// comes back unchanged, so a missing text shows its key rather than nothing.
#pragma once

#include "hostcore_export.h"

#include <QString>

class HOSTCORE_EXPORT Change
{
public:
    static QString tr(const QString& key, const QString& context);

    // Loads <home>/translations/netinfo_<language>.qm (for example "en",
    // "zh_CN", "ar") in place of the previous language. False when the file
    // is missing or unreadable; the previous language then stays.
    static bool LoadLanguage(const QString& language);
    static QString CurrentLanguage();
};
