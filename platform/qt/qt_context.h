// Contexts and bitmaps over QImage. They need no display and no application object.
//
// The pixels of lines and areas are worked out here and not by QPainter, which draws other ones than the platform does: its areas
// lie half a pixel aside, its one-pixel lines are not the nearest pixels and leave out one end or the other by their direction,
// its dashes and hatches cannot have gaps in another colour under one combining mode, and far coordinates leave its range. It
// also takes two to five times as long. The image stays an ordinary one that a QPainter may draw on between two verbs.
#pragma once

#include <QImage>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/bitmap_files.h"
#include "platform/device_context.h"
#include "platform/device_numbers.h"
#include "platform/qt/clip_region.h"
#include "platform/qt/figure_painter.h"
#include "platform/qt/path_bracket.h"
#include "platform/qt/stretch.h"
#include "platform/qt/stretched_pictures.h"

namespace orvane {

/// Pixels in memory order blue, green, red and one byte that is always 0xFF.
class QtBitmap final : public Bitmap {
public:
    explicit QtBitmap(QImage image, bool monochrome = false) : image_(std::move(image)), monochrome_(monochrome) {}

    const QImage& Image() const { return image_; }
    QImage& Image() { return image_; }
    /// All its pixels are black or white, and blits between it and others go by their colours of text and background.
    bool IsMonochrome() const { return monochrome_; }
    std::int32_t Width_px() const override { return image_.width(); }
    std::int32_t Height_px() const override { return image_.height(); }

private:
    QImage image_;
    bool monochrome_;
};

class QtContext final : public DeviceContext {
public:
    /// The most pixels that a bitmap may have.
    static constexpr std::int64_t kMaxBitmapPixels = std::int64_t{1} << 28;

    /// A context with no bitmap.
    explicit QtContext(const DeviceNumbers& numbers = {}) : numbers_(numbers) {}
    /// Draws on somebody else's image, which must outlive the context or the next SelectBitmap. It is looked at anew with each
    /// verb, so that its owner may give it another size. On an image without 32 bits of colour nothing is drawn.
    explicit QtContext(QImage& image, const DeviceNumbers& numbers = {}) : numbers_(numbers), image_(&image) {}

    /// Where LoadBitmapFile finds its pictures; without it nothing can be loaded. Contexts made from this one from now on look
    /// there too.
    void SetBitmapFiles(std::shared_ptr<BitmapFiles> files) { bitmapFiles_ = std::move(files); }
    const std::shared_ptr<BitmapFiles>& Pictures() const { return bitmapFiles_; }

    /// The image drawn on, up to date; a null image when there is none. A copy of it does not change with later verbs.
    const QImage& Image() const;
    /// Writes the image as PNG, its name in the system's own bytes; false when there is none or it could not be written.
    bool SavePng(const std::string& fileName) const;

    std::int32_t GetDeviceCaps(DeviceCap index) const override { return numbers_.Get(index); }
    std::unique_ptr<DeviceContext> CreateCompatibleDC() override;
    std::unique_ptr<Bitmap> CreateCompatibleBitmap(std::int32_t width_px, std::int32_t height_px) override;
    std::unique_ptr<Bitmap> CreateMonochromeBitmap(std::int32_t width_px, std::int32_t height_px) override;
    std::unique_ptr<Bitmap> CreatePixelBitmap(std::int32_t width_px, std::int32_t height_px, const Rgb* pixels) override;
    std::unique_ptr<Bitmap> LoadBitmapFile(std::string_view fileName) override;
    /// A bitmap of another back end changes nothing.
    void SelectBitmap(Bitmap* bitmap) override;

    Pen SelectPen(const Pen& pen) override;
    Brush SelectBrush(const Brush& brush) override;
    Font SelectFont(const Font& font) override;
    /// A mode that the platform does not have changes nothing, here and in SetBkMode.
    Rop2 SetROP2(Rop2 mode) override;
    BkMode SetBkMode(BkMode mode) override;
    Rgb SetBkColor(Rgb color) override;
    Rgb SetTextColor(Rgb color) override;
    TextAlign SetTextAlign(TextAlign align) override;
    ArcDirection SetArcDirection(ArcDirection direction) override;

    void MoveToEx(std::int32_t x, std::int32_t y) override { position_ = {x, y}; }
    void LineTo(std::int32_t x, std::int32_t y) override;

    /// Fewer than two points draw nothing.
    void Polyline(const Point* pts, std::int32_t count) override;
    /// Outside a path the rings are filled with the brush and outlined with the pen. A ring of fewer than two points makes the
    /// whole call draw nothing.
    void PolyPolygon(const Point* pts, const std::int32_t* counts, std::int32_t ringCnt) override;

    /// A ring as PolyPolygon draws it.
    void Polygon(const Point* pts, std::int32_t count) override { PolyPolygon(pts, &count, 1); }
    void Ellipse(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) override;
    void ArcTo(const Rect& box, Point start, Point end) override;
    /// Outside a path it is filled and outlined.
    void Chord(const Rect& box, Point start, Point end) override;

    void DrawTextBytes(std::int32_t x, std::int32_t y, std::string_view text) override;
    TextSize TextExtent(std::string_view text) override;

    /// Drops a path that is there. The three verbs that draw do nothing while a path is being gathered, and leave it.
    void BeginPath() override { path_.Begin(); }
    void EndPath() override { path_.End(); }
    void FillPath() override { DrawPath(true, false, false); }
    void StrokePath() override { DrawPath(false, true, false); }
    void StrokeAndFillPath() override { DrawPath(true, true, true); }

    /// With no clip the current one is the whole surface. Corners may stand in any order.
    void SelectClipRgn(const Rect& region, RgnMode mode) override;
    void ExcludeClipRect(const Rect& rect) override;
    std::optional<Rect> ClipBox() const override;

    // Rectangles with corners in another order, and widths and heights below 0, cover what lies between their edges.
    void FillRect(const Rect& rect, const Brush& brush) override;
    /// A mode that reads a source draws nothing.
    void PatBlt(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, Rop3 rop) override;
    /// A source of another back end draws nothing, but for a mode that reads no source; nor does a mode that reads the source and
    /// the brush.
    void BitBlt(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, DeviceContext& source,
                std::int32_t sourceX, std::int32_t sourceY, Rop3 rop) override;
    /// As BitBlt; pixels that fall together are combined by AND. A context cannot be stretched onto its own bitmap.
    void StretchBlt(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, DeviceContext& source,
                    std::int32_t sourceX, std::int32_t sourceY, std::int32_t sourceWidth, std::int32_t sourceHeight,
                    Rop3 rop) override;
    void ScrollDC(std::int32_t dx, std::int32_t dy, const Rect& scroll, const Rect& clip) override;

private:
    /// Brings surface_ and area_ up to date; false when no pixel can be drawn on.
    bool Prepare();
    Rect SurfaceRect() const;
    void DrawPath(bool fill, bool stroke, bool closeAll);
    void LayInk(const Box& box, const Ink& ink);
    /// Where a line through a point can reach the surface.
    Box Seen() const;
    /// Whether any pixel of a round figure with its outline can be on the surface.
    bool CanShow(const Rect& box) const;
    void DrawRound(bool closed);
    /// The pixels of `source` as a blit onto this context sees them: between one bit a pixel and colours, each takes the other's
    /// kind by the two colours of text and background.
    PixelSurface SourcePixels(const QtContext& source);

    DeviceNumbers numbers_;
    QImage* image_ = nullptr;
    bool monochrome_ = false;
    std::shared_ptr<BitmapFiles> bitmapFiles_;
    PaintState state_;
    Font font_;
    Rgb textColor_ = 0;
    TextAlign align_ = TextAlign::LeftTop;
    ArcDirection arcs_ = ArcDirection::CounterClockwise;
    Point position_;
    PathBracket path_;
    ClipRegion clip_;

    FigurePainter painter_;
    PixelSurface surface_;
    ClipArea area_;  ///< the clip on the surface
    bool areaIsStale_ = true;
    std::vector<Pixel> scratch_;
    ClipArea scrollArea_;
    std::vector<Point> round_;
    Stretcher stretcher_;
    StretchedPictures stretched_;
    QImage translated_;  ///< a monochrome source in colours, or the other way
};

}  // namespace orvane
