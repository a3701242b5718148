#include "hosts/qt/qt_values.h"

#include <QByteArray>
#include <QVariantList>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include "control/automation/invoke.h"
#include "platform/cp932.h"
#include "platform/variant_array.h"

namespace orvane {

namespace {

bool FitsI4(qlonglong v) {
    return v >= std::numeric_limits<std::int32_t>::min() && v <= std::numeric_limits<std::int32_t>::max();
}

/// As late binding does it: what needs more than 32 bits travels as a double.
Variant FromWhole(qlonglong v) { return FitsI4(v) ? Variant(static_cast<std::int32_t>(v)) : Variant(static_cast<double>(v)); }

template <class T>
bool AllAre(const QVariantList& list, QMetaType::Type type, std::vector<T>& out) {
    for (const QVariant& item : list) {
        if (item.typeId() != type) return false;
        out.push_back(item.value<T>());
    }
    return !list.isEmpty();
}

bool FromList(const QVariantList& list, Variant& out) {
    std::vector<double> numbers;
    if (AllAre(list, QMetaType::Double, numbers)) {
        out = MakeArray(std::move(numbers));
        return true;
    }
    std::vector<std::int32_t> wholes;
    if (AllAre(list, QMetaType::Int, wholes)) {
        out = MakeArray(std::move(wholes));
        return true;
    }
    std::vector<Variant> values;
    for (const QVariant& item : list) {
        if (!ToVariant(item, values.emplace_back())) return false;
    }
    out = MakeArray(std::move(values));
    return true;
}

bool FillBuffer(const Arg& arg, const QVariant& value, Buffer& buffer) {
    if (!value.canConvert<QVariantList>()) return false;
    std::vector<double> numbers;
    for (const QVariant& item : value.toList()) {
        bool good = false;
        numbers.push_back(item.toDouble(&good));
        if (!good) return false;
    }
    if (arg.type.kind != ValueKind::R8) return false;  // no member takes other numbers behind a pointer
    buffer = std::move(numbers);
    return true;
}

template <class T>
QVariant ToQtElement(const T& element) {
    if constexpr (std::is_same_v<T, std::string>) {
        return ToQString(element);
    } else {
        return QVariant::fromValue(element);
    }
}

}  // namespace

QString ToQString(std::string_view bytes) { return QString::fromStdString(DecodeCp932Shown(bytes)); }

bool ToVariant(const QVariant& value, Variant& out) {
    switch (value.typeId()) {
        case QMetaType::UnknownType:
            out = {};
            return true;
        case QMetaType::Bool:
            out = Variant(value.toBool());
            return true;
        case QMetaType::Short:
            out = Variant(value.value<std::int16_t>());
            return true;
        case QMetaType::Float:
            out = Variant(value.toFloat());
            return true;
        case QMetaType::Double:
            out = Variant(value.toDouble());
            return true;
        case QMetaType::ULongLong:
            out = Variant(value.toDouble());
            if (value.toULongLong() <= std::numeric_limits<std::int32_t>::max()) out = FromWhole(value.toLongLong());
            return true;
        case QMetaType::QByteArray:
            out = Variant(value.toByteArray().toStdString());
            return true;
        case QMetaType::QString: {
            const std::optional<std::string> bytes = EncodeCp932(value.toString().toStdString());
            if (!bytes) return false;
            out = Variant(*bytes);
            return true;
        }
        default:
            break;
    }
    if (value.canConvert<qlonglong>()) {  // whole numbers of every width, and enumerations
        out = FromWhole(value.toLongLong());
        return true;
    }
    return value.canConvert<QVariantList>() && FromList(value.toList(), out);
}

QVariant ToQt(const Variant& value) {
    if (const SafeArray* array = value.Array()) {
        QVariantList list;
        for (std::size_t i = 0; i < array->Size(); ++i) {
            Variant element;
            GetElement(*array, i, element);
            list.append(ToQt(element));
        }
        return list;
    }
    switch (value.Type()) {
        case Vt::Bool: {
            bool v = false;
            value.ToBool(v);
            return v;
        }
        case Vt::I2:
        case Vt::I4: {
            std::int32_t v = 0;
            value.ToI4(v);
            return v;
        }
        case Vt::R4:
        case Vt::R8: {
            double v = 0;
            value.ToR8(v);
            return v;
        }
        case Vt::Bstr: {
            std::string bytes;
            value.ToBytes(bytes);
            return ToQString(bytes);
        }
        default:
            return {};
    }
}

QVariant ToQtResult(const ValueType& type, const Variant& value) {
    std::int32_t color = 0;
    if (type.name == "OLE_COLOR" && value.ToI4(color)) return static_cast<std::uint32_t>(color);
    return ToQt(value);
}

bool SetInput(const Arg& arg, const QVariant& value, Argument& out) {
    if (arg.IsBuffer()) return FillBuffer(arg, value, out.buffer);
    if (!ToVariant(value, out.value)) return false;
    out.value = WrapUnsigned(arg.type, out.value);
    return true;
}

QVariant GetOutput(const Arg& arg, const Argument& out) {
    if (!out.written) return {};
    if (!arg.IsBuffer()) return ToQtResult(arg.type, out.value);
    QVariantList list;
    const auto append = [&](const auto& buffer) {
        if constexpr (!std::is_same_v<std::decay_t<decltype(buffer)>, std::monostate>) {
            for (std::size_t i = 0; i < out.count && i < buffer.size(); ++i) list.append(ToQtElement(buffer[i]));
        }
    };
    std::visit(append, out.buffer);
    return list;
}

}  // namespace orvane
