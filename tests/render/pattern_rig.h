// One line type and the verbs of a line drawn in it.
#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "render/line_pattern.h"
#include "tests/render/render_rig.h"

namespace orvane {

class PatternRig : public RenderRig {
public:
    PatternRig(std::int32_t kind, std::initializer_list<std::int32_t> list_) : def(AddLineType(1, kind, list_)) {}

    void SetList2(std::initializer_list<std::int32_t> values) {
        def.ltList2.Truncate(0);
        for (const std::int32_t value : values) (void)def.ltList2.PushBack(value);
    }

    std::vector<std::string> Draw(std::initializer_list<Point> pts) {
        DrawLinePattern(store, dc, clip, pts.begin(), static_cast<std::int32_t>(pts.size()), 0);
        return Verbs();
    }
    std::vector<std::string> Draw(std::initializer_list<Point> pts, std::string_view verb) {
        DrawLinePattern(store, dc, clip, pts.begin(), static_cast<std::int32_t>(pts.size()), 0);
        return Verbs(verb);
    }
    std::vector<std::string> DrawMarks(std::initializer_list<Point> pts) {
        DrawLineEndMarks(store, dc, pts.begin(), static_cast<std::int32_t>(pts.size()), 0);
        return Verbs();
    }

    LineTypeDef& def;
    Rect clip{0, 0, 200, 100};
};

}  // namespace orvane
