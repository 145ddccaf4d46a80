// A schedule that has no room on its disk.

#include "scheduler/model/schedulecodec.h"
#include "scheduler/model/schedulefile.h"
#include "tests/support/encodedschedule.h"
#include "tests/support/filecontent.h"
#include "tests/support/filledentry.h"
#include "tests/support/fulldisk.h"
#include "tests/support/handlecount.h"
#include "tests/support/windowsondiskd.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace scheduler {
namespace {

using test::fileContent;
using test::FullDisk;
using test::handleCount;

class FullDiskTest : public testing::Test {
protected:
    static std::string encoded(const ScheduleList& list) {
        const auto content = test::encodedSchedule(list.entries());
        return {reinterpret_cast<const char*>(content.data()), content.size()};
    }
    static ScheduleList& filled(ScheduleList& list, std::size_t count) {
        list.assign(std::vector<ScheduledProject>(count, test::filledEntry()));
        return list;
    }

    void TearDown() override { EXPECT_TRUE(DeleteFileA(schedulePath().c_str())) << "nobody has it open"; }
};

TEST_F(FullDiskTest, EvenTheSmallestScheduleIsNotSaved) {
    for (const std::size_t count : {0U, 1U, 10U}) {
        ScheduleList list;
        filled(list, count);
        {
            const FullDisk full;
            const unsigned handles = handleCount();
            EXPECT_FALSE(saveSchedule(list)) << count;
            EXPECT_EQ(handleCount(), handles);
        }
        EXPECT_EQ(list.size(), count);
        EXPECT_TRUE(saveSchedule(list)) << "there is room again";
        EXPECT_EQ(fileContent(schedulePath()), encoded(list));
        ASSERT_TRUE(DeleteFileA(schedulePath().c_str()));
    }
    ScheduleList none;
    EXPECT_TRUE(saveSchedule(none));
}

TEST_F(FullDiskTest, ALargeOneIsLeftAsFarAsItHadRoom) {
    ScheduleList list;
    filled(list, 2000);
    const std::string whole = encoded(list);
    constexpr LONG room = 160 * 1024; // a piece of 128 KB and a part of the next
    ASSERT_GT(whole.size(), std::size_t{room});
    ScheduleList before;
    ASSERT_TRUE(saveSchedule(filled(before, 1)));
    {
        const FullDisk full(room);
        const unsigned handles = handleCount();
        EXPECT_FALSE(saveSchedule(list));
        EXPECT_EQ(handleCount(), handles);
        const std::string part = fileContent(schedulePath());
        EXPECT_GE(part.size(), 128U * 1024);
        EXPECT_TRUE(whole.starts_with(part));
        EXPECT_FALSE(loadSchedule(before, scheduleMagic)) << "it is damaged";
        EXPECT_TRUE(before.empty());
        EXPECT_FALSE(saveSchedule(list)) << "still not";
    }
    EXPECT_TRUE(saveSchedule(list)) << "there is room again";
    EXPECT_EQ(fileContent(schedulePath()), whole);
}

class Failures : public ScheduleFileListener {
public:
    std::vector<std::string> told;

private:
    void onLoadFailed(const std::string&) override {}
    void onSaveFailed(const std::string& path, const std::string&) override { told.push_back(path); }
};

TEST_F(FullDiskTest, TheCopyIsWholeWhenTheSaveIsNot) {
    Failures failures;
    ScheduleFile file(failures);
    ScheduleList list;
    file.save(filled(list, 1));
    const std::string before = encoded(list);
    {
        const FullDisk full(160 * 1024);
        file.save(filled(list, 2000));
        EXPECT_EQ(failures.told, std::vector{schedulePath()});
        EXPECT_LT(fileContent(schedulePath()).size(), encoded(list).size());
        EXPECT_EQ(fileContent("D:\\schedule.bak"), before);
        file.save(list);
        EXPECT_EQ(fileContent("D:\\schedule.bak"), before);
    }
    file.save(list);
    EXPECT_EQ(fileContent(schedulePath()), encoded(list));
    file.save(filled(list, 1));
    EXPECT_EQ(fileContent(schedulePath()), before);
    EXPECT_EQ(failures.told.size(), 1U);
    EXPECT_TRUE(DeleteFileA("D:\\schedule.bak"));
}

TEST_F(FullDiskTest, ACopyWithoutRoomDoesNotStopTheSave) {
    Failures failures;
    ScheduleFile file(failures);
    ScheduleList list;
    file.save(filled(list, 10));
    {
        const FullDisk full;
        file.save(filled(list, 5)); // has the room of the file that it replaces
        EXPECT_EQ(fileContent(schedulePath()), encoded(list));
        EXPECT_TRUE(failures.told.empty());
        file.save(filled(list, 2000));
        EXPECT_EQ(failures.told.size(), 1U);
    }
    file.save(list);
    EXPECT_EQ(fileContent("D:\\schedule.bak"), "") << "a cut file is not copied";
    file.save({});
    EXPECT_EQ(fileContent("D:\\schedule.bak"), encoded(list));
    EXPECT_TRUE(DeleteFileA("D:\\schedule.bak"));
}

} // namespace
} // namespace scheduler
