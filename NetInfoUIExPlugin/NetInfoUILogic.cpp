#include "NetInfoUILogic.h"

#include "NetInfoConfigParse.h"
#include "NetInfoLog.h"

#include "veltsdk.h"

#include <QDateTime>
#include <QLocale>

#include <algorithm>

#include <cstring>

namespace {
const char* const kSource = "NetInfoUIExPlugin/NetInfoUILogic";

// A zeroed SDK report and typed reads of its fields.
struct Report
{
    alignas(8) unsigned char bytes[VELT_STATISTICS_REPORT_SIZE] = {};

    template <typename T> T field(int offset) const
    {
        T value;
        std::memcpy(&value, bytes + offset, sizeof value);
        return value;
    }
    quint64 bytesReceived() const { return field<quint64>(VELT_REPORT_OFFSET_BYTES_RECEIVED); }
    quint64 bytesSent() const { return field<quint64>(VELT_REPORT_OFFSET_BYTES_SENT); }
    quint32 receiveSpeed() const { return field<quint32>(VELT_REPORT_OFFSET_RECEIVE_SPEED); }
    quint32 sendSpeed() const { return field<quint32>(VELT_REPORT_OFFSET_SEND_SPEED); }
    qint64 duration() const { return field<qint64>(VELT_REPORT_OFFSET_DURATION); }
    quint32 resetTime() const { return field<quint32>(VELT_REPORT_OFFSET_RESET_TIME); }

    void fill(NetInfoData& data) const
    {
        data.ullUpData = bytesSent();
        data.ullDownData = bytesReceived();
        data.ullDuration = static_cast<unsigned long long>(duration());
    }
};

// The SDK's report kind for a stored period; not the identity.
int reportKind(_enNetInfoType type)
{
    switch (type) {
    case NETINFO_WEEKLY:
        return VELT_REPORT_WEEK;
    case NETINFO_MONTHLY:
        return VELT_REPORT_MONTH;
    case NETINFO_YEARLY:
        return VELT_REPORT_YEAR;
    case NETINFO_DAILY:
    default:
        return VELT_REPORT_TODAY;
    }
}

void twoDigits(long long value, QString& text)
{
    if (value < 10)
        text += QLatin1Char('0');
    text += QString::number(value);
}
} // namespace

std::atomic<NetInfoUILogic*> NetInfoUILogic::m_pNetInfoInstance { nullptr };

NetInfoUILogic* NetInfoUILogic::Instance()
{
    NetInfoUILogic* logic = m_pNetInfoInstance.load();
    if (!logic) {
        logic = new NetInfoUILogic;
        m_pNetInfoInstance.store(logic);
    }
    return logic;
}

void NetInfoUILogic::Destroy()
{
    // Unpublished before it goes, so a callback arriving now finds nobody.
    delete m_pNetInfoInstance.exchange(nullptr);
}

void NetInfoUILogic::UnregSDK()
{
    VELT_Statistics_UnRegisterStatisticsCallbackEvent(&NetInfoUILogic::StatisticsEventCallBack);
}

NetInfoUILogic::~NetInfoUILogic()
{
    delete m_pConfigParse;
}

int NetInfoUILogic::Init()
{
    NETINFO_TRACE("%s: %s: %s: Entered", NetInfoLog::now().constData(), kSource, "Init");
    m_pConfigParse = NetInfoConfigParse::GetInstance();
    if (!m_pConfigParse) {
        NETINFO_WARN("%s: %s: %s: Out of Memory", NetInfoLog::now().constData(), kSource, "Init");
        return 13;
    }

    NETINFO_TRACE("========> %s: %s: %s: VELT_Statistics_RegisterStatisticsCallbackEvent called",
        NetInfoLog::now().constData(), kSource, "Init");
    if (VELT_Statistics_RegisterStatisticsCallbackEvent(&NetInfoUILogic::StatisticsEventCallBack) != 0)
        NETINFO_TRACE("<======== %s: %s: %s: VELT_Statistics_RegisterStatisticsCallbackEvent Failed",
            NetInfoLog::now().constData(), kSource, "Init");
    else
        NETINFO_TRACE("<======== %s: %s: %s: VELT_Statistics_RegisterStatisticsCallbackEvent Success",
            NetInfoLog::now().constData(), kSource, "Init");
    // Only a trace: the host's tools look for this line.
    NETINFO_TRACE("<======== %s: %s: %s: VELT_NetConnectSrv_RegisterNetConnectEvent called",
        NetInfoLog::now().constData(), kSource, "Init");

    const int result = getConfigData();
    NETINFO_TRACE("%s: %s: %s: Exit", NetInfoLog::now().constData(), kSource, "Init");
    return result;
}

int NetInfoUILogic::StatisticsEventCallBack(int event, void* data)
{
    NETINFO_TRACE(
        "%s: %s: %s: CBNotify-%d ", NetInfoLog::now().constData(), kSource, "StatisticsEventCallBack", event);
    if (event != VELT_EVENT_STATISTICS_CHANGED)
        return 1;
    NetInfoUILogic* logic = m_pNetInfoInstance.load();
    if (!data || !logic)
        return 0;

    if (*static_cast<const unsigned char*>(data) == 0) {
        emit logic->statisticsChanged(0, 0, 0, 0, QStringLiteral("00:00:00"));
        return 1;
    }
    Report report;
    if (VELT_Statistics_GetReport(VELT_REPORT_LIVE, report.bytes, 0) == 0) {
        QString duration;
        logic->convertTimeToString(report.duration(), duration);
        emit logic->statisticsChanged(
            report.sendSpeed(), report.receiveSpeed(), report.bytesSent(), report.bytesReceived(), duration);
    }
    return 1;
}

bool NetInfoUILogic::GetStatistics(_enNetInfoType type, NetInfoData& data)
{
    NETINFO_TRACE("%s: %s: %s: Entered", NetInfoLog::now().constData(), kSource, "GetStatistics");
    Report report;
    const bool failed = VELT_Statistics_GetReport(reportKind(type), report.bytes, 0) != 0;
    if (failed)
        NETINFO_TRACE("%s: %s: %s: VELT_Statistics_GetReport Error", NetInfoLog::now().constData(), kSource,
            "GetStatistics");
    else
        report.fill(data);
    NETINFO_TRACE("%s: %s: %s: Exit", NetInfoLog::now().constData(), kSource, "GetStatistics");
    return failed;
}

void NetInfoUILogic::GetHistrorySpecData(int key, NetInfoData& data)
{
    // The SDK's key is unsigned: a negative key goes through text and becomes 0.
    const unsigned long long sdkKey = QString::number(key).toULongLong();
    Report report;
    if (VELT_Statistics_GetSpecHistroryData(report.bytes, sdkKey) == 0)
        report.fill(data);
}

bool NetInfoUILogic::ResetStatistics()
{
    NETINFO_TRACE("%s: %s: %s: Entered", NetInfoLog::now().constData(), kSource, "ResetStatistics");
    const bool failed = VELT_Statistics_Reset(0) != 0;
    if (failed)
        NETINFO_TRACE("%s: %s: %s: VELT_Statistics_GetReport Error", NetInfoLog::now().constData(), kSource,
            "ResetStatistics");
    NETINFO_TRACE("%s: %s: %s: Exit", NetInfoLog::now().constData(), kSource, "ResetStatistics");
    return failed;
}

bool NetInfoUILogic::GetLastResetTime(QString& text)
{
    NETINFO_TRACE("%s: %s: %s: Entered", NetInfoLog::now().constData(), kSource, "GetLastResetTime");
    Report report;
    const bool failed = VELT_Statistics_GetReport(VELT_REPORT_LAST_RESET, report.bytes, 0) != 0;
    if (failed) {
        NETINFO_TRACE("%s: %s: %s: VELT_Statistics_GetReport Error", NetInfoLog::now().constData(), kSource,
            "GetLastResetTime");
    } else {
        const QDateTime when = QDateTime::fromSecsSinceEpoch(report.resetTime());
        text = QLocale::system().toString(when, QLocale::ShortFormat);
    }
    NETINFO_TRACE("%s: %s: %s: Exit", NetInfoLog::now().constData(), kSource, "GetLastResetTime");
    return failed;
}

void NetInfoUILogic::convertTimeToString(long long seconds, QString& text)
{
    const int hours = static_cast<int>(seconds / 3600);
    const long long rest = seconds % 3600;
    twoDigits(hours, text);
    text += QLatin1Char(':');
    twoDigits(rest / 60, text);
    text += QLatin1Char(':');
    twoDigits(rest % 60, text);
}

void NetInfoUILogic::OnDestroy()
{ }

int NetInfoUILogic::getConfigData()
{
    if (!m_pConfigParse)
        return 13;

    QString group = QStringLiteral("customize");
    QString common = QStringLiteral("common");
    int result = m_pConfigParse->GetSettingsFromXML(group, common, m_vecConfig);

    NETINFO_TRACE("========> %s: %s: %s: VELT_DevSrv_GetCustomizeName called", NetInfoLog::now().constData(),
        kSource, "getConfigData");
    char buffer[VELT_CUSTOMIZE_NAME_SIZE] = {};
    if (VELT_DevSrv_GetCustomizeName(buffer) != 0) {
        NETINFO_TRACE("<======== %s: %s: %s: VELT_DevSrv_GetCustomizeName failed",
            NetInfoLog::now().constData(), kSource, "getConfigData");
        result = 1;
    } else {
        NETINFO_TRACE("<======== %s: %s: %s: VELT_DevSrv_GetCustomizeName success",
            NetInfoLog::now().constData(), kSource, "getConfigData");
        buffer[sizeof buffer - 1] = '\0';
        QString edition = QString::fromLocal8Bit(buffer);
        if (!edition.isEmpty() && edition != common)
            result = m_pConfigParse->GetSettingsFromXML(group, edition, m_vecCustomizeConfig);
    }

    m_vecConfig += m_vecCustomizeConfig;
    eraseCommonConfig(QStringLiteral("speedunit"), m_vecConfig, m_vecCustomizeConfig);
    eraseCommonConfig(QStringLiteral("fluxunit"), m_vecConfig, m_vecCustomizeConfig);
    return result;
}

void NetInfoUILogic::eraseCommonConfig(
    QString category, QVector<NetInfoConfig>& merged, QVector<NetInfoConfig> edition)
{
    const auto inCategory = [&category](const NetInfoConfig& entry) { return entry.strCategory == category; };
    if (std::none_of(edition.cbegin(), edition.cend(), inCategory))
        return;
    // The edition's units replace the whole common table of that kind.
    merged.removeIf(inCategory);
    for (const NetInfoConfig& entry : std::as_const(edition)) {
        if (inCategory(entry))
            merged.append(entry);
    }
}

bool NetInfoUILogic::IsFunctionEnable(QString name)
{
    bool enabled = false;
    for (const NetInfoConfig& entry : std::as_const(m_vecConfig)) {
        if (entry.strName == name)
            enabled = entry.strValue == QLatin1String("true");
    }
    return enabled;
}

void NetInfoUILogic::appendUnits(const QString& category, QVector<TagUnits>& units, const char* function)
{
    NETINFO_TRACE("%s: %s: %s: Entered", NetInfoLog::now().constData(), kSource, function);
    for (const NetInfoConfig& entry : std::as_const(m_vecConfig)) {
        if (entry.strCategory != category)
            continue;
        TagUnits unit;
        unit.strName = entry.strName;
        unit.iValue = entry.strValue.toInt();
        unit.ullType = entry.strType.toULongLong();
        unit.strLangResID = entry.strLangResID;
        units.append(unit);
    }
    NETINFO_TRACE("%s: %s: %s: Exit", NetInfoLog::now().constData(), kSource, function);
}

void NetInfoUILogic::GetFluxUnitData(QVector<TagUnits>& units)
{
    appendUnits(QStringLiteral("fluxunit"), units, "GetFluxUnitData");
}

void NetInfoUILogic::GetSpeedUnitData(QVector<TagUnits>& units)
{
    appendUnits(QStringLiteral("speedunit"), units, "GetSpeedUnitData");
}
