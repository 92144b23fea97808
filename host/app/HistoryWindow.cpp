#include "HistoryWindow.h"

#include <QComboBox>
#include <QEvent>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QLabel>
#include <QLoggingCategory>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QStandardPaths>
#include <QToolTip>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

Q_LOGGING_CATEGORY(lcHistory, "netinfo.history")

namespace {

const QColor kReceived(0x2f, 0x6f, 0xb5);
const QColor kSent(0xf0, 0x9a, 0x3e);
const QColor kLimit(0xc6, 0x28, 0x28);
constexpr int kAxisWidth = 64;
constexpr int kMargin = 12;
constexpr int kLabelHeight = 22;

QString axisLabel(const QDateTime& start, report::HistoryKind kind, const QLocale& locale)
{
    switch (kind) {
    case report::HistoryKind::Hours:
        return locale.toString(start.time(), QStringLiteral("HH:mm"));
    case report::HistoryKind::Days:
        return locale.toString(start.date(), QStringLiteral("d.M."));
    case report::HistoryKind::Months:
        break;
    }
    return locale.toString(start.date(), QStringLiteral("MMM yy"));
}

} // namespace

HistoryChart::HistoryChart(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("NetInfo_HistoryChart"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumSize(360, 200);
}

void HistoryChart::setBars(const QList<Bar>& bars, report::HistoryKind kind, quint64 limit)
{
    m_bars = bars;
    m_kind = kind;
    m_limit = limit;
    update();
}

HistoryChart::Unit HistoryChart::unitFor(quint64 bytes)
{
    static const Unit units[]
        = { { "GB", quint64(1) << 30 }, { "MB", quint64(1) << 20 }, { "KB", quint64(1) << 10 } };
    for (const Unit& unit : units)
        if (bytes >= unit.bytes)
            return unit;
    return { "B", 1 };
}

double HistoryChart::axisMaximum(quint64 highest, const Unit& unit)
{
    const double value = double(highest) / double(unit.bytes);
    if (value <= 0)
        return 1;
    // 1, 2 or 5 times a power of ten, so the grid lines fall on round figures.
    const double power = std::pow(10.0, std::floor(std::log10(value)));
    for (double step : { 1.0, 2.0, 5.0, 10.0 })
        if (step * power >= value)
            return step * power;
    return 10 * power;
}

QRect HistoryChart::plotRect() const
{
    return rect().adjusted(kAxisWidth, kMargin, -kMargin, -kLabelHeight - kMargin);
}

QRectF HistoryChart::barRect(int index, double maximumBytes) const
{
    const QRect plot = plotRect();
    const double slot = double(plot.width()) / std::max<qsizetype>(m_bars.size(), 1);
    const double gap = std::min(slot * 0.2, 6.0);
    const Bar& bar = m_bars.at(index);
    const double height = plot.height() * double(bar.received + bar.sent) / maximumBytes;
    return { plot.left() + index * slot + gap / 2, plot.bottom() - height, slot - gap, height };
}

int HistoryChart::barAt(const QPoint& point) const
{
    const QRect plot = plotRect();
    if (m_bars.isEmpty() || !plot.contains(point))
        return -1;
    return std::clamp(int((point.x() - plot.left()) * m_bars.size() / std::max(plot.width(), 1)), 0,
        int(m_bars.size() - 1));
}

QString HistoryChart::barText(int index) const
{
    const Bar& bar = m_bars.at(index);
    const QLocale locale;
    const auto size = [&locale](quint64 bytes) {
        return locale.formattedDataSize(qint64(bytes), 2, QLocale::DataSizeTraditionalFormat);
    };
    QString when;
    switch (m_kind) {
    case report::HistoryKind::Hours:
        when = tr("%1, %2 to %3")
                   .arg(locale.toString(bar.start.date(), QLocale::LongFormat),
                       locale.toString(bar.start.time(), QLocale::ShortFormat),
                       locale.toString(bar.end.time(), QLocale::ShortFormat));
        break;
    case report::HistoryKind::Days:
        when = locale.toString(bar.start.date(), QLocale::LongFormat);
        break;
    case report::HistoryKind::Months:
        when = tr("%1 to %2")
                   .arg(locale.toString(bar.start.date(), QLocale::ShortFormat),
                       locale.toString(bar.end.addSecs(-1).date(), QLocale::ShortFormat));
        break;
    }
    return tr("%1\nReceived: %2\nSent: %3\nTotal: %4")
        .arg(when, size(bar.received), size(bar.sent), size(bar.received + bar.sent));
}

bool HistoryChart::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const int index = barAt(help->pos());
        if (index >= 0)
            QToolTip::showText(help->globalPos(), barText(index), this);
        else
            QToolTip::hideText();
        return true;
    }
    return QWidget::event(event);
}

void HistoryChart::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    quint64 highest = m_limit;
    for (const Bar& bar : m_bars)
        highest = std::max(highest, bar.received + bar.sent);
    const Unit unit = unitFor(highest);
    const double maximum = axisMaximum(highest, unit);
    const double maximumBytes = maximum * double(unit.bytes);
    const QRect plot = plotRect();
    const QLocale locale;

    // Grid and axis labels in the unit the figures reach.
    painter.setPen(palette().color(QPalette::Mid));
    constexpr int kLines = 4;
    for (int i = 0; i <= kLines; ++i) {
        const int y = plot.bottom() - plot.height() * i / kLines;
        painter.drawLine(plot.left(), y, plot.right(), y);
        painter.setPen(palette().color(QPalette::Text));
        // Figures and dates read left to right whatever the language, and
        // the chart is not mirrored: "10 MB", never "MB 10".
        painter.drawText(QRect(0, y - 10, kAxisWidth - 6, 20),
            Qt::AlignRight | Qt::AlignVCenter | Qt::TextForceLeftToRight,
            QStringLiteral("%1 %2").arg(
                locale.toString(maximum * i / kLines, 'f', QLocale::FloatingPointShortest),
                QLatin1String(unit.name)));
        painter.setPen(palette().color(QPalette::Mid));
    }

    painter.setRenderHint(QPainter::Antialiasing);
    const int labelEvery = std::max<int>(1, int(m_bars.size() * 40 / std::max(plot.width(), 1)) + 1);
    for (int i = 0; i < m_bars.size(); ++i) {
        const QRectF whole = barRect(i, maximumBytes);
        const Bar& bar = m_bars.at(i);
        const double total = double(bar.received + bar.sent);
        const double receivedHeight = total > 0 ? whole.height() * double(bar.received) / total : 0;
        painter.fillRect(
            QRectF(whole.left(), whole.bottom() - receivedHeight, whole.width(), receivedHeight), kReceived);
        painter.fillRect(
            QRectF(whole.left(), whole.top(), whole.width(), whole.height() - receivedHeight), kSent);
        if (i % labelEvery == 0) {
            painter.setPen(palette().color(QPalette::Text));
            const QString label = axisLabel(bar.start, m_kind, locale);
            painter.drawText(QRectF(whole.center().x() - 40, plot.bottom() + 4, 80, kLabelHeight),
                Qt::AlignHCenter | Qt::AlignTop | Qt::TextForceLeftToRight, label);
        }
    }

    if (m_limit > 0) {
        const double y = plot.bottom() - plot.height() * double(m_limit) / maximumBytes;
        painter.setPen(QPen(kLimit, 2, Qt::DashLine));
        painter.drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
        painter.drawText(QRectF(plot.left() + 4, y - 18, plot.width() - 8, 16),
            Qt::AlignRight | Qt::AlignBottom, tr("limit"));
    }
}

HistoryWindow::HistoryWindow(QString ledgerPath, QString limitFile, QString hostSettingsFile, QWidget* parent)
    : QWidget(parent, Qt::Window)
    , m_ledgerPath(std::move(ledgerPath))
    , m_limitFile(std::move(limitFile))
    , m_settingsFile(std::move(hostSettingsFile))
{
    setObjectName(QStringLiteral("NetInfo_HistoryWindow"));
    setWindowTitle(tr("NetInfo \u2014 History"));
    m_kind = new QComboBox(this);
    m_kind->addItem(tr("The last 48 hours"), int(report::HistoryKind::Hours));
    m_kind->addItem(tr("Days of this and the previous period"), int(report::HistoryKind::Days));
    m_kind->addItem(tr("The last twelve months"), int(report::HistoryKind::Months));
    m_kind->setCurrentIndex(1);
    connect(m_kind, &QComboBox::currentIndexChanged, this, [this] { reload(); });
    auto* legend = new QLabel(
        tr("<span style='color:%1'>&#9632;</span> received &nbsp; <span style='color:%2'>&#9632;</span> sent")
            .arg(kReceived.name(), kSent.name()),
        this);
    auto* exportButton = new QPushButton(tr("Export PNG\u2026"), this);
    connect(exportButton, &QPushButton::clicked, this, &HistoryWindow::exportAsked);
    m_note = new QLabel(this);
    m_note->setObjectName(QStringLiteral("NetInfo_HistoryNote"));
    m_chart = new HistoryChart(this);

    auto* top = new QHBoxLayout;
    top->addWidget(m_kind);
    top->addWidget(legend);
    top->addStretch();
    top->addWidget(exportButton);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_chart, 1);
    layout->addWidget(m_note);
}

void HistoryWindow::showKind(report::HistoryKind kind)
{
    m_kind->setCurrentIndex(m_kind->findData(int(kind))); // reloads when it changes
}

void HistoryWindow::reload(const QDateTime& now)
{
    const auto kind = report::HistoryKind(m_kind->currentData().toInt());
    const report::LimitSettings limit = report::readLimitSettings(m_limitFile);
    velt::PeriodSettingsReader settings(m_settingsFile);
    const QList<report::Period> periods = report::historyPeriods(now, settings.settings(), limit, kind);
    QString error;
    std::unique_ptr<report::UsageSource> source = report::openLedger(m_ledgerPath, error);
    QList<HistoryChart::Bar> bars;
    if (source) {
        for (const report::PeriodUsage& usage : report::collect(*source, periods))
            bars.append({ usage.period.start, usage.period.end, usage.total.received, usage.total.sent });
        m_note->setText(tr("Hover a bar for its figures."));
    } else {
        qCInfo(lcHistory, "no history to show: %s", qUtf8Printable(error));
        m_note->setText(error);
    }
    // The line only where a bar spans the limit's own period.
    const bool limitFits
        = (kind == report::HistoryKind::Months && limit.kind == report::LimitSettings::Kind::Monthly)
        || (kind == report::HistoryKind::Days && limit.kind == report::LimitSettings::Kind::Daily);
    m_chart->setBars(bars, kind, limitFits ? limit.limitBytes : 0);
}

bool HistoryWindow::exportPng(const QString& path)
{
    if (m_chart->grab().save(path, "PNG"))
        return true;
    qCWarning(lcHistory, "cannot write the history image %s", qUtf8Printable(path));
    return false;
}

void HistoryWindow::exportAsked()
{
    const QString path = QFileDialog::getSaveFileName(this, tr("Export history"),
        QStandardPaths::writableLocation(QStandardPaths::PicturesLocation)
            + QStringLiteral("/netinfo-history.png"),
        tr("PNG images (*.png)"));
    if (!path.isEmpty() && !exportPng(path))
        QMessageBox::warning(this, windowTitle(), tr("The image could not be written to %1.").arg(path));
}
