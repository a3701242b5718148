// The control as scripts use it.
#include "tests/ocx/container.h"
#include "tests/ocx/script_host.h"

namespace orvane::test {
namespace {

using ScriptTest = ComTest;

/// A script that tells what it found by writing properties; a wrong value raises an error with its words.
constexpr wchar_t kCheck[] =
    L"Sub Check(got, wanted, what)\n If got <> wanted Then Err.Raise 5, \"test\", what & \": \" & got\nEnd Sub\n";

TEST_F(ScriptTest, a_basic_script_makes_data_and_reads_it_back) {
    Client map = Client::New();
    ExpectScript(
        L"VBScript",
        std::wstring(kCheck) +
            L"Dim t, l, n, a, x, y, f(3)\n"
            L"Check Map.RDMInit(\"any\"), True, \"init\"\n"
            L"Check Map.OrvAddLayer(\"A\", 3, 2, 0), True, \"layer\"\n"
            L"Check Map.OrvAddDatEx(\"A\", 3, 7, 0, Array(1, 2, 3), Array(4, 5, 6.5), Array(0, 0, 0)), True, \"points\"\n"
            L"Check Map.OrvGetDatInfoEx(\"A\", 3, 7, t, l, n, a), True, \"info\"\n"
            L"Check t, 2, \"type\"\n"
            L"Check n, 3, \"count\"\n"
            L"Check Map.OrvGetDatPnt(\"A\", 3, 7, x, y), True, \"points out\"\n"
            L"Check UBound(x), 2, \"new array\"\n"
            L"Check y(2), 6.5, \"y\"\n"
            L"Check Map.OrvGetDatPnt(\"A\", 3, 7, f, x), True, \"own array\"\n"
            L"Check f(1), 2, \"own array's element\"\n"
            L"Map.Zoom = 2500\n"
            L"Check Map.Zoom, 2500, \"Zoom\"\n"
            L"Map.OrgDataActive(0) = True\n"
            L"Check Map.OrgDataActive(0), False, \"no such figure\"\n"
            L"Map.DebugMode = True\n",
        map);
    EXPECT_TRUE(map.Get(L"DebugMode").Bool()) << "the script did not come to its end";
}

TEST_F(ScriptTest, an_array_that_is_too_short_is_an_error_of_the_script) {
    Client map = Client::New();
    map.MakeTriangle();
    const ScriptRun run = RunScript(L"VBScript", L"Dim x(1), y(1)\nMap.OrvGetDatPnt \"A\", 3, 7, x, y\n", map);
    EXPECT_NE(run.error, L"");
}

TEST_F(ScriptTest, a_write_of_the_device_context_is_an_error_with_words) {
    Client map = Client::New();
    const ScriptRun run = RunScript(L"VBScript", L"Dim a\nMap.GetDC = 5\n", map);
    EXPECT_NE(run.error.find(L"read only"), std::wstring::npos) << run.error.size();
}

TEST_F(ScriptTest, a_script_hears_events_with_their_arguments) {
    Container form;
    ASSERT_EQ(form.Activate(), S_OK);
    form.control.MakeTriangle();
    Pump(50);
    ExpectScript(L"VBScript",
                 L"Sub Map_OnZoomChange(z)\n Map.ScaleBarMode = 3\n Map.ScaleX = z\nEnd Sub\n"
                 L"Sub Map_MouseMove(b, s, x, y)\n Map.ScaleY = x * 1000 + y\nEnd Sub\n",
                 form.control, [&] {
                     form.control.Put(L"Zoom", 4321);
                     form.Mouse(WM_MOUSEMOVE, 0, 12, 34);
                 });
    EXPECT_EQ(form.control.Get(L"ScaleBarMode").Int(), 3);
    EXPECT_EQ(form.control.Get(L"ScaleX").Double(), 4321.0);
    EXPECT_EQ(form.control.Get(L"ScaleY").Double(), 12034.0);
}

TEST_F(ScriptTest, the_other_engine_uses_it_too) {
    Client map = Client::New();
    ExpectScript(L"JScript",
                 L"if (!Map.OrvInit()) throw 'init';\n"
                 L"Map.Zoom = 1234;\n"
                 L"if (Map.OrvAddLayer('A', 1, 1, 0) != true) throw 'layer';\n"
                 L"Map.ScaleBarMode = Map.OrvGetLayDatCnt('A', 1) + 7;\n",
                 map);
    EXPECT_EQ(map.Get(L"Zoom").Int(), 1234);
    EXPECT_EQ(map.Get(L"ScaleBarMode").Int(), 7);
}

}  // namespace
}  // namespace orvane::test
