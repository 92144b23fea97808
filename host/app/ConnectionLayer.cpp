#include "ConnectionLayer.h"

#include "LinuxBackend.h"
#include "MeteredLinks.h"
#include "NetworkManagerControl.h"
#include "Sdk.h"
#include "simulated/SimulatedBackend.h"

#include <QLoggingCategory>

#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>

Q_LOGGING_CATEGORY(lcConnectionLayer, "netinfo.host.connection")

namespace {

// Up and running as the kernel sees it; a link that went away is not.
bool isLinkUp(const QString& name)
{
    const QByteArray raw = name.toLocal8Bit();
    if (raw.isEmpty() || raw.size() >= IFNAMSIZ)
        return false;
    const int fd = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (fd < 0)
        return false;
    ifreq request = {};
    std::memcpy(request.ifr_name, raw.constData(), size_t(raw.size()));
    const bool up = ::ioctl(fd, SIOCGIFFLAGS, &request) == 0 && (request.ifr_flags & IFF_UP)
        && (request.ifr_flags & IFF_RUNNING);
    ::close(fd);
    return up;
}

} // namespace

ConnectionLayer::ConnectionLayer(QObject* parent)
    : QObject(parent)
{
    connect(&m_watcher, &ConnectionWatcher::statusChanged, this, [this](unsigned int status) {
        noteStatus(status);
        emit statusChanged(status);
    });
}

ConnectionLayer::~ConnectionLayer()
{
    stop();
}

void ConnectionLayer::start(const Options& options)
{
    if (m_bStarted)
        return;
    m_bStarted = true;
    m_source = Source::Simulated;
    if (!options.simulate) {
        velt::LinuxOptions linuxOptions;
        linuxOptions.interfaceNames = options.interfaceNames;
        if (!m_metered)
            m_metered = std::make_unique<MeteredLinks>();
        MeteredLinks* metered = m_metered.get();
        linuxOptions.linkInfo = [metered] { return metered->snapshot(); };
        auto backend = std::make_unique<velt::LinuxBackend>(linuxOptions);
        if (backend->isSupported()) {
            m_pLinux = backend.get();
            velt::Sdk::instance().setBackend(std::move(backend));
            m_source = Source::Real;
            if (!m_control)
                setConnectionControl(std::make_unique<NetworkManagerControl>());
        } else {
            emit message(tr("This system's network counters cannot be read, so the figures shown are "
                            "simulated."));
        }
    }
    if (m_source == Source::Simulated && options.demoTraffic) {
        if (velt::SimulatedBackend* simulated = velt::SimulatedBackend::current())
            simulated->startDemo();
    }
    if (!m_watcher.start())
        qCWarning(
            lcConnectionLayer, "the SDK refused the connection watcher; status changes are not passed on");
}

void ConnectionLayer::stop()
{
    if (!m_bStarted)
        return;
    m_bStarted = false;
    m_upLinks.clear();
    m_watcher.stop();
    if (m_source == Source::Real) {
        // Stops the sampler and commits the ledger while Qt is still up.
        m_pLinux = nullptr;
        velt::Sdk::instance().setBackend(nullptr);
    } else if (velt::SimulatedBackend* simulated = velt::SimulatedBackend::current()) {
        simulated->stopDemo();
    }
}

QString ConnectionLayer::interfaceName() const
{
    return m_pLinux ? m_pLinux->interfaceName() : QString();
}

velt::RecordingStatus ConnectionLayer::recordingStatus() const
{
    return m_pLinux ? m_pLinux->recordingStatus() : velt::RecordingStatus();
}

QStringList ConnectionLayer::connectedLinks() const
{
    if (m_probe)
        return m_probe();
    QStringList up;
    for (const QString& name : recordingStatus().counted) {
        if (isLinkUp(name))
            up << name;
    }
    return up;
}

void ConnectionLayer::noteStatus(unsigned int status)
{
    if (status == 1 && m_source == Source::Real)
        m_upLinks = connectedLinks();
}

void ConnectionLayer::setConnectionControl(std::unique_ptr<ConnectionControl> control)
{
    m_control = std::move(control);
    if (!m_control)
        return;
    connect(m_control.get(), &ConnectionControl::disconnectFinished, this,
        [this](const QString&, const DisconnectResult& result) {
            if (!result.ok)
                emit message(result.message);
        });
}

void ConnectionLayer::disconnectInterface(const QString& name)
{
    if (m_source != Source::Real || !connectedLinks().contains(name)) {
        emit message(tr("%1 is no longer connected, so nothing was disconnected for it.").arg(name));
        return;
    }
    m_control->disconnectInterface(name);
}

void ConnectionLayer::disconnectLink()
{
    if (m_source == Source::Simulated) {
        // The simulated link drops; the tick lets the watcher see it.
        if (velt::SimulatedBackend* simulated = velt::SimulatedBackend::current()) {
            simulated->stopDemo();
            simulated->setConnected(false);
            simulated->tick();
        }
        return;
    }
    if (m_upLinks.isEmpty()) {
        emit message(tr("There is no connection to disconnect."));
        return;
    }
    const QStringList now = connectedLinks();
    QStringList gone;
    for (const QString& name : std::as_const(m_upLinks)) {
        if (now.contains(name))
            m_control->disconnectInterface(name); // says why when disconnecting is not available
        else
            gone << name;
    }
    if (!gone.isEmpty())
        emit message(tr("%1 is no longer connected, so nothing was disconnected for it.")
                         .arg(gone.join(QStringLiteral(", "))));
}
