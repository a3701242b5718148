#include "hosts/common/text_limits.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "platform/cp932.h"

namespace orvane {
namespace {

constexpr const char* kWayOut = "; save it as .Ovb";

std::string CodeText(const DigBlock& block) { return "code \"" + DecodeCp932Shown(block.code.View()) + "\""; }

// Fields end at commas, and an empty one is not seen.
std::string WrongCode(const DigBlock& block) {
    const std::string_view code = block.code.View();
    if (code.empty()) return "the items of mesh number " + std::to_string(block.meshNo) + " have no code";
    if (code.find(',') != std::string_view::npos) return CodeText(block) + " holds a comma";
    return code.find('\n') != std::string_view::npos ? CodeText(block) + " holds a line break" : std::string();
}

std::string WrongString(std::string_view text) {
    if (text.find('\n') != std::string_view::npos) return "a line break";
    return text.find('\0') != std::string_view::npos ? "a byte 0" : std::string();
}

// Digits have no form for what is no number, which would come back as 0.
bool IsFinite(double x, double y, double z) { return std::isfinite(x) && std::isfinite(y) && std::isfinite(z); }

bool HasFinitePoints(const DigDat& dat) {
    const auto count = static_cast<std::size_t>((std::max)(dat.pntCnt, 0));
    const DigPnt* const pnts = dat.pnts.Get();
    return std::all_of(pnts, pnts + count, [](const DigPnt& pnt) { return IsFinite(pnt.x, pnt.y, pnt.z); });
}

std::string WrongItem(const DigBlock& block, const DigDat& dat) {
    const std::string wrong = WhatNoTextHolds(dat);
    if (wrong.empty()) return {};
    return "item " + std::to_string(dat.datID) + " of " + CodeText(block) + ", mesh number " + std::to_string(block.meshNo) +
           ", has " + wrong;
}

}  // namespace

std::string WhatNoTextHolds(const DigDat& dat) {
    if (!HasFinitePoints(dat)) return "a coordinate that is no number";
    if (dat.str == nullptr) return {};
    const DigStr& str = *dat.str;
    if (!IsFinite(str.x, str.y, str.z)) return "a text at a place that is no number";
    if (!std::isfinite(str.angle)) return "a text with an angle that is no number";
    if (const std::string wrong = WrongString(str.text); !wrong.empty()) return wrong + " in its text";
    const std::string wrong = WrongString(str.fntname);
    return wrong.empty() ? std::string() : wrong + " in its font name";
}

std::string WhatTextCannotHold(const CDigMem& store) {
    for (std::int32_t i = 0; i < store.BlockCnt(); ++i) {
        const DigBlock& block = store.Block(i);
        if (block.blkState != 1 || block.datCnt == 0) continue;
        if (const std::string wrong = WrongCode(block); !wrong.empty()) {
            return wrong + ", which shifts the fields of text data" + kWayOut;
        }
        for (const DigDat& dat : block.dats) {
            if (const std::string wrong = WrongItem(block, dat); !wrong.empty()) {
                return wrong + ", which text data cannot hold" + kWayOut;
            }
        }
    }
    return {};
}

}  // namespace orvane
