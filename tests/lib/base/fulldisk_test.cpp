// What is written to a disk that has no room for it: the answer is a failure however little it is, no handle
// is lost, and another attempt succeeds once there is room.

#include "lib/base/files.h"
#include "tests/lib/base/filebytes.h"
#include "tests/support/filecontent.h"
#include "tests/support/fulldisk.h"
#include "tests/support/handlecount.h"

#include <gtest/gtest.h>

#include <string>

namespace base {
namespace {

using test::bytesOf;
using test::FullDisk;
using test::handleCount;
using test::writeWhole;

const std::string path = "D:\\file";

class FullDiskTest : public testing::Test {
protected:
    void TearDown() override { EXPECT_TRUE(DeleteFileA(path.c_str())) << "nobody has it open"; }
};

TEST_F(FullDiskTest, ItsSizeIsThatOfTheTest) {
    const FullDisk full;
    ASSERT_TRUE(WrittenFile(path).close()) << "a name needs no room";
    ULARGE_INTEGER total{};
    ASSERT_TRUE(GetDiskFreeSpaceExA("D:\\", nullptr, &total, nullptr));
    EXPECT_LE(total.QuadPart, 1U << 20) << "it is not a real disk that is filled here";
}

TEST_F(FullDiskTest, NothingCanBeWrittenHoweverLittle) {
    for (const std::size_t size : {1U, 4095U, 4096U, 4097U, 100'000U}) {
        SCOPED_TRACE(size);
        const std::string content(size, 'x');
        {
            const FullDisk full;
            const unsigned handles = handleCount();
            EXPECT_FALSE(writeWhole(path, content));
            EXPECT_EQ(handleCount(), handles);
            EXPECT_EQ(test::fileContent(path), "");
        }
        EXPECT_TRUE(writeWhole(path, content)) << "there is room again";
        EXPECT_EQ(test::fileContent(path), content);
        ASSERT_TRUE(writeWhole(path, ""));
    }
}

TEST_F(FullDiskTest, WhatHasRoomStays) {
    const std::string content(100'000, 'x');
    const FullDisk full(8 * 4096);
    WrittenFile file(path);
    EXPECT_TRUE(file.write(bytesOf(std::string(5000, 'a'))));
    EXPECT_FALSE(file.write(bytesOf(content)));
    file.close();
    EXPECT_TRUE(test::fileContent(path).starts_with(std::string(5000, 'a') + 'x'));
    EXPECT_LE(test::fileContent(path).size(), 8U * 4096);
}

TEST_F(FullDiskTest, TheCloseTellsWhenItIsTheCloseThatFindsNoRoom) {
    const FullDisk full;
    const unsigned handles = handleCount();
    WrittenFile file(path);
    EXPECT_TRUE(file.write(bytesOf("a few bytes, kept back"))) << "until the close";
    EXPECT_FALSE(file.close());
    EXPECT_EQ(handleCount(), handles);
    EXPECT_FALSE(file.close()) << "once more does no harm";
}

TEST_F(FullDiskTest, TheCloseTellsWhenTheFileItselfCannotBeClosed) {
    const int descriptor = test::nextDescriptor();
    WrittenFile file(path);
    ASSERT_TRUE(CloseHandle(test::handleOf(descriptor)));
    EXPECT_FALSE(file.close());
}

} // namespace
} // namespace base
