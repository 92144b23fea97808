// Reader of TrendsCtrlProfile.xml: the speed graph's colours and fonts. The
// graph takes entries by their position in the file, never by id.
#pragma once

#include <QColor>
#include <QString>
#include <QVector>

class QXmlStreamReader;

struct NetInfoColourConfig
{
    QString strId;
    QString strColor; // "#AARRGGBB"
};

struct NetInfoFontConfig
{
    QString strId;
    QString strFamily;
    QString strStyle;
    QString strSize;
};

class NetInfoGraphConfigParse
{
public:
    static NetInfoGraphConfigParse* GetInstance();
    static void OnDestroy();

    // 0 on success; 3 missing file, 6 XML error, 13 no device, 25 cannot open.
    // Entries are appended; those read before an error stay.
    int GetSettingsFromXML(QVector<NetInfoColourConfig>& colours, QVector<NetInfoFontConfig>& fonts);
    int readGroupInfo(
        QXmlStreamReader& reader, QVector<NetInfoColourConfig>& colours, QVector<NetInfoFontConfig>& fonts);

    // "#AARRGGBB" with the alpha pair dropped: always opaque. Empty or
    // malformed text gives an invalid colour.
    static QColor colour(const QString& text);
    static QString profilePath();

private:
    NetInfoGraphConfigParse() = default;

    static NetInfoGraphConfigParse* m_pInstance;
};
