#include "render/line_pattern.h"

namespace orvane {

void DrawLinePattern(const CDigMem&, const FrameTarget&, const Point*, std::int32_t, std::int32_t) {}

void DrawLineEndMarks(const CDigMem&, const FrameTarget&, const Point*, std::int32_t, std::int32_t) {}

}  // namespace orvane
