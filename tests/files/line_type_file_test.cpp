#include "files/line_type_file.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>
#include <vector>

#include "tests/support/memory_files.h"

namespace orvane {
namespace {

using Numbers = std::vector<std::int32_t>;

Numbers ListOf(const GrowArray<std::int32_t>& list) { return {list.begin(), list.end()}; }

class LineTypeFileTest : public ::testing::Test {
protected:
    LineTypeFileTest() { store.Init(); }
    ~LineTypeFileTest() override { ArrayFaults::Clear(); }

    std::int32_t Read(std::string content) {
        files.Put("lines.txt", std::move(content));
        return ReadLineTypeData(store, files, "lines.txt");
    }
    /// The one record that a file of this line gives; an empty one when it gives none.
    const LineTypeDef& One(const std::string& line) {
        static const LineTypeDef kNone;
        EXPECT_EQ(Read(line + "\n"), 1) << line;
        return store.lineTypes.size() == 1 ? store.lineTypes[0] : kNone;
    }
    void ExpectInvalid(const std::string& line) {
        EXPECT_EQ(Read(line + "\nSYS,77,next\n"), 1) << line;
        ASSERT_EQ(store.lineTypes.size(), 1u) << line;
        EXPECT_EQ(store.lineTypes[0].ltId, 77) << line;
    }
    Numbers Ids() const {
        Numbers ids;
        for (const LineTypeDef& def : store.lineTypes) ids.push_back(def.ltId);
        return ids;
    }

    CDigMem store;
    MemoryFiles files;
};

// --- What each key gives ----------------------------------------------------------------------------------------------------

struct Expected {
    const char* line;
    std::int32_t kind;
    std::int32_t cnt;
    Numbers list;
    Numbers list2;
    std::int32_t len;
    double angle;
    std::int32_t dir;
    std::int32_t pos;
    std::int32_t base;
};

TEST_F(LineTypeFileTest, EachKeyFillsItsFieldsAndLeavesTheOthersZero) {
    const Expected kRows[] = {
        {"SYS,5,n", 0, 0, {}, {}, 0, 0, 0, 0, 0},
        {"USERA,5,n,4,6,2,3,1", 1, 4, {6, 2, 3, 1}, {}, 0, 0, 0, 0, 0},
        {"USERB,5,n,20,6,90.5,2,1", 3, 1, {20}, {}, 6, 90.5, 2, 0, 1},
        {"USERC,5,n,2,8,4,6,-45.25,3", 4, 2, {8, 4}, {}, 6, -45.25, 3, 0, 0},
        {"USERD,5,n,3,8,4,2,6,60,1,2", 5, 3, {8, 4, 2}, {}, 6, 60, 1, 2, 0},
        {"USERE,5,n,4,12,3", 2, 1, {12}, {4}, 0, 0, 0, 3, 0},
        {"USERF,5,n,2,1,2,10,20", 6, 2, {10, 20}, {1, 2}, 0, 0, 0, 0, 0},
        {"USERG,5,n,8,14,3", 7, 8, {14}, {8}, 0, 0, 3, 0, 0},
        {"USERH,5,n,2,1,6,10,20,2", 8, 2, {10, 20}, {1, 6}, 0, 0, 2, 0, 0},
    };
    for (const Expected& row : kRows) {
        SCOPED_TRACE(row.line);
        const LineTypeDef& def = One(row.line);
        EXPECT_EQ(def.ltId, 5);
        EXPECT_EQ(def.ltName.View(), "n");
        EXPECT_EQ(def.ltKind, row.kind);
        EXPECT_EQ(def.ltCnt, row.cnt);
        EXPECT_EQ(ListOf(def.ltList), row.list);
        EXPECT_EQ(ListOf(def.ltList2), row.list2);
        EXPECT_EQ(def.ltLen, row.len);
        EXPECT_EQ(def.ltAngle, row.angle);
        EXPECT_EQ(def.ltDir, row.dir);
        EXPECT_EQ(def.ltPos, row.pos);
        EXPECT_EQ(def.ltBase, row.base);
    }
}

TEST_F(LineTypeFileTest, OneFieldMoreOrLessMakesARecordInvalid) {
    for (const char* line :
         {"SYS,5,n", "USERA,5,n,4,6,2,3,1", "USERB,5,n,20,6,90.5,2,1", "USERC,5,n,2,8,4,6,-45.25,3", "USERD,5,n,3,8,4,2,6,60,1,2",
          "USERE,5,n,4,12,3", "USERF,5,n,2,1,2,10,20", "USERG,5,n,8,14,3", "USERH,5,n,2,1,6,10,20,2"}) {
        One(line);
        ExpectInvalid(std::string(line) + ",1");
        const std::string text = line;
        ExpectInvalid(text.substr(0, text.rfind(',')));
    }
}

TEST_F(LineTypeFileTest, ARecordThatEndsBeforeItsCountIsInvalid) {
    for (const char* key : {"USERA", "USERC", "USERD", "USERF", "USERH"}) ExpectInvalid(std::string(key) + ",5,n");
    ExpectInvalid("USERA,5");
    ExpectInvalid("USERA");
    ExpectInvalid("SYS");
}

TEST_F(LineTypeFileTest, ACountOfZeroGivesEmptyLists) {
    EXPECT_EQ(One("USERA,5,n,0").ltCnt, 0);
    EXPECT_TRUE(store.lineTypes[0].ltList.empty());
    EXPECT_EQ(One("USERC,5,n,0,6,90,1").ltLen, 6);
    EXPECT_EQ(One("USERH,5,n,0,2").ltDir, 2);
}

TEST_F(LineTypeFileTest, ANegativeCountIsInvalidEvenWhereTheSumOfFieldsIsRight) {
    ExpectInvalid("USERC,5,n,-1,2,3");
    ExpectInvalid("USERD,5,n,-2,2,3");
    ExpectInvalid("USERA,5,n,-1");
    ExpectInvalid("USERF,5,n,-2147483648");
}

TEST_F(LineTypeFileTest, AHugeCountIsInvalidAndAsksForNoMemory) {
    for (const char* line :
         {"USERA,5,n,2147483647,1", "USERF,5,n,2147483647,1,2", "USERH,5,n,1073741823,1,2,3", "USERC,5,n,99999999999"}) {
        ArrayFaults::FailOver(sizeof(LineTypeDef));
        ExpectInvalid(line);
        ArrayFaults::Clear();
    }
}

TEST_F(LineTypeFileTest, AListOfMoreThanTenDashesIsKeptWhole) {
    EXPECT_EQ(ListOf(One("USERA,5,n,12,1,2,3,4,5,6,7,8,9,10,11,12").ltList), (Numbers{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
}

TEST_F(LineTypeFileTest, ARecordOfShapesWithACountOfOneIsReadWithOneShape) {
    const LineTypeDef& def = One("USERH,5,n,1,2,10,0");
    EXPECT_EQ(def.ltCnt, 1);
    EXPECT_EQ(ListOf(def.ltList2), Numbers{2});
}

// --- Keys -------------------------------------------------------------------------------------------------------------------

TEST_F(LineTypeFileTest, AKeyMayGoOnBeforeTheFirstComma) {
    EXPECT_EQ(One("SYSTEM,5,n").ltKind, 0);
    EXPECT_EQ(One("USERB ticks,5,n,20,6,90,2,1").ltKind, 3);
}

TEST_F(LineTypeFileTest, AnyOtherKeyIsInvalid) {
    for (const char* key : {"USERI", "USER", "usera", "sys", " SYS", "SY", "X", "US"}) ExpectInvalid(std::string(key) + ",5,n");
}

TEST_F(LineTypeFileTest, ACommaBeforeTheKeyHidesIt) { ExpectInvalid(",SYS,5,n"); }

// --- Fields -----------------------------------------------------------------------------------------------------------------

TEST_F(LineTypeFileTest, AnEmptyFieldDoesNotExistAndShiftsTheRest) {
    EXPECT_EQ(One("USERA,,11,,,name,2,4,5,,").ltId, 11);
    EXPECT_EQ(ListOf(store.lineTypes[0].ltList), (Numbers{4, 5}));
    ExpectInvalid("SYS,,name");
    // The name is missing, so the count takes its place.
    ExpectInvalid("USERA,11,,2,4,5");
}

TEST_F(LineTypeFileTest, TrailingGarbageInANumberIsIgnored) {
    const LineTypeDef& def = One("USERB,5x,n, 20mm,\t+6.9,90.5deg,-2-,1,");
    EXPECT_EQ(def.ltId, 5);
    EXPECT_EQ(ListOf(def.ltList), Numbers{20});
    EXPECT_EQ(def.ltLen, 6);
    EXPECT_EQ(def.ltAngle, 90.5);
    EXPECT_EQ(def.ltDir, -2);
    EXPECT_EQ(def.ltBase, 1);
}

TEST_F(LineTypeFileTest, AFieldWithoutANumberIsZero) {
    const LineTypeDef& def = One("USERB,id,n,pitch,-,angle,x,1");
    EXPECT_EQ(def.ltId, 0);
    EXPECT_EQ(ListOf(def.ltList), Numbers{0});
    EXPECT_EQ(def.ltLen, 0);
    EXPECT_EQ(def.ltAngle, 0);
}

TEST_F(LineTypeFileTest, NumbersBeyond32BitsSaturate) {
    const LineTypeDef& def = One("USERB,99999999999999999999,n,-99999999999,2147483648,1,1,1");
    EXPECT_EQ(def.ltId, INT32_MAX);
    EXPECT_EQ(ListOf(def.ltList), Numbers{INT32_MIN});
    EXPECT_EQ(def.ltLen, INT32_MAX);
}

TEST_F(LineTypeFileTest, AnglesHavePointSignAndExponentAndAreAlwaysFinite) {
    const struct {
        const char* text;
        double angle;
    } kAngles[] = {{"45", 45}, {"-.5", -0.5}, {" +1.5e2", 150}, {"1e", 1}, {"1e400", 0}, {"-1e400", 0}, {"1e-400", 0},
                   {"nan", 0}, {"inf", 0},    {"-inf", 0},      {".", 0},  {"+-3", 0},   {"0x10", 0},   {"1.2.3", 1.2}};
    for (const auto& [text, angle] : kAngles) {
        EXPECT_EQ(One("USERB,5,n,1,1," + std::string(text) + ",1,1").ltAngle, angle) << text;
    }
}

TEST_F(LineTypeFileTest, TheLocaleOfTheProcessDoesNotMatter) {
    // A comma is the point of these locales, where the machine has one of them.
    for (const char* name : {"de_DE.UTF-8", "de_DE", "fr_FR.UTF-8"}) {
        if (std::setlocale(LC_ALL, name) != nullptr) break;
    }
    EXPECT_EQ(One("USERB,5,n,1,1,22.5,1,1").ltAngle, 22.5);
    std::setlocale(LC_ALL, "C");
}

TEST_F(LineTypeFileTest, ANameIsCutAt51Bytes) {
    EXPECT_EQ(One("SYS,5," + std::string(80, 'n')).ltName.View(), std::string(51, 'n'));
}

// --- Lines ------------------------------------------------------------------------------------------------------------------

TEST_F(LineTypeFileTest, RecordsStandInTheOrderOfTheFileUnderBothLineEnds) {
    for (const char* end : {"\n", "\r\n"}) {
        const std::string e = end;
        EXPECT_EQ(Read("SYS,3,a" + e + "USERG,1,b,7,5,0" + e + "SYS,2,c" + e), 3);
        EXPECT_EQ(Ids(), (Numbers{3, 1, 2}));
        EXPECT_EQ(store.lineTypes[2].ltName.View(), "c");
    }
}

TEST_F(LineTypeFileTest, TheLastLineNeedsNoEnd) {
    EXPECT_EQ(Read("SYS,1,a\nSYS,2,b"), 2);
    EXPECT_EQ(Ids(), (Numbers{1, 2}));
}

TEST_F(LineTypeFileTest, EmptyLinesAndCommentsAreSkipped) {
    EXPECT_EQ(Read("\n\r\n'SYS,9,comment\nSYS,1,a\n\n'\nSYS,2,b\n"), 2);
    EXPECT_EQ(Ids(), (Numbers{1, 2}));
}

TEST_F(LineTypeFileTest, ACommentBeginsWithItsMarkAndNotBehindABlank) {
    ExpectInvalid(" 'comment");
    EXPECT_EQ(One("SYS,1,'a").ltName.View(), "'a");
}

TEST_F(LineTypeFileTest, AnInvalidRecordGivesItsPlaceToTheNext) {
    EXPECT_EQ(Read("SYS,1,a\nUSERA,2,b,3,1,1\nnonsense\nSYS,3,c\n"), 2);
    EXPECT_EQ(Ids(), (Numbers{1, 3}));
}

TEST_F(LineTypeFileTest, ALineOf2047BytesIsWhole) {
    for (const char* end : {"\n", "\r\n", ""}) {
        const std::string line = "SYS,5," + std::string(2041, 'n');
        ASSERT_EQ(line.size(), 2047u);
        EXPECT_EQ(Read(line + end + (*end != '\0' ? "SYS,6,b" : "")), *end != '\0' ? 2 : 1);
        EXPECT_EQ(store.lineTypes[0].ltId, 5);
    }
}

TEST_F(LineTypeFileTest, WhatALineHasBeyond2047BytesIsTheNextLine) {
    EXPECT_EQ(Read("SYS,5," + std::string(2041, 'n') + "SYS,6,rest\r\nSYS,7,next\r\n"), 3);
    EXPECT_EQ(Ids(), (Numbers{5, 6, 7}));
    // So a comment that is too long goes on as something else.
    EXPECT_EQ(Read("'" + std::string(2046, 'c') + "SYS,8,rest\n"), 1);
    EXPECT_EQ(Ids(), Numbers{8});
}

TEST_F(LineTypeFileTest, ALineFullOfFieldsIsRead) {
    std::string line = "USERA,1,a,1016";
    for (int i = 0; i < 1016; ++i) line += ",1";
    ASSERT_EQ(line.size(), 2046u);
    EXPECT_EQ(One(line).ltList.size(), 1016u);
    std::string most = "SYS";
    while (most.size() < 2047) most += ",1";
    ExpectInvalid(most);
}

TEST_F(LineTypeFileTest, ALineEndsAtAZeroByte) {
    EXPECT_EQ(Read(std::string("SYS,1,a\0,9,9\nSYS,2,b\n", 21)), 2);
    EXPECT_EQ(Read(std::string("\0SYS,1,a\nSYS,2,b\n", 17)), 1);
    EXPECT_EQ(Ids(), Numbers{2});
}

TEST_F(LineTypeFileTest, LinesAreReadWholeAcrossTheReadersPieces) {
    std::string content;
    Numbers expected;
    for (std::int32_t i = 0; i < 5000; ++i) {
        content +=
            "USERB," + std::to_string(i * 7) + "," + std::string(static_cast<std::size_t>(i % 17 + 1), 'n') + ",20,6,90,1,1\r\n";
        expected.push_back(i * 7);
    }
    ASSERT_GT(content.size(), 100000u);
    EXPECT_EQ(Read(content), 5000);
    EXPECT_EQ(Ids(), expected);
}

// --- The table --------------------------------------------------------------------------------------------------------------

TEST_F(LineTypeFileTest, AReadReplacesTheTable) {
    EXPECT_EQ(Read("SYS,1,a\nSYS,2,b\n"), 2);
    EXPECT_EQ(Read("SYS,3,c\n"), 1);
    EXPECT_EQ(Ids(), Numbers{3});
}

TEST_F(LineTypeFileTest, AMissingFileGivesZeroAndTheOldTableIsGone) {
    Read("SYS,1,a\n");
    EXPECT_EQ(ReadLineTypeData(store, files, "no such file"), 0);
    EXPECT_TRUE(store.lineTypes.empty());
}

TEST_F(LineTypeFileTest, AnEmptyFileGivesAnEmptyTable) {
    Read("SYS,1,a\n");
    EXPECT_EQ(Read(""), 0);
    EXPECT_TRUE(store.lineTypes.empty());
}

TEST_F(LineTypeFileTest, IdsMayStandTwice) {
    EXPECT_EQ(Read("SYS,1,a\nUSERG,1,b,7,5,0\n"), 2);
    EXPECT_EQ(Ids(), (Numbers{1, 1}));
}

TEST_F(LineTypeFileTest, WithoutMemoryTheAnswerIsZeroAndTheRecordsBeforeStand) {
    const std::string content = "SYS,1,a\nUSERF,2,b,1,4,5\nUSERE,3,c,1,2,3\nUSERA,4,d,2,1,1\nSYS,5,e\n";
    bool someWereKept = false;
    for (std::int64_t n = 1;; ++n) {
        ASSERT_LT(n, 100);
        files.Put("lines.txt", content);
        ArrayFaults::FailNth(n);
        const std::int32_t told = ReadLineTypeData(store, files, "lines.txt");
        const bool wasReached = ArrayFaults::Count() >= n;
        ArrayFaults::Clear();
        const Numbers all{1, 2, 3, 4, 5};
        ASSERT_LE(store.lineTypes.size(), all.size());
        EXPECT_EQ(Ids(), Numbers(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(store.lineTypes.size())));
        if (!wasReached) {
            EXPECT_EQ(told, 5);
            EXPECT_EQ(Ids(), all);
            break;
        }
        EXPECT_EQ(told, 0) << n;
        EXPECT_LT(store.lineTypes.size(), all.size()) << n;
        someWereKept |= !store.lineTypes.empty();
    }
    EXPECT_TRUE(someWereKept);
}

TEST_F(LineTypeFileTest, BeforeInitNothingIsRead) {
    CDigMem fresh;
    files.Put("lines.txt", "SYS,1,a\n");
    EXPECT_EQ(ReadLineTypeData(fresh, files, "lines.txt"), 0);
    EXPECT_TRUE(fresh.lineTypes.empty());
    EXPECT_EQ(files.openCnt, 0);
}

}  // namespace
}  // namespace orvane
