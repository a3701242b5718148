#include "platform/record/replay.h"

#include <cstring>
#include <utility>
#include <vector>

namespace orvane {

namespace {

template <class T>
void SetAt(std::vector<T*>& table, std::int32_t number, T* target) {
    if (number <= 0) return;
    const auto i = static_cast<std::size_t>(number);
    if (i >= table.size()) table.resize(i + 1);
    table[i] = target;
}

void MakeContext(DeviceContext& dc, std::int32_t number, ReplayTargets& targets) {
    if (number > 0 && targets.Context(number) == nullptr) targets.KeepContext(number, dc.CreateCompatibleDC());
}

/// Keeps the bitmap that `make` gives under the verb's number, unless there is a target for that number already.
template <class Make>
void MakeBitmap(std::int32_t number, ReplayTargets& targets, Make make) {
    if (number <= 0 || targets.FindBitmap(number) != nullptr) return;
    std::unique_ptr<Bitmap> made = make();
    if (made != nullptr) targets.KeepBitmap(number, std::move(made));
}

void MakeBlankBitmap(DeviceContext& dc, bool monochrome, VerbReader& values, ReplayTargets& targets) {
    const std::int32_t width = values.Int();
    const std::int32_t height = values.Int();
    MakeBitmap(values.Int(), targets,
               [&] { return monochrome ? dc.CreateMonochromeBitmap(width, height) : dc.CreateCompatibleBitmap(width, height); });
}

void MakePixelBitmap(DeviceContext& dc, VerbReader& values, ReplayTargets& targets) {
    const std::int32_t width = values.Int();
    const std::int32_t height = values.Int();
    const std::string_view bytes = values.Text();
    // In the list they stand at any byte.
    std::vector<Rgb> pixels(bytes.size() / sizeof(Rgb));
    if (!pixels.empty()) std::memcpy(pixels.data(), bytes.data(), pixels.size() * sizeof(Rgb));
    MakeBitmap(values.Int(), targets, [&] { return dc.CreatePixelBitmap(width, height, pixels.data()); });
}

void LoadBitmap(DeviceContext& dc, VerbReader& values, ReplayTargets& targets) {
    const std::string_view name = values.Text();
    MakeBitmap(values.Int(), targets, [&] { return dc.LoadBitmapFile(name); });
}

void SelectBitmap(DeviceContext& dc, std::int32_t number, const ReplayTargets& targets) {
    Bitmap* bitmap = targets.FindBitmap(number);
    if (number == 0 || bitmap != nullptr) dc.SelectBitmap(bitmap);
}

void Blit(DeviceContext& dc, VerbReader& values, const ReplayTargets& targets) {
    const std::int32_t x = values.Int();
    const std::int32_t y = values.Int();
    const std::int32_t width = values.Int();
    const std::int32_t height = values.Int();
    DeviceContext* source = targets.Context(values.Int());
    const std::int32_t sourceX = values.Int();
    const std::int32_t sourceY = values.Int();
    if (source != nullptr) dc.BitBlt(x, y, width, height, *source, sourceX, sourceY, values.As<Rop3>());
}

void Stretch(DeviceContext& dc, VerbReader& values, const ReplayTargets& targets) {
    const Rect place = values.TakeRect();  // x, y, width, height; so is the next one
    DeviceContext* source = targets.Context(values.Int());
    const Rect from = values.TakeRect();
    if (source == nullptr) return;
    dc.StretchBlt(place.left, place.top, place.right, place.bottom, *source, from.left, from.top, from.right, from.bottom,
                  values.As<Rop3>());
}

// One case for each verb; the order in which values are taken is that of the verb's row, so none is taken inside an argument
// list with a second one. It is long because it is one switch, whose cases are read side by side with the table of verbs.
void Perform(Verb verb, DeviceContext& dc, VerbReader values, ReplayTargets& targets) {
    switch (verb) {
        case Verb::CreateCompatibleDC:
            MakeContext(dc, values.Int(), targets);
            break;
        case Verb::CreateCompatibleBitmap:
            MakeBlankBitmap(dc, false, values, targets);
            break;
        case Verb::CreateMonochromeBitmap:
            MakeBlankBitmap(dc, true, values, targets);
            break;
        case Verb::CreatePixelBitmap:
            MakePixelBitmap(dc, values, targets);
            break;
        case Verb::LoadBitmapFile:
            LoadBitmap(dc, values, targets);
            break;
        case Verb::SelectBitmap:
            SelectBitmap(dc, values.Int(), targets);
            break;
        case Verb::SelectPen:
            dc.SelectPen(values.TakePen());
            break;
        case Verb::SelectBrush:
            dc.SelectBrush(values.TakeBrush());
            break;
        case Verb::SelectFont:
            dc.SelectFont(values.TakeFont());
            break;
        case Verb::SetROP2:
            dc.SetROP2(values.As<Rop2>());
            break;
        case Verb::SetBkMode:
            dc.SetBkMode(values.As<BkMode>());
            break;
        case Verb::SetBkColor:
            dc.SetBkColor(values.Bits());
            break;
        case Verb::SetTextColor:
            dc.SetTextColor(values.Bits());
            break;
        case Verb::SetTextAlign:
            dc.SetTextAlign(values.As<TextAlign>());
            break;
        case Verb::SetArcDirection:
            dc.SetArcDirection(values.As<ArcDirection>());
            break;
        case Verb::MoveToEx: {
            const Point to = values.TakePoint();
            dc.MoveToEx(to.x, to.y);
            break;
        }
        case Verb::LineTo: {
            const Point to = values.TakePoint();
            dc.LineTo(to.x, to.y);
            break;
        }
        case Verb::Polyline: {
            const PointRun run = values.Points();
            dc.Polyline(run.pts, static_cast<std::int32_t>(run.count));
            break;
        }
        case Verb::PolyPolygon: {
            const PointRun run = values.Points();
            const CountRun rings = values.Counts();
            dc.PolyPolygon(run.pts, rings.counts, rings.count);
            break;
        }
        case Verb::Polygon: {
            const PointRun run = values.Points();
            dc.Polygon(run.pts, static_cast<std::int32_t>(run.count));
            break;
        }
        case Verb::Ellipse: {
            const Rect box = values.TakeRect();
            dc.Ellipse(box.left, box.top, box.right, box.bottom);
            break;
        }
        case Verb::ArcTo: {
            const Rect box = values.TakeRect();
            const Point start = values.TakePoint();
            dc.ArcTo(box, start, values.TakePoint());
            break;
        }
        case Verb::Chord: {
            const Rect box = values.TakeRect();
            const Point start = values.TakePoint();
            dc.Chord(box, start, values.TakePoint());
            break;
        }
        case Verb::BeginPath:
            dc.BeginPath();
            break;
        case Verb::EndPath:
            dc.EndPath();
            break;
        case Verb::FillPath:
            dc.FillPath();
            break;
        case Verb::StrokePath:
            dc.StrokePath();
            break;
        case Verb::StrokeAndFillPath:
            dc.StrokeAndFillPath();
            break;
        case Verb::DrawTextBytes: {
            const Point at = values.TakePoint();
            dc.DrawTextBytes(at.x, at.y, values.Text());
            break;
        }
        case Verb::TextExtent:
            dc.TextExtent(values.Text());
            break;
        case Verb::SelectClipRgn: {
            const Rect region = values.TakeRect();
            dc.SelectClipRgn(region, values.As<RgnMode>());
            break;
        }
        case Verb::ExcludeClipRect:
            dc.ExcludeClipRect(values.TakeRect());
            break;
        case Verb::FillRect: {
            const Rect rect = values.TakeRect();
            dc.FillRect(rect, values.TakeBrush());
            break;
        }
        case Verb::PatBlt: {
            const Rect place = values.TakeRect();  // x, y, width, height
            dc.PatBlt(place.left, place.top, place.right, place.bottom, values.As<Rop3>());
            break;
        }
        case Verb::BitBlt:
            Blit(dc, values, targets);
            break;
        case Verb::StretchBlt:
            Stretch(dc, values, targets);
            break;
        case Verb::ScrollDC: {
            const std::int32_t dx = values.Int();
            const std::int32_t dy = values.Int();
            const Rect scroll = values.TakeRect();
            dc.ScrollDC(dx, dy, scroll, values.TakeRect());
            break;
        }
        case Verb::Count:
            break;
    }
}

}  // namespace

void ReplayTargets::SetContext(std::int32_t number, DeviceContext& dc) { SetAt(contexts_, number, &dc); }

void ReplayTargets::SetBitmap(std::int32_t number, Bitmap& bitmap) { SetAt(bitmaps_, number, &bitmap); }

void ReplayTargets::KeepContext(std::int32_t number, std::unique_ptr<DeviceContext> dc) {
    SetContext(number, *dc);
    keptContexts_.push_back(std::move(dc));
}

void ReplayTargets::KeepBitmap(std::int32_t number, std::unique_ptr<Bitmap> bitmap) {
    SetBitmap(number, *bitmap);
    keptBitmaps_.push_back(std::move(bitmap));
}

void Replay(const VerbList& list, ReplayTargets& targets) {
    for (std::size_t i = 0; i < list.Size(); ++i) ReplayOne(list, i, targets);
}

void ReplayOne(const VerbList& list, std::size_t i, ReplayTargets& targets) {
    const VerbRecord& record = list.Record(i);
    DeviceContext* dc = targets.Context(record.context);
    if (dc != nullptr) Perform(record.verb, *dc, VerbReader(list, record), targets);
}

}  // namespace orvane
