// What each verb is called and which values it takes: the one place where a recorded verb is described.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "platform/record/verb_list.h"

namespace orvane {

enum class VerbValueKind : std::uint8_t {
    Int,     ///< a signed number
    Hex,     ///< 32 bits that read best as hexadecimal: colours and ternary operations
    Rect,    ///< a rectangle that the platform's function takes as one
    Text,    ///< code page 932 bytes
    Pixels,  ///< four bytes each, in the order of this machine
    Points,
    Counts,  ///< how many of the points make up each ring
    Pen,
    Brush,
    Font,
    Bitmap,
    Context,
};

struct VerbRow {
    static constexpr std::size_t kMaxValues = 12;

    Verb verb = Verb::Count;
    std::string_view name;
    VerbValueKind kinds[kMaxValues] = {};
    std::size_t valueCnt = 0;

    constexpr VerbRow(Verb v, std::string_view n, std::initializer_list<VerbValueKind> values) : verb(v), name(n) {
        for (const VerbValueKind kind : values) kinds[valueCnt++] = kind;
    }
};

/// The row of a verb; names are those of the platform's functions, so several verbs may share one.
const VerbRow& RowOf(Verb verb);

}  // namespace orvane
