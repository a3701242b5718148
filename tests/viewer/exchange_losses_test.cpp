// What an exchange text does not bring back is said before it is written, and what would shift its fields is refused: measured by
// writing and reading back.
#include "hosts/common/exchange_losses.h"
#include "files/exchange.h"
#include "hosts/viewer/block_copy.h"
#include "hosts/viewer/layer_state.h"
#include "hosts/viewer/new_text.h"
#include "platform/files_std.h"
#include "store/dat_lookup.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

struct Content {
    std::vector<std::pair<BlockKey, std::vector<ItemCopy>>> items;
    std::vector<std::tuple<double, double, std::string>> origins;
    std::vector<std::pair<std::string, LayerState>> looks;
    friend bool operator==(const Content&, const Content&) = default;
};

class ExchangeText : public Walk {
protected:
    ExchangeText() {
        MakeLayer("NOTE", kLayText);
        EXPECT_TRUE(PutText(Map(), window->History(), {"NOTE", 1, 0}, {50, 50}, "words"));
        EXPECT_TRUE(PutText(Map(), window->History(), {"NOTE", 1, 0}, {60, 70}, "more"));
        for (DigDat& dat : Block("NOTE").dats) dat.str->fntname = dat.str->text.substr(0, dat.str->text.size() - 1);
        MakeLayer("ROAD", kLayLine);
        AddFeature("ROAD", 1, {10.25, 20.0}, {30.0, 40.0});
        AddFeature("ROAD", 2, {50.0, 60.0}, {70.0, 80.125});
        Map().Call("OrvSetSubLayerEx", {"ROAD", "side", 3, true, 0, 1, 0, 0, 0x112233, 1, 1});
        Block("ROAD").dats[1].subLayNo = 3;
    }
    DigBlock& Block(const char* code) { return Store().MutableBlock(Store().FindBlock(code, 1).block); }
    DigStr& Text() { return *Block("NOTE").dats[0].str; }
    LayerDef& Layer(const char* code) { return Store().MutableLayer(Store().FindLayDef(code)); }
    static Content ContentOf(CDigMem& store) {
        Content content;
        for (const BlockKey& key : BlockKeys(store)) {
            const DigBlock& block = store.Block(store.FindBlock(key.code, key.meshNo).block);
            auto& line = content.items.emplace_back(key, std::vector<ItemCopy>());
            for (const DigDat& dat : block.dats) line.second.push_back(CopyOf(dat));
            content.origins.emplace_back(block.GX, block.GY, block.path);
        }
        for (const LayerChange& look : LooksOf(store)) {
            LayerState state = look.before;
            state.editable = true;  // counted by the viewer, which lets every layer that it reads be edited
            content.looks.emplace_back(look.code, state);
        }
        std::stable_sort(content.looks.begin(), content.looks.end(),
                         [](const auto& a, const auto& b) { return a.first < b.first; });
        return content;
    }
    /// What a program has that reads the text that is written now, whether the viewer would write it or not.
    Content Back(const char* version) {
        StdFiles files;
        const std::string name = File("back.txt").toStdString();
        EXPECT_TRUE(ExchWrite(Store(), files, name, version));
        const auto back = std::make_unique<CDigMem>();
        back->Init();
        whole = ExchRead(*back, files, name);
        return ContentOf(*back);
    }
    /// Nothing of it is refused, `line` is said of it, and it is true.
    void ExpectSaid(const char* version, const char* line) {
        EXPECT_EQ(WhatExchangeCannotHold(Store(), version), "");
        EXPECT_TRUE(window->Files().ExchangeLosses(version).join('\n').contains(line)) << line;
        EXPECT_FALSE(Back(version) == ContentOf(Store())) << line;
        EXPECT_TRUE(whole) << line << ": nothing else is lost";
    }
    void ExpectNothingSaid(const char* version) {
        EXPECT_EQ(WhatExchangeCannotHold(Store(), version), "");
        EXPECT_EQ(window->Files().ExchangeLosses(version).join('\n').toStdString(), "");
        EXPECT_TRUE(Back(version) == ContentOf(Store()));
        EXPECT_TRUE(whole);
    }
    /// It is refused in these words, and rightly; no file is made.
    void ExpectRefused(const char* version, const char* words) {
        const QString why = window->Files().WriteExchange(File("refused.txt"), version);
        EXPECT_TRUE(why.contains(words)) << why.toStdString() << " does not say: " << words;
        EXPECT_TRUE(why.contains("save the map as .Ovb")) << why.toStdString();
        EXPECT_FALSE(QFileInfo::exists(File("refused.txt")));
        const Content back = Back(version);
        EXPECT_FALSE(whole && back == ContentOf(Store())) << words << ": it does come back";
    }
    bool whole = false;
};

TEST_F(ExchangeText, BringsBackWhatNothingIsSaidOf) {
    Store().MutableLayer(Store().FindLayDef("ROAD")).subLays[0].layerName.Set("");
    ExpectNothingSaid("1.00");
    Layer("ROAD").subLays[0].layerName.Set("side");
    ExpectNothingSaid("1.01");
    Text().text = "say \"so\"";
    Text().fntname = "say \"so";
    Block("ROAD").path = "C:\\maps\\a\"b";
    Block("ROAD").GX = -100;
    ExpectNothingSaid("1.01");
}

TEST_F(ExchangeText, SaysWhichTextsLoseTheirCommas) {
    Text().text = "1,000";
    Text().fntname = "100";
    ExpectSaid("1.01", "1 texts with commas");
    const QString lines = window->Files().ExchangeLosses("1.00").join('\n');
    EXPECT_TRUE(lines.contains("feature 1 in layer \"NOTE\", group 1")) << lines.toStdString();
}

TEST_F(ExchangeText, SaysThatFontsAreNotKept) {
    Text().fntname = "Mincho";
    ExpectSaid("1.01", "1 fonts of texts");
    ExpectSaid("1.00", "1 fonts of texts");
}

TEST_F(ExchangeText, SaysThatHeightsOfTextsAreNotKept) {
    Text().z = 12;
    ExpectSaid("1.01", "1 heights of texts");
}

TEST_F(ExchangeText, SaysThatNamesAndImagesOfLayersAreNotKept) {
    Store().SetLayerName("ROAD", "roads");
    ExpectSaid("1.01", "1 names of layers");
    ExpectSaid("1.00", "1 names of layers");
    Store().SetLayerName("ROAD", "");
    Layer("NOTE").imgfname.Set("a.bmp");
    ExpectSaid("1.01", "1 images of point layers");
}

TEST_F(ExchangeText, SaysThatFractionsOfOriginsAreNotKept) {
    Block("ROAD").GX = 100.25;
    ExpectSaid("1.01", "1 origins of blocks");
    EXPECT_EQ(std::get<0>(Back("1.01").origins[ContentOf(Store()).items[0].first.code == "ROAD" ? 0 : 1]), 100);
}

TEST_F(ExchangeText, SaysThatDecimalsBeyondSixAreNotKept) {
    Block("ROAD").dats[0].pnts.Change()[0].x = 10.1234567;
    ExpectSaid("1.01", "1 features with more than six decimals");
    Block("ROAD").dats[0].pnts.Change()[0].x = 10.123456;
    ExpectNothingSaid("1.01");
    Block("ROAD").dats[0].pnts.Change()[0].x = 12345678901234.5;
    ExpectNothingSaid("1.01");
}

TEST_F(ExchangeText, SaysThatTheOldVersionKeepsNoNamesAndImagesOfSubLayers) {
    ExpectSaid("1.00", "1 names of sub layers");
    Layer("ROAD").subLays[0].layerName.Set("");
    Layer("ROAD").subLays[0].imgfname.Set("a.bmp");
    ExpectSaid("1.00", "1 images of sub layers");
    ExpectNothingSaid("1.01");
    Layer("ROAD").subLays[0].imgfname.Set("a,b.bmp");
    ExpectSaid("1.01", "1 image names of sub layers with commas");
}

TEST_F(ExchangeText, SaysWhatElseOfSubLayersAndBlocksIsNotKept) {
    Layer("ROAD").subLays[0].color2 = 0x123456;
    ExpectSaid("1.01", "1 second colours or positions of images of sub layers");
    Layer("ROAD").subLays[0].color2 = 0;
    Block("ROAD").dats[1].subLayNo = -2;
    ExpectSaid("1.01", "numbers of sub layers");
    Block("ROAD").dats[1].subLayNo = 3;
    Block("ROAD").path = "a,b";
    ExpectSaid("1.01", "1 paths of blocks with commas");
    Block("ROAD").path = "";
    Map().Call("OrvSetLayEditFlg", {"ROAD", false});
    EXPECT_TRUE(window->Files().ExchangeLosses("1.01").join('\n').contains("may not be selected or edited"));
}

TEST_F(ExchangeText, SaysThatFeaturesOfOneNumberLoseTheirSubLayers) {
    Block("ROAD").dats[0].subLayNo = 0;
    AddFeature("ROAD", 2, {5.0, 6.0}, {7.0, 8.0});
    DigBlock& block = Block("ROAD");
    ASSERT_EQ(block.dats.size(), 3u);
    block.dats[2].subLayNo = 3;
    block.dats[1].subLayNo = 0;
    ExpectSaid("1.01", "1 numbers of sub layers of features that share their number");
}

TEST_F(ExchangeText, RefusesWhatWouldShiftItsFields) {
    const auto expect = [&](const char* words, const auto& set, const auto& back) {
        set();
        ExpectRefused("1.01", words);
        back();
        EXPECT_EQ(WhatExchangeCannotHold(Store(), "1.01"), "") << words;
    };
    const std::string text = Text().text;
    for (const auto& [bad, words] :
         {std::pair("two\nlines", "a line break in its text"), std::pair("say \"so\", or", "a quote and a comma")}) {
        expect(
            words, [&, b = bad] { Text().text = b; }, [&] { Text().text = text; });
    }
    expect(
        "feature 1 of layer \"NOTE\", group 1, has a line break in its font name", [&] { Text().fntname = "a\nb"; },
        [&] { Text().fntname = "word"; });
    expect(
        "a quote and a comma behind it in its font name", [&] { Text().fntname = "a\",b"; }, [&] { Text().fntname = "word"; });
    expect(
        "a byte 0 in its text", [&] { Text().text = std::string("a\0b", 3); }, [&] { Text().text = text; });
    expect(
        "a byte 0 in its font name", [&] { Text().fntname = std::string("a\0b", 3); }, [&] { Text().fntname = "word"; });
    expect(
        "a coordinate that is no number", [&] { Block("ROAD").dats[1].pnts.Change()[0].x = std::nan(""); },
        [&] { Block("ROAD").dats[1].pnts.Change()[0].x = 50; });
    expect(
        "feature 2 of layer \"ROAD\", group 1, has a sub layer that is not there", [&] { Block("ROAD").dats[1].subLayNo = 7; },
        [&] { Block("ROAD").dats[1].subLayNo = 3; });
    expect(
        "layer \"ROAD\" has a comma or a line break in its name", [&] { Store().SetLayerName("ROAD", "a, b"); },
        [&] { Store().SetLayerName("ROAD", ""); });
    expect(
        "layer \"NOTE\" has a line break in the name of an image", [&] { Layer("NOTE").imgfname.Set("a\nP,1,2,3"); },
        [&] { Layer("NOTE").imgfname.Set(""); });
    expect(
        "sub layer 3 of layer \"ROAD\" has a comma", [&] { Layer("ROAD").subLays[0].layerName.Set("a,b"); },
        [&] { Layer("ROAD").subLays[0].layerName.Set("side"); });
    expect(
        "sub layer 3 of layer \"ROAD\" has a line break or a quote", [&] { Layer("ROAD").subLays[0].imgfname.Set("a\",b"); },
        [&] { Layer("ROAD").subLays[0].imgfname.Set(""); });
    expect(
        "group 1 of layer \"ROAD\" has a line break in its path", [&] { Block("ROAD").path = "a\nb"; },
        [&] { Block("ROAD").path = ""; });
}

TEST_F(ExchangeText, RefusesBlocksThatNoReaderMakes) {
    const auto expect = [this](const char* words) {
        const QString why = window->Files().WriteExchange(File("refused.txt"), "1.01");
        EXPECT_TRUE(why.startsWith(words)) << why.toStdString() << " does not say: " << words;
        EXPECT_FALSE(QFileInfo::exists(File("refused.txt")));
    };
    Layer("ROAD").layType = 99;
    expect("layer \"ROAD\" is of no known type");
    Layer("ROAD").layType = kLayLine;
    ASSERT_TRUE(Map().Call("OrvAddLayer", {"ROAD", 2, kLayLine, 5}).toBool());
    DigBlock& second = Store().MutableBlock(Store().FindBlock("ROAD", 2).block);
    second.meshNo = 1;
    expect("group 1 of layer \"ROAD\" is there twice");
    second.meshNo = 2;
    second.code.Set("");
    expect("group 2 has a layer without a code");
    second.code.Set("ROAD");
    EXPECT_EQ(window->Files().WriteExchange(File("refused.txt"), "1.01"), QString());
}

TEST_F(ExchangeText, IsJudgedInTheMapsOwnFrame) {
    ASSERT_TRUE(window->Load({Sample("tokyo_mesh.Ovb")}, {}).Ok());
    window->Place().ChangeFrame(9);
    std::vector<int> zones;
    QObject::connect(&window->Place(), &PlaceLabel::FrameChanging, [&] { zones.push_back(window->Place().ZoneNow()); });
    EXPECT_EQ(window->Files().WhyNoExchange(File("map.txt"), "1.01"), QString());
    EXPECT_EQ(zones, (std::vector{9, 0})) << "into the mesh frame and back";
    EXPECT_EQ(window->Place().ZoneNow(), 9);
    zones.clear();
    EXPECT_EQ(window->Files().WriteExchange(File("map.txt"), "1.01"), QString());
    EXPECT_EQ(zones, (std::vector{9, 0})) << "once for all of it";
}

TEST_F(ExchangeText, RefusesCodesWithCommas) {
    MakeLayer("A,B", kLayPoint);
    AddFeature("A,B", 1, {1.0}, {2.0});
    ExpectRefused("1.01", "layer \"A,B\" has a comma");
    ExpectRefused("1.00", "layer \"A,B\" has a comma");
}

TEST_F(ExchangeText, TheOperatorIsToldWhatIsRefusedBeforeWhatIsLost) {
    Text().text = "two\nlines";
    Text().z = 3;
    WhenAskedForFile(File("map.txt"));
    WhenTold(QMessageBox::Ok);
    Choose("Write exchange text");
    EXPECT_TRUE(said.contains("feature 1 of layer \"NOTE\"")) << said.toStdString();
    EXPECT_FALSE(QFileInfo::exists(File("map.txt")));
    Text().text = "words";
    WhenAskedForFile(File("map.txt"));
    WhenTold(QMessageBox::Cancel);
    Choose("Write exchange text");
    EXPECT_TRUE(said.contains("1 heights of texts")) << said.toStdString();
    EXPECT_FALSE(QFileInfo::exists(File("map.txt")));
}

}  // namespace
}  // namespace orvane
