#include "NetInfoGraphWidget.h"

#include "NetInfoLog.h"
#include "NetInfoUILogic.h"
#include "NetInfoUIService.h"

#include "Change.h"
#include "CommonUtils.h"
#include "HostIds.h"
#include "INotifyService.h"
#include "IPluginContainer.h"
#include "Startup.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QLineF>
#include <QPaintEvent>
#include <QPainter>
#include <QPushButton>

#include <algorithm>
#include <cmath>

namespace {
const char kSource[] = "NetInfoUIExPlugin/NetInfoGraphWidget";

QString speedLabel(int value)
{
    return QString::number(value) + QStringLiteral(".0");
}

// Truncated toward zero, and bounded so that the scale's next step of 60
// still fits an int.
int scaleUnits(double speed)
{
    constexpr double kLimit = 1e9;
    return static_cast<int>(std::trunc(std::clamp(speed, -kLimit, kLimit)));
}
}

GraphWidget::GraphWidget(QWidget* parent)
    : QWidget(parent)
    , m_iMaxSamples(width())
{
    init();
}

QString GraphWidget::tr(QString id)
{
    return Change::tr(id, QStringLiteral("NetInfoUIExPlugin"));
}

void GraphWidget::init()
{
    m_pGraphConfig = NetInfoGraphConfigParse::GetInstance();
    if (m_pGraphConfig && m_pGraphConfig->GetSettingsFromXML(m_vecColour, m_vecFont) != 0)
        NETINFO_TRACE("%s: %s: %s: Get Config data failed", NetInfoLog::now().constData(), kSource, "init");

    if (NetInfoUILogic* logic = NetInfoUILogic::Instance()) {
        logic->Init();
        m_bResetAll = logic->IsFunctionEnable(QStringLiteral("RESETALLDATA"));
    }

    m_pResetButton = new QPushButton(this);
    m_pResetButton->hide();
    if (m_bResetAll) {
        m_pResetButton->show();
        m_pResetButton->setObjectName(QStringLiteral("NetInfoGraphWidget_ResetButton"));
        m_pResetButton->setMinimumWidth(90);
        m_pResetButton->setText(tr(QStringLiteral("IDS_RESET_ALLDATA")));
        m_pResetButton->resize(m_pResetButton->sizeHint());
        // Sized now, so the minimum width asked of the host already counts it.
        fitResetButton();
        m_pService = CNetInfoUIService::instance();
        if (m_pService)
            connect(m_pResetButton, &QPushButton::clicked, m_pService, &CNetInfoUIService::onResetButtonClicked);
    }

    connect(this, &GraphWidget::SizeChange, this, &GraphWidget::onSizeChange);

    m_colorGrid = NetInfoGraphConfigParse::colour(m_vecColour.value(4).strColor);
    m_colorUp = NetInfoGraphConfigParse::colour(m_vecColour.value(2).strColor);
    m_colorDown = NetInfoGraphConfigParse::colour(m_vecColour.value(3).strColor);

    const NetInfoFontConfig fontEntry = m_vecFont.value(3);
    m_font = font();
    if (!fontEntry.strFamily.isEmpty())
        m_font.setFamily(fontEntry.strFamily);
    m_iTextHeight = fontEntry.strSize.toInt();
    // A size of 0 leaves the default, as Qt always ignored it.
    if (m_iTextHeight > 0)
        m_font.setPixelSize(m_iTextHeight);
    // The profile's "normal" was weight 50 on Qt's old 0-99 scale; on
    // today's 1-1000 scale 50 would be hairline.
    m_font.setWeight(QFont::Normal);
}

void GraphWidget::DrawGraph(double up, double down)
{
    if (!std::isfinite(up) || !std::isfinite(down)) {
        NETINFO_WARN("%s: %s: %s: speed %f / %f is not a number; plotted as 0", NetInfoLog::now().constData(),
                     kSource, "DrawGraph", up, down);
        up = std::isfinite(up) ? up : 0;
        down = std::isfinite(down) ? down : 0;
    }
    const int upSpeed = scaleUnits(up);
    const int downSpeed = scaleUnits(down);
    const int top = std::max({m_iMaxSpeed, upSpeed, downSpeed});
    // The scale grows in steps of 60 and never shrinks.
    if (top > m_iMaxSpeed)
        m_iMaxSpeed = (top / 60) * 60 + 60;

    // Only the upload list is trimmed; painting walks its length alone.
    if (m_listUp.size() > m_iMaxSamples) {
        m_listUp.removeLast();
        m_listUp.removeLast();
    }
    m_listUp.prepend(up);
    m_listDown.prepend(down);
    update();
}

void GraphWidget::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    painter.fillRect(event->rect(), NetInfoGraphConfigParse::colour(m_vecColour.value(0).strColor));

    // Laid out over the whole widget, which is the event's rectangle on a
    // full repaint; a partial one (beneath the reset button) is clipped to
    // its region instead of squeezing the plot into it.
    const QRect area = rect();
    m_dLeft = area.left() + 60;
    m_dTop = area.top() + 20;
    m_dPlotWidth = (area.right() - area.left()) - 69;
    m_dCursorY = m_dTop;
    m_dPlotHeight = (area.bottom() - area.top()) - 49;
    m_dStep = m_dPlotHeight / 12;

    if (QGuiApplication::layoutDirection() == Qt::LeftToRight)
        drawLeftToRight(painter);
    else
        drawRightToLeft(painter);

    emit SizeChange(width(), height());
    if (m_pResetButton)
        fitResetButton();
}

void GraphWidget::fitResetButton()
{
    const QString text = tr(QStringLiteral("IDS_RESET_ALLDATA"));
    const int textWidth = std::max(0, QFontMetrics(m_pResetButton->font()).boundingRect(text).width());
    if (textWidth == 0) {
        m_pResetButton->setFixedWidth(0);
        return;
    }
    m_pResetButton->setFixedWidth(textWidth + 30);
    m_pResetButton->setText(text);
}

QString GraphWidget::speedTitle()
{
    QString title = tr(QStringLiteral("IDS_TRENDS_SPEED"));
    if (title.contains(QLatin1String("%s"))) {
        QVector<TagUnits> units;
        if (NetInfoUILogic* logic = NetInfoUILogic::Instance())
            logic->GetSpeedUnitData(units);
        title.replace(QLatin1String("%s"), CommonUtils::SpeedUnitToString(units, QStringLiteral("NetInfoUIExPlugin")));
    }
    return title;
}

double GraphWidget::speedY(double speed) const
{
    return (m_dPlotHeight + 20) - m_dPlotHeight * speed / m_iMaxSpeed;
}

// Both curves from the newest sample at startX, one pixel a sample in the
// direction dx; the walk follows the upload list's length only.
void GraphWidget::drawCurves(QPainter& painter, double startX, int dx, const QPen& upPen, const QPen& downPen)
{
    if (m_listUp.size() <= 1 || m_dPlotWidth < 0)
        return;
    QVector<QLineF> upLines;
    QVector<QLineF> downLines;
    double x = startX;
    for (int step = 0; step + 1 < m_listUp.size() && step <= m_dPlotWidth; ++step, x += dx) {
        upLines.append(QLineF(x, speedY(m_listUp[step]), x + dx, speedY(m_listUp[step + 1])));
        downLines.append(QLineF(x, speedY(m_listDown.value(step)), x + dx, speedY(m_listDown.value(step + 1))));
    }
    painter.setPen(upPen);
    painter.drawLines(upLines);
    painter.setPen(downPen);
    painter.drawLines(downLines);
}

void GraphWidget::drawLeftToRight(QPainter& painter)
{
    m_dLeft += 10;
    m_dPlotWidth -= 10;

    const QPen framePen(m_colorGrid, 1);
    const QPen gridPen(m_colorGrid, 1, Qt::DotLine);
    const QPen upPen(m_colorUp, 1);
    const QPen downPen(m_colorDown, 1);

    painter.setPen(framePen);
    painter.drawRect(QRectF(m_dLeft, m_dTop, m_dPlotWidth, m_dPlotHeight));
    painter.save();
    painter.translate(m_dLeft - 75, m_dStep * 7);
    painter.rotate(-90);
    painter.drawText(QPointF(0, 20), speedTitle());
    painter.restore();

    painter.setFont(m_font);
    const int labelAlign = Qt::AlignRight | Qt::AlignTop;
    int value = m_iMaxSpeed;
    painter.drawText(QRectF(m_dLeft - 41 - m_iTextHeight, m_dCursorY - 5, 50, 20), labelAlign, speedLabel(value));
    for (int round = 0; round < 11; ++round) {
        m_dCursorY += m_dStep;
        painter.setPen(gridPen);
        painter.drawLine(QPointF(m_dLeft, m_dCursorY), QPointF(m_dPlotWidth + 70, m_dCursorY));
        value -= m_iMaxSpeed / 12;
        painter.setPen(framePen);
        painter.drawText(QRectF(m_dLeft - 52 - m_iTextHeight, m_dCursorY - 5, m_iTextHeight + 50, 20), labelAlign,
                         speedLabel(value));
    }
    m_dCursorY += m_dStep;
    painter.drawText(QRectF(m_dLeft - 52 - m_iTextHeight, m_dCursorY - 9, m_iTextHeight + 50, 20), labelAlign,
                     QStringLiteral("0.0"));

    // The legend goes on one line when the download text fits beside the
    // upload text and the reset button, else on two.
    painter.setFont(font());
    const QString upText = tr(QStringLiteral("IDS_TRENDS_UPLOAD_SPEED"));
    const QString downText = tr(QStringLiteral("IDS_TRENDS_DOWNLOAD_SPEED"));
    const int upWidth = fontMetrics().horizontalAdvance(upText);
    const int downWidth = fontMetrics().horizontalAdvance(downText);
    double room = m_dPlotWidth - upWidth - 70;
    if (m_pResetButton && m_bResetAll)
        room -= m_pResetButton->width();

    painter.drawText(QPointF(70, m_dPlotHeight + 33), upText);
    painter.setPen(upPen);
    painter.setBrush(m_colorUp);
    painter.drawRect(QRectF(59, m_dPlotHeight + 24, 8, 8));
    painter.setPen(framePen);
    const bool oneLine = downWidth < room;
    if (oneLine)
        painter.drawText(QPointF(upWidth + 90, m_dPlotHeight + 33), downText);
    else
        painter.drawText(QPointF(70, m_dPlotHeight + 46), downText);
    painter.setPen(downPen);
    painter.setBrush(m_colorDown);
    painter.drawRect(oneLine ? QRectF(upWidth + 79, m_dPlotHeight + 24, 8, 8) : QRectF(59, m_dPlotHeight + 37, 8, 8));
    painter.setBrush(Qt::NoBrush);

    drawCurves(painter, m_dPlotWidth + 70, -1, upPen, downPen);
}

// The mirror image of drawLeftToRight, with constants of its own.
void GraphWidget::drawRightToLeft(QPainter& painter)
{
    m_dPlotWidth -= 20;

    const QPen framePen(m_colorGrid, 1);
    const QPen gridPen(m_colorGrid, 1, Qt::DotLine);
    const QPen upPen(m_colorUp, 1);
    const QPen downPen(m_colorDown, 1);

    painter.setPen(framePen);
    painter.drawRect(QRectF(m_dLeft - 50, m_dTop, m_dPlotWidth, m_dPlotHeight));
    painter.save();
    painter.translate(m_dPlotWidth + 40, m_dStep * 7);
    painter.rotate(-90);
    painter.drawText(QPointF(0, 40), speedTitle());
    painter.restore();

    painter.setFont(m_font);
    const double labelX = m_dPlotWidth + 15;
    int value = m_iMaxSpeed;
    painter.drawText(QPointF(labelX, m_dCursorY + 5), speedLabel(value));
    for (int round = 0; round < 11; ++round) {
        m_dCursorY += m_dStep;
        painter.setPen(gridPen);
        painter.drawLine(QPointF(m_dLeft - 50, m_dCursorY), QPointF(m_dPlotWidth + 10, m_dCursorY));
        value -= m_iMaxSpeed / 12;
        painter.setPen(framePen);
        painter.drawText(QPointF(labelX, m_dCursorY + 5), speedLabel(value));
    }
    m_dCursorY += m_dStep;
    painter.drawText(QPointF(labelX, m_dCursorY - 1), QStringLiteral("0.0"));

    // Right-aligned legend; each key box stands to the right of its text.
    painter.setFont(font());
    const QString upText = tr(QStringLiteral("IDS_TRENDS_UPLOAD_SPEED"));
    const QString downText = tr(QStringLiteral("IDS_TRENDS_DOWNLOAD_SPEED"));
    const int upWidth = fontMetrics().horizontalAdvance(upText);
    const int downWidth = fontMetrics().horizontalAdvance(downText);
    double room = m_dPlotWidth - upWidth - 70;
    if (m_pResetButton && m_bResetAll)
        room -= m_pResetButton->width();

    painter.drawText(QPointF(m_dPlotWidth - upWidth - 2, m_dPlotHeight + 33), upText);
    painter.setPen(upPen);
    painter.setBrush(m_colorUp);
    painter.drawRect(QRectF(m_dPlotWidth + 1, m_dPlotHeight + 25, 8, 8));
    painter.setPen(framePen);
    const bool oneLine = downWidth < room;
    if (oneLine)
        painter.drawText(QPointF(m_dPlotWidth - upWidth - downWidth - 17, m_dPlotHeight + 33), downText);
    else
        painter.drawText(QPointF(m_dPlotWidth - downWidth - 2, m_dPlotHeight + 44), downText);
    painter.setPen(downPen);
    painter.setBrush(m_colorDown);
    painter.drawRect(oneLine ? QRectF(m_dPlotWidth - upWidth - 14, m_dPlotHeight + 25, 8, 8)
                             : QRectF(m_dPlotWidth + 1, m_dPlotHeight + 36, 8, 8));
    painter.setBrush(Qt::NoBrush);

    drawCurves(painter, m_dLeft - 50, 1, upPen, downPen);
}

void GraphWidget::onSizeChange(int width, int height)
{
    if (!m_pResetButton || !m_bResetAll)
        return;
    const int y = height - m_pResetButton->height() - 1;
    const QPoint corner = QGuiApplication::layoutDirection() == Qt::LeftToRight
                              ? QPoint(width - m_pResetButton->width() - 8, y)
                              : QPoint(9, y);
    // Every paint reports the size; repainting when nothing moved would
    // never let painting stop.
    if (m_pResetButton->pos() == corner)
        return;
    update();
    m_pResetButton->move(corner);
}

void GraphWidget::setGraphMinmumWidth(int width)
{
    const QFontMetrics metrics(m_font);
    const int legend = std::max(metrics.horizontalAdvance(tr(QStringLiteral("IDS_TRENDS_UPLOAD_SPEED"))),
                                metrics.horizontalAdvance(tr(QStringLiteral("IDS_TRENDS_DOWNLOAD_SPEED"))))
                       + 70;
    const int button = m_pResetButton && !m_pResetButton->isHidden() ? m_pResetButton->width() : 0;
    setMinimumWidth(legend + button);
    if (INotifyService* service = GetNodifyInstance())
        service->Notify(QLatin1String(HostIds::MainFrameTarget), HostIds::EventMinimumWidth,
                        static_cast<quintptr>(std::max(0, legend + width + 70 + button)), 0);
}

INotifyService* GraphWidget::GetNodifyInstance()
{
    IPluginContainer* container = Startup::GetPluginContainer();
    if (!container)
        return nullptr;
    return qobject_cast<INotifyService*>(
        container->GetPlugin(QLatin1String(HostIds::NotifyServicePlugin), HostIds::NotifyServiceKind));
}
