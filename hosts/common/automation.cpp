#include "hosts/common/automation.h"

#include <stdexcept>
#include <string>
#include <vector>

#include "control/automation/invoke.h"

namespace orvane {

namespace {

Variant InvokeByName(COrvane4Ctrl& ctrl, std::string_view name, InvokeKind kind, std::initializer_list<Variant> inputs) {
    std::vector<Argument> args(inputs.size());
    std::size_t i = 0;
    for (const Variant& input : inputs) args[i++].value = input;
    InvokeResult result = Invoke(ctrl, name, kind, args);
    if (result.status != InvokeStatus::Ok) throw std::logic_error("automation call of " + std::string(name) + " is wrong");
    return std::move(result.value);
}

}  // namespace

Variant Automation::Call(std::string_view name, std::initializer_list<Variant> inputs) const {
    return InvokeByName(ctrl_, name, InvokeKind::Method, inputs);
}

void Automation::Put(std::string_view property, const Variant& value) const {
    InvokeByName(ctrl_, property, InvokeKind::Put, {value});
}

Variant Automation::Get(std::string_view property) const { return InvokeByName(ctrl_, property, InvokeKind::Get, {}); }

double Automation::GetR8(std::string_view property) const {
    double value = 0;
    Get(property).ToR8(value);
    return value;
}

std::int32_t Automation::GetI4(std::string_view property) const {
    std::int32_t value = 0;
    Get(property).ToI4(value);
    return value;
}

}  // namespace orvane
