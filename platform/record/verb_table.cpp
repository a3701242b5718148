#include "platform/record/verb_table.h"

namespace orvane {

namespace {

using K = VerbValueKind;

// clang-format off
constexpr VerbRow kRows[] = {
    {Verb::CreateCompatibleDC,     "CreateCompatibleDC",     {K::Context}},
    {Verb::CreateCompatibleBitmap, "CreateCompatibleBitmap", {K::Int, K::Int, K::Bitmap}},
    {Verb::CreateMonochromeBitmap, "CreateBitmap",           {K::Int, K::Int, K::Bitmap}},
    {Verb::CreatePixelBitmap,      "CreateDIBitmap",         {K::Int, K::Int, K::Pixels, K::Bitmap}},
    {Verb::LoadBitmapFile,         "LoadImage",              {K::Text, K::Bitmap}},
    {Verb::SelectBitmap,           "SelectObject",           {K::Bitmap}},
    {Verb::SelectPen,              "SelectObject",           {K::Pen}},
    {Verb::SelectBrush,            "SelectObject",           {K::Brush}},
    {Verb::SelectFont,             "SelectObject",           {K::Font}},
    {Verb::SetROP2,                "SetROP2",                {K::Int}},
    {Verb::SetBkMode,              "SetBkMode",              {K::Int}},
    {Verb::SetBkColor,             "SetBkColor",             {K::Hex}},
    {Verb::SetTextColor,           "SetTextColor",           {K::Hex}},
    {Verb::SetTextAlign,           "SetTextAlign",           {K::Int}},
    {Verb::SetArcDirection,        "SetArcDirection",        {K::Int}},
    {Verb::MoveToEx,               "MoveToEx",               {K::Int, K::Int}},
    {Verb::LineTo,                 "LineTo",                 {K::Int, K::Int}},
    {Verb::Polyline,               "Polyline",               {K::Points}},
    {Verb::PolyPolygon,            "PolyPolygon",            {K::Points, K::Counts}},
    {Verb::Polygon,                "Polygon",                {K::Points}},
    {Verb::Ellipse,                "Ellipse",                {K::Int, K::Int, K::Int, K::Int}},
    {Verb::ArcTo,                  "ArcTo",                  {K::Int, K::Int, K::Int, K::Int, K::Int, K::Int, K::Int, K::Int}},
    {Verb::Chord,                  "Chord",                  {K::Int, K::Int, K::Int, K::Int, K::Int, K::Int, K::Int, K::Int}},
    {Verb::BeginPath,              "BeginPath",              {}},
    {Verb::EndPath,                "EndPath",                {}},
    {Verb::FillPath,               "FillPath",               {}},
    {Verb::StrokePath,             "StrokePath",             {}},
    {Verb::StrokeAndFillPath,      "StrokeAndFillPath",      {}},
    {Verb::DrawTextBytes,          "TextOut",                {K::Int, K::Int, K::Text}},
    {Verb::TextExtent,             "GetTextExtentPoint32",   {K::Text}},
    {Verb::SelectClipRgn,          "SelectClipRgn",          {K::Rect, K::Int}},
    {Verb::ExcludeClipRect,        "ExcludeClipRect",        {K::Int, K::Int, K::Int, K::Int}},
    {Verb::FillRect,               "FillRect",               {K::Rect, K::Brush}},
    {Verb::PatBlt,                 "PatBlt",                 {K::Int, K::Int, K::Int, K::Int, K::Hex}},
    {Verb::BitBlt,                 "BitBlt",                 {K::Int, K::Int, K::Int, K::Int, K::Context, K::Int, K::Int, K::Hex}},
    {Verb::StretchBlt,             "StretchBlt",
     {K::Int, K::Int, K::Int, K::Int, K::Context, K::Int, K::Int, K::Int, K::Int, K::Hex}},
    {Verb::ScrollDC,               "ScrollDC",               {K::Int, K::Int, K::Rect, K::Rect}},
};
// clang-format on

constexpr bool RowsStandInOrder() {
    std::size_t i = 0;
    for (const VerbRow& row : kRows) {
        if (row.verb != static_cast<Verb>(i++)) return false;
    }
    return i == static_cast<std::size_t>(Verb::Count);
}
static_assert(RowsStandInOrder());

}  // namespace

const VerbRow& RowOf(Verb verb) { return kRows[static_cast<std::size_t>(verb)]; }

}  // namespace orvane
