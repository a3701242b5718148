#include "hosts/common/write_watch.h"

#include <gtest/gtest.h>

#include "tests/support/writable_files.h"

namespace orvane {
namespace {

TEST(WriteWatch, TheListenerHearsAllThatIsWrittenAndItsNoMakesTheWriteFail) {
    WritableFiles disk;
    std::string heard;
    bool may = true;
    WriteWatch files(disk, [&](std::string_view bytes) {
        heard += bytes;
        return may;
    });
    const std::unique_ptr<OutputFile> file = files.Create("map.txt");
    ASSERT_NE(file, nullptr);
    EXPECT_TRUE(file->Write("one ", 4));
    EXPECT_TRUE(file->Write("two", 3));
    may = false;
    EXPECT_FALSE(file->Write("three", 5));
    EXPECT_TRUE(file->Close());
    EXPECT_EQ(heard, "one twothree");
    EXPECT_EQ(disk.Content("map.txt"), "one two");
    EXPECT_EQ(files.Failure(), "") << "it was told so";
}

}  // namespace
}  // namespace orvane
