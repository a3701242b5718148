// A context for pages: paper and PDF, which take shapes as shapes and cannot be read.
//
// Every verb is drawn on a picture of the page as well. What a page can take as a shape (lines, areas, hatches, texts, all in the
// copying mode) goes there as one; for what it cannot (combining modes, blits, moved pixels) the pixels that the picture has
// there after the verb are placed as an image. So a page shows what the picture shows, whatever was drawn.
#pragma once

#include <QImage>
#include <QPainter>
#include <QRegion>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/qt/qt_context.h"

namespace orvane {

class PageContext final : public DeviceContext {
public:
    /// `page` has one unit for a pixel of `picture`, which has the size of the page and is white; both must outlive this.
    PageContext(QPainter& page, QImage& picture, const DeviceNumbers& numbers = {});
    /// Places what waits.
    ~PageContext() override;

    void SetBitmapFiles(std::shared_ptr<BitmapFiles> files) { raster_.SetBitmapFiles(std::move(files)); }
    /// Places what waits; the page is whole then.
    void Finish() { PlaceWaiting(); }
    /// How many images were placed so far because the page could not take a shape.
    std::int32_t PlacedImages() const { return placed_; }

    std::int32_t GetDeviceCaps(DeviceCap index) const override { return raster_.GetDeviceCaps(index); }
    std::unique_ptr<DeviceContext> CreateCompatibleDC() override { return raster_.CreateCompatibleDC(); }
    std::unique_ptr<Bitmap> CreateCompatibleBitmap(std::int32_t width_px, std::int32_t height_px) override {
        return raster_.CreateCompatibleBitmap(width_px, height_px);
    }
    std::unique_ptr<Bitmap> CreateMonochromeBitmap(std::int32_t width_px, std::int32_t height_px) override {
        return raster_.CreateMonochromeBitmap(width_px, height_px);
    }
    std::unique_ptr<Bitmap> CreatePixelBitmap(std::int32_t width_px, std::int32_t height_px, const Rgb* pixels) override {
        return raster_.CreatePixelBitmap(width_px, height_px, pixels);
    }
    std::unique_ptr<Bitmap> LoadBitmapFile(std::string_view fileName) override { return raster_.LoadBitmapFile(fileName); }
    /// A page has no bitmap that could be changed for another.
    void SelectBitmap(Bitmap*) override {}

    Pen SelectPen(const Pen& pen) override;
    Brush SelectBrush(const Brush& brush) override;
    Font SelectFont(const Font& font) override;
    Rop2 SetROP2(Rop2 mode) override;
    BkMode SetBkMode(BkMode mode) override;
    Rgb SetBkColor(Rgb color) override;
    Rgb SetTextColor(Rgb color) override;
    TextAlign SetTextAlign(TextAlign align) override;
    ArcDirection SetArcDirection(ArcDirection direction) override;

    void MoveToEx(std::int32_t x, std::int32_t y) override;
    void LineTo(std::int32_t x, std::int32_t y) override;
    void Polyline(const Point* pts, std::int32_t count) override;
    void PolyPolygon(const Point* pts, const std::int32_t* counts, std::int32_t ringCnt) override;
    void Polygon(const Point* pts, std::int32_t count) override { PolyPolygon(pts, &count, 1); }
    void Ellipse(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) override;
    void ArcTo(const Rect& box, Point start, Point end) override;
    void Chord(const Rect& box, Point start, Point end) override;
    void BeginPath() override;
    void EndPath() override;
    void FillPath() override;
    void StrokePath() override;
    void StrokeAndFillPath() override;
    void DrawTextBytes(std::int32_t x, std::int32_t y, std::string_view text) override;
    TextSize TextExtent(std::string_view text) override { return raster_.TextExtent(text); }
    void SelectClipRgn(const Rect& region, RgnMode mode) override;
    void ExcludeClipRect(const Rect& rect) override;
    void FillRect(const Rect& rect, const Brush& brush) override;
    void PatBlt(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, Rop3 rop) override;
    void BitBlt(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, DeviceContext& source,
                std::int32_t sourceX, std::int32_t sourceY, Rop3 rop) override;
    void StretchBlt(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, DeviceContext& source,
                    std::int32_t sourceX, std::int32_t sourceY, std::int32_t sourceWidth, std::int32_t sourceHeight,
                    Rop3 rop) override;
    void ScrollDC(std::int32_t dx, std::int32_t dy, const Rect& scroll, const Rect& clip) override;

private:
    struct Parts {
        bool fill;
        bool stroke;
    };

    Rect PageRect() const { return {0, 0, picture_.width(), picture_.height()}; }
    /// A figure's points to the page or to the path that is being gathered.
    void Draw(const Figures& figures, Parts parts, bool isPath);
    void DrawPath(Parts parts, bool closeAll);
    void Fill(const QPainterPath& path, const Brush& brush);
    void FillHatched(const QPainterPath& path, const Brush& brush);
    void Stroke(const QPainterPath& path);
    /// The page is about to get a shape: images that wait lie under it.
    void BeginShape();
    /// The pixels of a box are to be placed as they are.
    void Wait(const QRect& box);
    void PlaceWaiting();

    QPainter& page_;
    QImage& picture_;
    QtContext raster_;
    PaintState state_;
    Font font_;
    Rgb textColor_ = 0;
    TextAlign align_ = TextAlign::LeftTop;
    ArcDirection arcs_ = ArcDirection::CounterClockwise;
    Point position_;
    PathBracket path_;
    ClipRegion clip_;
    std::vector<Point> round_;
    std::optional<QRegion> clipped_;  ///< of the page, where one is set
    QRect waiting_;
    std::int32_t placed_ = 0;
};

}  // namespace orvane
