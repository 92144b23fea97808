// Where the figures come from and how the connection is taken down: the
// real interface counters with NetworkManager, or the simulated demo link.
// Connection changes go to the view as status codes.
#pragma once

#include "ConnectionWatcher.h"

#include <QObject>
#include <QString>

#include <memory>

class ConnectionControl;

namespace velt {
class LinuxBackend;
}

class ConnectionLayer : public QObject
{
    Q_OBJECT
public:
    enum class Source { Real, Simulated };

    struct Options
    {
        bool simulate = false;
        bool demoTraffic = true;  // simulated figures keep moving
        QString interfaceName;    // real source only; empty chooses one
    };

    explicit ConnectionLayer(QObject* parent = nullptr);
    ~ConnectionLayer() override;

    // Installs the source; falls back to the simulated one (with a warning)
    // when this machine's counters cannot be read.
    void start(const Options& options);
    // Ticks stop, and the real source writes what it has not yet stored.
    void stop();

    Source source() const { return m_source; }
    // The interface measured now; empty for the simulated source.
    QString interfaceName() const;
    // Takes the connection down; failures arrive as message().
    void disconnectLink();
    // Replaces how the real connection is taken down (tests).
    void setConnectionControl(std::unique_ptr<ConnectionControl> control);

signals:
    // 1 connected, 0 disconnected: the host's connection status codes.
    void statusChanged(unsigned int status);
    // Something the user should read: a fallback or a refused disconnect.
    void message(const QString& text);

private:
    Source m_source = Source::Simulated;
    bool m_bStarted = false;
    velt::LinuxBackend* m_pLinux = nullptr; // owned by the SDK while installed
    std::unique_ptr<ConnectionControl> m_control;
    ConnectionWatcher m_watcher;
};
