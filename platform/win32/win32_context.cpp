#include "platform/win32/win32_context.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "platform/context_registry.h"
#include "platform/cp932.h"
#include "platform/win32/reach.h"
#include "platform/win32/wide.h"
#include "platform/win32/win32_files.h"

namespace orvane {

namespace {

// The system refuses longer texts.
constexpr std::size_t kLongestText_bytes = 8192;

// Same layout: the points of the seam go to the system without a copy.
static_assert(sizeof(Point) == sizeof(POINT) && offsetof(Point, y) == offsetof(POINT, y));
const POINT* PointsOf(const Point* pts) { return reinterpret_cast<const POINT*>(pts); }

RECT RectOf(const Rect& r) { return {Near(r.left), Near(r.top), Near(r.right), Near(r.bottom)}; }

std::uint32_t PixelOf(Rgb color) { return (color & 0xFF) << 16 | (color & 0xFF00) | (color >> 16 & 0xFF); }

bool AreDrawable(const Point* pts, const std::int32_t* counts, std::int32_t ringCnt) {
    if (pts == nullptr || counts == nullptr || ringCnt < 1) return false;
    std::int64_t total = 0;
    for (std::int32_t i = 0; i < ringCnt; ++i) {
        if (counts[i] < 2) return false;
        total += counts[i];
    }
    return total <= (std::numeric_limits<std::int32_t>::max)();
}

/// Whether a raster operation reads its source: its result changes with the source's bit.
bool ReadsSource(Rop3 rop) {
    const auto table = static_cast<std::uint32_t>(rop) >> 16 & 0xFF;
    return ((table >> 2) & 0x33) != (table & 0x33);
}

// What was selected when a context came about, as the seam's value. One that cannot be told so has a value that nobody makes: it
// comes back as itself, and is taken for nothing else.
Pen UntoldPen() {
    Pen pen;
    pen.dashCnt = Pen::kMaxDashes + 1;
    return pen;
}

Brush UntoldBrush() { return CreateHatchBrush(static_cast<Hatch>(0xFF), 0); }

Font UntoldFont() {
    Font font;
    font.weight = -1;
    return font;
}

Pen ValueOfPen(HGDIOBJ object) {
    LOGPEN told{};
    // A context's own colour goes with the one stock pen, and the one stock brush, whatever these tell of themselves.
    if (object == GetStockObject(DC_PEN) || GetObjectType(object) != OBJ_PEN) return UntoldPen();
    if (GetObjectW(object, sizeof told, &told) != sizeof told) return UntoldPen();
    return CreatePen(static_cast<PenStyle>(told.lopnStyle), told.lopnWidth.x, told.lopnColor);
}

Brush ValueOfBrush(HGDIOBJ object) {
    LOGBRUSH told{};
    if (object == GetStockObject(DC_BRUSH) || GetObjectW(object, sizeof told, &told) != sizeof told) return UntoldBrush();
    if (told.lbStyle == BS_NULL) return NullBrush();
    if (told.lbStyle == BS_HATCHED) return CreateHatchBrush(static_cast<Hatch>(told.lbHatch), told.lbColor);
    return told.lbStyle == BS_SOLID ? CreateSolidBrush(told.lbColor) : UntoldBrush();
}

Font ValueOfFont(HGDIOBJ object) {
    LOGFONTW told{};
    if (GetObjectW(object, sizeof told, &told) != sizeof told) return UntoldFont();
    Font font;
    font.height_px = told.lfHeight;
    font.width_px = told.lfWidth;
    font.escapement_tenths = told.lfEscapement;
    font.orientation_tenths = told.lfOrientation;
    font.weight = told.lfWeight;
    font.italic = told.lfItalic != 0;
    font.underline = told.lfUnderline != 0;
    font.strikeOut = told.lfStrikeOut != 0;
    font.charSet = told.lfCharSet;
    const auto utf8 = Utf8FromWide(told.lfFaceName);
    const auto face = utf8 ? EncodeCp932(*utf8) : std::nullopt;
    if (!face) return UntoldFont();
    font.faceName = FaceName(*face);
    return font;
}

}  // namespace

std::unique_ptr<Win32Bitmap> Win32Bitmap::Colours(std::int32_t width_px, std::int32_t height_px) {
    if (width_px < 1 || height_px < 1 || std::int64_t{width_px} * height_px > kMaxBitmapPixels) return nullptr;
    BITMAPINFO wanted{};
    wanted.bmiHeader.biSize = sizeof wanted.bmiHeader;
    wanted.bmiHeader.biWidth = width_px;
    wanted.bmiHeader.biHeight = -height_px;  // the top row first
    wanted.bmiHeader.biPlanes = 1;
    wanted.bmiHeader.biBitCount = 32;
    void* pixels = nullptr;
    GdiObject made = OwnGdiObject(CreateDIBSection(nullptr, &wanted, DIB_RGB_COLORS, &pixels, nullptr, 0));
    if (made == nullptr) return nullptr;
    return std::unique_ptr<Win32Bitmap>(
        new Win32Bitmap(std::move(made), static_cast<std::uint32_t*>(pixels), width_px, height_px));
}

std::unique_ptr<Win32Bitmap> Win32Bitmap::Monochrome(std::int32_t width_px, std::int32_t height_px) {
    if (width_px < 1 || height_px < 1 || std::int64_t{width_px} * height_px > kMaxBitmapPixels) return nullptr;
    // Without pixels to start with, a new bitmap may hold any.
    const std::size_t row_bytes = (static_cast<std::size_t>(width_px) + 15) / 16 * 2;
    const std::vector<std::uint8_t> black(row_bytes * static_cast<std::size_t>(height_px));
    GdiObject made = OwnGdiObject(CreateBitmap(width_px, height_px, 1, 1, black.data()));
    if (made == nullptr) return nullptr;
    return std::unique_ptr<Win32Bitmap>(new Win32Bitmap(std::move(made), nullptr, width_px, height_px));
}

DcHandle::DcHandle(DcHandle&& other) noexcept
    : dc_(std::exchange(other.dc_, nullptr)), kind_(other.kind_), window_(other.window_) {}

DcHandle::~DcHandle() {
    if (dc_ == nullptr) return;
    if (kind_ == Kind::OfWindow) ReleaseDC(window_, dc_);
    if (kind_ == Kind::Own) DeleteDC(dc_);
}

Win32Context::Win32Context(DcHandle dc, std::shared_ptr<Win32Shared> shared) : dc_(std::move(dc)), shared_(std::move(shared)) {
    objects_ = shared_ != nullptr ? std::shared_ptr<GdiObjects>(shared_, &shared_->objects) : std::make_shared<GdiObjects>();
    pen_.first = GetCurrentObject(Handle(), OBJ_PEN);
    brush_.first = GetCurrentObject(Handle(), OBJ_BRUSH);
    font_.first = GetCurrentObject(Handle(), OBJ_FONT);
    if (!dc_.IsBorrowed()) return;
    pen_.value = pen_.firstValue = ValueOfPen(pen_.first);
    brush_.value = brush_.firstValue = ValueOfBrush(brush_.first);
    font_.value = font_.firstValue = ValueOfFont(font_.first);
    position_ = SystemPosition();
}

std::unique_ptr<Win32Context> Win32Context::InMemory(std::shared_ptr<Win32Shared> shared) {
    return std::make_unique<Win32Context>(DcHandle::Own(::CreateCompatibleDC(nullptr)), std::move(shared));
}

Win32Context::~Win32Context() {
    SelectFirst();
    if (bitmap_ != nullptr) SelectObject(Handle(), firstBitmap_);
}

/// The context may live on without us, and its objects must not.
void Win32Context::SelectFirst() {
    if (pen_.native != nullptr) SelectObject(Handle(), pen_.first);
    if (brush_.native != nullptr) SelectObject(Handle(), brush_.first);
    if (font_.native != nullptr) SelectObject(Handle(), font_.first);
}

std::int32_t Win32Context::GetDeviceCaps(DeviceCap index) const { return ::GetDeviceCaps(Handle(), static_cast<int>(index)); }

std::unique_ptr<DeviceContext> Win32Context::CreateCompatibleDC() {
    HDC made = ::CreateCompatibleDC(Handle());
    if (made == nullptr) made = ::CreateCompatibleDC(nullptr);  // of a metafile there is none
    return std::make_unique<Win32Context>(DcHandle::Own(made), shared_);
}

std::unique_ptr<Bitmap> Win32Context::CreateCompatibleBitmap(std::int32_t width_px, std::int32_t height_px) {
    return Win32Bitmap::Colours(width_px, height_px);
}

std::unique_ptr<Bitmap> Win32Context::CreateMonochromeBitmap(std::int32_t width_px, std::int32_t height_px) {
    return Win32Bitmap::Monochrome(width_px, height_px);
}

std::unique_ptr<Bitmap> Win32Context::CreatePixelBitmap(std::int32_t width_px, std::int32_t height_px, const Rgb* pixels) {
    auto made = pixels != nullptr ? Win32Bitmap::Colours(width_px, height_px) : nullptr;
    if (made == nullptr) return nullptr;
    const auto count = static_cast<std::size_t>(width_px) * static_cast<std::size_t>(height_px);
    std::transform(pixels, pixels + count, made->Pixels(), PixelOf);
    return made;
}

std::unique_ptr<Bitmap> Win32Context::LoadBitmapFile(std::string_view fileName) {
    const std::shared_ptr<const FilePixels> file = shared_ != nullptr ? shared_->pictures.Load(fileName) : nullptr;
    return file != nullptr ? CreatePixelBitmap(file->width_px, file->height_px, file->pixels.data()) : nullptr;
}

void Win32Context::SelectBitmap(Bitmap* bitmap) {
    auto* const own = dynamic_cast<Win32Bitmap*>(bitmap);
    if ((bitmap != nullptr && own == nullptr) || own == bitmap_) return;
    const HGDIOBJ wanted = own != nullptr ? static_cast<HGDIOBJ>(own->Handle()) : firstBitmap_;
    const HGDIOBJ before = SelectObject(Handle(), wanted);
    if (before == nullptr) return;
    if (bitmap_ == nullptr) firstBitmap_ = before;
    bitmap_ = own;
}

template <class Value>
Value Win32Context::Select(Slot<Value>& slot, const Value& value, GdiObject (GdiObjects::*make)(const Value&)) {
    if (value == slot.value) {
        // A host that draws on the same context may have left another one selected.
        SelectObject(Handle(), slot.native != nullptr ? slot.native.get() : slot.first);
        return value;
    }
    GdiObject native = value == slot.firstValue ? nullptr : ((*objects_).*make)(value);
    if (native == nullptr && value != slot.firstValue) return slot.value;
    if (SelectObject(Handle(), native != nullptr ? native.get() : slot.first) == nullptr) return slot.value;
    slot.native = std::move(native);
    return std::exchange(slot.value, value);
}

Pen Win32Context::SelectPen(const Pen& pen) { return pen.empty ? pen_.value : Select(pen_, pen, &GdiObjects::PenOf); }

Brush Win32Context::SelectBrush(const Brush& brush) { return Select(brush_, brush, &GdiObjects::BrushOf); }

Font Win32Context::SelectFont(const Font& font) { return Select(font_, font, &GdiObjects::FontOf); }

Rop2 Win32Context::SetROP2(Rop2 mode) {
    const bool known = mode >= Rop2::Black && mode <= Rop2::White;
    const int before = known ? ::SetROP2(Handle(), static_cast<int>(mode)) : GetROP2(Handle());
    return before == 0 ? Rop2::CopyPen : static_cast<Rop2>(before);
}

BkMode Win32Context::SetBkMode(BkMode mode) {
    const bool known = mode == BkMode::Transparent || mode == BkMode::Opaque;
    const int before = known ? ::SetBkMode(Handle(), static_cast<int>(mode)) : GetBkMode(Handle());
    return before == 0 ? BkMode::Opaque : static_cast<BkMode>(before);
}

Rgb Win32Context::SetBkColor(Rgb color) {
    const COLORREF before = ::SetBkColor(Handle(), color & 0xFFFFFF);
    return before == CLR_INVALID ? 0xFFFFFF : before;
}

Rgb Win32Context::SetTextColor(Rgb color) {
    const COLORREF before = ::SetTextColor(Handle(), color & 0xFFFFFF);
    return before == CLR_INVALID ? 0 : before;
}

TextAlign Win32Context::SetTextAlign(TextAlign align) {
    const UINT before = ::SetTextAlign(Handle(), static_cast<UINT>(align));
    return before == GDI_ERROR ? TextAlign::LeftTop : static_cast<TextAlign>(before);
}

ArcDirection Win32Context::SetArcDirection(ArcDirection direction) {
    const int before = ::SetArcDirection(Handle(), static_cast<int>(direction));
    return before == 0 ? ArcDirection::CounterClockwise : static_cast<ArcDirection>(before);
}

Point Win32Context::SystemPosition() const {
    POINT at{};
    GetCurrentPositionEx(Handle(), &at);
    return {static_cast<std::int32_t>(at.x), static_cast<std::int32_t>(at.y)};
}

void Win32Context::MoveToEx(std::int32_t x, std::int32_t y) {
    position_ = {x, y};
    ::MoveToEx(Handle(), Near(x), Near(y), nullptr);
}

void Win32Context::LineTo(std::int32_t x, std::int32_t y) {
    const Point line[] = {position_, {x, y}};
    if (IsInReach(line, 2)) {
        ::LineTo(Handle(), x, y);
        position_ = {x, y};
        return;
    }
    Polyline(line, 2);
    MoveToEx(x, y);
}

void Win32Context::Polyline(const Point* pts, std::int32_t count) {
    if (pts == nullptr || count < 2) return;
    if (IsInReach(pts, count)) {
        ::Polyline(Handle(), PointsOf(pts), count);
        return;
    }
    std::vector<POINT> parts;
    std::vector<DWORD> counts;
    CutLine(pts, count, parts, counts);
    if (!counts.empty()) ::PolyPolyline(Handle(), parts.data(), counts.data(), static_cast<DWORD>(counts.size()));
}

void Win32Context::PolyPolygon(const Point* pts, const std::int32_t* counts, std::int32_t ringCnt) {
    if (!AreDrawable(pts, counts, ringCnt)) return;
    std::vector<int> ringCounts(counts, counts + ringCnt);
    std::int64_t total = 0;
    for (const int count : ringCounts) total += count;
    if (IsInReach(pts, total)) {
        ::PolyPolygon(Handle(), PointsOf(pts), ringCounts.data(), ringCnt);
        return;
    }
    std::vector<POINT> rings;
    for (int& count : ringCounts) {
        const Point* const ring = pts;
        pts += count;
        count = CutRing(ring, count, rings);
    }
    std::erase(ringCounts, 0);
    if (!ringCounts.empty()) ::PolyPolygon(Handle(), rings.data(), ringCounts.data(), static_cast<int>(ringCounts.size()));
}

void Win32Context::Polygon(const Point* pts, std::int32_t count) { PolyPolygon(pts, &count, 1); }

void Win32Context::Ellipse(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) {
    ::Ellipse(Handle(), Near(left), Near(top), Near(right), Near(bottom));
}

void Win32Context::ArcTo(const Rect& box, Point start, Point end) {
    const RECT r = RectOf(box);
    ::ArcTo(Handle(), r.left, r.top, r.right, r.bottom, Near(start.x), Near(start.y), Near(end.x), Near(end.y));
    position_ = SystemPosition();
}

void Win32Context::Chord(const Rect& box, Point start, Point end) {
    const RECT r = RectOf(box);
    ::Chord(Handle(), r.left, r.top, r.right, r.bottom, Near(start.x), Near(start.y), Near(end.x), Near(end.y));
}

void Win32Context::BeginPath() { ::BeginPath(Handle()); }

void Win32Context::EndPath() { ::EndPath(Handle()); }

void Win32Context::FillPath() { ::FillPath(Handle()); }

void Win32Context::StrokePath() { ::StrokePath(Handle()); }

void Win32Context::StrokeAndFillPath() { ::StrokeAndFillPath(Handle()); }

void Win32Context::DrawTextBytes(std::int32_t x, std::int32_t y, std::string_view text) {
    const std::string_view drawn = CutCp932(text, kLongestText_bytes);
    if (!drawn.empty()) TextOutA(Handle(), Near(x), Near(y), drawn.data(), static_cast<int>(drawn.size()));
}

TextSize Win32Context::TextExtent(std::string_view text) {
    const std::string_view measured = CutCp932(text, kLongestText_bytes);
    SIZE size{};
    if (!GetTextExtentPoint32A(Handle(), measured.data(), static_cast<int>(measured.size()), &size)) return {};
    return {static_cast<std::int32_t>(size.cx), static_cast<std::int32_t>(size.cy)};
}

void Win32Context::SelectClipRgn(const Rect& region, RgnMode mode) {
    const RECT r = RectOf(region);
    const GdiObject native = OwnGdiObject(CreateRectRgnIndirect(&r));
    if (native != nullptr) ExtSelectClipRgn(Handle(), static_cast<HRGN>(native.get()), static_cast<int>(mode));
}

void Win32Context::ExcludeClipRect(const Rect& rect) {
    const RECT r = RectOf(rect);
    ::ExcludeClipRect(Handle(), r.left, r.top, r.right, r.bottom);
}

void Win32Context::FillRect(const Rect& rect, const Brush& brush) {
    const GdiObject native = objects_->BrushOf(brush);
    const RECT r = RectOf(rect);
    if (native != nullptr) ::FillRect(Handle(), &r, static_cast<HBRUSH>(native.get()));
}

void Win32Context::PatBlt(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, Rop3 rop) {
    if (!ReadsSource(rop)) ::PatBlt(Handle(), Near(x), Near(y), Near(width), Near(height), static_cast<DWORD>(rop));
}

void Win32Context::BitBlt(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, DeviceContext& source,
                          std::int32_t sourceX, std::int32_t sourceY, Rop3 rop) {
    if (!ReadsSource(rop)) {
        PatBlt(x, y, width, height, rop);
        return;
    }
    const auto* const from = dynamic_cast<const Win32Context*>(&source);
    if (from == nullptr) return;
    ::BitBlt(Handle(), Near(x), Near(y), Near(width), Near(height), from->Handle(), Near(sourceX), Near(sourceY),
             static_cast<DWORD>(rop));
}

void Win32Context::StretchBlt(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, DeviceContext& source,
                              std::int32_t sourceX, std::int32_t sourceY, std::int32_t sourceWidth, std::int32_t sourceHeight,
                              Rop3 rop) {
    if (!ReadsSource(rop)) {
        PatBlt(x, y, width, height, rop);
        return;
    }
    const auto* const from = dynamic_cast<const Win32Context*>(&source);
    if (from == nullptr) return;
    ::StretchBlt(Handle(), Near(x), Near(y), Near(width), Near(height), from->Handle(), Near(sourceX), Near(sourceY),
                 Near(sourceWidth), Near(sourceHeight), static_cast<DWORD>(rop));
}

void Win32Context::ScrollDC(std::int32_t dx, std::int32_t dy, const Rect& scroll, const Rect& clip) {
    const RECT moved = RectOf(scroll);
    const RECT within = RectOf(clip);
    ::ScrollDC(Handle(), Near(dx), Near(dy), &moved, &within, nullptr, nullptr);
}

HDC FromHandle(std::int32_t handle) { return reinterpret_cast<HDC>(static_cast<LONG_PTR>(handle)); }

std::int32_t HandleOf(const DeviceContext& dc) {
    const auto* const own = dynamic_cast<const Win32Context*>(&dc);
    return own == nullptr ? 0 : static_cast<std::int32_t>(reinterpret_cast<LONG_PTR>(own->Handle()));
}

namespace {

bool IsContext(HDC dc) {
    const DWORD type = GetObjectType(dc);
    return type == OBJ_DC || type == OBJ_MEMDC || type == OBJ_METADC || type == OBJ_ENHMETADC;
}

class Win32Handles final : public SystemContexts {
public:
    std::int32_t NumberOf(const DeviceContext& dc) override { return HandleOf(dc); }
    std::unique_ptr<DeviceContext> Open(std::int32_t number) override {
        const HDC dc = FromHandle(number);
        if (!IsContext(dc)) return nullptr;
        return std::make_unique<Win32Context>(DcHandle::Borrowed(dc), std::make_shared<Win32Shared>(files_));
    }

private:
    Win32Files files_;
};

}  // namespace

void UseSystemContexts() {
    // Never destroyed, as the registry that asks it.
    static Win32Handles& handles = *new Win32Handles;
    SetSystemContexts(&handles);
}

}  // namespace orvane
