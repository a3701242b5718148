#include "foreign/json_check.h"

#include <array>
#include <fstream>
#include <string>

namespace orvane {

namespace {

class Scan {
public:
    void Take(char c) {
        if (inText_) {
            inText_ = escaped_ || c != '"';
            escaped_ = !escaped_ && c == '\\';
            return;
        }
        switch (c) {
            case '"':
                inText_ = true;
                break;
            case '{':
            case '[':
                broken_ = broken_ || closed_;
                if (c == '{' && open_ == "{[") ++objects_;
                open_ += c;
                break;
            case '}':
            case ']':
                if (open_.empty() || open_.back() != (c == '}' ? '{' : '[')) {
                    broken_ = true;
                    break;
                }
                open_.pop_back();
                closed_ = open_.empty();
                break;
            default:
                break;
        }
    }
    bool Whole() const { return closed_ && !broken_ && !inText_; }
    bool Broken() const { return broken_; }
    std::int64_t Objects() const { return objects_; }

private:
    std::string open_;  // the brackets that are open
    bool inText_ = false;
    bool escaped_ = false;
    bool closed_ = false;
    bool broken_ = false;
    std::int64_t objects_ = 0;
};

}  // namespace

std::int64_t CountListedObjects(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::array<char, 1 << 16> buffer;
    Scan scan;
    while (stream && !scan.Broken()) {
        stream.read(buffer.data(), buffer.size());
        for (std::streamsize i = 0; i < stream.gcount(); ++i) scan.Take(buffer[static_cast<std::size_t>(i)]);
    }
    return scan.Whole() ? scan.Objects() : -1;
}

}  // namespace orvane
