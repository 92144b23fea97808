// A usage bar: white ground, a fill in the warning colour of the moment, the
// used amount centred on top and a thin border taken from the skin.
#pragma once

#include <QColor>
#include <QString>
#include <QWidget>

class LwProgressBar : public QWidget
{
    Q_OBJECT
public:
    explicit LwProgressBar(QWidget* parent = nullptr);

    // The owner sets all four and then asks for a repaint with update().
    void setText(const QString& text) { m_strText = text; }
    void setColor(const QColor& color) { m_color = color; }
    void setValue(long double value) { m_ldValue = value; }
    void setMaximum(long double maximum) { m_ldMaximum = maximum; }

    QString text() const { return m_strText; }
    QColor color() const { return m_color; }
    long double value() const { return m_ldValue; }
    long double maximum() const { return m_ldMaximum; }

    // Width in pixels of the fill for a bar `width` pixels wide: clamped to
    // the bar, and nothing for a non-positive maximum.
    static int fillWidth(long double value, long double maximum, int width);
    // The border colour: the skin image's top-left pixel, gray when the image
    // is missing or that pixel is white.
    static QColor borderColor(const QString& skinImagePath);
    static QString skinImagePath();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_strText;
    QColor m_color;
    long double m_ldValue = 0;
    long double m_ldMaximum = 0;
    QString m_strSkinPath;
    QColor m_borderColor;
};
