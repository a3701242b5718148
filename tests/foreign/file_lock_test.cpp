#include "foreign/file_lock.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

namespace orvane {
namespace {

namespace fs = std::filesystem;

class FileLockTest : public ::testing::Test {
protected:
    FileLockTest() : folder_(fs::temp_directory_path() / ("orvane_lock_" + std::to_string(::getpid()))) {
        fs::remove_all(folder_);
        fs::create_directory(folder_);
    }
    ~FileLockTest() override { fs::remove_all(folder_); }
    std::string Path() const { return (folder_ / "lock").string(); }

    const fs::path folder_;
};

TEST_F(FileLockTest, OneHolderAtATimeAndNoFileBehindTheLast) {
    FileLock first;
    FileLock second;
    EXPECT_EQ(first.TakeFile(Path()), FileLock::Outcome::Taken);
    EXPECT_EQ(second.TakeFile(Path()), FileLock::Outcome::Busy);
    first.Release();
    EXPECT_FALSE(fs::exists(Path()));
    EXPECT_EQ(second.TakeFile(Path()), FileLock::Outcome::Taken);
    EXPECT_EQ(first.TakeFile(Path()), FileLock::Outcome::Busy);
}

TEST_F(FileLockTest, AKilledHolderLeavesAFileThatTheNextOneTakesOver) {
    const pid_t child = ::fork();
    if (child == 0) {
        FileLock lock;
        if (lock.TakeFile(Path()) == FileLock::Outcome::Taken) ::kill(::getpid(), SIGKILL);
        ::_exit(1);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_TRUE(fs::exists(Path()));
    FileLock lock;
    EXPECT_EQ(lock.TakeFile(Path()), FileLock::Outcome::Taken);
    lock.Release();
    EXPECT_FALSE(fs::exists(Path()));
}

TEST_F(FileLockTest, AFolderIsLockedAndStays) {
    FileLock first;
    FileLock second;
    EXPECT_EQ(first.TakeFolder(folder_.string()), FileLock::Outcome::Taken);
    EXPECT_EQ(second.TakeFolder(folder_.string()), FileLock::Outcome::Busy);
    first.Release();
    EXPECT_EQ(second.TakeFolder(folder_.string()), FileLock::Outcome::Taken);
    EXPECT_TRUE(fs::exists(folder_));
}

TEST_F(FileLockTest, WhereNothingCanBeLockedTheCauseIsTold) {
    FileLock lock;
    EXPECT_EQ(lock.TakeFile(Path() + "/none/lock"), FileLock::Outcome::Failed);
    EXPECT_EQ(lock.Cause(), std::errc::no_such_file_or_directory);
    fs::create_symlink(folder_ / "elsewhere", Path());
    EXPECT_EQ(lock.TakeFile(Path()), FileLock::Outcome::Failed);
    EXPECT_FALSE(fs::exists(folder_ / "elsewhere"));
}

/// What a process of a user without rights answers: the outcome, or 9 when it does not come to an end.
int AsNobody(const std::string& path, std::error_condition cause) {
    const pid_t child = ::fork();
    if (child == 0) {
        ::alarm(20);
        if (::setuid(65534) != 0) ::_exit(8);
        FileLock lock;
        const FileLock::Outcome outcome = lock.TakeFile(path);
        ::_exit(outcome == FileLock::Outcome::Failed && lock.Cause() == cause ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 9;
}

TEST_F(FileLockTest, APipeUnderTheNameIsNoLockAndNobodyWaitsForIt) {
    ASSERT_EQ(::mkfifo(Path().c_str(), 0755), 0);
    FileLock lock;
    EXPECT_EQ(lock.TakeFile(Path()), FileLock::Outcome::Failed);
    EXPECT_EQ(lock.Cause(), std::errc::file_exists);
    if (::geteuid() == 0) {
        EXPECT_EQ(AsNobody(Path(), std::errc::file_exists), 0);
    }
    EXPECT_TRUE(fs::exists(Path()));
}

TEST_F(FileLockTest, WhereNoFileCanBeMadeTheMissingRightIsTheCause) {
    if (::geteuid() != 0) GTEST_SKIP() << "needs to become another user";
    fs::permissions(folder_, fs::perms(0755));
    EXPECT_EQ(AsNobody(Path(), std::errc::permission_denied), 0);
}

}  // namespace
}  // namespace orvane
