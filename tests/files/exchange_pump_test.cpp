// Host code between the lines of a read and the blocks of a save.
#include "tests/files/exchange_rig.h"

namespace orvane {
namespace {

using Steps = std::vector<std::string>;

class ExchangePumpTest : public ExchangeTest {
protected:
    std::string State() {
        std::string state = std::to_string(store.BlockCnt());
        for (std::int32_t i = 0; i < store.BlockCnt(); ++i) {
            for (const DigDat& dat : store.Block(i).dats) {
                state += " " + std::to_string(dat.datID) + ":" + std::to_string(dat.pntCnt) + (dat.str != nullptr ? "t" : "");
            }
        }
        return state;
    }
    void MakeBlocks(std::int32_t cnt) {
        for (std::int32_t i = 1; i <= cnt; ++i) ASSERT_TRUE(store.DigMemAlloc2("A", i, kLayLine, "", 1, 0, 0));
    }

    const std::string file = Lines({kNamedHead, kNamedLayer, "", "SL,\"\",4,2,9", kBlock, "IH,1,0,4,0", "P,1,2,3",
                                    "T,1,2,3,\"t\",\"f\"", "remark", "IH,2,0,0,0", "P,4,5,6"});
};

TEST_F(ExchangePumpTest, AReadPumpsAfterEveryLineButTheFirst) {
    Steps steps;
    EXPECT_TRUE(Read(file, [&](double) {
        steps.push_back(State());
        return true;
    }));
    EXPECT_EQ(steps, (Steps{"0", "0", "0", "1", "1 1:0", "1 1:1", "1 1:1t", "1 1:1t", "1 1:1t 2:0", "1 1:1t 2:1"}));
}

TEST_F(ExchangePumpTest, AReadTellsHowFarItIs) {
    std::vector<double> fractions;
    EXPECT_TRUE(Read(file, [&](double fraction) {
        fractions.push_back(fraction);
        return true;
    }));
    const double afterLayer = static_cast<double>(kNamedHead.size() + kNamedLayer.size() + 2) / static_cast<double>(file.size());
    EXPECT_DOUBLE_EQ(fractions.front(), afterLayer);
    EXPECT_EQ(fractions.back(), 1);
    for (std::size_t i = 1; i < fractions.size(); ++i) EXPECT_GT(fractions[i], fractions[i - 1]);
}

TEST_F(ExchangePumpTest, ALineThatFailsIsNotPumped) {
    std::int32_t pumped = 0;
    EXPECT_FALSE(Read(Lines({kNamedHead, kNamedLayer, "IH,1"}), [&](double) { return ++pumped > 0; }));
    EXPECT_EQ(pumped, 1);
    EXPECT_FALSE(Read("ORVFH1.02\n", [&](double) { return ++pumped > 0; }));
    EXPECT_EQ(pumped, 1);
}

TEST_F(ExchangePumpTest, AReadEndsWhereThePumpSaysSo) {
    for (std::int32_t n = 1; n <= 10; ++n) {
        store.Init();
        std::int32_t pumped = 0;
        EXPECT_FALSE(Read(file, [&](double) { return ++pumped < n; })) << n;
        EXPECT_EQ(pumped, n);
    }
    EXPECT_EQ(State(), "1 1:1t 2:1") << "what was made stays";
}

TEST_F(ExchangePumpTest, AReadEndsWhenThePumpEmptiesTheStore) {
    for (const bool initAgain : {true, false}) {
        for (std::int32_t n = 1; n <= 10; ++n) {
            store.Init();
            std::int32_t pumped = 0;
            EXPECT_FALSE(Read(file, [&](double) {
                if (++pumped == n) initAgain ? static_cast<void>(store.Init()) : store.FreeAll();
                return true;
            })) << n;
            EXPECT_EQ(pumped, n);
            EXPECT_EQ(store.BlockCnt(), 0);
        }
    }
}

TEST_F(ExchangePumpTest, AReadEndsWithTheNextRecordOfABlockThatThePumpDeleted) {
    for (std::int32_t n = 4; n <= 10; ++n) {
        store.Init();
        std::int32_t pumped = 0;
        const bool done = Read(file, [&](double) {
            if (++pumped == n) store.DigMemDelete("A", 5);
            return true;
        });
        EXPECT_EQ(done, n == 10) << n << ": behind the last record nothing is left to fail";
        EXPECT_EQ(store.FindBlock("A", 5).block, -1);
        EXPECT_EQ(pumped, n == 7 ? 8 : n) << "the remark fails at nothing";
    }
}

TEST_F(ExchangePumpTest, ABlockMadeAnewByThePumpTakesTheItemsThatFollow) {
    std::int32_t pumped = 0;
    EXPECT_TRUE(Read(file, [&](double) {
        if (++pumped == 8) {
            store.DigMemDelete("A", 5);
            for (std::int32_t i = 0; i < 50; ++i) store.DigMemAlloc2("X" + std::to_string(i), 1, kLayPoint, "", 1, 0, 0);
            store.DigMemAlloc2("A", 5, kLayLine, "", 1, 0, 0);
        }
        return true;
    }));
    EXPECT_EQ(BlockOf("A", 5).datCnt, 1);
    EXPECT_EQ(Item("A", 5, 2).pntCnt, 1);
}

TEST_F(ExchangePumpTest, AnItemThatThePumpDeletedFailsAtItsNextPoint) {
    std::int32_t pumped = 0;
    EXPECT_FALSE(Read(file, [&](double) {
        if (++pumped == 5) store.DelDigDat("A", 5, 1);
        return true;
    }));
    EXPECT_EQ(pumped, 5);
}

TEST_F(ExchangePumpTest, AReadInsideTheReadDisturbsNothing) {
    std::int32_t pumped = 0;
    files.Put("inner.txt", Lines({kPlainHead, "LY,B,1,2", "SL,8", "GH,B,1,6", "IH,70", "P,7,7,7"}));
    EXPECT_TRUE(Read(file, [&](double) {
        if (++pumped != 5) return true;
        EXPECT_TRUE(ExchRead(store, files, "inner.txt"));
        return true;
    }));
    EXPECT_EQ(BlockOf("A", 5).datCnt, 2);
    EXPECT_EQ(Item("A", 5, 1).pntCnt, 1);
    EXPECT_EQ(Item("B", 6, 70).pntCnt, 1);
}

TEST_F(ExchangePumpTest, ASubLayerThatThePumpChangedIsSetAgainWithTheNextBlock) {
    const std::string blocks = Lines({kNamedHead, kNamedLayer, "SL,\"\",4,2,9", "GH,A,1,5", "GH,A,1,6", "GH,A,1,7"});
    std::int32_t pumped = 0;
    std::vector<std::uint32_t> counts;
    EXPECT_TRUE(Read(blocks, [&](double) {
        counts.push_back(store.SubLayChangeCount());
        if (++pumped == 4) store.SetSubLayColor("A", 4, 1234);
        return true;
    }));
    EXPECT_EQ(Sub("A", 4).color, 9U);
    ASSERT_EQ(counts.size(), 5u);
    EXPECT_EQ(counts[2], counts[3]) << "what still stands is not set again";
    EXPECT_NE(counts[3] + 1, counts[4]) << "more than the host's own change";
}

TEST_F(ExchangePumpTest, ASavePumpsAfterEveryBlockThatItWrites) {
    MakeBlocks(3);
    ASSERT_TRUE(store.DigMemAlloc2("B", 1, kLayLine, "", 0, 0, 0));
    std::vector<double> fractions;
    const ExchangePump pump = [&](double fraction) {
        fractions.push_back(fraction);
        return true;
    };
    EXPECT_TRUE(ExchWrite(store, files, "out.txt", "1.01", {}, pump));
    EXPECT_EQ(fractions, (std::vector<double>{0.25, 0.5, 0.75, 1}));
    fractions.clear();
    const std::vector<std::string_view> codes{"B"};
    EXPECT_TRUE(ExchWrite(store, files, "out.txt", "1.01", codes, pump));
    EXPECT_EQ(fractions, std::vector<double>{1});
}

TEST_F(ExchangePumpTest, ASaveEndsWhereThePumpSaysSo) {
    MakeBlocks(3);
    std::int32_t pumped = 0;
    EXPECT_FALSE(ExchWrite(store, files, "out.txt", "1.00", {}, [&](double) { return ++pumped < 2; }));
    EXPECT_EQ(pumped, 2);
    EXPECT_NE(files.files["out.txt"].content.find("GH,A,1,2"), std::string::npos);
    EXPECT_EQ(files.files["out.txt"].content.find("GH,A,1,3"), std::string::npos);
    EXPECT_EQ(files.closeCnt, 1);
}

TEST_F(ExchangePumpTest, ASaveEndsWhenThePumpEmptiesTheStore) {
    for (const bool initAgain : {true, false}) {
        for (std::int32_t n = 1; n <= 3; ++n) {
            store.Init();
            MakeBlocks(3);
            std::int32_t pumped = 0;
            EXPECT_FALSE(ExchWrite(store, files, "out.txt", "1.01", {}, [&](double) {
                if (++pumped == n) initAgain ? static_cast<void>(store.Init()) : store.FreeAll();
                return true;
            })) << n;
            EXPECT_EQ(pumped, n);
        }
    }
}

TEST_F(ExchangePumpTest, ASaveOfABlockThatThePumpDeletedGivesFalse) {
    for (const std::int32_t meshNo : {1, 2, 3, 4}) {
        store.Init();
        MakeBlocks(4);
        std::int32_t pumped = 0;
        EXPECT_FALSE(ExchWrite(store, files, "out.txt", "1.01", {}, [&](double) {
            if (++pumped == 2) store.DigMemDelete("A", meshNo);
            return true;
        })) << meshNo;
        EXPECT_EQ(pumped, 3);
    }
    store.Init();
    MakeBlocks(2);
    EXPECT_FALSE(ExchWrite(store, files, "out.txt", "1.01", {}, [&](double) { return store.DigMemDeleteLay("A") >= 0; }));
}

TEST_F(ExchangePumpTest, BlocksThatThePumpMakesDuringASaveMoveTheOthersAndHurtNothing) {
    MakeBlocks(2);
    std::int32_t made = 0;
    EXPECT_TRUE(ExchWrite(store, files, "out.txt", "1.01", {}, [&](double) {
        for (std::int32_t i = 0; i < 60; ++i) {
            store.DigMemAlloc2("X" + std::to_string(made++), 1, kLayPoint, "", -5, 0, 0);
        }
        return true;
    }));
    const std::string& text = files.files["out.txt"].content;
    EXPECT_NE(text.find("GH,A,1,1"), std::string::npos);
    EXPECT_NE(text.find("GH,A,1,2"), std::string::npos);
}

}  // namespace
}  // namespace orvane
