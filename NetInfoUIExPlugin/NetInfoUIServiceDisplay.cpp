// Live and stored figures: the tree's texts and the status panel's values.
#include "NetInfoUIService.h"

#include "NetInfoGraphWidget.h"
#include "NetInfoLog.h"
#include "NetInfoUILogic.h"
#include "TimeOfDay.h"
#include "view/SteadyLabel.h"

#include <QLabel>
#include <QTreeWidgetItem>

namespace {
const char kSource[] = "NetInfoUIExPlugin/NetInfoUIService";
} // namespace

void CNetInfoUIService::onStatisticsChanged(
    ulong ulUpSpeed, ulong ulDownSpeed, qulonglong ullUpData, qulonglong ullDownData, QString stringTime)
{
    NETINFO_TRACE("%s: %s: %s: Entered", NetInfoLog::now().constData(), kSource, "onStatisticsChanged");
    if (!m_pLogic)
        return;

    // Values are kept only for the rows that exist, as the re-labelling reads them.
    view::LiveFigures& live = m_snapshot.live;
    if (m_pUploadSpeedItem)
        live.upSpeed = static_cast<quint32>(ulUpSpeed);
    if (m_pUploadDataItem)
        live.upData = ullUpData;
    if (m_pDownloadSpeedItem)
        live.downSpeed = static_cast<quint32>(ulDownSpeed);
    if (m_pDownloadDataItem)
        live.downData = ullDownData;
    if (m_pTransferTimeItem)
        m_snapshot.takeDuration(stringTime);
    showLiveValues(quint64(ullUpData) + quint64(ullDownData));
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
    if (!m_pDailyUploadedItem || !m_pDailyDownloadedItem || !m_pMonthlyUploadedItem
        || !m_pMonthlyDownloadedItem || !m_pYearlyUploadedItem || !m_pYearlyDownloadedItem || !m_pLogic
        || !m_pLastResetItem) {
        NETINFO_TRACE(
            "%s: %s: %s: invalid args", NetInfoLog::now().constData(), kSource, "updateStoredStatistics");
        return 23;
    }

    m_pLogic->GetHistrorySpecData(historyKey, m_snapshot.record(view::LimitPeriod::LookBack));
    const bool complete = m_snapshot.refresh(
        [this](_enNetInfoType type, NetInfoData& data) { return m_pLogic->GetStatistics(type, data); },
        [this](QString& text) { m_pLogic->GetLastResetTime(text); });
    if (complete)
        showStoredValues();
    else
        NETINFO_TRACE("%s: %s: %s: Not able to get the stats from the Logic", NetInfoLog::now().constData(),
            kSource, "updateStoredStatistics");

    UpdateNewPeriodTipInfo();
    UpdateTreeItems();
    NETINFO_TRACE("%s: %s: %s: Exit", NetInfoLog::now().constData(), kSource, "updateStoredStatistics");
    return complete ? 0 : 23;
}

// Setting an equal text or icon still makes the tree lay the row out and
// shape it again, so only differences reach the items.
void CNetInfoUIService::showRow(QTreeWidgetItem* item, view::Row row)
{
    const QString& text = m_rows.row(row);
    if (item->text(0) != text)
        item->setText(0, text);
}

void CNetInfoUIService::showValueIcon(QTreeWidgetItem* item)
{
    const QIcon icon = treeIcon("Icon_09");
    if (item->icon(0).cacheKey() != icon.cacheKey())
        item->setIcon(0, icon);
}

void CNetInfoUIService::showStoredValues()
{
    m_rows.buildStored(m_snapshot);
    showRow(m_pLastResetItem, view::RowLastReset);
    const struct
    {
        QTreeWidgetItem* item;
        view::Row row;
    } rows[] = {
        { m_pDailyUploadedItem, view::RowDailyUploaded },
        { m_pDailyDownloadedItem, view::RowDailyDownloaded },
        { m_pMonthlyUploadedItem, view::RowMonthlyUploaded },
        { m_pMonthlyDownloadedItem, view::RowMonthlyDownloaded },
        { m_pYearlyUploadedItem, view::RowYearlyUploaded },
        { m_pYearlyDownloadedItem, view::RowYearlyDownloaded },
    };
    for (const auto& row : rows) {
        showValueIcon(row.item);
        showRow(row.item, row.row);
    }
}

void CNetInfoUIService::updateTransferStrings()
{
    if (m_pTransferNode) {
        m_pTransferNode->setIcon(0, treeIcon("Icon_01"));
        m_pTransferNode->setText(0, transferLabel());
    }
    if (m_pTransferTimeItem)
        showValueIcon(m_pTransferTimeItem);
    if (m_pUploadNode) {
        m_pUploadNode->setIcon(0, treeIcon("Icon_02"));
        m_pUploadNode->setText(0, tr(QStringLiteral("IDS_TREE_UPLOAD")));
    }
    if (m_pDownloadNode) {
        m_pDownloadNode->setIcon(0, treeIcon("Icon_03"));
        m_pDownloadNode->setText(0, tr(QStringLiteral("IDS_TREE_DOWNLOAD")));
    }

    // Unit names are translated too, so the live values are formatted anew.
    for (QTreeWidgetItem* item :
        { m_pUploadSpeedItem, m_pUploadDataItem, m_pDownloadSpeedItem, m_pDownloadDataItem }) {
        if (item)
            showValueIcon(item);
    }
    showLiveValues(m_snapshot.live.upData + m_snapshot.live.downData);
}

// The live rows and their panel labels, from the kept values.
void CNetInfoUIService::showLiveValues(quint64 totalData)
{
    m_rows.buildLive(m_snapshot.live, totalData);
    const struct
    {
        QTreeWidgetItem* item;
        view::Row row;
        QLabel* label;
        view::PanelValue value;
    } rows[] = {
        { m_pUploadSpeedItem, view::RowUploadSpeed, m_pUpSpeedLabel, view::PanelUpSpeed },
        { m_pUploadDataItem, view::RowUploadData, m_pDataSentLabel, view::PanelDataSent },
        { m_pDownloadSpeedItem, view::RowDownloadSpeed, m_pDownSpeedLabel, view::PanelDownSpeed },
        { m_pDownloadDataItem, view::RowDownloadData, m_pDataReceivedLabel, view::PanelDataReceived },
        { m_pTransferTimeItem, view::RowTransferTime, m_pDurationLabel, view::PanelDuration },
    };
    for (const auto& row : rows) {
        if (!row.item)
            continue;
        showRow(row.item, row.row);
        view::setSteadyText(row.label, m_rows.panel(row.value));
    }
    if (m_pDownloadDataItem)
        view::setSteadyText(m_pTotalDataLabel, m_rows.panel(view::PanelTotalData));
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
        || !m_pDownSpeedNameLabel || !m_pDataSentNameLabel || !m_pDataReceivedNameLabel
        || !m_pTotalDataNameLabel)
        return;
    m_pDurationNameLabel->setText(tr(QStringLiteral("IDS_STA_DURATION")));
    m_pUpSpeedNameLabel->setText(tr(QStringLiteral("IDS_STA_UPSPEED")));
    m_pDownSpeedNameLabel->setText(tr(QStringLiteral("IDS_STA_DOWNSPEED")));
    m_pDataSentNameLabel->setText(tr(QStringLiteral("IDS_STA_DATASENT")));
    m_pDataReceivedNameLabel->setText(tr(QStringLiteral("IDS_STA_DATARECEIVED")));
    m_pTotalDataNameLabel->setText(tr(QStringLiteral("IDS_STA_TOTALDATA")));
    // The figures' labels keep their size while they tick; in a new language
    // they may be narrower.
    for (QLabel* label : { m_pDurationLabel, m_pUpSpeedLabel, m_pDownSpeedLabel, m_pDataSentLabel,
             m_pDataReceivedLabel, m_pTotalDataLabel })
        view::refitSteady(label);
}
