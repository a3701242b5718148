#include "platform/context_registry.h"

#include <limits>
#include <mutex>
#include <unordered_map>

#include "platform/device_context.h"

namespace orvane {

namespace {

// One for the process and guarded, not one per thread: a host may make a context on one thread and hand its number to another.
struct Registry {
    std::mutex mutex;
    std::unordered_map<std::int32_t, DeviceContext*> contexts;
    std::int32_t lastNumber = 0;
    SystemContexts* system = nullptr;
};

// Never destroyed: a context that a host keeps in a static object may go later than any static object of this file.
Registry& TheRegistry() {
    static Registry& registry = *new Registry;
    return registry;
}

}  // namespace

void SetSystemContexts(SystemContexts* contexts) {
    Registry& registry = TheRegistry();
    const std::lock_guard<std::mutex> lock(registry.mutex);
    registry.system = contexts;
}

std::int32_t RegisterContext(DeviceContext& dc) {
    Registry& registry = TheRegistry();
    const std::lock_guard<std::mutex> lock(registry.mutex);
    const std::int32_t handle = registry.system != nullptr ? registry.system->NumberOf(dc) : 0;
    if (handle != 0) {
        registry.contexts.insert_or_assign(handle, &dc);
        return handle;
    }
    do {
        const bool atEnd = registry.lastNumber == (std::numeric_limits<std::int32_t>::max)();
        registry.lastNumber = atEnd ? 1 : registry.lastNumber + 1;
    } while (!registry.contexts.try_emplace(registry.lastNumber, &dc).second);
    return registry.lastNumber;
}

void UnregisterContext(std::int32_t handle) {
    Registry& registry = TheRegistry();
    const std::lock_guard<std::mutex> lock(registry.mutex);
    registry.contexts.erase(handle);
}

DeviceContext* FindContext(std::int32_t handle) {
    Registry& registry = TheRegistry();
    const std::lock_guard<std::mutex> lock(registry.mutex);
    const auto found = registry.contexts.find(handle);
    return found == registry.contexts.end() ? nullptr : found->second;
}

std::shared_ptr<DeviceContext> OpenContext(std::int32_t handle) {
    // The one that was entered belongs to somebody else.
    if (DeviceContext* entered = FindContext(handle)) return {std::shared_ptr<void>(), entered};
    SystemContexts* system = nullptr;
    {
        Registry& registry = TheRegistry();
        const std::lock_guard<std::mutex> lock(registry.mutex);
        system = registry.system;
    }
    return system != nullptr && handle != 0 ? system->Open(handle) : nullptr;
}

}  // namespace orvane
