#include "lib/base/files.h"
#include "lib/base/handles.h"
#include "scheduler/model/schedulecodec.h"
#include "scheduler/model/schedulefile.h"
#include "tests/support/allocations.h"
#include "tests/support/encodedschedule.h"
#include "tests/support/filecontent.h"
#include "tests/support/filledentry.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/temporaryfolder.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <io.h>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace {

using scheduler::loadSchedule;
using scheduler::saveSchedule;
using scheduler::ScheduledProject;
using scheduler::ScheduleList;
using scheduler::scheduleMagic;
using scheduler::schedulePath;
using test::fileContent;

bool windowsIsUnknown = false;
bool writingIsForbidden = false;

UINT WINAPI windowsDirectoryUnlessUnknown(LPSTR buffer, UINT size) {
    static const auto original =
        test::platformFunction<decltype(&GetWindowsDirectoryA)>("kernel32.dll", "GetWindowsDirectoryA");
    return windowsIsUnknown ? 0 : original(buffer, size);
}

int openUnlessForbidden(const char* path, int mode, ...) {
    static const auto original = test::platformFunction<decltype(&_open)>("msvcrt.dll", "_open");
    if (writingIsForbidden && (mode & (_O_WRONLY | _O_RDWR)) != 0) {
        errno = EACCES;
        return -1;
    }
    return original(path, mode, _S_IREAD | _S_IWRITE);
}

/// While this object exists, _open cannot open files for writing. Under Wine, a read-only attribute does not
/// stop an administrator.
class WritingForbidden {
public:
    WritingForbidden() { writingIsForbidden = true; }
    WritingForbidden(const WritingForbidden&) = delete;
    WritingForbidden& operator=(const WritingForbidden&) = delete;
    ~WritingForbidden() { writingIsForbidden = false; }
};

/// Renames the machine's own schedule during a test.
class ScheduleFileTest : public testing::Test {
protected:
    ScheduleFileTest() {
        MoveFileExA(schedulePath().c_str(), renamedPath().c_str(), MOVEFILE_REPLACE_EXISTING);
    }
    ~ScheduleFileTest() override {
        DeleteFileA(schedulePath().c_str());
        RemoveDirectoryA(schedulePath().c_str());
        MoveFileExA(renamedPath().c_str(), schedulePath().c_str(), 0);
    }

    static std::string renamedPath() { return schedulePath() + ".renamedPath"; }
    static bool write(const std::string& content) { return test::writeFile(schedulePath(), content); }
    static base::FileHandle open(DWORD access, DWORD sharing) {
        return base::FileHandle(
            CreateFileA(schedulePath().c_str(), access, sharing, nullptr, OPEN_EXISTING, 0, nullptr));
    }
    static std::string encoded(const std::vector<ScheduledProject>& entries) {
        const auto content = test::encodedSchedule(entries);
        return {reinterpret_cast<const char*>(content.data()), content.size()};
    }
    static std::vector<ScheduledProject> severalEntries() {
        std::vector<ScheduledProject> entries(3);
        entries[1] = test::filledEntry();
        entries[2].path = "what a text mode would change:\r\nb\nc\x1A";
        entries[2].minutes = 0x0A0D1A0A;
        return entries;
    }
    std::vector<ScheduledProject> entries() const { return {list.begin(), list.end()}; }

    ScheduleList list;
};

TEST_F(ScheduleFileTest, IsInTheWindowsDirectory) {
    std::array<char, MAX_PATH> directory{};
    ASSERT_NE(GetWindowsDirectoryA(directory.data(), static_cast<UINT>(directory.size())), 0u);
    EXPECT_EQ(schedulePath(), std::string(directory.data()) + "\\schedule.dat");
}

TEST_F(ScheduleFileTest, EveryFieldRoundTripsAndTheFileIsReleased) {
    for (const std::vector<ScheduledProject>& saved : {severalEntries(), {}}) {
        list.assign(saved);
        EXPECT_TRUE(saveSchedule(list)) << "the last load must release the file";
        EXPECT_EQ(fileContent(schedulePath()), encoded(saved));
        list.append({});
        EXPECT_TRUE(loadSchedule(list, scheduleMagic));
        EXPECT_TRUE(DeleteFileA(schedulePath().c_str()));
        EXPECT_EQ(entries(), saved) << "the entries must not refer to the file";
    }
}

TEST_F(ScheduleFileTest, SaveReplacesALongerFile) {
    ASSERT_TRUE(write(std::string(100'000, 'x')));
    list.append(test::filledEntry());
    EXPECT_TRUE(saveSchedule(list));
    EXPECT_EQ(fileContent(schedulePath()), encoded({test::filledEntry()}));
}

TEST_F(ScheduleFileTest, MissingFileLeavesTheScheduleUnchanged) {
    EXPECT_FALSE(loadSchedule(list, scheduleMagic));
    EXPECT_TRUE(list.empty());
    list.append({});
    EXPECT_FALSE(loadSchedule(list, scheduleMagic));
    EXPECT_EQ(list.size(), 1u);
    EXPECT_FALSE(base::fileExists(schedulePath())) << "a load must not create a file";
}

TEST_F(ScheduleFileTest, ShortForeignOrDamagedFileIsRejected) {
    const std::string whole = encoded(severalEntries());
    std::string foreign = whole;
    foreign[0] = '!';
    for (const std::string& content : {std::string(), foreign, whole.substr(0, whole.size() - 1)}) {
        ASSERT_TRUE(write(content));
        list.clear();
        EXPECT_FALSE(loadSchedule(list, scheduleMagic)) << content.size();
        EXPECT_TRUE(list.empty()) << content.size();
    }
    ASSERT_TRUE(write(foreign));
    EXPECT_TRUE(loadSchedule(list, 0)) << "0 accepts any magic";
    EXPECT_EQ(entries(), severalEntries());
    EXPECT_TRUE(saveSchedule(list)) << "the next save must overwrite the file";
    EXPECT_EQ(fileContent(schedulePath()), whole);
}

TEST_F(ScheduleFileTest, LoadsButDoesNotSaveWhenReadOnly) {
    const std::string content = encoded(severalEntries());
    ASSERT_TRUE(write(content));
    bool saved = true;
    {
        const WritingForbidden forbidden;
        EXPECT_TRUE(loadSchedule(list, scheduleMagic));
        EXPECT_EQ(entries(), severalEntries());
        list.clear();
        saved = saveSchedule(list);
    }
    EXPECT_FALSE(saved);
    EXPECT_EQ(fileContent(schedulePath()), content);
    EXPECT_TRUE(saveSchedule(list)) << "writing is allowed again";
    EXPECT_EQ(fileContent(schedulePath()), encoded({}));
}

TEST_F(ScheduleFileTest, LoadsButDoesNotSaveWhileAnotherProcessReadsIt) {
    const std::string content = encoded(severalEntries());
    ASSERT_TRUE(write(content));
    {
        const base::FileHandle reader = open(GENERIC_READ, FILE_SHARE_READ);
        ASSERT_TRUE(reader);
        EXPECT_TRUE(loadSchedule(list, scheduleMagic));
        EXPECT_EQ(entries(), severalEntries());
        list.clear();
        EXPECT_FALSE(saveSchedule(list));
        EXPECT_EQ(fileContent(schedulePath()), content);
    }
    EXPECT_TRUE(saveSchedule(list)) << "the other handle is closed";
}

TEST_F(ScheduleFileTest, NeitherLoadsNorSavesWhenThePathIsAFolder) {
    ASSERT_TRUE(CreateDirectoryA(schedulePath().c_str(), nullptr));
    list.append(test::filledEntry());
    EXPECT_FALSE(loadSchedule(list, scheduleMagic));
    EXPECT_FALSE(saveSchedule(list));
    EXPECT_EQ(entries(), std::vector{test::filledEntry()});
}

TEST_F(ScheduleFileTest, KeepsItsContentWhenASaveRunsOutOfMemory) {
    const std::string content = encoded(severalEntries());
    ASSERT_TRUE(write(content));
    list.append(test::filledEntry());
    bool saved = true;
    {
        const test::RefusedAllocations refused;
        saved = saveSchedule(list);
    }
    EXPECT_FALSE(saved);
    EXPECT_EQ(fileContent(schedulePath()), content);
}

TEST_F(ScheduleFileTest, SaveAllocatesOnlyOneBuffer) {
    list.assign(std::vector<ScheduledProject>(20'000, test::filledEntry()));
    const std::size_t before = test::allocatedBytes;
    EXPECT_TRUE(saveSchedule(list));
    const std::size_t taken = test::allocatedBytes - before;
    EXPECT_LT(taken, fileContent(schedulePath()).size() / 10);
}

TEST_F(ScheduleFileTest, NeitherLoadsNorSavesWithoutAWindowsDirectory) {
    const test::TemporaryFolder folder;
    const std::filesystem::path back = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    windowsIsUnknown = true;
    const bool saved = saveSchedule(list);
    EXPECT_EQ(fileContent("schedule.dat"), "") << "must not write to the current folder";
    std::ofstream("schedule.dat", std::ios::binary) << encoded(severalEntries());
    const bool loaded = loadSchedule(list, scheduleMagic);
    const std::string path = schedulePath();
    windowsIsUnknown = false;
    std::filesystem::current_path(back);

    EXPECT_FALSE(saved);
    EXPECT_FALSE(loaded);
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(path, "");
}

} // namespace

SCHEDULER_REPLACE_IMPORT(GetWindowsDirectoryA, "_GetWindowsDirectoryA@8", windowsDirectoryUnlessUnknown);
SCHEDULER_REPLACE_IMPORT(_open, "__open", openUnlessForbidden);
