// Live and stored figures: the tree's texts and the status panel's values.
#include "NetInfoUIService.h"

#include "NetInfoGraphWidget.h"
#include "NetInfoLog.h"
#include "NetInfoUILogic.h"
#include "TimeOfDay.h"

#include "CommonUtils.h"

#include <QLabel>
#include <QTreeWidgetItem>

namespace {
const char kSource[] = "NetInfoUIExPlugin/NetInfoUIService";

QString format(unsigned long long value, const QVector<TagUnits>& units)
{
    return CommonUtils::SpeedFluxToString(value, units, QStringLiteral("NetInfoUIExPlugin"));
}

void setLabel(QLabel* label, const QString& text)
{
    if (label)
        label->setText(text);
}
}

void CNetInfoUIService::onStatisticsChanged(ulong ulUpSpeed, ulong ulDownSpeed, qulonglong ullUpData,
                                            qulonglong ullDownData, QString stringTime)
{
    NETINFO_TRACE("%s: %s: %s: Entered", NetInfoLog::now().constData(), kSource, "onStatisticsChanged");
    if (!m_pLogic)
        return;

    // Values are kept only for the rows that exist, as the re-labelling reads them.
    if (m_pUploadSpeedItem)
        m_ulUpSpeed = static_cast<quint32>(ulUpSpeed);
    if (m_pUploadDataItem)
        m_ullUpData = ullUpData;
    if (m_pDownloadSpeedItem)
        m_ulDownSpeed = static_cast<quint32>(ulDownSpeed);
    if (m_pDownloadDataItem)
        m_ullDownData = ullDownData;
    showLiveValues(quint64(ullUpData) + quint64(ullDownData));
    if (m_pTransferTimeItem) {
        // A single blank asks for the labels only; the duration stays.
        if (stringTime != QLatin1String(" "))
            m_strDuration = stringTime;
        m_strDurationText = m_strDuration;
        m_pTransferTimeItem->setText(0, m_strTime + QLatin1Char(' ') + m_strDuration);
        setLabel(m_pDurationLabel, m_strDuration);
    }
    if (m_pGraph && m_pLogic->IsFunctionEnable(QStringLiteral("SHOWGRAPH"))) {
        // Plotted in the first speed unit; a unit without a factor plots zeros.
        double up = 0;
        double down = 0;
        if (!m_vecSpeedUnits.isEmpty() && m_vecSpeedUnits.first().iValue != 0) {
            const qint32 unit = m_vecSpeedUnits.first().iValue;
            up = double(quint32(ulUpSpeed)) / unit;
            down = double(quint32(ulDownSpeed)) / unit;
        }
        m_pGraph->DrawGraph(up, down);
    }

    updateStoredStatistics();
    NETINFO_TRACE("%s: %s: %s: Exit", NetInfoLog::now().constData(), kSource, "onStatisticsChanged");
}

int CNetInfoUIService::updateStoredStatistics()
{
    NETINFO_TRACE("%s: %s: %s: Entered", NetInfoLog::now().constData(), kSource, "updateStoredStatistics");
    // Both ends are times of day, so the span never exceeds a day.
    const int historyKey = TimeOfDay::secsTo(GetBeforeNowThreeMonthlyTime(), QTime::currentTime());
    if (!m_pDailyUploadedItem || !m_pDailyDownloadedItem || !m_pMonthlyUploadedItem || !m_pMonthlyDownloadedItem
        || !m_pYearlyUploadedItem || !m_pYearlyDownloadedItem || !m_pLogic || !m_pLastResetItem) {
        NETINFO_TRACE("%s: %s: %s: invalid args", NetInfoLog::now().constData(), kSource, "updateStoredStatistics");
        return 23;
    }

    m_pLogic->GetHistrorySpecData(historyKey, m_specHistoryData);

    // Records fetched before a failure keep what they received; only the
    // texts and snapshots wait for a complete refresh.
    const bool failed = m_pLogic->GetStatistics(NETINFO_DAILY, m_dailyData)
                        || m_pLogic->GetStatistics(NETINFO_MONTHLY, m_monthlyData)
                        || m_pLogic->GetStatistics(NETINFO_YEARLY, m_yearlyData)
                        || m_pLogic->GetStatistics(NETINFO_WEEKLY, m_weeklyData);
    if (failed) {
        NETINFO_TRACE("%s: %s: %s: Not able to get the stats from the Logic", NetInfoLog::now().constData(),
                      kSource, "updateStoredStatistics");
    } else {
        m_strLastReset.clear();
        m_pLogic->GetLastResetTime(m_strLastReset);
        m_pLastResetItem->setText(0, tr(QStringLiteral("IDS_TREE_TIME_LASTRESET")) + QLatin1Char(' ') + m_strLastReset);

        const QIcon valueIcon = treeIcon("Icon_09");
        const struct
        {
            QTreeWidgetItem* item;
            const QString& label;
            unsigned long long value;
        } rows[] = {
            {m_pDailyUploadedItem, m_strUploaded, m_dailyData.ullUpData},
            {m_pDailyDownloadedItem, m_strDownloaded, m_dailyData.ullDownData},
            {m_pMonthlyUploadedItem, m_strUploaded, m_monthlyData.ullUpData},
            {m_pMonthlyDownloadedItem, m_strDownloaded, m_monthlyData.ullDownData},
            {m_pYearlyUploadedItem, m_strUploaded, m_yearlyData.ullUpData},
            {m_pYearlyDownloadedItem, m_strDownloaded, m_yearlyData.ullDownData},
        };
        for (const auto& row : rows) {
            row.item->setIcon(0, valueIcon);
            row.item->setText(0, row.label + QLatin1Char(' ') + format(row.value, m_vecFluxUnits));
        }

        m_dailySnapshot = m_dailyData;
        m_weeklySnapshot = m_weeklyData;
        m_monthlySnapshot = m_monthlyData;
        m_yearlySnapshot = m_yearlyData;
        m_specHistorySnapshot = m_specHistoryData;
    }

    UpdateNewPeriodTipInfo();
    UpdateTreeItems();
    NETINFO_TRACE("%s: %s: %s: Exit", NetInfoLog::now().constData(), kSource, "updateStoredStatistics");
    return failed ? 23 : 0;
}

void CNetInfoUIService::updateTransferStrings()
{
    const QIcon valueIcon = treeIcon("Icon_09");
    if (m_pTransferNode) {
        m_pTransferNode->setIcon(0, treeIcon("Icon_01"));
        m_pTransferNode->setText(0, transferLabel());
    }
    if (m_pTransferTimeItem) {
        m_pTransferTimeItem->setIcon(0, valueIcon);
        m_pTransferTimeItem->setText(0, m_strTime + QLatin1Char(' ') + m_strDuration);
        setLabel(m_pDurationLabel, m_strDuration);
    }
    if (m_pUploadNode) {
        m_pUploadNode->setIcon(0, treeIcon("Icon_02"));
        m_pUploadNode->setText(0, tr(QStringLiteral("IDS_TREE_UPLOAD")));
    }
    if (m_pDownloadNode) {
        m_pDownloadNode->setIcon(0, treeIcon("Icon_03"));
        m_pDownloadNode->setText(0, tr(QStringLiteral("IDS_TREE_DOWNLOAD")));
    }

    // Unit names are translated too, so the live values are formatted anew.
    for (QTreeWidgetItem* item : {m_pUploadSpeedItem, m_pUploadDataItem, m_pDownloadSpeedItem, m_pDownloadDataItem}) {
        if (item)
            item->setIcon(0, valueIcon);
    }
    showLiveValues(m_ullUpData + m_ullDownData);
}

// The four live rows and their panel labels, from the kept values.
void CNetInfoUIService::showLiveValues(quint64 totalData)
{
    const auto show = [](QTreeWidgetItem* item, const QString& caption, const QString& text, QLabel* label) {
        item->setText(0, caption + QLatin1Char(' ') + text);
        setLabel(label, text);
    };
    if (m_pUploadSpeedItem) {
        m_strUpSpeedText = format(m_ulUpSpeed, m_vecSpeedUnits);
        show(m_pUploadSpeedItem, m_strSpeed, m_strUpSpeedText, m_pUpSpeedLabel);
    }
    if (m_pUploadDataItem) {
        m_strDataSentText = format(m_ullUpData, m_vecFluxUnits);
        show(m_pUploadDataItem, m_strData, m_strDataSentText, m_pDataSentLabel);
    }
    if (m_pDownloadSpeedItem) {
        m_strDownSpeedText = format(m_ulDownSpeed, m_vecSpeedUnits);
        show(m_pDownloadSpeedItem, m_strSpeed, m_strDownSpeedText, m_pDownSpeedLabel);
    }
    if (m_pDownloadDataItem) {
        m_strDataReceivedText = format(m_ullDownData, m_vecFluxUnits);
        show(m_pDownloadDataItem, m_strData, m_strDataReceivedText, m_pDataReceivedLabel);
        m_strTotalDataText = format(totalData, m_vecFluxUnits);
        setLabel(m_pTotalDataLabel, m_strTotalDataText);
    }
}

void CNetInfoUIService::updateStatisticsStrings()
{
    if (!m_pLogic)
        return;
    if (m_pStatisticsNode) {
        m_pStatisticsNode->setIcon(0, treeIcon("Icon_04"));
        m_pStatisticsNode->setText(0, tr(QStringLiteral("IDS_TREE_STATISTICS")));
    }
    if (m_pDailyNode && m_pLogic->IsFunctionEnable(QStringLiteral("STATISTICSDAILY"))) {
        m_pDailyNode->setIcon(0, treeIcon("Icon_06"));
        m_pDailyNode->setText(0, tr(QStringLiteral("IDS_TREE_DAILY")));
    }
    if (m_pMonthlyNode && m_pLogic->IsFunctionEnable(QStringLiteral("STATISTICSMONTHLY"))) {
        m_pMonthlyNode->setIcon(0, treeIcon("Icon_07"));
        m_pMonthlyNode->setText(0, tr(QStringLiteral("IDS_TREE_MONTHLY")));
    }
    if (m_pYearlyNode && m_pLogic->IsFunctionEnable(QStringLiteral("STATISTICSYEARLY"))) {
        m_pYearlyNode->setIcon(0, treeIcon("Icon_08"));
        m_pYearlyNode->setText(0, tr(QStringLiteral("IDS_TREE_YEARLY")));
    }
}

void CNetInfoUIService::setSpeedLanguage()
{
    if (!m_pStatPanel || !m_pDurationLabel || !m_pUpSpeedLabel || !m_pDownSpeedLabel || !m_pDataSentLabel
        || !m_pDataReceivedLabel || !m_pTotalDataLabel || !m_pDurationNameLabel || !m_pUpSpeedNameLabel
        || !m_pDownSpeedNameLabel || !m_pDataSentNameLabel || !m_pDataReceivedNameLabel || !m_pTotalDataNameLabel)
        return;
    m_pDurationNameLabel->setText(tr(QStringLiteral("IDS_STA_DURATION")));
    m_pUpSpeedNameLabel->setText(tr(QStringLiteral("IDS_STA_UPSPEED")));
    m_pDownSpeedNameLabel->setText(tr(QStringLiteral("IDS_STA_DOWNSPEED")));
    m_pDataSentNameLabel->setText(tr(QStringLiteral("IDS_STA_DATASENT")));
    m_pDataReceivedNameLabel->setText(tr(QStringLiteral("IDS_STA_DATARECEIVED")));
    m_pTotalDataNameLabel->setText(tr(QStringLiteral("IDS_STA_TOTALDATA")));
}
