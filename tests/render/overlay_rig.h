// Overlay figures drawn on the rig of the drawing tests, by a context that holds a pen and a brush of its own.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "render/overlay_figures.h"
#include "tests/render/render_rig.h"

namespace orvane {

class OverlayTest : public testing::Test {
protected:
    using Lines = std::vector<std::string>;

    static constexpr char kEntryPen[] = "SelectObject pen(0x0 7 0x123456)";
    static constexpr char kEntryBrush[] = "SelectObject brush(0x654321)";
    static constexpr char kBlackPen[] = "SelectObject pen(0x0 1 0x000000)";
    static constexpr char kBlackBrush[] = "SelectObject brush(0x000000)";
    static constexpr char kActivePen[] = "SelectObject pen(0x0 3 0x0000FF)";
    static constexpr char kActiveBrush[] = "SelectObject brush(0x0000FF)";
    static constexpr char kCopy[] = "SetROP2 13";
    static constexpr char kMask[] = "SetROP2 9";

    OverlayTest() {
        rig.dc.SelectPen(CreatePen(PenStyle::Solid, 7, 0x123456));
        rig.dc.SelectBrush(CreateSolidBrush(0x654321));
        rig.list->Clear();
    }

    /// A figure behind the others; returns its position.
    std::int32_t Add(std::int32_t type, Coordinates coordinates, std::int16_t line = 0, Rgb color = 0, std::int32_t fill = 0) {
        EXPECT_GT(rig.store.MakeOrgDat(kLayLine, line, color, fill), 0);
        const std::int32_t pos = rig.store.OrgDatCnt() - 1;
        for (const auto& [x, y] : coordinates) EXPECT_GT(rig.store.AddOrgPntAt(pos, x, y), 0);
        rig.store.MutableOrgDat(pos).type = type;  // so late that a point figure may have several points
        return pos;
    }
    std::int32_t AddActive(std::int32_t type, Coordinates coordinates, std::int16_t line = 0, Rgb color = 0) {
        const std::int32_t pos = Add(type, coordinates, line, color);
        rig.store.MutableOrgDat(pos).active = 1;
        return pos;
    }

    Lines All() {
        DrawOrgDats(rig.store, rig.frame, strVisible, topDrawID);
        return rig.Verbs();
    }
    /// What is drawn between the tools that are selected at the beginning and those that are put back at the end.
    Lines Drawn() {
        Lines lines = All();
        EXPECT_GE(lines.size(), 4u);
        if (lines.size() < 4) return lines;
        const Lines head(lines.begin(), lines.begin() + 2), tail(lines.end() - 2, lines.end());
        EXPECT_EQ(tail, (Lines{kEntryBrush, kEntryPen}));
        EXPECT_TRUE(head[0].starts_with("SelectObject pen(0x0 ") && head[0].ends_with(" 0x000000)")) << head[0];
        EXPECT_EQ(head[1], kBlackBrush);
        return {lines.begin() + 2, lines.end() - 2};
    }
    /// Of that, the lines that begin with `verb`.
    Lines DrawnBy(std::string_view verb) {
        Lines lines = Drawn();
        std::erase_if(lines, [verb](const std::string& line) { return !line.starts_with(verb); });
        return lines;
    }

    RenderRig rig;
    bool strVisible = false;
    std::int32_t topDrawID = 0;
};

}  // namespace orvane
