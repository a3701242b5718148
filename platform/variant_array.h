// Making and reading safe arrays.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "platform/variant.h"

namespace orvane {

/// An array of any number of dimensions, `values` with the first one running fastest. T is one of the element types of
/// SafeArray. The empty value when the bounds do not make up exactly as many elements as there are values.
template <class T>
Variant MakeArray(std::vector<T> values, std::vector<ArrayBound> bounds) {
    std::uint64_t room = bounds.empty() ? 0 : 1;
    for (const ArrayBound& bound : bounds) {
        if (bound.count < 0) return {};
        // Products beyond the values only need to stay beyond them.
        const auto count = static_cast<std::uint64_t>(bound.count);
        const bool tooMany = count != 0 && room > values.size() / count;
        room = tooMany ? std::uint64_t{values.size()} + 1 : room * count;
    }
    if (room != values.size()) return {};
    auto array = std::make_shared<SafeArray>();
    array->bounds = std::move(bounds);
    array->data = std::move(values);
    return Variant(std::shared_ptr<const SafeArray>(std::move(array)));
}

/// An array of one dimension whose first index is `lower`.
template <class T>
Variant MakeArray(std::vector<T> values, std::int32_t lower = 0) {
    const auto count = static_cast<std::int64_t>(values.size());
    return MakeArray(std::move(values), std::vector<ArrayBound>{{lower, count}});
}

/// One element as a value of its own, `position` counted from 0 through all dimensions. False, with `out` left alone, beyond the
/// end.
bool GetElement(const SafeArray& array, std::size_t position, Variant& out);

}  // namespace orvane
