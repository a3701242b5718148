// The recording back end: a context that writes every verb with its values into a list, and performs it on a second context
// where it has one.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/device_context.h"
#include "platform/device_numbers.h"
#include "platform/record/verb_list.h"

namespace orvane {

class RecordBitmap : public Bitmap {
public:
    RecordBitmap(std::int32_t number, std::int32_t width_px, std::int32_t height_px, std::unique_ptr<Bitmap> inner)
        : number_(number), width_px_(width_px), height_px_(height_px), inner_(std::move(inner)) {}
    std::int32_t Number() const { return number_; }
    /// The bitmap of the performing back end; null where nothing is performed.
    Bitmap* Inner() const { return inner_.get(); }
    std::int32_t Width_px() const override { return width_px_; }
    std::int32_t Height_px() const override { return height_px_; }

private:
    std::int32_t number_;
    std::int32_t width_px_;
    std::int32_t height_px_;
    std::unique_ptr<Bitmap> inner_;
};

/// Answers the state that was set and the numbers of the device by itself; with a performing context its device numbers are
/// that one's, until others are set. Contexts and bitmaps that it makes record into the same list.
class RecordContext : public DeviceContext {
public:
    /// A null list writes nothing: such a context serves where verbs need only somewhere to go.
    explicit RecordContext(std::shared_ptr<VerbList> list, std::string label = "");
    /// Performs every verb on `inner` as well and owns it.
    RecordContext(std::shared_ptr<VerbList> list, std::unique_ptr<DeviceContext> inner, std::string label = "");
    /// The same on a context that someone else owns and that must live longer.
    RecordContext(std::shared_ptr<VerbList> list, DeviceContext& inner, std::string label = "");
    ~RecordContext() override;

    std::int32_t Number() const { return number_; }
    const std::shared_ptr<VerbList>& List() const { return list_; }
    DeviceContext* Inner() const { return inner_; }
    void SetLabel(std::string label);
    /// Tells the size in pixels of an image file where nothing is performed; a side below 1 is a file that cannot be loaded, and
    /// so is every file without it. Contexts made from this one from now on have it too.
    using ImageSizeOf = std::function<TextSize(std::string_view fileName)>;
    void SetImageSizes(ImageSizeOf sizeOf) { imageSizeOf_ = std::move(sizeOf); }
    /// Contexts made from this one from now on have these numbers too.
    void SetDeviceNumbers(const DeviceNumbers& numbers) { numbers_ = numbers; }

    std::int32_t GetDeviceCaps(DeviceCap index) const override;
    std::unique_ptr<DeviceContext> CreateCompatibleDC() override;
    std::unique_ptr<Bitmap> CreateCompatibleBitmap(std::int32_t width_px, std::int32_t height_px) override;
    std::unique_ptr<Bitmap> CreateMonochromeBitmap(std::int32_t width_px, std::int32_t height_px) override;
    std::unique_ptr<Bitmap> CreatePixelBitmap(std::int32_t width_px, std::int32_t height_px, const Rgb* pixels) override;
    /// Where nothing is performed, a file has the size that the function of SetImageSizes tells.
    std::unique_ptr<Bitmap> LoadBitmapFile(std::string_view fileName) override;
    void SelectBitmap(Bitmap* bitmap) override;
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
    void Polygon(const Point* pts, std::int32_t count) override;
    void Ellipse(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) override;
    void ArcTo(const Rect& box, Point start, Point end) override;
    void Chord(const Rect& box, Point start, Point end) override;
    void BeginPath() override;
    void EndPath() override;
    void FillPath() override;
    void StrokePath() override;
    void StrokeAndFillPath() override;
    void DrawTextBytes(std::int32_t x, std::int32_t y, std::string_view text) override;
    /// Where nothing is performed, a byte is half an em wide and a line one em high, so that no test hangs on a font.
    TextSize TextExtent(std::string_view text) override;
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
    template <class... Values>
    void Write(Verb verb, const Values&... values) {
        if (list_ != nullptr) list_->Add(ContextNumber{number_}, verb, values...);
    }
    std::int32_t NumberOf(const DeviceContext& other) const;
    DeviceContext* PixelsOf(DeviceContext& source) const;

    std::shared_ptr<VerbList> list_;
    std::unique_ptr<DeviceContext> owned_;
    DeviceContext* inner_ = nullptr;
    std::int32_t number_ = 0;
    std::optional<DeviceNumbers> numbers_;

    Pen pen_;
    Brush brush_;
    Font font_;
    Rop2 rop2_ = Rop2::CopyPen;
    BkMode bkMode_ = BkMode::Opaque;
    Rgb bkColor_ = 0xFFFFFF;
    Rgb textColor_ = 0;
    TextAlign align_ = TextAlign::LeftTop;
    ArcDirection arcs_ = ArcDirection::CounterClockwise;
    ImageSizeOf imageSizeOf_;
};

}  // namespace orvane
