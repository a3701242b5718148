// The figures that shape verbs leave between BeginPath and EndPath.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/values.h"

namespace orvane {

/// Figures as the painters take them; somebody else's memory.
struct Figures {
    const Point* pts = nullptr;            ///< of all figures, one behind the other
    const std::int32_t* counts = nullptr;  ///< points of each figure
    std::size_t count = 0;
    const std::uint8_t* closed = nullptr;  ///< one mark for each figure; null when all are closed

    bool IsClosed(std::size_t i) const { return closed == nullptr || closed[i] != 0; }
    /// Calls visit(first point, number of points, closed) for each figure.
    template <class Visit>
    void ForEach(Visit visit) const {
        const Point* at = pts;
        for (std::size_t i = 0; i < count; ++i) {
            const auto ptCnt = static_cast<std::size_t>(counts[i]);
            visit(at, ptCnt, IsClosed(i));
            at += ptCnt;
        }
    }
};

/// Either no path, or one that is being gathered, or a finished one.
class PathBracket {
public:
    /// Drops what there is and starts to gather.
    void Begin() {
        Drop();
        state_ = State::Open;
    }
    /// Finishes the path; without one that is being gathered it does nothing.
    void End() {
        if (state_ == State::Open) state_ = State::Finished;
    }
    bool IsOpen() const { return state_ == State::Open; }
    bool IsFinished() const { return state_ == State::Finished; }

    /// Copies the figures in. REQUIRES: IsOpen().
    void Add(const Figures& figures);
    /// All figures; good until the next Begin.
    Figures Gathered() const { return {pts_.data(), counts_.data(), counts_.size(), closed_.data()}; }
    /// Leaves no path. The memory stays for the next one.
    void Drop();

private:
    enum class State : std::uint8_t { None, Open, Finished };

    State state_ = State::None;
    std::vector<Point> pts_;
    std::vector<std::int32_t> counts_;
    std::vector<std::uint8_t> closed_;
};

}  // namespace orvane
