// Copies and notifications when the schedule file is damaged or a save fails.

#include "lib/base/files.h"
#include "tests/scheduler/model/schedulefolder.h"
#include "tests/support/allocations.h"

#include <gmock/gmock.h>

namespace scheduler {
namespace {

using test::fileContent;
using testing::ElementsAre;
using testing::IsEmpty;

class SafetyCopies : public test::ScheduleFolder, protected ScheduleFileListener {
protected:
    void save(const std::string& name) {
        ScheduleList list;
        list.assign(test::entriesOf(name, 1));
        file_.save(list);
    }
    void load() {
        ScheduleList list;
        file_.load(list);
    }
    static std::string holding(const std::string& name) { return test::contentOf(name, 1); }
    static base::FileHandle hold(const std::string& path, DWORD sharing) {
        return base::FileHandle(
            CreateFileA(path.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING, 0, nullptr));
    }

    std::vector<std::string> unreadable_;
    std::vector<std::string> unsaved_;
    ScheduleFile file_{*this};

private:
    void onLoadFailed(const std::string& path) override { unreadable_.push_back(path); }
    void onSaveFailed(const std::string& path, const std::string& reason) override {
        unsaved_.push_back(path + ": " + reason);
    }
};

TEST_F(SafetyCopies, HoldTheOverwrittenSchedule) {
    put(dat(), holding("first"));
    load();
    save("second");
    EXPECT_EQ(fileContent(dat()), holding("second"));
    EXPECT_EQ(fileContent(bak()), holding("first"));
    save("third");
    EXPECT_EQ(fileContent(bak()), holding("second"));
    EXPECT_FALSE(base::fileExists(damaged()));
}

TEST_F(SafetyCopies, KeepADamagedFileAndTheLastGoodOne) {
    put(dat(), holding("cut").substr(0, 50));
    put(bak(), holding("good"));
    put(damaged(), holding("of an earlier year"));
    load();
    EXPECT_THAT(unreadable_, ElementsAre(dat()));
    EXPECT_EQ(fileContent(damaged()), holding("of an earlier year")) << "a load must not copy";
    save("first");
    EXPECT_EQ(fileContent(damaged()), holding("cut").substr(0, 50));
    EXPECT_EQ(fileContent(bak()), holding("good"));
    save("second");
    EXPECT_EQ(fileContent(damaged()), holding("cut").substr(0, 50));
    EXPECT_EQ(fileContent(bak()), holding("first"));
}

TEST_F(SafetyCopies, AreNotMadeOfAMissingFile) {
    load();
    save("first");
    EXPECT_THAT(unreadable_, IsEmpty());
    EXPECT_FALSE(base::fileExists(bak()));
    EXPECT_FALSE(base::fileExists(damaged()));
    save("second");
    EXPECT_EQ(fileContent(bak()), holding("first"));
}

TEST_F(SafetyCopies, AreNotMadeOfAFileThatWasNeverLoaded) {
    put(dat(), holding("another's"));
    save("first");
    EXPECT_FALSE(base::fileExists(bak()));
    EXPECT_FALSE(base::fileExists(damaged()));
}

TEST_F(SafetyCopies, AreNotReplacedByAnEmptySchedule) {
    put(dat(), holding("first"));
    load();
    file_.save({});
    file_.save({});
    EXPECT_EQ(fileContent(bak()), holding("first"));
    save("second");
    EXPECT_EQ(fileContent(bak()), holding("first"));
}

TEST_F(SafetyCopies, SurviveDamageFollowedByLogOffAndRestart) {
    const std::string whole = holding("good");
    for (const std::string& damagedContent : {std::string(), whole.substr(0, 4), whole.substr(0, 50)}) {
        for (const bool damagedCanBeKept : {true, false}) {
            if (!damagedCanBeKept) {
                ASSERT_TRUE(CreateDirectoryA(damaged().c_str(), nullptr));
            }
            put(dat(), damagedContent);
            put(bak(), whole);
            for (int start = 0; start < 2; ++start) {
                ScheduleFile file(*this);
                ScheduleList list;
                file.load(list);
                file.save(list);
                file.save(list);
            }
            EXPECT_EQ(fileContent(bak()), whole) << damagedContent.size() << damagedCanBeKept;
            RemoveDirectoryA(damaged().c_str());
            DeleteFileA(damaged().c_str());
        }
    }
}

TEST_F(SafetyCopies, DoNotStopTheSaveWhenTheyFail) {
    put(dat(), holding("first"));
    load();
    ASSERT_TRUE(CreateDirectoryA(bak().c_str(), nullptr));
    save("second");
    EXPECT_EQ(fileContent(dat()), holding("second"));
    ASSERT_TRUE(RemoveDirectoryA(bak().c_str()));
    save("third");
    EXPECT_EQ(fileContent(bak()), holding("second"));
    {
        const base::FileHandle other = hold(bak(), 0);
        ASSERT_TRUE(other);
        save("fourth");
    }
    EXPECT_EQ(fileContent(dat()), holding("fourth"));
    EXPECT_EQ(fileContent(bak()), holding("second")) << "the last copy must be complete";
    EXPECT_THAT(unsaved_, IsEmpty());
}

TEST_F(SafetyCopies, AreWritableEvenIfTheFileIsReadOnly) {
    put(dat(), holding("first"));
    load();
    ASSERT_TRUE(SetFileAttributesA(dat().c_str(), FILE_ATTRIBUTE_READONLY));
    save("second");
    EXPECT_EQ(fileContent(bak()), holding("first"));
    EXPECT_EQ(GetFileAttributesA(bak().c_str()) & FILE_ATTRIBUTE_READONLY, 0U);
    SetFileAttributesA(dat().c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(SafetyCopies, AreMadeLaterIfTheFileCouldNotBeOpened) {
    put(dat(), holding("first"));
    load();
    {
        const base::FileHandle other = hold(dat(), 0);
        ASSERT_TRUE(other);
        save("refused");
    }
    EXPECT_FALSE(base::fileExists(bak()));
    save("second");
    EXPECT_EQ(fileContent(bak()), holding("first"));
    {
        const base::FileHandle other = hold(dat(), FILE_SHARE_READ);
        ASSERT_TRUE(other);
        save("refused");
        EXPECT_EQ(fileContent(bak()), holding("second"));
    }
    save("third");
    EXPECT_EQ(fileContent(dat()), holding("third"));
    EXPECT_EQ(fileContent(bak()), holding("second"));
}

std::string sharingViolation() {
    char text[200] = {};
    FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM, nullptr, ERROR_SHARING_VIOLATION, 0, text, sizeof text,
                   nullptr);
    return std::string(text).substr(0, std::string(text).find_last_not_of(".\r\n") + 1);
}

TEST_F(SafetyCopies, FirstOfConsecutiveSaveFailuresIsReported) {
    put(dat(), holding("first"));
    load();
    const std::string expected = dat() + ": " + sharingViolation();
    for (int series = 0; series < 2; ++series) {
        unsaved_.clear();
        base::FileHandle other = hold(dat(), FILE_SHARE_READ);
        save("second");
        EXPECT_THAT(unsaved_, ElementsAre(expected));
        save("third");
        EXPECT_THAT(unsaved_, ElementsAre(expected));
        other.reset();
        save("fourth");
        EXPECT_THAT(unsaved_, ElementsAre(expected));
    }
}

TEST_F(SafetyCopies, FailureUnreportedForLackOfMemoryIsReportedNextTime) {
    put(dat(), holding("first"));
    load();
    ScheduleList list;
    list.assign(test::entriesOf("second", 1));
    {
        const test::RefusedAllocations refused;
        file_.save(list);
    }
    EXPECT_THAT(unsaved_, IsEmpty());
    EXPECT_EQ(fileContent(dat()), holding("first"));
    const base::FileHandle other = hold(dat(), FILE_SHARE_READ);
    file_.save(list);
    EXPECT_EQ(unsaved_.size(), 1U);
}

} // namespace
} // namespace scheduler
