// Scoped constants of the drawing seam, with the platform's own values. None of these names is a macro of a system header.
#pragma once

#include <cstdint>

namespace orvane {

/// Pen styles; the user styles are combinations of bits as the platform defines them.
enum class PenStyle : std::uint32_t {
    Solid = 0,
    Dash = 1,
    Dot = 2,
    DashDot = 3,
    DashDotDot = 4,
    Null = 5,
    UserStyle = 7,                ///< cosmetic user style, counted in units of 3 pixels
    GeometricFlatUser = 0x10207,  ///< geometric, flat end caps, user style, counted in pixels
};

enum class BrushStyle : std::uint32_t { Solid = 0, Null = 1, Hatched = 2 };

enum class Hatch : std::uint32_t { Horizontal = 0, Vertical = 1, FDiagonal = 2, BDiagonal = 3, Cross = 4, DiagCross = 5 };

/// Binary raster operations of pens and fills.
enum class Rop2 : std::int32_t {
    Black = 1,
    NotMergePen,
    MaskNotPen,
    NotCopyPen,
    MaskPenNot,
    Not,
    XorPen,
    NotMaskPen,
    MaskPen = 9,
    NotXorPen,
    Nop,
    MergeNotPen,
    CopyPen = 13,
    MergePenNot,
    MergePen,
    White = 16,
};

/// Ternary raster operations of blits.
enum class Rop3 : std::uint32_t {
    SrcCopy = 0x00CC0020,
    SrcPaint = 0x00EE0086,
    SrcAnd = 0x008800C6,
    SrcInvert = 0x00660046,
    NotSrcCopy = 0x00330008,
    Whiteness = 0x00FF0062,
    Blackness = 0x00000042,
    DstInvert = 0x00550009,
    PatCopy = 0x00F00021,
};

enum class BkMode : std::int32_t { Transparent = 1, Opaque = 2 };

/// Which point of a text stands on the position given: across, then up and down.
enum class TextAlign : std::uint32_t {
    LeftTop = 0,
    RightTop = 2,
    CenterTop = 6,
    LeftBottom = 8,
    RightBottom = 10,
    CenterBottom = 14,
    LeftBaseline = 24,
    RightBaseline = 26,
    CenterBaseline = 30,
};

enum class ArcDirection : std::int32_t { CounterClockwise = 1, Clockwise = 2 };

enum class RgnMode : std::int32_t { And = 1, Or = 2, Xor = 3, Diff = 4, Copy = 5 };

enum class DeviceCap : std::int32_t {
    Technology = 2,
    HorzSize = 4,
    VertSize = 6,
    HorzRes = 8,
    VertRes = 10,
    LogPixelsX = 88,
    LogPixelsY = 90
};

}  // namespace orvane
