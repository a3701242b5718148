// Native pens, brushes and fonts for the seam's values, made once and kept for the next selection.
#pragma once

#include <windows.h>
// windows.h comes first
#include <cstddef>
#include <list>
#include <memory>
#include <utility>

#include "platform/pen_brush_font.h"

namespace orvane {

/// A native object that is deleted with its last owner. A cache and a context that has it selected are owners: what a cache drops
/// lives on until it is selected out, because the system does not delete a selected object.
using GdiObject = std::shared_ptr<void>;

/// Takes over a handle; null stays null.
GdiObject OwnGdiObject(HGDIOBJ handle);

/// The last objects asked for, the least recent going first. The number of native handles is bounded by the limit and the
/// contexts alive.
template <class Value>
class GdiObjectCache {
public:
    /// The object of `value`, by `make` where it is not there yet; null when the system refuses it.
    template <class Make>
    GdiObject Get(const Value& value, Make make) {
        for (auto entry = entries_.begin(); entry != entries_.end(); ++entry) {
            if (!(entry->first == value)) continue;
            entries_.splice(entries_.begin(), entries_, entry);
            return entry->second;
        }
        GdiObject made = OwnGdiObject(make(value));
        if (made == nullptr) return nullptr;
        entries_.emplace_front(value, made);
        if (entries_.size() > kLimit) entries_.pop_back();
        return made;
    }

private:
    static constexpr std::size_t kLimit = 32;

    std::list<std::pair<Value, GdiObject>> entries_;
};

/// The caches that contexts made from one another share. Not for two threads at a time.
class GdiObjects {
public:
    GdiObject PenOf(const Pen& pen);
    GdiObject BrushOf(const Brush& brush);
    /// The face's name is taken as code page 932 by the project's own table; half a character at its end is left out.
    GdiObject FontOf(const Font& font);

private:
    GdiObjectCache<Pen> pens_;
    GdiObjectCache<Brush> brushes_;
    GdiObjectCache<Font> fonts_;
};

}  // namespace orvane
