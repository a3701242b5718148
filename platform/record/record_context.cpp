#include "platform/record/record_context.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <utility>

namespace orvane {

namespace {

// How many points the rings have in all; a count below 1 has none.
std::int64_t PointCnt(const std::int32_t* counts, std::int32_t ringCnt) {
    std::int64_t total = 0;
    for (std::int32_t i = 0; counts != nullptr && i < ringCnt; ++i) total += counts[i] > 0 ? counts[i] : 0;
    return total;
}

}  // namespace

RecordContext::RecordContext(std::shared_ptr<VerbList> list, std::string label) : list_(std::move(list)) {
    if (list_ == nullptr) return;
    number_ = list_->NewContextNumber();
    SetLabel(std::move(label));
}

RecordContext::RecordContext(std::shared_ptr<VerbList> list, std::unique_ptr<DeviceContext> inner, std::string label)
    : RecordContext(std::move(list), std::move(label)) {
    owned_ = std::move(inner);
    inner_ = owned_.get();
}

RecordContext::RecordContext(std::shared_ptr<VerbList> list, DeviceContext& inner, std::string label)
    : RecordContext(std::move(list), std::move(label)) {
    inner_ = &inner;
}

RecordContext::~RecordContext() {
    if (list_ != nullptr) list_->RetireContext(number_);
}

void RecordContext::SetLabel(std::string label) {
    if (list_ != nullptr) list_->SetLabel(number_, std::move(label));
}

std::int32_t RecordContext::GetDeviceCaps(DeviceCap index) const {
    if (!numbers_ && inner_ != nullptr) return inner_->GetDeviceCaps(index);
    return numbers_.value_or(DeviceNumbers{}).Get(index);
}

std::unique_ptr<DeviceContext> RecordContext::CreateCompatibleDC() {
    auto made = inner_ != nullptr ? std::make_unique<RecordContext>(list_, inner_->CreateCompatibleDC())
                                  : std::make_unique<RecordContext>(list_);
    made->numbers_ = numbers_;
    made->imageSizeOf_ = imageSizeOf_;
    Write(Verb::CreateCompatibleDC, ContextNumber{made->number_});
    return made;
}

std::unique_ptr<Bitmap> RecordContext::CreateCompatibleBitmap(std::int32_t width_px, std::int32_t height_px) {
    std::unique_ptr<Bitmap> inner = inner_ != nullptr ? inner_->CreateCompatibleBitmap(width_px, height_px) : nullptr;
    const bool made = inner_ != nullptr ? inner != nullptr : width_px >= 1 && height_px >= 1;
    const std::int32_t number = made && list_ != nullptr ? list_->NewBitmapNumber() : 0;
    Write(Verb::CreateCompatibleBitmap, width_px, height_px, BitmapNumber{number});
    if (!made) return nullptr;
    return std::make_unique<RecordBitmap>(number, width_px, height_px, std::move(inner));
}

std::unique_ptr<Bitmap> RecordContext::CreateMonochromeBitmap(std::int32_t width_px, std::int32_t height_px) {
    std::unique_ptr<Bitmap> inner = inner_ != nullptr ? inner_->CreateMonochromeBitmap(width_px, height_px) : nullptr;
    const bool made = inner_ != nullptr ? inner != nullptr : width_px >= 1 && height_px >= 1;
    const std::int32_t number = made && list_ != nullptr ? list_->NewBitmapNumber() : 0;
    Write(Verb::CreateMonochromeBitmap, width_px, height_px, BitmapNumber{number});
    if (!made) return nullptr;
    return std::make_unique<RecordBitmap>(number, width_px, height_px, std::move(inner));
}

std::unique_ptr<Bitmap> RecordContext::CreatePixelBitmap(std::int32_t width_px, std::int32_t height_px, const Rgb* pixels) {
    std::unique_ptr<Bitmap> inner = inner_ != nullptr ? inner_->CreatePixelBitmap(width_px, height_px, pixels) : nullptr;
    const bool made = inner_ != nullptr ? inner != nullptr : width_px >= 1 && height_px >= 1 && pixels != nullptr;
    const std::int32_t number = made && list_ != nullptr ? list_->NewBitmapNumber() : 0;
    std::string_view bytes;
    if (made) {
        const auto count = static_cast<std::size_t>(width_px) * static_cast<std::size_t>(height_px);
        bytes = {reinterpret_cast<const char*>(pixels), count * sizeof(Rgb)};
    }
    Write(Verb::CreatePixelBitmap, width_px, height_px, bytes, BitmapNumber{number});
    if (!made) return nullptr;
    return std::make_unique<RecordBitmap>(number, width_px, height_px, std::move(inner));
}

std::unique_ptr<Bitmap> RecordContext::LoadBitmapFile(std::string_view fileName) {
    std::unique_ptr<Bitmap> inner = inner_ != nullptr ? inner_->LoadBitmapFile(fileName) : nullptr;
    TextSize size;
    if (inner != nullptr) {
        size = {inner->Width_px(), inner->Height_px()};
    } else if (inner_ == nullptr && imageSizeOf_) {
        size = imageSizeOf_(fileName);
    }
    const bool loaded = size.width_px >= 1 && size.height_px >= 1;
    const std::int32_t number = loaded && list_ != nullptr ? list_->NewBitmapNumber() : 0;
    Write(Verb::LoadBitmapFile, fileName, BitmapNumber{number});
    if (!loaded) return nullptr;
    return std::make_unique<RecordBitmap>(number, size.width_px, size.height_px, std::move(inner));
}

void RecordContext::SelectBitmap(Bitmap* bitmap) {
    const auto* recorded = dynamic_cast<const RecordBitmap*>(bitmap);
    const std::int32_t foreign = bitmap != nullptr ? kUnknownNumber : 0;
    Write(Verb::SelectBitmap, BitmapNumber{recorded != nullptr ? recorded->Number() : foreign});
    // A bitmap that the performing back end made itself passes through as it is.
    if (inner_ != nullptr) inner_->SelectBitmap(recorded != nullptr ? recorded->Inner() : bitmap);
}

Pen RecordContext::SelectPen(const Pen& pen) {
    Write(Verb::SelectPen, pen);
    if (inner_ != nullptr) inner_->SelectPen(pen);
    return pen.empty ? pen_ : std::exchange(pen_, pen);
}

Brush RecordContext::SelectBrush(const Brush& brush) {
    Write(Verb::SelectBrush, brush);
    if (inner_ != nullptr) inner_->SelectBrush(brush);
    return std::exchange(brush_, brush);
}

Font RecordContext::SelectFont(const Font& font) {
    Write(Verb::SelectFont, font);
    if (inner_ != nullptr) inner_->SelectFont(font);
    return std::exchange(font_, font);
}

Rop2 RecordContext::SetROP2(Rop2 mode) {
    Write(Verb::SetROP2, mode);
    if (inner_ != nullptr) inner_->SetROP2(mode);
    return std::exchange(rop2_, mode);
}

BkMode RecordContext::SetBkMode(BkMode mode) {
    Write(Verb::SetBkMode, mode);
    if (inner_ != nullptr) inner_->SetBkMode(mode);
    return std::exchange(bkMode_, mode);
}

Rgb RecordContext::SetBkColor(Rgb color) {
    Write(Verb::SetBkColor, color);
    if (inner_ != nullptr) inner_->SetBkColor(color);
    return std::exchange(bkColor_, color);
}

Rgb RecordContext::SetTextColor(Rgb color) {
    Write(Verb::SetTextColor, color);
    if (inner_ != nullptr) inner_->SetTextColor(color);
    return std::exchange(textColor_, color);
}

TextAlign RecordContext::SetTextAlign(TextAlign align) {
    Write(Verb::SetTextAlign, align);
    if (inner_ != nullptr) inner_->SetTextAlign(align);
    return std::exchange(align_, align);
}

ArcDirection RecordContext::SetArcDirection(ArcDirection direction) {
    Write(Verb::SetArcDirection, direction);
    if (inner_ != nullptr) inner_->SetArcDirection(direction);
    return std::exchange(arcs_, direction);
}

void RecordContext::MoveToEx(std::int32_t x, std::int32_t y) {
    Write(Verb::MoveToEx, x, y);
    if (inner_ != nullptr) inner_->MoveToEx(x, y);
}

void RecordContext::LineTo(std::int32_t x, std::int32_t y) {
    Write(Verb::LineTo, x, y);
    if (inner_ != nullptr) inner_->LineTo(x, y);
}

void RecordContext::Polyline(const Point* pts, std::int32_t count) {
    Write(Verb::Polyline, PointRun{pts, count});
    if (inner_ != nullptr) inner_->Polyline(pts, count);
}

void RecordContext::PolyPolygon(const Point* pts, const std::int32_t* counts, std::int32_t ringCnt) {
    Write(Verb::PolyPolygon, PointRun{pts, PointCnt(counts, ringCnt)}, CountRun{counts, ringCnt});
    if (inner_ != nullptr) inner_->PolyPolygon(pts, counts, ringCnt);
}

void RecordContext::Polygon(const Point* pts, std::int32_t count) {
    Write(Verb::Polygon, PointRun{pts, count});
    if (inner_ != nullptr) inner_->Polygon(pts, count);
}

void RecordContext::Ellipse(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) {
    Write(Verb::Ellipse, left, top, right, bottom);
    if (inner_ != nullptr) inner_->Ellipse(left, top, right, bottom);
}

void RecordContext::ArcTo(const Rect& box, Point start, Point end) {
    Write(Verb::ArcTo, box, start, end);
    if (inner_ != nullptr) inner_->ArcTo(box, start, end);
}

void RecordContext::Chord(const Rect& box, Point start, Point end) {
    Write(Verb::Chord, box, start, end);
    if (inner_ != nullptr) inner_->Chord(box, start, end);
}

void RecordContext::BeginPath() {
    Write(Verb::BeginPath);
    if (inner_ != nullptr) inner_->BeginPath();
}

void RecordContext::EndPath() {
    Write(Verb::EndPath);
    if (inner_ != nullptr) inner_->EndPath();
}

void RecordContext::FillPath() {
    Write(Verb::FillPath);
    if (inner_ != nullptr) inner_->FillPath();
}

void RecordContext::StrokePath() {
    Write(Verb::StrokePath);
    if (inner_ != nullptr) inner_->StrokePath();
}

void RecordContext::StrokeAndFillPath() {
    Write(Verb::StrokeAndFillPath);
    if (inner_ != nullptr) inner_->StrokeAndFillPath();
}

void RecordContext::DrawTextBytes(std::int32_t x, std::int32_t y, std::string_view text) {
    Write(Verb::DrawTextBytes, x, y, text);
    if (inner_ != nullptr) inner_->DrawTextBytes(x, y, text);
}

TextSize RecordContext::TextExtent(std::string_view text) {
    Write(Verb::TextExtent, text);
    if (inner_ != nullptr) return inner_->TextExtent(text);
    constexpr std::int64_t kDefaultEm_px = 16;
    const std::int64_t em = font_.height_px == 0 ? kDefaultEm_px : std::abs(std::int64_t{font_.height_px});
    const auto bytes = static_cast<std::int64_t>((std::min)(text.size(), std::size_t{1} << 20));
    const std::int64_t most = (std::numeric_limits<std::int32_t>::max)();
    return {static_cast<std::int32_t>((std::min)(bytes * em / 2, most)), static_cast<std::int32_t>((std::min)(em, most))};
}

void RecordContext::SelectClipRgn(const Rect& region, RgnMode mode) {
    Write(Verb::SelectClipRgn, region, mode);
    if (inner_ != nullptr) inner_->SelectClipRgn(region, mode);
}

void RecordContext::ExcludeClipRect(const Rect& rect) {
    Write(Verb::ExcludeClipRect, rect);
    if (inner_ != nullptr) inner_->ExcludeClipRect(rect);
}

void RecordContext::FillRect(const Rect& rect, const Brush& brush) {
    Write(Verb::FillRect, rect, brush);
    if (inner_ != nullptr) inner_->FillRect(rect, brush);
}

void RecordContext::PatBlt(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, Rop3 rop) {
    Write(Verb::PatBlt, x, y, width, height, rop);
    if (inner_ != nullptr) inner_->PatBlt(x, y, width, height, rop);
}

std::int32_t RecordContext::NumberOf(const DeviceContext& other) const {
    const auto* recorded = dynamic_cast<const RecordContext*>(&other);
    return recorded != nullptr && recorded->list_ == list_ ? recorded->number_ : kUnknownNumber;
}

// A recorder of this list that performs nowhere has no pixels; one of another list may be what performs for us.
DeviceContext* RecordContext::PixelsOf(DeviceContext& source) const {
    auto* recorded = dynamic_cast<RecordContext*>(&source);
    const bool own = recorded != nullptr && recorded->list_ == list_;
    return recorded != nullptr && (own || recorded->inner_ != nullptr) ? recorded->inner_ : &source;
}

void RecordContext::BitBlt(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, DeviceContext& source,
                           std::int32_t sourceX, std::int32_t sourceY, Rop3 rop) {
    Write(Verb::BitBlt, x, y, width, height, ContextNumber{NumberOf(source)}, sourceX, sourceY, rop);
    DeviceContext* pixels = PixelsOf(source);
    if (inner_ != nullptr && pixels != nullptr) inner_->BitBlt(x, y, width, height, *pixels, sourceX, sourceY, rop);
}

void RecordContext::StretchBlt(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, DeviceContext& source,
                               std::int32_t sourceX, std::int32_t sourceY, std::int32_t sourceWidth, std::int32_t sourceHeight,
                               Rop3 rop) {
    Write(Verb::StretchBlt, x, y, width, height, ContextNumber{NumberOf(source)}, sourceX, sourceY, sourceWidth, sourceHeight,
          rop);
    DeviceContext* pixels = PixelsOf(source);
    if (inner_ == nullptr || pixels == nullptr) return;
    inner_->StretchBlt(x, y, width, height, *pixels, sourceX, sourceY, sourceWidth, sourceHeight, rop);
}

void RecordContext::ScrollDC(std::int32_t dx, std::int32_t dy, const Rect& scroll, const Rect& clip) {
    Write(Verb::ScrollDC, dx, dy, scroll, clip);
    if (inner_ != nullptr) inner_->ScrollDC(dx, dy, scroll, clip);
}

}  // namespace orvane
