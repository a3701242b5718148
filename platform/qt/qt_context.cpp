#include "platform/qt/qt_context.h"

#include <QFile>
#include <cstdlib>
#include <limits>
#include <utility>

#include "platform/qt/blit.h"
#include "platform/qt/round_figures.h"
#include "platform/qt/text_painter.h"
#include "platform/rect.h"

namespace orvane {

namespace {

constexpr BitRule kCopyRule = 12;

bool HasPixels(const QImage* image) {
    if (image == nullptr || image->isNull()) return false;
    const QImage::Format format = image->format();
    return format == QImage::Format_RGB32 || format == QImage::Format_ARGB32 || format == QImage::Format_ARGB32_Premultiplied;
}

PixelSurface SurfaceOver(const QImage& image, const uchar* bits) {
    if (bits == nullptr) return {};
    auto* const pixels = reinterpret_cast<Pixel*>(const_cast<uchar*>(bits));
    return {pixels, static_cast<std::ptrdiff_t>(image.bytesPerLine()) / 4, image.width(), image.height()};
}

/// To draw on; this parts the image from copies that others hold.
PixelSurface SurfaceToDrawOn(QImage* image) { return HasPixels(image) ? SurfaceOver(*image, image->bits()) : PixelSurface{}; }

/// To read only, whatever its type says.
PixelSurface SurfaceToRead(const QImage* image) {
    return HasPixels(image) ? SurfaceOver(*image, image->constBits()) : PixelSurface{};
}

/// Its pixels are not set; a null image for a side below 1, and where its memory cannot be had.
QImage NewImage(std::int32_t width_px, std::int32_t height_px) {
    if (width_px < 1 || height_px < 1 || std::int64_t{width_px} * height_px > QtContext::kMaxBitmapPixels) return {};
    return {width_px, height_px, QImage::Format_RGB32};
}

Box BoxOf(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) {
    return NormalizeBox({x, y, std::int64_t{x} + width, std::int64_t{y} + height});
}

Rect Within(const Rect& bounds, const Box& box) {
    Box common;
    IntersectBox(ToBox(bounds), box, common);
    return {static_cast<std::int32_t>(common.left), static_cast<std::int32_t>(common.top),
            static_cast<std::int32_t>(common.right), static_cast<std::int32_t>(common.bottom)};
}

bool AreDrawable(const Point* pts, const std::int32_t* counts, std::int32_t ringCnt) {
    if (pts == nullptr || counts == nullptr || ringCnt < 1) return false;
    for (std::int32_t i = 0; i < ringCnt; ++i) {
        if (counts[i] < 2) return false;
    }
    return true;
}

}  // namespace

const QImage& QtContext::Image() const {
    static const QImage kNone;
    return image_ == nullptr ? kNone : *image_;
}

bool QtContext::SavePng(const std::string& fileName) const {
    return image_ != nullptr && image_->save(QFile::decodeName(fileName.c_str()), "PNG");
}

std::unique_ptr<DeviceContext> QtContext::CreateCompatibleDC() {
    auto made = std::make_unique<QtContext>(numbers_);
    made->bitmapFiles_ = bitmapFiles_;
    return made;
}

std::unique_ptr<Bitmap> QtContext::CreateCompatibleBitmap(std::int32_t width_px, std::int32_t height_px) {
    QImage image = NewImage(width_px, height_px);
    if (image.isNull()) return nullptr;
    image.fill(Qt::black);
    return std::make_unique<QtBitmap>(std::move(image));
}

std::unique_ptr<Bitmap> QtContext::CreateMonochromeBitmap(std::int32_t width_px, std::int32_t height_px) {
    std::unique_ptr<Bitmap> made = CreateCompatibleBitmap(width_px, height_px);
    if (made == nullptr) return nullptr;
    return std::make_unique<QtBitmap>(std::move(static_cast<QtBitmap&>(*made).Image()), true);
}

std::unique_ptr<Bitmap> QtContext::LoadBitmapFile(std::string_view fileName) {
    const std::shared_ptr<const FilePixels> file = bitmapFiles_ != nullptr ? bitmapFiles_->Load(fileName) : nullptr;
    return file != nullptr ? CreatePixelBitmap(file->width_px, file->height_px, file->pixels.data()) : nullptr;
}

std::unique_ptr<Bitmap> QtContext::CreatePixelBitmap(std::int32_t width_px, std::int32_t height_px, const Rgb* pixels) {
    QImage image = pixels != nullptr ? NewImage(width_px, height_px) : QImage();
    if (image.isNull()) return nullptr;
    for (std::int32_t y = 0; y < height_px; ++y, pixels += width_px) {
        auto* const row = reinterpret_cast<Pixel*>(image.scanLine(y));
        for (std::int32_t x = 0; x < width_px; ++x) row[x] = ToPixel(pixels[x]);
    }
    return std::make_unique<QtBitmap>(std::move(image));
}

void QtContext::SelectBitmap(Bitmap* bitmap) {
    auto* const own = dynamic_cast<QtBitmap*>(bitmap);
    if (bitmap != nullptr && own == nullptr) return;
    image_ = own == nullptr ? nullptr : &own->Image();
    monochrome_ = own != nullptr && own->IsMonochrome();
}

Pen QtContext::SelectPen(const Pen& pen) {
    if (pen.empty) return state_.pen;
    painter_.StateChanged();
    return std::exchange(state_.pen, pen);
}

Brush QtContext::SelectBrush(const Brush& brush) {
    painter_.StateChanged();
    return std::exchange(state_.brush, brush);
}

Font QtContext::SelectFont(const Font& font) { return std::exchange(font_, font); }

Rop2 QtContext::SetROP2(Rop2 mode) {
    if (mode < Rop2::Black || mode > Rop2::White || mode == state_.rop2) return state_.rop2;
    painter_.StateChanged();
    return std::exchange(state_.rop2, mode);
}

BkMode QtContext::SetBkMode(BkMode mode) {
    if (mode < BkMode::Transparent || mode > BkMode::Opaque) return state_.bkMode;
    painter_.StateChanged();
    return std::exchange(state_.bkMode, mode);
}

Rgb QtContext::SetBkColor(Rgb color) {
    painter_.StateChanged();
    return std::exchange(state_.bkColor, color);
}

Rgb QtContext::SetTextColor(Rgb color) { return std::exchange(textColor_, color); }

TextAlign QtContext::SetTextAlign(TextAlign align) { return std::exchange(align_, align); }

ArcDirection QtContext::SetArcDirection(ArcDirection direction) { return std::exchange(arcs_, direction); }

bool QtContext::Prepare() {
    // Each figure comes through here, and mostly there is nothing new.
    if (const PixelSurface surface = SurfaceToDrawOn(image_); surface != surface_) {
        areaIsStale_ = areaIsStale_ || surface.width_px != surface_.width_px || surface.height_px != surface_.height_px;
        surface_ = surface;
    }
    if (areaIsStale_) {
        ToClipArea(clip_.On(surface_.Bounds()), area_);
        areaIsStale_ = false;
    }
    return !area_.rects.empty();
}

Rect QtContext::SurfaceRect() const { return HasPixels(image_) ? Rect{0, 0, image_->width(), image_->height()} : Rect{}; }

void QtContext::LineTo(std::int32_t x, std::int32_t y) {
    const Point line[] = {position_, {x, y}};
    position_ = {x, y};
    Polyline(line, 2);
}

Box QtContext::Seen() const { return InflateBox(ToBox(SurfaceRect()), std::abs(std::int64_t{state_.pen.width_px}) + 1); }

bool QtContext::CanShow(const Rect& box) const {
    Box common;
    return IntersectBox(NormalizeBox(ToBox(box)), Seen(), common);
}

/// Draws the figure in round_, or adds it to the path that is being gathered.
void QtContext::DrawRound(bool closed) {
    if (round_.size() == 4 && round_[0] == round_[2] && closed) {  // one pixel: a line that leaves its last one out
        round_.resize(2);
        round_[1] = {round_[0].x + (round_[0].x < (std::numeric_limits<std::int32_t>::max)() ? 1 : -1), round_[0].y};
        closed = false;
    }
    const std::uint8_t isClosed = closed ? 1 : 0;
    const auto count = static_cast<std::int32_t>(round_.size());
    const Figures figures{round_.data(), &count, 1, &isClosed};
    if (count < 2) return;
    if (path_.IsOpen()) {
        path_.Add(figures);
    } else if (Prepare()) {
        painter_.Draw(figures, closed, true, state_, surface_, area_);
    }
}

void QtContext::Ellipse(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) {
    const Rect box{left, top, right, bottom};
    if (!CanShow(box)) return;
    round_.clear();
    RoundFigure(box).Outline(Seen(), round_);
    DrawRound(true);
}

void QtContext::ArcTo(const Rect& box, Point start, Point end) {
    round_.clear();
    round_.push_back(position_);
    RoundFigure(box).Arc(start, end, arcs_ == ArcDirection::Clockwise, Seen(), round_);
    position_ = round_.back();
    DrawRound(false);
}

void QtContext::Chord(const Rect& box, Point start, Point end) {
    if (!CanShow(box)) return;
    round_.clear();
    RoundFigure(box).Arc(start, end, arcs_ == ArcDirection::Clockwise, Seen(), round_);
    DrawRound(true);
}

void QtContext::DrawTextBytes(std::int32_t x, std::int32_t y, std::string_view text) {
    if (!Prepare()) return;
    const TextState look{font_, textColor_, state_.bkColor, state_.bkMode, static_cast<std::uint32_t>(align_)};
    TextPainter::OfThread().Draw(surface_, area_, look, x, y, text);
}

TextSize QtContext::TextExtent(std::string_view text) { return TextPainter::OfThread().Measure(font_, text); }

void QtContext::Polyline(const Point* pts, std::int32_t count) {
    if (pts == nullptr || count < 2) return;
    constexpr std::uint8_t kOpen = 0;
    const Figures figures{pts, &count, 1, &kOpen};
    if (path_.IsOpen()) {
        path_.Add(figures);
    } else if (Prepare()) {
        painter_.Draw(figures, false, true, state_, surface_, area_);
    }
}

void QtContext::PolyPolygon(const Point* pts, const std::int32_t* counts, std::int32_t ringCnt) {
    if (!AreDrawable(pts, counts, ringCnt)) return;
    const Figures figures{pts, counts, static_cast<std::size_t>(ringCnt), nullptr};
    if (path_.IsOpen()) {
        path_.Add(figures);
    } else if (Prepare()) {
        painter_.Draw(figures, true, true, state_, surface_, area_);
    }
}

void QtContext::DrawPath(bool fill, bool stroke, bool closeAll) {
    if (!path_.IsFinished()) return;
    Figures figures = path_.Gathered();
    if (closeAll) figures.closed = nullptr;
    if (Prepare()) painter_.Draw(figures, fill, stroke, state_, surface_, area_);
    path_.Drop();
}

void QtContext::SelectClipRgn(const Rect& region, RgnMode mode) {
    clip_.Select(region, mode, SurfaceRect());
    areaIsStale_ = true;
}

void QtContext::ExcludeClipRect(const Rect& rect) {
    clip_.Exclude(rect, SurfaceRect());
    areaIsStale_ = true;
}

std::optional<Rect> QtContext::ClipBox() const {
    const QRect box = clip_.On(SurfaceRect()).boundingRect();
    return Rect{box.x(), box.y(), box.x() + box.width(), box.y() + box.height()};
}

void QtContext::LayInk(const Box& box, const Ink& ink) {
    if (Prepare()) SpanPainter(surface_, area_, ink).FillRect(Within(area_.bounds, box));
}

void QtContext::FillRect(const Rect& rect, const Brush& brush) {
    LayInk(NormalizeBox(ToBox(rect)), BrushInk(brush, kCopyRule, state_.bkMode, state_.bkColor));
}

void QtContext::PatBlt(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, Rop3 rop) {
    if (ReadsSource(rop)) return;
    const BitRule rule = PatternRuleOf(rop);
    LayInk(BoxOf(x, y, width, height),
           ReadsPattern(rop) ? BrushInk(state_.brush, rule, state_.bkMode, state_.bkColor) : SolidInk(MakeMix(0, rule)));
}

void QtContext::BitBlt(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, DeviceContext& source,
                       std::int32_t sourceX, std::int32_t sourceY, Rop3 rop) {
    if (!ReadsSource(rop)) {
        PatBlt(x, y, width, height, rop);
        return;
    }
    const auto* const from = dynamic_cast<const QtContext*>(&source);
    if (from == nullptr || ReadsPattern(rop) || !Prepare()) return;
    BlitPixels(SourcePixels(*from), surface_, area_, BoxOf(x, y, width, height), std::int64_t{sourceX} - x,
               std::int64_t{sourceY} - y, SourceRuleOf(rop), scratch_);
    translated_ = {};
}

PixelSurface QtContext::SourcePixels(const QtContext& source) {
    const PixelSurface pixels = SurfaceToRead(source.image_);
    if (source.monochrome_ == monochrome_ || pixels.pixels == nullptr) return pixels;
    // Only pictures of symbols are translated, and each of them once in a frame, so the whole of it may be.
    translated_ = QImage(pixels.width_px, pixels.height_px, QImage::Format_RGB32);
    if (translated_.isNull()) return {};
    const Pixel black = ToPixel(0);
    const Pixel white = ToPixel(0xFFFFFF);
    const Pixel background = ToPixel(source.state_.bkColor);
    constexpr Pixel kColors = 0xFFFFFFu;
    for (std::int32_t y = 0; y < pixels.height_px; ++y) {
        const Pixel* const in = pixels.Row(y);
        auto* const out = reinterpret_cast<Pixel*>(translated_.scanLine(y));
        for (std::int32_t x = 0; x < pixels.width_px; ++x) {
            if (monochrome_) {
                out[x] = (in[x] & kColors) == (background & kColors) ? white : black;
            } else {
                out[x] = in[x] == black ? ToPixel(textColor_) : ToPixel(state_.bkColor);
            }
        }
    }
    return SurfaceToRead(&translated_);
}

void QtContext::StretchBlt(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, DeviceContext& source,
                           std::int32_t sourceX, std::int32_t sourceY, std::int32_t sourceWidth, std::int32_t sourceHeight,
                           Rop3 rop) {
    if (!ReadsSource(rop) || (width == sourceWidth && height == sourceHeight && width > 0 && height > 0)) {
        BitBlt(x, y, width, height, source, sourceX, sourceY, rop);
        return;
    }
    const auto* const from = dynamic_cast<const QtContext*>(&source);
    if (from == nullptr || ReadsPattern(rop) || from->image_ == image_ || !Prepare()) return;
    const StretchRuns runs{{x, width}, {y, height}, {sourceX, sourceWidth}, {sourceY, sourceHeight}};
    if (from->monochrome_ == monochrome_ && from->image_ != nullptr) {
        const QImage* const kept = stretched_.Get(*from->image_, SurfaceToRead(from->image_), runs, stretcher_);
        if (kept != nullptr) {
            const Box target = BoxOf(x, y, width, height);
            BlitPixels(SurfaceToRead(kept), surface_, area_, target, -target.left, -target.top, SourceRuleOf(rop), scratch_);
            return;
        }
    }
    stretcher_.Stretch(SourcePixels(*from), surface_, area_, runs, SourceRuleOf(rop));
    translated_ = {};
}

void QtContext::ScrollDC(std::int32_t dx, std::int32_t dy, const Rect& scroll, const Rect& clip) {
    if (!Prepare()) return;
    const Rect surface = surface_.Bounds();
    if (std::abs(std::int64_t{dx}) >= surface.right || std::abs(std::int64_t{dy}) >= surface.bottom) return;
    const QRegion allowed = clip_.On(surface).intersected(ToRegion(clip));
    const QRegion moved = allowed.intersected(ToRegion(scroll)).translated(dx, dy).intersected(allowed);
    ToClipArea(moved, scrollArea_);
    BlitPixels(surface_, surface_, scrollArea_, ToBox(surface), -std::int64_t{dx}, -std::int64_t{dy}, kCopyRule, scratch_);
}

}  // namespace orvane
