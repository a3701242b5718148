#include "platform/trace.h"

namespace orvane {

void Trace(std::string_view) {}

}  // namespace orvane
