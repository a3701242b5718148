#include "files/symbol_file.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/memory_files.h"

namespace orvane {
namespace {

class SymbolFileTest : public ::testing::Test {
protected:
    SymbolFileTest() { store.Init(); }
    ~SymbolFileTest() override { ArrayFaults::Clear(); }

    void Read(std::string content) {
        files.Put("symbols.txt", std::move(content));
        ReadSymbolData(store, files, "symbols.txt");
    }
    /// The table in words: "number: x1 y1 x2 y2; ..." for each symbol.
    std::vector<std::string> Table() const {
        std::vector<std::string> table;
        for (const SymbolDef& symbol : store.symbols) {
            std::string text = std::to_string(symbol.symNo) + ":";
            for (std::size_t i = 0; i < static_cast<std::size_t>(symbol.strokeCnt); ++i) {
                const Point from = symbol.strokeFrom[i];
                const Point to = symbol.strokeTo[i];
                for (const std::int32_t v : {from.x, from.y, to.x, to.y}) text += " " + std::to_string(v);
                text += ";";
            }
            table.push_back(text);
        }
        return table;
    }
    using Texts = std::vector<std::string>;

    CDigMem store;
    MemoryFiles files;
};

/// `cnt` strokes of one symbol, told apart by their first number.
std::string Strokes(std::int32_t symNo, std::int32_t cnt) {
    std::string lines;
    for (std::int32_t i = 0; i < cnt; ++i) lines += std::to_string(symNo) + "," + std::to_string(i) + ",0,1,2\r\n";
    return lines;
}

TEST_F(SymbolFileTest, ALineIsAStrokeAndConsecutiveLinesAreOneSymbol) {
    Read("7,1,2,3,4\r\n7,-5,-6,-7,-8\r\n8,10,20,30,40\r\n9,0,0,0,0\r\n");
    EXPECT_EQ(Table(), (Texts{"7: 1 2 3 4; -5 -6 -7 -8;", "8: 10 20 30 40;"}));
    EXPECT_EQ(store.symbols[0].strokeCnt, 2);
}

TEST_F(SymbolFileTest, ASymbolAloneIsDroppedForWantOfALineThatClosesIt) {
    Read("1,0,0,10,10\r\n1,10,10,20,20\r\n\x1A");
    EXPECT_EQ(Table(), Texts{});
}

TEST_F(SymbolFileTest, TheLastSymbolIsDroppedHoweverTheDataEnds) {
    for (const std::string& end : {std::string(), std::string("\x1A"), std::string(1, '\0'), std::string("\x1A\r\n5,1,1,1,1\r\n"),
                                   std::string("\0\r\n5,1,1,1,1\r\n", 14)}) {
        Read("1,1,2,3,4\r\n2,5,6,7,8\r\n" + end);
        EXPECT_EQ(Table(), Texts{"1: 1 2 3 4;"});
    }
}

TEST_F(SymbolFileTest, ALineThatTheEndOfTheDataCutsOffCloses) {
    for (const std::string& end : {std::string(), std::string("\x1A"), std::string(1, '\0')}) {
        Read("1,1,2,3,4\r\n2,5,6,7,8" + end);
        EXPECT_EQ(Table(), Texts{"1: 1 2 3 4;"});
    }
}

TEST_F(SymbolFileTest, TheFirstCharacterBelongsToTheFirstNumber) {
    Read("123,1,2,3,4\r\n0,0,0,0,0\r\n");
    EXPECT_EQ(Table(), Texts{"123: 1 2 3 4;"});
}

TEST_F(SymbolFileTest, GroupsOfTheSameNumberThatAreApartAreTwoRecords) {
    Read("1,1,1,1,1\r\n2,2,2,2,2\r\n1,3,3,3,3\r\n9,0,0,0,0\r\n");
    EXPECT_EQ(Table(), (Texts{"1: 1 1 1 1;", "2: 2 2 2 2;", "1: 3 3 3 3;"}));
}

TEST_F(SymbolFileTest, NumbersZeroAndBelowAreSymbolsToo) {
    Read("0,1,1,1,1\r\n-4,2,2,2,2\r\n9,0,0,0,0\r\n");
    EXPECT_EQ(Table(), (Texts{"0: 1 1 1 1;", "-4: 2 2 2 2;"}));
}

TEST_F(SymbolFileTest, AnEmptyFileGivesAnEmptyTable) {
    Read("1,1,1,1,1\r\n9,0,0,0,0\r\n");
    ASSERT_EQ(store.symbols.size(), 1u);
    Read("");
    EXPECT_TRUE(store.symbols.empty());
}

TEST_F(SymbolFileTest, AMissingFileClearsTheOldTable) {
    Read("1,1,1,1,1\r\n9,0,0,0,0\r\n");
    ReadSymbolData(store, files, "no such file");
    EXPECT_TRUE(store.symbols.empty());
}

TEST_F(SymbolFileTest, ALoadReplacesTheTable) {
    Read("1,1,1,1,1\r\n9,0,0,0,0\r\n");
    Read("2,2,2,2,2\r\n9,0,0,0,0\r\n");
    EXPECT_EQ(Table(), Texts{"2: 2 2 2 2;"});
}

TEST_F(SymbolFileTest, FurtherFieldsAreIgnored) {
    Read("1,1,2,3,4,99,x\r\n9,0,0,0,0\r\n");
    EXPECT_EQ(Table(), Texts{"1: 1 2 3 4;"});
}

TEST_F(SymbolFileTest, EmptyFieldsAreSkipped) {
    Read(",,1,1,,2,3,,,4\r\n9,0,0,0,0\r\n");
    EXPECT_EQ(Table(), Texts{"1: 1 2 3 4;"});
}

TEST_F(SymbolFileTest, ALineOfFewerThanFiveFieldsIsPassedOverAndClosesNothing) {
    Read("1,1,2,3,4\r\n2,9,9,9\r\n3,9,9,9,\r\n\r\n,,,,,\r\n1,5,6,7,8\r\n9,0,0,0,0\r\n");
    EXPECT_EQ(Table(), Texts{"1: 1 2 3 4; 5 6 7 8;"});
}

TEST_F(SymbolFileTest, LinesMayEndWithLineFeedsAlone) {
    Read("1,1,2,3,4\n9,0,0,0,0\n");
    EXPECT_EQ(Table(), Texts{"1: 1 2 3 4;"});
}

TEST_F(SymbolFileTest, ACarriageReturnInsideALineEndsNothing) {
    Read("1,1,2,3,4\r5\r\n9,0,0,0,0\r\n");
    EXPECT_EQ(Table(), Texts{"1: 1 2 3 4;"});
}

TEST_F(SymbolFileTest, NumbersEndAtTheFirstCharacterThatIsNoDigit) {
    Read("1x, +2,\t-3z9,--4,5.9\r\n9,0,0,0,0\r\n");
    EXPECT_EQ(Table(), Texts{"1: 2 -3 0 5;"});
}

TEST_F(SymbolFileTest, NumbersBeyond32BitsSaturate) {
    Read("99999999999999999999999,2147483648,-2147483649,2147483647,-2147483648\r\n9,0,0,0,0\r\n");
    EXPECT_EQ(Table(), Texts{"2147483647: 2147483647 -2147483648 2147483647 -2147483648;"});
}

TEST_F(SymbolFileTest, ASymbolKeepsItsFirst20000Strokes) {
    Read(Strokes(1, 20003) + Strokes(2, 3) + "9,0,0,0,0\r\n");
    ASSERT_EQ(store.symbols.size(), 2u);
    EXPECT_EQ(store.symbols[0].strokeCnt, 20000);
    EXPECT_EQ(store.symbols[0].strokeFrom[19999], (Point{19999, 0}));
    EXPECT_EQ(store.symbols[0].strokeTo[19999], (Point{1, 2}));
    EXPECT_EQ(store.symbols[1].strokeCnt, 3);
    EXPECT_EQ(store.symbols[1].strokeFrom[0], (Point{0, 0}));
}

TEST_F(SymbolFileTest, ASymbolOfExactly20000StrokesIsWhole) {
    Read(Strokes(1, 20000) + "9,0,0,0,0\r\n");
    ASSERT_EQ(store.symbols.size(), 1u);
    EXPECT_EQ(store.symbols[0].strokeCnt, 20000);
}

TEST_F(SymbolFileTest, TheTableKeepsTheFirst1000Symbols) {
    std::string lines;
    for (std::int32_t i = 0; i < 1005; ++i) lines += Strokes(i, 1);
    Read(lines);
    ASSERT_EQ(store.symbols.size(), 1000u);
    EXPECT_EQ(store.symbols[999].symNo, 999);
    EXPECT_EQ(store.symbols[999].strokeCnt, 1);
}

TEST_F(SymbolFileTest, LinesAreReadWholeAcrossTheReadersPieces) {
    // Enough for a dozen pieces, with lines of changing length, so that their borders fall into every part of a line.
    std::string lines;
    Texts expected;
    for (std::int32_t i = 1; i <= 900; ++i) {
        const std::string x = std::to_string(i * 12345);
        std::string want = std::to_string(i) + ":";
        for (std::int32_t j = 0; j < i % 13 + 1; ++j) {
            const std::string y = std::to_string(-j - i % 1000 * 1000);
            lines += std::to_string(i) + "," + x + "," + y + "," + y + "," + x + "\r\n";
            want += " " + x + " " + y + " " + y + " " + x + ";";
        }
        expected.push_back(want);
    }
    ASSERT_GT(lines.size(), 200000u);
    Read(lines + "0,0,0,0,0\r\n");
    EXPECT_EQ(Table(), expected);
}

TEST_F(SymbolFileTest, ALineOfAnyLengthIsReadAsOne) {
    const std::string much(100000, ',');
    Read("1" + much + "1,2,3," + std::string(100000, ' ') + "4" + std::string(100000, 'x') + "\r\n9,0,0,0,0\r\n");
    EXPECT_EQ(Table(), Texts{"1: 1 2 3 4;"});
}

TEST_F(SymbolFileTest, AFileThatBreaksOffWhileItIsReadEndsThere) {
    class Breaking : public MemoryFiles {
    public:
        std::unique_ptr<InputFile> OpenRead(std::string_view, OpenError*) override {
            return std::make_unique<MemoryInputFile>("1,1,2,3,4\r\n2,1,1,1,1\r\n3,1", 1000000);
        }
    } breaking;
    ReadSymbolData(store, breaking, "any");
    EXPECT_EQ(Table(), Texts{"1: 1 2 3 4;"});
}

TEST_F(SymbolFileTest, WithoutMemoryTheTableKeepsWhatItHolds) {
    const std::string content = "1,1,1,1,1\r\n2,2,2,2,2\r\n2,3,3,3,3\r\n3,3,3,3,3\r\n9,0,0,0,0\r\n";
    Read(content);
    const Texts whole = Table();
    ASSERT_EQ(whole.size(), 3u);
    bool someWereKept = false;
    for (std::int64_t n = 1;; ++n) {
        ASSERT_LT(n, 100);
        ArrayFaults::FailFrom(n);
        ReadSymbolData(store, files, "symbols.txt");
        const bool wasReached = ArrayFaults::Count() >= n;
        ArrayFaults::Clear();
        const Texts table = Table();
        ASSERT_LE(table.size(), whole.size());
        EXPECT_EQ(table, Texts(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(table.size())));
        if (!wasReached) break;
        EXPECT_LT(table.size(), whole.size()) << n;
        someWereKept |= !table.empty();
    }
    EXPECT_TRUE(someWereKept);
    EXPECT_EQ(Table(), whole);
}

TEST_F(SymbolFileTest, FreeAllAndInitFreeTheTable) {
    Read("1,1,1,1,1\r\n9,0,0,0,0\r\n");
    store.FreeAll();
    EXPECT_TRUE(store.symbols.empty());
    store.Init();
    Read("1,1,1,1,1\r\n9,0,0,0,0\r\n");
    store.Init();
    EXPECT_TRUE(store.symbols.empty());
}

TEST_F(SymbolFileTest, BeforeInitNothingIsRead) {
    CDigMem fresh;
    files.Put("symbols.txt", "1,1,1,1,1\r\n9,0,0,0,0\r\n");
    ReadSymbolData(fresh, files, "symbols.txt");
    EXPECT_TRUE(fresh.symbols.empty());
    EXPECT_EQ(files.openCnt, 0);
}

}  // namespace
}  // namespace orvane
