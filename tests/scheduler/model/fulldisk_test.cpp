#include "scheduler/model/schedulefile.h"
#include "tests/support/encodedschedule.h"
#include "tests/support/filecontent.h"
#include "tests/support/filledentry.h"
#include "tests/support/fulldisk.h"
#include "tests/support/handlecount.h"
#include "tests/support/importedfunctions.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

UINT WINAPI windowsOnDiskD(LPSTR buffer, UINT) {
    std::strcpy(buffer, "D:\\");
    return 3;
}

} // namespace

SCHEDULER_REPLACE_IMPORT(GetWindowsDirectoryA, "_GetWindowsDirectoryA@8", windowsOnDiskD);

namespace scheduler {
namespace {

using test::fileContent;
using test::FullDisk;

class FullDiskSaves : public testing::Test {
protected:
    static std::string encoded(const ScheduleList& list) {
        const auto content = test::encodedSchedule(list.entries());
        return {reinterpret_cast<const char*>(content.data()), content.size()};
    }
    static ScheduleList& filled(ScheduleList& list, std::size_t count) {
        list.assign(std::vector<ScheduledProject>(count, test::filledEntry()));
        return list;
    }

    void TearDown() override { EXPECT_TRUE(DeleteFileA(schedulePath().c_str())) << "the file is still open"; }
};

TEST_F(FullDiskSaves, FailAtAnySize) {
    for (const std::size_t count : {0U, 1U, 10U}) {
        ScheduleList list;
        filled(list, count);
        {
            const FullDisk full;
            const unsigned handles = test::handleCount();
            EXPECT_FALSE(saveSchedule(list)) << count;
            EXPECT_EQ(test::handleCount(), handles);
        }
        EXPECT_TRUE(saveSchedule(list)) << "space is available again";
        EXPECT_EQ(fileContent(schedulePath()), encoded(list));
        ASSERT_TRUE(count == 10 || DeleteFileA(schedulePath().c_str()));
    }
}

class Failures : public ScheduleFileListener {
public:
    std::vector<std::string> paths;

private:
    void onLoadFailed(const std::string&) override {}
    void onSaveFailed(const std::string& path, const std::string&) override { paths.push_back(path); }
};

TEST_F(FullDiskSaves, FailedSaveLeavesACompleteCopy) {
    Failures failures;
    ScheduleFile file(failures);
    ScheduleList list;
    file.save(filled(list, 1));
    const std::string before = encoded(list);
    {
        const FullDisk full(160 * 1024);
        file.save(filled(list, 2000));
        EXPECT_EQ(failures.paths, std::vector{schedulePath()});
        EXPECT_LT(fileContent(schedulePath()).size(), encoded(list).size());
        EXPECT_EQ(fileContent("D:\\schedule.bak"), before);
        file.save(list);
        EXPECT_EQ(fileContent("D:\\schedule.bak"), before);
    }
    file.save(list);
    EXPECT_EQ(fileContent(schedulePath()), encoded(list));
    file.save(filled(list, 1));
    EXPECT_EQ(fileContent(schedulePath()), before);
    EXPECT_EQ(failures.paths.size(), 1U);
    EXPECT_TRUE(DeleteFileA("D:\\schedule.bak"));
}

TEST_F(FullDiskSaves, SaveContinuesWhenTheCopyHasNoRoom) {
    Failures failures;
    ScheduleFile file(failures);
    ScheduleList list;
    file.save(filled(list, 10));
    {
        const FullDisk full;
        file.save(filled(list, 5)); // fits in the space of the replaced file
        EXPECT_EQ(fileContent(schedulePath()), encoded(list));
        EXPECT_TRUE(failures.paths.empty());
        file.save(filled(list, 2000));
        EXPECT_EQ(failures.paths.size(), 1U);
    }
    file.save(list);
    EXPECT_EQ(fileContent("D:\\schedule.bak"), "") << "a truncated file must not be copied";
    file.save({});
    EXPECT_EQ(fileContent("D:\\schedule.bak"), encoded(list));
    EXPECT_TRUE(DeleteFileA("D:\\schedule.bak"));
}

} // namespace
} // namespace scheduler
