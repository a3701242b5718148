// Point and line files, whose items bring their coordinates with them.
#include <algorithm>
#include <iterator>
#include <span>

#include "files/leading_number.h"
#include "files/legacy_parts.h"
#include "platform/to_int.h"
#include "store/guarded_alloc.h"

namespace orvane {

LegacyData::Sign LegacyData::Take(std::string_view& text) {
    for (std::size_t i = bytes_.find_first_of(",\r"); i != std::string_view::npos; i = bytes_.find_first_of(",\r", i + 1)) {
        const bool isComma = bytes_[i] == ',';
        if (!isComma && bytes_.substr(i + 1, 1) != "\n") continue;
        text = bytes_.substr(0, i);
        bytes_.remove_prefix(i + (isComma ? 1 : 2));
        return isComma ? Sign::Comma : Sign::LineEnd;
    }
    return Sign::End;
}

bool LegacyData::SkipLine() {
    const std::size_t end = bytes_.find("\r\n");
    if (end == std::string_view::npos) return false;
    bytes_.remove_prefix(end + 2);
    return true;
}

double LegacyNumber(std::string_view text) {
    constexpr std::int32_t kPowersOfTen[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000};
    const std::size_t point = (std::min)(text.find('.'), text.size());
    const double whole = LeadingInt32(text.substr(0, point));
    std::int32_t fraction = 0;
    std::size_t digits = 0;
    for (std::size_t i = point + 1; i < text.size() && digits + 1 < std::size(kPowersOfTen); ++i, ++digits) {
        if (text[i] < '0' || text[i] > '9') break;
        fraction = fraction * 10 + (text[i] - '0');
    }
    return whole + static_cast<double>(fraction) / kPowersOfTen[digits];
}

void WidenTruncated(Rect& rect, const DigPnt& pnt) {
    const std::int32_t x = TruncToInt32(pnt.x);
    const std::int32_t y = TruncToInt32(pnt.y);
    rect.left = (std::min)(rect.left, x);
    rect.right = (std::max)(rect.right, x);
    rect.top = (std::min)(rect.top, y);
    rect.bottom = (std::max)(rect.bottom, y);
}

DigDat* AddLegacyDat(DigBlock& block, std::int32_t itemCnt) {
    constexpr std::size_t kFirstRoom = 16;
    if (block.dats.size() == block.dats.capacity()) {
        const std::size_t wanted = (std::max)(block.dats.size() * 2, kFirstRoom);
        if (!block.dats.Reserve((std::min)(wanted, static_cast<std::size_t>(itemCnt)))) return nullptr;
    }
    DigDat dat;
    dat.datID = -1;
    dat.pntCnt = -1;
    dat.clipFlg = 1;
    dat.rect = kEmptyItemRect;
    if (!block.dats.PushBack(std::move(dat))) return nullptr;
    block.datCnt = static_cast<std::int32_t>(block.dats.size());
    return &block.dats[block.dats.size() - 1];
}

namespace {

/// The point lines of a file, of which it may hold as many as its header says.
class PointLines {
public:
    PointLines(LegacyData& data, std::int32_t recCnt) : data_(data), recCnt_(recCnt) {}

    /// Reads so many lines into the item. The count is a claim: memory is asked for what has been read.
    LegacyResult Read(std::int32_t pntCnt, DigDat& dat) {
        pnts_.Truncate(0);
        for (std::int32_t i = 0; i < pntCnt; ++i) {
            DigPnt pnt;
            const LegacyResult result = ReadLine(pnt);
            if (result != LegacyResult::Read) return result;
            if (!pnts_.PushBack(pnt)) return LegacyResult::NoMemory;
            WidenTruncated(dat.rect, pnt);
            ++readCnt_;
        }
        if (!CopyArray(dat.pnts, std::span<const DigPnt>(pnts_.data(), pnts_.size()))) return LegacyResult::NoMemory;
        dat.pntCnt = pntCnt;
        return LegacyResult::Read;
    }

private:
    /// x, y and z behind one another; a third comma starts over with x, and drops what stood before it.
    LegacyResult ReadLine(DigPnt& pnt) {
        std::int32_t commas = 0;
        std::string_view text;
        for (;;) {
            const LegacyData::Sign sign = data_.Take(text);
            if (sign == LegacyData::Sign::End) return LegacyResult::Failed;
            if (sign == LegacyData::Sign::LineEnd) break;
            if (readCnt_ >= recCnt_) return LegacyResult::Inconsistent;
            if (++commas == 1) {
                pnt.x = LegacyNumber(text);
            } else if (commas == 2) {
                pnt.y = LegacyNumber(text);
            } else {
                commas = 0;
            }
        }
        if (commas == 0) return LegacyResult::Inconsistent;
        (commas == 1 ? pnt.y : pnt.z) = LegacyNumber(text);
        return LegacyResult::Read;
    }

    LegacyData& data_;
    const std::int32_t recCnt_;
    std::int32_t readCnt_ = 0;  ///< in the whole file
    GrowArray<DigPnt> pnts_;
};

/// `code`, `lineTag`, `datID` and a count that ends at a comma or with the line. False when the data ends before.
bool ReadArcHead(LegacyData& data, DigBlock& block, DigDat& dat, std::int32_t& pntCnt) {
    std::string_view code;
    std::string_view lineTag;
    std::string_view datID;
    std::string_view count;
    if (!data.TakeField(code) || !data.TakeField(lineTag) || !data.TakeField(datID)) return false;
    const LegacyData::Sign sign = data.Take(count);
    if (sign == LegacyData::Sign::End || (sign == LegacyData::Sign::Comma && !data.SkipLine())) return false;
    block.code.Set(code);
    dat.lineTag = LeadingInt32(lineTag);
    dat.datID = LeadingInt32(datID);
    pntCnt = LeadingInt32(count);
    return true;
}

}  // namespace

LegacyResult ReadLegacyPoints(LegacyData& data, std::int32_t itemCnt, DigBlock& block) {
    PointLines lines(data, block.recCnt);
    for (std::int32_t i = 0; i < itemCnt; ++i) {
        DigDat* dat = AddLegacyDat(block, itemCnt);
        std::string_view code;
        std::string_view datID;
        if (dat == nullptr || !data.TakeField(code) || !data.TakeField(datID)) return LegacyResult::Failed;
        block.code.Set(code);
        dat->datID = LeadingInt32(datID);
        const LegacyResult result = lines.Read(1, *dat);
        if (result != LegacyResult::Read) return result;
    }
    return LegacyResult::Read;
}

LegacyResult ReadLegacyArcs(LegacyData& data, std::int32_t itemCnt, DigBlock& block) {
    PointLines lines(data, block.recCnt);
    for (std::int32_t i = 0; i < itemCnt; ++i) {
        DigDat* dat = AddLegacyDat(block, itemCnt);
        std::int32_t pntCnt = 0;
        if (dat == nullptr || !ReadArcHead(data, block, *dat, pntCnt) || pntCnt < 0) return LegacyResult::Failed;
        const LegacyResult result = lines.Read(pntCnt, *dat);
        if (result != LegacyResult::Read) return result;
    }
    return LegacyResult::Read;
}

}  // namespace orvane
