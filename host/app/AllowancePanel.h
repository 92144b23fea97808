// The data limit at a glance beside the view: used, left, the days to go,
// the pace so far and where it leads, plus the user's calibration.
#pragma once

#include "Allowance.h"
#include "FileStamp.h"

#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

class QFormLayout;
class QLabel;
class QProgressBar;
class QPushButton;
namespace velt {
class UsageLedger;
}

// Where the figures come from; the defaults are the user's own files.
struct AllowanceSources
{
    QString ledgerPath;
    QString limitFile;
    QString hostSettingsFile;
    // The month so far (received + sent) as the statistics service counts it
    // into the same ledger, written or not; empty: the ledger alone.
    std::function<std::optional<quint64>()> serviceMonth;
    static AllowanceSources user();
};

// The month so far from the statistics SDK; empty when it cannot say.
std::optional<quint64> statisticsServiceMonth();

// The figures now: the ledger read-only, plus what the statistics service
// counted and has not written yet. For the tray's tooltip too.
allowance::Figures currentAllowance(const AllowanceSources& sources = AllowanceSources::user(),
    const QDateTime& now = QDateTime::currentDateTime());
QString allowanceTooltip(const AllowanceSources& sources = AllowanceSources::user());

class AllowancePanel : public QWidget
{
    Q_OBJECT
public:
    explicit AllowancePanel(AllowanceSources sources = AllowanceSources::user(), QWidget* parent = nullptr);
    ~AllowancePanel() override;

    void refresh();
    const allowance::Figures& figures() const { return m_figures; }
    // Counts what the service has not written yet; off for demo figures.
    void setServiceMonth(std::function<std::optional<quint64>()> serviceMonth);
    // Stores the operator's count for the current period as the difference
    // to what was recorded, replacing an earlier calibration of the period.
    bool calibrate(quint64 operatorBytes);
    bool removeCalibration();
    // Stops refreshing and lets go of the ledger, so that the writer's close
    // is the last one and folds its journal back into the file.
    void closeLedger();

protected:
    void changeEvent(QEvent* event) override;

private:
    void retranslate();
    void calibrateAsked();
    velt::UsageLedger& ledger();

    AllowanceSources m_sources;
    allowance::Figures m_figures;
    QProgressBar* m_bar = nullptr;
    QLabel* m_used = nullptr;
    QLabel* m_remaining = nullptr;
    QLabel* m_daysLeft = nullptr;
    QLabel* m_average = nullptr;
    QLabel* m_budget = nullptr;
    QLabel* m_forecast = nullptr;
    QLabel* m_calibrationLabel = nullptr;
    QFormLayout* m_form = nullptr;
    QPushButton* m_calibrateButton = nullptr;
    QPushButton* m_removeButton = nullptr;
    QTimer m_timer;
    // The read-only ledger kept between refreshes, and the state of its
    // files when it was opened.
    std::unique_ptr<velt::UsageLedger> m_ledger;
    std::pair<FileStamp, FileStamp> m_ledgerStamp; // the ledger and its write-ahead log
    bool m_closed = false;
};
