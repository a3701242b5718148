#include <algorithm>
#include <cstring>
#include <memory>

#include "files/byte_source.h"
#include "files/exchange.h"
#include "files/exchange_format.h"
#include "files/exchange_line.h"

namespace orvane {

namespace {

/// Lines of any length; memory follows the longest one.
class LineReader {
public:
    explicit LineReader(InputFile& file) : bytes_(file), size_bytes_(file.Size_bytes()) {}

    /// False behind the last line and without memory. The text is valid until the next call.
    bool Next(std::string_view& line) {
        text_.Truncate(0);
        int byte = ByteSource::kEnd;
        while ((byte = bytes_.Next()) != ByteSource::kEnd && byte != '\n') {
            if (!text_.PushBack(static_cast<char>(byte))) {
                failed_ = true;
                return false;
            }
        }
        const std::size_t size = text_.size();
        if (size == 0 && byte == ByteSource::kEnd) return false;
        const bool endsInReturn = size > 0 && text_[size - 1] == '\r';
        line = std::string_view(text_.data(), endsInReturn ? size - 1 : size);
        return true;
    }

    /// Whether the lines ended because the file did.
    bool IsWhole() const { return !failed_ && bytes_.Taken_bytes() >= size_bytes_; }
    double Fraction() const {
        if (size_bytes_ == 0) return 1;
        return (std::min)(static_cast<double>(bytes_.Taken_bytes()) / static_cast<double>(size_bytes_), 1.0);
    }

private:
    ByteSource bytes_;
    std::uint64_t size_bytes_;
    bool failed_ = false;
    GrowArray<char> text_;
};

/// What the records of a kind may take in memory, so that short lines cannot fill it.
class RecordRoom {
public:
    /// `times`: how many times the shortest line that ExchWrite writes for a record goes into the record.
    RecordRoom(std::uint64_t file_bytes, std::uint64_t times)
        : left_bytes_(kAlways_bytes + (std::min)(file_bytes, kLargest) * times) {}

    bool Take(std::size_t size) {
        if (size > left_bytes_) return false;
        left_bytes_ -= size;
        return true;
    }

private:
    static constexpr std::uint64_t kAlways_bytes = 64U << 20U;
    static constexpr std::uint64_t kLargest = std::uint64_t{1} << 50U;

    std::uint64_t left_bytes_;
};
constexpr std::uint64_t kItemTimes = 12;
constexpr std::uint64_t kSubLayerTimes = 50;

struct SubLayerRecord {
    std::int32_t subLayNo = 0;
    SubLayerSettings settings;
    ImageSettings image;
    bool imgMode = false;
};

SubLayerRecord ParseSubLayer(std::string_view body, bool named) {
    SubLayerRecord sub;
    SubLayerSettings& look = sub.settings;
    look.fillMode = false;
    ImageSettings& image = sub.image;
    ExchangeLine line(body);
    if ((!named || line.Name(look.layerName)) && line.Int(sub.subLayNo) && line.Skip() && line.Color(look.color) &&
        line.Int(look.lineType) && line.Int(look.lineSize) && line.Int(look.pgnType) && line.Int(look.pntType) &&
        line.Flag(look.disp) && line.Flag(look.outLine) && line.Flag(look.fillMode) && named) {
        line.Skip() && line.ImageName(image.imgfname) && line.ImageName(image.imgactfname) && line.Flag(sub.imgMode) &&
            line.Int(image.bmWidth) && line.Int(image.bmHeight) && line.Real(image.imgMinScl) && line.Real(image.imgMaxScl);
    }
    return sub;
}

/// The records of a file on their way into the store. Between two of them host code may run, so what was made last is kept by its
/// key.
class RecordTaker {
public:
    RecordTaker(CDigMem& store, bool named, std::uint64_t file_bytes)
        : store_(store), named_(named), itemRoom_(file_bytes, kItemTimes), subLayerRoom_(file_bytes, kSubLayerTimes) {}

    /// False when the read ends with it.
    bool Take(std::string_view line) {
        if (line.starts_with(kLayerKey)) return TakeLayer(BodyOf(line, 3));
        if (line.starts_with(kSubLayerKey)) return TakeSubLayer(BodyOf(line, 3));
        if (line.starts_with(kBlockKey)) return Done(TakeBlock(BodyOf(line, 3)));
        if (line.starts_with(kItemKey)) return Done(TakeItem(BodyOf(line, 3)));
        if (line.starts_with(kPointKey)) return Done(TakePoint(BodyOf(line, 2)));
        if (line.starts_with(kTextKey)) return Done(TakeText(BodyOf(line, 2)));
        return true;
    }
    /// The answer of the last operation on the store, false before the first.
    bool Result() const { return result_; }

private:
    static std::string_view BodyOf(std::string_view line, std::size_t begin) {
        return line.substr((std::min)(begin, line.size()));
    }
    bool Done(bool result) { return result_ = result; }

    bool TakeLayer(std::string_view body);
    bool TakeSubLayer(std::string_view body);
    bool TakeBlock(std::string_view body);
    bool SetSubLayers();
    bool TakeItem(std::string_view body);
    bool TakePoint(std::string_view body);
    bool TakeText(std::string_view body);

    CDigMem& store_;
    const bool named_;
    bool result_ = false;
    RecordRoom itemRoom_;  ///< items with their points and texts
    RecordRoom subLayerRoom_;

    // One byte more than a code may have, so that too long a one is refused and not cut to another layer's.
    FixedText<kMaxCode + 1> layerCode_;
    std::int32_t layIndex_ = 0;
    std::int32_t layType_ = 0;
    LayerDisplay display_;
    /// The bodies of the layer's SL lines, each with a line end: they are parsed when a block asks for them, because a record
    /// takes a hundred times as much as the shortest line.
    GrowArray<char> subLayers_;
    bool subLayersSet_ = false;
    std::uint32_t subLayChangeCount_ = 0;  ///< of the store, when they were set

    FixedText<kMaxCode + 1> blockCode_;
    std::int32_t meshNo_ = 0;
    std::int32_t datID_ = 0;
    GrowArray<char> text_;
    GrowArray<char> font_;
};

bool RecordTaker::TakeLayer(std::string_view body) {
    layIndex_ = layType_ = 0;
    display_ = {};
    subLayers_.Truncate(0);
    subLayersSet_ = false;
    std::string_view code;
    ExchangeLine line(body);
    // Whatever stands behind these fields is of no use to the store.
    line.Bare(code) && (!named_ || line.Skip()) && line.Int(layIndex_) && line.Int(layType_) && line.Color(display_.color) &&
        line.Int(display_.lineType) && line.Int(display_.lineSize) && line.Int(display_.pgnType) && line.Int(display_.pntType) &&
        line.Flag(display_.disp) && line.Flag(display_.outLine) && line.Flag(display_.fillMode) && line.Flag(display_.active);
    layerCode_.Set(code);
    return true;
}

bool RecordTaker::TakeSubLayer(std::string_view body) {
    const std::size_t size = subLayers_.size();
    if (!subLayers_.Resize(size + body.size() + 1)) return Done(false);
    if (!body.empty()) std::memcpy(subLayers_.data() + size, body.data(), body.size());
    subLayers_[size + body.size()] = '\n';
    subLayersSet_ = false;
    return true;
}

bool RecordTaker::TakeBlock(std::string_view body) {
    std::string_view code;
    std::string_view path;
    double GX = 0;
    double GY = 0;
    meshNo_ = 0;
    ExchangeLine line(body);
    line.Bare(code) && line.Skip() && line.Int(meshNo_) && line.Skip(2) && line.Real(GX) && line.Real(GY) && line.Skip(5) &&
        line.Name(path);
    blockCode_.Set(code);
    // The store would make a block that nothing finds.
    if (layerCode_.Empty()) return false;
    return store_.DigMemAlloc2(layerCode_.View(), meshNo_, layType_, path, layIndex_, GX, GY) && SetSubLayers() &&
           store_.SetLayDisplay(layerCode_.View(), display_);
}

/// Sets them again for every block of the layer, but not while all that was set still stands: many blocks behind many sub layers
/// would take for ever.
bool RecordTaker::SetSubLayers() {
    if (subLayersSet_ && store_.SubLayChangeCount() == subLayChangeCount_) return true;
    const std::string_view code = layerCode_.View();
    const std::int32_t layer = store_.FindLayDef(code);
    std::string_view rest(subLayers_.data(), subLayers_.size());
    while (!rest.empty()) {
        const std::size_t end = rest.find('\n');
        const SubLayerRecord sub = ParseSubLayer(rest.substr(0, end), named_);
        rest.remove_prefix(end + 1);
        const bool isNew = layer < 0 || CDigMem::FindSubLay(store_.Layer(layer), sub.subLayNo) == nullptr;
        if (isNew && !subLayerRoom_.Take(sizeof(SubLayDef))) return false;
        if (!store_.SetSubLayerEx(code, sub.subLayNo, sub.settings)) return false;
        if (named_ && !store_.SetSubLayImageMode(code, sub.subLayNo, sub.image, sub.imgMode)) return false;
    }
    subLayersSet_ = true;
    subLayChangeCount_ = store_.SubLayChangeCount();
    return true;
}

bool RecordTaker::TakeItem(std::string_view body) {
    datID_ = 0;
    std::int32_t lineTag = 0;
    std::int32_t subLayNo = 0;
    ExchangeLine line(body);
    line.Int(datID_) && line.Int(lineTag) && line.Int(subLayNo);
    if (!itemRoom_.Take(sizeof(DigDat)) || !store_.AddDigDat(blockCode_.View(), meshNo_, datID_, lineTag)) return false;
    return subLayNo <= 0 || store_.SetDigDatSubLayer(blockCode_.View(), meshNo_, datID_, subLayNo);
}

bool RecordTaker::TakePoint(std::string_view body) {
    DigPnt pnt;
    ExchangeLine line(body);
    line.Real(pnt.x) && line.Real(pnt.y) && line.Real(pnt.z);
    return itemRoom_.Take(sizeof(DigPnt)) && store_.AddDigDatPnt(blockCode_.View(), meshNo_, datID_, pnt);
}

bool RecordTaker::TakeText(std::string_view body) {
    double x = 0;
    double y = 0;
    TextLook look;
    look.size = 0;
    text_.Truncate(0);
    font_.Truncate(0);
    ExchangeLine line(body);
    if (line.Real(x) && line.Real(y) && line.Skip() && line.Joined(text_) && line.Joined(font_)) {
        // A font that is there whole is not taken: files of this kind have always come back with the start of the text for it.
        font_.Truncate(0);
        look.fntname = {text_.data(), text_.empty() ? 0 : text_.size() - 1};
        line.Int(look.size) && line.Int(look.style) && line.Flag(look.fill) && line.Int(look.pos) && line.Real(look.angle) &&
            line.Flag(look.uline) && line.Flag(look.strike) && line.Color(look.fcolor) && line.Color(look.bcolor);
    } else {
        look.fntname = {font_.data(), font_.size()};
    }
    if (line.MemoryRanOut() || !itemRoom_.Take(sizeof(DigStr))) return false;
    return store_.SetDigDatString(blockCode_.View(), meshNo_, datID_, x, y, {text_.data(), text_.size()}) &&
           store_.SetDigDatStrStyle(blockCode_.View(), meshNo_, datID_, look);
}

bool ReadVersion(std::string_view line, bool& named) {
    if (!line.starts_with(kExchangeMagic)) return false;
    line.remove_prefix(kExchangeMagic.size());
    named = line == kExchangeVersionNamed;
    return named || line == kExchangeVersionPlain;
}

}  // namespace

bool ExchRead(CDigMem& store, Files& files, std::string_view fileName, const ExchangePump& pump) {
    const std::unique_ptr<InputFile> file = files.OpenRead(fileName);
    if (file == nullptr) return false;
    LineReader lines(*file);
    std::string_view line;
    bool named = false;
    if (!lines.Next(line) || !ReadVersion(line, named)) return false;

    const std::uint32_t resetCount = store.ResetCount();
    RecordTaker records(store, named, file->Size_bytes());
    while (lines.Next(line)) {
        if (!records.Take(TillZero(line))) return false;
        if (pump && (!pump(lines.Fraction()) || store.ResetCount() != resetCount)) return false;
    }
    return lines.IsWhole() && records.Result();
}

}  // namespace orvane
