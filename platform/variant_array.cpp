#include "platform/variant_array.h"

#include <type_traits>

namespace orvane {

bool GetElement(const SafeArray& array, std::size_t position, Variant& out) {
    if (position >= array.Size()) return false;
    std::visit(
        [&](const auto& elements) {
            using Element = typename std::decay_t<decltype(elements)>::value_type;
            out = Variant(static_cast<Element>(elements[position]));
        },
        array.data);
    return true;
}

}  // namespace orvane
