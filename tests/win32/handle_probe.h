// How many handles a process holds, on systems that do not count them as well.
#pragma once

#include <windows.h>
// windows.h comes first
#include <algorithm>
#include <cstdint>
#include <vector>

namespace orvane {

/// Makes some handles and ends them again: the largest number among them tells how many older ones there are, as the system hands
/// out the lowest free numbers first or those that were given back last.
template <class Make, class End>
std::uintptr_t ProbeHandles(std::uintptr_t mask, Make make, End end) {
    using Handle = decltype(make());
    std::vector<Handle> made;
    std::uintptr_t largest = 0;
    for (int i = 0; i < 64; ++i) {
        made.push_back(make());
        largest = (std::max)(largest, reinterpret_cast<std::uintptr_t>(made.back()) & mask);
    }
    for (Handle each : made) end(each);
    return largest;
}

// The lower half of a handle of GDI and USER is its number.
inline std::uintptr_t ProbeKernelHandles() {
    return ProbeHandles(
        ~std::uintptr_t{0}, [] { return CreateEventW(nullptr, FALSE, FALSE, nullptr); }, CloseHandle);
}
inline std::uintptr_t ProbeGdiHandles() {
    return ProbeHandles(
        0xFFFF, [] { return CreateRectRgn(0, 0, 1, 1); }, DeleteObject);
}
inline std::uintptr_t ProbeUserHandles() {
    return ProbeHandles(
        0xFFFF, [] { return CreateMenu(); }, DestroyMenu);
}

}  // namespace orvane
