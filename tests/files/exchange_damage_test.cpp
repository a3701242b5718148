// Exchange files that are cut, altered or too much, and maps that come back whole.
#include "tests/files/exchange_rig.h"

namespace orvane {
namespace {

class ExchangeDamageTest : public ExchangeTest {
protected:
    /// What a read must leave as it was.
    void MakeOlderMap() {
        store.Init();
        ASSERT_TRUE(store.DigMemAlloc2("old", 1, kLayLine, "", 50, 0, 0));
        store.AddDigDat("old", 1, 1, 0);
        store.AddDigDatPnt("old", 1, 1, {1, 2, 3});
        std::ostringstream out;
        DumpLayer(out, LayerOf("old"));
        DumpBlock(out, BlockOf("old", 1));
        olderMap = out.str();
    }
    void ExpectOlderMap() {
        std::ostringstream out;
        DumpLayer(out, LayerOf("old"));
        DumpBlock(out, BlockOf("old", 1));
        EXPECT_EQ(out.str(), olderMap);
    }

    std::string olderMap;
    const std::string file = Lines({
        "ORVFH1.01",
        "LY,P,\"wells\",2,1,255,0,1,0,4,1,1,1,1,1,1,2,\"n.bmp\",\"a.bmp\",1,16,24,0.500000,2.000000",
        "SL,\"deep\",7,1,255,1,2,3,4,1,1,0,0,\"s.bmp\",\"t.bmp\",1,8,9,1.000000,2.250000",
        "GH,P,1,12,0,0,1000.000000,-2000.000000,1.500000,-2.250000,1.500000,-2.250000,2,\"c:\\map\"",
        "IH,101,-1,7,1",
        "P,1.500000,-2.250000,0.000000",
        "T,3.500000,4.500000,0.000000,\"La,ke\",\"Mincho\",12,5,1,8,-30.500000,0,1,1,-16777216",
    });
};

TEST_F(ExchangeDamageTest, AFileCutAtAnyByteLeavesTheOlderMapAsItWas) {
    for (std::size_t size = 0; size < file.size(); ++size) {
        MakeOlderMap();
        // Up to the key of the block nothing can have been made.
        const bool hasBlock = size >= file.find("\nGH") + 3;
        ASSERT_EQ(Read(file.substr(0, size)), hasBlock) << size;
        ExpectOlderMap();
    }
}

TEST_F(ExchangeDamageTest, AFileWithAnyByteAlteredOrMissingLeavesTheOlderMapAsItWas) {
    for (std::size_t at = 0; at < file.size(); ++at) {
        for (const char c : {'"', ',', '\n', '\r', '\0', '-', '9', ' ', '\xFF', '\x81'}) {
            MakeOlderMap();
            std::string altered = file;
            altered[at] = c;
            Read(altered);
            ExpectOlderMap();
        }
        MakeOlderMap();
        Read(file.substr(0, at) + file.substr(at + 1));
        ExpectOlderMap();
    }
}

TEST_F(ExchangeDamageTest, AFileThatCannotBeReadToItsEndGivesFalse) {
    class Breaking : public MemoryFiles {
    public:
        explicit Breaking(std::string_view content) : content_(content) {}
        std::unique_ptr<InputFile> OpenRead(std::string_view, OpenError*) override {
            return std::make_unique<MemoryInputFile>(content_, content_.size() + 1);
        }

    private:
        std::string_view content_;
    };
    Breaking breaking(file);
    EXPECT_FALSE(ExchRead(store, breaking, "any"));
    EXPECT_EQ(Item("P", 12, 101).str->text, "Lake") << "what was read stays";
}

TEST_F(ExchangeDamageTest, WithoutMemoryAReadGivesFalse) {
    files.Put("map.txt", file);
    for (std::int64_t n = 1;; ++n) {
        ASSERT_LT(n, 200);
        MakeOlderMap();
        ArrayFaults::FailFrom(n);
        const bool done = ExchRead(store, files, "map.txt");
        const bool wasReached = ArrayFaults::Count() >= n;
        ArrayFaults::Clear();
        EXPECT_EQ(done, !wasReached) << n;
        ExpectOlderMap();
        if (!wasReached) break;
        EXPECT_GT(n, 0);
    }
}

TEST_F(ExchangeDamageTest, ALineOfAnyLengthIsReadAsOne) {
    const std::string much(1000000, ',');
    const std::string word(100000, 'w');
    ASSERT_TRUE(Read("ORVFH1.00\nLY,A" + much + "3,2\n" + much + "\nGH,A,1,5\nIH,1\nT,1" + much + "2,0,\"" + word + "," + word +
                     "\",\"f\",77\n"));
    EXPECT_EQ(LayerOf("A").layIndex, 3);
    EXPECT_EQ(TextOf("A", 5, 1).text, word + word);
    EXPECT_EQ(TextOf("A", 5, 1).size, 77);
}

TEST_F(ExchangeDamageTest, ItemsOfTheShortestLinesTakeAtMostTwelveTimesTheFileBesideAFixedAmount) {
    constexpr std::size_t kLines = 1300000;
    std::string text = Lines({kPlainHead, kPlainLayer, kBlock});
    text.reserve(text.size() + 3 * kLines);
    for (std::size_t i = 0; i < kLines; ++i) text += "IH\n";
    ArrayFaults::Clear();
    EXPECT_FALSE(Read(text)) << "the records would take 32 times the lines";
    const std::size_t most = (64U << 20U) + 12 * text.size();
    EXPECT_EQ(BlockOf("A", 5).dats.size(), most / sizeof(DigDat)) << "what was made by then stays";
    EXPECT_LT(ArrayFaults::Largest_bytes(), most / 4 * 5 + text.size());
}

TEST_F(ExchangeDamageTest, PointsAndTextsCountWithTheItems) {
    std::string text = Lines({kPlainHead, kPlainLayer, kBlock, "IH,1"});
    for (std::size_t i = 0; i < 600000; ++i) text += "T\n";
    // 152 bytes of text record a line of two: 64 MiB and 24 bytes a line are less than all of them.
    EXPECT_FALSE(Read(text));
}

TEST_F(ExchangeDamageTest, SubLayersOfTheShortestLinesTakeAtMostFiftyTimesTheFileBesideAFixedAmount) {
    std::string text = Lines({kPlainHead, kPlainLayer});
    for (std::size_t i = 1; i <= 90000; ++i) text += "SL," + std::to_string(i) + "\n";
    text += Lines({kBlock});
    EXPECT_FALSE(Read(text)) << "the records would take 150 times the lines";
    const std::size_t most = (64U << 20U) + 50 * text.size();
    EXPECT_EQ(LayerOf("A").subLays.size(), most / sizeof(SubLayDef));
}

TEST_F(ExchangeDamageTest, ALargeFileThatWasWrittenComesBackWhole) {
    ASSERT_TRUE(store.DigMemAlloc2("A", 5, kLayLine, "", 1, 0, 0));
    for (std::int32_t i = 0; i < 200000; ++i) ASSERT_TRUE(store.AddDigDat("A", 5, 0, 0));
    const std::string written = Written();
    store.Init();
    ASSERT_TRUE(Read(written));
    EXPECT_EQ(BlockOf("A", 5).datCnt, 200000);
}

TEST_F(ExchangeDamageTest, LinesAreReadWholeAcrossTheReadersPieces) {
    std::string text = Lines({kPlainHead, kPlainLayer, kBlock});
    for (std::int32_t i = 1; i <= 3000; ++i) {
        text += "IH," + std::to_string(i * 12345) + ",0,0,1\nP," + std::to_string(i) + ".5," + std::to_string(-i * 1000) + ",0\n";
    }
    ASSERT_TRUE(Read(text));
    ASSERT_EQ(BlockOf("A", 5).datCnt, 3000);
    for (std::int32_t i = 1; i <= 3000; ++i) {
        const DigDat& dat = BlockOf("A", 5).dats[static_cast<std::size_t>(i - 1)];
        ASSERT_EQ(dat.datID, i * 12345);
        ASSERT_EQ(dat.pnts[0].x, i + 0.5);
        ASSERT_EQ(dat.pnts[0].y, -i * 1000);
    }
}

TEST_F(ExchangeDamageTest, SubLayersThatNoBlockAsksForTakeNoMoreThanTheirLines) {
    std::string text = Lines({kNamedHead, kNamedLayer});
    for (std::int32_t i = 0; i < 100000; ++i) text += "SL\n";
    ArrayFaults::FailOver(text.size() * 2);
    std::int32_t pumped = 0;
    EXPECT_FALSE(Read(text, [&](double) { return ++pumped > 0; }));
    EXPECT_EQ(pumped, 100001) << "every line was taken";
}

TEST_F(ExchangeDamageTest, ManyBlocksBehindManySubLayersSetThemOnce) {
    std::string text = Lines({kNamedHead, kNamedLayer});
    for (std::int32_t i = 1; i <= 3000; ++i) text += "SL,\"\"," + std::to_string(i) + "\n";
    for (std::int32_t i = 1; i <= 3000; ++i) text += "GH,A,1," + std::to_string(i) + "\n";
    ASSERT_TRUE(Read(text));
    EXPECT_EQ(LayerOf("A").subLayCnt, 3000);
    EXPECT_EQ(store.BlockCnt(), 3000);
    EXPECT_LE(store.SubLayChangeCount(), 6000U) << "a setter and an image setter each";
}

class ExchangeRoundTripTest : public ExchangeTest {
protected:
    /// Points and texts are chosen so that six decimals hold them, fonts so that the flaw of the format does not show.
    void MakeMap() {
        std::int32_t meshNo = 0;
        for (const std::int32_t type : {1, 2, 3, 4, 5, 8}) {
            const std::string code = "L" + std::to_string(type);
            for (std::int32_t blocks = 0; blocks < 2; ++blocks) {
                ++meshNo;
                ASSERT_TRUE(store.DigMemAlloc2(code, meshNo, type, "c:\\" + code, type * 3, meshNo * 1000, -meshNo));
                for (std::int32_t id = 1; id <= 3; ++id) {
                    store.AddDigDat(code, meshNo, id, id - 2);
                    for (std::int32_t p = 0; p < id; ++p) {
                        store.AddDigDatPnt(code, meshNo, id, {p * 10.5, -p * 0.25, id * 0.125});
                    }
                }
                store.SetDigDatString(code, meshNo, 2, 1.25, -8, "Lake");
                store.SetDigDatStrStyle(code, meshNo, 2, {"Lak", 12, 3, 4, 45.5, true, false, true, 77, 0x80FFFFFFU});
            }
            store.SetLayDisplay(code, {type != 2, 5, 6, 7, 8, type == 2, 0x00ABCDEF, true, type != 3});
            store.SetSubLayerEx(code, 4, {"sub " + code, true, 1, 2, 3, 4, 99, true, false});
            store.SetSubLayerEx(code, 2, {"", false, 0, 0, 0, 0, 0xFF000001U, false, true});
            store.SetSubLayImageMode(code, 4, {"n.bmp", "a.bmp", 16, 24, 0.5, 2}, true);
            store.SetDigDatSubLayer(code, meshNo, 1, 4);
        }
    }
};

TEST_F(ExchangeRoundTripTest, ANamedFileBringsTheMapBack) {
    MakeMap();
    const std::string before = DumpStore(store);
    const std::string text = Written("1.01");
    store.Init();
    ASSERT_TRUE(Read(text));
    // Layers and blocks come back in drawing order, so tables are compared by their keys.
    EXPECT_EQ(Written("1.01"), text);
    EXPECT_EQ(store.LayerCnt(), 6);
    EXPECT_EQ(store.BlockCnt(), 12);
    const std::string returned = DumpStore(store);
    const auto sorted = [](const std::string& dump) {
        std::vector<std::string> lines;
        std::istringstream in(dump.substr(0, dump.find("index")));
        for (std::string line; std::getline(in, line);) lines.push_back(line);
        std::sort(lines.begin(), lines.end());
        return lines;
    };
    EXPECT_EQ(sorted(returned), sorted(before));
}

TEST_F(ExchangeRoundTripTest, APlainFileLosesTheImagesOfSubLayersAndANamedOneKeepsThem) {
    MakeMap();
    const std::string plain = Written("1.00");
    const std::string named = Written("1.01");
    store.Init();
    ASSERT_TRUE(Read(plain));
    EXPECT_TRUE(Sub("L1", 4).imgfname.Empty());
    EXPECT_TRUE(Sub("L1", 4).imgactfname.Empty());
    EXPECT_EQ(Sub("L1", 4).imgMode, 0);
    EXPECT_EQ(Sub("L1", 4).bmWidth, 0);
    EXPECT_EQ(Sub("L1", 4).color, 99U) << "the look comes back";
    store.Init();
    ASSERT_TRUE(Read(named));
    EXPECT_EQ(Sub("L1", 4).imgfname.View(), "n.bmp");
    EXPECT_EQ(Sub("L1", 4).imgactfname.View(), "a.bmp");
    EXPECT_EQ(Sub("L1", 4).imgMode, 1);
    EXPECT_EQ(Sub("L1", 4).bmWidth, 16);
    EXPECT_EQ(Sub("L1", 4).imgMaxScl, 2);
}

}  // namespace
}  // namespace orvane
