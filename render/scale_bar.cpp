#include "render/scale_bar.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string_view>

#include "platform/mul_div.h"
#include "platform/pen_brush_font.h"
#include "platform/to_int.h"

namespace orvane {

namespace {

constexpr Rgb kGrey = 0x808080;
constexpr Rgb kWhite = 0xFFFFFF;

/// The ticks of one ruler.
struct Ticks {
    double step = 0;  ///< map units from tick to tick
    double step_px = 0;
    double first_px = 0;  ///< where the first tick stands
    double before = 0;    ///< map units of the tick before the first
    std::int32_t count = 0;

    std::int32_t Pixel(std::int32_t i) const { return ToInt(i * step_px + first_px); }
    double Value(std::int32_t i) const { return (i + 1.0) * step + before; }
};

/// A device with pixels below two centimetres has a pixel or more from tick to tick, and no window is wider than 16 bits can
/// tell: so the limit on the count meets no screen, and holds a device that tells nonsense to a bounded time.
Ticks TicksOf(const ViewParams& view, std::int32_t extent_px, double corner, double pend_px) {
    constexpr double kMostTicks = 65536;
    Ticks ticks;
    ticks.step = static_cast<double>(view.Zoom) / 500.0 * 10.0;
    ticks.step_px = view.WorldToPixF(ticks.step);
    // The remainder has the sign of the corner, so left of and above the origin the first tick stands more than a step away.
    const double over = std::fmod(corner, ticks.step);
    ticks.first_px = view.WorldToPixF(ticks.step - over) + pend_px;
    ticks.before = corner - over;
    if (ticks.step_px != 0) ticks.count = TruncToInt32((std::min)(extent_px / ticks.step_px + 0.5, kMostTicks));
    return ticks;
}

using LabelBytes = std::array<char, 32>;

std::string_view MetresLabel(std::int32_t metres, LabelBytes& bytes) {
    const int length = std::snprintf(bytes.data(), bytes.size(), "%ldm", static_cast<long>(metres));
    return {bytes.data(), static_cast<std::size_t>(length)};
}

/// Whole number below `divisor` by which `value` exceeds a multiple of it; REQUIRES: divisor > 0.
std::int64_t FloorMod(std::int64_t value, std::int64_t divisor) { return (value % divisor + divisor) % divisor; }

/// Degrees stand still, and minutes wrap at 60: the sheet is one fixed map, and what lies outside of it is labelled as on a
/// clock.
std::string_view GraticuleLabel(const char* degrees, std::int64_t minutes, std::int64_t seconds, LabelBytes& bytes) {
    const std::int64_t total = minutes * 60 + seconds;
    const std::int64_t shownSeconds = FloorMod(total, 60);
    const std::int64_t shownMinutes = FloorMod((total - shownSeconds) / 60, 60);
    const int length = std::snprintf(bytes.data(), bytes.size(), "%s%02d'%02d\"", degrees, static_cast<int>(shownMinutes),
                                     static_cast<int>(shownSeconds));
    return {bytes.data(), static_cast<std::size_t>(length)};
}

/// The byte behind the degrees is the half-width sound mark.
std::string_view BottomLabel(std::int16_t mode, const Ticks& ticks, std::int32_t i, LabelBytes& bytes) {
    const std::int32_t value = ToInt(ticks.Value(i));
    if (mode == kScaleBarMetres) return MetresLabel(value, bytes);
    if (mode == kScaleBarGraticule) return GraticuleLabel("E41\xDF", 22, std::int64_t{value} * 45 / 1000 + 30, bytes);
    return {};
}

/// The view's y is flipped, so the labels show its negative. Only the metres take a half off before they are rounded.
std::string_view RightLabel(std::int16_t mode, const Ticks& ticks, std::int32_t i, LabelBytes& bytes) {
    if (mode == kScaleBarMetres) return MetresLabel(SaturatedNegative(ToInt(ticks.Value(i) - 0.5)), bytes);
    if (mode != kScaleBarGraticule) return {};
    const std::int64_t value = SaturatedNegative(ToInt(ticks.Value(i)));
    return GraticuleLabel("N43\xDF", 5, value * 3 / 100, bytes);
}

Font LabelFont(std::int32_t logPixelsY, std::int32_t escapement_tenths) {
    constexpr std::int32_t kSize_points = 7;
    constexpr std::int32_t kPointsInAnInch = 72;
    Font font;
    font.height_px = SaturatedNegative(MulDiv(kSize_points, logPixelsY, kPointsInAnInch));
    font.escapement_tenths = escapement_tenths;
    font.faceName = FaceName(kDefaultFace);
    return font;
}

/// Black at the left and top, white at the right and bottom.
void DrawRim(DeviceContext& dc, std::int32_t w, std::int32_t h) {
    dc.PatBlt(0, 0, 1, h, Rop3::Blackness);
    dc.PatBlt(0, 0, w, 1, Rop3::Blackness);
    dc.PatBlt(SaturatedAdd(w, -1), 0, w, h, Rop3::Whiteness);
    dc.PatBlt(0, SaturatedAdd(h, -1), w, h, Rop3::Whiteness);
}

void DrawBottomRuler(DeviceContext& dc, const Ticks& ticks, std::int16_t mode, std::int32_t h) {
    LabelBytes bytes;
    for (std::int32_t i = 0; i < ticks.count; ++i) {
        const std::int32_t px = ticks.Pixel(i);
        dc.MoveToEx(px, SaturatedAdd(h, -20));
        dc.LineTo(px, SaturatedAdd(h, -11));
        const std::string_view label = BottomLabel(mode, ticks, i, bytes);
        const std::int32_t width_px = dc.TextExtent(label).width_px;
        dc.DrawTextBytes(SaturatedAdd(px, -(width_px / 2)), SaturatedAdd(h, -12), label);
    }
}

/// The labels read upward, so each is centred on its tick from below.
void DrawRightRuler(DeviceContext& dc, const Ticks& ticks, std::int16_t mode, std::int32_t w) {
    LabelBytes bytes;
    for (std::int32_t i = 0; i < ticks.count; ++i) {
        const std::int32_t py = ticks.Pixel(i);
        dc.MoveToEx(SaturatedAdd(w, -20), py);
        dc.LineTo(SaturatedAdd(w, -11), py);
        const std::string_view label = RightLabel(mode, ticks, i, bytes);
        const std::int32_t width_px = dc.TextExtent(label).width_px;
        dc.DrawTextBytes(SaturatedAdd(w, -12), SaturatedAdd(py, width_px / 2), label);
    }
}

}  // namespace

void DrawScaleBar(const FrameTarget& frame, const ViewParams& view, std::int16_t mode, std::int32_t logPixelsY) {
    DeviceContext& dc = *frame.dc;
    const std::int32_t w = frame.client.right;
    const std::int32_t h = frame.client.bottom;
    DrawRim(dc, w, h);
    if (mode == kScaleBarOff) return;

    const Brush grey = CreateSolidBrush(kGrey);
    dc.FillRect({SaturatedAdd(w, -20), 0, w, h}, grey);
    dc.FillRect({0, SaturatedAdd(h, -20), w, h}, grey);
    const Pen oldPen = dc.SelectPen(CreatePen(PenStyle::Solid, 1, kWhite));
    dc.SetBkMode(BkMode::Transparent);
    dc.SetTextColor(kWhite);

    const Font oldFont = dc.SelectFont(LabelFont(logPixelsY, 0));
    DrawBottomRuler(dc, TicksOf(view, w, frame.x, frame.pendX), mode, h);
    dc.SelectFont(oldFont);
    constexpr std::int32_t kUpward_tenths = 900;
    dc.SelectFont(LabelFont(logPixelsY, kUpward_tenths));
    DrawRightRuler(dc, TicksOf(view, h, frame.y, frame.pendY), mode, w);
    dc.SelectPen(oldPen);
    dc.SelectFont(oldFont);
}

}  // namespace orvane
