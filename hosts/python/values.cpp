#include "hosts/python/values.h"

#include <pybind11/numpy.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "control/automation/invoke.h"
#include "platform/cp932.h"
#include "platform/variant_array.h"

namespace orvane::python {

namespace {

[[noreturn]] void RaiseType(const std::string& words) { throw py::type_error(words); }

bool IsText(const py::handle& value) { return py::isinstance<py::str>(value) || py::isinstance<py::bytes>(value); }

bool IsSequence(const py::handle& value) { return py::isinstance<py::sequence>(value) && !IsText(value); }

std::vector<ArrayBound> BoundsOf(const py::array& array) {
    std::vector<ArrayBound> bounds;
    for (py::ssize_t i = 0; i < array.ndim(); ++i) bounds.push_back({0, array.shape(i)});
    return bounds;
}

/// The elements in the order of a safe array: the first dimension runs fastest.
template <class Element, class Stored>
Variant ArrayOf(const py::array& given) {
    const auto array = py::array_t<Element, py::array::f_style | py::array::forcecast>::ensure(given);
    std::vector<Stored> values;
    values.reserve(static_cast<std::size_t>(array.size()));
    for (py::ssize_t i = 0; i < array.size(); ++i) values.push_back(static_cast<Stored>(array.data()[i]));
    return MakeArray(std::move(values), BoundsOf(given));
}

Variant FromNumpy(const py::array& array) {
    const py::dtype type = array.dtype();
    const char kind = type.kind();
    const auto size = type.itemsize();
    if (kind == 'f' && size == 8) return ArrayOf<double, double>(array);
    if (kind == 'f' && size == 4) return ArrayOf<float, float>(array);
    if (kind == 'i' && size == 4) return ArrayOf<std::int32_t, std::int32_t>(array);
    if (kind == 'i' && size == 2) return ArrayOf<std::int16_t, std::int16_t>(array);
    if (kind == 'b') return ArrayOf<bool, bool>(array);
    RaiseType("no automation array has elements of the NumPy type " + std::string(py::str(py::handle(type))));
}

/// Counts a sequence inside a sequence against the interpreter's own limit, which a list that holds itself would pass.
class Nested {
public:
    Nested() {
        if (Py_EnterRecursiveCall(" while passing a value to the control") != 0) throw py::error_already_set();
    }
    ~Nested() { Py_LeaveRecursiveCall(); }
    Nested(const Nested&) = delete;
    Nested& operator=(const Nested&) = delete;
};

// Items of a sequence are held as objects and never as handles: many sequences make an item when it is asked for, and nobody
// else keeps it.

std::vector<Variant> Variants(const py::sequence& values) {
    const Nested nested;
    std::vector<Variant> out;
    out.reserve(values.size());
    for (const py::object item : values) out.push_back(ToVariant(item));
    return out;
}

/// Values of a forced array, taken row by row where there are two dimensions.
template <class Element, class Convert>
Variant Forced(const py::sequence& values, int dims, int lower, Convert convert) {
    std::vector<Element> out;
    std::vector<ArrayBound> bounds{{lower, static_cast<std::int64_t>(values.size())}};
    const bool rows = dims > 1 && values.size() > 0 && IsSequence(values[0]);
    if (rows) {
        const std::size_t width = py::len(values[0]);
        bounds.push_back({lower, static_cast<std::int64_t>(width)});
        for (const py::object row : values) {
            if (!IsSequence(row) || py::len(row) != width) throw py::value_error("the rows of an array have one length");
        }
        for (std::size_t column = 0; column < width; ++column) {
            for (const py::object row : values) out.push_back(convert(py::reinterpret_borrow<py::sequence>(row)[column]));
        }
    } else {
        for (const py::object item : values) out.push_back(convert(item));
    }
    while (static_cast<int>(bounds.size()) < dims) bounds.push_back({lower, 1});
    return MakeArray(std::move(out), std::move(bounds));
}

/// A Python integer as the narrowest automation value; beyond 32 bits it travels as a double, as late binding does it.
Variant FromInteger(const py::handle& value) {
    const py::int_ number = py::reinterpret_steal<py::int_>(PyNumber_Index(value.ptr()));
    if (!number) throw py::error_already_set();
    int overflow = 0;
    const long long v = PyLong_AsLongLongAndOverflow(number.ptr(), &overflow);
    if (overflow == 0 && v >= std::numeric_limits<std::int32_t>::min() && v <= std::numeric_limits<std::int32_t>::max()) {
        return Variant(static_cast<std::int32_t>(v));
    }
    const double d = PyLong_AsDouble(number.ptr());
    if (PyErr_Occurred() != nullptr) throw py::error_already_set();
    return Variant(d);
}

std::int32_t ToWhole(const py::handle& value) {
    std::int32_t whole = 0;
    if (!FromInteger(value).ToI4(whole)) throw py::value_error("an element of type I4 has 32 bits");
    return whole;
}

double ToDouble(const py::handle& value) {
    const double d = PyFloat_AsDouble(value.ptr());
    if (d == -1.0 && PyErr_Occurred() != nullptr) throw py::error_already_set();
    return d;
}

}  // namespace

std::string ToBytes(const py::handle& text) {
    if (py::isinstance<py::bytes>(text)) return text.cast<std::string>();
    Py_ssize_t size = 0;
    const char* utf8 = PyUnicode_AsUTF8AndSize(text.ptr(), &size);
    if (utf8 == nullptr) throw py::error_already_set();
    const std::optional<std::string> bytes = EncodeCp932(std::string_view(utf8, static_cast<std::size_t>(size)));
    if (!bytes) throw py::value_error("a character of the text is not in code page 932");
    return *bytes;
}

py::object FromBytes(const std::string& bytes) {
    const std::optional<std::string> text = DecodeCp932(bytes);
    if (!text) return py::bytes(bytes);
    return py::str(*text);
}

ForcedArray MakeForcedArray(const py::object& values, const std::string& type, int dims, int lower) {
    if (dims < 1 || dims > 8) throw py::value_error("an array has 1 to 8 dimensions");
    const auto sequence = py::sequence(values);
    const auto number = [](const py::handle& v) { return ToDouble(v); };
    if (type == "R8") return {Forced<double>(sequence, dims, lower, number)};
    if (type == "R4")
        return {Forced<float>(sequence, dims, lower, [](const py::handle& v) { return static_cast<float>(ToDouble(v)); })};
    if (type == "I4") return {Forced<std::int32_t>(sequence, dims, lower, [](const py::handle& v) { return ToWhole(v); })};
    if (type == "BOOL")
        return {Forced<bool>(sequence, dims, lower,
                             [](const py::handle& v) { return py::bool_(py::reinterpret_borrow<py::object>(v)).cast<bool>(); })};
    if (type == "BSTR") return {Forced<std::string>(sequence, dims, lower, [](const py::handle& v) { return ToBytes(v); })};
    if (type == "VARIANT") return {Forced<Variant>(sequence, dims, lower, [](const py::handle& v) { return ToVariant(v); })};
    throw py::value_error("the element type is one of R8, R4, I4, BOOL, BSTR, VARIANT");
}

Variant ToVariant(const py::handle& value) {
    if (value.is_none()) return {};
    if (py::isinstance<ForcedArray>(value)) return value.cast<const ForcedArray&>().array;
    if (py::isinstance<py::bool_>(value)) return Variant(value.cast<bool>());
    if (IsText(value)) return Variant(ToBytes(value));
    if (py::isinstance<py::float_>(value)) return Variant(value.cast<double>());
    if (py::isinstance<py::array>(value)) {
        const auto array = py::reinterpret_borrow<py::array>(value);
        if (array.ndim() > 0) return FromNumpy(array);
    }
    if (PyIndex_Check(value.ptr())) return FromInteger(value);
    if (IsSequence(value)) return MakeArray(Variants(py::reinterpret_borrow<py::sequence>(value)));
    if (PyNumber_Check(value.ptr()) != 0) return Variant(ToDouble(value));
    RaiseType("a value of the type " + std::string(py::str(py::type::handle_of(value))) + " cannot be passed to the control");
}

py::object FromVariant(const Variant& value) {
    if (const SafeArray* array = value.Array()) {
        py::list out;
        for (std::size_t i = 0; i < array->Size(); ++i) {
            Variant element;
            GetElement(*array, i, element);
            out.append(FromVariant(element));
        }
        return out;
    }
    switch (value.Type()) {
        case Vt::Bool: {
            bool v = false;
            value.ToBool(v);
            return py::bool_(v);
        }
        case Vt::I2:
        case Vt::I4: {
            std::int32_t v = 0;
            value.ToI4(v);
            return py::int_(v);
        }
        case Vt::R4:
        case Vt::R8: {
            double v = 0;
            value.ToR8(v);
            return py::float_(v);
        }
        case Vt::Bstr: {
            std::string v;
            value.ToBytes(v);
            return FromBytes(v);
        }
        default:
            return py::none();
    }
}

py::object FromResult(const ValueType& type, const Variant& value) {
    std::int32_t color = 0;
    if (type.name == "OLE_COLOR" && value.Type() == Vt::I4 && value.ToI4(color))
        return py::int_(static_cast<std::uint32_t>(color));
    return FromVariant(value);
}

void SetInput(const Arg& arg, const py::handle& value, Argument& out) {
    if (arg.IsBuffer()) {
        std::vector<double> numbers;
        for (const py::handle item : py::reinterpret_borrow<py::object>(value)) numbers.push_back(ToDouble(item));
        if (arg.type.kind == ValueKind::R8) {
            out.buffer = std::move(numbers);
        } else {
            out.buffer = std::vector<std::int32_t>(numbers.begin(), numbers.end());
        }
        return;
    }
    out.value = WrapUnsigned(arg.type, ToVariant(value));
}

py::object GetOutput(const Arg& arg, const Argument& out) {
    if (!out.written) return py::none();
    if (!arg.IsBuffer()) return FromResult(arg.type, out.value);
    py::list values;
    const std::size_t count = out.count;
    std::visit(
        [&](const auto& buffer) {
            if constexpr (!std::is_same_v<std::decay_t<decltype(buffer)>, std::monostate>) {
                for (std::size_t i = 0; i < count && i < buffer.size(); ++i) {
                    if constexpr (std::is_same_v<std::decay_t<decltype(buffer[i])>, std::string>) {
                        values.append(FromBytes(buffer[i]));
                    } else {
                        values.append(buffer[i]);
                    }
                }
            }
        },
        out.buffer);
    return values;
}

}  // namespace orvane::python
