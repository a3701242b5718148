#include "tests/scenes/player.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "platform/record/replay.h"
#include "platform/record/verb_list.h"
#include "tests/scenes/verb_script.h"

namespace orvane {

namespace {

/// A bitmap that verbs draw on, and its last state seen.
struct Surface {
    std::unique_ptr<Bitmap> bitmap;
    std::unique_ptr<DeviceContext> dc;
    std::vector<std::uint32_t> seen;
    std::vector<std::int32_t> owners;
};

Surface MakeSurface(DeviceContext& device, std::int32_t width_px, std::int32_t height_px) {
    Surface made;
    made.bitmap = device.CreateCompatibleBitmap(width_px, height_px);
    made.dc = device.CreateCompatibleDC();
    made.dc->SelectBitmap(made.bitmap.get());
    made.dc->PatBlt(0, 0, width_px, height_px, Rop3::Whiteness);
    made.seen.resize(static_cast<std::size_t>(width_px) * static_cast<std::size_t>(height_px), 0xFFFFFF);
    made.owners.resize(made.seen.size());
    return made;
}

/// Enters what changed under the verb's number; the box of the changed pixels.
Rect NoteChanges(Surface& surface, const std::uint32_t* pixels, std::int32_t verb) {
    const std::int32_t width = surface.bitmap->Width_px();
    Rect box{width, surface.bitmap->Height_px(), 0, 0};
    for (std::size_t i = 0; i < surface.seen.size(); ++i) {
        const std::uint32_t now = pixels[i] & 0xFFFFFF;
        if (now == surface.seen[i]) continue;
        surface.seen[i] = now;
        surface.owners[i] = verb;
        const auto x = static_cast<std::int32_t>(i) % width;
        const auto y = static_cast<std::int32_t>(i) / width;
        box = {(std::min)(box.left, x), (std::min)(box.top, y), (std::max)(box.right, x + 1), (std::max)(box.bottom, y + 1)};
    }
    return box;
}

/// Whether a verb may change pixels, which are looked through after it. Most verbs of a list only change the state.
bool MayDraw(Verb verb) {
    switch (verb) {
        case Verb::SelectPen:
        case Verb::SelectBrush:
        case Verb::SelectFont:
        case Verb::SetROP2:
        case Verb::SetBkMode:
        case Verb::SetBkColor:
        case Verb::SetTextColor:
        case Verb::SetTextAlign:
        case Verb::SetArcDirection:
        case Verb::MoveToEx:
        case Verb::TextExtent:
        case Verb::SelectClipRgn:
        case Verb::ExcludeClipRect:
            return false;
        default:
            return true;
    }
}

template <class T>
void Dump(std::ostream& out, const std::vector<T>& numbers) {
    out.write(reinterpret_cast<const char*>(numbers.data()), static_cast<std::streamsize>(numbers.size() * sizeof(T)));
}

}  // namespace

int PlayScene(SceneDevice& device, int argc, char** argv) {
    if (argc != 5) return std::fputs("usage: SCRIPT WIDTH HEIGHT OUT\n", stderr), 2;
    VerbList list;
    std::ifstream script(argv[1]);
    if (!script) return std::fprintf(stderr, "cannot read %s\n", argv[1]), 1;
    const std::string wrong = ReadVerbScript(script, list);
    if (!wrong.empty()) return std::fprintf(stderr, "%s: %s\n", argv[1], wrong.c_str()), 1;

    const std::int32_t width = std::atoi(argv[2]);
    const std::int32_t height = std::atoi(argv[3]);
    constexpr std::int32_t kNumbers[] = {kBaseNumber, kTopNumber, kWindowNumber};
    Surface surfaces[3];
    ReplayTargets targets;
    for (int k = 0; k < 3; ++k) {
        surfaces[k] = MakeSurface(*device.device, width, height);
        targets.SetContext(kNumbers[k], *surfaces[k].dc);
    }
    for (std::size_t i = 0; i < list.Size(); ++i) {
        const VerbRecord& record = list.Record(i);
        const auto verb = static_cast<std::int32_t>(i + 1);
        if (record.verb == Verb::TextExtent && targets.Context(record.context) != nullptr) {
            const TextSize size = targets.Context(record.context)->TextExtent(VerbReader(list, record).Text());
            std::printf("extent %d %d %d\n", verb, size.width_px, size.height_px);
        }
        ReplayOne(list, i, targets);
        for (int k = 0; k < 3 && MayDraw(record.verb); ++k) {
            if (record.context != kNumbers[k]) continue;
            const Rect box = NoteChanges(surfaces[k], device.pixelsOf(*surfaces[k].bitmap), verb);
            if (record.verb == Verb::DrawTextBytes && box.left < box.right) {
                std::printf("ink %d %d %d %d %d\n", verb, box.left, box.top, box.right, box.bottom);
            }
        }
    }
    std::ofstream out(argv[4], std::ios::binary);
    for (const Surface& surface : surfaces) {
        Dump(out, surface.seen);
        Dump(out, surface.owners);
    }
    return out.flush() ? 0 : 1;
}

}  // namespace orvane
