// The list that recording contexts write their verbs into.
//
// A verb is one row of 24 bytes; its numbers stand in one pool, its points in another, so that a frame of 100,000 polygons is
// three long arrays and a replay runs through them from front to back. What a verb's values are is told once, in the table
// of verb_table.h. A new verb is: an enumerator here, its row there, its method in RecordContext, its case in replay.cpp.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

#include "platform/pen_brush_font.h"
#include "platform/values.h"

namespace orvane {

enum class Verb : std::uint16_t {
    CreateCompatibleDC,
    CreateCompatibleBitmap,
    CreateMonochromeBitmap,
    CreatePixelBitmap,
    LoadBitmapFile,
    SelectBitmap,
    SelectPen,
    SelectBrush,
    SelectFont,
    SetROP2,
    SetBkMode,
    SetBkColor,
    SetTextColor,
    SetTextAlign,
    SetArcDirection,
    MoveToEx,
    LineTo,
    Polyline,
    PolyPolygon,
    Polygon,
    Ellipse,
    ArcTo,
    Chord,
    BeginPath,
    EndPath,
    FillPath,
    StrokePath,
    StrokeAndFillPath,
    DrawTextBytes,
    TextExtent,
    SelectClipRgn,
    ExcludeClipRect,
    FillRect,
    PatBlt,
    BitBlt,
    StretchBlt,
    ScrollDC,
    Count,
};

/// Contexts and bitmaps appear in a list by number. 0 stands for none, kUnknownNumber for one that is not of this list.
inline constexpr std::int32_t kUnknownNumber = -1;
struct ContextNumber {
    std::int32_t value = 0;
    friend bool operator==(const ContextNumber&, const ContextNumber&) = default;
};
struct BitmapNumber {
    std::int32_t value = 0;
    friend bool operator==(const BitmapNumber&, const BitmapNumber&) = default;
};
/// Points and counts on their way into the list; a null pointer or a count below 1 is an empty run.
struct PointRun {
    const Point* pts = nullptr;
    std::int64_t count = 0;
};
struct CountRun {
    const std::int32_t* counts = nullptr;
    std::int32_t count = 0;
};

struct VerbRecord {
    Verb verb = Verb::Count;
    std::int32_t context = 0;
    std::size_t firstNumber = 0;  ///< where the values begin in the pool of numbers
    std::size_t firstPoint = 0;   ///< the same in the pool of points
};

/// One value of a verb, as hosts take it apart.
using VerbValue = std::variant<std::int64_t, Rect, std::vector<Point>, std::vector<std::int32_t>, Pen, Brush, Font, BitmapNumber,
                               ContextNumber, std::string>;

struct VerbCall {
    std::int32_t context = 0;
    std::string_view name;  ///< the name of the platform's own function
    std::vector<VerbValue> values;
    friend bool operator==(const VerbCall&, const VerbCall&) = default;
};

class VerbList {
public:
    VerbList() = default;
    VerbList(const VerbList&) = delete;
    VerbList& operator=(const VerbList&) = delete;

    // --- Reading ----------------------------------------------------------------------------------------------------------
    std::size_t Size() const { return records_.size(); }
    const VerbRecord& Record(std::size_t i) const { return records_[i]; }
    /// The i-th verb with its values.
    VerbCall Call(std::size_t i) const;
    /// The i-th verb as one readable line: context, name, values.
    std::string Line(std::size_t i) const;
    /// All of them.
    std::vector<std::string> Lines() const;
    /// The label of a context, or its number where it has none.
    std::string ContextName(std::int32_t number) const;
    /// The contexts that have this label, lowest number first. A window's contexts are one for each time it was acquired.
    std::vector<std::int32_t> ContextsLabelled(std::string_view label) const;
    std::size_t PointCnt() const { return points_.size(); }

    // --- Writing ----------------------------------------------------------------------------------------------------------
    /// Forgets all verbs, and the labels of contexts that are gone. Numbers go on.
    void Clear();
    /// While off, verbs are performed by the contexts and not written down.
    void SetRecording(bool on) { recording_ = on; }
    bool Recording() const { return recording_; }
    /// The name that a context has in lines, and for hosts: "window", "base", "top". Empty takes it away.
    void SetLabel(std::int32_t context, std::string label);

    std::int32_t NewContextNumber() { return ++lastContext_; }
    std::int32_t NewBitmapNumber() { return ++lastBitmap_; }
    /// The context is gone; its label stays until the verbs that it wrote are forgotten.
    void RetireContext(std::int32_t number) { retired_.push_back(number); }

    /// Writes one verb; the values are those of its row in the table, in order.
    template <class... Values>
    void Add(ContextNumber context, Verb verb, const Values&... values) {
        if (!recording_) return;
        records_.push_back({verb, context.value, numbers_.size(), points_.size()});
        (Put(values), ...);
    }
    /// Writes a verb whose values were taken apart, as Call gives them. REQUIRES: they are of the kinds of its row, in order.
    void Append(std::int32_t context, Verb verb, const std::vector<VerbValue>& values);

private:
    friend class VerbReader;

    template <class T>
    requires std::is_enum_v<T> || std::is_integral_v<T>
    void Put(T value) {
        static_assert(sizeof(T) == 4);
        numbers_.push_back(static_cast<std::int32_t>(value));
    }
    void Put(const Rect& rect) { numbers_.insert(numbers_.end(), {rect.left, rect.top, rect.right, rect.bottom}); }
    void Put(Point pt) { numbers_.insert(numbers_.end(), {pt.x, pt.y}); }
    void Put(std::string_view text);
    void Put(ContextNumber number) { numbers_.push_back(number.value); }
    void Put(BitmapNumber number) { numbers_.push_back(number.value); }
    void Put(const Pen& pen) { PutPooled(pens_, pen); }
    void Put(const Brush& brush) { PutPooled(brushes_, brush); }
    void Put(const Font& font) { PutPooled(fonts_, font); }
    void Put(std::int64_t number) { numbers_.push_back(static_cast<std::int32_t>(static_cast<std::uint32_t>(number))); }
    void Put(const std::vector<Point>& pts) { Put(PointRun{pts.data(), static_cast<std::int64_t>(pts.size())}); }
    void Put(const std::vector<std::int32_t>& counts) { Put(CountRun{counts.data(), static_cast<std::int32_t>(counts.size())}); }
    void Put(const PointRun& run);
    void Put(const CountRun& run);

    // A block draws with few pens, so a look at the last ones finds nearly every pen again.
    template <class T>
    void PutPooled(std::vector<T>& pool, const T& value) {
        constexpr std::size_t kLookedAt = 16;
        std::size_t i = pool.size();
        const std::size_t stop = i > kLookedAt ? i - kLookedAt : 0;
        while (i > stop && pool[i - 1] != value) --i;
        if (i == stop) {
            pool.push_back(value);
            i = pool.size();
        }
        numbers_.push_back(static_cast<std::int32_t>(i - 1));
    }

    std::vector<VerbRecord> records_;
    std::vector<std::int32_t> numbers_;
    std::vector<Point> points_;
    std::vector<Pen> pens_;
    std::vector<Brush> brushes_;
    std::vector<Font> fonts_;
    std::vector<char> texts_;
    std::map<std::int32_t, std::string> labels_;
    std::vector<std::int32_t> retired_;
    std::int32_t lastContext_ = 0;
    std::int32_t lastBitmap_ = 0;
    bool recording_ = true;
};

/// Takes the values of one verb out of its list, in the order of the verb's row. The pointers and references hold until the
/// list is written to.
class VerbReader {
public:
    VerbReader(const VerbList& list, const VerbRecord& record)
        : list_(list), number_(list.numbers_.data() + record.firstNumber), point_(list.points_.data() + record.firstPoint) {}

    std::int32_t Int() { return *number_++; }
    std::uint32_t Bits() { return static_cast<std::uint32_t>(*number_++); }
    template <class Enum>
    Enum As() {
        return static_cast<Enum>(*number_++);
    }
    Rect TakeRect() {
        const Rect rect{number_[0], number_[1], number_[2], number_[3]};
        number_ += 4;
        return rect;
    }
    Point TakePoint() {
        const Point pt{number_[0], number_[1]};
        number_ += 2;
        return pt;
    }
    /// Where the text stands in its pool takes two numbers, its length a third.
    std::string_view Text() {
        const auto low = static_cast<std::uint32_t>(number_[0]);
        const auto high = static_cast<std::uint32_t>(number_[1]);
        const auto first = static_cast<std::size_t>(std::uint64_t{high} << 32 | low);
        const auto length = static_cast<std::size_t>(number_[2]);
        number_ += 3;
        return {list_.texts_.data() + first, length};
    }
    const Pen& TakePen() { return list_.pens_[static_cast<std::size_t>(*number_++)]; }
    const Brush& TakeBrush() { return list_.brushes_[static_cast<std::size_t>(*number_++)]; }
    const Font& TakeFont() { return list_.fonts_[static_cast<std::size_t>(*number_++)]; }
    PointRun Points() {
        const PointRun run{point_, *number_++};
        point_ += run.count;
        return run;
    }
    CountRun Counts() {
        const CountRun run{number_ + 1, *number_};
        number_ += 1 + run.count;
        return run;
    }

private:
    const VerbList& list_;
    const std::int32_t* number_;
    const Point* point_;
};

}  // namespace orvane
