// The limit warnings of whichever process records: desktop notifications
// for each crossing, once per period, and silence while the application runs
// because its view's own dialog is the warning then (shown even from the tray).
#pragma once

#include "DesktopNotifier.h"
#include "LimitWatch.h"

#include <QObject>

#include <memory>

class LimitNotices : public QObject
{
    Q_OBJECT
public:
    struct Files
    {
        QString ledger; // the usage ledger, read-only here
        QString hostSettings; // the period start days
        QString limits; // DataUsageLimit.ini
        QString state; // the warnings already given
    };
    // The user's files under HostPaths.
    static Files defaults();

    explicit LimitNotices(
        Files files, const QDBusConnection& bus = QDBusConnection::sessionBus(), QObject* parent = nullptr);
    ~LimitNotices() override;

    // Reads the period's use and checks it; false (logged once) when the
    // ledger cannot be read.
    bool refresh(bool viewWarns, const QString& device, const QDateTime& now = QDateTime::currentDateTime());
    // The period's figures for the tray alone, while another process records
    // and warns: nothing is checked or marked as given.
    bool refreshStatus(const QDateTime& now = QDateTime::currentDateTime());
    // The crossings of these figures, notified unless viewWarns; either way
    // each is given once per period.
    void check(
        const notify::PeriodFigures& figures, bool viewWarns, const QString& device, const QDate& today);
    // Whether the application holds its instance lock (its view then warns).
    static bool applicationRunning(const QString& lockPath = defaultApplicationLock());
    static QString defaultApplicationLock();

    notify::LimitStatus status() const { return m_status; }
    DesktopNotifier& notifier() { return m_notifier; }

    static QString summary(notify::Crossing crossing);

signals:
    void statusChanged(const notify::LimitStatus& status);

private:
    bool readFigures(const QDateTime& now, notify::PeriodFigures& figures);

    Files m_files;
    notify::LimitWatch m_watch;
    DesktopNotifier m_notifier;
    notify::LimitStatus m_status;
    QString m_lastError;
    // Kept open between refreshes, read-only.
    class KeptLedger;
    std::unique_ptr<KeptLedger> m_ledger;
};
