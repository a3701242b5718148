// A control with editable layers, an operator who clicks and a host that writes down what it hears of the edit tools. One pixel
// is one map unit and the view stands at (0, 0), so that map (x, y) lies under pixel (x, -y).
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "store/dat_lookup.h"
#include "tests/support/control_rig.h"

namespace orvane {

/// Writes OnEditorStart and OnEditorEnd down as "start A 1 7 3 200": code, mesh number, ID, count, edit type.
class EditorLog : public ControlEvents {
public:
    void Fire(std::int32_t eventDispid, std::span<const Variant> args) override {
        if (eventDispid != kOnEditorStart && eventDispid != kOnEditorEnd) return;
        std::ostringstream line;
        line << (eventDispid == kOnEditorStart ? "start" : "end");
        for (const Variant& arg : args) {
            std::string text;
            EXPECT_TRUE(arg.ToBytes(text));
            line << ' ' << text;
        }
        lines_.push_back(line.str());
        // Through a copy: the handler may take itself away.
        const auto handler = eventDispid == kOnEditorStart ? onStart : onEnd;
        if (handler) handler();
    }
    /// What was heard since the last call.
    Lines Heard() { return std::exchange(lines_, {}); }

    std::function<void()> onStart;
    std::function<void()> onEnd;

private:
    Lines lines_;
};

class EditRig : public ControlRig {
public:
    EditRig() {
        StartOneToOne();
        ctrl->SetEvents(&log);
    }

    /// A layer with one block of mesh number 1 whose items the tools may change.
    void AddLayer(std::string_view code, std::int32_t layType, double GX = 0, double GY = 0) {
        EXPECT_TRUE(ctrl->store.DigMemAlloc2(code, kMesh, layType, "", 1, GX, GY));
        EXPECT_TRUE(ctrl->store.SetLayEditFlg(code, true));
    }
    /// An item with all its points, local to the block; z is a circle's radius.
    void Add(std::string_view code, std::int32_t datID, const std::vector<DigPnt>& pnts, std::int32_t lineTag = 0) {
        EXPECT_TRUE(ctrl->store.AddDigDat(code, kMesh, datID, lineTag));
        EXPECT_TRUE(ctrl->store.SetDigDatPnts(code, kMesh, datID, pnts));
    }
    /// A line A with a tag, a polygon P, a point S and a circle C. A tag of 5 hides nothing here.
    void AddOneOfEach() {
        AddLayer("A", kLayLine, 10, 20);
        Add("A", 1, {{90, -120, 7}, {190, -120, 8}, {290, -220, 9}}, 5);  // map (100 -100) (200 -100) (300 -200)
        AddLayer("P", kLayPolygon);
        Add("P", 1, {{100, -300, 1}, {200, -300, 1}, {200, -400, 1}, {100, -300, 1}});
        AddLayer("S", kLayPoint);
        Add("S", 1, {{700, -100, 3}});
        AddLayer("C", kLayCircle, 10, 20);
        Add("C", 1, {{390, -320, 50}});  // map (400 -300)
        ctrl->store.LineTagMode = 0;
    }
    /// Shows what was added, so that it can be picked, and forgets the verbs.
    void Show() {
        ctrl->RDMReDraw();
        Forget();
    }

    std::int32_t Start(std::int32_t editType, std::string_view code = "", std::int32_t datID = 0, std::int32_t meshNo = kMesh) {
        return ctrl->DigDatEditor(code, meshNo, datID, editType);
    }
    void Click(std::int32_t x, std::int32_t y) {
        const auto dc = window.AcquireDC();
        ctrl->ToolClick(*dc, kMkLButton, {x, y});
    }
    void MoveTo(std::int32_t x, std::int32_t y, std::uint32_t flags = 0) { ctrl->ToolMove(flags, {x, y}); }
    void PressDelete() {
        const auto dc = window.AcquireDC();
        ctrl->ToolDeleteKey(*dc);
    }

    EditRecord& Edit() { return ctrl->edit; }
    std::int32_t Mode() const { return ctrl->runMode; }
    /// Run mode and phase of the tool, as "200/1".
    std::string State() const { return std::to_string(ctrl->runMode) + '/' + std::to_string(ctrl->edit.EditPhase); }
    const DigDat* Find(std::string_view code, std::int32_t datID) const { return ctrl->store.FindDat(code, kMesh, datID); }
    /// The item's points, local, as "(10 -20) (110 -70)", a z other than 0 behind; "none" without the item.
    std::string Pnts(std::string_view code, std::int32_t datID) const {
        const DigDat* dat = Find(code, datID);
        return dat == nullptr ? "none" : Text({dat->pnts.Get(), static_cast<std::size_t>(dat->pntCnt)});
    }
    /// The points of the only overlay figure; "none" when there is none, "many" when there are more.
    std::string Rubber() const {
        const auto figures = ctrl->store.OrgDats();
        if (figures.empty()) return "none";
        return figures.size() > 1 ? "many" : Text({figures[0].pnts.data(), figures[0].pnts.size()});
    }
    /// The frames since the verbs were last forgotten: "map" for a composed one, "figures" for one that only lays the figures
    /// anew.
    Lines Frames() {
        Lines frames;
        bool composed = false;
        for (const std::string& line : Verbs()) {
            if (line == "base PatBlt 0 0 800 600 0xFF0062") composed = true;
            if (line != "top BitBlt 0 0 800 600 base 0 0 0xCC0020") continue;
            frames.push_back(composed ? "map" : "figures");
            composed = false;
        }
        return frames;
    }
    std::string Held() const { return Text({ctrl->edit.EditPnt.data(), static_cast<std::size_t>(ctrl->edit.EditCnt)}); }
    std::int32_t Tag(std::string_view code, std::int32_t datID) const { return Find(code, datID)->lineTag; }
    bool Active(std::string_view code, std::int32_t datID) const { return Find(code, datID)->active != 0; }
    Lines Heard() { return log.Heard(); }

    EditorLog log;

private:
    static std::string Text(std::span<const DigPnt> pnts) {
        std::ostringstream out;
        out.precision(12);
        for (const DigPnt& pnt : pnts) {
            out << (&pnt == pnts.data() ? "(" : " (") << pnt.x << ' ' << pnt.y;
            if (pnt.z != 0) out << ' ' << pnt.z;
            out << ')';
        }
        return out.str();
    }
};

}  // namespace orvane
