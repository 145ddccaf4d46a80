#pragma once

#include "scheduler/model/schedulefile.h"
#include "tests/scheduler/model/namedschedule.h"
#include "tests/support/filecontent.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

namespace test {

/// Deletes the schedule file and its copies before and after each test.
class ScheduleFolder : public testing::Test {
protected:
    ScheduleFolder() { clear(); }
    ~ScheduleFolder() override { clear(); }

    static std::string dat() { return with("dat"); }
    static std::string bak() { return with("bak"); }
    static std::string damaged() { return with("damaged"); }
    static void put(const std::string& path, const std::string& content) {
        ASSERT_TRUE(writeFile(path, content)) << path;
    }
    static void clear() {
        for (const std::string& path : {dat(), bak(), damaged()}) {
            DeleteFileA(path.c_str());
            RemoveDirectoryA(path.c_str());
        }
    }

private:
    static std::string with(const std::string& extension) {
        const std::string path = scheduler::schedulePath();
        return path.substr(0, path.size() - 3) + extension;
    }
};

} // namespace test
