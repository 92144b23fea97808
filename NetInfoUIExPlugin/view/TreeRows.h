// The statistics tree's value rows and the status panel's values as texts,
// built from a snapshot with the unit tables and the translated captions.
// Each row remembers the figure it last formatted, so a tick formats only
// what moved and the view repaints only rows whose text differs.
#pragma once

#include "StatisticsSnapshot.h"

#include <QString>
#include <QVector>

#include <array>
#include <functional>

namespace view {

enum Row {
    RowTransferTime,
    RowUploadSpeed,
    RowUploadData,
    RowDownloadSpeed,
    RowDownloadData,
    RowLastReset,
    RowDailyUploaded,
    RowDailyDownloaded,
    RowMonthlyUploaded,
    RowMonthlyDownloaded,
    RowYearlyUploaded,
    RowYearlyDownloaded,
    RowCount
};

enum PanelValue {
    PanelDuration,
    PanelUpSpeed,
    PanelDownSpeed,
    PanelDataSent,
    PanelDataReceived,
    PanelTotalData,
    PanelCount
};

struct Captions
{
    QString speed;
    QString data;
    QString time;
    QString uploaded;
    QString downloaded;
    QString lastReset;
};

// A row's caption and value joined by a space. After a right-to-left caption
// a value that does not itself read right to left (a date with a Latin month,
// a time, a Latin unit) is isolated, so that it reads whole and in order
// instead of having its parts reordered around the caption.
QString rowText(const QString& caption, const QString& value);

class TreeRows
{
public:
    using Format = std::function<QString(unsigned long long value, const QVector<TagUnits>& units)>;

    TreeRows() = default;
    TreeRows(Captions captions, QVector<TagUnits> speedUnits, QVector<TagUnits> fluxUnits, Format format);

    // The transfer rows and the panel's values from the live figures; the
    // total is passed in, as a tick totals the figures it brought.
    void buildLive(const LiveFigures& live, quint64 total);
    // The last-reset row and the six period rows from the records.
    void buildStored(const StatisticsSnapshot& snapshot);

    const QString& row(Row row) const { return m_rows[row]; }
    const QString& panel(PanelValue value) const { return m_panel[value]; }

private:
    struct Figure
    {
        unsigned long long value = 0;
        bool formatted = false;
        QString text;
    };
    const QString& formatted(Figure& figure, unsigned long long value, const QVector<TagUnits>& units);

    Captions m_captions;
    QVector<TagUnits> m_speedUnits;
    QVector<TagUnits> m_fluxUnits;
    Format m_format;
    std::array<QString, RowCount> m_rows;
    std::array<QString, PanelCount> m_panel;
    std::array<Figure, RowCount + 1> m_figures; // one per value row, and the total
};

} // namespace view
