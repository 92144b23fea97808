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
#include <QPaintEvent>
#include <QPainter>
#include <QPushButton>
#include <QVarLengthArray>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

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
} // namespace

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
    forgetLayout();
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
            connect(
                m_pResetButton, &QPushButton::clicked, m_pService, &CNetInfoUIService::onResetButtonClicked);
    }

    connect(this, &GraphWidget::SizeChange, this, &GraphWidget::onSizeChange);

    // Every pixel is painted over an opaque background: Qt need not clear
    // the area first.
    setAttribute(Qt::WA_OpaquePaintEvent,
        NetInfoGraphConfigParse::colour(m_vecColour.value(0).strColor).alpha() == 255);

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
    const int top = std::max({ m_iMaxSpeed, upSpeed, downSpeed });
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
    ++m_iNewSamples;

    // The frame is brought up to date here rather than in the paint, so that
    // only the pixels that changed are repainted: on an idle link the flat
    // curves shift onto themselves and nothing at all (not even the reset
    // button above the graph) needs painting. Hidden, or with the layer to
    // be redrawn, the paint does it all.
    const bool rightToLeft = QGuiApplication::layoutDirection() != Qt::LeftToRight;
    if (!isVisible() || !m_bLayerValid || m_iDrawnSegments < 0 || !(layerKey(rightToLeft) == m_layerKey)) {
        update();
        return;
    }
    layOut(rightToLeft);
    QRect changed;
    if (!updateCurveLayer(rightToLeft ? m_dLeft - 50 : m_dPlotWidth + 70, rightToLeft ? 1 : -1, &changed))
        update();
    else if (!changed.isEmpty())
        update(changed);
}

GraphWidget::LayerKey GraphWidget::layerKey(bool rightToLeft) const
{
    return { size(), devicePixelRatioF(), m_iMaxSpeed, rightToLeft,
        m_pResetButton && m_bResetAll ? m_pResetButton->width() : 0, Change::CurrentLanguage() };
}

void GraphWidget::paintEvent(QPaintEvent*)
{
    const bool rightToLeft = QGuiApplication::layoutDirection() != Qt::LeftToRight;
    layOut(rightToLeft);

    // Axes, labels, title and legend change only with the size, the scale,
    // the direction, the language or the font; drawn once, copied per tick.
    const LayerKey key = layerKey(rightToLeft);
    if (!m_bLayerValid || !(key == m_layerKey)) {
        if (key.language != m_layerKey.language)
            m_bButtonFitted = false;
        // Opaque when the background is, so that showing it is a plain copy;
        // a translucent one still lets what lies beneath shine through.
        const QColor background = NetInfoGraphConfigParse::colour(m_vecColour.value(0).strColor);
        const bool opaque = background.alpha() == 255;
        m_fixedLayer = QImage(
            size() * key.pixelRatio, opaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
        m_fixedLayer.setDevicePixelRatio(key.pixelRatio);
        m_fixedLayer.fill(opaque ? background : QColor(Qt::transparent));
        m_iDrawnSegments = -1;
        QPainter layer(&m_fixedLayer);
        layer.setFont(font());
        drawFixedLayer(layer, rightToLeft);
        m_layerKey = key;
        m_bLayerValid = true;
    }

    // Clipped to the event's rectangle, as a direct fill of it would be.
    const double startX = rightToLeft ? m_dLeft - 50 : m_dPlotWidth + 70;
    const int dx = rightToLeft ? 1 : -1;
    QPainter painter(this);
    if (updateCurveLayer(startX, dx)) {
        painter.drawImage(0, 0, m_frame);
    } else {
        painter.drawImage(0, 0, m_fixedLayer);
        drawCurves(painter, startX, dx);
    }

    emit SizeChange(width(), height());
    if (m_pResetButton && !m_bButtonFitted)
        fitResetButton();
}

void GraphWidget::changeEvent(QEvent* event)
{
    switch (event->type()) {
    case QEvent::LanguageChange:
    case QEvent::FontChange:
    case QEvent::StyleChange:
        forgetLayout();
        update();
        break;
    default:
        break;
    }
    QWidget::changeEvent(event);
}

void GraphWidget::forgetLayout()
{
    m_bLayerValid = false;
    m_bButtonFitted = false;
}

// Laid out over the whole widget, not the event's rectangle: a partial
// repaint (beneath the reset button) is clipped to its region instead of
// squeezing the plot into it.
void GraphWidget::layOut(bool rightToLeft)
{
    const QRect area = rect();
    m_dLeft = area.left() + 60;
    m_dTop = area.top() + 20;
    m_dPlotWidth = (area.right() - area.left()) - 69;
    m_dCursorY = m_dTop;
    m_dPlotHeight = (area.bottom() - area.top()) - 49;
    m_dStep = m_dPlotHeight / 12;
    // The two directions narrow the plot differently; both are kept.
    if (rightToLeft) {
        m_dPlotWidth -= 20;
    } else {
        m_dLeft += 10;
        m_dPlotWidth -= 10;
    }
}

void GraphWidget::fitResetButton()
{
    const QString text = tr(QStringLiteral("IDS_RESET_ALLDATA"));
    const int textWidth = std::max(0, QFontMetrics(m_pResetButton->font()).boundingRect(text).width());
    m_bButtonFitted = true;
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
        title.replace(
            QLatin1String("%s"), CommonUtils::SpeedUnitToString(units, QStringLiteral("NetInfoUIExPlugin")));
    }
    return title;
}

double GraphWidget::speedY(double speed) const
{
    return (m_dPlotHeight + 20) - m_dPlotHeight * speed / m_iMaxSpeed;
}

int GraphWidget::segmentCount() const
{
    if (m_listUp.size() <= 1 || m_dPlotWidth < 0)
        return 0;
    // The walk follows the upload list's length only.
    return int(std::min<qsizetype>(m_listUp.size() - 1, qsizetype(m_dPlotWidth) + 1));
}

// Segments from..to-1 of a curve whose newest sample stands at startX, one
// pixel a sample in the direction dx. Segments rather than one polyline:
// the joins land on the same pixels as they always did.
QVarLengthArray<QLineF, 1024> GraphWidget::segments(
    const QList<double>& samples, int from, int to, double startX, int dx) const
{
    QVarLengthArray<QLineF, 1024> lines;
    lines.reserve(std::max(0, to - from));
    double x = startX + double(dx) * from;
    double y = speedY(samples.value(from));
    for (int i = from; i < to; ++i, x += dx) {
        const double next = speedY(samples.value(i + 1));
        lines.append(QLineF(x, y, x + dx, next));
        y = next;
    }
    return lines;
}

void GraphWidget::drawCurves(QPainter& painter, double startX, int dx)
{
    const int count = segmentCount();
    const auto up = segments(m_listUp, 0, count, startX, dx);
    const auto down = segments(m_listDown, 0, count, startX, dx);
    painter.setPen(QPen(m_colorUp, 1));
    painter.drawLines(up.constData(), int(up.size()));
    painter.setPen(QPen(m_colorDown, 1));
    painter.drawLines(down.constData(), int(down.size()));
}

// Brings m_frame up to date. Between two paints the curves only move by the
// samples added, so the coverage masks are shifted and just the segments at
// both ends drawn again; the frame is then rebuilt only in the rows that
// either curve covers, then or now. A segment's pixels lie in the columns of
// its two samples, and drawing is the same wherever a whole pixel shift puts
// it: the picture is exactly that of drawing every segment anew. False where
// this does not apply (scaled or translucent painting): the caller then
// draws the curves directly. changed, if given, receives the bounds of the
// pixels that differ from the frame before.
bool GraphWidget::updateCurveLayer(double startX, int dx, QRect* changed)
{
    if (m_fixedLayer.devicePixelRatio() != 1 || m_fixedLayer.format() != QImage::Format_RGB32
        || !m_colorUp.isValid() || !m_colorDown.isValid())
        return false;
    const int added = std::exchange(m_iNewSamples, 0);
    if (m_iDrawnSegments >= 0 && added == 0)
        return true;
    const int width = m_fixedLayer.width();
    const int height = m_fixedLayer.height();
    const int count = segmentCount();
    const int head = qRound(startX);
    const bool shift = m_iDrawnSegments > 0 && added <= 16 && count > 2 * added + 12;

    // Columns on the head side of position p (samples from the head) or
    // on the tail side.
    const auto column = [&](int p) { return std::clamp(head + dx * p, -1, width); };
    for (QImage* mask : { &m_upMask, &m_downMask }) {
        const QList<double>& samples = mask == &m_upMask ? m_listUp : m_listDown;
        QVarLengthArray<QLineF, 1024> lines;
        if (!shift) {
            *mask = QImage(width, height, QImage::Format_Alpha8);
            mask->fill(0);
            lines = segments(samples, 0, count, startX, dx);
        } else {
            const int headEnd = column(added + 3);
            const int tailEnd = column(count - 3);
            // Rows that the curve did not cover are blank and stay so: only
            // the covered ones need moving (a handful on an idle link).
            const QVector<Rows>& before = mask == &m_upMask ? m_upRows : m_downRows;
            int first = 0;
            int last = height - 1;
            if (before.size() == width) {
                first = height;
                last = -1;
                for (const Rows& r : before) {
                    if (r.lo <= r.hi) {
                        first = std::min(first, r.lo);
                        last = std::max(last, r.hi);
                    }
                }
                first = std::max(first, 0);
                last = std::min(last, height - 1);
            }
            uchar* row = mask->bits() + qsizetype(first) * mask->bytesPerLine();
            for (int y = first; y <= last; ++y, row += mask->bytesPerLine()) {
                if (dx < 0) {
                    std::memmove(row, row + added, size_t(width - added));
                    std::memset(row + std::max(0, headEnd), 0, size_t(width - std::max(0, headEnd)));
                    std::memset(row, 0, size_t(std::max(0, tailEnd + 1)));
                } else {
                    std::memmove(row + added, row, size_t(width - added));
                    std::memset(row, 0, size_t(std::min(width, headEnd + 1)));
                    std::memset(row + std::min(width, tailEnd), 0, size_t(width - std::min(width, tailEnd)));
                }
            }
            lines = segments(samples, 0, added + 5, startX, dx);
            const auto tail = segments(samples, count - 5, count, startX, dx);
            lines.append(tail.constData(), tail.size());
        }
        QPainter painter(mask);
        painter.setPen(QPen(Qt::black, 1));
        painter.drawLines(lines.constData(), int(lines.size()));
    }

    const QVector<Rows> upRows = coveredRows(m_listUp, count, head, dx, width, height);
    const QVector<Rows> downRows = coveredRows(m_listDown, count, head, dx, width, height);
    const bool rebuilt = !shift || m_upRows.size() != width;
    if (rebuilt) {
        m_frame = m_fixedLayer.copy();
        m_upRows = QVector<Rows>(width);
        m_downRows = QVector<Rows>(width);
    }

    const QRect composed = composeFrame(upRows, downRows);
    if (changed)
        *changed = rebuilt ? rect() : composed;
    m_upRows = upRows;
    m_downRows = downRows;
    m_iDrawnSegments = count;
    return true;
}

// Rows that a curve may cover now, per column.
QVector<GraphWidget::Rows> GraphWidget::coveredRows(
    const QList<double>& samples, int count, int head, int dx, int width, int height) const
{
    QVector<Rows> rows(width);
    if (count == 0)
        return rows;
    Rows* row = rows.data();
    const double* sample = samples.constData(); // at least count + 1 long
    double y0 = speedY(sample[0]);
    for (int i = 0; i < count; ++i) {
        const double y1 = speedY(sample[i + 1]);
        const int lo = int(std::floor(std::clamp(std::min(y0, y1), -2.0, double(height)))) - 1;
        const int hi = int(std::ceil(std::clamp(std::max(y0, y1), -2.0, double(height)))) + 1;
        const int x = head + dx * i;
        const int last = std::min(width - 1, std::max(x, x + dx));
        for (int c = std::max(0, std::min(x, x + dx)); c <= last; ++c) {
            if (row[c].lo > row[c].hi) {
                row[c] = { lo, hi };
            } else {
                row[c].lo = std::min(row[c].lo, lo);
                row[c].hi = std::max(row[c].hi, hi);
            }
        }
        y0 = y1;
    }
    return rows;
}

// Down over up over the fixed layer, as drawing them in turn would give,
// in the rows either curve covers now or covered before. Returns the bounds
// of the pixels that changed.
QRect GraphWidget::composeFrame(const QVector<Rows>& upRows, const QVector<Rows>& downRows)
{
    const int width = m_fixedLayer.width();
    const int height = m_fixedLayer.height();
    const QRgb upColour = m_colorUp.rgb();
    const QRgb downColour = m_colorDown.rgb();
    uchar* const frame = m_frame.bits();
    const uchar* const fixed = m_fixedLayer.constBits();
    const qsizetype frameLine = m_frame.bytesPerLine();
    const uchar* const up = m_upMask.constBits();
    const uchar* const down = m_downMask.constBits();
    const qsizetype maskLine = m_upMask.bytesPerLine();
    int left = width;
    int right = -1;
    int top = height;
    int bottom = -1;
    const auto compose = [&](int c, Rows now, Rows before) {
        if (now.lo > now.hi)
            now = before;
        else if (before.lo <= before.hi)
            now = { std::min(now.lo, before.lo), std::max(now.hi, before.hi) };
        const int lo = std::max(0, now.lo);
        const int hi = std::min(height - 1, now.hi);
        const uchar* u = up + lo * maskLine + c;
        const uchar* d = down + lo * maskLine + c;
        const uchar* f = fixed + lo * frameLine + c * 4;
        uchar* out = frame + lo * frameLine + c * 4;
        for (int y = lo; y <= hi; ++y, u += maskLine, d += maskLine, f += frameLine, out += frameLine) {
            const QRgb pixel = *d ? downColour : *u ? upColour : *reinterpret_cast<const QRgb*>(f);
            QRgb& target = *reinterpret_cast<QRgb*>(out);
            if (target == pixel)
                continue;
            target = pixel;
            left = std::min(left, c);
            right = std::max(right, c);
            top = std::min(top, y);
            bottom = std::max(bottom, y);
        }
    };
    const Rows* upNow = upRows.constData();
    const Rows* downNow = downRows.constData();
    for (int c = 0; c < width; ++c) {
        compose(c, upNow[c], m_upRows[c]);
        compose(c, downNow[c], m_downRows[c]);
    }
    return right < left ? QRect() : QRect(QPoint(left, top), QPoint(right, bottom));
}

void GraphWidget::drawFixedLayer(QPainter& painter, bool rightToLeft)
{
    painter.fillRect(rect(), NetInfoGraphConfigParse::colour(m_vecColour.value(0).strColor));
    const QPen framePen(m_colorGrid, 1);
    const QPen gridPen(m_colorGrid, 1, Qt::DotLine);
    const double plotLeft = rightToLeft ? m_dLeft - 50 : m_dLeft;
    const double plotRight = rightToLeft ? m_dPlotWidth + 10 : m_dPlotWidth + 70;

    painter.setPen(framePen);
    painter.drawRect(QRectF(plotLeft, m_dTop, m_dPlotWidth, m_dPlotHeight));
    painter.save();
    painter.translate(rightToLeft ? m_dPlotWidth + 40 : m_dLeft - 75, m_dStep * 7);
    painter.rotate(-90);
    painter.drawText(QPointF(0, rightToLeft ? 40 : 20), speedTitle());
    painter.restore();

    // Left to right the labels are right-aligned in boxes before the plot;
    // right to left they start at a point after it.
    painter.setFont(m_font);
    const int labelAlign = Qt::AlignRight | Qt::AlignTop;
    const auto label = [&](double boxLeft, double boxWidth, double yBox, double yPoint, const QString& text) {
        if (rightToLeft)
            painter.drawText(QPointF(m_dPlotWidth + 15, yPoint), text);
        else
            painter.drawText(QRectF(boxLeft, yBox, boxWidth, 20), labelAlign, text);
    };
    int value = m_iMaxSpeed;
    label(m_dLeft - 41 - m_iTextHeight, 50, m_dCursorY - 5, m_dCursorY + 5, speedLabel(value));
    for (int round = 0; round < 11; ++round) {
        m_dCursorY += m_dStep;
        painter.setPen(gridPen);
        painter.drawLine(QPointF(plotLeft, m_dCursorY), QPointF(plotRight, m_dCursorY));
        value -= m_iMaxSpeed / 12;
        painter.setPen(framePen);
        label(m_dLeft - 52 - m_iTextHeight, m_iTextHeight + 50, m_dCursorY - 5, m_dCursorY + 5,
            speedLabel(value));
    }
    m_dCursorY += m_dStep;
    label(m_dLeft - 52 - m_iTextHeight, m_iTextHeight + 50, m_dCursorY - 9, m_dCursorY - 1,
        QStringLiteral("0.0"));

    // The legend goes on one line when the download text fits beside the
    // upload text and the reset button, else on two; right to left it is
    // right-aligned with each key box to the right of its text.
    painter.setFont(font());
    const QString upText = tr(QStringLiteral("IDS_TRENDS_UPLOAD_SPEED"));
    const QString downText = tr(QStringLiteral("IDS_TRENDS_DOWNLOAD_SPEED"));
    const int upWidth = fontMetrics().horizontalAdvance(upText);
    const int downWidth = fontMetrics().horizontalAdvance(downText);
    double room = m_dPlotWidth - upWidth - 70;
    if (m_pResetButton && m_bResetAll)
        room -= m_pResetButton->width();
    const bool oneLine = downWidth < room;
    const double w = m_dPlotWidth;
    const double h = m_dPlotHeight;

    QPointF upAt(70, h + 33);
    QRectF upBox(59, h + 24, 8, 8);
    QPointF downAt = oneLine ? QPointF(upWidth + 90, h + 33) : QPointF(70, h + 46);
    QRectF downBox = oneLine ? QRectF(upWidth + 79, h + 24, 8, 8) : QRectF(59, h + 37, 8, 8);
    if (rightToLeft) {
        upAt = QPointF(w - upWidth - 2, h + 33);
        upBox = QRectF(w + 1, h + 25, 8, 8);
        downAt = oneLine ? QPointF(w - upWidth - downWidth - 17, h + 33) : QPointF(w - downWidth - 2, h + 44);
        downBox = oneLine ? QRectF(w - upWidth - 14, h + 25, 8, 8) : QRectF(w + 1, h + 36, 8, 8);
    }
    painter.drawText(upAt, upText);
    painter.setPen(QPen(m_colorUp, 1));
    painter.setBrush(m_colorUp);
    painter.drawRect(upBox);
    painter.setPen(framePen);
    painter.drawText(downAt, downText);
    painter.setPen(QPen(m_colorDown, 1));
    painter.setBrush(m_colorDown);
    painter.drawRect(downBox);
    painter.setBrush(Qt::NoBrush);
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
        metrics.horizontalAdvance(tr(QStringLiteral("IDS_TRENDS_DOWNLOAD_SPEED"))));
    const int button = m_pResetButton && !m_pResetButton->isHidden() ? m_pResetButton->width() : 0;
    setMinimumWidth(legend + 70 + button);
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
