// The items under a click, from the top of the drawing down.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "store/records.h"

namespace orvane {

/// The candidates of one search. At most 199 count; all that are met later share one slot behind them, so that the last of them
/// stands there. It refers into the store: no host code runs while it lives.
class PickStack {
public:
    static constexpr std::size_t kMost = 199;

    void Add(DigDat& dat) {
        slots_[count_] = &dat;
        if (count_ < kMost)
            ++count_;
        else
            behind_ = true;
    }
    bool Empty() const { return count_ == 0; }
    std::int32_t Count() const { return static_cast<std::int32_t>(count_); }

    /// Puts the candidate at `cycle` modulo the count into the active set. A negative one names none.
    void Activate(std::int32_t cycle) {
        if (cycle >= 0 && count_ > 0) slots_[static_cast<std::size_t>(cycle) % count_]->active = 1;
    }
    /// Takes all out of the active set, the slot behind the count among them.
    void Deactivate() {
        for (std::size_t i = 0; i < count_ + (behind_ ? 1 : 0); ++i) slots_[i]->active = 0;
    }
    /// Changes the side of each that counts; the slot behind stays. A byte from a file that is neither 0 nor 1 becomes 1.
    void Toggle() {
        for (std::size_t i = 0; i < count_; ++i) slots_[i]->active = slots_[i]->active == 1 ? 0 : 1;
    }

private:
    std::array<DigDat*, kMost + 1> slots_{};
    std::size_t count_ = 0;
    bool behind_ = false;
};

}  // namespace orvane
