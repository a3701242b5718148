// The items of a data file, taken one after the other, without a store.
#pragma once

#include <cstdint>
#include <string_view>

#include "files/archive_format.h"
#include "files/packed_source.h"
#include "files/text_lines.h"

namespace orvane {

/// What a step over the items met.
enum class ItemStep : std::uint8_t {
    Item,
    End,     ///< the file ends behind the item before
    Broken,  ///< what stands there is no whole item, or there was no memory for it
};

/// The items of a binary data file. The file must outlive this.
class BinItems {
public:
    /// Starts behind the header.
    BinItems(InputFile& file, ArcVersion version) : source_(file), version_(version) { source_.Seek(kHeaderSize); }

    /// The next item; `dat` has its points, grid and text. What was begun of a broken one is to be thrown away.
    ItemStep Next(DatRec& head, DigDat& dat);
    void Seek(std::uint64_t offset) { source_.Seek(offset); }
    /// Offset of the next item.
    std::uint64_t Position() const { return source_.Position(); }
    std::uint64_t Remaining() const { return source_.Remaining(); }
    /// How much of the file is behind, 0 to 1.
    double Done() const { return static_cast<double>(source_.Position()) / static_cast<double>(source_.Size_bytes()); }

private:
    bool ReadHead(DatRec& head);
    bool Holds(std::int32_t count, std::size_t size) const;
    bool ReadPoints(const DatRec& head, DigDat& dat);
    bool ReadMesh(const DatRec& head, DigDat& dat);
    bool ReadStr(const DatRec& head, DigDat& dat);
    bool ReadText(std::int32_t textLen, std::string& text);

    PackedSource source_;
    ArcVersion version_;
    GrowArray<char> text_;
};

/// The items of a text data file; its lines are told in archive_text_write.cpp. A line that is not what its place asks for breaks
/// the item. The file must outlive this.
class TextItems {
public:
    TextItems(InputFile& file, ArcVersion version) : lines_(file), version_(version) {}

    /// The first line, before any item is taken. False when there is none. Valid until the next call.
    bool NextLine(std::string_view& line);
    /// The next item, as above. Broken is also a line behind an item that is no item's head.
    ItemStep Next(DatRec& head, DigDat& dat);
    /// Number of the last line taken, from 1.
    std::int64_t LineNo() const { return lineNo_; }
    double Done() const;

private:
    bool ReadHead(std::string_view line, DatRec& head);
    bool Holds(std::int32_t count, std::uint64_t line_bytes) const;
    bool ReadPoints(const DatRec& head, DigDat& dat);
    template <class Take>
    bool ReadMeshLines(const DatRec& head, std::string_view key, Take take);
    bool ReadMesh(const DatRec& head, DigDat& dat);
    bool ReadStr(const DatRec& head, DigDat& dat);

    TextLines lines_;
    ArcVersion version_;
    std::int64_t lineNo_ = 0;
};

}  // namespace orvane
