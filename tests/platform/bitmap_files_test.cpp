#include "platform/bitmap_files.h"

#include <gtest/gtest.h>

#include "tests/support/memory_files.h"

namespace orvane {
namespace {

/// A picture of one row, all of it of one shade of grey.
std::string GreyRow(int width, int grey) {
    const auto low = [](int v) { return static_cast<char>(v & 0xFF); };
    std::string file("BM\0\0\0\0\0\0\0\0\x1A\0\0\0\x0C\0\0\0", 18);
    file += {low(width), low(width >> 8), 1, 0, 1, 0, 24, 0};
    file += std::string(static_cast<std::size_t>((width * 3 + 3) / 4 * 4), low(grey));
    return file;
}

class BitmapFilesTest : public ::testing::Test {
protected:
    static std::int64_t Grey(const std::shared_ptr<const FilePixels>& picture) {
        return picture == nullptr ? -1 : static_cast<std::int64_t>(picture->pixels[0] & 0xFF);
    }

    MemoryFiles files;
    BitmapFiles bitmaps{files};
};

TEST_F(BitmapFilesTest, APictureIsReadOnceAndItsFactsAreAskedEachTime) {
    files.Put("a.bmp", GreyRow(3, 10));
    const auto first = bitmaps.Load("a.bmp");
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->width_px, 3);
    EXPECT_EQ(first->pixels, (std::vector<Rgb>{0x0A0A0A, 0x0A0A0A, 0x0A0A0A}));
    EXPECT_EQ(bitmaps.Load("a.bmp"), first);
    EXPECT_EQ(bitmaps.Load("a.bmp"), first);
    EXPECT_EQ(files.openCnt, 1);
    EXPECT_EQ(files.factsCnt, 3);
}

TEST_F(BitmapFilesTest, NamesAreToldApart) {
    files.Put("a.bmp", GreyRow(3, 10));
    files.Put("b.bmp", GreyRow(3, 20));
    EXPECT_EQ(Grey(bitmaps.Load("a.bmp")), 10);
    EXPECT_EQ(Grey(bitmaps.Load("b.bmp")), 20);
    EXPECT_EQ(Grey(bitmaps.Load("a.bmp")), 10);
    EXPECT_EQ(files.openCnt, 2);
}

TEST_F(BitmapFilesTest, AnotherChangeTimeReadsTheFileAnew) {
    files.Put("a.bmp", GreyRow(3, 10), 1);
    const auto old = bitmaps.Load("a.bmp");
    files.Put("a.bmp", GreyRow(3, 20), 2);
    EXPECT_EQ(Grey(bitmaps.Load("a.bmp")), 20);
    EXPECT_EQ(Grey(old), 10) << "who holds the old picture keeps it";
    // Going back in time is a change as well.
    files.Put("a.bmp", GreyRow(3, 30), 1);
    EXPECT_EQ(Grey(bitmaps.Load("a.bmp")), 30);
    EXPECT_EQ(files.openCnt, 3);
}

TEST_F(BitmapFilesTest, AnotherSizeReadsTheFileAnew) {
    files.Put("a.bmp", GreyRow(3, 10), 1);
    bitmaps.Load("a.bmp");
    files.Put("a.bmp", GreyRow(9, 20), 1);
    EXPECT_EQ(Grey(bitmaps.Load("a.bmp")), 20);
}

TEST_F(BitmapFilesTest, AFileThatIsNoPictureIsNotReadAgainUntilItChanges) {
    files.Put("a.bmp", "no picture", 1);
    EXPECT_EQ(bitmaps.Load("a.bmp"), nullptr);
    EXPECT_EQ(bitmaps.Load("a.bmp"), nullptr);
    EXPECT_EQ(files.openCnt, 1);
    files.Put("a.bmp", GreyRow(3, 10), 2);
    EXPECT_EQ(Grey(bitmaps.Load("a.bmp")), 10);
}

TEST_F(BitmapFilesTest, AMissingFileIsNeverOpenedAndComesWhenItIsThere) {
    EXPECT_EQ(bitmaps.Load("a.bmp"), nullptr);
    EXPECT_EQ(bitmaps.Load("a.bmp"), nullptr);
    EXPECT_EQ(files.openCnt, 0);
    files.Put("a.bmp", GreyRow(3, 10));
    EXPECT_EQ(Grey(bitmaps.Load("a.bmp")), 10);
    files.files.clear();
    EXPECT_EQ(bitmaps.Load("a.bmp"), nullptr) << "and goes with its file";
    EXPECT_EQ(files.openCnt, 1);
}

TEST_F(BitmapFilesTest, AMissingFileIsLookedForAgainOnlyWhenItsFolderHasChanged) {
    files.files["images"].directory = true;
    for (int i = 0; i < 1000; ++i) EXPECT_EQ(bitmaps.Load("images/a.bmp"), nullptr);
    EXPECT_LE(files.factsCnt, 1002) << "the folder each time, the file itself once";
    files.Put("images/a.bmp", GreyRow(3, 10));
    EXPECT_EQ(bitmaps.Load("images/a.bmp"), nullptr);
    files.files["images"].changeTime_ns += 1;
    EXPECT_EQ(Grey(bitmaps.Load("images/a.bmp")), 10);
}

TEST_F(BitmapFilesTest, AMissingFolderIsWatchedFromTheOneAboveIt) {
    files.files["maps"].directory = true;
    EXPECT_EQ(bitmaps.Load("maps/new/a.bmp"), nullptr);
    files.files["maps/new"].directory = true;
    files.Put("maps/new/a.bmp", GreyRow(3, 10));
    files.files["maps"].changeTime_ns += 1;
    EXPECT_EQ(Grey(bitmaps.Load("maps/new/a.bmp")), 10);
}

TEST_F(BitmapFilesTest, AFolderIsNoPicture) {
    files.files["a.bmp"].directory = true;
    EXPECT_EQ(bitmaps.Load("a.bmp"), nullptr);
    EXPECT_EQ(bitmaps.Load(""), nullptr);
    EXPECT_EQ(files.openCnt, 0);
}

TEST_F(BitmapFilesTest, AFileThatDoesNotOpenIsTriedAgain) {
    files.Put("a.bmp", GreyRow(3, 10));
    files.files["a.bmp"].locked = true;
    EXPECT_EQ(bitmaps.Load("a.bmp"), nullptr);
    files.files["a.bmp"].locked = false;
    EXPECT_EQ(Grey(bitmaps.Load("a.bmp")), 10);
}

TEST_F(BitmapFilesTest, TheLeastRecentlyAskedForGoesWhenThereAreTooMany) {
    BitmapFiles three(files, {1 << 20, 3});
    for (const char* name : {"a", "b", "c", "d"}) files.Put(name, GreyRow(3, *name));
    for (const char* name : {"a", "b", "c", "a"}) EXPECT_EQ(Grey(three.Load(name)), *name);
    EXPECT_EQ(Grey(three.Load("d")), 'd');
    EXPECT_EQ(files.openCnt, 4);
    EXPECT_EQ(Grey(three.Load("a")), 'a');
    EXPECT_EQ(Grey(three.Load("c")), 'c');
    EXPECT_EQ(files.openCnt, 4) << "a and c are still there";
    EXPECT_EQ(Grey(three.Load("b")), 'b');
    EXPECT_EQ(files.openCnt, 5) << "b had gone";
}

TEST_F(BitmapFilesTest, FailuresTakeEntriesToo) {
    BitmapFiles two(files, {1 << 20, 2});
    for (const char* name : {"a", "b", "c"}) {
        files.Put(name, "no picture");
        two.Load(name);
    }
    two.Load("a");
    EXPECT_EQ(files.openCnt, 4);
}

TEST_F(BitmapFilesTest, TheLeastRecentlyAskedForGoesWhenTheyAreTooLarge) {
    BitmapFiles small(files, {100, 10});  // 25 pixels
    files.Put("a", GreyRow(10, 1));
    files.Put("b", GreyRow(10, 2));
    files.Put("c", GreyRow(5, 3));
    for (const char* name : {"a", "b", "c", "a", "b", "c"}) small.Load(name);
    EXPECT_EQ(files.openCnt, 3) << "25 pixels are kept";
    files.Put("d", GreyRow(1, 4));
    small.Load("d");
    EXPECT_EQ(files.openCnt, 4);
    small.Load("b");
    small.Load("c");
    EXPECT_EQ(files.openCnt, 4);
    small.Load("a");
    EXPECT_EQ(files.openCnt, 5) << "a had to go";
}

TEST_F(BitmapFilesTest, APictureAboveTheLimitIsKeptAsLongAsNoOtherIsAskedFor) {
    BitmapFiles small(files, {100, 10});
    files.Put("a", GreyRow(5, 1));
    files.Put("huge", GreyRow(26, 2));
    small.Load("a");
    for (int i = 0; i < 3; ++i) EXPECT_EQ(Grey(small.Load("huge")), 2);
    EXPECT_EQ(files.openCnt, 2);
    EXPECT_EQ(Grey(small.Load("a")), 1);
    EXPECT_EQ(files.openCnt, 3) << "a went for the sake of the large one";
    EXPECT_EQ(Grey(small.Load("huge")), 2);
    EXPECT_EQ(files.openCnt, 4) << "and the large one for a";
}

}  // namespace
}  // namespace orvane
