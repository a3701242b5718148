#include "hosts/common/table_text.h"

#include <algorithm>

namespace orvane {

std::size_t Columns(std::string_view utf8) {
    std::size_t columns = 0;
    for (const char c : utf8) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte & 0xC0U) != 0x80U) columns += byte >= 0xE3U ? 2 : 1;
    }
    return columns;
}

std::string PadRight(const std::string& text, std::size_t columns) {
    return text + std::string(columns - std::min(columns, Columns(text)), ' ');
}

std::string PadLeft(const std::string& text, std::size_t columns) {
    return std::string(columns - std::min(columns, Columns(text)), ' ') + text;
}

}  // namespace orvane
