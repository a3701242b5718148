// Values of recorded verbs as readable text, for golden lists and for the words of a failed test.
#pragma once

#include <string>

#include "platform/record/verb_table.h"

namespace orvane {

std::string PenText(const Pen& pen);
std::string BrushText(const Brush& brush);
std::string FontText(const Font& font);
/// A context's text here is its bare number; the list that knows its label writes that instead.
std::string ValueText(const VerbValue& value, VerbValueKind kind);

}  // namespace orvane
