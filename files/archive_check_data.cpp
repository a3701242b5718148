#include "files/archive_check_data.h"

#include <algorithm>

namespace orvane {
namespace {

std::string Quoted(std::string_view code) { return "\"" + std::string(code) + "\""; }

bool SameRect(const Rect& a, const Rect& b) {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

std::string RectText(const Rect& r) {
    return "(" + std::to_string(r.left) + " " + std::to_string(r.top) + " " + std::to_string(r.right) + " " +
           std::to_string(r.bottom) + ")";
}

}  // namespace

std::uint64_t ArcKeyNumber(std::string_view code, std::int32_t meshNo) {
    constexpr std::uint64_t kPrime = 1099511628211U;
    std::uint64_t number = 14695981039346656037U;
    for (const char c : code) number = (number ^ static_cast<unsigned char>(c)) * kPrime;
    const auto mesh = static_cast<std::uint32_t>(meshNo);
    for (unsigned shift = 0; shift < 32; shift += 8) number = (number ^ (mesh >> shift & 255U)) * kPrime;
    return number;
}

DataCheck::DataCheck(ArcReport& report, const ArcExpected& expected) : report_(report), findings_(report), expected_(expected) {
    if (expected_.index != nullptr) idxItems_ = std::make_unique<PackedSource>(*expected_.index->file);
}

bool DataCheck::GoesOn(const ArcProgress& progress, double done) const {
    return !progress || report_.counts.items % 1000 != 0 || progress(done);
}

void DataCheck::TidyKeys() {
    std::sort(keys_.begin(), keys_.end());
    keys_.erase(std::unique(keys_.begin(), keys_.end()), keys_.end());
}

void DataCheck::NewRun(const DatRec& head) {
    last_ = {std::string(head.code.View()), head.meshNo};
    lastNumber_ = ArcKeyNumber(last_.code, last_.meshNo);
    ++runs_;
    // Items come block by block; a file that mixes them could make this list as long as itself.
    keys_.push_back(last_);
    if (keys_.size() >= tidyAt_) {
        TidyKeys();
        tidyAt_ = (std::max)(tidyAt_, 2 * keys_.size());
    }
    lastHasLayer_ = HasLayer(last_.code);
    if (!lastHasLayer_) {
        findings_.Warning(ArcFault::NoLayer, [&] {
            return "code " + Quoted(last_.code) + " has items but no layer: each of them will make a block of its own";
        });
    }
}

void DataCheck::Take(const DatRec& head, const DigDat& dat) {
    if (runs_ == 0 || head.meshNo != last_.meshNo || !(head.code == last_.code)) NewRun(head);
    ++report_.counts.items;
    report_.counts.keySum += lastNumber_;
    if (!lastHasLayer_) ++strayItems_;
    report_.counts.points += head.pntCnt;
    if (dat.str != nullptr) ++report_.counts.texts;
    if (dat.meshAttr != nullptr) ++report_.counts.meshes;
}

void DataCheck::Widen(const DatRec& head, const DigDat& dat) {
    for (std::int32_t i = 0; i < head.pntCnt; ++i) {
        const DigPnt& pnt = dat.pnts[static_cast<std::size_t>(i)];
        reach_.minX = std::fmin(reach_.minX, pnt.x);
        reach_.minY = std::fmin(reach_.minY, pnt.y);
        reach_.maxX = std::fmax(reach_.maxX, pnt.x);
        reach_.maxY = std::fmax(reach_.maxY, pnt.y);
    }
}

void DataCheck::EndBlock() {
    const IdxBlockRec& block = expected_.index->blocks[block_];
    const auto words = [&](const char* what) {
        return [this, what] { return "block " + std::to_string(block_) + " of the index has bounds that " + what; };
    };
    if (std::isnan(block.minX) || std::isnan(block.minY) || std::isnan(block.maxX) || std::isnan(block.maxY)) {
        findings_.Warning(ArcFault::BlockBounds, words("are no numbers: no area selects it"));
        return;
    }
    // A map that was read has its bounds from whole numbers of 32 bits, which were cut and not rounded.
    const auto above = [](double low, double reached) { return low > std::fmin(std::fmax(reached, INT32_MIN), INT32_MAX) + 1; };
    const bool holds = !above(block.minX, reach_.minX) && !above(block.minY, reach_.minY) && !above(-block.maxX, -reach_.maxX) &&
                       !above(-block.maxY, -reach_.maxY);
    if (!holds) findings_.Warning(ArcFault::BlockBounds, words("do not hold its items: a read by area may miss them"));
}

void DataCheck::HoldAgainstBlock(const DatRec& head, const DigDat& dat, std::int32_t number) {
    const GrowArray<IdxBlockRec>& blocks = expected_.index->blocks;
    const auto endsBefore = [&](const IdxBlockRec& block) { return std::int64_t{block.first} + block.count <= number; };
    while (block_ < blocks.size() && endsBefore(blocks[block_])) {
        if (blocks[block_].count > 0) EndBlock();
        reach_ = {};
        ++block_;
    }
    if (block_ == blocks.size()) return;
    const IdxBlockRec& block = blocks[block_];
    if (number >= block.first) Widen(head, dat);
    if (number == block.first) blockMeshNo_ = head.meshNo;
    if (number < block.first || (block.code == head.code.View() && blockMeshNo_ == head.meshNo)) return;
    findings_.Error(ArcFault::BlockItems, [&] {
        return "item " + std::to_string(number) + " is of code " + Quoted(head.code.View()) + ", mesh number " +
               std::to_string(head.meshNo) + ", but the index has it in a block of code " + Quoted(block.code.View()) +
               ", mesh number " + std::to_string(blockMeshNo_);
    });
}

void DataCheck::HoldAgainstIndex(const DatRec& head, const DigDat& dat, std::uint64_t offset) {
    if (idxItems_ == nullptr || idxEnded_ || report_.counts.items > expected_.index->nItems) return;
    const auto number = static_cast<std::int32_t>(report_.counts.items - 1);
    IdxItemRec item;
    if (!ReadIdxItem(*idxItems_, *expected_.index, number, item)) {
        idxEnded_ = true;
        findings_.Error(ArcFault::Counts, [&] { return "the index cannot be read at its item " + std::to_string(number); });
        return;
    }
    HoldAgainstBlock(head, dat, number);
    if (item.offset < 0 || static_cast<std::uint64_t>(item.offset) != offset) {
        findings_.Error(ArcFault::ItemOffset, [&] {
            return "the index has item " + std::to_string(number) + " at offset " + std::to_string(item.offset) +
                   ", but it stands at " + std::to_string(offset);
        });
    }
    if (!SameRect(item.rect, head.rect)) {
        findings_.Error(ArcFault::ItemRect, [&] {
            return "the index gives item " + std::to_string(number) + " the rectangle " + RectText(item.rect) + ", but it has " +
                   RectText(head.rect);
        });
    }
}

bool DataCheck::CheckBin(InputFile& file, ArcVersion version, const ArcProgress& progress) {
    BinItems items(file, version);
    for (;;) {
        const std::uint64_t offset = items.Position();
        DatRec head;
        DigDat dat;
        const ItemStep step = items.Next(head, dat);
        if (step == ItemStep::Broken) {
            findings_.Error(ArcFault::CutOff, [&] {
                return "the last " + std::to_string(file.Size_bytes() - offset) + " bytes of the data file, from offset " +
                       std::to_string(offset) + ", begin with no whole item: a read ends there";
            });
        }
        if (step != ItemStep::Item) break;
        Take(head, dat);
        HoldAgainstIndex(head, dat, offset);
        if (!GoesOn(progress, items.Done())) return false;
    }
    if (expected_.index != nullptr && block_ < expected_.index->blocks.size() && expected_.index->blocks[block_].count > 0) {
        EndBlock();
    }
    TidyKeys();
    CountReadBlocks();
    if (expected_.index != nullptr && expected_.index->nItems != report_.counts.items) {
        findings_.Error(ArcFault::Counts, [&] {
            return "the index lists " + std::to_string(expected_.index->nItems) + " items, but the data file has " +
                   std::to_string(report_.counts.items);
        });
    }
    return true;
}

bool DataCheck::CheckText(InputFile& file, ArcVersion version, const ArcProgress& progress) {
    TextItems items(file, version);
    std::string_view title;
    if (!items.NextLine(title)) return true;
    for (;;) {
        DatRec head;
        DigDat dat;
        const ItemStep step = items.Next(head, dat);
        if (step == ItemStep::Broken) {
            findings_.Error(ArcFault::CutOff, [&] {
                return "line " + std::to_string(items.LineNo()) +
                       " of the data file is not what its place asks for: a read ends there";
            });
        }
        if (step != ItemStep::Item) break;
        Take(head, dat);
        if (!GoesOn(progress, items.Done())) return false;
    }
    TidyKeys();
    CountReadBlocks();
    report_.counts.blocks = runs_;
    return true;
}

void DataCheck::CountReadBlocks() {
    const auto layered = std::count_if(keys_.begin(), keys_.end(), [this](const Key& key) { return HasLayer(key.code); });
    const std::int64_t blocks = strayItems_ + layered;
    if (blocks <= kMaxDigIndex) return;
    findings_.Error(ArcFault::Counts, [&] {
        return "a read makes " + std::to_string(blocks) +
               " blocks, one for each item of a code without a layer, and a map has room for " + std::to_string(kMaxDigIndex) +
               ": the read ends there";
    });
}

bool DataCheck::HasLayer(std::string_view code) const {
    return std::binary_search(expected_.codes.begin(), expected_.codes.end(), code);
}

bool DataCheck::HasBlock(std::string_view code, std::int32_t meshNo) const {
    return std::binary_search(keys_.begin(), keys_.end(), Key{std::string(code), meshNo});
}

}  // namespace orvane
