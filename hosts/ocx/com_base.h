// The few helpers that COM asks of plain C++: a counted pointer, a guard that lets no exception out, and the base of objects.
#pragma once

#include <windows.h>
// windows.h comes first
#include <ocidl.h>
#include <oleauto.h>
#include <olectl.h>

#include <atomic>
#include <new>
#include <string_view>
#include <utility>

#include "platform/trace.h"

namespace orvane {

/// Holds one reference to an interface.
template <class T>
class Com {
public:
    Com() = default;
    Com(std::nullptr_t) {}
    explicit Com(T* shared) : p_(shared) {
        if (p_ != nullptr) p_->AddRef();
    }
    Com(const Com& other) : Com(other.p_) {}
    Com(Com&& other) noexcept : p_(std::exchange(other.p_, nullptr)) {}
    Com& operator=(Com other) noexcept {
        std::swap(p_, other.p_);
        return *this;
    }
    ~Com() { Reset(); }

    /// The reference is given up before it is released: the release may run code that looks here.
    void Reset() {
        T* const old = std::exchange(p_, nullptr);
        if (old != nullptr) old->Release();
    }
    /// The place for a result that comes with a reference.
    T** Out() {
        Reset();
        return &p_;
    }
    /// Gives the reference away.
    T* Detach() { return std::exchange(p_, nullptr); }
    T* Get() const { return p_; }
    T* operator->() const { return p_; }
    explicit operator bool() const { return p_ != nullptr; }

private:
    T* p_ = nullptr;
};

/// Asks an object for an interface; null when it has none, or for null.
template <class T>
Com<T> Query(IUnknown* object, REFIID iid) {
    Com<T> found;
    if (object == nullptr) return found;
    void* out = nullptr;
    if (SUCCEEDED(object->QueryInterface(iid, &out))) *found.Out() = static_cast<T*>(out);
    return found;
}

/// Runs the body of a COM method: what it throws ends here.
template <class Body>
HRESULT Guarded(Body body) noexcept {
    try {
        return body();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        Trace("throw Exception !!\n");
        return E_UNEXPECTED;
    }
}

/// Writes a result behind a pointer that a host passed; E_POINTER for a null one.
template <class T>
HRESULT Give(T* out, const T& value) {
    if (out == nullptr) return E_POINTER;
    *out = value;
    return S_OK;
}

/// Hands an interface out with a reference of its own.
template <class T, class U>
HRESULT GiveInterface(T** out, U* object) {
    if (out == nullptr) return E_POINTER;
    *out = object;
    if (object != nullptr) object->AddRef();
    return S_OK;
}

/// An object of one interface beside IUnknown that is made with `new` and ends with its last reference. It holds the module in
/// memory while it lives.
template <class Interface>
class ComObject : public Interface {
public:
    ComObject();
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        if (out == nullptr) return E_POINTER;
        *out = iid == IID_IUnknown || Supports(iid) ? static_cast<Interface*>(this) : nullptr;
        if (*out == nullptr) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++refs_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --refs_;
        if (left == 0) delete this;
        return left;
    }

protected:
    virtual ~ComObject();
    virtual bool Supports(REFIID iid) const = 0;

private:
    std::atomic<ULONG> refs_{1};
};

/// What keeps the module in memory: objects and locks.
void LockModule();
void UnlockModule();

template <class Interface>
ComObject<Interface>::ComObject() {
    LockModule();
}
template <class Interface>
ComObject<Interface>::~ComObject() {
    UnlockModule();
}

namespace detail {
constexpr unsigned HexDigit(char c) { return c <= '9' ? static_cast<unsigned>(c - '0') : static_cast<unsigned>(c - 'A' + 10); }
constexpr unsigned long HexNumber(std::string_view text) {
    unsigned long value = 0;
    for (const char c : text) value = value * 16 + HexDigit(c);
    return value;
}
}  // namespace detail

/// The identity that a text of guids.h writes.
constexpr GUID ToGuid(std::string_view text) {
    GUID guid{};
    guid.Data1 = detail::HexNumber(text.substr(0, 8));
    guid.Data2 = static_cast<unsigned short>(detail::HexNumber(text.substr(9, 4)));
    guid.Data3 = static_cast<unsigned short>(detail::HexNumber(text.substr(14, 4)));
    for (std::size_t i = 0; i < 8; ++i) {
        const std::size_t at = i < 2 ? 19 + 2 * i : 20 + 2 * i;
        guid.Data4[i] = static_cast<unsigned char>(detail::HexNumber(text.substr(at, 2)));
    }
    return guid;
}

}  // namespace orvane
