// Turns SIGTERM, SIGINT and SIGHUP into a Qt signal on the event loop, so a
// logout or a kill ends the program through its normal shut-down path (which
// commits the usage) instead of dropping everything not yet written.
#pragma once

#include <QObject>

class QSocketNotifier;

class SignalWatcher : public QObject
{
    Q_OBJECT
public:
    // Installs the handlers; one watcher at a time (a second one is invalid).
    explicit SignalWatcher(QObject* parent = nullptr);
    // Restores the default handlers.
    ~SignalWatcher() override;

    bool isValid() const { return m_notifier != nullptr; }
    // "SIGTERM", "SIGINT", "SIGHUP".
    static QString name(int signalNumber);

signals:
    // Emitted on the watcher's thread, once per signal delivered.
    void received(int signalNumber);

private:
    void drain();

    QSocketNotifier* m_notifier = nullptr;
};
