// The control as a host program calls it: members by name, values that convert.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "control/ctrl.h"
#include "platform/variant.h"

namespace orvane {

/// A wrong name or a wrong argument is an error of the program and throws std::logic_error; a member that fails answers its
/// failure value. The control must outlive it.
class Automation {
public:
    explicit Automation(COrvane4Ctrl& ctrl) : ctrl_(ctrl) {}

    /// Calls a method that has inputs only.
    Variant Call(std::string_view name, std::initializer_list<Variant> inputs = {}) const;
    void Put(std::string_view property, const Variant& value) const;
    Variant Get(std::string_view property) const;
    double GetR8(std::string_view property) const;
    std::int32_t GetI4(std::string_view property) const;

private:
    COrvane4Ctrl& ctrl_;
};

}  // namespace orvane
