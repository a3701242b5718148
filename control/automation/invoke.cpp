#include "control/automation/invoke.h"

#include <exception>

#include "control/automation/arrays.h"
#include "platform/trace.h"

namespace orvane {

namespace {

std::size_t AsSize(std::int64_t count) { return count > 0 ? static_cast<std::size_t>(count) : 0; }

/// How many values stand behind the pointer, for inputs already converted.
std::size_t LengthOf(COrvane4Ctrl& ctrl, const Arg& arg, const Inputs& inputs) {
    switch (arg.length) {
        case LengthRule::One:
            return arg.IsOutput() ? 1 : 0;
        case LengthRule::Points:
            return AsSize(ctrl.store.PntCnt(inputs[0].bytes, inputs[1].i4, inputs[2].i4));
        case LengthRule::Active: {
            // The surface itself tells this count, so that buffers and their filling can never disagree.
            std::int32_t count = 0;
            const InvokeResult told = Invoke(ctrl, "GetDigActDatCnt", InvokeKind::Method, {});
            return told.value.ToI4(count) ? AsSize(count) : 0;
        }
        case LengthRule::LineTypes:
            return ctrl.store.lineTypes.size();
        case LengthRule::CountArg:
            return AsSize(inputs[arg.countArg].i4);
    }
    return 0;
}

template <class T>
bool HasType(const Buffer& buffer, std::size_t& size) {
    const auto* values = std::get_if<std::vector<T>>(&buffer);
    if (values == nullptr) return false;
    size = values->size();
    return true;
}

/// False when the buffer is not of the argument's element type.
bool BufferSize(const Arg& arg, const Buffer& buffer, std::size_t& size) {
    switch (arg.type.kind) {
        case ValueKind::I2:
            return HasType<std::int16_t>(buffer, size);
        case ValueKind::I4:
            return HasType<std::int32_t>(buffer, size);
        case ValueKind::R8:
            return HasType<double>(buffer, size);
        case ValueKind::Bstr:
            return HasType<std::string>(buffer, size);
        default:
            return false;
    }
}

InvokeResult Refused(InvokeStatus status, std::size_t argIndex = 0) {
    InvokeResult refused;
    refused.status = status;
    refused.argIndex = argIndex;
    return refused;
}

/// Converts the inputs and holds the buffers to their lengths. Nothing was done yet when this refuses.
InvokeResult CheckArgs(COrvane4Ctrl& ctrl, const Member& member, std::span<const Argument> args, Inputs& inputs) {
    for (std::size_t i = 0; i < args.size(); ++i) {
        const bool isPutValue = i == member.args.size();
        if (!isPutValue && (member.args[i].IsBuffer() || !member.args[i].IsInput())) continue;
        const ValueType& type = isPutValue ? member.result : member.args[i].type;
        const std::size_t cut_bytes = isPutValue ? 0 : member.args[i].cut_bytes;
        if (!inputs[i].Convert(args[i].value, type, cut_bytes)) return Refused(InvokeStatus::TypeMismatch, i);
    }
    for (std::size_t i = 0; i < member.args.size(); ++i) {
        const Arg& arg = member.args[i];
        if (!arg.IsBuffer()) continue;
        std::size_t size = 0;
        if (!BufferSize(arg, args[i].buffer, size)) return Refused(InvokeStatus::TypeMismatch, i);
        if (size < LengthOf(ctrl, arg, inputs)) return Refused(InvokeStatus::BufferTooShort, i);
    }
    return {};
}

InvokeResult InvokeChecked(COrvane4Ctrl& ctrl, const Member& member, InvokeKind kind, std::span<Argument> args) {
    const bool put = kind == InvokeKind::Put;
    const bool isProperty = member.kind == MemberKind::Property;
    if (member.kind == MemberKind::Event) return Refused(InvokeStatus::UnknownMember);
    if (put && (isProperty ? member.readOnly : !member.indexed)) return Refused(InvokeStatus::NotSupported);
    if (args.size() != member.args.size() + (put ? 1 : 0) || args.size() > kMaxArgs) return Refused(InvokeStatus::BadArgCount);

    Inputs inputs;
    InvokeResult done = CheckArgs(ctrl, member, args, inputs);
    if (done.status != InvokeStatus::Ok) return done;
    for (Argument& argument : args) {
        argument.written = false;
        argument.count = 0;
    }
    Call call(ctrl, member, kind, args, inputs);
    const Worker worker = put && isProperty ? member.put : member.worker;
    if (worker != nullptr) worker(call);
    if (!put && member.result.kind != ValueKind::None) done.value = std::move(call.result);
    return done;
}

}  // namespace

InvokeResult Invoke(COrvane4Ctrl& ctrl, const Member& member, InvokeKind kind, std::span<Argument> args) {
    const COrvane4Ctrl::Scope scope(ctrl);
    try {
        return InvokeChecked(ctrl, member, kind, args);
    } catch (...) {
        // The surface has no way to tell of an exception: what breaks off has failed like any other call.
        Trace("throw Exception !!\n");
    }
    InvokeResult failed;
    if (kind != InvokeKind::Put) failed.value = member.failure;
    return failed;
}

InvokeResult Invoke(COrvane4Ctrl& ctrl, std::string_view name, InvokeKind kind, std::span<Argument> args) {
    const Member* member = Surface().Find(name);
    return member == nullptr ? Refused(InvokeStatus::UnknownMember) : Invoke(ctrl, *member, kind, args);
}

InvokeResult Invoke(COrvane4Ctrl& ctrl, std::int32_t dispid, InvokeKind kind, std::span<Argument> args) {
    const Member* member = Surface().Find(dispid);
    return member == nullptr ? Refused(InvokeStatus::UnknownMember) : Invoke(ctrl, *member, kind, args);
}

std::size_t BufferLength(COrvane4Ctrl& ctrl, const Member& member, std::size_t argIndex, std::span<const Argument> args) {
    if (argIndex >= member.args.size() || args.size() > kMaxArgs) return 0;
    try {
        Inputs inputs;
        for (std::size_t i = 0; i < args.size() && i < member.args.size(); ++i) {
            const Arg& arg = member.args[i];
            if (!arg.IsInput() || arg.IsBuffer()) continue;
            if (!inputs[i].Convert(args[i].value, arg.type, arg.cut_bytes)) return 0;
        }
        return LengthOf(ctrl, member.args[argIndex], inputs);
    } catch (...) {
        return 0;
    }
}

Buffer MakeBuffer(const Arg& arg, std::size_t count) {
    try {
        if (!arg.IsBuffer()) return {};
        switch (arg.type.kind) {
            case ValueKind::I2:
                return std::vector<std::int16_t>(count);
            case ValueKind::I4:
                return std::vector<std::int32_t>(count);
            case ValueKind::R8:
                return std::vector<double>(count);
            case ValueKind::Bstr:
                return std::vector<std::string>(count);
            default:
                return {};
        }
    } catch (const std::exception&) {
        return {};
    }
}

void MakeOutBuffers(COrvane4Ctrl& ctrl, const Member& member, std::span<Argument> args) {
    for (std::size_t i = 0; i < member.args.size(); ++i) {
        const Arg& arg = member.args[i];
        if (arg.IsBuffer() && !arg.IsInput()) args[i].buffer = MakeBuffer(arg, BufferLength(ctrl, member, i, args));
    }
}

Variant WrapUnsigned(const ValueType& type, const Variant& value) {
    std::uint32_t bits = 0;
    const bool isUnsigned = type.name == "OLE_COLOR" || type.name == "OLE_HANDLE";
    if (isUnsigned && value.Type() == Vt::R8 && ToBits(value, bits)) return Variant(static_cast<std::int32_t>(bits));
    return value;
}

}  // namespace orvane
