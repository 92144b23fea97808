#include "TreeRows.h"

#include <utility>

namespace view {

QString rowText(const QString& caption, const QString& value)
{
    if (caption.isRightToLeft() && !value.isRightToLeft())
        return caption + QLatin1Char(' ') + QChar(0x2066) + value + QChar(0x2069);
    return caption + QLatin1Char(' ') + value;
}

TreeRows::TreeRows(
    Captions captions, QVector<TagUnits> speedUnits, QVector<TagUnits> fluxUnits, Format format)
    : m_captions(std::move(captions))
    , m_speedUnits(std::move(speedUnits))
    , m_fluxUnits(std::move(fluxUnits))
    , m_format(std::move(format))
{ }

const QString& TreeRows::formatted(Figure& figure, unsigned long long value, const QVector<TagUnits>& units)
{
    if (!figure.formatted || figure.value != value) {
        figure.text = m_format(value, units);
        figure.value = value;
        figure.formatted = true;
    }
    return figure.text;
}

void TreeRows::buildLive(const LiveFigures& live, quint64 total)
{
    m_panel[PanelDuration] = live.duration;
    m_rows[RowTransferTime] = rowText(m_captions.time, live.duration);
    const struct
    {
        Row row;
        PanelValue panel;
        unsigned long long value;
        const QVector<TagUnits>& units;
        const QString& caption;
    } values[] = {
        { RowUploadSpeed, PanelUpSpeed, live.upSpeed, m_speedUnits, m_captions.speed },
        { RowUploadData, PanelDataSent, live.upData, m_fluxUnits, m_captions.data },
        { RowDownloadSpeed, PanelDownSpeed, live.downSpeed, m_speedUnits, m_captions.speed },
        { RowDownloadData, PanelDataReceived, live.downData, m_fluxUnits, m_captions.data },
    };
    for (const auto& v : values) {
        const bool moved
            = !m_figures[v.row].formatted || m_figures[v.row].value != v.value || m_rows[v.row].isEmpty();
        m_panel[v.panel] = formatted(m_figures[v.row], v.value, v.units);
        if (moved)
            m_rows[v.row] = rowText(v.caption, m_panel[v.panel]);
    }
    m_panel[PanelTotalData] = formatted(m_figures[RowCount], total, m_fluxUnits);
}

void TreeRows::buildStored(const StatisticsSnapshot& snapshot)
{
    m_rows[RowLastReset] = rowText(m_captions.lastReset, snapshot.lastReset);
    const struct
    {
        Row row;
        LimitPeriod period;
        bool uploaded;
    } values[] = {
        { RowDailyUploaded, LimitPeriod::Daily, true },
        { RowDailyDownloaded, LimitPeriod::Daily, false },
        { RowMonthlyUploaded, LimitPeriod::Monthly, true },
        { RowMonthlyDownloaded, LimitPeriod::Monthly, false },
        { RowYearlyUploaded, LimitPeriod::Yearly, true },
        { RowYearlyDownloaded, LimitPeriod::Yearly, false },
    };
    for (const auto& v : values) {
        const NetInfoData& record = snapshot.kept(v.period);
        const unsigned long long value = v.uploaded ? record.ullUpData : record.ullDownData;
        const bool moved
            = !m_figures[v.row].formatted || m_figures[v.row].value != value || m_rows[v.row].isEmpty();
        const QString& text = formatted(m_figures[v.row], value, m_fluxUnits);
        if (moved)
            m_rows[v.row] = rowText(v.uploaded ? m_captions.uploaded : m_captions.downloaded, text);
    }
}

} // namespace view
