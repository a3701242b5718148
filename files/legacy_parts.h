// What the readers of the legacy files share. They fill a block that is not in the store yet: nothing of a file that fails was
// ever there, and a message may run any host code.
#pragma once

#include <cstdint>
#include <string_view>

#include "store/cdigmem.h"

namespace orvane {

enum class LegacyResult {
    Read,
    Failed,
    Inconsistent,  ///< points and header disagree, which the operator is told
    NoMemory,      ///< for points, which the operator is told as well
};

/// The bytes of a file behind its header, taken field by field.
class LegacyData {
public:
    enum class Sign {
        Comma,
        LineEnd,
        End,  ///< neither came any more
    };

    /// The bytes must outlive this.
    explicit LegacyData(std::string_view bytes) : bytes_(bytes) {}

    /// Takes the bytes up to the next comma or CR LF, and those too. With End nothing is taken.
    Sign Take(std::string_view& text);
    /// Takes one field that must end in a comma; false when it does not.
    bool TakeField(std::string_view& text) { return Take(text) == Sign::Comma; }
    /// Takes what is left of a line. False when no CR LF comes any more.
    bool SkipLine();

private:
    std::string_view bytes_;
};

/// Whether a name ends so, in any case, and is longer than that.
bool HasLegacyEnding(std::string_view name, std::string_view ending);
/// A coordinate, see LegacyFileRead.
double LegacyNumber(std::string_view text);
/// Widens an item's bounds by a point. Both sides truncate here, while elsewhere in the store the far ones are rounded.
void WidenTruncated(Rect& rect, const DigPnt& pnt);
/// Puts one more item, as yet without ID and points, behind the others and counts it. Null without memory. The array grows with
/// what is found in the file but never beyond `itemCnt`.
DigDat* AddLegacyDat(DigBlock& block, std::int32_t itemCnt);

// Each reads `itemCnt` items into `block`, whose `meshNo` and `recCnt` stand and which has none yet; the code of the last one
// becomes the block's.
LegacyResult ReadLegacyPoints(LegacyData& data, std::int32_t itemCnt, DigBlock& block);
LegacyResult ReadLegacyArcs(LegacyData& data, std::int32_t itemCnt, DigBlock& block);
LegacyResult ReadLegacyPolygons(LegacyData& data, std::int32_t itemCnt, DigBlock& block, CDigMem& store,
                                std::string_view arcCode);

}  // namespace orvane
