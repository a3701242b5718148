// Contexts cross the automation surface as 32-bit numbers. Where no system handle exists, this registry hands the numbers out;
// where there is one, the number is the handle.
#pragma once

#include <cstdint>
#include <memory>

namespace orvane {

class DeviceContext;

/// Contexts that have handles of the system.
class SystemContexts {
public:
    SystemContexts() = default;
    SystemContexts(const SystemContexts&) = delete;
    SystemContexts& operator=(const SystemContexts&) = delete;
    virtual ~SystemContexts() = default;
    /// The handle of one of its contexts; 0 for any other context.
    virtual std::int32_t NumberOf(const DeviceContext& dc) = 0;
    /// A context on a handle that somebody else made; null when it stands for none.
    virtual std::unique_ptr<DeviceContext> Open(std::int32_t number) = 0;
};

/// From now on handles of `contexts` are numbers too; null for none any more. It must outlive its use.
void SetSystemContexts(SystemContexts* contexts);

/// Enters a live context and returns its number, never 0: its handle, or a number of the registry's own. Such a number is not
/// used again while the process runs, until 2^31 of them have been given.
std::int32_t RegisterContext(DeviceContext& dc);
/// Takes a number out; 0 and unknown numbers are ignored.
void UnregisterContext(std::int32_t handle);
/// The live context that was entered under a number, or null for 0 and unknown numbers.
DeviceContext* FindContext(std::int32_t handle);
/// The same, and for a handle that was not entered a context on it, which goes with the pointer.
std::shared_ptr<DeviceContext> OpenContext(std::int32_t handle);

}  // namespace orvane
