#include "AllowancePanel.h"

#include "HostPaths.h"
#include "StatisticsBackend.h"
#include "UsageLedger.h"
#include "UsagePeriods.h"
#include "veltsdk.h"

#include <QDateTime>
#include <QEvent>
#include <QFile>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QLoggingCategory>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <cmath>

Q_LOGGING_CATEGORY(lcAllowance, "netinfo.allowance")

namespace {

// Often enough that the panel and the view's month agree while one looks.
constexpr int kRefreshMs = 5 * 1000;
constexpr double kGigabyte = 1024.0 * 1024 * 1024;

allowance::LimitPeriod periodNow(
    const AllowanceSources& sources, const QDateTime& now, const allowance::LimitSettings& limit)
{
    velt::PeriodSettingsReader settings(sources.hostSettingsFile);
    return allowance::currentLimitPeriod(now, settings.settings(), limit);
}

// A selectable label lays its text out as a document, which takes the
// paragraph's direction from the first strong letter even inside an
// isolated amount: a right-to-left sentence that opens with one ("5.73 MB
// of 2.00 MB" in Arabic) read left to right, its amounts swapped. A leading
// right-to-left mark sets the direction the sentence really has.
QString paragraph(const QString& text)
{
    return text.isRightToLeft() ? QChar(0x200F) + text : text;
}

allowance::Figures figuresFrom(
    const AllowanceSources& sources, const QDateTime& now, velt::UsageLedger& ledger)
{
    const allowance::LimitSettings limit = allowance::readLimitSettings(sources.limitFile);
    const allowance::LimitPeriod period = periodNow(sources, now, limit);
    const qint64 start = period.start.toSecsSinceEpoch();
    // Up to the end of the current bucket: the ledger counts whole buckets.
    const qint64 end
        = velt::UsageLedger::bucketStart(now.toSecsSinceEpoch()) + velt::UsageLedger::BucketSeconds;
    const velt::Usage usage = ledger.total(start, end);
    quint64 used = usage.received + usage.sent;
    // The writer commits every few seconds; the service's month already has
    // the rest. Unwritten usage is recent, so it lies in the limit's period
    // too, but for the seconds after the period's start.
    if (const std::optional<quint64> month = sources.serviceMonth ? sources.serviceMonth() : std::nullopt) {
        velt::PeriodSettingsReader settings(sources.hostSettingsFile);
        const qint64 monthStart = velt::periodStarts(now, settings.settings()).month.toSecsSinceEpoch();
        const velt::Usage written = ledger.total(monthStart, end);
        if (*month > written.received + written.sent)
            used += *month - (written.received + written.sent);
    }
    return allowance::compute(now, period, used, ledger.adjustmentTotal(start), limit.limitBytes);
}

} // namespace

AllowanceSources AllowanceSources::user()
{
    return { HostPaths::userDataDir() + QStringLiteral("/usage.sqlite"),
        HostPaths::userDataDir() + QStringLiteral("/DataUsageLimit.ini"), HostPaths::hostSettingsFile(), {} };
}

allowance::Figures currentAllowance(const AllowanceSources& sources, const QDateTime& now)
{
    velt::UsageLedger ledger(sources.ledgerPath, velt::LedgerAccess::ReadOnly);
    return figuresFrom(sources, now, ledger);
}

std::optional<quint64> statisticsServiceMonth()
{
    char report[VELT_STATISTICS_REPORT_SIZE] = {};
    if (VELT_Statistics_GetReport(VELT_REPORT_MONTH, report, 0) != 0)
        return std::nullopt;
    const velt::StatisticsRecord month = velt::readReport(report);
    return month.bytesReceived + month.bytesSent;
}

QString allowanceTooltip(const AllowanceSources& sources)
{
    return allowance::summary(currentAllowance(sources));
}

AllowancePanel::AllowancePanel(AllowanceSources sources, QWidget* parent)
    : QWidget(parent)
    , m_sources(std::move(sources))
{
    setObjectName(QStringLiteral("NetInfo_AllowancePanel"));
    m_bar = new QProgressBar(this);
    m_bar->setRange(0, 1000);
    m_bar->setTextVisible(true);
    m_form = new QFormLayout;
    m_form->setLabelAlignment(Qt::AlignLeft);
    const auto row = [this] {
        auto* value = new QLabel(this);
        value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        value->setTextInteractionFlags(Qt::TextSelectableByMouse);
        m_form->addRow(new QLabel(this), value);
        return value;
    };
    m_used = row();
    m_remaining = row();
    m_daysLeft = row();
    m_average = row();
    m_budget = row();
    m_forecast = row();
    m_calibrationLabel = new QLabel(this);
    m_calibrationLabel->setWordWrap(true);
    m_calibrateButton = new QPushButton(this);
    m_calibrateButton->setObjectName(QStringLiteral("NetInfo_CalibrateButton"));
    connect(m_calibrateButton, &QPushButton::clicked, this, &AllowancePanel::calibrateAsked);
    m_removeButton = new QPushButton(this);
    connect(m_removeButton, &QPushButton::clicked, this, [this] { removeCalibration(); });

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_calibrateButton);
    buttons->addWidget(m_removeButton);
    buttons->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_bar);
    layout->addLayout(m_form);
    layout->addWidget(m_calibrationLabel);
    layout->addLayout(buttons);
    layout->addStretch();

    m_timer.setInterval(kRefreshMs);
    connect(&m_timer, &QTimer::timeout, this, &AllowancePanel::refresh);
    m_timer.start();
    retranslate();
}

// Built before the user's language is loaded, and kept across a switch.
void AllowancePanel::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    if (event->type() == QEvent::LayoutDirectionChange)
        refresh(); // the percent text depends on the reading direction
    QWidget::changeEvent(event);
}

void AllowancePanel::retranslate()
{
    const auto caption = [this](QLabel* field, const QString& text) {
        static_cast<QLabel*>(m_form->labelForField(field))->setText(text);
    };
    caption(m_used, tr("Used"));
    caption(m_remaining, tr("Remaining"));
    caption(m_daysLeft, tr("Days left"));
    caption(m_average, tr("Average per day"));
    caption(m_budget, tr("Daily budget"));
    caption(m_forecast, tr("Forecast"));
    m_budget->setToolTip(tr("What may be used per day, today included, to stay within the limit"));
    m_forecast->setToolTip(allowance::forecastExplanation());
    m_form->labelForField(m_forecast)->setToolTip(allowance::forecastExplanation());
    m_calibrateButton->setText(tr("Calibrate\u2026"));
    m_calibrateButton->setToolTip(tr("Enter the usage your operator counts for this period"));
    m_removeButton->setText(tr("Remove calibration"));
    refresh();
}

AllowancePanel::~AllowancePanel() = default;

// Opening the ledger (its file, schema and calibrations) was most of a
// refresh, every few seconds. The connection is kept while the files stay
// as they were; after any write or a replaced file it is opened afresh, so
// nothing read is older than before.
velt::UsageLedger& AllowancePanel::ledger()
{
    // Stamped before opening: a write in between is then seen next time.
    std::pair stamp { FileStamp::of(m_sources.ledgerPath),
        FileStamp::of(m_sources.ledgerPath + QStringLiteral("-wal")) };
    if (!m_ledger || !m_ledger->isOpen() || stamp != m_ledgerStamp) {
        m_ledger.reset();
        m_ledger = std::make_unique<velt::UsageLedger>(m_sources.ledgerPath, velt::LedgerAccess::ReadOnly);
        m_ledgerStamp = std::move(stamp);
    }
    return *m_ledger;
}

void AllowancePanel::closeLedger()
{
    m_closed = true;
    m_timer.stop();
    m_ledger.reset();
}

void AllowancePanel::refresh()
{
    if (m_closed)
        return;
    m_figures = figuresFrom(m_sources, QDateTime::currentDateTime(), ledger());
    const QLocale locale;
    m_bar->setVisible(m_figures.limit > 0);
    m_bar->setValue(int(std::min(m_figures.percent, 100.0) * 10));
    m_bar->setFormat(allowance::percentText(m_figures.percent, locale, layoutDirection()));
    const auto size = [&locale](double bytes) {
        return locale.formattedDataSize(
            qint64(std::llround(std::max(bytes, 0.0))), 2, QLocale::DataSizeTraditionalFormat);
    };
    const QString none = QStringLiteral("\u2013");
    const bool limited = m_figures.limit > 0;
    m_used->setText(
        paragraph(limited ? tr("%1 of %2").arg(size(double(m_figures.used)), size(double(m_figures.limit)))
                          : tr("%1 (no limit set)").arg(size(double(m_figures.used)))));
    m_remaining->setText(limited ? size(double(m_figures.remaining)) : none);
    m_daysLeft->setText(m_figures.daysLeft >= 0 ? locale.toString(m_figures.daysLeft) : none);
    m_average->setText(size(m_figures.averageDaily));
    m_budget->setText(m_figures.dailyBudget >= 0 ? size(m_figures.dailyBudget) : none);
    m_forecast->setText(m_figures.period.end.isValid() ? size(double(m_figures.forecast)) : none);
    m_forecast->setStyleSheet(
        limited && m_figures.forecast > m_figures.limit ? QStringLiteral("color: #b00020;") : QString());
    setToolTip(allowance::summary(m_figures, locale));
    m_calibrationLabel->setVisible(m_figures.adjustment != 0);
    m_removeButton->setVisible(m_figures.adjustment != 0);
    m_calibrationLabel->setText(
        tr("Calibrated to your operator's count: %1%2 on what NetInfo recorded.")
            .arg(m_figures.adjustment < 0 ? QStringLiteral("\u2212") : QStringLiteral("+"),
                size(std::abs(double(m_figures.adjustment)))));
}

void AllowancePanel::setServiceMonth(std::function<std::optional<quint64>()> serviceMonth)
{
    m_sources.serviceMonth = std::move(serviceMonth);
    refresh();
}

bool AllowancePanel::calibrate(quint64 operatorBytes)
{
    const QDateTime now = QDateTime::currentDateTime();
    const allowance::Figures figures = currentAllowance(m_sources, now);
    const qint64 recorded = qint64(figures.used) - figures.adjustment;
    const qint64 start = figures.period.start.toSecsSinceEpoch();
    velt::UsageLedger ledger(m_sources.ledgerPath);
    bool ok = ledger.open(now.toSecsSinceEpoch());
    for (const velt::Adjustment& old : ledger.adjustments(start, start + 1))
        ok = ok && ledger.removeAdjustment(old.id);
    ok = ok && ledger.addAdjustment(start, qint64(operatorBytes) - recorded, now.toSecsSinceEpoch());
    refresh();
    return ok;
}

bool AllowancePanel::removeCalibration()
{
    const qint64 start = m_figures.period.start.toSecsSinceEpoch();
    velt::UsageLedger ledger(m_sources.ledgerPath);
    bool ok = ledger.open(QDateTime::currentSecsSinceEpoch());
    for (const velt::Adjustment& old : ledger.adjustments(start, start + 1))
        ok = ok && ledger.removeAdjustment(old.id);
    refresh();
    return ok;
}

void AllowancePanel::calibrateAsked()
{
    bool accepted = false;
    const double gigabytes = QInputDialog::getDouble(this, tr("Calibrate"),
        tr("Usage your operator counts for this period so far, in GB.\nNetInfo keeps its own count and adds "
           "the "
           "difference; you can remove it again."),
        double(m_figures.used) / kGigabyte, 0, 1e6, 3, &accepted);
    if (!accepted)
        return;
    if (!calibrate(quint64(std::llround(gigabytes * kGigabyte))))
        QMessageBox::warning(this, tr("Calibrate"),
            tr("The calibration could not be stored in %1.").arg(m_sources.ledgerPath));
}
