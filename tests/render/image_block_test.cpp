#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>

#include "render/points.h"
#include "tests/render/render_rig.h"

namespace orvane {
namespace {

using testing::Contains;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

using Lines = std::vector<std::string>;

const std::string kActivePen = "dc SelectObject pen(0x0 3 0x0000FF)";
const std::string kOldPen = "dc SelectObject pen(0x0 1 0x000000)";
const std::string kBlackPen = kOldPen;

Lines operator+(Lines lines, const Lines& more) {
    lines.insert(lines.end(), more.begin(), more.end());
    return lines;
}

/// One layer that shows a.bmp, of 16 x 8 pixels, as 20 x 10 at every scale, and on.bmp, of 5 x 7 pixels, for active items.
/// Lines are told with their context; those that a drawing makes are counted on from one drawing to the next.
class ImageBlockTest : public testing::Test {
protected:
    ImageBlockTest() {
        rig.AddLayer("P", kLayPoint);
        Layer().imgMode = 1;
        Layer().imgfname.Set("a.bmp");
        Layer().bmWidth = 20;
        Layer().bmHeight = 10;
        Layer().imgMinScl = Layer().imgMaxScl = 1;
        sizes = {{"a.bmp", {16, 8}}, {"on.bmp", {5, 7}}};
        rig.dc.SetImageSizes([this](std::string_view name) {
            const auto found = sizes.find(std::string(name));
            return found != sizes.end() ? found->second : TextSize{};
        });
    }
    LayerDef& Layer() { return rig.Layer(0); }
    DigDat& Item(std::size_t i) { return rig.Item(0, i); }
    void AddPoint(double x, double y, std::int32_t lineTag = 0) { rig.AddItem("P", {{x, y}}, lineTag); }
    void AddPointOfSubLayer(double x, double y, std::int32_t subLayNo) {
        AddPoint(x, y);
        Item(rig.Block(0).dats.size() - 1).subLayNo = subLayNo;
    }
    /// A sub layer that shows on.bmp as 6 x 4.
    SubLayDef& AddImageSubLayer(std::int32_t subLayNo) {
        SubLayDef& sub = rig.AddSubLayer(0, subLayNo);
        sub.imgMode = 1;
        sub.imgfname.Set("on.bmp");
        sub.bmWidth = 6;
        sub.bmHeight = 4;
        sub.imgMinScl = sub.imgMaxScl = 1;
        return sub;
    }

    Lines Draw(std::int32_t item = kAllItems) {
        DrawImageBlock(rig.store, rig.frame, 0, 0, true, rig.scratch, item);
        Lines lines = rig.list->Lines();
        rig.list->Clear();
        return lines;
    }
    /// Lines of one drawing whose verb, behind the context, begins so.
    Lines Drawn(std::string_view verb) {
        DrawImageBlock(rig.store, rig.frame, 0, 0, true, rig.scratch, kAllItems);
        return rig.Verbs(verb);
    }
    /// The boxes (x y width height) of the images drawn, each of which takes two blits.
    Lines Boxes() {
        Lines boxes;
        for (const std::string& line : Drawn("StretchBlt")) {
            std::size_t end = std::string("StretchBlt").size();
            for (int i = 0; i < 4; ++i) end = line.find(' ', end + 1);
            const std::string box = line.substr(11, end - 11);
            if (line.find("0x8800C6") != std::string::npos) boxes.push_back(box);
        }
        return boxes;
    }

    RenderRig rig;
    std::map<std::string, TextSize> sizes;
};

/// What makes the pair of an image of this size: loader, bitmap of the file, then the numbers of the contexts and bitmaps of the
/// three layers in the order of their making.
Lines PairVerbs(int loader, int file, const std::string& size, int firstDc, int firstBitmap) {
    const auto n = [](int number) { return std::to_string(number); };
    const std::string load = n(loader) + " ";
    const std::string mono = n(firstDc), color = n(firstDc + 1), mask = n(firstDc + 2);
    const std::string blt = " BitBlt 0 0 " + size + " ";
    return {load + "SelectObject bitmap#" + n(file),
            load + "SetBkColor 0xFFFFFF",
            load + "CreateCompatibleDC " + mono,
            load + "CreateBitmap " + size + " bitmap#" + n(firstBitmap),
            mono + " SelectObject bitmap#" + n(firstBitmap),
            mono + blt + n(loader) + " 0 0 0xCC0020",
            load + "CreateCompatibleDC " + color,
            load + "CreateCompatibleBitmap " + size + " bitmap#" + n(firstBitmap + 1),
            color + " SelectObject bitmap#" + n(firstBitmap + 1),
            color + blt + mono + " 0 0 0x330008",
            color + blt + n(loader) + " 0 0 0x8800C6",
            load + "CreateCompatibleDC " + mask,
            load + "CreateCompatibleBitmap " + size + " bitmap#" + n(firstBitmap + 2),
            mask + " SelectObject bitmap#" + n(firstBitmap + 2),
            mask + blt + mono + " 0 0 0xCC0020",
            load + "SetBkColor 0xFFFFFF"};
}

/// The two blits of an image: mask context and bitmap, colour context and bitmap.
Lines BlitVerbs(const std::string& box, const std::string& size, int mask, int maskBitmap, int color, int colorBitmap) {
    const auto n = [](int number) { return std::to_string(number); };
    return {n(mask) + " SelectObject bitmap#" + n(maskBitmap),
            "dc StretchBlt " + box + " " + n(mask) + " 0 0 " + size + " 0x8800C6",
            n(color) + " SelectObject bitmap#" + n(colorBitmap),
            "dc StretchBlt " + box + " " + n(color) + " 0 0 " + size + " 0xEE0086"};
}

// --- Images -------------------------------------------------------------------------------------------------------------------

TEST_F(ImageBlockTest, DrawsAPointVerbByVerb) {
    AddPoint(100, 50);
    const Lines expected = Lines{"dc CreateCompatibleDC 2", kActivePen, "2 LoadImage \"a.bmp\" bitmap#1"} +
                           PairVerbs(2, 1, "16 8", 3, 2) + Lines{"2 LoadImage \"\" bitmap#0"} +
                           BlitVerbs("90 45 20 10", "16 8", 5, 4, 4, 3) + Lines{kOldPen};
    EXPECT_THAT(Draw(), ElementsAreArray(expected));
    EXPECT_EQ(Item(0).drawnFlg, 1);
}

TEST_F(ImageBlockTest, ImagesAreReadOncePerBlockAndTakeTwoBlitsAnItem) {
    for (int i = 0; i < 3; ++i) AddPoint(100 + i, 50);
    const Lines lines = Draw();
    EXPECT_THAT(lines, Contains("2 LoadImage \"a.bmp\" bitmap#1").Times(1));
    const Lines tail = BlitVerbs("90 45 20 10", "16 8", 5, 4, 4, 3) + BlitVerbs("91 45 20 10", "16 8", 5, 4, 4, 3) +
                       BlitVerbs("92 45 20 10", "16 8", 5, 4, 4, 3) + Lines{kOldPen};
    EXPECT_THAT(Lines(lines.end() - 13, lines.end()), ElementsAreArray(tail));
}

TEST_F(ImageBlockTest, ImagesAreReadAnewInEachFrame) {
    AddPoint(100, 50);
    Draw();
    EXPECT_EQ(Drawn("LoadImage").size(), 2u);
}

TEST_F(ImageBlockTest, BlockWithoutItemsReadsNothing) {
    EXPECT_THAT(Draw(), ElementsAreArray(Lines{"dc CreateCompatibleDC 2", kActivePen, kOldPen}));
}

TEST_F(ImageBlockTest, LoaderIsMadeFromTheReferenceContext) {
    RecordContext reference(rig.list, "reference");
    rig.frame.reference = &reference;
    AddPoint(100, 50);
    EXPECT_EQ(Draw()[0], "reference CreateCompatibleDC 3");
}

TEST_F(ImageBlockTest, TransparentColorIsTheStores) {
    rig.store.bgColor = 0x123456;
    AddPoint(100, 50);
    const Lines colors = Drawn("SetBkColor");
    EXPECT_THAT(colors, ElementsAreArray(Lines{"SetBkColor 0x123456", "SetBkColor 0xFFFFFF"}));
}

TEST_F(ImageBlockTest, NameMustEndInBmpInAnyCase) {
    AddPoint(100, 50);
    for (const char* name : {"a.BMP", "a.bMp", ".bmp"}) {
        Layer().imgfname.Set(name);
        sizes[name] = {16, 8};
        EXPECT_EQ(Boxes().size(), 1u) << name;
    }
    Item(0).drawnFlg = kUntouched;
    for (const char* name : {"a.png", "a.bmp ", "bmp", "", "a.bmq", "a,bmp"}) {
        Layer().imgfname.Set(name);
        sizes[name] = {16, 8};
        EXPECT_THAT(Draw(), IsEmpty()) << name;
    }
    EXPECT_EQ(Item(0).drawnFlg, kUntouched);
}

TEST_F(ImageBlockTest, FileThatCannotBeReadIsTriedAgainAtEveryItem) {
    sizes.clear();
    for (int i = 0; i < 3; ++i) AddPoint(100, 50);
    Layer().imgactfname.Set("on.bmp");
    const Lines load{"2 LoadImage \"a.bmp\" bitmap#0", "2 LoadImage \"on.bmp\" bitmap#0"};
    EXPECT_THAT(Draw(), ElementsAreArray(Lines{"dc CreateCompatibleDC 2", kActivePen} + load + load + load + Lines{kOldPen}));
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(Item(i).drawnFlg, 1);
}

TEST_F(ImageBlockTest, FileIsReadAtTheFirstItemReachedEvenWhenThatLiesOutside) {
    AddPoint(-1000, 50);
    EXPECT_EQ(Drawn("LoadImage").size(), 2u);
    EXPECT_EQ(Item(0).drawnFlg, 0);
}

TEST_F(ImageBlockTest, ActiveImageAloneShowsNothingAndIsNotReadAgain) {
    sizes.erase("a.bmp");
    Layer().imgactfname.Set("on.bmp");
    for (std::size_t i = 0; i < 2; ++i) {
        AddPoint(100, 50);
        Item(i).active = 1;
    }
    const Lines lines = Draw();
    EXPECT_THAT(lines, Contains("2 LoadImage \"a.bmp\" bitmap#0").Times(1));
    EXPECT_THAT(lines, Not(Contains(StartsWith("dc StretchBlt"))));
    EXPECT_THAT(lines, Not(Contains(StartsWith("dc Polyline"))));
    EXPECT_EQ(Item(1).drawnFlg, 1);
}

// --- Active items -------------------------------------------------------------------------------------------------------------

TEST_F(ImageBlockTest, ActiveItemWithAnActiveImageTakesItsSizeAsSource) {
    Layer().imgactfname.Set("on.bmp");
    AddPoint(100, 50);
    AddPoint(100, 50);
    Item(1).active = 1;
    const Lines expected = Lines{"dc CreateCompatibleDC 2", kActivePen, "2 LoadImage \"a.bmp\" bitmap#1"} +
                           PairVerbs(2, 1, "16 8", 3, 2) + Lines{"2 LoadImage \"on.bmp\" bitmap#5"} +
                           PairVerbs(2, 5, "5 7", 6, 6) + BlitVerbs("90 45 20 10", "16 8", 5, 4, 4, 3) +
                           BlitVerbs("90 45 20 10", "5 7", 8, 8, 7, 7) + Lines{kOldPen};
    EXPECT_THAT(Draw(), ElementsAreArray(expected));
}

TEST_F(ImageBlockTest, ActiveItemWithoutActiveImageGetsAFrameInTheActiveColor) {
    AddPoint(100, 50);
    Item(0).active = 1;
    rig.store.view.DpiRatio = 2;
    Lines lines = Draw();
    const std::string pen = "dc SelectObject pen(0x0 6 0x0000FF)";
    EXPECT_EQ(lines[1], pen);
    const Lines tail = BlitVerbs("80 40 40 20", "16 8", 5, 4, 4, 3) +
                       Lines{pen, "dc Polyline [(80,40) (80,60) (120,60) (120,40) (80,40)]", kOldPen, kOldPen};
    EXPECT_THAT(Lines(lines.end() - 8, lines.end()), ElementsAreArray(tail));
}

// --- Places and sizes ---------------------------------------------------------------------------------------------------------

TEST_F(ImageBlockTest, PositionTellsWhichCornerStandsOnThePoint) {
    AddPoint(100, 50);
    const char* boxes[] = {"90 45 20 10", "100 50 20 10", "100 40 20 10", "80 50 20 10", "80 40 20 10", "90 45 20 10"};
    for (std::int32_t pos = 0; pos < 6; ++pos) {
        Layer().imgPos = pos;
        EXPECT_THAT(Boxes(), ElementsAreArray(Lines{boxes[pos]})) << pos;
    }
    Layer().imgPos = -1;
    EXPECT_THAT(Boxes(), ElementsAreArray(Lines{"90 45 20 10"}));
}

TEST_F(ImageBlockTest, OddSidesAreHalvedDownward) {
    Layer().bmWidth = 21;
    Layer().bmHeight = 11;
    AddPoint(100, 50);
    EXPECT_THAT(Boxes(), ElementsAreArray(Lines{"90 45 21 11"}));
    Item(0).active = 1;
    EXPECT_THAT(Drawn("Polyline"), ElementsAreArray(Lines{"Polyline [(90,45) (90,55) (110,55) (110,45) (90,45)]"}));
}

TEST_F(ImageBlockTest, SidesGrowWithTheWholeDpiRatioAndTheScaleAndAreCut) {
    Layer().imgMinScl = 0;
    Layer().imgMaxScl = 100;
    Layer().bmWidth = 3;
    Layer().bmHeight = 7;
    AddPoint(100, 50);
    rig.store.view.DpiRatio = 2.9;
    rig.store.view.Zoom = 800;  // 1.25 pixels a unit: the point comes to (125, 63), the sides to 7.5 and 17.5
    EXPECT_THAT(Boxes(), ElementsAreArray(Lines{"122 55 7 17"}));
}

TEST_F(ImageBlockTest, EqualScaleBoundsMakeAllImagesOneSizeAtAllZooms) {
    Layer().imgMinScl = Layer().imgMaxScl = 0.5;
    rig.AddItem("P", {{0, 0}});
    rig.frame.y = 0;
    for (const std::int32_t zoom : {1, 1000, 70000}) {
        rig.store.view.Zoom = zoom;
        EXPECT_THAT(Boxes(), ElementsAreArray(Lines{"-5 -2 10 5"})) << zoom;
    }
}

TEST_F(ImageBlockTest, BoundsOfAnUnsetScaleMakeTheImageVanishAndCountAsDrawn) {
    Layer().imgMinScl = Layer().imgMaxScl = 0;
    AddPoint(100, 50);
    EXPECT_THAT(Boxes(), ElementsAreArray(Lines{"100 50 0 0"}));
    EXPECT_EQ(Item(0).drawnFlg, 1);
}

TEST_F(ImageBlockTest, PendingOffsetAndTurnPlaceThePoint) {
    rig.store.view.Rotate = 90;  // world (x, y) goes to (y, -x): map (-50, -40), world (-50, 40), comes to (40, 50)
    rig.frame.y = 0;
    rig.frame.pendX = 0.75;
    rig.frame.pendY = -0.75;
    AddPoint(-50, -40);
    // The coarse degree leaves the turned point a hair beside (40, 50): 41.25 and 49.75 before the cut.
    EXPECT_THAT(Boxes(), ElementsAreArray(Lines{"31 44 20 10"}));
}

TEST_F(ImageBlockTest, BoxDecidesWhetherTheImageShows) {
    AddPoint(-9, 50);   // comes to -8: the box ends at 2
    AddPoint(-12, 50);  // comes to -11: the box ends at -1
    Item(0).clipFlg = Item(1).clipFlg = 0;
    EXPECT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Item(0).drawnFlg, 1);
    EXPECT_EQ(Item(1).drawnFlg, 0);
    Layer().imgPos = 1;
    EXPECT_EQ(Boxes().size(), 2u) << "both hang to the right now";
}

TEST_F(ImageBlockTest, SecondStripCountsAsTheFirst) {
    AddPoint(150, 90);
    rig.frame.stripA = {0, 0, 20, 100};
    rig.frame.stripB = {140, 0, 200, 20};
    EXPECT_EQ(Boxes().size(), 1u);
    rig.frame.stripB = {0, 90, 200, 100};
    EXPECT_EQ(Boxes().size(), 0u);
    EXPECT_EQ(Item(0).drawnFlg, 0);
}

// --- Who is let through -------------------------------------------------------------------------------------------------------

TEST_F(ImageBlockTest, LineTagAboveZeroInModeOneIsShownHereAndHiddenAsASymbol) {
    AddPoint(100, 50, 5);
    rig.store.LineTagMode = 1;
    EXPECT_EQ(Boxes().size(), 1u);
    DrawSymbolBlock(rig.store, rig.frame, 0, 0, true, rig.scratch, kAllItems);
    EXPECT_THAT(rig.Verbs("Polygon"), IsEmpty());
}

TEST_F(ImageBlockTest, LineTagMinusOneNeverShowsAndKeepsItsFlag) {
    AddPoint(100, 50, -1);
    EXPECT_THAT(Drawn("LoadImage"), IsEmpty());
    EXPECT_EQ(Item(0).drawnFlg, kUntouched);
}

TEST_F(ImageBlockTest, ItemWithoutPointsIsLeftAlone) {
    rig.AddItem("P", {});
    EXPECT_THAT(Drawn("LoadImage"), IsEmpty());
    EXPECT_EQ(Item(0).drawnFlg, kUntouched);
}

TEST_F(ImageBlockTest, UnknownSubLayerShowsTheLayersImage) {
    AddImageSubLayer(4);
    AddPointOfSubLayer(100, 50, 5);
    AddPointOfSubLayer(100, 50, -4);
    EXPECT_THAT(Boxes(), ElementsAreArray(Lines{"90 45 20 10", "90 45 20 10"}));
}

// --- Items handed on ----------------------------------------------------------------------------------------------------------

TEST_F(ImageBlockTest, SubLayerWithImagesShowsItsOwnAtItsOwnScaleAndPlace) {
    SubLayDef& sub = AddImageSubLayer(4);
    sub.imgMinScl = sub.imgMaxScl = 2;
    sub.imgPos = 1;
    AddPointOfSubLayer(100, 50, 4);
    AddPoint(100, 50);
    const Lines ofSubLayer = Lines{"dc CreateCompatibleDC 3", kActivePen, "3 LoadImage \"on.bmp\" bitmap#1"} +
                             PairVerbs(3, 1, "5 7", 4, 2) + Lines{"3 LoadImage \"\" bitmap#0"} +
                             BlitVerbs("100 50 12 8", "5 7", 6, 4, 5, 3) + Lines{kActivePen};
    const Lines ofLayer = Lines{"2 LoadImage \"a.bmp\" bitmap#5"} + PairVerbs(2, 5, "16 8", 7, 6) +
                          Lines{"2 LoadImage \"\" bitmap#0"} + BlitVerbs("90 45 20 10", "16 8", 9, 8, 8, 7) + Lines{kOldPen};
    // The single item puts back the pen that it found, which is the one of the walk around it.
    EXPECT_THAT(Draw(), ElementsAreArray(Lines{"dc CreateCompatibleDC 2", kActivePen} + ofSubLayer + ofLayer));
}

TEST_F(ImageBlockTest, SubLayerWithoutImagesIsDrawnAsASymbol) {
    SubLayDef& sub = rig.AddSubLayer(0, 4);
    sub.pntType = 2;
    sub.color = 0xABCDEF;
    Layer().color = 0x00FF00;
    AddPointOfSubLayer(100, 50, 4);
    const Lines symbol{kBlackPen,
                       "dc SelectObject brush(0x00FF00)",
                       kBlackPen,
                       "dc SelectObject brush(0xABCDEF)",
                       "dc BeginPath",
                       "dc Ellipse 90 40 110 60",
                       "dc EndPath",
                       "dc FillPath",
                       "dc Ellipse 90 40 110 60",
                       "dc SelectObject brush(0x00FF00)",
                       "dc SelectObject brush(0xFFFFFF)",
                       kActivePen};
    EXPECT_THAT(Draw(), ElementsAreArray(Lines{"dc CreateCompatibleDC 2", kActivePen} + symbol + Lines{kOldPen}));
    EXPECT_EQ(Item(0).drawnFlg, 1);
}

TEST_F(ImageBlockTest, SymbolOfASubLayerHeedsTheLineTagModeThatImagesDoNot) {
    rig.AddSubLayer(0, 4);
    AddPointOfSubLayer(100, 50, 4);
    Item(0).lineTag = 5;
    rig.store.LineTagMode = 1;
    EXPECT_THAT(Drawn("Polygon"), IsEmpty());
    EXPECT_EQ(Item(0).drawnFlg, kUntouched);
}

TEST_F(ImageBlockTest, SymbolLayerHandsItemsOfImageSubLayersOver) {
    Layer().imgMode = 0;
    Layer().pntType = 1;
    AddImageSubLayer(4);
    AddPointOfSubLayer(100, 50, 4);
    AddPoint(100, 50);
    DrawSymbolBlock(rig.store, rig.frame, 0, 0, true, rig.scratch, kAllItems);
    Lines lines = rig.list->Lines();
    const Lines tools{kBlackPen, "dc SelectObject brush(0xDCDCDC)"};
    const Lines image = Lines{"dc CreateCompatibleDC 2", kActivePen, "2 LoadImage \"on.bmp\" bitmap#1"} +
                        PairVerbs(2, 1, "5 7", 3, 2) + Lines{"2 LoadImage \"\" bitmap#0"} +
                        BlitVerbs("97 48 6 4", "5 7", 5, 4, 4, 3) + Lines{kBlackPen};
    const Lines symbol{"dc BeginPath", "dc Polygon [(90,40) (90,60) (110,60) (110,40)]", "dc EndPath", "dc FillPath",
                       "dc Polygon [(90,40) (90,60) (110,60) (110,40)]"};
    EXPECT_THAT(lines, ElementsAreArray(tools + image + tools + symbol + Lines{"dc SelectObject brush(0xFFFFFF)", kBlackPen}));
    EXPECT_EQ(Item(0).drawnFlg, 1);
}

TEST_F(ImageBlockTest, SubLayerThatIsSwitchedOffHidesTheItemAndClearsItsFlag) {
    AddImageSubLayer(4).dspFlg = 0;
    AddPointOfSubLayer(100, 50, 4);
    EXPECT_THAT(Draw(), ElementsAreArray(Lines{"dc CreateCompatibleDC 2", kActivePen, kOldPen}));
    EXPECT_EQ(Item(0).drawnFlg, 0);
}

TEST_F(ImageBlockTest, ImageOfASubLayerThatIsNoBmpLeavesTheFlagAlone) {
    AddImageSubLayer(4).imgfname.Set("on.png");
    AddPointOfSubLayer(100, 50, 4);
    EXPECT_THAT(Drawn("LoadImage"), IsEmpty());
    EXPECT_EQ(Item(0).drawnFlg, kUntouched);
}

TEST_F(ImageBlockTest, LayerWithoutABmpDrawsNoneOfItsSubLayersEither) {
    Layer().imgfname.Set("a.png");
    AddImageSubLayer(4);
    AddPointOfSubLayer(100, 50, 4);
    EXPECT_THAT(Draw(), IsEmpty());
}

TEST_F(ImageBlockTest, OneItemTakesItsSubLayersImageAndNothingWithoutOne) {
    AddImageSubLayer(4);
    AddPoint(100, 50);
    AddPointOfSubLayer(100, 50, 4);
    AddPointOfSubLayer(100, 50, 9);
    EXPECT_THAT(Draw(0), IsEmpty());
    EXPECT_THAT(Draw(2), IsEmpty());
    EXPECT_THAT(Draw(3), IsEmpty());
    EXPECT_EQ(Draw(1).size(), 25u);
    EXPECT_EQ(Item(0).drawnFlg, kUntouched);
    EXPECT_EQ(Item(1).drawnFlg, 1);
}

TEST_F(ImageBlockTest, OneItemIsShownWhateverModeAndSwitchItsSubLayerHas) {
    SubLayDef& sub = AddImageSubLayer(4);
    sub.imgMode = 0;
    sub.dspFlg = 0;
    AddPointOfSubLayer(100, 50, 4);
    EXPECT_THAT(Draw(0), Contains(StartsWith("dc StretchBlt")).Times(2));
}

// --- Odd values ---------------------------------------------------------------------------------------------------------------

TEST_F(ImageBlockTest, HugeAndNegativeSidesSaturate) {
    Layer().imgMinScl = Layer().imgMaxScl = 1e300;
    Layer().bmWidth = INT32_MAX;
    Layer().bmHeight = -5;
    rig.store.view.DpiRatio = 1e9;
    AddPoint(100, 50);
    Item(0).active = 1;
    EXPECT_THAT(Boxes(), ElementsAreArray(Lines{"-1073741723 1073741874 2147483647 -2147483648"}));
    for (std::int32_t pos = 0; pos < 5; ++pos) {
        Layer().imgPos = pos;
        Item(0).pnts.Change()[0] = {1e300, -1e300, 0};
        Draw();
        Item(0).pnts.Change()[0] = {-1e300, 1e300, 0};
        Draw();
    }
}

TEST_F(ImageBlockTest, NotANumberScaleAndPointDrawWithoutHarm) {
    AddPoint(0, 100);
    Layer().imgMinScl = Layer().imgMaxScl = std::nan("");
    rig.store.view.Zoom = 0;
    rig.store.view.DotPerM = 0;  // no scale at all: 0 / 0
    EXPECT_THAT(Boxes(), ElementsAreArray(Lines{"0 0 0 0"}));
    Item(0).pnts.Change()[0] = {std::nan(""), INFINITY, 0};
    Draw();
}

/// A context whose bitmaps cannot be had beyond so many.
class ScarceContext : public RecordContext {
public:
    ScarceContext(std::shared_ptr<VerbList> list, int& left) : RecordContext(std::move(list)), left_(left) {}
    std::unique_ptr<DeviceContext> CreateCompatibleDC() override { return std::make_unique<ScarceContext>(List(), left_); }
    std::unique_ptr<Bitmap> CreateCompatibleBitmap(std::int32_t width, std::int32_t height) override {
        return left_-- > 0 ? RecordContext::CreateCompatibleBitmap(width, height) : nullptr;
    }
    std::unique_ptr<Bitmap> CreateMonochromeBitmap(std::int32_t width, std::int32_t height) override {
        return left_-- > 0 ? RecordContext::CreateMonochromeBitmap(width, height) : nullptr;
    }
    std::unique_ptr<Bitmap> LoadBitmapFile(std::string_view) override {
        return std::make_unique<RecordBitmap>(99, 16, 8, nullptr);
    }

private:
    int& left_;
};

TEST_F(ImageBlockTest, ImageWithoutMemoryForItsPairShowsNothingAndPutsTheBackgroundColorBack) {
    AddPoint(100, 50);
    Item(0).active = 1;
    for (int bitmaps = 0; bitmaps < 7; ++bitmaps) {
        int left = bitmaps;
        ScarceContext scarce(rig.list, left);
        rig.frame.reference = &scarce;
        rig.store.bgColor = 0x123456;
        Layer().imgactfname.Set("on.bmp");
        const Lines lines = Drawn("");
        EXPECT_THAT(lines, Contains("SetBkColor 0x123456").Times(2)) << bitmaps;
        EXPECT_THAT(lines, Contains("SetBkColor 0xFFFFFF").Times(2)) << bitmaps;
        EXPECT_THAT(lines, Contains(StartsWith("StretchBlt")).Times(bitmaps < 3 ? 0 : 2)) << bitmaps;
        EXPECT_THAT(lines, Contains(StartsWith("Polyline")).Times(bitmaps == 6 || bitmaps < 3 ? 0 : 1)) << bitmaps;
        EXPECT_EQ(Item(0).drawnFlg, 1);
        Item(0).drawnFlg = 0;
    }
    rig.frame.reference = &rig.dc;
}

}  // namespace
}  // namespace orvane
