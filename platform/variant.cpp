#include "platform/variant.h"

#include <cmath>
#include <limits>

#include "platform/number_text.h"
#include "platform/to_int.h"

namespace orvane {

namespace {

template <class... Ts>
struct Overloaded : Ts... {
    using Ts::operator()...;
};
template <class... Ts>
Overloaded(Ts...) -> Overloaded<Ts...>;

// Half goes to the even neighbour whatever rounding mode the host has set.
double RoundHalfEven(double value) {
    const double below = std::floor(value);
    const double rest = value - below;
    const bool up = rest > 0.5 || (rest == 0.5 && std::fmod(below, 2.0) != 0);
    return up ? below + 1 : below;
}

template <class Int>
bool RoundInto(double value, Int& out) {
    const double rounded = RoundHalfEven(value);
    // Written so that NaN fails too.
    if (!(rounded >= (std::numeric_limits<Int>::min)() && rounded <= (std::numeric_limits<Int>::max)())) return false;
    out = static_cast<Int>(TruncToInt32(rounded));
    return true;
}

// "True" and "False" are the texts of the automation types in every language.
bool ReadTruth(std::string_view text, bool& out) {
    std::string lower(text);
    for (char& c : lower) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    if (lower != "true" && lower != "false") return false;
    out = lower == "true";
    return true;
}

}  // namespace

Vt SafeArray::ElementType() const {
    static constexpr Vt kTypes[] = {Vt::I2, Vt::I4, Vt::R4, Vt::R8, Vt::Bool, Vt::Bstr, Vt::Variant};
    return kTypes[data.index()];
}

std::size_t SafeArray::Size() const {
    return std::visit([](const auto& elements) { return elements.size(); }, data);
}

Vt Variant::Type() const {
    static constexpr Vt kTypes[] = {Vt::Empty, Vt::I2, Vt::I4, Vt::R4, Vt::R8, Vt::Bool, Vt::Bstr};
    const SafeArray* array = Array();
    if (array != nullptr) {
        return static_cast<Vt>(static_cast<std::uint16_t>(array->ElementType()) | static_cast<std::uint16_t>(Vt::ArrayFlag));
    }
    // A null pointer to an array holds nothing at all.
    return value_.index() < std::size(kTypes) ? kTypes[value_.index()] : Vt::Empty;
}

bool Variant::IsArray() const { return Array() != nullptr; }

const SafeArray* Variant::Array() const {
    const auto* held = std::get_if<std::shared_ptr<const SafeArray>>(&value_);
    return held == nullptr ? nullptr : held->get();
}

bool Variant::ToR8(double& out) const {
    return std::visit(Overloaded{
                          [&](std::monostate) { return out = 0, true; },
                          [&](bool v) { return out = v ? -1 : 0, true; },
                          [&](const std::string& v) { return ReadNumber(v, out); },
                          [&](const std::shared_ptr<const SafeArray>&) { return false; },
                          [&](auto v) { return out = static_cast<double>(v), true; },
                      },
                      value_);
}

bool Variant::ToI4(std::int32_t& out) const {
    double value = 0;  // every 32-bit integer passes through a double unharmed
    return ToR8(value) && RoundInto(value, out);
}

bool Variant::ToI2(std::int16_t& out) const {
    double value = 0;
    return ToR8(value) && RoundInto(value, out);
}

bool Variant::ToR4(float& out) const {
    double value = 0;
    if (!ToR8(value)) return false;
    const auto* already = std::get_if<float>(&value_);
    if (already == nullptr && std::fabs(value) > static_cast<double>((std::numeric_limits<float>::max)())) return false;
    out = already != nullptr ? *already : static_cast<float>(value);
    return true;
}

bool Variant::ToBool(bool& out) const {
    const auto* text = std::get_if<std::string>(&value_);
    if (text != nullptr && ReadTruth(*text, out)) return true;
    double value = 0;
    if (!ToR8(value)) return false;
    out = value != 0;
    return true;
}

bool Variant::ToBytes(std::string& out) const {
    return std::visit(Overloaded{
                          [&](std::monostate) { return out.clear(), true; },
                          [&](bool v) { return out = v ? "-1" : "0", true; },
                          [&](float v) { return NumberText(v, out); },
                          [&](double v) { return NumberText(v, out); },
                          [&](const std::string& v) { return out = v, true; },
                          [&](const std::shared_ptr<const SafeArray>&) { return false; },
                          [&](auto v) { return out = std::to_string(v), true; },
                      },
                      value_);
}

}  // namespace orvane
