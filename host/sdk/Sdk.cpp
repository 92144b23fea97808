#include "Sdk.h"

#include "simulated/SimulatedBackend.h"

#include <algorithm>

namespace velt {

Sdk& Sdk::instance()
{
    static Sdk sdk;
    return sdk;
}

Sdk::Sdk()
    : m_backend(std::make_shared<SimulatedBackend>())
{
    m_backend->start(this);
}

Sdk::~Sdk()
{
    if (m_backend)
        m_backend->stop();
}

void Sdk::setBackend(std::unique_ptr<StatisticsBackend> backend)
{
    std::shared_ptr<StatisticsBackend> next = backend ? std::shared_ptr<StatisticsBackend>(std::move(backend))
                                                      : std::make_shared<SimulatedBackend>();
    std::lock_guard swap(m_swapMutex);
    // The old backend's ticks may query the SDK, so it is stopped without the
    // lock; a call still holding it keeps it alive until that call returns.
    std::shared_ptr<StatisticsBackend> previous = acquireBackend();
    if (previous)
        previous->stop();
    {
        std::lock_guard lock(m_backendMutex);
        m_backend = next;
    }
    next->start(this);
}

StatisticsBackend* Sdk::backend() const
{
    std::lock_guard lock(m_backendMutex);
    return m_backend.get();
}

std::shared_ptr<StatisticsBackend> Sdk::acquireBackend() const
{
    std::lock_guard lock(m_backendMutex);
    return m_backend;
}

int Sdk::registerCallback(VELT_StatisticsCallback callback)
{
    if (!callback)
        return InvalidArgument;
    std::lock_guard lock(m_callbackMutex);
    if (std::find(m_callbacks.begin(), m_callbacks.end(), callback) == m_callbacks.end())
        m_callbacks.push_back(callback);
    return Ok;
}

int Sdk::unregisterCallback(VELT_StatisticsCallback callback)
{
    if (!callback)
        return InvalidArgument;
    {
        std::lock_guard lock(m_callbackMutex);
        auto it = std::find(m_callbacks.begin(), m_callbacks.end(), callback);
        if (it == m_callbacks.end())
            return NotRegistered;
        m_callbacks.erase(it);
    }
    // A dispatch on another thread may still hold its copy of the list: wait
    // for it, so the caller can tear down what the callback uses. Inside a
    // dispatch on this thread waiting would never end.
    if (m_dispatchThread.load() != std::this_thread::get_id()) {
        std::lock_guard wait(m_dispatchMutex);
    }
    return Ok;
}

bool Sdk::isRegistered(VELT_StatisticsCallback callback) const
{
    std::lock_guard lock(m_callbackMutex);
    return std::find(m_callbacks.begin(), m_callbacks.end(), callback) != m_callbacks.end();
}

void Sdk::tick(bool connected)
{
    std::lock_guard dispatch(m_dispatchMutex);
    const std::thread::id outer = m_dispatchThread.exchange(std::this_thread::get_id());

    // Called outside the lock, from a copy, since a callback may register or
    // unregister; one unregistered meanwhile is skipped.
    std::vector<VELT_StatisticsCallback> callbacks;
    {
        std::lock_guard lock(m_callbackMutex);
        callbacks = m_callbacks;
    }
    for (VELT_StatisticsCallback callback : callbacks) {
        if (!isRegistered(callback))
            continue;
        unsigned char data[1] = { static_cast<unsigned char>(connected ? 1 : 0) };
        callback(VELT_EVENT_STATISTICS_CHANGED, data);
    }

    m_dispatchThread.store(outer);
}

} // namespace velt
