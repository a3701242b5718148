#include "files/symbol_file.h"

#include <array>
#include <memory>
#include <span>
#include <utility>

#include "files/byte_source.h"
#include "files/leading_number.h"
#include "store/guarded_alloc.h"

namespace orvane {

namespace {

constexpr std::size_t kFields = 5;

/// One line of the file, its numbers read while its bytes pass: however long it is, no more than this is held of it.
class StrokeLine {
public:
    void Feed(char c) {
        if (c == ',') {
            EndField();
        } else {
            inField_ = true;
            if (complete_ < kFields) fields_[complete_].Feed(c);
        }
    }
    void EndField() {
        if (inField_ && complete_ < kFields) ++complete_;
        inField_ = false;
    }

    bool IsStroke() const { return complete_ == kFields; }
    std::int32_t SymNo() const { return fields_[0].Value(); }
    Point From() const { return {fields_[1].Value(), fields_[2].Value()}; }
    Point To() const { return {fields_[3].Value(), fields_[4].Value()}; }

private:
    std::array<LeadingInt, kFields> fields_;
    std::size_t complete_ = 0;
    bool inField_ = false;
};

bool EndsData(int byte) { return byte == ByteSource::kEnd || byte == 0x1A || byte == 0; }

/// False when the data ended with this line, which counts nevertheless.
bool ReadLine(ByteSource& bytes, StrokeLine& line) {
    for (;;) {
        const int byte = bytes.Next();
        if (EndsData(byte) || byte == '\n') {
            line.EndField();
            return byte == '\n';
        }
        const bool isLineEnd = byte == '\r' && bytes.Peek() == '\n';
        if (!isLineEnd) line.Feed(static_cast<char>(byte));
    }
}

class SymbolReader {
public:
    explicit SymbolReader(CDigMem& store) : store_(store) {}

    /// False when nothing more can be taken: the table is full, or there is no memory.
    bool Take(const StrokeLine& line) {
        if (begun_ && symNo_ != line.SymNo()) {
            if (!Close()) return false;
            from_.Truncate(0);
            to_.Truncate(0);
        }
        begun_ = true;
        symNo_ = line.SymNo();
        if (from_.size() == kMaxStrokes) return true;
        return from_.PushBack(line.From()) && to_.PushBack(line.To());
    }

private:
    bool Close() {
        SymbolDef symbol;
        symbol.symNo = symNo_;
        symbol.strokeCnt = static_cast<std::int32_t>(from_.size());
        return CopyArray(symbol.strokeFrom, std::span<const Point>(from_.data(), from_.size())) &&
               CopyArray(symbol.strokeTo, std::span<const Point>(to_.data(), to_.size())) &&
               store_.symbols.PushBack(std::move(symbol)) && store_.symbols.size() < kMaxSymbols;
    }

    CDigMem& store_;
    bool begun_ = false;  ///< there was a line before
    std::int32_t symNo_ = 0;
    GrowArray<Point> from_;
    GrowArray<Point> to_;
};

}  // namespace

void ReadSymbolData(CDigMem& store, Files& files, std::string_view fileName) {
    if (!store.InitDone()) return;
    store.symbols.Clear();
    const std::unique_ptr<InputFile> file = files.OpenRead(fileName);
    if (file == nullptr) return;

    ByteSource bytes(*file);
    SymbolReader reader(store);
    for (bool more = true; more;) {
        StrokeLine line;
        more = ReadLine(bytes, line);
        if (line.IsStroke() && !reader.Take(line)) return;
    }
}

}  // namespace orvane
