// Late-bound calls as typed programs and scripts make them.
#include "control/automation/table.h"
#include "hosts/ocx/guids.h"
#include "tests/ocx/client.h"

namespace orvane::test {
namespace {

class DispatchTest : public ComTest {
protected:
    Client control = Client::New();
};

constexpr WORD kCall = DISPATCH_METHOD | DISPATCH_PROPERTYGET;

TEST_F(DispatchTest, finds_members_without_regard_to_case) {
    EXPECT_EQ(control.IdOf(L"Zoom"), 8);
    EXPECT_EQ(control.IdOf(L"zOOm"), 8);
    EXPECT_EQ(control.IdOf(L"OrvInit"), 121);
    EXPECT_EQ(control.IdOf(L"Refresh"), -550);
    EXPECT_EQ(control.IdOf(L"AboutBox"), -552);
    EXPECT_EQ(control.IdOf(L"NoSuchMember"), DISPID_UNKNOWN);
    EXPECT_EQ(control.IdOf(L"OnZoomChange"), DISPID_UNKNOWN);
    EXPECT_EQ(control.IdOf(L"\x30ba\x30fc\x30e0"), DISPID_UNKNOWN);
    EXPECT_EQ(control.IdOf(std::wstring(5000, L'Z').c_str()), DISPID_UNKNOWN);
}

TEST_F(DispatchTest, every_member_of_the_table_has_its_dispid_behind_its_name) {
    for (const auto members : {Surface().Properties(), Surface().Methods()}) {
        for (const Member& member : members) {
            EXPECT_EQ(control.IdOf(std::wstring(member.name.begin(), member.name.end()).c_str()), member.dispid) << member.name;
        }
    }
}

TEST_F(DispatchTest, names_of_arguments_are_their_positions) {
    LPOLESTR names[] = {const_cast<LPOLESTR>(L"OrvAddDat"), const_cast<LPOLESTR>(L"LINETAG"), const_cast<LPOLESTR>(L"code")};
    DISPID ids[3] = {};
    EXPECT_EQ(control.Get()->GetIDsOfNames(IID_NULL, names, 3, LOCALE_USER_DEFAULT, ids), S_OK);
    EXPECT_EQ(ids[0], 138);
    EXPECT_EQ(ids[1], 3);
    EXPECT_EQ(ids[2], 0);
    names[1] = const_cast<LPOLESTR>(L"nothing");
    EXPECT_EQ(control.Get()->GetIDsOfNames(IID_NULL, names, 3, LOCALE_USER_DEFAULT, ids), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ids[1], DISPID_UNKNOWN);
    EXPECT_EQ(ids[2], 0);
    EXPECT_EQ(control.Get()->GetIDsOfNames(IID_IDispatch, names, 3, LOCALE_USER_DEFAULT, ids), DISP_E_UNKNOWNINTERFACE);
}

TEST_F(DispatchTest, named_arguments_are_refused_and_nothing_is_done) {
    control.Call(L"OrvInit");
    Value mode(1.5);
    Value y(2.0);
    VARIANT args[] = {y.v, mode.v};
    DISPID names[] = {1, 0};
    DISPPARAMS params{args, names, 2, 2};
    const double before = control.Call(L"OrvGetScreenPosX", {0}).Double();
    EXPECT_EQ(control.Get()->Invoke(127, IID_NULL, LOCALE_USER_DEFAULT, kCall, &params, nullptr, nullptr, nullptr),
              DISP_E_NONAMEDARGS);
    EXPECT_EQ(control.Call(L"OrvGetScreenPosX", {0}).Double(), before);
}

TEST_F(DispatchTest, wrong_calls_are_refused_with_the_argument_that_is_wrong) {
    EXPECT_EQ(control.Try(L"OrvAddDat", kCall, {L"A", 1}), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(control.Try(L"OrvInit", kCall, {1}), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(control.Try(L"OrvAddDat", kCall, {L"A", L"no number", 1, 1}), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(control.argError, 2U);  // the host counts from the last one
    EXPECT_EQ(control.Try(L"OrvInit", DISPATCH_PROPERTYPUT, {1}), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(control.Try(L"Zoom", DISPATCH_PROPERTYPUT, {1, 2}), DISP_E_BADPARAMCOUNT);
    Value missing;
    missing.v.vt = VT_ERROR;
    missing.v.scode = DISP_E_PARAMNOTFOUND;
    EXPECT_EQ(control.Try(L"OrvDspFit2", kCall, {missing}), DISP_E_PARAMNOTOPTIONAL);

    DISPPARAMS none{};
    EXPECT_EQ(control.Get()->Invoke(99999, IID_NULL, 0, kCall, &none, nullptr, nullptr, nullptr), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(control.Get()->Invoke(DISPID_VALUE, IID_NULL, 0, kCall, &none, nullptr, nullptr, nullptr), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(control.Get()->Invoke(8, IID_IDispatch, 0, kCall, &none, nullptr, nullptr, nullptr), DISP_E_UNKNOWNINTERFACE);
    EXPECT_EQ(control.Get()->Invoke(8, IID_NULL, 0, kCall, nullptr, nullptr, nullptr, nullptr), E_INVALIDARG);
    EXPECT_EQ(control.Get()->Invoke(8, IID_NULL, 0, 0, &none, nullptr, nullptr, nullptr), E_INVALIDARG);
}

TEST_F(DispatchTest, properties_are_read_and_written_in_their_types) {
    control.Call(L"OrvInit");
    EXPECT_EQ(control.Get(L"Zoom").v.vt, VT_I4);
    EXPECT_EQ(control.Get(L"RunMode").v.vt, VT_I2);
    EXPECT_EQ(control.Get(L"ScaleX").v.vt, VT_R8);
    EXPECT_EQ(control.Get(L"MapDraw").v.vt, VT_BOOL);
    EXPECT_EQ(control.Get(L"MapDraw").v.boolVal, VARIANT_TRUE);
    control.Put(L"Zoom", L"2500");
    EXPECT_EQ(control.Get(L"Zoom").Int(), 2500);
    control.Put(L"Zoom", 90000000);
    EXPECT_EQ(control.Get(L"Zoom").Int(), 50000000);
    control.Put(L"StrVisible", true);
    EXPECT_TRUE(control.Get(L"DigStrVisible").Bool());
    control.Put(L"MemHandle", 5);
    EXPECT_EQ(control.Get(L"MemHandle").Int(), 0);
}

TEST_F(DispatchTest, a_colour_has_all_its_bits_whatever_number_a_host_writes) {
    Value wide;
    wide.v.vt = VT_UI4;
    wide.v.ulVal = 0xFF0000FF;
    control.Put(L"ActiveColor", wide);
    EXPECT_EQ(static_cast<std::uint32_t>(control.Get(L"ActiveColor").Int()), 0xFF0000FFU);
    for (const auto& [given, rounded] : {std::pair{2.5, 2}, {3.5, 4}, {4.5, 4}}) {
        control.Put(L"ActiveColor", given);
        EXPECT_EQ(control.Get(L"ActiveColor").Int(), rounded) << given;
        control.Put(L"ScaleBarMode", given);
        EXPECT_EQ(control.Get(L"ScaleBarMode").Int(), rounded) << "as any other whole number: " << given;
    }
    control.Put(L"ActiveColor", 4278190335.0);
    EXPECT_EQ(static_cast<std::uint32_t>(control.Get(L"ActiveColor").Int()), 0xFF0000FFU);
}

TEST_F(DispatchTest, a_write_of_the_device_context_raises_the_exception_of_read_only_properties) {
    EXPECT_EQ(control.Try(L"GetDC", DISPATCH_PROPERTYPUT, {5}), DISP_E_EXCEPTION);
    EXPECT_EQ(control.exception.scode, CTL_E_SETNOTSUPPORTED);
    EXPECT_GT(SysStringLen(control.exception.bstrDescription), 0U);
    SysFreeString(control.exception.bstrDescription);
    SysFreeString(control.exception.bstrSource);
    Com<IErrorInfo> error;
    EXPECT_EQ(GetErrorInfo(0, error.Out()), S_OK);
    const Com<ISupportErrorInfo> support = control.As<ISupportErrorInfo>(IID_ISupportErrorInfo);
    ASSERT_TRUE(support);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(ToGuid(kMembersGuid)), S_OK);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IOleObject), S_FALSE);
}

TEST_F(DispatchTest, what_went_wrong_before_is_told_of_no_later_call) {
    EXPECT_EQ(control.Try(L"GetDC", DISPATCH_PROPERTYPUT, {5}), DISP_E_EXCEPTION);
    SysFreeString(control.exception.bstrDescription);
    SysFreeString(control.exception.bstrSource);
    EXPECT_EQ(control.Try(L"OrvSetLayColor", kCall, {5}), DISP_E_BADPARAMCOUNT);
    Com<IErrorInfo> error;
    EXPECT_EQ(GetErrorInfo(0, error.Out()), S_FALSE);
    EXPECT_FALSE(error);
}

TEST_F(DispatchTest, indexed_properties_take_their_index_and_the_value_last) {
    control.Call(L"OrvInit");
    const int figure = control.Call(L"OrvMakeOrgDatEx", {2, 1, 255, 0}).Int();
    control.PutAt(L"OrvOrgDataActive", {figure}, true);
    EXPECT_TRUE(control.Call(L"OrvOrgDataActive", {figure}).Bool());
    EXPECT_TRUE(control.Call(L"OrgDataActive", {figure}).Bool());
    EXPECT_EQ(control.Try(L"OrgDataActive", DISPATCH_PROPERTYPUTREF, {figure, false}), S_OK);
    EXPECT_FALSE(control.Call(L"OrgDataActive", {figure}).Bool());
}

TEST_F(DispatchTest, typed_places_receive_results_in_their_own_types) {
    control.MakeTriangle();
    long type = -1;
    long tag = -1;
    long count = -1;
    long active = -1;
    EXPECT_TRUE(control.Call(L"OrvGetDatInfoEx", {L"A", 3, 7, Ref(type), Ref(tag), Ref(count), Ref(active)}).Bool());
    EXPECT_EQ(type, 3);
    EXPECT_EQ(count, 3);
    EXPECT_EQ(active, 0);
    // Other widths are converted; what is passed by value receives nothing.
    short narrow = -1;
    double wide = -1;
    BSTR text = SysAllocString(L"before");
    EXPECT_TRUE(control.Call(L"OrvGetDatInfoEx", {L"A", 3, 7, Ref(narrow), Ref(wide), Ref(text), 5}).Bool());
    EXPECT_EQ(narrow, 3);
    EXPECT_EQ(wide, 0.0);
    EXPECT_STREQ(text, L"3");
    SysFreeString(text);
    count = 77;
    EXPECT_FALSE(control.Call(L"OrvGetDatInfoEx", {L"A", 3, 8, Ref(type), Ref(tag), Ref(count), Ref(active)}).Bool());
    EXPECT_EQ(count, 77) << "an output that the member leaves alone stays";
}

TEST_F(DispatchTest, a_value_that_its_place_cannot_hold_is_told_of) {
    control.Call(L"OrvInit");
    const int figure = control.Call(L"OrvMakeOrgDatEx", {3, 1, 0xFEDCBA, 1}).Int();
    long type = -1;
    long line = -1;
    long fill = -1;
    short color = -1;
    EXPECT_EQ(control.Try(L"OrvGetOrgDatEx", kCall, {figure, Ref(type), Ref(line), Ref(color), Ref(fill)}), DISP_E_OVERFLOW);
    EXPECT_EQ(control.argError, 1U);  // the host counts from the last one
    EXPECT_EQ(color, -1);
    EXPECT_EQ(type, 3) << "what fits is written all the same";
    EXPECT_EQ(fill, 1);
}

TEST_F(DispatchTest, a_place_without_a_sign_receives_the_bits) {
    control.Call(L"OrvInit");
    const int figure = control.Call(L"OrvMakeOrgDatEx", {3, 1, static_cast<int>(0xFF0000FF), 1}).Int();
    long type = -1;
    long line = -1;
    long fill = -1;
    long color = -1;
    unsigned long bits = 0;
    Value place;
    place.v.vt = VT_BYREF | VT_UI4;
    place.v.pulVal = &bits;
    control.Call(L"OrvGetOrgDatEx", {figure, Ref(type), Ref(line), Ref(color), Ref(fill)});
    EXPECT_EQ(control.Try(L"OrvGetOrgDatEx", kCall, {figure, Ref(type), Ref(line), place, Ref(fill)}), S_OK);
    EXPECT_EQ(bits, static_cast<unsigned long>(color));
    EXPECT_LT(color, 0) << "a number with all its bits";
}

TEST_F(DispatchTest, a_place_of_a_type_that_takes_no_value_is_refused_before_the_call) {
    control.MakeTriangle();
    IDispatch* object = nullptr;
    long number = -1;
    for (const VARTYPE type : {VT_DISPATCH, VT_UNKNOWN, VT_ERROR, VT_RECORD}) {
        Value place;
        place.v.vt = static_cast<VARTYPE>(VT_BYREF | type);
        place.v.ppdispVal = &object;
        EXPECT_EQ(control.Try(L"OrvGetDatInfoEx", kCall, {L"A", 3, 7, Ref(number), place, Ref(number), Ref(number)}),
                  DISP_E_TYPEMISMATCH)
            << type;
        EXPECT_EQ(control.argError, 2U);
        EXPECT_EQ(number, -1) << "nothing was written";
        place.v.vt = VT_EMPTY;
    }
}

TEST_F(DispatchTest, a_number_of_arguments_beyond_all_memory_is_refused_like_any_other) {
    VARIANT one;
    VariantInit(&one);
    for (const UINT count : {20000000U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
        DISPPARAMS params{&one, nullptr, count, 0};
        const Deadline deadline("a call with too many arguments", 5);
        EXPECT_EQ(control.Get()->Invoke(control.IdOf(L"OrvInit"), IID_NULL, 0, kCall, &params, nullptr, nullptr, nullptr),
                  DISP_E_BADPARAMCOUNT);
    }
}

TEST_F(DispatchTest, variables_of_a_script_receive_new_values) {
    control.MakeTriangle();
    Value type(L"text before");
    Value tag;
    Value count;
    Value active;
    EXPECT_TRUE(control.Call(L"OrvGetDatInfoEx", {L"A", 3, 7, Ref(type.v), Ref(tag.v), Ref(count.v), Ref(active.v)}).Bool());
    EXPECT_EQ(type.v.vt, VT_I4);
    EXPECT_EQ(type.v.lVal, 3);
    EXPECT_EQ(count.v.lVal, 3);
    Value null;
    null.v.vt = VT_BYREF | VT_VARIANT;
    EXPECT_EQ(control.Try(L"OrvGetDatInfoEx", kCall, {L"A", 3, 7, null, 0, 0, 0}), DISP_E_TYPEMISMATCH);
}

TEST_F(DispatchTest, a_bare_pointer_is_trusted) {
    control.MakeTriangle();
    double x[4] = {-1, -1, -1, -1};
    double y[4] = {-1, -1, -1, -1};
    EXPECT_TRUE(control.Call(L"OrvGetDatPnt", {L"A", 3, 7, Ref(x[0]), Ref(y[0])}).Bool());
    EXPECT_EQ(x[1], 100.0);
    EXPECT_EQ(y[2], 100.0);
    EXPECT_EQ(x[3], -1.0);
    long number = 0;
    EXPECT_EQ(control.Try(L"OrvGetDatPnt", kCall, {L"A", 3, 7, Ref(number), Ref(y[0])}), DISP_E_TYPEMISMATCH);
}

TEST_F(DispatchTest, an_array_by_reference_is_held_to_its_bounds) {
    control.MakeTriangle();
    SAFEARRAY* x = SafeArrayCreateVector(VT_R8, 5, 4);
    SAFEARRAY* y = SafeArrayCreateVector(VT_VARIANT, 0, 3);
    EXPECT_TRUE(control.Call(L"OrvGetDatPnt", {L"A", 3, 7, Ref(x, VT_R8), Ref(y, VT_VARIANT)}).Bool());
    long at = 6;
    double value = 0;
    SafeArrayGetElement(x, &at, &value);
    EXPECT_EQ(value, 100.0);
    Value whole;
    whole.v.vt = VT_ARRAY | VT_VARIANT;
    whole.v.parray = y;
    EXPECT_EQ(Element(whole.v, 2).Double(), 100.0);

    SAFEARRAY* tooShort = SafeArrayCreateVector(VT_R8, 0, 2);
    EXPECT_EQ(control.Try(L"OrvGetDatPnt", kCall, {L"A", 3, 7, Ref(x, VT_R8), Ref(tooShort, VT_R8)}), DISP_E_BADINDEX);
    at = 0;
    SafeArrayGetElement(tooShort, &at, &value);
    EXPECT_EQ(value, 0.0) << "nothing was written";
    SAFEARRAY* wrong = SafeArrayCreateVector(VT_I4, 0, 3);
    EXPECT_EQ(control.Try(L"OrvGetDatPnt", kCall, {L"A", 3, 7, Ref(x, VT_R8), Ref(wrong, VT_I4)}), DISP_E_TYPEMISMATCH);
    SafeArrayDestroy(x);
    SafeArrayDestroy(tooShort);
    SafeArrayDestroy(wrong);
}

TEST_F(DispatchTest, a_variant_by_reference_receives_a_new_array) {
    control.MakeTriangle();
    Value x;
    Value y(L"old");
    EXPECT_TRUE(control.Call(L"OrvGetDatPnt", {L"A", 3, 7, Ref(x.v), Ref(y.v)}).Bool());
    ASSERT_EQ(CountOf(x.v), 3);
    EXPECT_EQ(x.v.vt, VT_ARRAY | VT_VARIANT) << "the only arrays that scripts read";
    EXPECT_EQ(Element(x.v, 1).Double(), 100.0);
    EXPECT_EQ(Element(y.v, 2).Double(), 100.0);
    // An item that is missing has no points, and the variables stay.
    EXPECT_FALSE(control.Call(L"OrvGetDatPnt", {L"A", 3, 99, Ref(x.v), Ref(y.v)}).Bool());
    EXPECT_EQ(CountOf(x.v), 3);
}

TEST_F(DispatchTest, arrays_are_taken_by_value_and_by_reference_typed_and_of_variants) {
    control.MakeTriangle();
    Value z = Doubles({0, 0});
    EXPECT_TRUE(control.Call(L"OrvAddDatEx", {L"A", 3, 8, 0, Variants({1, L"2.5"}), Variants({3.0, true}), z}).Bool() == false)
        << "all arrays have the type of the first";
    EXPECT_TRUE(
        control.Call(L"OrvAddDatEx", {L"A", 3, 9, 0, Variants({1, L"2.5"}), Variants({3.0, 4}), Variants({0, 0})}).Bool());
    Value x = Variants({7, 8});
    SAFEARRAY* y = SafeArrayCreateVector(VT_VARIANT, 0, 2);
    EXPECT_TRUE(control.Call(L"OrvAddDatEx", {L"A", 3, 10, 0, Ref(x.v), Ref(y, VT_VARIANT), Ref(x.v)}).Bool());
    SafeArrayDestroy(y);
    double px[2] = {};
    double py[2] = {};
    EXPECT_TRUE(control.Call(L"OrvGetDatPnt", {L"A", 3, 9, Ref(px[0]), Ref(py[0])}).Bool());
    EXPECT_EQ(px[1], 2.5);
    EXPECT_TRUE(control.Call(L"OrvGetDatPnt", {L"A", 3, 10, Ref(px[0]), Ref(py[0])}).Bool());
    EXPECT_EQ(px[0], 7.0);
    EXPECT_EQ(py[0], 0.0) << "an empty element counts as 0";
}

TEST_F(DispatchTest, refused_arrays_leave_an_item_without_points) {
    control.MakeTriangle();
    SAFEARRAYBOUND bounds[] = {{2, 0}, {2, 0}};
    Value flat;
    flat.v.vt = VT_ARRAY | VT_R8;
    flat.v.parray = SafeArrayCreate(VT_R8, 2, bounds);
    EXPECT_FALSE(control.Call(L"AddDigDatEx", {L"A", 3, 20, 0, flat, Doubles({0}), Doubles({0})}).Bool());
    EXPECT_FALSE(control.Call(L"AddDigDatEx", {L"A", 3, 21, 0, Longs({1, 2}), Longs({1, 2}), Longs({1, 2})}).Bool());
    long n[4] = {9, 9, 9, 9};
    for (const int id : {20, 21}) {
        EXPECT_TRUE(control.Call(L"OrvGetDatInfoEx", {L"A", 3, id, Ref(n[0]), Ref(n[1]), Ref(n[2]), Ref(n[3])}).Bool());
        EXPECT_EQ(n[2], 0);
    }
}

TEST_F(DispatchTest, arrays_behind_a_count_are_read_as_far_as_it_tells) {
    control.MakeTriangle();
    double x[] = {-10, 200, 200};
    double y[] = {-10, -10, 200};
    EXPECT_EQ(control.Call(L"OrvTestArea", {Ref(x[0]), Ref(y[0]), 3, 2}).v.vt, VT_I4);
    EXPECT_EQ(control.Try(L"OrvTestArea", kCall, {Doubles({1, 2, 3}), Doubles({1, 2, 3}), 3, 2}), S_OK);
    EXPECT_EQ(control.Try(L"OrvTestArea", kCall, {Doubles({1, 2}), Doubles({1, 2, 3}), 3, 2}), DISP_E_BADINDEX);
}

TEST_F(DispatchTest, a_code_of_fifty_characters_is_a_key_in_every_way_of_reading_codes) {
    control.Call(L"OrvInit");
    const std::wstring code(50, L'c');
    EXPECT_TRUE(control.Call(L"OrvAddLayer", {code, 3, 2, 0}).Bool());
    EXPECT_TRUE(control.Call(L"AddDigDatEx", {code, 3, 7, 0, Doubles({1, 2}), Doubles({3, 4}), Doubles({0, 0})}).Bool());
    EXPECT_EQ(control.Call(L"OrvGetLayDatCnt", {code, 3}).Int(), 1);
    double x[2] = {};
    double y[2] = {};
    EXPECT_TRUE(control.Call(L"OrvGetDatPnt", {code, 3, 7, Ref(x[0]), Ref(y[0])}).Bool());
    EXPECT_EQ(x[1], 2.0);
    EXPECT_TRUE(control.Call(L"OrvSetLayColor", {code, 255}).Bool());
    EXPECT_TRUE(control.Call(L"OrvSetLayerName", {code, L"name"}).Bool());
    EXPECT_TRUE(control.Call(L"OrvDelDat", {code, 3, 7}).Bool());
}

TEST_F(DispatchTest, a_layer_keeps_four_bytes_of_its_name) {
    control.Call(L"OrvInit");
    EXPECT_TRUE(control.Call(L"DigMemAlloc2", {L"A", 3, 2, L"sheet", 0, 0.0, 0.0}).Bool());
    EXPECT_TRUE(control.Call(L"OrvSetLayerName", {L"A", L"ABCDEFG"}).Bool());
    wchar_t folder[MAX_PATH] = L"";
    GetTempPathW(MAX_PATH, folder);
    const std::wstring file = std::wstring(folder) + L"orvane_name";
    EXPECT_TRUE(control.Call(L"OrvPutOFileB", {file, L""}).Bool());
    const HANDLE layers = CreateFileW((file + L".Ovl").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(layers, INVALID_HANDLE_VALUE);
    std::string bytes(65536, '\0');
    DWORD got = 0;
    ReadFile(layers, bytes.data(), static_cast<DWORD>(bytes.size()), &got, nullptr);
    CloseHandle(layers);
    bytes.resize(got);
    EXPECT_NE(bytes.find("ABCD"), std::string::npos);
    EXPECT_EQ(bytes.find("ABCDE"), std::string::npos);
    for (const wchar_t* part : {L".Ovl", L".Ovi", L".Ovm", L".Ovb"}) DeleteFileW((file + part).c_str());
}

TEST_F(DispatchTest, values_of_every_type_and_null_references_never_crash) {
    // One of everything that a host can pass, at every place of some members of all shapes.
    std::vector<Value> odd(14);
    const VARTYPE plain[] = {VT_NULL,
                             VT_DISPATCH,
                             VT_UNKNOWN,
                             VT_ERROR,
                             VT_CY,
                             VT_DATE,
                             VT_UI1,
                             VT_I8,
                             VT_DECIMAL,
                             VT_BYREF | VT_I4,
                             VT_BYREF | VT_BSTR,
                             VT_BYREF | VT_VARIANT,
                             VT_BYREF | VT_ARRAY | VT_R8,
                             VT_ARRAY | VT_R8};
    for (std::size_t i = 0; i < odd.size(); ++i) {
        odd[i].v = VARIANT{};
        odd[i].v.vt = plain[i];
    }
    for (const wchar_t* name : {L"OrvAddDatEx", L"OrvGetDatPnt", L"OrvGetDatInfoEx", L"OrvTestArea", L"OrvGetActDat",
                                L"OrvGetOFileBEx", L"OrvActPolygonBuffering", L"OrvSetDatString", L"GetLayerInfo"}) {
        const Member* member = Surface().Find(static_cast<std::int32_t>(control.IdOf(name)));
        ASSERT_NE(member, nullptr);
        for (const Value& each : odd) {
            std::vector<VARIANT> args(member->args.size(), each.v);
            DISPPARAMS params{args.data(), nullptr, static_cast<UINT>(args.size()), 0};
            Value result;
            const Deadline deadline("a call with odd values");
            control.Get()->Invoke(member->dispid, IID_NULL, 0, kCall, &params, &result.v, nullptr, nullptr);
        }
    }
    for (Value& each : odd) VariantInit(&each.v);
}

}  // namespace
}  // namespace orvane::test
