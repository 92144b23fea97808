// Draws the view's tree icons, the limit bars' skin image and the
// application icon. Every tree icon is laid out on a 16-unit grid and painted
// at 4x (64x64), so the icons stay sharp on high-DPI screens and scale
// cleanly down to 16 px.
//   netinfo_icongen <plugin dir> <skin image file> <icon theme dir>
#include <QColor>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QTextStream>

#include <functional>

namespace {

constexpr int kCanvas = 64;
constexpr qreal kScale = kCanvas / 16.0;

const QColor kUp(0x2e, 0x8b, 0x57); // upload: green
const QColor kDown(0x1f, 0x6f, 0xc5); // download: blue
const QColor kInk(0x3c, 0x4a, 0x5c); // outlines
const QColor kPaper(0xfa, 0xfb, 0xfd); // calendar sheets
const QColor kHeader(0xd9, 0x4f, 0x3d); // calendar binding strip
const QColor kAccent(0xf0, 0xa2, 0x2c); // highlighted day, bars

using Painter = std::function<void(QPainter&)>;

QPen inkPen(qreal width = 1.0, const QColor& colour = kInk)
{
    QPen pen(colour, width);
    pen.setJoinStyle(Qt::RoundJoin);
    pen.setCapStyle(Qt::RoundCap);
    return pen;
}

// An arrow along x = cx from tail to tip; the head is wider than the shaft
// and the shaft longer than the head, so a mirrored arrow is easy to spot.
QPainterPath arrow(qreal cx, qreal tail, qreal tip)
{
    const qreal dir = tip < tail ? -1.0 : 1.0;
    const qreal headLength = 4.5;
    const qreal headHalf = 3.2;
    const qreal shaftHalf = 1.1;
    const qreal neck = tip - dir * headLength;
    QPainterPath path;
    path.moveTo(cx - shaftHalf, tail);
    path.lineTo(cx - shaftHalf, neck);
    path.lineTo(cx - headHalf, neck);
    path.lineTo(cx, tip);
    path.lineTo(cx + headHalf, neck);
    path.lineTo(cx + shaftHalf, neck);
    path.lineTo(cx + shaftHalf, tail);
    path.closeSubpath();
    return path;
}

void fillArrow(QPainter& p, const QPainterPath& path, const QColor& colour)
{
    p.setPen(inkPen(0.6, colour.darker(140)));
    p.setBrush(colour);
    p.drawPath(path);
}

// A calendar sheet with its binding strip and two rings; returns the area
// below the strip that the variants fill.
QRectF calendar(QPainter& p, const QRectF& sheet)
{
    p.setPen(inkPen(0.8));
    p.setBrush(kPaper);
    p.drawRoundedRect(sheet, 1.2, 1.2);
    const QRectF strip(sheet.left(), sheet.top(), sheet.width(), 3.2);
    QPainterPath stripPath;
    stripPath.addRoundedRect(strip, 1.2, 1.2);
    stripPath.addRect(QRectF(strip.left(), strip.top() + 1.5, strip.width(), strip.height() - 1.5));
    p.setPen(Qt::NoPen);
    p.setBrush(kHeader);
    p.drawPath(stripPath.simplified());
    p.setPen(inkPen(0.8));
    p.setBrush(Qt::NoBrush);
    p.drawRoundedRect(sheet, 1.2, 1.2);
    p.setPen(inkPen(1.0));
    p.drawLine(
        QPointF(sheet.left() + 3.5, sheet.top() - 1.2), QPointF(sheet.left() + 3.5, sheet.top() + 1.4));
    p.drawLine(
        QPointF(sheet.right() - 3.5, sheet.top() - 1.2), QPointF(sheet.right() - 3.5, sheet.top() + 1.4));
    return QRectF(
        sheet.left() + 1.2, strip.bottom() + 1.0, sheet.width() - 2.4, sheet.bottom() - strip.bottom() - 2.0);
}

void transfer(QPainter& p)
{
    fillArrow(p, arrow(5.0, 14.5, 1.5), kUp);
    fillArrow(p, arrow(11.0, 1.5, 14.5), kDown);
}

// A tray under the arrow: what is sent leaves it, what is received lands in it.
void tray(QPainter& p, const QColor& colour)
{
    p.setPen(inkPen(1.3, colour.darker(140)));
    p.setBrush(Qt::NoBrush);
    QPainterPath path;
    path.moveTo(2.0, 11.5);
    path.lineTo(2.0, 14.5);
    path.lineTo(14.0, 14.5);
    path.lineTo(14.0, 11.5);
    p.drawPath(path);
}

void upload(QPainter& p)
{
    fillArrow(p, arrow(7.0, 12.5, 1.0), kUp);
    tray(p, kUp);
}

void download(QPainter& p)
{
    fillArrow(p, arrow(9.0, 1.0, 12.5), kDown);
    tray(p, kDown);
}

void statistics(QPainter& p)
{
    p.setPen(inkPen(1.0));
    p.drawLine(QPointF(1.5, 1.5), QPointF(1.5, 14.5));
    p.drawLine(QPointF(1.5, 14.5), QPointF(14.5, 14.5));
    const struct
    {
        qreal x, top;
        QColor colour;
    } bars[] = { { 3.5, 9.0, kDown }, { 7.0, 4.5, kUp }, { 10.5, 7.0, kAccent } };
    for (const auto& bar : bars) {
        p.setPen(inkPen(0.6, bar.colour.darker(140)));
        p.setBrush(bar.colour);
        p.drawRect(QRectF(bar.x, bar.top, 2.6, 13.0 - bar.top));
    }
}

void spare(QPainter& p)
{
    const QRectF body = calendar(p, QRectF(1.5, 2.5, 13.0, 12.0));
    p.setPen(inkPen(0.9, kInk.lighter(160)));
    for (int row = 1; row <= 3; ++row) {
        const qreal y = body.top() + row * body.height() / 4.0;
        p.drawLine(QPointF(body.left() + 0.8, y), QPointF(body.right() - 0.8 - (row == 3 ? 4.0 : 0.0), y));
    }
}

void today(QPainter& p)
{
    const QRectF body = calendar(p, QRectF(1.5, 2.5, 13.0, 12.0));
    // One day, drawn as a bold "1".
    QPainterPath one;
    const qreal cx = body.center().x() + 0.3;
    one.moveTo(cx - 2.0, body.top() + 2.2);
    one.lineTo(cx, body.top() + 0.6);
    one.lineTo(cx, body.bottom() - 0.4);
    p.setPen(inkPen(1.6, kHeader.darker(120)));
    p.setBrush(Qt::NoBrush);
    p.drawPath(one);
    p.drawLine(QPointF(cx - 2.0, body.bottom() - 0.4), QPointF(cx + 2.0, body.bottom() - 0.4));
}

void month(QPainter& p)
{
    const QRectF body = calendar(p, QRectF(1.5, 2.5, 13.0, 12.0));
    const int columns = 4, rows = 3;
    const qreal cell = 2.2, gapX = (body.width() - columns * cell) / (columns - 1),
                gapY = (body.height() - rows * cell) / (rows - 1);
    for (int r = 0; r < rows; ++r) {
        for (int c = 0; c < columns; ++c) {
            const bool marked = r == 1 && c == 2;
            p.setPen(Qt::NoPen);
            p.setBrush(marked ? kAccent : kInk.lighter(190));
            p.drawRect(QRectF(body.left() + c * (cell + gapX), body.top() + r * (cell + gapY), cell, cell));
        }
    }
}

void year(QPainter& p)
{
    // Stacked pages behind the front sheet.
    p.setPen(inkPen(0.7));
    p.setBrush(kPaper.darker(112));
    p.drawRoundedRect(QRectF(4.0, 1.0, 11.0, 10.5), 1.0, 1.0);
    p.setBrush(kPaper.darker(106));
    p.drawRoundedRect(QRectF(2.8, 2.2, 11.0, 10.5), 1.0, 1.0);
    const QRectF body = calendar(p, QRectF(1.0, 4.5, 11.5, 10.5));
    // A "Y" for year.
    const qreal cx = body.center().x();
    const qreal fork = body.top() + body.height() * 0.5;
    p.setPen(inkPen(1.5, kHeader.darker(120)));
    p.drawLine(QPointF(cx - 2.2, body.top() + 0.3), QPointF(cx, fork));
    p.drawLine(QPointF(cx + 2.2, body.top() + 0.3), QPointF(cx, fork));
    p.drawLine(QPointF(cx, fork), QPointF(cx, body.bottom() - 0.2));
}

void bullet(QPainter& p)
{
    QRadialGradient shade(QPointF(7.0, 7.0), 4.0, QPointF(6.6, 6.4));
    shade.setColorAt(0.0, kDown.lighter(150));
    shade.setColorAt(1.0, kDown);
    p.setPen(inkPen(0.6, kDown.darker(140)));
    p.setBrush(shade);
    p.drawEllipse(QPointF(8.0, 8.0), 3.5, 3.5);
}

QImage render(const Painter& draw)
{
    QImage image(kCanvas, kCanvas, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(kScale, kScale);
    draw(painter);
    painter.end();
    return image;
}

// The limit bars take their border colour from the top-left pixel; the rest
// is a soft top-lit curve that a skin may show as the bars' frame.
QImage skin()
{
    const QColor border(0x8f, 0xa3, 0xbf);
    QImage image(24, 12, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient fill(0, 0, 0, image.height());
    fill.setColorAt(0.0, border.lighter(130));
    fill.setColorAt(1.0, QColor(border.red(), border.green(), border.blue(), 0));
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(0, 0, image.width(), image.height() + 6), 6, 6);
    painter.end();
    image.setPixelColor(0, 0, border);
    return image;
}

// The application icon: a speed gauge over a trend line, on a 64-unit grid.
// It is painted at each size rather than scaled, so the small one stays crisp.
QImage applicationIcon(int size)
{
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(size / 64.0, size / 64.0);

    const QRectF tile(3.0, 3.0, 58.0, 58.0);
    QLinearGradient sky(tile.topLeft(), tile.bottomLeft());
    sky.setColorAt(0.0, kDown.lighter(125));
    sky.setColorAt(1.0, kDown.darker(135));
    p.setPen(inkPen(1.0, kDown.darker(170)));
    p.setBrush(sky);
    p.drawRoundedRect(tile, 12.0, 12.0);

    // Gauge: calm, busy and near-the-limit thirds of a 220 degree sweep.
    const QPointF hub(32.0, 33.0);
    const QRectF dial(hub.x() - 19.0, hub.y() - 19.0, 38.0, 38.0);
    const struct
    {
        int from, span;
        QColor colour;
    } bands[] = { { 200, -80, kUp.lighter(150) }, { 120, -70, kAccent }, { 50, -70, kHeader.lighter(120) } };
    for (const auto& band : bands) {
        QPen pen(band.colour, 6.0);
        pen.setCapStyle(Qt::FlatCap);
        p.setPen(pen);
        p.drawArc(dial, band.from * 16, band.span * 16);
    }
    const QPointF tip(hub.x() + 15.0 * 0.42, hub.y() - 15.0 * 0.91); // about 65 degrees
    p.setPen(inkPen(3.4, kPaper));
    p.drawLine(hub, tip);
    p.setPen(Qt::NoPen);
    p.setBrush(kPaper);
    p.drawEllipse(hub, 4.2, 4.2);

    // The speed trend underneath.
    QPainterPath trend;
    trend.moveTo(11.0, 52.0);
    const QPointF points[]
        = { { 18.0, 48.5 }, { 24.0, 50.5 }, { 31.0, 45.5 }, { 38.0, 48.0 }, { 45.0, 43.5 }, { 53.0, 46.0 } };
    for (const QPointF& point : points)
        trend.lineTo(point);
    p.setPen(inkPen(2.6, kPaper));
    p.setBrush(Qt::NoBrush);
    p.drawPath(trend);
    p.end();
    return image;
}

bool save(const QImage& image, const QString& path, QTextStream& err)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    // The view loads the icons by their bare names, so the format is explicit.
    if (image.save(path, "PNG"))
        return true;
    err << "netinfo_icongen: cannot write " << path << '\n';
    return false;
}

} // namespace

int main(int argc, char* argv[])
{
    QTextStream err(stderr);
    if (argc != 4) {
        err << "usage: netinfo_icongen <plugin dir> <skin image file> <icon theme dir>\n";
        return 2;
    }
    const QString pluginDir = QString::fromLocal8Bit(argv[1]);
    const QString skinFile = QString::fromLocal8Bit(argv[2]);
    const QString themeDir = QString::fromLocal8Bit(argv[3]);

    const Painter icons[] = { transfer, upload, download, statistics, spare, today, month, year, bullet };
    bool ok = true;
    int number = 1;
    for (const Painter& draw : icons)
        ok = save(render(draw),
                 QStringLiteral("%1/Icon_%2").arg(pluginDir).arg(number++, 2, 10, QLatin1Char('0')), err)
            && ok;
    ok = save(skin(), skinFile, err) && ok;
    for (int size : { 48, 256 })
        ok = save(applicationIcon(size), QStringLiteral("%1/%2x%2/apps/netinfo.png").arg(themeDir).arg(size),
                 err)
            && ok;
    return ok ? 0 : 1;
}
