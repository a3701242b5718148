// The map on devices of another resolution than the screen's: a printer's page, and a metafile made for a printer.
#include <cmath>
#include <cstdio>

#include "tests/ocx/canvas.h"
#include "tests/ocx/container.h"
#include "tests/ocx/paper_printer.h"

namespace orvane::test {
namespace {

struct Drawn {
    std::vector<std::vector<POINT>> lines;
    std::vector<LONG> penWidths;
    RECT box{};  // of all that was drawn, in the device's pixels, right and bottom included

    static int CALLBACK Collect(HDC, HANDLETABLE*, const ENHMETARECORD* record, int, LPARAM target) {
        auto& drawn = *reinterpret_cast<Drawn*>(target);
        if (record->iType == EMR_POLYLINE16) {
            const auto& line = *reinterpret_cast<const EMRPOLYLINE16*>(record);
            drawn.lines.emplace_back();
            for (DWORD i = 0; i < line.cpts; ++i) drawn.lines.back().push_back({line.apts[i].x, line.apts[i].y});
        } else if (record->iType == EMR_CREATEPEN) {
            drawn.penWidths.push_back(reinterpret_cast<const EMRCREATEPEN*>(record)->lopn.lopnWidth.x);
        } else if (record->iType == EMR_EXTCREATEPEN) {
            drawn.penWidths.push_back(static_cast<LONG>(reinterpret_cast<const EMREXTCREATEPEN*>(record)->elp.elpWidth));
        }
        return 1;
    }
};

int NumberOf(HDC dc) { return static_cast<int>(reinterpret_cast<LONG_PTR>(dc)); }

/// What is drawn into a metafile whose numbers are those of the printer.
class PrinterMetafile {
public:
    PrinterMetafile() : dc(CreateEnhMetaFileW(info_.dc, nullptr, nullptr, nullptr)) {}
    Drawn Close() {
        const HENHMETAFILE file = CloseEnhMetaFile(dc);
        Drawn drawn;
        EXPECT_TRUE(EnumEnhMetaFile(nullptr, file, Drawn::Collect, &drawn, nullptr) || drawn.lines.empty());
        ENHMETAHEADER header{};
        GetEnhMetaFileHeader(file, sizeof header, &header);
        drawn.box = {header.rclBounds.left, header.rclBounds.top, header.rclBounds.right, header.rclBounds.bottom};
        DeleteEnhMetaFile(file);
        return drawn;
    }

private:
    PrinterDc info_{PrinterDc::Information()};

public:
    HDC dc;
};

/// A page that is printed into a file while it lives, and then its program.
class Page {
public:
    Page() : paper(PrinterDc::Page()), file_(PaperPrinter::FileName(L"page.ps")) {
        DOCINFOW document{sizeof document, L"map", file_.c_str(), nullptr, 0};
        EXPECT_GT(StartDocW(paper.dc, &document), 0);
        EXPECT_GT(StartPage(paper.dc), 0);
    }
    std::string Print() {
        EXPECT_GT(EndPage(paper.dc), 0);
        EXPECT_GT(EndDoc(paper.dc), 0);
        std::string program;
        FILE* const file = _wfopen(file_.c_str(), L"rb");
        if (file == nullptr) return program;
        char bytes[4096];
        while (const std::size_t got = std::fread(bytes, 1, sizeof bytes, file)) program.append(bytes, got);
        std::fclose(file);
        DeleteFileW(file_.c_str());
        return program;
    }
    PrinterDc paper;

private:
    std::wstring file_;
};

/// The rule by which a member places a picture on a host's device: `middle` of the map in the middle of `size_px` pixels.
struct Scale {
    int dotPerM;
    int zoom;

    int Round(double v) const { return static_cast<int>(v + 0.5); }
    double Origin(double middle, int size_px) const {
        return middle - Round(size_px * (static_cast<double>(zoom) / dotPerM)) / 2;
    }
    LONG X(double x, double middle, int size_px) const {
        return Round((x - Origin(middle, size_px)) * (static_cast<double>(dotPerM) / zoom));
    }
    /// Both in the map's sense, to the north; pixels go to the south.
    LONG Y(double y, double middle, int size_px) const { return X(-y, -middle, size_px); }
};

constexpr int kWidth = 4000;
constexpr int kHeight = 3000;
constexpr int kZoom = 1000;

class DeviceTest : public ComTest {
protected:
    void SetUp() override {
        ASSERT_EQ(form.Activate(), S_OK);
        map.Call(L"OrvInit");
        EXPECT_TRUE(map.Call(L"OrvAddLayer", {L"L", 3, 2, 0}).Bool());
        EXPECT_TRUE(map.Call(L"OrvAddDatEx", {L"L", 3, 1, 0, Doubles({0, 100}), Doubles({0, 50}), Doubles({0, 0})}).Bool());
        EXPECT_TRUE(map.Call(L"OrvSetLayLineSize", {L"L", 2}).Bool());
        EXPECT_TRUE(map.Call(L"OrvSetLayColor", {L"L", 0x0000FF}).Bool());
        Pump(50);
    }
    void Draw(HDC dc, const wchar_t* member = L"OrvUserDcDrawEx", int type = 1) {
        map.Call(member, {NumberOf(dc), 0, 0, kHeight, kWidth, 50.0, 25.0, kZoom, type});
    }
    Scale OnPaper() const { return {info.DotPerM(), kZoom}; }
    /// The window's pixels after a new composition.
    std::vector<std::uint32_t> Redrawn() {
        map.Call(L"OrvReDraw");
        Canvas screen(320, 240);
        const HDC window = ::GetDC(form.ControlWindow());
        BitBlt(screen.dc, 0, 0, 320, 240, window, 0, 0, SRCCOPY);
        ReleaseDC(form.ControlWindow(), window);
        GdiFlush();
        return std::vector<std::uint32_t>(screen.pixels, screen.pixels + 320 * 240);
    }

    PaperPrinter printer;
    PrinterDc info{PrinterDc::Information()};
    Container form{320, 240};
    Client& map = form.control;
};

TEST_F(DeviceTest, the_printer_is_finer_than_the_screen) {
    const HDC screen = ::GetDC(nullptr);
    EXPECT_EQ(GetDeviceCaps(screen, LOGPIXELSX), 96);
    ReleaseDC(nullptr, screen);
    EXPECT_EQ(info.Cap(LOGPIXELSX), PaperPrinter::kDpi);
    // 577 - 18 points of paper can be printed on, at 600 dots to 72 points; so many millimetres are 559 / 72 * 25.4.
    EXPECT_NEAR(info.Cap(HORZRES), 559 * 600 / 72.0, 1);
    EXPECT_NEAR(info.Cap(HORZSIZE), 559 / 72.0 * 25.4, 1);
}

TEST_F(DeviceTest, a_metafile_for_a_printer_has_the_map_to_scale_in_the_printers_pixels) {
    for (const wchar_t* member : {L"UserDcDrawEx", L"OrvUserDcDrawEx"}) {
        PrinterMetafile page;
        Draw(page.dc, member);
        const Drawn drawn = page.Close();
        ASSERT_EQ(drawn.lines.size(), 1U) << member;
        ASSERT_EQ(drawn.lines[0].size(), 2U);
        const Scale paper = OnPaper();
        EXPECT_EQ(drawn.lines[0][0].x, paper.X(0, 50, kWidth));
        EXPECT_EQ(drawn.lines[0][0].y, paper.Y(0, 25, kHeight));
        EXPECT_EQ(drawn.lines[0][1].x, paper.X(100, 50, kWidth));
        EXPECT_EQ(drawn.lines[0][1].y, paper.Y(50, 25, kHeight));
        // 100 metres at 1 : 1000 are ten centimetres of paper, whatever the printer's dots.
        EXPECT_NEAR((drawn.lines[0][1].x - drawn.lines[0][0].x) * 25.4 / PaperPrinter::kDpi, 100, 0.5);
        EXPECT_EQ(drawn.penWidths, std::vector<LONG>{12}) << "two pixels of the screen are 600 / 96, cut to 6, times two";
        EXPECT_EQ(drawn.box.left, drawn.lines[0][0].x);
        EXPECT_EQ(drawn.box.bottom, drawn.lines[0][0].y);
    }
}

TEST_F(DeviceTest, without_a_type_the_whole_rectangle_is_white_first) {
    PrinterMetafile page;
    Draw(page.dc, L"OrvUserDcDrawEx", 0);
    const Drawn drawn = page.Close();
    EXPECT_EQ(drawn.box.left, 0);
    EXPECT_EQ(drawn.box.top, 0);
    EXPECT_NEAR(drawn.box.right, kWidth, 1);
    EXPECT_NEAR(drawn.box.bottom, kHeight, 1);
}

TEST_F(DeviceTest, the_member_without_a_place_of_its_own_puts_the_views_corner_in_the_middle) {
    map.Put(L"Zoom", kZoom);
    map.Call(L"OrvMapJumpToXY", {90.0, -7.0});
    // The map point in the left top pixel; its y is told to the north.
    const double left = map.Call(L"OrvGetScreenPosX", {0}).Double();
    const double top = map.Call(L"OrvGetScreenPosY", {0}).Double();
    PrinterMetafile page;
    map.Call(L"OrvUserDcDraw", {NumberOf(page.dc), 0, 0, kWidth, kHeight, 1});  // in the order left, top, right, bottom
    const Drawn drawn = page.Close();
    ASSERT_EQ(drawn.lines.size(), 1U);
    const Scale paper = OnPaper();
    EXPECT_NEAR(drawn.lines[0][0].x, paper.X(0, left, kWidth), 1);
    EXPECT_NEAR(drawn.lines[0][0].y, paper.Y(0, top, kHeight), 1);
    EXPECT_NEAR(drawn.lines[0][1].x, paper.X(100, left, kWidth), 1);
    EXPECT_NEAR(drawn.lines[0][1].y, paper.Y(50, top, kHeight), 1);
}

TEST_F(DeviceTest, symbols_grow_with_the_printers_dots) {
    EXPECT_TRUE(map.Call(L"OrvDelLayDat", {L"L"}).Int() > 0);
    EXPECT_TRUE(map.Call(L"OrvAddLayer", {L"P", 3, 1, 0}).Bool());
    EXPECT_TRUE(map.Call(L"OrvAddDatEx", {L"P", 3, 1, 0, Doubles({50}), Doubles({25}), Doubles({0})}).Bool());
    EXPECT_TRUE(map.Call(L"OrvSetLayLineSize", {L"P", 10}).Bool());
    SIZE onScreen{};
    {
        const HDC meta = CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
        Draw(meta);
        const HENHMETAFILE file = CloseEnhMetaFile(meta);
        ENHMETAHEADER header{};
        GetEnhMetaFileHeader(file, sizeof header, &header);
        onScreen = {header.rclBounds.right - header.rclBounds.left, header.rclBounds.bottom - header.rclBounds.top};
        DeleteEnhMetaFile(file);
    }
    PrinterMetafile page;
    Draw(page.dc);
    const RECT onPaper = page.Close().box;
    ASSERT_GT(onScreen.cx, 4);
    EXPECT_NEAR(static_cast<double>(onPaper.right - onPaper.left) / static_cast<double>(onScreen.cx), 6, 0.7);
    EXPECT_NEAR(static_cast<double>(onPaper.bottom - onPaper.top) / static_cast<double>(onScreen.cy), 6, 0.7);
}

TEST_F(DeviceTest, a_printed_page_holds_the_line_at_its_place) {
    Page page;
    Draw(page.paper.dc);
    const std::string program = page.Print();
    const Scale paper = OnPaper();
    const std::string line = std::to_string(paper.X(0, 50, kWidth)) + " " + std::to_string(paper.Y(0, 25, kHeight)) + " moveto";
    const std::string to = std::to_string(paper.X(100, 50, kWidth)) + " " + std::to_string(paper.Y(50, 25, kHeight)) + " lineto";
    EXPECT_NE(program.find(line), std::string::npos) << line;
    EXPECT_NE(program.find(to), std::string::npos) << to;
    EXPECT_NE(program.find("12 setlinewidth"), std::string::npos);
}

TEST_F(DeviceTest, a_window_of_the_hosts_is_drawn_on_by_its_context) {
    const HWND window = CreateWindowExW(0, L"OrvaneTestForm", L"other", WS_POPUP | WS_VISIBLE, 500, 20, 300, 200, nullptr,
                                        nullptr, GetModuleHandleW(nullptr), nullptr);
    ASSERT_NE(window, nullptr);
    Pump(20);
    const HDC dc = ::GetDC(window);
    const Scale screen{GetDeviceCaps(dc, HORZRES) * 1000 / GetDeviceCaps(dc, HORZSIZE), 2000};
    map.Call(L"OrvUserDcDrawEx", {NumberOf(dc), 0, 0, 200, 300, 50.0, 25.0, 2000, 0});
    Canvas seen(300, 200);
    BitBlt(seen.dc, 0, 0, 300, 200, dc, 0, 0, SRCCOPY);
    ReleaseDC(window, dc);
    DestroyWindow(window);
    EXPECT_EQ(seen.At(0, 0), kWhite);
    EXPECT_EQ(seen.At(299, 199), kWhite);
    EXPECT_EQ(seen.At(screen.X(0, 50, 300), screen.Y(0, 25, 200)), kRed);
    EXPECT_EQ(seen.At(screen.X(99, 50, 300), screen.Y(49.5, 25, 200)), kRed);
    EXPECT_EQ(seen.At(screen.X(110, 50, 300), screen.Y(55, 25, 200)), kWhite);
}

TEST_F(DeviceTest, a_frame_for_a_context_that_only_informs_has_its_devices_numbers_and_leaves_the_screens) {
    EXPECT_EQ(info.Cap(TECHNOLOGY), DT_RASPRINTER);
    form.Connect();
    map.Call(L"OrvMapJumpToXY", {50.0, 25.0});
    Pump(20);
    const std::vector<std::uint32_t> before = Redrawn();
    const double left = map.Call(L"OrvGetScreenPosX", {0}).Double();
    const double right = map.Call(L"OrvGetScreenPosX", {319}).Double();
    Draw(info.dc);
    map.Call(L"OrvUserDcDraw", {info.Number(), 0, 0, kWidth, kHeight, 0});
    EXPECT_EQ(map.Get(L"Zoom").Int(), 10000);
    EXPECT_EQ(map.Call(L"OrvGetScreenPosX", {0}).Double(), left);
    EXPECT_EQ(map.Call(L"OrvGetScreenPosX", {319}).Double(), right);
    EXPECT_TRUE(Redrawn() == before);
    // Only what lies in the last frame can be hit until the screen composes its own, so a click tells how far that one reached:
    // half of the pixels to both sides of its middle, in metres of the printer's dots. The screen's dots would reach six times as
    // far.
    const double reach = kWidth * static_cast<double>(kZoom) / info.DotPerM() / 2;
    constexpr double kLineEnd = 100;
    constexpr double kMargin = 4;  // boxes are whole metres, and grown by one
    for (const double middle : {kLineEnd + reach - kMargin, kLineEnd + reach + kMargin}) {
        map.Call(L"OrvUserDcDrawEx", {info.Number(), 0, 0, kHeight, kWidth, middle, 25.0, kZoom, 1});
        form.listener.events.clear();
        form.Mouse(WM_LBUTTONDOWN, MK_LBUTTON, 160, 120);
        form.Mouse(WM_LBUTTONUP, 0, 160, 120);
        EXPECT_EQ(form.listener.CountOf("OnDataClick"), middle < kLineEnd + reach ? 1 : 0) << middle;
    }
}

TEST_F(DeviceTest, the_screen_has_its_own_numbers_again_afterwards) {
    map.Call(L"OrvDspFit");
    Pump(20);
    const std::vector<std::uint32_t> before = Redrawn();
    const double width = map.Call(L"OrvGetScreenPosX", {319}).Double();
    {
        Page page;
        Draw(page.paper.dc);
        page.Print();
    }
    EXPECT_EQ(map.Call(L"OrvGetScreenPosX", {319}).Double(), width);
    EXPECT_TRUE(Redrawn() == before);
}

TEST_F(DeviceTest, a_page_takes_the_control_stretched_to_its_bounds) {
    map.Call(L"OrvDspFit");
    Pump(20);
    const RECTL bounds{600, 1200, 3000, 3000};
    Page page;
    const HDC dc = page.paper.dc;
    EXPECT_EQ(
        map.As<IViewObject>(IID_IViewObject)->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, dc, dc, &bounds, nullptr, nullptr, 0),
        S_OK);
    const std::string program = page.Print();
    // The picture of 320 x 240 pixels was composed before; its rim of one pixel, here of 7.5, is not copied.
    for (const char* words :
         {"600 1200 2400 1800 rectclip", "608 1208 translate", "2392 1792 scale", "/Width 319", "/Height 239"}) {
        EXPECT_NE(program.find(words), std::string::npos) << words;
    }
}

}  // namespace
}  // namespace orvane::test
