#include "control/automation/arrays.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <limits>
#include <new>
#include <span>
#include <vector>

#include "platform/trace.h"
#include "store/fixed_text.h"

namespace orvane {

namespace {

constexpr std::uint32_t kBadIndex = 0x8002000B;  // the platform's number for an index outside an array's bounds
constexpr std::uint32_t kBadType = 0x80020005;   // and for a value that does not convert

/// What the platform's array functions raise.
struct ArrayFailure {
    std::uint32_t code;
};

/// What the first array settles for all arrays of a call.
struct Shape {
    bool variants = false;
    std::int32_t lower = 0;
    std::size_t count = 0;
};

std::size_t ElementCount(const SafeArray& array) {
    const std::int64_t told = array.bounds.front().count;
    const std::size_t held = array.Size();
    constexpr std::int64_t kMost = (std::numeric_limits<std::int32_t>::max)();
    return told < 0 ? 0 : (std::min)(held, static_cast<std::size_t>((std::min)(told, kMost)));
}

/// False when some argument is no array of one dimension, or the first has no elements or is of a type that is not taken.
template <class Plain>
bool ReadShape(std::span<const Variant* const> values, Shape& shape) {
    for (const Variant* value : values) {
        const SafeArray* array = value->Array();
        if (array == nullptr || array->bounds.size() != 1) return false;
    }
    const SafeArray& first = *values.front()->Array();
    shape.variants = std::holds_alternative<std::vector<Variant>>(first.data);
    shape.lower = first.bounds.front().lower;
    shape.count = ElementCount(first);
    return shape.count > 0 && (shape.variants || std::holds_alternative<std::vector<Plain>>(first.data));
}

/// Hands each element of one array with its position to `takePlain`, or to `takeVariant`, which tells whether it converted.
template <class Plain, class TakePlain, class TakeVariant>
bool ForEachElement(const SafeArray& array, const Shape& shape, TakePlain takePlain, TakeVariant takeVariant) {
    const std::size_t held = ElementCount(array);
    if (!shape.variants) {
        const auto* plain = std::get_if<std::vector<Plain>>(&array.data);
        if (plain == nullptr || held < shape.count) return false;
        for (std::size_t i = 0; i < shape.count; ++i) takePlain(i, (*plain)[i]);
        return true;
    }
    const auto* variants = std::get_if<std::vector<Variant>>(&array.data);
    if (variants == nullptr) return false;
    const std::int64_t shift = std::int64_t{shape.lower} - array.bounds.front().lower;
    for (std::size_t i = 0; i < shape.count; ++i) {
        const std::int64_t position = shift + static_cast<std::int64_t>(i);
        if (position < 0 || position >= static_cast<std::int64_t>(held)) throw ArrayFailure{kBadIndex};
        if (!takeVariant(i, (*variants)[static_cast<std::size_t>(position)])) throw ArrayFailure{kBadType};
    }
    return true;
}

/// Runs `read`; what it raises ends here, with the debug words that tell which kind it was.
template <class Read>
bool Guarded(Read read) noexcept {
    try {
        return read();
    } catch (const ArrayFailure& failure) {
        char words[80];
        std::snprintf(words, sizeof words, "COleExcveption of COleSafeArray !! HRERSULT = %#08x !!\n", failure.code);
        Trace(words);
    } catch (const std::bad_alloc&) {
        Trace("CMemoryException of COleSafeArray::GetElement() !!\n");
    } catch (...) {
        Trace("throw Exception !!\n");
    }
    return false;
}

template <class T>
void Grow(GrowArray<T>& array, std::size_t count) {
    if (!array.Resize(count)) throw std::bad_alloc();
}

}  // namespace

bool ReadPoints(const Variant& x, const Variant& y, const Variant& z, GrowArray<DigPnt>& points) noexcept {
    const bool read = Guarded([&] {
        const Variant* const values[] = {&x, &y, &z};
        constexpr double DigPnt::*kFields[] = {&DigPnt::x, &DigPnt::y, &DigPnt::z};
        Shape shape;
        if (!ReadShape<double>(values, shape)) return false;
        Grow(points, shape.count);
        for (std::size_t k = 0; k < std::size(values); ++k) {
            const auto field = kFields[k];
            const auto plain = [&](std::size_t i, double value) { points[i].*field = value; };
            const auto variant = [&](std::size_t i, const Variant& value) { return value.ToR8(points[i].*field); };
            if (!ForEachElement<double>(*values[k]->Array(), shape, plain, variant)) return false;
        }
        return true;
    });
    if (!read) points.Clear();
    return read;
}

bool ReadLongs(const Variant& first, const Variant& second, GrowArray<std::int32_t>& a, GrowArray<std::int32_t>& b) noexcept {
    const bool read = Guarded([&] {
        const Variant* const values[] = {&first, &second};
        GrowArray<std::int32_t>* const outs[] = {&a, &b};
        Shape shape;
        if (!ReadShape<std::int32_t>(values, shape)) return false;
        for (std::size_t k = 0; k < std::size(values); ++k) {
            GrowArray<std::int32_t>& out = *outs[k];
            Grow(out, shape.count);
            const auto plain = [&](std::size_t i, std::int32_t value) { out[i] = value; };
            const auto variant = [&](std::size_t i, const Variant& value) { return value.ToI4(out[i]); };
            if (!ForEachElement<std::int32_t>(*values[k]->Array(), shape, plain, variant)) return false;
        }
        return true;
    });
    if (!read) {
        a.Clear();
        b.Clear();
    }
    return read;
}

bool ReadFlags(const Variant& array, GrowArray<std::uint8_t>& flags) noexcept {
    const bool read = Guarded([&] {
        const Variant* const values[] = {&array};
        Shape shape;
        if (!ReadShape<bool>(values, shape)) return false;
        Grow(flags, shape.count);
        const auto plain = [&](std::size_t i, bool value) { flags[i] = value ? 1 : 0; };
        const auto variant = [&](std::size_t i, const Variant& value) {
            bool truth = false;
            if (!value.ToBool(truth)) return false;
            plain(i, truth);
            return true;
        };
        return ForEachElement<bool>(*array.Array(), shape, plain, variant);
    });
    if (!read) flags.Clear();
    return read;
}

bool ToBits(const Variant& value, std::uint32_t& bits) {
    std::int32_t number = 0;
    double wide = 0;
    if (!value.ToI4(number)) {
        // The upper half. Without 2^32, which is even, a half rounds to the same side.
        if (!value.ToR8(wide) || wide < 0 || !Variant(wide - 4294967296.0).ToI4(number) || number >= 0) return false;
    }
    bits = static_cast<std::uint32_t>(number);
    return true;
}

bool ReadColors(const Variant& array, GrowArray<std::uint32_t>& colors) noexcept {
    const bool read = Guarded([&] {
        const Variant* const values[] = {&array};
        Shape shape;
        if (!ReadShape<float>(values, shape)) return false;
        Grow(colors, shape.count);
        // Hosts lay colours into single-precision elements bit by bit. They are copied as bytes: a float register may change
        // the bits of what is no number.
        const auto plain = [&](std::size_t i, const float& value) { std::memcpy(&colors[i], &value, sizeof value); };
        const auto variant = [&](std::size_t i, const Variant& value) { return ToBits(value, colors[i]); };
        return ForEachElement<float>(*array.Array(), shape, plain, variant);
    });
    if (!read) colors.Clear();
    return read;
}

bool ReadTexts(const Variant& array, std::vector<std::string>& texts) noexcept {
    texts.clear();
    const bool read = Guarded([&] {
        const Variant* const values[] = {&array};
        Shape shape;
        if (array.Array() != nullptr && array.Array()->bounds.size() == 1 && ElementCount(*array.Array()) == 0) return true;
        if (!ReadShape<std::string>(values, shape)) return false;
        texts.resize(shape.count);
        const auto plain = [&](std::size_t i, const std::string& value) { texts[i] = TillZero(value); };
        const auto variant = [&](std::size_t i, const Variant& value) {
            std::string text;
            if (!value.ToBytes(text)) return false;
            plain(i, text);
            return true;
        };
        return ForEachElement<std::string>(*array.Array(), shape, plain, variant);
    });
    if (!read) texts.clear();
    return read;
}

}  // namespace orvane
