// Late-bound calls: the one way in which a host reaches a member of the control.
//
// Nothing that a host passes can make a call throw or write beyond a buffer. What is the caller's error (an unknown name, a
// wrong number of arguments, a value that does not convert, a short buffer) comes back as a status, and nothing was done then.
// What fails inside a member is no error here: the status is Ok and the value is the member's failure value.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "control/automation/call.h"
#include "control/automation/table.h"

namespace orvane {

enum class InvokeStatus : std::uint8_t {
    Ok,
    UnknownMember,   ///< no property or method has that name or dispid
    BadArgCount,     ///< all declared arguments must be passed, outputs too; a write passes its value last
    TypeMismatch,    ///< the argument at `argIndex` does not convert to its type, or its buffer has another type
    NotSupported,    ///< a write of a read-only property or of a method
    BufferTooShort,  ///< the buffer of the argument at `argIndex` holds fewer values than BufferLength tells
};

struct InvokeResult {
    InvokeStatus status = InvokeStatus::Ok;
    std::size_t argIndex = 0;
    Variant value;  ///< empty for members without result, and when the status is not Ok
};

/// Calls `member` of Surface(). Method and Get do the same for all members; Put writes a property.
///
/// `args` holds an Argument for each Member::args in order; for inputs `value` (or `buffer`, Arg::IsBuffer) is set, for buffers
/// out `buffer` has the right type (MakeBuffer) and at least BufferLength values. A write passes the value as one more argument
/// behind those. Outputs come back in the same arguments, see Argument::written.
InvokeResult Invoke(COrvane4Ctrl& ctrl, const Member& member, InvokeKind kind, std::span<Argument> args);
/// The same by name, without regard to ASCII case.
InvokeResult Invoke(COrvane4Ctrl& ctrl, std::string_view name, InvokeKind kind, std::span<Argument> args);
InvokeResult Invoke(COrvane4Ctrl& ctrl, std::int32_t dispid, InvokeKind kind, std::span<Argument> args);

/// How many values the buffer of argument `argIndex` must hold for a call with these arguments; 0 for an item that is missing and
/// for a negative count. Arguments that are no buffer: 1 for an output, 0 for an input. Only the inputs in `args` are looked at.
std::size_t BufferLength(COrvane4Ctrl& ctrl, const Member& member, std::size_t argIndex, std::span<const Argument> args);

/// A buffer of the argument's element type with `count` zeros or empty texts; no buffer when its memory cannot be had or the
/// argument is none.
Buffer MakeBuffer(const Arg& arg, std::size_t count);
/// Gives every output behind a bare pointer its buffer. REQUIRES: an Argument for each Member::args, with the inputs set.
void MakeOutBuffers(COrvane4Ctrl& ctrl, const Member& member, std::span<Argument> args);

/// Colours and handles have all 32 bits; the upper half is written as a negative number by some hosts and as a large one by
/// others. For such a type a double that rounds to a number from -2^31 to 2^32 - 1, halves to the even one as everywhere, becomes
/// those 32 bits; anything else stays.
Variant WrapUnsigned(const ValueType& type, const Variant& value);

}  // namespace orvane
