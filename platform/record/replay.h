// Performing a recorded list on the contexts of another back end.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "platform/device_context.h"
#include "platform/record/verb_list.h"

namespace orvane {

/// Which live context or bitmap stands for which number of a list. What the list itself makes is made anew by the replay and
/// kept here, unless a target was told for its number; the contexts and bitmaps told must live as long as this.
class ReplayTargets {
public:
    void SetContext(std::int32_t number, DeviceContext& dc);
    void SetBitmap(std::int32_t number, Bitmap& bitmap);
    /// Null for a number without a target.
    DeviceContext* Context(std::int32_t number) const { return At(contexts_, number); }
    Bitmap* FindBitmap(std::int32_t number) const { return At(bitmaps_, number); }

    void KeepContext(std::int32_t number, std::unique_ptr<DeviceContext> dc);
    void KeepBitmap(std::int32_t number, std::unique_ptr<Bitmap> bitmap);

private:
    template <class T>
    static T* At(const std::vector<T*>& table, std::int32_t number) {
        return number > 0 && static_cast<std::size_t>(number) < table.size() ? table[static_cast<std::size_t>(number)] : nullptr;
    }

    // The bitmaps stand first: they are destroyed last, after the contexts that have them selected.
    std::vector<std::unique_ptr<Bitmap>> keptBitmaps_;
    std::vector<std::unique_ptr<DeviceContext>> keptContexts_;
    std::vector<Bitmap*> bitmaps_;
    std::vector<DeviceContext*> contexts_;
};

/// Performs all verbs in order. Verbs of a context without a target are left out, and so is a blit whose source has none.
/// No target may record into `list` itself.
void Replay(const VerbList& list, ReplayTargets& targets);
/// Performs the i-th verb alone.
void ReplayOne(const VerbList& list, std::size_t i, ReplayTargets& targets);

}  // namespace orvane
