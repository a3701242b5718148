// Pen, brush and font are comparable values: selecting one returns the one before, and nobody deletes anything by hand.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "platform/gdi_constants.h"
#include "platform/values.h"

namespace orvane {

struct Pen {
    static constexpr int kMaxDashes = 16;

    PenStyle style = PenStyle::Solid;
    std::int32_t width_px = 1;  ///< 0 draws as 1
    Rgb color = 0;
    std::uint8_t dashCnt = 0;  ///< used entries of dashes; 0 but for the user styles
    std::array<std::int32_t, kMaxDashes> dashes{};
    bool empty = false;  ///< a pen that the system refused: selecting it changes nothing

    friend bool operator==(const Pen&, const Pen&) = default;
};

/// A pen of a standard style. A negative width counts by its absolute value.
Pen CreatePen(PenStyle style, std::int32_t width_px, Rgb color);

/// A pen with its own dash list. Returns the empty pen when `count` is below 1 or above 16, when a length is
/// negative or when all are 0, or when a cosmetic style is asked for with a width other than 1.
Pen ExtCreatePen(PenStyle style, std::int32_t width_px, Rgb color, std::int32_t count, const std::int32_t* dashes);

struct Brush {
    BrushStyle style = BrushStyle::Solid;
    Rgb color = 0xFFFFFF;
    Hatch hatch = Hatch::Horizontal;  ///< of meaning only with BrushStyle::Hatched

    friend bool operator==(const Brush&, const Brush&) = default;
};

Brush CreateSolidBrush(Rgb color);
Brush CreateHatchBrush(Hatch hatch, Rgb color);
Brush WhiteBrush();
Brush NullBrush();

struct Font {
    std::int32_t height_px = 0;  ///< negative: em height
    std::int32_t width_px = 0;
    std::int32_t escapement_tenths = 0;  ///< tenths of a degree, counter-clockwise
    std::int32_t orientation_tenths = 0;
    std::int32_t weight = 400;
    bool italic = false;
    bool underline = false;
    bool strikeOut = false;
    std::uint8_t charSet = 128;
    std::array<char, 32> faceName{};  ///< code page 932 bytes

    friend bool operator==(const Font&, const Font&) = default;
};

/// The face of texts that name none, in code page 932 bytes: "標準明朝".
inline constexpr std::string_view kDefaultFace = "\x95\x57\x8F\x80\x96\xBE\x92\xA9";

/// The bytes of a face name as Font::faceName holds them, cut to its 32 with no zero behind them. A character of two bytes may be
/// cut in half.
std::array<char, 32> FaceName(std::string_view name);

}  // namespace orvane
