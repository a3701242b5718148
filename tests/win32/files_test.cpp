#include "platform/win32/win32_files.h"

#include <windows.h>
// windows.h comes before what follows
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace orvane {
namespace {

constexpr const char* kTokyo = "\x93\x8C\x8B\x9E.txt";  // in code page 932
constexpr const wchar_t* kWideTokyo = L"\x6771\x4EAC.txt";
constexpr const char* kBackslash = "\x95\x5C.txt";  // a character whose second byte looks like a backslash
constexpr const wchar_t* kWideBackslash = L"\x8868.txt";

class Win32FilesTest : public testing::Test {
protected:
    void SetUp() override {
        CreateDirectoryW(L"files_test", nullptr);
        SetCurrentDirectoryW(L"files_test");
    }
    void TearDown() override {
        WIN32_FIND_DATAW entry{};
        const HANDLE search = FindFirstFileW(L"*", &entry);
        do {
            SetFileAttributesW(entry.cFileName, FILE_ATTRIBUTE_NORMAL);
            DeleteFileW(entry.cFileName);
            RemoveDirectoryW(entry.cFileName);
        } while (FindNextFileW(search, &entry));
        FindClose(search);
        SetCurrentDirectoryW(L"..");
        RemoveDirectoryW(L"files_test");
    }

    static void Make(const wchar_t* name, const std::string& content = "x") {
        const HANDLE file = CreateFileW(name, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
        ASSERT_NE(file, INVALID_HANDLE_VALUE);
        DWORD written = 0;
        WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
        CloseHandle(file);
    }
    static bool CanOpen(const wchar_t* name, DWORD access) {
        const HANDLE file =
            CreateFileW(name, access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING, 0, nullptr);
        if (file == INVALID_HANDLE_VALUE) return false;
        CloseHandle(file);
        return true;
    }
    std::string All(std::string_view name) {
        const auto file = files.OpenRead(name);
        if (file == nullptr) return "(none)";
        std::string text(static_cast<std::size_t>(file->Size_bytes()), '\0');
        EXPECT_EQ(file->ReadAt(0, text.data(), text.size()), text.size());
        return text;
    }
    OpenError CauseOf(std::string_view name) {
        OpenError cause = OpenError::None;
        EXPECT_EQ(files.OpenRead(name, &cause), nullptr) << name;
        return cause;
    }

    Win32Files files;
};

TEST_F(Win32FilesTest, WhatWasWrittenIsReadAgain) {
    const auto out = files.Create("a.txt");
    ASSERT_NE(out, nullptr);
    EXPECT_TRUE(out->Write("map ", 4));
    EXPECT_TRUE(out->Write("data", 4));
    EXPECT_TRUE(out->Close());
    EXPECT_FALSE(out->Write("more", 4)) << "closed";
    EXPECT_FALSE(out->Close());
    OpenError cause = OpenError::Other;
    const auto in = files.OpenRead("a.txt", &cause);
    ASSERT_NE(in, nullptr);
    EXPECT_EQ(cause, OpenError::None);
    EXPECT_EQ(in->Size_bytes(), 8u);
    char part[8] = {};
    EXPECT_EQ(in->ReadAt(4, part, 8), 4u);
    EXPECT_EQ(std::string(part), "data");
    EXPECT_EQ(in->ReadAt(8, part, 1), 0u);
    EXPECT_EQ(in->ReadAt(UINT64_MAX, part, 1), 0u);
}

TEST_F(Win32FilesTest, CreatingAFileThatIsThereTruncatesIt) {
    Make(L"a.txt", "long content");
    files.Create("A.TXT")->Write("new", 3);
    EXPECT_EQ(All("a.txt"), "new");
}

TEST_F(Win32FilesTest, WhileAFileIsReadOthersMayReadItButNotWriteOrDeleteIt) {
    Make(L"a.txt");
    const auto held = files.OpenRead("a.txt");
    ASSERT_NE(held, nullptr);
    EXPECT_TRUE(CanOpen(L"a.txt", GENERIC_READ));
    EXPECT_NE(files.OpenRead("a.txt"), nullptr);
    EXPECT_FALSE(CanOpen(L"a.txt", GENERIC_WRITE));
    EXPECT_EQ(files.Create("a.txt"), nullptr);
    EXPECT_FALSE(DeleteFileW(L"a.txt"));
}

TEST_F(Win32FilesTest, AFileThatAnotherOneWritesCannotBeOpenedForACauseOtherThanMissing) {
    const auto writer = files.Create("a.txt");
    EXPECT_EQ(CauseOf("a.txt"), OpenError::Other);
    EXPECT_EQ(files.Create("a.txt"), nullptr);
}

TEST_F(Win32FilesTest, TheCauseOfAFailedOpenIsMissingOrOther) {
    EXPECT_EQ(CauseOf("none.txt"), OpenError::Missing);
    EXPECT_EQ(CauseOf("no folder\\none.txt"), OpenError::Missing);
    EXPECT_EQ(CauseOf(""), OpenError::Missing);
    EXPECT_EQ(CauseOf("a?b.txt"), OpenError::Missing) << "no file can have this name";
    EXPECT_EQ(CauseOf(std::string_view("a.txt\0b", 7)), OpenError::Missing);
    CreateDirectoryW(L"folder", nullptr);
    EXPECT_EQ(CauseOf("folder"), OpenError::Other);
    EXPECT_EQ(files.Create("folder"), nullptr);
    EXPECT_EQ(files.Create("no folder\\a.txt"), nullptr);
}

TEST_F(Win32FilesTest, ADeviceIsNoFile) {
    EXPECT_EQ(CauseOf("NUL"), OpenError::Other);
    EXPECT_EQ(files.Create("NUL"), nullptr);
}

TEST_F(Win32FilesTest, NamesAreCodePage932WhateverTheProcessHas) {
    Make(kWideTokyo, "1");
    Make(kWideBackslash, "2");
    EXPECT_EQ(All(kTokyo), "1");
    EXPECT_EQ(All(kBackslash), "2");
    files.Create("\x93\x8C.txt")->Write("3", 1);
    EXPECT_TRUE(CanOpen(L"\x6771.txt", GENERIC_READ));
    EXPECT_EQ(files.List(".", "*.txt"), (std::vector<std::string>{"\x93\x8C.txt", kTokyo, kBackslash}));
}

TEST_F(Win32FilesTest, ANameThatCodePage932CannotHoldIsToldAndTakenAsUtf8) {
    Make(L"\x00E9.txt", "accent");
    const std::vector<std::string> names = files.List(".", "*");
    ASSERT_EQ(names.size(), 1u);
    EXPECT_EQ(names[0], "\xC3\xA9.txt");
    EXPECT_EQ(All(names[0]), "accent");
}

TEST_F(Win32FilesTest, FactsTellSizeTimeAndKind) {
    Make(L"a.txt", "12345");
    const HANDLE file = CreateFileW(L"a.txt", FILE_WRITE_ATTRIBUTES, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    SYSTEMTIME when{};
    when.wYear = 2001, when.wMonth = 9, when.wDay = 9, when.wHour = 1, when.wMinute = 46, when.wSecond = 40;
    FILETIME time{};
    SystemTimeToFileTime(&when, &time);
    SetFileTime(file, nullptr, nullptr, &time);
    CloseHandle(file);
    FileFacts facts;
    ASSERT_TRUE(files.Facts("A.txt", facts));
    EXPECT_EQ(facts, (FileFacts{5, 1'000'000'000'000'000'000, false}));
    CreateDirectoryW(L"folder", nullptr);
    ASSERT_TRUE(files.Facts("folder", facts));
    EXPECT_TRUE(facts.directory);
    EXPECT_EQ(facts.size_bytes, 0u);
    EXPECT_FALSE(files.Facts("none", facts));
    EXPECT_TRUE(facts.directory) << "as it was";
}

TEST_F(Win32FilesTest, ListMatchesWholeNamesInAnyCaseSortedAndWithoutFolders) {
    Make(L"b.OVL");
    Make(L"a.ovl");
    Make(L"c.ovlx");  // the system's own patterns would take this one for *.ovl by its short name
    CreateDirectoryW(L"d.ovl", nullptr);
    EXPECT_EQ(files.List(".", "*.Ovl"), (std::vector<std::string>{"a.ovl", "b.OVL"}));
    EXPECT_EQ(files.List("..\\files_test\\", "?.ovl"), (std::vector<std::string>{"a.ovl", "b.OVL"}));
    EXPECT_TRUE(files.List("none", "*").empty());
    EXPECT_TRUE(files.List("", "*").empty());
}

TEST_F(Win32FilesTest, TheProcessHasTheCodePageThatTheDriverAskedFor) {
    wchar_t wanted[16] = L"";
    if (GetEnvironmentVariableW(L"ORVANE_ACP", wanted, 16) == 0) GTEST_SKIP() << "no code page was asked for";
    EXPECT_EQ(GetACP(), static_cast<UINT>(std::stoul(wanted)));
}

TEST_F(Win32FilesTest, ASiblingIsFoundInAnyCase) {
    Make(L"Map.OVL", "layers");
    Make(L"Map.OVI", "index");
    OpenError cause = OpenError::Other;
    EXPECT_NE(files.OpenSibling("map", ".ovl", ".ovi", &cause), nullptr);
    EXPECT_EQ(files.OpenSibling("map", ".ovl", ".ovb", &cause), nullptr);
    EXPECT_EQ(cause, OpenError::Missing);
}

}  // namespace
}  // namespace orvane
