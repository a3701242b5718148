// Debug trace lines end here. The body is empty on purpose: the words stay at their places for a debugger's breakpoint.
#pragma once

#include <string_view>

namespace orvane {

void Trace(std::string_view words);

}  // namespace orvane
