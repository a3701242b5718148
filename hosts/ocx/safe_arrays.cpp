#include "hosts/ocx/safe_arrays.h"

#include <algorithm>
#include <limits>
#include <type_traits>

#include "hosts/ocx/wide_text.h"

namespace orvane {

namespace {

/// The elements of an array while they are looked at.
class Access {
public:
    explicit Access(SAFEARRAY* array)
        : array_(array), locked_(array != nullptr && SUCCEEDED(SafeArrayAccessData(array, &data_))) {}
    ~Access() {
        if (locked_) SafeArrayUnaccessData(array_);
    }
    Access(const Access&) = delete;
    Access& operator=(const Access&) = delete;
    template <class T>
    T* As() const {
        return static_cast<T*>(data_);
    }
    /// Whether that many elements can be looked at. An array may have bounds and no memory behind them.
    bool Has(std::size_t count) const { return locked_ && (count == 0 || data_ != nullptr); }

private:
    SAFEARRAY* array_;
    void* data_ = nullptr;
    bool locked_;
};

SAFEARRAY* ArrayIn(const VARIANT& v) {
    if ((v.vt & VT_BYREF) == 0) return v.parray;
    return v.pparray == nullptr ? nullptr : *v.pparray;
}

/// The size of an element that the control reads or writes; 0 for a type that it does not.
std::size_t SizeOf(VARTYPE type) {
    switch (type) {
        case VT_I2:
        case VT_BOOL:
            return sizeof(SHORT);
        case VT_I4:
        case VT_R4:
            return sizeof(LONG);
        case VT_R8:
            return sizeof(double);
        case VT_BSTR:
            return sizeof(BSTR);
        case VT_VARIANT:
            return sizeof(VARIANT);
        default:
            return 0;
    }
}

/// Whether the elements of an array are as large as the type that its variant tells.
bool HasElements(const SAFEARRAY& array, VARTYPE type) { return SizeOf(type) == 0 || array.cbElements == SizeOf(type); }

/// A product that no number holds stays beyond all memory.
std::size_t Total(SAFEARRAY* array) {
    constexpr std::size_t kMost = (std::numeric_limits<std::size_t>::max)();
    std::size_t total = array->cDims == 0 ? 0 : 1;
    for (USHORT i = 0; i < array->cDims; ++i) {
        const std::size_t count = array->rgsabound[i].cElements;
        if (count == 0) return 0;
        total = total > kMost / count ? kMost : total * count;
    }
    return total;
}

std::vector<ArrayBound> Bounds(SAFEARRAY* array) {
    std::vector<ArrayBound> bounds;
    for (UINT dim = 1; dim <= array->cDims; ++dim) {
        LONG lower = 0;
        SafeArrayGetLBound(array, dim, &lower);
        // The bounds stand in the descriptor from the last dimension to the first.
        bounds.push_back({static_cast<std::int32_t>(lower), std::int64_t{array->rgsabound[array->cDims - dim].cElements}});
    }
    return bounds;
}

template <class T, class Native, class Take>
Conversion ReadElements(const Access& access, std::size_t count, std::vector<ArrayBound> bounds, Take take, Variant& out) {
    std::vector<T> values(count);
    for (std::size_t i = 0; i < count; ++i) {
        T element{};
        const Conversion read = take(access.As<Native>()[i], element);
        if (read != Conversion::Done) return read;
        values[i] = std::move(element);
    }
    out = MakeArray(std::move(values), std::move(bounds));
    return Conversion::Done;
}

const auto kAsItIs = [](const auto& in, auto& out) {
    out = static_cast<std::decay_t<decltype(out)>>(in);
    return Conversion::Done;
};

Conversion TakeText(BSTR in, std::string& out) {
    std::optional<std::string> bytes = FromWide(View(in));
    if (!bytes) return Conversion::NoBytes;
    out = std::move(*bytes);
    return Conversion::Done;
}

/// An element that is no value here is kept as the empty array, which converts to nothing.
Conversion TakeVariant(const VARIANT& in, Variant& out) {
    if (FromElement(in, out) != Conversion::Done) out = MakeArray(std::vector<std::int16_t>());
    return Conversion::Done;
}

/// Tells `give` the value of each element by its position, as a variant.
template <class Give>
void ForEachValue(const Buffer& buffer, std::size_t count, Give give) {
    std::visit(
        [&](const auto& values) {
            if constexpr (!std::is_same_v<std::decay_t<decltype(values)>, std::monostate>) {
                for (std::size_t i = 0; i < count && i < values.size(); ++i) give(i, Variant(values[i]));
            }
        },
        buffer);
}

VARTYPE TypeOf(const SafeArray& array) { return static_cast<VARTYPE>(array.ElementType()); }

bool FillElement(const Variant& element, VARTYPE type, void* data, std::size_t i) {
    if (type == VT_VARIANT) return ToVariant(element, static_cast<VARIANT*>(data)[i], true);
    VARIANT value;
    if (!ToVariant(element, value)) return false;
    switch (type) {
        case VT_I2:
        case VT_BOOL:
            static_cast<SHORT*>(data)[i] = value.iVal;
            return true;
        case VT_I4:
        case VT_R4:
            static_cast<LONG*>(data)[i] = value.lVal;
            return true;
        case VT_R8:
            static_cast<double*>(data)[i] = value.dblVal;
            return true;
        case VT_BSTR:
            static_cast<BSTR*>(data)[i] = value.bstrVal;
            return true;
        default:
            VariantClear(&value);
            return false;
    }
}

VARTYPE TypeOfKind(ValueKind kind) {
    switch (kind) {
        case ValueKind::I2:
            return VT_I2;
        case ValueKind::I4:
            return VT_I4;
        case ValueKind::R8:
            return VT_R8;
        case ValueKind::Bstr:
            return VT_BSTR;
        default:
            return VT_EMPTY;
    }
}

}  // namespace

Conversion ReadArray(const VARIANT& value, Variant& out) {
    SAFEARRAY* array = ArrayIn(value);
    if (array == nullptr) {  // an array variable that was never given bounds
        out = Variant();
        return Conversion::Done;
    }
    const auto type = static_cast<VARTYPE>(value.vt & ~(VT_BYREF | VT_ARRAY));
    if (!HasElements(*array, type)) return Conversion::NoValue;
    const Access access(array);
    const std::size_t count = Total(array);
    if (!access.Has(count)) return Conversion::NoValue;
    std::vector<ArrayBound> bounds = Bounds(array);
    const auto truth = [](VARIANT_BOOL in, bool& flag) {
        flag = in != VARIANT_FALSE;
        return Conversion::Done;
    };
    switch (type) {
        case VT_I2:
            return ReadElements<std::int16_t, SHORT>(access, count, std::move(bounds), kAsItIs, out);
        case VT_I4:
            return ReadElements<std::int32_t, LONG>(access, count, std::move(bounds), kAsItIs, out);
        case VT_R4: {
            // Bit by bit: such an element may carry a colour that is no number.
            std::vector<float> values(count);
            if (count > 0)
                std::copy_n(access.As<unsigned char>(), count * sizeof(float), reinterpret_cast<unsigned char*>(values.data()));
            out = MakeArray(std::move(values), std::move(bounds));
            return Conversion::Done;
        }
        case VT_R8:
            return ReadElements<double, double>(access, count, std::move(bounds), kAsItIs, out);
        case VT_BOOL: {
            std::vector<bool> values(count);
            bool flag = false;
            for (std::size_t i = 0; i < count; ++i) {
                truth(access.As<VARIANT_BOOL>()[i], flag);
                values[i] = flag;
            }
            out = MakeArray(std::move(values), std::move(bounds));
            return Conversion::Done;
        }
        case VT_BSTR:
            return ReadElements<std::string, BSTR>(access, count, std::move(bounds), TakeText, out);
        case VT_VARIANT:
            return ReadElements<Variant, VARIANT>(access, count, std::move(bounds), TakeVariant, out);
        default:
            out = MakeArray(std::vector<std::int16_t>(count), std::move(bounds));
            return Conversion::Done;
    }
}

bool MakeSafeArray(const SafeArray& array, bool asVariants, VARIANT& out) {
    VariantInit(&out);
    const VARTYPE type = asVariants ? static_cast<VARTYPE>(VT_VARIANT) : TypeOf(array);
    std::vector<SAFEARRAYBOUND> bounds;
    for (const ArrayBound& bound : array.bounds) bounds.push_back({static_cast<ULONG>(bound.count), bound.lower});
    SAFEARRAY* made = SafeArrayCreate(type, static_cast<UINT>(bounds.size()), bounds.data());
    if (made == nullptr) return false;
    bool filled = false;
    {
        const Access access(made);
        filled = access.Has(array.Size());
        for (std::size_t i = 0; filled && i < array.Size(); ++i) {
            Variant element;
            filled = GetElement(array, i, element) && FillElement(element, type, access.As<void>(), i);
        }
    }
    if (!filled) {
        SafeArrayDestroy(made);
        return false;
    }
    out.vt = static_cast<VARTYPE>(VT_ARRAY | type);
    out.parray = made;
    return true;
}

HRESULT CheckArrayTarget(ValueKind kind, const VARIANT& target, std::size_t count) {
    const auto type = static_cast<VARTYPE>(target.vt & ~(VT_BYREF | VT_ARRAY));
    if (type != VT_VARIANT && type != TypeOfKind(kind)) return DISP_E_TYPEMISMATCH;
    SAFEARRAY* array = ArrayIn(target);
    if (array != nullptr && !HasElements(*array, type)) return DISP_E_TYPEMISMATCH;
    if (count > 0 && (array == nullptr || Total(array) < count)) return DISP_E_BADINDEX;
    return S_OK;
}

HRESULT CheckReplaceable(const VARIANT& held) {
    if ((held.vt & VT_ARRAY) == 0) return S_OK;
    const SAFEARRAY* array = ArrayIn(held);
    if (array == nullptr) return S_OK;
    // A variant owns its array and may end it; what a reference leads to may be part of something else.
    constexpr USHORT kFixed = FADF_AUTO | FADF_STATIC | FADF_EMBEDDED | FADF_FIXEDSIZE;
    const bool stays = (held.vt & VT_BYREF) != 0 && (array->fFeatures & kFixed) != 0;
    return array->cLocks > 0 || stays ? DISP_E_ARRAYISLOCKED : S_OK;
}

void WriteArrayElements(const Buffer& buffer, std::size_t count, const VARIANT& target) {
    const auto type = static_cast<VARTYPE>(target.vt & ~(VT_BYREF | VT_ARRAY));
    SAFEARRAY* array = ArrayIn(target);
    if (array == nullptr) return;
    const std::size_t room = Total(array);
    const Access access(array);
    if (!access.Has(room)) return;
    ForEachValue(buffer, (std::min)(count, room), [&](std::size_t i, const Variant& value) {
        if (type == VT_BSTR) SysFreeString(std::exchange(access.As<BSTR>()[i], nullptr));
        if (type == VT_VARIANT && FAILED(VariantClear(&access.As<VARIANT>()[i]))) return;
        FillElement(value, type, access.As<void>(), i);
    });
}

Variant ArrayOf(const Buffer& buffer, std::size_t count) {
    return std::visit(
        [&](const auto& values) {
            if constexpr (std::is_same_v<std::decay_t<decltype(values)>, std::monostate>) {
                return Variant();
            } else {
                auto first = values;
                first.resize((std::min)(count, first.size()));
                return MakeArray(std::move(first));
            }
        },
        buffer);
}

}  // namespace orvane
