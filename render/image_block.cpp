#include <algorithm>
#include <string_view>

#include "platform/to_int.h"
#include "render/item_loop.h"
#include "render/line_polygon.h"
#include "render/masked_image.h"
#include "render/point_block.h"
#include "render/points.h"
#include "store/image_scale.h"
#include "store/strips.h"

namespace orvane {

namespace {

bool IsBmpName(std::string_view name) {
    constexpr std::string_view kSuffix = ".bmp";
    if (name.size() < kSuffix.size()) return false;
    const std::string_view end = name.substr(name.size() - kSuffix.size());
    return std::equal(end.begin(), end.end(), kSuffix.begin(),
                      [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b; });
}

/// From a data point to the centre of its image, in halves of the image's sides.
struct CentreShift {
    std::int32_t x, y;
};

CentreShift ShiftOf(std::int32_t imgPos) {
    constexpr CentreShift kShifts[] = {{0, 0}, {1, 1}, {1, -1}, {-1, 1}, {-1, -1}};
    return kShifts[imgPos >= 1 && imgPos <= 4 ? imgPos : 0];
}

/// A side of an image in pixels, as the map's scale stretches it.
std::int32_t StretchedSide(std::int32_t side_px, std::int32_t penFactor, double scale) {
    return TruncToInt32(static_cast<double>(std::int64_t{side_px} * penFactor) * scale);
}

class ImageWalk {
public:
    ImageWalk(PointBlock& points, const ImageLook& look, std::int32_t imgPos)
        : points_(points),
          look_(look),
          loader_(points.frame.reference->CreateCompatibleDC()),
          activePen_(CreatePen(PenStyle::Solid, PenUnitsToPix(3, points.penFactor), points.store.ActiveColor)),
          oldPen_(points.dc.SelectPen(activePen_)) {
        const double scale = ImageScale(look, points.store.view.PixPerUnit());
        width_ = StretchedSide(look.bmWidth, points.penFactor, scale);
        height_ = StretchedSide(look.bmHeight, points.penFactor, scale);
        halfWidth_ = static_cast<double>(width_ / 2);
        halfHeight_ = static_cast<double>(height_ / 2);
        const CentreShift shift = ShiftOf(imgPos);
        shiftX_ = shift.x * halfWidth_;
        shiftY_ = shift.y * halfHeight_;
    }
    ImageWalk(const ImageWalk&) = delete;
    ImageWalk& operator=(const ImageWalk&) = delete;
    ~ImageWalk() { points_.dc.SelectPen(oldPen_); }

    /// Hands the item on when its sub layer has a look of its own; true when that settles it.
    bool LeftToSubLayer(DigDat& dat) {
        const SubLayDef* sub = points_.SubLayer(dat);
        if (sub == nullptr) return false;
        if (sub->dspFlg == 0) {
            dat.drawnFlg = 0;
        } else if (sub->imgMode == 1) {
            DrawImages(points_, &dat);
        } else {
            DrawSymbols(points_, &dat);
        }
        return true;
    }

    void Draw(DigDat& dat) {
        if (dat.pntCnt < 1) return;
        const Point at = points_.transform.ToDevice(dat.pnts[0].x, dat.pnts[0].y);
        LoadFiles();
        const double x = static_cast<double>(at.x) + shiftX_;
        const double y = static_cast<double>(at.y) + shiftY_;
        const std::int32_t left = TruncToInt32(x - halfWidth_);
        const std::int32_t right = TruncToInt32(x + halfWidth_);
        const std::int32_t top = TruncToInt32(y - halfHeight_);
        const std::int32_t bottom = TruncToInt32(y + halfHeight_);
        const Point outline[] = {{left, top}, {left, bottom}, {right, bottom}, {right, top}, {left, top}};
        if (!PntsInStrips(outline, 4, points_.frame.stripA, points_.frame.stripB)) {
            dat.drawnFlg = 0;
            return;
        }
        MarkDrawn(dat);
        if (!normal_.Ready()) return;
        const bool active = dat.active != 0;
        BlitMasked(points_.dc, left, top, width_, height_, active && active_.Ready() ? active_ : normal_);
        if (active && !active_.Ready()) Frame(outline);
    }

private:
    /// Reads both files when the first item is reached, and again at later items as long as neither could be read.
    void LoadFiles() {
        if (normalFile_ != nullptr || activeFile_ != nullptr) return;
        LoadFile(look_.imgfname.View(), normalFile_, normal_);
        LoadFile(look_.imgactfname.View(), activeFile_, active_);
    }

    void LoadFile(std::string_view name, std::unique_ptr<Bitmap>& file, MaskedImage& image) {
        file = loader_->LoadBitmapFile(name);
        if (file == nullptr) return;
        image = MakeMaskPair(*loader_, *file, file->Width_px(), file->Height_px(), points_.store.bgColor);
    }

    void Frame(const Point (&outline)[5]) {
        points_.dc.SelectPen(activePen_);
        points_.dc.Polyline(outline, 5);
        points_.dc.SelectPen(oldPen_);
    }

    PointBlock& points_;
    const ImageLook& look_;
    std::int32_t width_ = 0, height_ = 0;
    double halfWidth_ = 0, halfHeight_ = 0;
    double shiftX_ = 0, shiftY_ = 0;
    std::unique_ptr<Bitmap> normalFile_, activeFile_;  // before the loader, which has one of them selected to its end
    std::unique_ptr<DeviceContext> loader_;
    MaskedImage normal_, active_;
    Pen activePen_, oldPen_;
};

}  // namespace

void DrawImages(PointBlock& points, DigDat* only) {
    const SubLayDef* sub = only != nullptr ? points.SubLayer(*only) : nullptr;
    if (only != nullptr && sub == nullptr) return;
    const ImageLook& look = sub != nullptr ? static_cast<const ImageLook&>(*sub) : points.layer;
    if (!IsBmpName(look.imgfname.View())) return;

    ImageWalk walk(points, look, sub != nullptr ? sub->imgPos : points.layer.imgPos);
    constexpr std::int32_t kNoLineTagMode = 0;  // tags above 0 are not hidden here, whatever the store's mode
    constexpr bool kHonourClip = false;
    if (only == nullptr) {
        ForEachShownItem(points.data, kNoLineTagMode, kHonourClip, [&walk](DigDat& dat) {
            if (!walk.LeftToSubLayer(dat)) walk.Draw(dat);
        });
    } else if (PassesGate(*only, kNoLineTagMode, kHonourClip)) {
        walk.Draw(*only);
    }
}

void DrawImageBlock(CDigMem& store, const FrameTarget& frame, std::int32_t block, std::int32_t layer, bool /*honourClip*/,
                    DrawScratch& scratch, std::int32_t item) {
    PointBlock points(store, frame, store.MutableBlock(block), layer, scratch);
    DrawPointItems(points, item, DrawImages);
}

}  // namespace orvane
