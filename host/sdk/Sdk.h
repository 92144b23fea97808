// The process-wide state behind the C API: the current backend and the
// registered statistics callbacks.
#pragma once

#include "StatisticsBackend.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace velt {

class VELTSDK_EXPORT Sdk final : public TickSink
{
public:
    static Sdk& instance();

    // Stops the previous backend and starts this one; null restores the
    // default simulated backend. Not to be called from inside a tick.
    void setBackend(std::unique_ptr<StatisticsBackend> backend);
    // Valid until the next setBackend(); meant for the thread that swaps backends.
    StatisticsBackend* backend() const;
    // For calls that may race with setBackend() from another thread.
    std::shared_ptr<StatisticsBackend> acquireBackend() const;

    // One registration per function: registering again is a harmless success.
    int registerCallback(VELT_StatisticsCallback callback);
    // Once this returns, the callback is not running and will not be called,
    // unless the caller is itself inside a tick.
    int unregisterCallback(VELT_StatisticsCallback callback);
    bool isRegistered(VELT_StatisticsCallback callback) const;

    // Calls every registered callback with VELT_EVENT_STATISTICS_CHANGED.
    void tick(bool connected) override;

private:
    Sdk();
    ~Sdk() override;
    Sdk(const Sdk&) = delete;
    Sdk& operator=(const Sdk&) = delete;

    mutable std::mutex m_backendMutex;
    std::shared_ptr<StatisticsBackend> m_backend;
    std::mutex m_swapMutex;

    mutable std::mutex m_callbackMutex;
    std::vector<VELT_StatisticsCallback> m_callbacks;

    // Held for a whole dispatch, so that unregistering can wait for it.
    // Recursive because a callback may make the backend tick again.
    std::recursive_mutex m_dispatchMutex;
    std::atomic<std::thread::id> m_dispatchThread {};
};

} // namespace velt
