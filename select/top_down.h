// Walks from the last element to the first: what is drawn last lies on top and is searched first.
#pragma once

#include <iterator>
#include <span>

namespace orvane {

/// The elements of a span, for a range-based for, from the last down.
template <class T>
class TopDown {
public:
    explicit TopDown(std::span<T> elements) : elements_(elements) {}
    auto begin() const { return elements_.rbegin(); }
    auto end() const { return elements_.rend(); }

private:
    std::span<T> elements_;
};

}  // namespace orvane
