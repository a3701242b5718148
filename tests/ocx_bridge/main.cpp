// A bridge to the Windows control: reads calls as lines and answers as lines, so that a program of another system drives it.
//
//     new WIDTH HEIGHT               a control on a form of that size, painted once it is asked to
//     call NAME get|put value...     a member with its inputs; the answer has its result, if it has one, and then its outputs
//     paint / resize WIDTH HEIGHT / mouse MESSAGE FLAGS X Y / wheel FLAGS DELTA X Y / key CODE
//     boxes                          the message boxes since the control was made, each its text; every box is answered at once
//     end                            closes the control
//     table                          "@member KIND NAME DISPID INDEXED RESULT DIRECTION..." and "@enum NAME VALUENAME VALUE..."
//     page                           the code page of this process
//
// Answers begin with "@ok" or "@error". While a call runs, "@event NAME value..." tells an event; what follows until the line
// "return" are calls of its handler. Lines without "@" are remarks.
#include <cstdio>
#include <iostream>
#include <memory>

#include "control/automation/table.h"
#include "tests/ocx/container.h"
#include "tests/ocx_bridge/tokens.h"

namespace orvane::test {
namespace {

void Say(const std::string& line) { std::cout << line << '\n' << std::flush; }

class Bridge {
public:
    /// Until the input ends, or at the word `last`.
    void Serve(const std::string& last) {
        std::string line;
        while (std::getline(std::cin, line)) {
            if (!line.empty() && line.back() == '\r') line.pop_back();
            if (line == last) return;
            Say(Answer(line));
        }
    }

private:
    std::string Answer(const std::string& line) {
        std::istringstream words(line);
        std::string verb;
        words >> verb;
        if (verb == "new") return New(words);
        if (verb == "table") return Table();
        if (verb == "page") return "@ok i" + std::to_string(GetACP());
        if (form_ == nullptr || form_->control.Get() == nullptr) return "@error no control";
        if (verb == "call") return Call(words);
        if (verb == "paint") return Paint();
        if (verb == "boxes") return Boxes();
        if (verb == "end") return End();
        return Input(verb, words);
    }

    static std::string Table() {
        constexpr const char* kKinds[] = {"property", "method", "event"};
        constexpr const char* kDirections[] = {"in", "out", "inout"};
        for (const auto members : {Surface().Properties(), Surface().Methods(), Surface().Events()}) {
            for (const Member& member : members) {
                std::string line = std::string("@member ") + kKinds[static_cast<std::size_t>(member.kind)] + " " + member.name +
                                   " " + std::to_string(member.dispid) + (member.indexed ? " 1 " : " 0 ") + member.result.name;
                for (const Arg& arg : member.args)
                    line += std::string(" ") + kDirections[static_cast<std::size_t>(arg.direction)];
                Say(line);
            }
        }
        for (const EnumRow& row : Surface().Enums()) {
            std::string line = std::string("@enum ") + row.name;
            for (const EnumValueRow& value : row.values)
                line += std::string(" ") + value.name + " " + std::to_string(value.value);
            Say(line);
        }
        return "@ok";
    }

    std::string New(std::istringstream& words) {
        int width = 0;
        int height = 0;
        words >> width >> height;
        boxesBefore_ = boxes_.Texts().size();
        form_ = std::make_unique<Container>(width, height);
        form_->listener.onEvent = [this](const HeardEvent& event) { Tell(event); };
        if (form_->Activate() != S_OK) return "@error no window";
        form_->Connect();
        return "@ok";
    }

    void Tell(const HeardEvent& event) {
        std::string line = "@event " + event.name;
        for (const Value& each : event.args) WriteValue(each.v, line);
        Say(line);
        Serve("return");
        form_->listener.events.clear();
    }

    std::string Paint() {
        const Deadline deadline("a paint");
        RedrawWindow(form_->ControlWindow(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        return "@ok";
    }

    std::string Boxes() const {
        std::string line = "@ok";
        for (std::size_t i = boxesBefore_; i < boxes_.Texts().size(); ++i) WriteValue(Value(boxes_.Texts()[i]).v, line);
        return line;
    }

    std::string End() {
        form_.reset();
        return "@ok";
    }

    std::string Input(const std::string& verb, std::istringstream& words) {
        long numbers[4] = {};
        for (long& each : numbers) words >> each;
        if (verb == "resize") {
            SetWindowPos(form_->form, nullptr, 0, 0, static_cast<int>(numbers[0]), static_cast<int>(numbers[1]),
                         SWP_NOMOVE | SWP_NOZORDER);
            form_->Resize(static_cast<int>(numbers[0]), static_cast<int>(numbers[1]));
        } else if (verb == "mouse") {
            form_->Mouse(static_cast<UINT>(numbers[0]), static_cast<WPARAM>(numbers[1]), static_cast<int>(numbers[2]),
                         static_cast<int>(numbers[3]));
        } else if (verb == "wheel") {
            POINT screen{numbers[2], numbers[3]};
            ClientToScreen(form_->ControlWindow(), &screen);
            form_->Mouse(WM_MOUSEWHEEL, MAKEWPARAM(numbers[0], static_cast<WORD>(numbers[1])), screen.x, screen.y);
        } else if (verb == "key") {
            form_->Key(static_cast<WPARAM>(numbers[0]));
        } else {
            return "@error unknown word";
        }
        return "@ok";
    }

    std::string Call(std::istringstream& words) {
        std::string name;
        std::string kind;
        words >> name >> kind;
        const Member* member = Surface().Find(name);
        if (member == nullptr) return "@error unknown member";
        const bool put = kind == "put";
        std::vector<Value> places(member->args.size());
        std::vector<Value> args;
        for (std::size_t i = 0; i < member->args.size(); ++i) {
            args.push_back(member->args[i].IsInput() ? ReadValue(words) : Ref(places[i].v));
        }
        if (put) args.push_back(ReadValue(words));
        Value result;
        const HRESULT done =
            form_->control.Try(std::wstring(name.begin(), name.end()).c_str(),
                               put ? DISPATCH_PROPERTYPUT : DISPATCH_METHOD | DISPATCH_PROPERTYGET, args, &result);
        if (FAILED(done)) {
            char words_[40];
            std::snprintf(words_, sizeof words_, "@error %08lx", static_cast<unsigned long>(done));
            return words_;
        }
        std::string line = "@ok";
        if (!put && member->result.kind != ValueKind::None) WriteValue(result.v, line);
        for (std::size_t i = 0; i < member->args.size(); ++i) {
            if (member->args[i].IsOutput()) WriteValue(places[i].v, line);
        }
        return line;
    }

    BoxCloser boxes_;
    std::size_t boxesBefore_ = 0;
    std::unique_ptr<Container> form_;
};

}  // namespace
}  // namespace orvane::test

int main() {
    OleInitialize(nullptr);
    {
        orvane::test::Bridge bridge;
        bridge.Serve("quit");
    }
    OleUninitialize();
    return 0;
}
