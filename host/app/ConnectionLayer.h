// Where the figures come from and how the connection is taken down: the
// real interface counters with NetworkManager, or the simulated demo link.
// Connection changes go to the view as status codes.
#pragma once

#include "ConnectionWatcher.h"
#include "LinkInfo.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

class ConnectionControl;
class MeteredLinks;

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
        bool demoTraffic = true; // simulated figures keep moving
        QStringList interfaceNames; // real source only; empty: the metered links, else one chosen
    };
    // The counted links that are connected now.
    using LinkProbe = std::function<QStringList()>;

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
    // Whether this process records, or a background recorder does.
    velt::RecordingStatus recordingStatus() const;

    // With status 1, remembers which counted links are connected: a later
    // disconnect acts on those only, never on a link that took their place.
    void noteStatus(unsigned int status);
    // Takes down the links remembered at the last "connected"; failures and
    // links already gone arrive as message().
    void disconnectLink();
    // Takes down only name, as a warning about that device asks.
    void disconnectInterface(const QString& name);
    // Replaces how the real connection is taken down (tests).
    void setConnectionControl(std::unique_ptr<ConnectionControl> control);
    // Replaces how the connected links are found (tests).
    void setLinkProbe(LinkProbe probe) { m_probe = std::move(probe); }

signals:
    // 1 connected, 0 disconnected: the host's connection status codes.
    void statusChanged(unsigned int status);
    // Something the user should read: a fallback or a refused disconnect.
    void message(const QString& text);

private:
    Source m_source = Source::Simulated;
    bool m_bStarted = false;
    QStringList connectedLinks() const;

    velt::LinuxBackend* m_pLinux = nullptr; // owned by the SDK while installed
    std::unique_ptr<ConnectionControl> m_control;
    // Outlives the backend, which asks it from the sampler's thread.
    std::unique_ptr<MeteredLinks> m_metered;
    LinkProbe m_probe;
    QStringList m_upLinks; // counted and connected at the last status 1
    ConnectionWatcher m_watcher;
};
