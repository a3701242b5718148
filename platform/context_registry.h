// Contexts cross the automation surface as 32-bit numbers. Where no system handle exists, this registry hands the numbers out.
#pragma once

#include <cstdint>

namespace orvane {

class DeviceContext;

/// Enters a live context and returns its number, never 0. The number is not used again while the process runs,
/// until 2^31 of them have been given.
std::int32_t RegisterContext(DeviceContext& dc);
/// Takes a number out; 0 and unknown numbers are ignored.
void UnregisterContext(std::int32_t handle);
/// The live context of a number, or null for 0 and unknown numbers.
DeviceContext* FindContext(std::int32_t handle);

}  // namespace orvane
