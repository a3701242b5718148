#include <cstddef>

#include "platform/mul_div.h"
#include "platform/to_int.h"
#include "render/block_drawing.h"
#include "render/item_loop.h"
#include "render/shapes.h"
#include "store/strips.h"

namespace orvane {

namespace {

enum StrStyle : std::int32_t { kStrBold = 1, kStrItalic = 2, kStrHalo = 4 };

/// Leaves the first of equal texts: those behind it that the area search found lose their flag.
class TextCutter {
public:
    TextCutter(DigBlock& block, bool cuts, TextSet& texts) : block_(block), cuts_(cuts), texts_(texts) {
        if (cuts_) texts_.Forget();
    }

    /// Takes the item's flag when a text before it says so. To be asked of every item before anything reads the flag.
    void Meet(DigDat& dat) const {
        if (cuts_ && dat.clipFlg != 0 && texts_.Has(dat.str->text)) dat.clipFlg = 0;
    }

    /// The item's text is about to be written, so all later ones like it are cut.
    void CutLikeThis(const DigDat& dat) {
        if (!cuts_ || texts_.Add(dat.str->text)) return;
        // Without memory to note the text, those behind it are looked up here and now.
        const std::size_t count = block_.dats.size();
        for (auto i = static_cast<std::size_t>(&dat - block_.dats.data()) + 1; i < count; ++i) {
            DigDat& later = block_.dats[i];
            if (later.clipFlg != 0 && later.str != nullptr && later.str->text == dat.str->text) later.clipFlg = 0;
        }
    }

private:
    DigBlock& block_;
    bool cuts_;
    TextSet& texts_;
};

/// The font at work. It stays selected while the texts ask for the same one.
class BlockFont {
public:
    explicit BlockFont(DeviceContext& dc) : dc_(dc) {}
    BlockFont(const BlockFont&) = delete;
    BlockFont& operator=(const BlockFont&) = delete;
    ~BlockFont() {
        if (made_) dc_.SelectFont(old_);
    }

    void Use(const Font& font) {
        if (made_ && font == font_) return;
        if (made_) dc_.SelectFont(old_);
        old_ = dc_.SelectFont(font);
        font_ = font;
        made_ = true;
    }

private:
    DeviceContext& dc_;
    bool made_ = false;
    Font font_, old_;
};

class TextBlock : BlockDrawing {
public:
    TextBlock(const CDigMem& fromStore, const FrameTarget& target, DigBlock& block, std::int32_t layerPos, DrawScratch& buffers)
        : BlockDrawing(fromStore, target, block, layerPos, buffers),
          dpi_(dc.GetDeviceCaps(DeviceCap::LogPixelsY)),
          cutter_(block, store.CutSameString != 0, buffers.Texts()),
          font_(dc) {}

    void Draw(DigDat& dat, bool honourClip) {
        cutter_.Meet(dat);
        if ((honourClip && dat.clipFlg == 0) || dat.lineTag == -1 || TextIsOff(dat)) return;
        const DigStr& str = *dat.str;
        const Point at = transform.ToDevice(str.x, str.y);
        const bool opaque = str.fill != 0;
        dc.SetROP2(opaque ? Rop2::CopyPen : Rop2::MaskPen);
        dc.SetBkMode(opaque ? BkMode::Opaque : BkMode::Transparent);
        dc.SetTextAlign(TextAlignOf(str.pos));
        font_.Use(FontOf(str));
        if (!InStrips(at, dc.TextExtent(str.text))) return;

        const Rgb oldText = dc.SetTextColor(str.fcolor);
        const Rgb oldBk = dc.SetBkColor(str.bcolor);
        cutter_.CutLikeThis(dat);
        if ((str.style & kStrHalo) != 0) DrawHalo(at, str);
        dc.DrawTextBytes(at.x, at.y, str.text);
        dc.SetTextColor(oldText);
        dc.SetBkColor(oldBk);
    }

private:
    /// A size in points is a size on the device: it does not follow the map's scale.
    Font FontOf(const DigStr& str) const {
        Font font;
        font.height_px = SaturatedNegative(MulDiv(str.size, dpi_, 72));
        font.escapement_tenths = font.orientation_tenths = ToInt(str.angle * 10.0);
        font.weight = (str.style & kStrBold) != 0 ? 700 : 400;
        font.italic = (str.style & kStrItalic) != 0;
        font.underline = str.uline != 0;
        font.strikeOut = str.strike != 0;
        font.faceName = FaceName(str.fntname.empty() ? kDefaultFace : std::string_view(str.fntname));
        return font;
    }

    /// The box reaches a whole text to every side of the anchor, so that it serves every alignment.
    bool InStrips(Point at, TextSize size) const {
        const Rect around{SaturatedAdd(at.x, SaturatedNegative(size.width_px)),
                          SaturatedAdd(at.y, SaturatedNegative(size.height_px)), SaturatedAdd(at.x, size.width_px),
                          SaturatedAdd(at.y, size.height_px)};
        return RectInStrips(around, frame.stripA, frame.stripB);
    }

    void DrawHalo(Point at, const DigStr& str) {
        constexpr Point kAround[] = {{-1, 1}, {-1, -1}, {1, 1}, {1, -1}};
        dc.SetTextColor(str.bcolor);
        for (const Point by : kAround) dc.DrawTextBytes(SaturatedAdd(at.x, by.x), SaturatedAdd(at.y, by.y), str.text);
        dc.SetTextColor(str.fcolor);
    }

    std::int32_t dpi_;
    TextCutter cutter_;
    BlockFont font_;
};

}  // namespace

TextAlign TextAlignOf(std::int32_t pos) {
    constexpr TextAlign kAligns[] = {TextAlign::LeftTop,   TextAlign::LeftBaseline,   TextAlign::LeftBottom,
                                     TextAlign::CenterTop, TextAlign::CenterBaseline, TextAlign::CenterBottom,
                                     TextAlign::RightTop,  TextAlign::RightBaseline,  TextAlign::RightBottom};
    return pos < 0 || pos > 8 ? TextAlign::LeftTop : kAligns[pos];
}

void DrawTextBlock(CDigMem& store, const FrameTarget& frame, std::int32_t block, std::int32_t layer, bool honourClip,
                   DrawScratch& scratch) {
    DigBlock& data = store.MutableBlock(block);
    TextBlock drawing(store, frame, data, layer, scratch);
    ForEachTextItem(data, [&](DigDat& dat) { drawing.Draw(dat, honourClip); });
}

}  // namespace orvane
