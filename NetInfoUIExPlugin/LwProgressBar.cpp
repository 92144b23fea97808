#include "LwProgressBar.h"

#include "CommonUtils.h"

#include <QImage>
#include <QPainter>
#include <QPen>

LwProgressBar::LwProgressBar(QWidget* parent)
    : QWidget(parent)
{ }

int LwProgressBar::fillWidth(long double value, long double maximum, int width)
{
    if (!(value > 0) || width <= 0)
        return 0;
    // Any use of a zero limit fills the bar, as the division to infinity would.
    if (!(maximum > 0))
        return width;
    const long double filled = value * width / maximum;
    return filled > width ? width : static_cast<int>(filled);
}

QString LwProgressBar::skinImagePath()
{
    return CommonUtils::GetPluginLibraryPath()
        + QStringLiteral("/skin/default/images/tree_widget_bg_line_top_curve_box.png");
}

QColor LwProgressBar::borderColor(const QString& skinImagePath)
{
    const QImage image(skinImagePath);
    if (image.isNull())
        return QColor(Qt::gray);
    // Opaque: a transparent corner of the skin must not hide the border.
    const QColor pixel(image.pixel(0, 0));
    return pixel == QColor(Qt::white) ? QColor(Qt::gray) : pixel;
}

void LwProgressBar::paintEvent(QPaintEvent*)
{
    // The whole bar is redrawn even for a partial update: the fill is a
    // fraction of the full width, not of the damaged region.
    const QRect r = rect();
    QPainter painter(this);
    painter.fillRect(r, Qt::white);
    painter.fillRect(QRect(0, 0, fillWidth(m_ldValue, m_ldMaximum, r.width()), r.height()),
        QBrush(m_color, Qt::SolidPattern));
    painter.drawText(r, Qt::AlignHCenter | Qt::AlignVCenter, m_strText);

    // The skin is read once per location rather than on every tick's repaint.
    const QString path = skinImagePath();
    if (path != m_strSkinPath || !m_borderColor.isValid()) {
        m_strSkinPath = path;
        m_borderColor = borderColor(path);
    }
    painter.setPen(QPen(QBrush(m_borderColor), 2.0, Qt::SolidLine));
    painter.drawRect(r);
}
