// Hourly, daily and monthly usage as stacked bars (received below, sent above), with
// the limit line where the limit counts such periods. Painted by hand rather
// than with Qt Charts: that module alone would add more start-up time and
// memory than the whole application needs for a few dozen rectangles.
#pragma once

#include "UsageReport.h"

#include <QWidget>

class QComboBox;
class QLabel;

class HistoryChart : public QWidget
{
    Q_OBJECT
public:
    struct Bar
    {
        QDateTime start;
        QDateTime end;
        quint64 received = 0;
        quint64 sent = 0;
    };
    struct Unit
    {
        const char* name;
        quint64 bytes;
    };

    explicit HistoryChart(QWidget* parent = nullptr);
    // Bars of one kind of period; limit 0 draws no line.
    void setBars(const QList<Bar>& bars, report::HistoryKind kind, quint64 limit);
    const QList<Bar>& bars() const { return m_bars; }

    // The largest unit that the figures reach, so the axis reads 1.5 GB rather than 1536 MB.
    static Unit unitFor(quint64 bytes);
    // The axis maximum: a round number of units at or above the highest bar and the limit.
    static double axisMaximum(quint64 highest, const Unit& unit);
    int barAt(const QPoint& point) const;
    QString barText(int index) const;
    QSize sizeHint() const override { return { 720, 360 }; }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QRect plotRect() const;
    QRectF barRect(int index, double maximum) const;

    QList<Bar> m_bars;
    report::HistoryKind m_kind = report::HistoryKind::Days;
    quint64 m_limit = 0;
};

class HistoryWindow : public QWidget
{
    Q_OBJECT
public:
    // Reads the ledger at ledgerPath read-only; the limit and the period
    // starts from the user's files.
    explicit HistoryWindow(
        QString ledgerPath, QString limitFile, QString hostSettingsFile, QWidget* parent = nullptr);

    void reload(const QDateTime& now = QDateTime::currentDateTime());
    void showKind(report::HistoryKind kind);
    HistoryChart* chart() const { return m_chart; }
    bool exportPng(const QString& path);

private:
    void exportAsked();

    QString m_ledgerPath, m_limitFile, m_settingsFile;
    QComboBox* m_kind = nullptr;
    QLabel* m_note = nullptr;
    HistoryChart* m_chart = nullptr;
};
