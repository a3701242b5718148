// Arrays between host and control: the ones that a member makes for a host, and the ones that hold nothing for a member.
#include "tests/ocx/client.h"
#include "tests/ocx/script_host.h"

namespace orvane::test {
namespace {

constexpr WORD kCall = DISPATCH_METHOD | DISPATCH_PROPERTYGET;

class ArrayTest : public ComTest {
protected:
    Client control = Client::New();
    void SetUp() override { control.MakeTriangle(); }

    /// Two active squares in layer A whose overlap is a square, and an empty layer C for it.
    static void MakeOverlap(Client& map) {
        map.Call(L"OrvInit");
        for (const wchar_t* layer : {L"A", L"B", L"C"}) EXPECT_TRUE(map.Call(L"OrvAddLayer", {layer, 1, 3, 0}).Bool());
        for (const double at : {0.0, 50.0}) {
            for (const wchar_t* layer : {L"A", L"B"}) {
                const int id = layer[0] == L'A' ? (at > 0 ? 12 : 11) : 21;
                if (id == 21 && at == 0) continue;
                EXPECT_TRUE(map.Call(L"OrvAddDatEx", {layer, 1, id, 0, Doubles({at, at + 100, at + 100, at, at}),
                                                      Doubles({at, at, at + 100, at + 100, at}), Doubles({0, 0, 0, 0, 0})})
                                .Bool());
            }
        }
    }
    HRESULT Overlay(const Value& a, const Value& b, const Value& c, Value* count = nullptr) {
        return control.Try(L"OrvPolygonBuffering", kCall, {0, L"A", 1, L"B", 1, L"C", 1, a, b, c}, count);
    }
    long PointsOf(int id) {
        long n[4] = {9, 9, 9, 9};
        const bool there = control.Call(L"OrvGetDatInfoEx", {L"A", 3, id, Ref(n[0]), Ref(n[1]), Ref(n[2]), Ref(n[3])}).Bool();
        return there ? n[2] : -1;
    }
};

SAFEARRAY* Vector(VARTYPE type, ULONG count) { return SafeArrayCreateVector(type, 0, count); }
VARTYPE TypeOf(SAFEARRAY* array) {
    VARTYPE type = VT_EMPTY;
    SafeArrayGetVartype(array, &type);
    return type;
}

TEST_F(ArrayTest, a_variable_receives_the_ids_as_an_array_of_longs) {
    MakeOverlap(control);
    Value a;
    Value b(L"text before");
    Value c = Variants({1, 2, 3, 4, 5, 6, 7, 8, 9});
    Value count;
    ASSERT_EQ(Overlay(Ref(a.v), Ref(b.v), Ref(c.v), &count), S_OK);
    ASSERT_EQ(count.Int(), 2);
    for (const Value* ids : {&a, &b, &c}) {
        EXPECT_EQ(ids->v.vt, VT_ARRAY | VT_I4);
        EXPECT_EQ(CountOf(ids->v), 2);
        long lower = -1;
        SafeArrayGetLBound(ids->v.parray, 1, &lower);
        EXPECT_EQ(lower, 0);
    }
    EXPECT_EQ(Element(a.v, 0).Int() + Element(a.v, 1).Int(), 23);
    EXPECT_EQ(Element(b.v, 1).Int(), 21);
}

TEST_F(ArrayTest, without_a_result_the_variables_stay) {
    MakeOverlap(control);
    Value a(L"before");
    Value b = Longs({5});
    SAFEARRAY* c = Vector(VT_VARIANT, 2);
    Value count;
    ASSERT_EQ(control.Try(L"OrvPolygonBuffering", kCall, {1, L"A", 1, L"B", 1, L"C", 1, Ref(a.v), Ref(b.v), Ref(c, VT_VARIANT)},
                          &count),
              S_OK);
    EXPECT_EQ(count.Int(), 0);
    EXPECT_EQ(a.Text(), L"before");
    EXPECT_EQ(Element(b.v, 0).Int(), 5);
    EXPECT_EQ(c->rgsabound[0].cElements, 2U);
    SafeArrayDestroy(c);
}

TEST_F(ArrayTest, an_array_by_reference_is_replaced_by_one_of_its_own_element_type) {
    MakeOverlap(control);
    SAFEARRAY* longs = Vector(VT_I4, 7);
    SAFEARRAY* variants = Vector(VT_VARIANT, 4);
    SAFEARRAY* none = nullptr;
    ASSERT_EQ(Overlay(Ref(longs, VT_I4), Ref(variants, VT_VARIANT), Ref(none, VT_VARIANT)), S_OK);
    EXPECT_EQ(TypeOf(longs), VT_I4);
    EXPECT_EQ(longs->rgsabound[0].cElements, 2U);
    ASSERT_EQ(TypeOf(variants), VT_VARIANT);
    EXPECT_EQ(SafeArrayGetElemsize(variants), sizeof(VARIANT));
    Value held;
    held.v.vt = VT_ARRAY | VT_VARIANT;
    held.v.parray = variants;
    EXPECT_EQ(Element(held.v, 1).v.vt, VT_I4);
    EXPECT_EQ(Element(held.v, 1).Int(), 21);
    ASSERT_NE(none, nullptr);
    EXPECT_EQ(TypeOf(none), VT_VARIANT);
    SafeArrayDestroy(longs);
    SafeArrayDestroy(none);
}

TEST_F(ArrayTest, an_array_of_another_type_is_refused_before_the_call) {
    MakeOverlap(control);
    Value good;
    for (const VARTYPE type : {VT_R8, VT_BSTR, VT_I2, VT_UI1, VT_BOOL}) {
        SAFEARRAY* wrong = Vector(type, 3);
        SAFEARRAY* const before = wrong;
        EXPECT_EQ(Overlay(Ref(good.v), Ref(good.v), Ref(wrong, type)), DISP_E_TYPEMISMATCH) << type;
        EXPECT_EQ(wrong, before);
        SafeArrayDestroy(wrong);
    }
    long number = 5;
    EXPECT_EQ(Overlay(Ref(good.v), Ref(good.v), Ref(number)), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(number, 5);
    EXPECT_EQ(good.v.vt, VT_EMPTY);
    EXPECT_EQ(control.Call(L"OrvGetLayDatCnt", {L"C", 1}).Int(), 0) << "no polygon was stored";
}

TEST_F(ArrayTest, a_locked_or_fixed_array_is_refused_before_the_call) {
    MakeOverlap(control);
    Value good;
    for (const int feature : {FADF_STATIC, FADF_FIXEDSIZE, FADF_EMBEDDED, FADF_AUTO}) {
        SAFEARRAY* fixed = Vector(VT_I4, 3);
        SAFEARRAY* const before = fixed;
        const USHORT features = fixed->fFeatures;
        fixed->fFeatures = static_cast<USHORT>(features | feature);
        EXPECT_EQ(Overlay(Ref(good.v), Ref(good.v), Ref(fixed, VT_I4)), DISP_E_ARRAYISLOCKED) << feature;
        EXPECT_EQ(fixed, before);
        fixed->fFeatures = features;
        SafeArrayDestroy(fixed);
    }
    SAFEARRAY* locked = Vector(VT_I4, 3);
    SafeArrayLock(locked);
    EXPECT_EQ(Overlay(Ref(good.v), Ref(good.v), Ref(locked, VT_I4)), DISP_E_ARRAYISLOCKED);
    Value variable;
    variable.v.vt = VT_ARRAY | VT_I4;
    variable.v.parray = locked;
    EXPECT_EQ(Overlay(Ref(good.v), Ref(good.v), Ref(variable.v)), DISP_E_ARRAYISLOCKED);
    EXPECT_EQ(variable.v.parray, locked);
    SafeArrayUnlock(locked);
    EXPECT_EQ(control.Call(L"OrvGetLayDatCnt", {L"C", 1}).Int(), 0);
    EXPECT_EQ(Overlay(Ref(good.v), Ref(good.v), Ref(variable.v)), S_OK);
    EXPECT_EQ(CountOf(variable.v), 2);
}

TEST_F(ArrayTest, what_is_no_array_leaves_the_empty_item_and_answers_false) {
    Value null;
    null.v.vt = VT_NULL;
    Value nothing;
    nothing.v.vt = VT_DISPATCH;
    Value unknown;
    unknown.v.vt = VT_UNKNOWN;
    int id = 100;
    for (const Value* odd : {&null, &nothing, &unknown}) {
        for (const bool first : {true, false}) {
            Value result(true);
            const Value good = Doubles({1, 2});
            ASSERT_EQ(
                control.Try(L"AddDigDatEx", kCall, {L"A", 3, ++id, 0, first ? *odd : good, good, first ? good : *odd}, &result),
                S_OK)
                << odd->v.vt;
            EXPECT_FALSE(result.Bool());
            EXPECT_EQ(PointsOf(id), 0) << odd->v.vt;
        }
    }
    Value byReference = nothing;
    EXPECT_FALSE(control.Call(L"OrvSetMeshColor", {L"A", 3, 7, Ref(byReference.v)}).Bool());
    EXPECT_FALSE(control.Call(L"OrvGetOFileBEx", {L"no file", 0.0, 0.0, 0.0, 0.0, null}).Bool());
}

TEST_F(ArrayTest, an_array_that_no_memory_holds_counts_as_none) {
    // Bounds that a broken host makes up; not one element is there.
    SAFEARRAY* vast = nullptr;
    ASSERT_EQ(SafeArrayAllocDescriptorEx(VT_R8, 3, &vast), S_OK);
    for (SAFEARRAYBOUND* bound = vast->rgsabound; bound != vast->rgsabound + 3; ++bound) *bound = {0x7FFFFFFF, 0};
    double element = 0;
    vast->pvData = &element;
    Value good = Doubles({1, 2});
    EXPECT_FALSE(control.Call(L"AddDigDatEx", {L"A", 3, 30, 0, good, good, Ref(vast, VT_R8)}).Bool());
    EXPECT_EQ(PointsOf(30), 0);
    EXPECT_EQ(vast->cLocks, 0U);
    vast->pvData = nullptr;
    SafeArrayDestroyDescriptor(vast);
}

TEST_F(ArrayTest, an_array_without_memory_is_not_left_locked) {
    SAFEARRAY* hollow = nullptr;
    ASSERT_EQ(SafeArrayAllocDescriptorEx(VT_R8, 1, &hollow), S_OK);
    hollow->rgsabound[0] = {2, 0};
    Value good = Doubles({1, 2});
    EXPECT_FALSE(control.Call(L"AddDigDatEx", {L"A", 3, 31, 0, good, good, Ref(hollow, VT_R8)}).Bool());
    EXPECT_EQ(hollow->cLocks, 0U);
    SafeArrayDestroyDescriptor(hollow);
}

/// An object whose default property is an array with the object itself, so often as it is asked.
class Mirror final : public IDispatch {
public:
    Mirror() = default;
    Mirror(const Mirror&) = delete;
    Mirror& operator=(const Mirror&) = delete;
    virtual ~Mirror() = default;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        *out = iid == IID_IUnknown || iid == IID_IDispatch ? this : nullptr;
        return *out == nullptr ? E_NOINTERFACE : S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return Give(count, 0U); }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) override {
        if (++calls > 100) return E_FAIL;
        Value self;
        self.v.vt = VT_DISPATCH;
        self.v.pdispVal = this;
        Value array = Variants({self});
        std::swap(*result, array.v);
        return S_OK;
    }
    int calls = 0;
};

TEST_F(ArrayTest, an_object_whose_value_is_an_array_of_itself_is_no_value) {
    Mirror mirror;
    Value object;
    object.v.vt = VT_DISPATCH;
    object.v.pdispVal = &mirror;
    const Value good = Doubles({1, 2});
    EXPECT_FALSE(control.Call(L"AddDigDatEx", {L"A", 3, 33, 0, good, good, object}).Bool());
    EXPECT_EQ(PointsOf(33), 0);
    EXPECT_EQ(mirror.calls, 2) << "for its value, and for the one element of that";
}

TEST_F(ArrayTest, an_array_that_holds_itself_is_no_value) {
    SAFEARRAY* array = Vector(VT_VARIANT, 1);
    VARIANT* element = nullptr;
    ASSERT_EQ(SafeArrayAccessData(array, reinterpret_cast<void**>(&element)), S_OK);
    element->vt = VT_BYREF | VT_ARRAY | VT_VARIANT;
    element->pparray = &array;
    SafeArrayUnaccessData(array);
    const Value good = Doubles({1, 2});
    EXPECT_FALSE(control.Call(L"AddDigDatEx", {L"A", 3, 34, 0, good, good, Ref(array, VT_VARIANT)}).Bool());
    EXPECT_EQ(PointsOf(34), 0);
    EXPECT_EQ(array->cLocks, 0U);
    SafeArrayDestroy(array);
}

TEST_F(ArrayTest, an_array_whose_elements_are_of_another_size_than_its_variant_tells_is_no_value) {
    SAFEARRAY* shorts = Vector(VT_I2, 6);
    const Value good = Doubles({1, 2});
    int id = 40;
    for (const VARTYPE told : {VT_I4, VT_R4, VT_R8, VT_BSTR, VT_VARIANT}) {
        EXPECT_FALSE(control.Call(L"AddDigDatEx", {L"A", 3, ++id, 0, good, good, Ref(shorts, told)}).Bool()) << told;
        EXPECT_EQ(PointsOf(id), 0) << told;
    }
    double x[3] = {};
    for (const VARTYPE told : {VT_R8, VT_VARIANT}) {
        EXPECT_EQ(control.Try(L"OrvGetDatPnt", kCall, {L"A", 3, 7, Ref(x[0]), Ref(shorts, told)}), DISP_E_TYPEMISMATCH) << told;
    }
    long first = 0;
    short element = -1;
    SafeArrayGetElement(shorts, &first, &element);
    EXPECT_EQ(element, 0);
    SafeArrayDestroy(shorts);
}

TEST_F(ArrayTest, a_text_element_without_bytes_is_no_number_and_leaves_the_empty_item) {
    EXPECT_FALSE(
        control.Call(L"AddDigDatEx", {L"A", 3, 32, 0, Variants({1, L"\xe9"}), Variants({1, 2}), Variants({1, 2})}).Bool());
    EXPECT_EQ(PointsOf(32), 0);
}

TEST_F(ArrayTest, a_text_without_bytes_is_no_number) {
    EXPECT_EQ(control.Try(L"OrvSetLayColor", kCall, {L"A", L"\xe9"}), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(control.argError, 0U);
    Value result(true);
    EXPECT_EQ(control.Try(L"OrvSetLayColor", kCall, {L"\xe9", 255}, &result), S_OK) << "a text for a text makes the member fail";
    EXPECT_FALSE(result.Bool());
}

TEST_F(ArrayTest, room_is_looked_at_before_memory_is_taken) {
    double few[] = {1, 2};
    const Value x = Ref(few[0]);
    SAFEARRAY* types = Vector(VT_R8, 1);
    EXPECT_EQ(control.Try(L"OrvGetDatPnt", kCall, {L"A", 3, 7, Ref(types, VT_R8), x}), DISP_E_BADINDEX);
    SafeArrayDestroy(types);
}

TEST_F(ArrayTest, a_script_counts_on_from_the_id_that_was_free) {
    MakeOverlap(control);
    ExpectScript(L"VBScript",
                 L"Dim a, b, c, n, first\n"
                 L"first = Map.OrvGetFreeDatID(\"C\", 1, 0)\n"
                 L"n = Map.OrvPolygonBuffering(0, \"A\", 1, \"B\", 1, \"C\", 1, a, b, c)\n"
                 L"If VarType(c) <> 8195 Then Err.Raise 5, \"test\", \"type \" & VarType(c)\n"
                 L"Map.ScaleX = n\n"
                 L"Map.ScaleY = first\n",
                 control);
    EXPECT_EQ(control.Get(L"ScaleX").Double(), 2.0);
    Value ids;
    ASSERT_EQ(Overlay(Value(), Value(), Ref(ids.v)), S_OK);  // what came first is there, and the next two follow
    EXPECT_EQ(Element(ids.v, 0).Int(), control.Get(L"ScaleY").Int() + 2);
}

/// "This array is fixed or temporarily locked", as the engine numbers it.
constexpr HRESULT kFixedArray = static_cast<HRESULT>(0x800A000A);

TEST_F(ArrayTest, a_script_that_hands_in_a_fixed_array_is_told_so) {
    MakeOverlap(control);
    const ScriptRun run =
        RunScript(L"VBScript", L"Dim a, b, c(3)\nMap.OrvPolygonBuffering 0, \"A\", 1, \"B\", 1, \"C\", 1, a, b, c\n", control);
    EXPECT_NE(run.error, L"");
    EXPECT_EQ(run.code, kFixedArray);
    EXPECT_EQ(control.Call(L"OrvGetLayDatCnt", {L"C", 1}).Int(), 0);
}

}  // namespace
}  // namespace orvane::test
