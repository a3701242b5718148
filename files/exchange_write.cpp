#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <initializer_list>
#include <memory>

#include "files/exchange.h"
#include "files/exchange_format.h"

namespace orvane {

namespace {

/// Hands a text on in large pieces. After the first piece that the system did not take, the rest is dropped.
class TextSink {
public:
    explicit TextSink(OutputFile& file) : file_(file) {}

    void Add(std::string_view text) {
        while (!text.empty() && ok_) {
            const std::size_t size = (std::min)(text.size(), bytes_.size() - used_);
            std::memcpy(bytes_.data() + used_, text.data(), size);
            used_ += size;
            text.remove_prefix(size);
            if (used_ == bytes_.size()) Flush();
        }
    }
    bool Flush() {
        if (used_ > 0 && ok_) ok_ = file_.Write(bytes_.data(), used_);
        used_ = 0;
        return ok_;
    }
    bool Ok() const { return ok_; }

    // Fields, each with the comma before it.
    void Int(std::int32_t value) {
        std::array<char, 16> text;
        const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
        Field({text.data(), static_cast<std::size_t>(end - text.data())});
    }
    void Ints(std::initializer_list<std::int32_t> values) {
        for (const std::int32_t value : values) Int(value);
    }
    void Real(double value) {
        // The greatest double has 309 digits before its point.
        std::array<char, 352> text;
        const auto end = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, 6).ptr;
        Field({text.data(), static_cast<std::size_t>(end - text.data())});
    }
    void Reals(std::initializer_list<double> values) {
        for (const double value : values) Real(value);
    }
    void Quoted(std::string_view text) {
        Add(",\"");
        Add(TillZero(text));
        Add("\"");
    }
    void EndLine() { Add("\n"); }

private:
    void Field(std::string_view text) {
        Add(",");
        Add(text);
    }

    OutputFile& file_;
    bool ok_ = true;
    std::size_t used_ = 0;
    std::array<char, 16384> bytes_;
};

/// Colours stand in the file as signed numbers.
std::int32_t Signed(Rgb color) { return static_cast<std::int32_t>(color); }

void WriteImage(TextSink& out, const ImageLook& image, std::uint8_t imgMode) {
    out.Quoted(image.imgfname.View());
    out.Quoted(image.imgactfname.View());
    out.Ints({imgMode, image.bmWidth, image.bmHeight});
    out.Reals({image.imgMinScl, image.imgMaxScl});
}

void WriteSubLayer(TextSink& out, const SubLayDef& sub, bool named) {
    out.Add(kSubLayerKey);
    if (named) out.Quoted(sub.layerName.View());
    out.Ints({sub.subLayNo, sub.layType, Signed(sub.color), sub.lineType, sub.lineSize, sub.pgnType, sub.pntType, sub.dspFlg,
              sub.outLine, sub.fillMode, 0});
    if (named) WriteImage(out, sub, sub.imgMode);
    out.EndLine();
}

void WriteLayer(TextSink& out, const LayerDef& layer, bool named) {
    out.Add(kLayerKey);
    out.Add(",");
    out.Add(layer.code.View());
    if (named) out.Quoted(layer.layerName.View());
    out.Ints({layer.layIndex, layer.layType, Signed(layer.color), layer.lineType, layer.lineSize, layer.pgnType, layer.pntType,
              layer.dspFlg, layer.outLine, layer.fillMode, layer.actFlg, layer.spareFlg, layer.editFlg, layer.subLayCnt});
    WriteImage(out, layer, layer.imgMode);
    out.EndLine();
    for (const SubLayDef& sub : layer.subLays) WriteSubLayer(out, sub, named);
}

void WriteText(TextSink& out, const DigStr& str) {
    out.Add(kTextKey);
    out.Reals({str.x, str.y, str.z});
    out.Quoted(str.text);
    out.Quoted(str.fntname);
    out.Ints({str.size, str.style, str.fill, str.pos});
    out.Real(str.angle);
    out.Ints({str.uline, str.strike, Signed(str.fcolor), Signed(str.bcolor)});
    out.EndLine();
}

void WriteItem(TextSink& out, const DigDat& dat) {
    out.Add(kItemKey);
    out.Ints({dat.datID, dat.lineTag, dat.subLayNo, dat.pntCnt});
    out.EndLine();
    for (std::int32_t i = 0; i < dat.pntCnt && out.Ok(); ++i) {
        const DigPnt& pnt = dat.pnts[static_cast<std::size_t>(i)];
        out.Add(kPointKey);
        out.Reals({pnt.x, pnt.y, pnt.z});
        out.EndLine();
    }
    if (dat.str != nullptr) WriteText(out, *dat.str);
}

void WriteBlock(TextSink& out, const DigBlock& block) {
    out.Add(kBlockKey);
    out.Add(",");
    out.Add(block.code.View());
    out.Ints({block.blkState, block.meshNo, block.blkFlg, block.inView});
    out.Reals({block.GX, block.GY, block.minX, block.minY, block.maxX, block.maxY});
    out.Int(block.datCnt);
    out.Quoted(block.path);
    out.EndLine();
    for (const DigDat& dat : block.dats) {
        if (!out.Ok()) return;
        WriteItem(out, dat);
    }
}

/// Whether a layer is among those asked for. The blocks of a layer stand together, so the last answer mostly serves again.
class LayerChoice {
public:
    explicit LayerChoice(std::span<const std::string_view> codes) : codes_(codes) {}

    bool Takes(const CDigMem& store, std::int32_t layer) {
        if (codes_.empty()) return true;
        if (layer != lastLayer_) {
            lastLayer_ = layer;
            lastTakes_ = std::find(codes_.begin(), codes_.end(), store.Layer(layer).code.View()) != codes_.end();
        }
        return lastTakes_;
    }

private:
    std::span<const std::string_view> codes_;
    std::int32_t lastLayer_ = -1;
    bool lastTakes_ = false;
};

/// All records behind the first line. Host code runs between two blocks, so each place of the index is looked up afresh: a place
/// that has no block any more ends the work with false.
bool WriteRecords(TextSink& out, CDigMem& store, std::int32_t slotCnt, bool named, std::span<const std::string_view> codes,
                  const ExchangePump& pump) {
    const std::uint32_t resetCount = store.ResetCount();
    LayerChoice choice(codes);
    bool done = false;
    for (std::int32_t pos = 0; pos < slotCnt; ++pos) {
        const std::span<const DigIndex> index = store.Index();
        if (static_cast<std::size_t>(pos) >= index.size()) return false;
        const DigIndex slot = index[static_cast<std::size_t>(pos)];
        if (!choice.Takes(store, slot.layer)) continue;
        WriteLayer(out, store.Layer(slot.layer), named);
        WriteBlock(out, store.Block(slot.block));
        if (!out.Ok()) return false;
        done = true;
        if (!pump) continue;
        if (!pump(static_cast<double>(pos + 1) / static_cast<double>(slotCnt)) || store.ResetCount() != resetCount) return false;
    }
    return done;
}

}  // namespace

bool ExchWrite(CDigMem& store, Files& files, std::string_view fileName, std::string_view version,
               std::span<const std::string_view> codes, const ExchangePump& pump) {
    const std::int32_t slotCnt = store.GetDigIndexCnt();
    if (slotCnt < 1) return false;
    const std::unique_ptr<OutputFile> file = files.Create(fileName);
    if (file == nullptr) return false;

    const bool named = version != kExchangeVersionPlain;
    TextSink out(*file);
    out.Add(kExchangeMagic);
    out.Add(named ? kExchangeVersionNamed : kExchangeVersionPlain);
    out.EndLine();
    const bool done = WriteRecords(out, store, slotCnt, named, codes, pump);
    const bool flushed = out.Flush();
    return file->Close() && flushed && done;
}

}  // namespace orvane
