// One call of a member as its worker sees it: inputs converted to their declared types, outputs by position, the result.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "control/automation/table.h"
#include "control/ctrl.h"
#include "platform/variant.h"

namespace orvane {

/// The values behind a bare pointer, sized by the host: BufferLength (invoke.h) tells how many there must be.
using Buffer = std::variant<std::monostate, std::vector<std::int16_t>, std::vector<std::int32_t>, std::vector<double>,
                            std::vector<std::string>>;

/// One argument between a host and a call. All arguments of a member are passed, outputs too, in their declared order.
struct Argument {
    Variant value;          ///< in: what the host passes. After the call, for an output that is one value: what was written
    Buffer buffer;          ///< for Arg::IsBuffer: sized by the host, read or written by the call
    bool written = false;   ///< after the call: the output holds something. False: it was left untouched
    std::size_t count = 0;  ///< after the call: how many values of `buffer` were written, from the first
};

enum class InvokeKind : std::uint8_t { Method, Get, Put };

/// One input after conversion to its declared type.
struct Input {
    std::int32_t i4 = 0;
    double r8 = 0;
    std::string bytes;

    /// False, with nothing changed, when `value` does not convert to `type`. Truth becomes 1, a text ends at its first 0 byte and
    /// is then cut to `cut_bytes` (0: not at all). A variant is not converted.
    bool Convert(const Variant& value, const ValueType& type, std::size_t cut_bytes);
};
using Inputs = std::array<Input, kMaxArgs>;

class Call {
public:
    /// Made by Invoke, which has checked and converted the arguments.
    Call(COrvane4Ctrl& control, const Member& called, InvokeKind callKind, std::span<Argument> arguments, const Inputs& inputs);
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;

    COrvane4Ctrl& ctrl;
    const Member& member;   ///< which of two twins was called
    const InvokeKind kind;  ///< Put for a write; its value is the last input

    CDigMem& Store() { return ctrl.store; }
    /// Number of arguments that were passed, outputs included, and the value of a write.
    std::size_t ArgCnt() const { return args_.size(); }

    // Inputs by position. A position of another type reads as 0 or as an empty text.
    std::int32_t I4(std::size_t i) const {
        return i < kMaxArgs ? inputs_[i].i4 : 0;
    }  ///< long, short, colour, handle, enumeration
    std::int16_t I2(std::size_t i) const { return static_cast<std::int16_t>(I4(i)); }
    std::uint32_t Color(std::size_t i) const { return static_cast<std::uint32_t>(I4(i)); }
    std::int32_t Bool01(std::size_t i) const { return I4(i); }  ///< 0 or 1, whatever true was at the border
    bool Bool(std::size_t i) const { return I4(i) != 0; }
    double R8(std::size_t i) const { return i < kMaxArgs ? inputs_[i].r8 : 0; }
    /// Code page 932 bytes up to the first 0 byte, cut as the signature tells. Valid as long as the call.
    std::string_view Bytes(std::size_t i) const { return i < kMaxArgs ? std::string_view(inputs_[i].bytes) : std::string_view(); }
    /// A variant as it came; arrays are read by arrays.h.
    const Variant& Value(std::size_t i) const;
    /// Values behind a bare pointer in, as many as the signature's rule tells.
    std::span<const double> R8In(std::size_t i) const;

    // Outputs by position; each marks its argument as written.
    void SetI2(std::size_t i, std::int16_t v) { Set(i, Variant(v)); }
    void SetI4(std::size_t i, std::int32_t v) { Set(i, Variant(v)); }
    void SetR8(std::size_t i, double v) { Set(i, Variant(v)); }
    void SetBool(std::size_t i, bool v) { Set(i, Variant(v)); }
    void SetBytes(std::size_t i, std::string_view v) { Set(i, Variant(std::string(v))); }
    /// A variant out receives a new one-dimensional array of longs, from 0.
    void SetI4Array(std::size_t i, std::span<const std::int32_t> values);

    // Buffers to write: exactly `count` values, or none when the host's buffer is shorter or of another type.
    std::span<std::int16_t> I2Out(std::size_t i, std::size_t count) { return Out<std::int16_t>(i, count); }
    std::span<std::int32_t> I4Out(std::size_t i, std::size_t count) { return Out<std::int32_t>(i, count); }
    std::span<double> R8Out(std::size_t i, std::size_t count) { return Out<double>(i, count); }
    std::span<std::string> BytesOut(std::size_t i, std::size_t count) { return Out<std::string>(i, count); }

    // The result. Without one of these a member answers its failure value.
    void ReturnBool(bool v) { result = Variant(v); }
    void ReturnI2(std::int16_t v) { result = Variant(v); }
    void ReturnI4(std::int32_t v) { result = Variant(v); }
    void ReturnR8(double v) { result = Variant(v); }
    void ReturnBytes(std::string_view v) { result = Variant(std::string(v)); }
    void ReturnFailure() { result = member.failure; }

    Variant result;

private:
    void Set(std::size_t i, Variant v);
    template <class T>
    std::span<T> Out(std::size_t i, std::size_t count);

    std::span<Argument> args_;
    const Inputs& inputs_;
};

}  // namespace orvane
