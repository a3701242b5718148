// A control on an off-screen window of the recording back end, called as a late-bound host calls it.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "control/automation/invoke.h"
#include "control/ctrl.h"
#include "platform/files_std.h"
#include "platform/record/record_window.h"
#include "platform/variant_array.h"

namespace orvane {

/// What a call came to: its status and result, and the arguments after it.
struct Ran {
    InvokeResult result;
    std::vector<Argument> args;

    bool Ok() const { return result.status == InvokeStatus::Ok; }
    /// A host's view of a truth value: the call was Ok and answered a boolean that is true.
    bool True() const { return Ok() && result.value.Type() == Vt::Bool && Truth(result.value); }
    bool False() const { return Ok() && result.value.Type() == Vt::Bool && !Truth(result.value); }
    std::int32_t Long() const { return Number<std::int32_t>(result.value, -12345); }
    double Double() const {
        double v = -12345;
        result.value.ToR8(v);
        return v;
    }
    std::string Text() const { return TextOf(result.value); }

    std::int32_t OutLong(std::size_t i) const { return Number<std::int32_t>(args[i].value, -12345); }
    double OutDouble(std::size_t i) const {
        double v = -12345;
        args[i].value.ToR8(v);
        return v;
    }
    std::string OutText(std::size_t i) const { return TextOf(args[i].value); }
    const std::vector<double>& Doubles(std::size_t i) const { return std::get<std::vector<double>>(args[i].buffer); }

private:
    static bool Truth(const Variant& value) {
        bool v = false;
        return value.ToBool(v) && v;
    }
    template <class T>
    static T Number(const Variant& value, T otherwise) {
        T v = otherwise;
        value.ToI4(v);
        return v;
    }
    static std::string TextOf(const Variant& value) {
        std::string text = "no text";
        value.ToBytes(text);
        return text;
    }
};

class AutomationRig {
public:
    AutomationRig() { RecordWindow(window, desktop); }

    /// A paint message for the whole client area.
    void Paint() {
        const auto dc = window.AcquireDC();
        ctrl->OnDraw(*dc, window.ClientRect(), window.ClientRect());
    }
    /// Init and the first paint.
    void Start() {
        Run("OrvInit");
        Paint();
    }

    /// Calls a method, or reads a property: inputs as given, outputs made to measure.
    template <class... Inputs>
    Ran Run(std::string_view name, const Inputs&... inputs) {
        return RunWith(name, {Value(inputs)...});
    }
    /// Writes a property; what stands before the last value are the arguments of an indexed one.
    template <class... Inputs>
    InvokeResult Put(std::string_view name, const Inputs&... inputs) {
        std::vector<Argument> args(sizeof...(inputs));
        std::size_t i = 0;
        ((args[i++].value = Value(inputs)), ...);
        return Invoke(*ctrl, name, InvokeKind::Put, args);
    }

    Ran RunWith(std::string_view name, const std::vector<Variant>& inputs) {
        Ran ran;
        const Member* member = Surface().Find(name);
        if (member == nullptr) {
            ran.result.status = InvokeStatus::UnknownMember;
            return ran;
        }
        std::size_t given = 0;
        for (const Arg& arg : member->args) {
            ran.args.emplace_back();
            if (arg.IsInput() && given < inputs.size()) ran.args.back().value = inputs[given++];
        }
        // What is given too much is passed on, so that the count is refused.
        for (; given < inputs.size(); ++given) ran.args.emplace_back().value = inputs[given];
        for (std::size_t i = 0; i < member->args.size(); ++i) {
            if (member->args[i].IsBuffer())
                ran.args[i].buffer = MakeBuffer(member->args[i], BufferLength(*ctrl, *member, i, ran.args));
        }
        ran.result = Invoke(*ctrl, *member, InvokeKind::Method, ran.args);
        return ran;
    }

    /// The layer of that code; a record of no layer when there is none.
    const LayerDef& Layer(std::string_view code) const {
        const std::int32_t pos = ctrl->store.FindLayDef(code);
        return ctrl->store.Layer(pos < 0 ? ctrl->store.LayerCnt() : pos);
    }

    std::shared_ptr<VerbList> verbs = std::make_shared<VerbList>();
    RecordContext device{nullptr};
    RecordContext desktop{verbs, "desktop"};
    OffscreenWindow window{device, 800, 600};
    StdFiles files;
    ControlPtr ctrl = COrvane4Ctrl::Create(window, files);

private:
    static Variant Value(const Variant& v) { return v; }
    static Variant Value(std::int32_t v) { return Variant(v); }
    static Variant Value(double v) { return Variant(v); }
    static Variant Value(bool v) { return Variant(v); }
    static Variant Value(const char* v) { return Variant(v); }
    static Variant Value(const std::string& v) { return Variant(v); }
};

}  // namespace orvane
