// Metafiles of the old kind: a container's own, which takes the control's picture, and one whose handle a member gets.
#include <vector>

#include "tests/ocx/canvas.h"
#include "tests/ocx/container.h"

namespace orvane::test {
namespace {

constexpr int kMapWidth = 320;
constexpr int kMapHeight = 240;

/// An old metafile while it is written and played; its records are looked at by their functions.
class OldMetafile {
public:
    ~OldMetafile() {
        if (dc != nullptr) Close();
        DeleteMetaFile(file_);
    }
    void Close() { file_ = CloseMetaFile(std::exchange(dc, nullptr)); }
    std::vector<WORD> Functions() const {
        std::vector<WORD> found;
        EnumMetaFile(nullptr, file_, Collect, reinterpret_cast<LPARAM>(&found));
        return found;
    }
    UINT Bytes() const { return GetMetaFileBitsEx(file_, 0, nullptr); }
    void Play(const Canvas& canvas) const { EXPECT_TRUE(PlayMetaFile(canvas.dc, file_)); }

    HDC dc = CreateMetaFileW(nullptr);

private:
    static int CALLBACK Collect(HDC, HANDLETABLE*, METARECORD* record, int, LPARAM out) {
        reinterpret_cast<std::vector<WORD>*>(out)->push_back(record->rdFunction);
        return 1;
    }
    HMETAFILE file_ = nullptr;
};

class OldMetafileTest : public ComTest {
protected:
    void SetUp() override {
        map.MakeTriangle();
        EXPECT_TRUE(map.Call(L"OrvAddLayer", {L"L", 3, 2, 0}).Bool());
        EXPECT_TRUE(map.Call(L"OrvAddDatEx", {L"L", 3, 1, 0, Doubles({0, 100}), Doubles({0, 100}), Doubles({0, 0})}).Bool());
        EXPECT_TRUE(map.Call(L"OrvSetLayColor", {L"L", 0x0000FF}).Bool());
        const RECT whole{0, 0, kMapWidth, kMapHeight};
        EXPECT_EQ(OleDraw(map.Get(), DVASPECT_CONTENT, direct.dc, &whole), S_OK);
        map.Call(L"OrvDspFit");
        EXPECT_EQ(OleDraw(map.Get(), DVASPECT_CONTENT, direct.dc, &whole), S_OK);
        ASSERT_GT(direct.CountOf(kRed), 50);
    }
    Client map = Client::New();
    Canvas direct{kMapWidth, kMapHeight};
};

TEST_F(OldMetafileTest, without_a_word_of_the_whole_the_picture_stands_in_the_bounds) {
    const RECT bounds{20, 10, 20 + kMapWidth, 10 + kMapHeight};
    OldMetafile meta;
    EXPECT_EQ(OleDraw(map.Get(), DVASPECT_CONTENT, meta.dc, &bounds), S_OK);
    meta.Close();
    Canvas played(400, 300);
    meta.Play(played);
    int different = 0;
    for (int y = 0; y < 300; ++y) {
        for (int x = 0; x < 400; ++x) {
            const bool inside = x >= 20 && x < 20 + kMapWidth && y >= 10 && y < 10 + kMapHeight;
            different += played.At(x, y) != (inside ? direct.At(x - 20, y - 10) : kBackground) ? 1 : 0;
        }
    }
    // The rim of a map that is drawn on a memory context is not copied from its composed picture.
    EXPECT_LE(different, 2 * (kMapWidth + kMapHeight));
    EXPECT_EQ(played.CountOf(kRed), direct.CountOf(kRed));
}

TEST_F(OldMetafileTest, it_gets_the_picture_alone_and_no_word_of_a_viewport) {
    const RECT bounds{0, 0, kMapWidth, kMapHeight};
    OldMetafile meta;
    EXPECT_EQ(OleDraw(map.Get(), DVASPECT_CONTENT, meta.dc, &bounds), S_OK);
    meta.Close();
    for (const WORD function : meta.Functions()) {
        EXPECT_NE(function, META_SETVIEWPORTORG);
        EXPECT_NE(function, META_SETVIEWPORTEXT);
        EXPECT_NE(function, META_SETMAPMODE);
        EXPECT_NE(function, META_SETWINDOWEXT) << "the window is the container's";
    }
    EXPECT_LT(meta.Bytes(), kMapWidth * kMapHeight * 4U + 1000U) << "no bitmap of the whole screen";
}

TEST_F(OldMetafileTest, other_bounds_in_a_containers_own_window_stretch_the_picture) {
    OldMetafile meta;
    SetMapMode(meta.dc, MM_ANISOTROPIC);
    SetWindowExtEx(meta.dc, 200, 100, nullptr);
    const RECT bounds{100, 0, 200, 50};  // the right upper quarter
    EXPECT_EQ(OleDraw(map.Get(), DVASPECT_CONTENT, meta.dc, &bounds), S_OK);
    meta.Close();
    Canvas played(400, 300);
    SetMapMode(played.dc, MM_ANISOTROPIC);
    SetViewportExtEx(played.dc, 400, 300, nullptr);
    meta.Play(played);
    EXPECT_EQ(played.At(198, 2), kBackground);
    EXPECT_NE(played.At(202, 2), kBackground);
    EXPECT_NE(played.At(398, 147), kBackground);
    EXPECT_EQ(played.At(398, 152), kBackground);
    EXPECT_EQ(played.CountOf(kBackground), 400 * 300 - 200 * 150);
}

TEST_F(OldMetafileTest, members_that_draw_to_scale_leave_it_empty) {
    OldMetafile meta;
    EXPECT_EQ(GetDeviceCaps(meta.dc, HORZSIZE), 0) << "it is no device, so there is no scale";
    const int number = static_cast<int>(reinterpret_cast<LONG_PTR>(meta.dc));
    map.Call(L"OrvUserDcDrawEx", {number, 0, 0, kMapHeight, kMapWidth, 50.0, 50.0, 1000, 0});
    map.Call(L"OrvUserDcDraw", {number, 0, 0, kMapWidth, kMapHeight, 0});
    meta.Close();
    const std::vector<WORD> functions = meta.Functions();
    EXPECT_EQ(functions, std::vector<WORD>(functions.size(), 0)) << "nothing but the end, which has no function";
}

}  // namespace
}  // namespace orvane::test
