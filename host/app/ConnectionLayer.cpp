#include "ConnectionLayer.h"

#include "NetworkManagerControl.h"
#include "Sdk.h"
#include "LinuxBackend.h"
#include "simulated/SimulatedBackend.h"

#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcConnectionLayer, "netinfo.host.connection")

ConnectionLayer::ConnectionLayer(QObject* parent)
    : QObject(parent)
{
    connect(&m_watcher, &ConnectionWatcher::statusChanged, this, &ConnectionLayer::statusChanged);
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
        linuxOptions.interfaceName = options.interfaceName;
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
        qCWarning(lcConnectionLayer, "the SDK refused the connection watcher; status changes are not passed on");
}

void ConnectionLayer::stop()
{
    if (!m_bStarted)
        return;
    m_bStarted = false;
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
    const QString name = interfaceName();
    if (name.isEmpty()) {
        emit message(tr("There is no connection to disconnect."));
        return;
    }
    // The control says why when disconnecting is not available.
    m_control->disconnectInterface(name);
}
