// Lists of drawing verbs as text, one verb a line, as tests/golden/gallery holds them.
#pragma once

#include <istream>
#include <string>

#include "platform/record/verb_list.h"

namespace orvane {

/// The numbers of the contexts that a list names.
inline constexpr std::int32_t kBaseNumber = 30001;
inline constexpr std::int32_t kTopNumber = 30002;
inline constexpr std::int32_t kWindowNumber = 30003;

/// Appends all lines to `list`. Empty on success, else what is wrong with which line; the lines before it are appended.
std::string ReadVerbScript(std::istream& in, VerbList& list);

}  // namespace orvane
