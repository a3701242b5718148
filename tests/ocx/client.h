// A typed client of the control, as a program in C++ writes one: values, calls by name, and a limit of time on every call.
#pragma once

#include "hosts/ocx/com_base.h"
// com_base.h brings the system headers, which come first
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <thread>
#include <vector>

namespace orvane::test {

/// Ends the process when its scope lasts longer than told: a call that hangs must not hang the tests.
class Deadline {
public:
    explicit Deadline(const char* what, unsigned seconds = 60);
    ~Deadline();
    Deadline(const Deadline&) = delete;
    Deadline& operator=(const Deadline&) = delete;

private:
    const char* whatBefore_;
    ULONGLONG dueBefore_;
};

/// Owns a VARIANT.
class Value {
public:
    Value() { VariantInit(&v); }
    Value(bool b) : Value() {
        v.vt = VT_BOOL;
        v.boolVal = b ? VARIANT_TRUE : VARIANT_FALSE;
    }
    Value(int n) : Value() {
        v.vt = VT_I4;
        v.lVal = n;
    }
    Value(long n) : Value(static_cast<int>(n)) {}
    Value(short n) : Value() {
        v.vt = VT_I2;
        v.iVal = n;
    }
    Value(double d) : Value() {
        v.vt = VT_R8;
        v.dblVal = d;
    }
    Value(const wchar_t* text) : Value() {
        v.vt = VT_BSTR;
        v.bstrVal = SysAllocString(text);
    }
    Value(const std::wstring& text) : Value() {
        v.vt = VT_BSTR;
        v.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    }
    Value(const Value& other) : Value() { VariantCopy(&v, const_cast<VARIANT*>(&other.v)); }
    Value(Value&& other) noexcept : v(other.v) { VariantInit(&other.v); }
    Value& operator=(Value other) noexcept {
        std::swap(v, other.v);
        return *this;
    }
    ~Value() { VariantClear(&v); }

    int Int() const { return As(VT_I4).v.lVal; }
    double Double() const { return As(VT_R8).v.dblVal; }
    bool Bool() const { return As(VT_BOOL).v.boolVal != VARIANT_FALSE; }
    std::wstring Text() const;
    Value As(VARTYPE type) const;

    VARIANT v;
};

// Arguments by reference; what they point at must outlive the call.
Value Ref(long& n);
Value Ref(short& n);
Value Ref(double& d);
Value Ref(BSTR& text);
Value Ref(VARIANT& value);
Value Ref(SAFEARRAY*& array, VARTYPE type);
/// Arrays from 0, by value.
Value Doubles(std::initializer_list<double> values);
Value Longs(std::initializer_list<long> values);
Value Variants(std::initializer_list<Value> values);
/// One element of an array of one dimension.
Value Element(const VARIANT& array, long index);
long CountOf(const VARIANT& array);

/// A control, or any object with IDispatch.
class Client {
public:
    Client() = default;
    explicit Client(Com<IDispatch> object) : object_(std::move(object)) {}
    /// A new control by its programmatic id, without a container.
    static Client New();

    HRESULT Try(const wchar_t* name, WORD flags, const std::vector<Value>& args, Value* result = nullptr);
    /// The same, and a test failure when it is refused.
    Value Call(const wchar_t* name, std::initializer_list<Value> args = {});
    Value Get(const wchar_t* name) { return Call(name); }
    void Put(const wchar_t* name, const Value& value) { PutAt(name, {}, value); }
    void PutAt(const wchar_t* name, std::initializer_list<Value> index, const Value& value);
    DISPID IdOf(const wchar_t* name);
    /// A layer of polygons "A" in mesh 3 with one triangle of the ID 7, and a frame that is not composed yet.
    void MakeTriangle();

    template <class T>
    Com<T> As(REFIID iid) const {
        return Query<T>(object_.Get(), iid);
    }
    IDispatch* Get() const { return object_.Get(); }
    void Reset() { object_.Reset(); }

    EXCEPINFO exception{};
    UINT argError = 0xFFFF;

private:
    Com<IDispatch> object_;
};

/// COM on this thread, a single-threaded apartment, for the time of a test.
class ComTest : public ::testing::Test {
protected:
    ComTest() : deadline_("a test", 300) { OleInitialize(nullptr); }
    ~ComTest() override { OleUninitialize(); }
    /// Lets the windows of this thread work for a while.
    static void Pump(unsigned milliseconds = 0);

private:
    Deadline deadline_;
};

/// Answers every message box of this process for as long as it lives, and keeps their texts.
class BoxCloser {
public:
    BoxCloser();
    ~BoxCloser();
    BoxCloser(const BoxCloser&) = delete;
    BoxCloser& operator=(const BoxCloser&) = delete;
    /// Texts of the boxes so far. Only while no box can be open.
    const std::vector<std::wstring>& Texts() const { return texts_; }

private:
    void Run();
    std::atomic<bool> ends_{false};
    std::vector<std::wstring> texts_;
    std::thread thread_;
};

/// The folder of this program, with a backslash behind.
std::wstring OwnFolder();
/// The control's file, which stands beside this program.
std::wstring ControlFile();

}  // namespace orvane::test
