// What a value of the automation table is when it arrives.
#pragma once

#include "control/automation/table.h"
#include "platform/variant.h"

namespace orvane {

inline Vt TypeOf(ValueKind kind) {
    switch (kind) {
        case ValueKind::Bool:
            return Vt::Bool;
        case ValueKind::I2:
            return Vt::I2;
        case ValueKind::I4:
            return Vt::I4;
        case ValueKind::R8:
            return Vt::R8;
        case ValueKind::Bstr:
            return Vt::Bstr;
        default:
            return Vt::Empty;
    }
}

}  // namespace orvane
