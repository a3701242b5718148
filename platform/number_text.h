// Numbers and their texts, the same whatever the locale of the process.
#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// Reads a text that is one decimal number as a whole: blanks and tabs around it, a sign, digits with a point, an exponent.
/// False for anything else and for values beyond a double; `out` then stays.
bool ReadNumber(std::string_view text, double& out);

/// The shortest text that reads back as the same value. From 1e15 on and below 1e-4 it has an exponent ("1E+21").
/// False for NaN and infinities, which have no text; `out` then stays.
bool NumberText(double value, std::string& out);
bool NumberText(float value, std::string& out);

}  // namespace orvane
