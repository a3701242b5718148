#include <algorithm>
#include <array>
#include <charconv>
#include <ctime>
#include <string_view>

#include "platform/rect.h"
#include "platform/trace.h"
#include "render/draw_scratch.h"
#include "render/index_slot.h"
#include "render/layers.h"
#include "render/line_polygon.h"
#include "render/points.h"
#include "render/shapes.h"

namespace orvane {

namespace {

/// Tells a debugger how long the mesh of a block took. The words are code page 932 bytes: "メッシュ：", the seconds, " 秒です。".
void TraceMeshTime(std::clock_t before, std::clock_t after) {
    static constexpr std::string_view kHead = "\x83\x81\x83\x62\x83\x56\x83\x85\x81\x46";
    static constexpr std::string_view kTail = " \x95\x62\x82\xC5\x82\xB7\x81\x42\n";
    std::array<char, 80> words{};
    const double spent = static_cast<double>(after - before) / static_cast<double>(CLOCKS_PER_SEC);
    char* end = std::copy(kHead.begin(), kHead.end(), words.data());
    end = std::to_chars(end, words.data() + words.size() - kTail.size(), spent, std::chars_format::fixed, 6).ptr;
    end = std::copy(kTail.begin(), kTail.end(), end);
    Trace({words.data(), static_cast<std::size_t>(end - words.data())});
}

/// Draws one marked block by the type of its layer, and its labels: texts are none, and meshes have none.
void DrawBlock(CDigMem& store, const FrameTarget& frame, const DigIndex& slot, DrawScratch& scratch) {
    constexpr bool kHonourClip = true;
    switch (store.Layer(slot.layer).layType) {
        case kLayPoint:
            if (store.Layer(slot.layer).imgMode == 1) {
                DrawImageBlock(store, frame, slot.block, slot.layer, kHonourClip, scratch, kAllItems);
            } else {
                DrawSymbolBlock(store, frame, slot.block, slot.layer, kHonourClip, scratch, kAllItems);
            }
            break;
        case kLayLine:
            DrawLineBlock(store, frame, slot.block, slot.layer, kHonourClip, scratch);
            break;
        case kLayPolygon:
            DrawPolygonBlock(store, frame, slot.block, slot.layer, kHonourClip, scratch);
            break;
        case kLayCircle:
            DrawCircleBlock(store, frame, slot.block, slot.layer, kHonourClip, scratch);
            break;
        case kLayEllipse:
            DrawEllipseBlock(store, frame, slot.block, slot.layer, kHonourClip, scratch);
            break;
        case kLayText:
            DrawTextBlock(store, frame, slot.block, slot.layer, kHonourClip, scratch);
            return;
        case kLayMesh: {
            const std::clock_t before = std::clock();
            DrawMeshBlock(store, frame, slot.block, slot.layer, kHonourClip, scratch);
            TraceMeshTime(before, std::clock());
            return;
        }
        default:
            return;
    }
    DrawLabels(store, frame, slot.block, slot.layer, kHonourClip, scratch);
}

}  // namespace

bool DrawLayers(CDigMem& store, const FrameTarget& frame) {
    if (!store.InitDone()) return false;
    FrameTarget target = frame;
    target.stripA = NormalizeRect(frame.stripA);
    target.stripB = NormalizeRect(frame.stripB);
    DrawScratch scratch;
    for (const DigIndex slot : store.Index()) {
        if (!IsWholeSlot(store, slot)) return false;
        if (store.Layer(slot.layer).dspFlg != 1 || store.Block(slot.block).inView != 1) continue;
        DrawBlock(store, target, slot, scratch);
    }
    return true;
}

}  // namespace orvane
