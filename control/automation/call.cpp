#include "control/automation/call.h"

#include "platform/variant_array.h"

namespace orvane {

bool Input::Convert(const Variant& value, const ValueType& type, std::size_t cut_bytes) {
    switch (type.kind) {
        case ValueKind::None:
            return false;
        case ValueKind::Bool: {
            bool truth = false;
            if (!value.ToBool(truth)) return false;
            i4 = truth ? 1 : 0;
            return true;
        }
        case ValueKind::I2: {
            std::int16_t narrow = 0;
            if (!value.ToI2(narrow)) return false;
            i4 = narrow;
            return true;
        }
        case ValueKind::I4:
            return value.ToI4(i4);
        case ValueKind::R8:
            return value.ToR8(r8);
        case ValueKind::Bstr:
            if (!value.ToBytes(bytes)) return false;
            if (const std::size_t zero = bytes.find('\0'); zero != std::string::npos) bytes.resize(zero);
            if (cut_bytes != 0 && bytes.size() > cut_bytes) bytes.resize(cut_bytes);
            return true;
        case ValueKind::Variant:
            return true;
    }
    return false;
}

Call::Call(COrvane4Ctrl& control, const Member& called, InvokeKind callKind, std::span<Argument> arguments, const Inputs& inputs)
    : ctrl(control), member(called), kind(callKind), result(called.failure), args_(arguments), inputs_(inputs) {}

const Variant& Call::Value(std::size_t i) const {
    static const Variant kNothing;
    return i < args_.size() ? args_[i].value : kNothing;
}

std::span<const double> Call::R8In(std::size_t i) const {
    if (i >= args_.size() || i >= member.args.size()) return {};
    const auto* values = std::get_if<std::vector<double>>(&args_[i].buffer);
    if (values == nullptr) return {};
    const Arg& arg = member.args[i];
    if (arg.length != LengthRule::CountArg) return *values;
    const std::int32_t count = I4(arg.countArg);
    return count <= 0 ? std::span<const double>()
                      : std::span(*values).first((std::min)(values->size(), static_cast<std::size_t>(count)));
}

void Call::Set(std::size_t i, Variant v) {
    if (i >= args_.size()) return;
    args_[i].value = std::move(v);
    args_[i].written = true;
    args_[i].count = 1;
}

void Call::SetI4Array(std::size_t i, std::span<const std::int32_t> values) {
    Set(i, MakeArray(std::vector<std::int32_t>(values.begin(), values.end())));
}

template <class T>
std::span<T> Call::Out(std::size_t i, std::size_t count) {
    if (i >= args_.size()) return {};
    auto* values = std::get_if<std::vector<T>>(&args_[i].buffer);
    if (values == nullptr || values->size() < count) return {};
    args_[i].written = true;
    args_[i].count = count;
    return std::span<T>(*values).first(count);
}

template std::span<std::int16_t> Call::Out(std::size_t, std::size_t);
template std::span<std::int32_t> Call::Out(std::size_t, std::size_t);
template std::span<double> Call::Out(std::size_t, std::size_t);
template std::span<std::string> Call::Out(std::size_t, std::size_t);

}  // namespace orvane
