// Automation values as they cross the surface: scalars, byte strings in code page 932, and safe arrays with bounds.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace orvane {

/// Type marks of the automation types, with the platform's values.
enum class Vt : std::uint16_t {
    Empty = 0,
    I2 = 2,
    I4 = 3,
    R4 = 4,
    R8 = 5,
    Bstr = 8,
    Bool = 11,
    Variant = 12,
    ArrayFlag = 0x2000
};

class Variant;

struct ArrayBound {
    std::int32_t lower = 0;
    std::int64_t count = 0;
    friend bool operator==(const ArrayBound&, const ArrayBound&) = default;
};

/// A safe array: elements of one type, first dimension running fastest.
struct SafeArray {
    std::vector<ArrayBound> bounds;  ///< one per dimension; GetDim is its size
    /// The alternative held is the element type: I2, I4, R4, R8, BOOL (0 or -1), BSTR, VARIANT.
    std::variant<std::vector<std::int16_t>, std::vector<std::int32_t>, std::vector<float>, std::vector<double>, std::vector<bool>,
                 std::vector<std::string>, std::vector<Variant>>
        data;

    Vt ElementType() const;
    std::size_t Size() const;
};

/// One automation value. Copies of an array share it; arrays are not changed after they are made.
class Variant {
public:
    Variant() = default;
    explicit Variant(std::int16_t v) : value_(v) {}
    explicit Variant(std::int32_t v) : value_(v) {}
    explicit Variant(float v) : value_(v) {}
    explicit Variant(double v) : value_(v) {}
    explicit Variant(bool v) : value_(v) {}
    explicit Variant(std::string v) : value_(std::move(v)) {}
    explicit Variant(const char* v) : value_(std::string(v)) {}
    explicit Variant(std::shared_ptr<const SafeArray> v) : value_(std::move(v)) {}

    /// The type mark; for an array its element type with ArrayFlag.
    Vt Type() const;
    bool IsEmpty() const { return value_.index() == 0; }
    bool IsArray() const;

    /// Conversions by the rules of the automation types: numbers round half to even to integers, texts are read as numbers.
    /// False when there is no conversion or the value does not fit; `out` then stays.
    bool ToI4(std::int32_t& out) const;
    bool ToI2(std::int16_t& out) const;
    bool ToR8(double& out) const;
    bool ToR4(float& out) const;
    bool ToBool(bool& out) const;  ///< any number that is not 0 is true
    bool ToBytes(std::string& out) const;

    /// The array held, or null.
    const SafeArray* Array() const;

private:
    std::variant<std::monostate, std::int16_t, std::int32_t, float, double, bool, std::string, std::shared_ptr<const SafeArray>>
        value_;
};

}  // namespace orvane
