// Where links lead to, whether something is there or not.
#include "hosts/common/follow_links.h"

#include "tests/common/archive_save_fixture.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;

class FollowLinksTest : public ArchiveSaveTest {
protected:
    FollowLinksTest() {
        fs::create_directory(Path("real"));
        std::ofstream(Path("real/a.txt")) << "a";
    }
    std::string Real(const char* name) const { return (fs::canonical(Path("real")) / name).string(); }
};

TEST_F(FollowLinksTest, AFileIsWhereItIs) {
    EXPECT_EQ(FollowLinks(Path("real/a.txt")), Real("a.txt"));
    EXPECT_EQ(FollowLinks(Path("real/not_there.txt")), Real("not_there.txt"));
}

TEST_F(FollowLinksTest, AChainOfLinksIsFollowedToItsEnd) {
    fs::create_symlink(fs::path("real") / "a.txt", Path("b.txt"));
    fs::create_symlink(Path("b.txt"), Path("c.txt"));
    EXPECT_EQ(FollowLinks(Path("c.txt")), Real("a.txt"));
}

TEST_F(FollowLinksTest, ALinkWhoseFileIsNotThereLeadsToWhereItWouldBe) {
    fs::create_symlink(fs::path("real") / "later.txt", Path("b.txt"));
    EXPECT_EQ(FollowLinks(Path("b.txt")), Real("later.txt"));
}

TEST_F(FollowLinksTest, AFolderIsToldWithoutItsLinks) {
    fs::create_directory_symlink("real", Path("way"));
    EXPECT_EQ(FollowLinks(Path("way/a.txt")), Real("a.txt"));
}

TEST_F(FollowLinksTest, LinksInACircleLeadNowhere) {
    fs::create_symlink("c.txt", Path("b.txt"));
    fs::create_symlink("b.txt", Path("c.txt"));
    EXPECT_EQ(FollowLinks(Path("b.txt")), std::nullopt);
}

}  // namespace
}  // namespace orvane
