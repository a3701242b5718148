// Codes of imported layers: short, in the bytes of code page 932, and each one only once.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace orvane {

class LayerCodes {
public:
    using Encode = std::function<std::optional<std::string>(std::string_view utf8)>;

    /// `encode` gives one character's bytes; an empty function knows ASCII only.
    explicit LayerCodes(Encode encode) : encode_(std::move(encode)) {}

    /// A code that nothing made here may take again.
    void Take(std::string_view code) { taken_.emplace(code); }
    /// A code from a UTF-8 name, at most 50 bytes, cut between characters; a second one of the same name ends in "~2" and so on.
    std::string Make(std::string_view utf8);
    /// The bytes of a text, cut between characters to fit. Characters without bytes become 〓 (or '_'), control characters '_'.
    std::string Bytes(std::string_view utf8, std::size_t limit_bytes);

    /// Whether a character so far had no bytes.
    bool LostCharacters() const { return lost_; }

private:
    std::string BytesOf(std::string_view character);

    Encode encode_;
    std::unordered_set<std::string> taken_;
    std::unordered_map<std::string, int> lastTail_;
    bool lost_ = false;
};

}  // namespace orvane
