// The data limit at a glance beside the view: used, left, the days to go,
// the pace so far and where it leads, plus the user's calibration.
#pragma once

#include "Allowance.h"

#include <QTimer>
#include <QWidget>

class QFormLayout;
class QLabel;
class QProgressBar;
class QPushButton;

// Where the figures come from; the defaults are the user's own files.
struct AllowanceSources
{
    QString ledgerPath;
    QString limitFile;
    QString hostSettingsFile;
    static AllowanceSources user();
};

// The figures now, read from the ledger read-only. For the tray's tooltip too.
allowance::Figures currentAllowance(const AllowanceSources& sources = AllowanceSources::user(),
    const QDateTime& now = QDateTime::currentDateTime());
QString allowanceTooltip(const AllowanceSources& sources = AllowanceSources::user());

class AllowancePanel : public QWidget
{
    Q_OBJECT
public:
    explicit AllowancePanel(AllowanceSources sources = AllowanceSources::user(), QWidget* parent = nullptr);

    void refresh();
    const allowance::Figures& figures() const { return m_figures; }
    // Stores the operator's count for the current period as the difference
    // to what was recorded, replacing an earlier calibration of the period.
    bool calibrate(quint64 operatorBytes);
    bool removeCalibration();

protected:
    void changeEvent(QEvent* event) override;

private:
    void retranslate();
    void calibrateAsked();

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
};
