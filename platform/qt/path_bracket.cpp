#include "platform/qt/path_bracket.h"

namespace orvane {

void PathBracket::Add(const Figures& figures) {
    figures.ForEach([this](const Point* pts, std::size_t count, bool closed) {
        pts_.insert(pts_.end(), pts, pts + count);
        counts_.push_back(static_cast<std::int32_t>(count));
        closed_.push_back(closed ? 1 : 0);
    });
}

void PathBracket::Drop() {
    state_ = State::None;
    pts_.clear();
    counts_.clear();
    closed_.clear();
}

}  // namespace orvane
