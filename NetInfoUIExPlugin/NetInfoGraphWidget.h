// The speed-trend graph: upload and download speed over a scale that only
// grows, newest sample at the right edge (left edge in right-to-left
// layouts), with a legend and an optional reset button.
#pragma once

#include "NetInfoGraphConfigParse.h"

#include <QColor>
#include <QFont>
#include <QImage>
#include <QLineF>
#include <QList>
#include <QVarLengthArray>
#include <QVector>
#include <QWidget>

class CNetInfoUIService;
class INotifyService;
class QPainter;
class QPen;
class QPushButton;

class GraphWidget : public QWidget
{
    Q_OBJECT
public:
    explicit GraphWidget(QWidget* parent = nullptr);

    void init();
    // One sample pair, in the unit of the first speed unit; repaints.
    void DrawGraph(double up, double down);
    // Asks the host for room for tree width plus the graph's legend.
    void setGraphMinmumWidth(int width);
    QString tr(QString id);
    INotifyService* GetNodifyInstance();

    int maxSpeed() const { return m_iMaxSpeed; }
    int maxSamples() const { return m_iMaxSamples; }
    // How many upload samples are kept: the width at construction unless set.
    void setMaxSamples(int samples) { m_iMaxSamples = samples; }
    // Newest first.
    const QList<double>& uploadSamples() const { return m_listUp; }
    const QList<double>& downloadSamples() const { return m_listDown; }
    QColor gridColour() const { return m_colorGrid; }
    QColor uploadColour() const { return m_colorUp; }
    QColor downloadColour() const { return m_colorDown; }
    QFont graphFont() const { return m_font; }

signals:
    void SizeChange(int width, int height);

public slots:
    void onSizeChange(int width, int height);

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    // What the fixed layer was drawn for; any difference redraws it.
    struct LayerKey
    {
        QSize size;
        qreal pixelRatio = 0;
        int maxSpeed = 0;
        bool rightToLeft = false;
        int buttonWidth = 0;
        QString language;
        bool operator==(const LayerKey& other) const
        {
            return size == other.size && pixelRatio == other.pixelRatio && maxSpeed == other.maxSpeed
                && rightToLeft == other.rightToLeft && buttonWidth == other.buttonWidth
                && language == other.language;
        }
    };

    LayerKey layerKey(bool rightToLeft) const;
    void layOut(bool rightToLeft);
    // Background, frame, grid, scale labels, title and legend: everything
    // but the curves, for either reading direction.
    void drawFixedLayer(QPainter& painter, bool rightToLeft);
    QString speedTitle();
    double speedY(double speed) const;
    int segmentCount() const;
    QVarLengthArray<QLineF, 1024> segments(
        const QList<double>& samples, int from, int to, double startX, int dx) const;
    void drawCurves(QPainter& painter, double startX, int dx);
    bool updateCurveLayer(double startX, int dx, QRect* changed = nullptr);
    void fitResetButton();
    void forgetLayout();

    // Row span per column that a curve may cover.
    struct Rows
    {
        int lo = 0;
        int hi = -1;
    };
    QVector<Rows> coveredRows(
        const QList<double>& samples, int count, int head, int dx, int width, int height) const;
    QRect composeFrame(const QVector<Rows>& upRows, const QVector<Rows>& downRows);

    QImage m_fixedLayer;
    LayerKey m_layerKey;
    bool m_bLayerValid = false;
    bool m_bButtonFitted = false;
    // The picture as last painted: the fixed layer with both curves, kept
    // up to date column by column from coverage masks of the two curves.
    QImage m_frame;
    QImage m_upMask;
    QImage m_downMask;
    QVector<Rows> m_upRows;
    QVector<Rows> m_downRows;
    int m_iDrawnSegments = -1; // in the masks; -1: masks to be redrawn
    int m_iNewSamples = 0; // since the masks were drawn

    QPushButton* m_pResetButton = nullptr;
    CNetInfoUIService* m_pService = nullptr;
    bool m_bResetAll = false;
    QColor m_colorGrid;
    QColor m_colorUp;
    QColor m_colorDown;
    QFont m_font;
    QList<double> m_listUp;
    QList<double> m_listDown;
    QVector<NetInfoColourConfig> m_vecColour;
    QVector<NetInfoFontConfig> m_vecFont;
    int m_iTextHeight = 0;
    int m_iMaxSpeed = 60;
    int m_iMaxSamples = 0;
    double m_dLeft = 0;
    double m_dTop = 0;
    double m_dPlotWidth = 0;
    double m_dPlotHeight = 0;
    double m_dCursorY = 0;
    double m_dStep = 0;
    NetInfoGraphConfigParse* m_pGraphConfig = nullptr;
};
