#include <random>

#include "tests/files/archive_rig.h"

namespace orvane {
namespace {

class ArchiveDamageTest : public ArchiveTest {
protected:
    /// A small map with a line, a grid and a text, and its sets in both forms.
    void MakeSets(const char* version) {
        store.Init();
        MakeBlock("A", 1);
        AddItem("A", 1, 1, {{1, 2, 0}, {3, 4, 0}});
        MakeBlock("M", 1, kLayMesh);
        AddItem("M", 1, 2);
        ASSERT_TRUE(store.SetMeshDat("M", 1, 2, 2, 1, std::vector<DigPnt>{{0, 0, 0}, {9, 0, 1}}));
        MakeBlock("T", 1, kLayText);
        AddItem("T", 1, 3, {{5, 5, 0}});
        ASSERT_TRUE(store.SetDigDatString("T", 1, 3, 0, 0, "text"));
        ASSERT_TRUE(Write("m.Ovb", version));
        ASSERT_TRUE(Write("m.Ovt", version));
    }
    /// Reads what is there in every way. The store must be sound afterwards and nothing large may have been asked for.
    void ReadEveryWay() {
        static const std::string kCodes[] = {"A", "T"};
        const ArcFilter filters[] = {{}, {0, 0, 0, 0, kCodes}, {0, 0, 6, 6, kCodes}};
        for (const ArcFilter& filter : filters) {
            for (const char* name : {"m.Ovb", "m.Ovt"}) {
                store.Init();
                ASSERT_TRUE(store.MakeLayer("A", kLayLine));
                ArrayFaults::Clear();
                ArcRead(store, files, name, filter);
                ASSERT_LT(ArrayFaults::Largest_bytes(), 40000u);
                ASSERT_FALSE(DumpStore(store).empty());
            }
        }
    }
    static constexpr const char* kSiblings[] = {"m.Ovl", "m.Ovb", "m.Ovt", "m.Ovi", "m.Ovm"};
};

TEST_F(ArchiveDamageTest, DataCutOffAtAnyByteGivesTheWholeItemsBeforeIt) {
    for (const char* version : {"1.00", "1.10"}) {
        MakeSets(version);
        const std::string whole = files.Content("m.Ovb");
        std::vector<std::size_t> ends;
        std::size_t size = 40;
        for (const std::int32_t block : {0, 1, 2}) {
            const DigDat& dat = store.Block(block).dats[0];
            size += (version == std::string_view("1.00") ? 81u : 86u) + 24u * static_cast<std::size_t>(dat.pntCnt);
            if (dat.meshAttr != nullptr && version == std::string_view("1.10")) size += 9 + 2 * 5;
            if (dat.str != nullptr) size += 115 + 4;
            ends.push_back(size);
        }
        ASSERT_EQ(ends.back(), whole.size());
        for (std::size_t cut = 0; cut <= whole.size(); ++cut) {
            files.Put("m.Ovb", whole.substr(0, cut));
            store.Init();
            const bool read = Read();
            std::size_t items = 0;
            while (items < 3 && ends[items] <= cut) ++items;
            ASSERT_EQ(AllIDs().size(), items) << version << " cut at " << cut;
            ASSERT_EQ(read, items > 0) << version << " cut at " << cut;
        }
    }
}

TEST_F(ArchiveDamageTest, EverySiblingMayBeCutOffAtAnyByte) {
    MakeSets("1.10");
    for (const char* sibling : kSiblings) {
        const std::string whole = files.Content(sibling);
        for (std::size_t cut = 0; cut<whole.size(); cut += whole.size()> 2000 ? 41 : 1) {
            files.files[sibling].content = whole.substr(0, cut);
            ASSERT_NO_FATAL_FAILURE(ReadEveryWay()) << sibling << " cut at " << cut;
        }
        files.files[sibling].content = whole;
    }
}

TEST_F(ArchiveDamageTest, EveryByteMayBeAnyByte) {
    std::mt19937 random(3);
    for (const char* version : {"1.00", "1.10"}) {
        MakeSets(version);
        for (const char* sibling : kSiblings) {
            const std::string whole = files.Content(sibling);
            for (std::size_t at = 0; at<whole.size(); at += whole.size()> 2000 ? 41 : 1) {
                for (const char byte : {'\xFF', static_cast<char>(random())}) {
                    files.files[sibling].content[at] = byte;
                    ASSERT_NO_FATAL_FAILURE(ReadEveryWay()) << sibling << " changed at " << at;
                }
                files.files[sibling].content[at] = whole[at];
            }
        }
    }
}

TEST_F(ArchiveDamageTest, FileThatIsShorterThanItClaimsEndsTheReading) {
    MakeSets("1.10");
    class Claiming : public MemoryFiles {
    public:
        std::unique_ptr<InputFile> OpenRead(std::string_view name, OpenError* cause) override {
            const auto found = files.find(name);
            if (cause != nullptr) *cause = found == files.end() ? OpenError::Missing : OpenError::None;
            if (found == files.end()) return nullptr;
            return std::make_unique<MemoryInputFile>(found->second.content, found->second.content.size() + 100000);
        }
    } claiming;
    claiming.files = files.files;
    for (const char* name : {"m.Ovb", "m.Ovt"}) {
        store.Init();
        ArcRead(store, claiming, name);
        EXPECT_EQ(AllIDs(), (IDs{})) << "the layer file is the first that ends too soon";
    }
    claiming.files["m.Ovl"].content = files.Content("m.Ovl");
    store.Init();
    static const std::string kCodes[] = {"A"};
    EXPECT_TRUE(ArcRead(store, claiming, "m.Ovb", {0, 0, 0, 0, kCodes}) || store.BlockCnt() > 0);
}

TEST_F(ArchiveDamageTest, WriteErrorAnywhereEndsTheSaveWithFalseAndLeavesTheSiblingsSoFar) {
    MakeSets("1.10");
    for (const char* name : {"n.Ovb", "n.Ovt"}) {
        const std::size_t siblings = std::string_view(name) == "n.Ovb" ? 4 : 3;
        const auto attempt = [&](auto prepare) {
            WritableFiles disk;
            prepare(disk);
            const bool saved = ArcWrite(store, disk, name, "");
            EXPECT_EQ(disk.closeCnt, static_cast<std::int32_t>(disk.files.size())) << "whatever was opened is closed";
            return std::pair(saved, disk.files.size());
        };
        for (std::size_t n = 0; n <= siblings; ++n) {
            const bool whole = n == siblings;
            const std::size_t made = whole ? siblings : n + 1;
            const auto count = static_cast<std::int32_t>(n);
            EXPECT_EQ(attempt([=](WritableFiles& disk) { disk.writesLeft = count; }), std::pair(whole, made)) << name << n;
            EXPECT_EQ(attempt([=](WritableFiles& disk) { disk.closesLeft = count; }), std::pair(whole, made)) << name << n;
        }
        for (const char* ending : {"l", "b", "t", "i", "m"}) {
            const std::string refused = std::string("n.Ov") + ending;
            const auto [saved, made] = attempt([&](WritableFiles& disk) { disk.refused.insert(refused); });
            const bool isWritten = !(siblings == 4 && *ending == 't') && !(siblings == 3 && (*ending == 'b' || *ending == 'i'));
            EXPECT_EQ(saved, !isWritten) << name << refused;
            EXPECT_TRUE(!isWritten || made < siblings) << name << refused;
        }
    }
}

TEST_F(ArchiveDamageTest, FullDiskAtAnyByteEndsTheSaveWithFalse) {
    MakeSets("1.10");
    for (const char* name : {"n.Ovb", "n.Ovt"}) {
        WritableFiles disk;
        ASSERT_TRUE(ArcWrite(store, disk, name, ""));
        std::size_t total = 0;
        for (const auto& [file, content] : disk.files) total += content.content.size();
        for (std::size_t room = 0; room <= total; room += room + 61 < total ? 61 : 1) {
            WritableFiles full;
            full.room_bytes = room;
            ASSERT_EQ(ArcWrite(store, full, name, ""), room == total) << name << " room " << room;
        }
    }
}

TEST_F(ArchiveDamageTest, WriteErrorInTheMiddleOfMuchDataEndsTheSave) {
    MakeBlock("A", 1);
    AddItem("A", 1, 1, std::vector<DigPnt>(100000));
    AddItem("A", 1, 2, std::vector<DigPnt>(5));
    for (std::int32_t writes = 0; writes <= 6; ++writes) {
        WritableFiles disk;
        disk.writesLeft = writes;
        if (ArcWrite(store, disk, "n.Ovb", "")) return;
        ASSERT_LE(disk.files.size(), 4u);
    }
    FAIL() << "one for each small file, three for the data";
}

TEST_F(ArchiveDamageTest, WithoutMemoryAReadEndsAndTheItemsBeforeStay) {
    MakeSets("1.10");
    for (const char* name : {"m.Ovb", "m.Ovt"}) {
        static const std::string kCodes[] = {"A", "M", "T"};
        for (const ArcFilter& filter : {ArcFilter{}, ArcFilter{0, 0, 0, 0, kCodes}}) {
            for (std::int64_t n = 1;; ++n) {
                store.Init();
                ArrayFaults::FailFrom(n);
                const bool read = ArcRead(store, files, name, filter);
                const bool failed = ArrayFaults::Count() >= n;
                ArrayFaults::Clear();
                const IDs ids = AllIDs();
                ASSERT_LE(ids.size(), 3u);
                for (std::size_t i = 0; i < ids.size(); ++i) ASSERT_EQ(ids[i], static_cast<std::int32_t>(i + 1));
                ASSERT_EQ(store.GetDigIndexCnt(), static_cast<std::int32_t>(ids.size())) << "no block without an entry";
                if (failed) continue;
                ASSERT_TRUE(read);
                ASSERT_EQ(ids.size(), 3u);
                break;
            }
        }
    }
}

TEST_F(ArchiveDamageTest, WithoutMemoryForTheIndexTheSaveGoesOnWithoutIt) {
    MakeSets("1.10");
    std::int32_t withoutIndex = 0;
    for (std::int64_t n = 1;; ++n) {
        WritableFiles disk;
        ArrayFaults::FailNth(n);
        const bool saved = ArcWrite(store, disk, "n.Ovb", "");
        const bool failed = ArrayFaults::Count() >= n;
        ArrayFaults::Clear();
        if (!failed) {
            EXPECT_TRUE(saved);
            break;
        }
        if (saved) {
            EXPECT_FALSE(disk.Has("n.Ovi"));
            EXPECT_EQ(disk.Content("n.Ovb"), files.Content("m.Ovb"));
            ++withoutIndex;
        }
    }
    EXPECT_GT(withoutIndex, 0);
}

}  // namespace
}  // namespace orvane
