// Texts between UTF-16 and code page 932. The same program runs in processes of several code pages, which must not matter.
#include "hosts/ocx/wide_text.h"
#include "tests/ocx/client.h"

namespace orvane::test {
namespace {

class TextTest : public ComTest {
protected:
    TextTest() { RecordProperty("code_page", static_cast<int>(GetACP())); }
    Client control = Client::New();
};

constexpr wchar_t kTokyo[] = L"\x6771\x4eac\x90fd \xff71 A\\~";  // 東京都 ｱ A\~

TEST_F(TextTest, the_process_has_the_code_page_that_the_driver_asked_for) {
    wchar_t wanted[16] = L"";
    if (GetEnvironmentVariableW(L"ORVANE_ACP", wanted, 16) == 0) GTEST_SKIP() << "no code page was asked for";
    EXPECT_EQ(GetACP(), static_cast<UINT>(_wtoi(wanted)));
}

TEST_F(TextTest, bytes_are_those_of_code_page_932_whatever_the_process_has) {
    EXPECT_EQ(FromWide(kTokyo), "\x93\x8c\x8b\x9e\x93\x73 \xb1 A\\~");
    EXPECT_EQ(ToWide("\x93\x8c\x8b\x9e\x93\x73 \xb1 A\\~"), kTokyo);
    EXPECT_EQ(FromWide(L"\x2460\x7e8a"), "\x87\x40\xfa\x5c") << "row 13 and an IBM extension";
}

TEST_F(TextTest, what_has_no_bytes_or_no_character_is_never_a_question_mark) {
    EXPECT_FALSE(FromWide(L"\x00e9").has_value());
    EXPECT_FALSE(FromWide(L"\xd83d\xde00").has_value());
    EXPECT_FALSE(FromWide(L"a\xd83d").has_value());
    EXPECT_FALSE(FromWide(L"\xde00 b").has_value());
    EXPECT_EQ(ToWide("a\x93"), L"a\xfffd");
    EXPECT_EQ(ToWide(""), L"");
    EXPECT_EQ(View(nullptr), L"");
}

TEST_F(TextTest, a_layer_with_a_japanese_code_is_met_again) {
    control.Call(L"OrvInit");
    EXPECT_TRUE(control.Call(L"OrvAddLayer", {kTokyo, 1, 1, 0}).Bool());
    EXPECT_TRUE(control.Call(L"OrvAddDat", {kTokyo, 1, 5, 0}).Bool());
    EXPECT_EQ(control.Call(L"OrvGetLayDatCnt", {kTokyo, 1}).Int(), 1);
    EXPECT_EQ(control.Call(L"OrvGetLayDatCnt", {L"\x6771\x4eac", 1}).Int(), 0);
}

TEST_F(TextTest, a_text_comes_back_as_it_went_in) {
    control.Call(L"OrvInit");
    const std::wstring path = std::wstring(L"C:\\\x5730\x56f3\\") + L"\x8868.txt";  // 地図, 表: a trail byte is a backslash
    EXPECT_TRUE(control.Call(L"DigMemAlloc2", {L"A", 1, 1, path, 0, 0.0, 0.0}).Bool());
    EXPECT_EQ(control.Call(L"GetLayPath", {L"A", 1}).Text(), path);
    Value variable;
    variable = control.Call(L"GetLayPath", {L"A", 1});
    EXPECT_EQ(variable.v.vt, VT_BSTR);
}

TEST_F(TextTest, a_member_that_is_given_a_character_without_bytes_answers_its_failure_value) {
    control.Call(L"OrvInit");
    EXPECT_FALSE(control.Call(L"OrvAddLayer", {L"caf\x00e9", 1, 1, 0}).Bool());
    EXPECT_FALSE(control.Call(L"OrvAddLayer", {L"caf", 1, 1, 0}).Bool() == false);
    EXPECT_EQ(control.Call(L"OrvGetLayDatCnt", {L"caf\x00e9", 1}).Int(), 0);
    EXPECT_EQ(control.Call(L"OrvGetDatInfo", {L"\xd83d", 1, 0}).Int(), -1);
}

TEST_F(TextTest, a_text_ends_at_its_first_zero) {
    control.Call(L"OrvInit");
    EXPECT_TRUE(control.Call(L"OrvAddLayer", {std::wstring(L"A\0B", 3), 1, 1, 0}).Bool());
    EXPECT_TRUE(control.Call(L"OrvAddDat", {L"A", 1, 5, 0}).Bool());
}

}  // namespace
}  // namespace orvane::test
