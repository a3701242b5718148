// Strings of the exchange file: how its commas and quotes are read.
#include "tests/files/exchange_rig.h"

namespace orvane {
namespace {

class ExchangeStringsTest : public ExchangeTest {
protected:
    /// The sub layer of a file whose one SL line begins so.
    const SubLayDef& SubLayerOf(const std::string& line) {
        store.Init();
        EXPECT_TRUE(Read(Lines({kNamedHead, kNamedLayer, line, kBlock}))) << line;
        EXPECT_EQ(LayerOf("A").subLayCnt, 1);
        return LayerOf("A").subLays[0];
    }
    const SubLayDef& ImagesOf(const std::string& images) {
        return SubLayerOf("SL,\"\",4,2,0,0,0,0,0,1,0,1,0," + images + ",1,8,9,0.25,4");
    }
    const DigStr& TextFrom(const std::string& fields) {
        store.Init();
        EXPECT_TRUE(Read(Lines({kNamedHead, kNamedLayer, kBlock, "IH,1,0,0,0", "T,1.5,2.5,0," + fields}))) << fields;
        return TextOf("A", 5, 1);
    }
    /// A text and its font after a save and a read.
    const DigStr& Returned(std::string_view text, std::string_view font = "MS Gothic") {
        store.Init();
        store.DigMemAlloc2("A", 5, kLayText, "", 1, 0, 0);
        store.AddDigDat("A", 5, 1, 0);
        store.SetDigDatString("A", 5, 1, 1, 2, text);
        store.SetDigDatStrStyle("A", 5, 1, {font, 33, 1, 2, 3, true, true, true, 4, 5});
        const std::string file = Written();
        store.Init();
        EXPECT_TRUE(Read(file)) << file;
        return TextOf("A", 5, 1);
    }
};

TEST_F(ExchangeStringsTest, ANameIsOnePieceWithoutItsQuotes) {
    EXPECT_EQ(SubLayerOf("SL,\"deep\",4").layerName.View(), "deep");
    EXPECT_EQ(SubLayerOf("SL,\"\",4").layerName.View(), "");
    EXPECT_EQ(SubLayerOf("SL,\"deep,4").layerName.View(), "deep") << "no quote behind it";
    EXPECT_EQ(SubLayerOf("SL,\"de\"ep\",4").layerName.View(), "de\"ep");
    EXPECT_EQ(SubLayerOf("SL,\",4").layerName.View(), "");
    EXPECT_EQ(SubLayerOf("SL,\"\"\",4").layerName.View(), "\"");
}

TEST_F(ExchangeStringsTest, ANameWithoutAQuoteBeforeItIsDroppedAndTakesItsPlace) {
    for (const std::string name : {"deep", "deep\"", " \"deep\"", "7"}) {
        const SubLayDef& sub = SubLayerOf("SL," + name + ",4,2,99");
        EXPECT_EQ(sub.layerName.View(), "") << name;
        EXPECT_EQ(sub.subLayNo, 4) << name;
        EXPECT_EQ(sub.color, 99U) << name;
    }
}

TEST_F(ExchangeStringsTest, ACommaInANameShiftsTheFieldsBehindIt) {
    const SubLayDef& sub = SubLayerOf("SL,\"a,b\",4,2,99");
    EXPECT_EQ(sub.layerName.View(), "a");
    EXPECT_EQ(sub.subLayNo, 0) << "b\" is no number";
    EXPECT_EQ(sub.color, 2U);
}

TEST_F(ExchangeStringsTest, ImagesAreReadAsAPair) {
    const SubLayDef& sub = ImagesOf("\"n.bmp\",\"a.bmp\"");
    EXPECT_EQ(sub.imgfname.View(), "n.bmp");
    EXPECT_EQ(sub.imgactfname.View(), "a.bmp");
    EXPECT_EQ(sub.bmHeight, 9);
    EXPECT_EQ(sub.imgMaxScl, 4);
}

TEST_F(ExchangeStringsTest, AnImageNameEndsWithTheFirstPieceThatHasAQuoteBehindIt) {
    for (const std::string first : {"\"n.bmp,x\"", "\"n.bmp,\"", "\"n.bmp,x,y,z\"", "x,\"n.bmp\"", "\"x,\"n.bmp\""}) {
        const SubLayDef& sub = ImagesOf(first + ",\"a.bmp\"");
        EXPECT_EQ(sub.imgfname.View(), "n.bmp") << first;
        EXPECT_EQ(sub.imgactfname.View(), "a.bmp") << first;
        EXPECT_EQ(sub.bmWidth, 8) << first;
    }
    EXPECT_EQ(ImagesOf("n.bmp\",\"a.bmp\"").imgfname.View(), "") << "it has a quote behind it alone";
    EXPECT_EQ(ImagesOf("n.bmp\",\"a.bmp\"").imgactfname.View(), "a.bmp");
    EXPECT_EQ(ImagesOf("\",a.bmp\",\"b.bmp\"").imgfname.View(), "");
}

TEST_F(ExchangeStringsTest, AnImageNameThatNothingEndsTakesTheRestOfTheLine) {
    const SubLayDef& sub = ImagesOf("\"n.bmp,\"a.bmp");
    EXPECT_EQ(sub.imgfname.View(), "a.bmp") << "the last with a quote before it";
    EXPECT_EQ(sub.imgactfname.View(), "");
    EXPECT_EQ(sub.imgMode, 0);
    EXPECT_EQ(sub.bmWidth, 0);
}

TEST_F(ExchangeStringsTest, LongStringsAreCutToWhatARecordHolds) {
    const std::string name(300, 'n');
    const std::string image(600, 'i');
    ASSERT_TRUE(
        Read(Lines({kNamedHead, kNamedLayer, "SL,\"" + name + "\",4,2,0,0,0,0,0,1,0,1,0,\"" + image + "\",\"" + image + "\",1",
                    "GH,A,1,5,0,0,0,0,0,0,0,0,0,\"" + image + "\""})));
    EXPECT_EQ(Sub("A", 4).layerName.View(), name.substr(0, 255));
    EXPECT_EQ(Sub("A", 4).imgfname.View(), image.substr(0, 511));
    EXPECT_EQ(Sub("A", 4).imgactfname.View(), image.substr(0, 511));
    EXPECT_EQ(BlockOf("A", 5).path, image.substr(0, 511));
}

TEST_F(ExchangeStringsTest, APathIsOnePieceToo) {
    for (const auto& [path, expected] : std::map<std::string, std::string>{
             {"\"c:\\a b\"", "c:\\a b"}, {"\"c:\\a,b\"", "c:\\a"}, {"c:\\a", ""}, {"\"c:\\a", "c:\\a"}, {"\"\"", ""}}) {
        store.Init();
        ASSERT_TRUE(Read(Lines({kNamedHead, kNamedLayer, "GH,A,1,5,0,0,0,0,0,0,0,0,0," + path})));
        EXPECT_EQ(BlockOf("A", 5).path, expected) << path;
    }
}

TEST_F(ExchangeStringsTest, APieceOfTheTextIsJoinedToTheNextWithoutTheCommaBetween) {
    EXPECT_EQ(Returned("a,b").text, "ab");
    EXPECT_EQ(Returned("a,,b,c").text, "abc");
    EXPECT_EQ(Returned(",a").text, "a");
    EXPECT_EQ(Returned("a,").text, "a");
    EXPECT_EQ(Returned(",").text, "");
    EXPECT_EQ(Returned("a, b").text, "a b");
    EXPECT_EQ(Returned("a,b").size, 33) << "what stands behind is in its place";
    EXPECT_EQ(Returned("a,b").bcolor, 5U);
}

TEST_F(ExchangeStringsTest, AnEmptyTextComesBackEmpty) {
    const DigStr& text = Returned("");
    EXPECT_EQ(text.text, "");
    EXPECT_EQ(text.fntname, "");
    EXPECT_EQ(text.size, 33);
}

TEST_F(ExchangeStringsTest, TheFontComesBackAsTheTextWithoutItsLastByte) {
    EXPECT_EQ(Returned("Lake").fntname, "Lak");
    EXPECT_EQ(Returned("L").fntname, "");
    EXPECT_EQ(Returned("Lake", "").fntname, "Lak") << "an empty font too";
    EXPECT_EQ(Returned("Lake,side").fntname, "Lakesid") << "of the text as it was joined";
    EXPECT_EQ(Returned("\x96\xBC\x91O").fntname, "\x96\xBC\x91") << "half a character";
}

TEST_F(ExchangeStringsTest, AFontThatNothingEndsIsKept) {
    const DigStr& text = TextFrom("\"Lake\",\"MS,Gothic,10");
    EXPECT_EQ(text.text, "Lake");
    EXPECT_EQ(text.fntname, "MSGothic10");
    EXPECT_EQ(text.size, 0);
}

TEST_F(ExchangeStringsTest, ATextThatNothingEndsTakesTheRestOfTheLine) {
    const DigStr& text = TextFrom("\"Lake,MS,10");
    EXPECT_EQ(text.text, "LakeMS10");
    EXPECT_EQ(text.fntname, "");
    EXPECT_EQ(text.bcolor, 0xFFFFFFU);
    EXPECT_EQ(TextFrom("").text, "");
}

TEST_F(ExchangeStringsTest, ATextWithoutAQuoteBeforeItIsTakenAllTheSame) {
    const DigStr& text = TextFrom("Lake\",\"f\",10");
    EXPECT_EQ(text.text, "Lake");
    EXPECT_EQ(text.fntname, "Lak");
    EXPECT_EQ(text.size, 10);
}

TEST_F(ExchangeStringsTest, QuotesInsideAPieceStayAndQuotesAtItsEndsDoNot) {
    EXPECT_EQ(Returned("5\" pipe").text, "5\" pipe");
    EXPECT_EQ(Returned("a,\"b").text, "ab");
    EXPECT_EQ(Returned("\"a\"").text, "\"a\"") << "one of each pair is the file's own";
    const DigStr& text = Returned("say \"no\",then");
    EXPECT_EQ(text.text, "say \"no") << "a quote before a comma ends it";
    EXPECT_EQ(text.fntname, "say \"n") << "and the font ends with the text's rest";
    EXPECT_EQ(text.size, 0) << "so that the numbers are shifted";
}

TEST_F(ExchangeStringsTest, SecondBytesThatLookLikeSeparatorsEndNothing) {
    // Characters whose second byte is that of a backslash, a bar and an at sign.
    const std::string text = "\x83\x5C\x95\x7C\x83\x40";
    EXPECT_EQ(Returned(text).text, text);
    EXPECT_EQ(SubLayerOf("SL,\"" + text + "\",4").layerName.View(), text);
}

TEST_F(ExchangeStringsTest, HalfACharacterDoesNotHideTheQuoteOrCommaBehindIt) {
    EXPECT_EQ(Returned("ab\x83").text, "ab\x83");
    EXPECT_EQ(Returned("ab\x83").size, 33);
    EXPECT_EQ(Returned("\x83,\x83").text, "\x83\x83");
    EXPECT_EQ(SubLayerOf("SL,\"\x83\",4").layerName.View(), "\x83");
}

TEST_F(ExchangeStringsTest, ALineFeedInATextCutsItThere) {
    const DigStr& text = Returned("two\nlines");
    EXPECT_EQ(text.text, "two");
    EXPECT_EQ(text.size, 0);
    EXPECT_EQ(Returned("two\r\nlines").text, "two");
    EXPECT_EQ(Returned("two\rlines").text, "two\rlines");
}

TEST_F(ExchangeStringsTest, AZeroByteEndsItsLine) {
    ASSERT_TRUE(Read(Lines({kNamedHead, kNamedLayer, kBlock, std::string_view("IH,1,2\0,3", 9), "P,1,2,3"})));
    EXPECT_EQ(Item("A", 5, 1).lineTag, 2);
    EXPECT_EQ(Item("A", 5, 1).pntCnt, 1);
}

}  // namespace
}  // namespace orvane
