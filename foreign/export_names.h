// Names of layers in an output: what reads well, and each one only once.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace orvane {

class ExportNames {
public:
    /// A name from a UTF-8 text that no system takes for another one made here, nor for a path: letters count without their case,
    /// as tables and some file systems have it, and signs that file names cannot have become '_'. A second one of the same name
    /// ends in "~2" and so on.
    std::string Make(std::string_view utf8);

private:
    std::unordered_set<std::string> taken_;  // in small letters
    std::unordered_map<std::string, int> lastTail_;
};

}  // namespace orvane
