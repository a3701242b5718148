#include "hosts/ocx/values.h"

#include <limits>

#include "hosts/ocx/safe_arrays.h"
#include "hosts/ocx/wide_text.h"

namespace orvane {

namespace {

constexpr int kLongestChain = 4;

Variant FromWhole(LONGLONG v) {
    const bool fits = v >= (std::numeric_limits<std::int32_t>::min)() && v <= (std::numeric_limits<std::int32_t>::max)();
    return fits ? Variant(static_cast<std::int32_t>(v)) : Variant(static_cast<double>(v));
}

Conversion FromBstr(BSTR text, Variant& out) {
    std::optional<std::string> bytes = FromWide(View(text));
    if (!bytes) return Conversion::NoBytes;
    out = Variant(std::move(*bytes));
    return Conversion::Done;
}

/// Where a value was found.
struct Place {
    int objects = 0;  // whose default properties led to it, one behind the other
    bool inArray = false;
};

Conversion FromObject(IDispatch* object, Variant& out, Place place);

Conversion FromScalar(const VARIANT& v, Variant& out, Place place) {
    double number = 0;
    switch (v.vt) {
        case VT_EMPTY:
            out = Variant();
            return Conversion::Done;
        case VT_I1:
            out = Variant(std::int16_t{static_cast<signed char>(v.cVal)});
            return Conversion::Done;
        case VT_UI1:
            out = Variant(std::int16_t{v.bVal});
            return Conversion::Done;
        case VT_I2:
            out = Variant(v.iVal);
            return Conversion::Done;
        case VT_UI2:
            out = Variant(std::int32_t{v.uiVal});
            return Conversion::Done;
        case VT_I4:
        case VT_INT:
            out = Variant(static_cast<std::int32_t>(v.lVal));
            return Conversion::Done;
        case VT_UI4:
        case VT_UINT:
            out = FromWhole(LONGLONG{v.ulVal});
            return Conversion::Done;
        case VT_I8:
            out = FromWhole(v.llVal);
            return Conversion::Done;
        case VT_UI8:
            out = Variant(static_cast<double>(v.ullVal));
            if (v.ullVal <= 0x7FFFFFFF) out = FromWhole(static_cast<LONGLONG>(v.ullVal));
            return Conversion::Done;
        case VT_R4:
            out = Variant(v.fltVal);
            return Conversion::Done;
        case VT_R8:
        case VT_DATE:
            out = Variant(v.dblVal);
            return Conversion::Done;
        case VT_BOOL:
            out = Variant(v.boolVal != VARIANT_FALSE);
            return Conversion::Done;
        case VT_BSTR:
            return FromBstr(v.bstrVal, out);
        case VT_CY:
            if (FAILED(VarR8FromCy(v.cyVal, &number))) return Conversion::NoValue;
            out = Variant(number);
            return Conversion::Done;
        case VT_DECIMAL: {
            DECIMAL decimal = v.decVal;
            if (FAILED(VarR8FromDec(&decimal, &number))) return Conversion::NoValue;
            out = Variant(number);
            return Conversion::Done;
        }
        case VT_ERROR:
            return v.scode == DISP_E_PARAMNOTFOUND ? Conversion::Missing : Conversion::NoValue;
        case VT_DISPATCH:
            return FromObject(v.pdispVal, out, place);
        default:
            return Conversion::NoValue;
    }
}

Conversion FromAny(const VARIANT& value, Variant& out, Place place) {
    const VARIANT* v = Follow(value);
    if (v == nullptr || place.objects > kLongestChain) return Conversion::NoValue;
    if ((v->vt & VT_ARRAY) != 0) return place.inArray ? Conversion::NoValue : ReadArray(*v, out);
    if ((v->vt & VT_BYREF) == 0) return FromScalar(*v, out, place);
    if (v->byref == nullptr) return Conversion::NoValue;
    VARIANT held;
    VariantInit(&held);
    VARIANT reference = *v;
    if (FAILED(VariantCopyInd(&held, &reference))) return Conversion::NoValue;
    const Conversion done = FromScalar(held, out, place);
    VariantClear(&held);
    return done;
}

/// An object stands for the value of its default property.
Conversion FromObject(IDispatch* object, Variant& out, Place place) {
    const Com<IDispatch> held(object);
    if (!held) return Conversion::NoValue;
    DISPPARAMS none{};
    VARIANT value;
    VariantInit(&value);
    if (FAILED(
            held->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &value, nullptr, nullptr))) {
        return Conversion::NoValue;
    }
    const Conversion done = FromAny(value, out, {place.objects + 1, place.inArray});
    VariantClear(&value);
    return done;
}

/// Whether a typed place is one that StoreTyped writes.
bool TakesTyped(const VARIANT& place) {
    switch (place.vt & ~VT_BYREF) {
        case VT_I1:
        case VT_UI1:
        case VT_I2:
        case VT_UI2:
        case VT_BOOL:
        case VT_I4:
        case VT_UI4:
        case VT_INT:
        case VT_UINT:
        case VT_R4:
        case VT_I8:
        case VT_UI8:
        case VT_R8:
        case VT_CY:
        case VT_DATE:
        case VT_DECIMAL:
        case VT_BSTR:
            return true;
        default:
            return false;
    }
}

/// The bits of a number are the same in a place without a sign, as they are behind a bare pointer: a colour has all of them.
VARTYPE StoredAs(VARTYPE place, VARTYPE value) {
    if (value == VT_I4 && (place == VT_UI4 || place == VT_UINT)) return VT_I4;
    return value == VT_I2 && place == VT_UI2 ? static_cast<VARTYPE>(VT_I2) : place;
}

/// Puts a value of our own into a typed place; a value that does not convert leaves it alone.
HRESULT StoreTyped(VARIANT& value, const VARIANT& place) {
    const auto type = static_cast<VARTYPE>(place.vt & ~VT_BYREF);
    VARIANT converted;
    VariantInit(&converted);
    const HRESULT done = VariantChangeTypeEx(&converted, &value, LOCALE_INVARIANT, VARIANT_ALPHABOOL, StoredAs(type, value.vt));
    if (FAILED(done)) return done;
    switch (type) {
        case VT_I1:
        case VT_UI1:
            *place.pbVal = converted.bVal;
            break;
        case VT_I2:
        case VT_UI2:
        case VT_BOOL:
            *place.piVal = converted.iVal;
            break;
        case VT_I4:
        case VT_UI4:
        case VT_INT:
        case VT_UINT:
        case VT_R4:
            *place.plVal = converted.lVal;
            break;
        case VT_I8:
        case VT_UI8:
        case VT_R8:
        case VT_CY:
        case VT_DATE:
            *place.pllVal = converted.llVal;
            break;
        case VT_DECIMAL:
            *place.pdecVal = converted.decVal;
            place.pdecVal->wReserved = 0;
            break;
        case VT_BSTR:
            SysFreeString(*place.pbstrVal);
            *place.pbstrVal = converted.bstrVal;
            VariantInit(&converted);
            break;
        default:
            break;
    }
    VariantClear(&converted);
    return S_OK;
}

/// The kind of place that a bare pointer to values of this kind has.
bool IsBarePointer(ValueKind kind, VARTYPE vt) {
    switch (static_cast<VARTYPE>(vt & ~VT_BYREF)) {
        case VT_I2:
        case VT_UI2:
            return kind == ValueKind::I2;
        case VT_I4:
        case VT_UI4:
        case VT_INT:
        case VT_UINT:
            return kind == ValueKind::I4;
        case VT_R8:
            return kind == ValueKind::R8;
        case VT_BSTR:
            return kind == ValueKind::Bstr;
        default:
            return false;
    }
}

void WriteBare(const Buffer& buffer, std::size_t count, const VARIANT& target) {
    if (const auto* shorts = std::get_if<std::vector<std::int16_t>>(&buffer)) {
        for (std::size_t i = 0; i < count && i < shorts->size(); ++i) target.piVal[i] = (*shorts)[i];
    } else if (const auto* longs = std::get_if<std::vector<std::int32_t>>(&buffer)) {
        for (std::size_t i = 0; i < count && i < longs->size(); ++i) target.plVal[i] = (*longs)[i];
    } else if (const auto* doubles = std::get_if<std::vector<double>>(&buffer)) {
        for (std::size_t i = 0; i < count && i < doubles->size(); ++i) target.pdblVal[i] = (*doubles)[i];
    } else if (const auto* texts = std::get_if<std::vector<std::string>>(&buffer)) {
        for (std::size_t i = 0; i < count && i < texts->size(); ++i) {
            const BSTR text = ToBstr((*texts)[i]);
            SysFreeString(target.pbstrVal[i]);
            target.pbstrVal[i] = text;
        }
    }
}

/// Whether a reference leads to an array that one of the member's own making can replace.
HRESULT CheckArrayPlace(const VARIANT& place) {
    const bool fits = place.vt == (VT_BYREF | VT_ARRAY | VT_I4) || place.vt == (VT_BYREF | VT_ARRAY | VT_VARIANT);
    return fits ? CheckReplaceable(place) : DISP_E_TYPEMISMATCH;
}

/// A value in place of what a variant held.
HRESULT Replace(VARIANT& place, VARIANT& value) {
    const HRESULT cleared = VariantClear(&place);
    if (FAILED(cleared)) {  // an array that someone has locked stays
        VariantClear(&value);
        return cleared;
    }
    place = value;
    return S_OK;
}

}  // namespace

const VARIANT* Follow(const VARIANT& value) {
    const VARIANT* v = &value;
    for (int depth = 0; v != nullptr && v->vt == (VT_BYREF | VT_VARIANT); ++depth) {
        if (depth == kLongestChain) return nullptr;
        v = v->pvarVal;
    }
    return v;
}

Conversion FromVariant(const VARIANT& value, Variant& out) { return FromAny(value, out, {}); }

Conversion FromElement(const VARIANT& value, Variant& out) { return FromAny(value, out, {0, true}); }

bool ToVariant(const Variant& value, VARIANT& out, bool scriptArrays) {
    VariantInit(&out);
    switch (value.Type()) {
        case Vt::Empty:
            return true;
        case Vt::Bool: {
            bool v = false;
            value.ToBool(v);
            out.vt = VT_BOOL;
            out.boolVal = v ? VARIANT_TRUE : VARIANT_FALSE;
            return true;
        }
        case Vt::I2:
            out.vt = VT_I2;
            return value.ToI2(out.iVal);
        case Vt::I4: {
            std::int32_t v = 0;
            value.ToI4(v);
            out.vt = VT_I4;
            out.lVal = v;
            return true;
        }
        case Vt::R4:
            out.vt = VT_R4;
            return value.ToR4(out.fltVal);
        case Vt::R8:
            out.vt = VT_R8;
            return value.ToR8(out.dblVal);
        case Vt::Bstr: {
            std::string bytes;
            value.ToBytes(bytes);
            out.bstrVal = ToBstr(bytes);
            if (out.bstrVal == nullptr) return false;
            out.vt = VT_BSTR;
            return true;
        }
        default:
            return value.Array() != nullptr && MakeSafeArray(*value.Array(), scriptArrays, out);
    }
}

Conversion ReadBuffer(const Arg& arg, const VARIANT& source, std::size_t count, Buffer& out) {
    const VARIANT* v = Follow(source);
    if (v == nullptr || arg.type.kind != ValueKind::R8) return Conversion::NoValue;  // no member takes other numbers so
    std::vector<double> numbers;
    if (v->vt == (VT_BYREF | VT_R8)) {
        if (v->pdblVal == nullptr && count > 0) return Conversion::NoValue;
        if (count > 0) numbers.assign(v->pdblVal, v->pdblVal + count);
        out = std::move(numbers);
        return Conversion::Done;
    }
    Variant value;
    const Conversion read = FromVariant(*v, value);
    if (read != Conversion::Done) return read;
    double number = 0;
    if (const SafeArray* array = value.Array()) {
        for (std::size_t i = 0; i < array->Size() && i < count; ++i) {
            Variant element;
            GetElement(*array, i, element);
            if (!element.ToR8(number)) return Conversion::NoValue;
            numbers.push_back(number);
        }
    } else if (value.ToR8(number)) {
        numbers.push_back(number);
    } else {
        return Conversion::NoValue;
    }
    out = std::move(numbers);
    return Conversion::Done;
}

HRESULT CheckTarget(const Arg& arg, const VARIANT& target, std::size_t count) {
    const VARIANT* v = Follow(target);
    if (v == nullptr) return DISP_E_TYPEMISMATCH;
    // A variable of a script, which gets a new value; or nothing to write to.
    if ((v->vt & VT_BYREF) == 0) return v == &target ? S_OK : CheckReplaceable(*v);
    if (v->byref == nullptr) return count > 0 || !arg.IsBuffer() ? DISP_E_TYPEMISMATCH : S_OK;
    if (arg.type.kind == ValueKind::Variant) return CheckArrayPlace(*v);
    if (!arg.IsBuffer()) return TakesTyped(*v) ? S_OK : DISP_E_TYPEMISMATCH;
    if ((v->vt & VT_ARRAY) != 0) return CheckArrayTarget(arg.type.kind, *v, count);
    return IsBarePointer(arg.type.kind, v->vt) ? S_OK : DISP_E_TYPEMISMATCH;
}

HRESULT WriteOutput(const Arg& arg, const Argument& output, const VARIANT& target) {
    if (!output.written) return S_OK;
    const VARIANT* place = Follow(target);
    if (place == nullptr) return S_OK;
    const bool isReference = (place->vt & VT_BYREF) != 0;
    if (!isReference && place == &target) return S_OK;  // passed by value
    if (arg.IsBuffer() && isReference) {
        if ((place->vt & VT_ARRAY) != 0) {
            WriteArrayElements(output.buffer, output.count, *place);
        } else {
            WriteBare(output.buffer, output.count, *place);
        }
        return S_OK;
    }
    VARIANT value;
    const bool made = arg.IsBuffer() ? ToVariant(ArrayOf(output.buffer, output.count), value, true)
                                     : ToVariant(output.value, value, place->vt == (VT_BYREF | VT_ARRAY | VT_VARIANT));
    if (!made) return E_OUTOFMEMORY;
    // A variable that a script passes is a variant that is not const, behind a reference.
    if (!isReference) return Replace(const_cast<VARIANT&>(*place), value);
    HRESULT stored = S_OK;
    if ((place->vt & VT_ARRAY) != 0) {
        // The types are alike but where the member ran code of the host's, which may have done anything.
        if (value.vt == (place->vt & ~VT_BYREF) && CheckReplaceable(*place) == S_OK) std::swap(*place->pparray, value.parray);
        if (value.parray == nullptr) value.vt = VT_EMPTY;
    } else {
        stored = StoreTyped(value, *place);
    }
    VariantClear(&value);
    return stored;
}

}  // namespace orvane
