// Contexts and bitmaps on GDI: pixels, clip and paths are the system's.
//
// What the seam's values say once is said natively here: a pen, brush or font is made when it is first selected and kept. Texts
// go to the system as the bytes that they are, in a font of the Japanese character set, so that the code page of the process
// plays no part.
#pragma once

#include <windows.h>
// windows.h comes first
#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/bitmap_files.h"
#include "platform/device_context.h"
#include "platform/win32/gdi_objects.h"

namespace orvane {

/// A bitmap of the system: 32 bits a pixel in memory that can be read, or one bit a pixel.
class Win32Bitmap final : public Bitmap {
public:
    /// Black; null when its memory cannot be had or a side is below 1. One of colours has at most kMaxBitmapPixels pixels.
    static std::unique_ptr<Win32Bitmap> Colours(std::int32_t width_px, std::int32_t height_px);
    static std::unique_ptr<Win32Bitmap> Monochrome(std::int32_t width_px, std::int32_t height_px);
    static constexpr std::int64_t kMaxBitmapPixels = std::int64_t{1} << 28;

    HBITMAP Handle() const { return static_cast<HBITMAP>(handle_.get()); }
    /// The pixels of one of colours, the top row first, without padding, each 0x??RRGGBB; null for a monochrome one. Drawing may
    /// still wait in the system: GdiFlush() before reading.
    std::uint32_t* Pixels() { return pixels_; }
    std::int32_t Width_px() const override { return width_px_; }
    std::int32_t Height_px() const override { return height_px_; }

private:
    Win32Bitmap(GdiObject handle, std::uint32_t* pixels, std::int32_t width_px, std::int32_t height_px)
        : handle_(std::move(handle)), pixels_(pixels), width_px_(width_px), height_px_(height_px) {}

    GdiObject handle_;
    std::uint32_t* pixels_;
    std::int32_t width_px_;
    std::int32_t height_px_;
};

/// A device context of the system and what becomes of it in the end.
class DcHandle {
public:
    /// Somebody else's, of any kind: screen, printer, metafile. It must outlive this.
    static DcHandle Borrowed(HDC dc) { return {dc, Kind::Borrowed, nullptr}; }
    /// The client area's of a window, given back in the end.
    static DcHandle OfWindow(HWND window) { return {GetDC(window), Kind::OfWindow, window}; }
    /// A new one, deleted in the end.
    static DcHandle Own(HDC dc) { return {dc, Kind::Own, nullptr}; }
    DcHandle(DcHandle&& other) noexcept;
    DcHandle& operator=(DcHandle&&) = delete;
    DcHandle(const DcHandle&) = delete;
    DcHandle& operator=(const DcHandle&) = delete;
    ~DcHandle();

    HDC Get() const { return dc_; }
    bool IsBorrowed() const { return kind_ == Kind::Borrowed; }

private:
    enum class Kind { Borrowed, OfWindow, Own };

    DcHandle(HDC dc, Kind kind, HWND window) : dc_(dc), kind_(kind), window_(window) {}

    HDC dc_;
    Kind kind_;
    HWND window_;
};

/// What contexts made from one another share.
struct Win32Shared {
    GdiObjects objects;
    BitmapFiles pictures;

    explicit Win32Shared(Files& files) : pictures(files) {}
};

class Win32Context final : public DeviceContext {
public:
    /// Draws on `dc`; a null handle draws nothing and answers zeros. `shared` may be null: then nothing is shared, and no file
    /// can be loaded. A borrowed context keeps the state that it has, and that this leaves in it, but for pen, brush and font:
    /// those that were selected are selected again in the end.
    explicit Win32Context(DcHandle dc, std::shared_ptr<Win32Shared> shared = nullptr);
    /// A memory context with no bitmap, whose device is the screen.
    static std::unique_ptr<Win32Context> InMemory(std::shared_ptr<Win32Shared> shared = nullptr);
    ~Win32Context() override;

    HDC Handle() const { return dc_.Get(); }
    /// The bitmap drawn on; null for none and for a context that is no memory context.
    Win32Bitmap* Selected() const { return bitmap_; }

    std::int32_t GetDeviceCaps(DeviceCap index) const override;
    std::unique_ptr<DeviceContext> CreateCompatibleDC() override;
    /// 32 bits a pixel whatever the device has: a memory context without a bitmap, and a printer's, would give one bit.
    std::unique_ptr<Bitmap> CreateCompatibleBitmap(std::int32_t width_px, std::int32_t height_px) override;
    std::unique_ptr<Bitmap> CreateMonochromeBitmap(std::int32_t width_px, std::int32_t height_px) override;
    std::unique_ptr<Bitmap> CreatePixelBitmap(std::int32_t width_px, std::int32_t height_px, const Rgb* pixels) override;
    std::unique_ptr<Bitmap> LoadBitmapFile(std::string_view fileName) override;
    /// A bitmap of another back end, or on a context that is no memory context, changes nothing.
    void SelectBitmap(Bitmap* bitmap) override;

    // What the system refuses changes nothing.
    Pen SelectPen(const Pen& pen) override;
    Brush SelectBrush(const Brush& brush) override;
    Font SelectFont(const Font& font) override;
    Rop2 SetROP2(Rop2 mode) override;
    BkMode SetBkMode(BkMode mode) override;
    Rgb SetBkColor(Rgb color) override;
    Rgb SetTextColor(Rgb color) override;
    TextAlign SetTextAlign(TextAlign align) override;
    ArcDirection SetArcDirection(ArcDirection direction) override;

    // Lines and rings may reach as far as they like (see reach.h). All other coordinates are held within kReach_px, which shows
    // in round figures of a larger size only.
    void MoveToEx(std::int32_t x, std::int32_t y) override;
    void LineTo(std::int32_t x, std::int32_t y) override;
    /// Fewer than two points draw nothing.
    void Polyline(const Point* pts, std::int32_t count) override;
    /// A ring of fewer than two points makes the whole call draw nothing.
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
    TextSize TextExtent(std::string_view text) override;

    void SelectClipRgn(const Rect& region, RgnMode mode) override;
    void ExcludeClipRect(const Rect& rect) override;

    void FillRect(const Rect& rect, const Brush& brush) override;
    /// A mode that reads a source draws nothing.
    void PatBlt(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, Rop3 rop) override;
    /// A source of another back end draws nothing, but for a mode that reads no source.
    void BitBlt(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, DeviceContext& source,
                std::int32_t sourceX, std::int32_t sourceY, Rop3 rop) override;
    /// As BitBlt. Pixels that fall together are combined by AND.
    void StretchBlt(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, DeviceContext& source,
                    std::int32_t sourceX, std::int32_t sourceY, std::int32_t sourceWidth, std::int32_t sourceHeight,
                    Rop3 rop) override;
    void ScrollDC(std::int32_t dx, std::int32_t dy, const Rect& scroll, const Rect& clip) override;

private:
    /// A selected object: as the seam tells it, and natively. The native one is null while what was selected when this context
    /// came about still is.
    template <class Value>
    struct Slot {
        HGDIOBJ first = nullptr;
        Value firstValue;
        Value value;
        GdiObject native;
    };
    template <class Value>
    Value Select(Slot<Value>& slot, const Value& value, GdiObject (GdiObjects::*make)(const Value&));
    void SelectFirst();
    /// Where the system has the current position; the origin where it does not tell, as in an old metafile.
    Point SystemPosition() const;

    DcHandle dc_;
    std::shared_ptr<Win32Shared> shared_;
    std::shared_ptr<GdiObjects> objects_;
    Slot<Pen> pen_;
    Slot<Brush> brush_;
    Slot<Font> font_;
    HGDIOBJ firstBitmap_ = nullptr;
    Win32Bitmap* bitmap_ = nullptr;
    Point position_;  ///< where a line goes on, also out of the system's reach
};

/// The handle of a context of this back end as a 32-bit number, to cross the automation surface; 0 for any other context. Handles
/// of the system fit into 32 bits and are extended with their sign.
std::int32_t HandleOf(const DeviceContext& dc);
HDC FromHandle(std::int32_t handle);

/// From now on contexts of this back end are registered under their handles, and numbers that stand for no registered context are
/// taken for handles of the host's own contexts. May be called any number of times.
void UseSystemContexts();

}  // namespace orvane
