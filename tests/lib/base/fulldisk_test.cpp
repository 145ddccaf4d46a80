#include "lib/base/files.h"
#include "tests/lib/base/filebytes.h"
#include "tests/support/filecontent.h"
#include "tests/support/fulldisk.h"
#include "tests/support/handlecount.h"

#include <gtest/gtest.h>

#include <string>

namespace base {
namespace {

using namespace test;

const std::string path = "D:\\file";

class FullDiskWrites : public testing::Test {
protected:
    void TearDown() override { EXPECT_TRUE(test::isFree(path)); }
};

TEST_F(FullDiskWrites, FailAtAnySizeUntilSpaceIsFreed) {
    for (const std::size_t size : {1U, 4095U, 4096U, 4097U, 100'000U}) {
        SCOPED_TRACE(size);
        const std::string content(size, 'x');
        {
            const FullDisk full;
            const unsigned handles = handleCount();
            OutputFile file(path);
            EXPECT_EQ(file.write(bytesOf(content)), size < 4096) << "small writes stay in the stream buffer";
            EXPECT_FALSE(file.close());
            EXPECT_EQ(file.error(), DWORD{ERROR_DISK_FULL});
            EXPECT_EQ(handleCount(), handles);
            EXPECT_FALSE(file.close());
            EXPECT_EQ(fileContent(path), "");
        }
        EXPECT_TRUE(writeWhole(path, content));
        EXPECT_EQ(fileContent(path), content);
        ASSERT_TRUE(writeWhole(path, ""));
    }
}

TEST_F(FullDiskWrites, KeepThePartThatFitted) {
    const FullDisk full(8 * 4096);
    OutputFile file(path);
    EXPECT_TRUE(file.write(bytesOf(std::string(5000, 'a'))));
    EXPECT_FALSE(file.write(bytesOf(std::string(100'000, 'x'))));
    EXPECT_EQ(file.error(), DWORD{ERROR_DISK_FULL});
    file.close();
    EXPECT_TRUE(fileContent(path).starts_with(std::string(5000, 'a') + 'x'));
    EXPECT_LE(fileContent(path).size(), 8U * 4096);
}

TEST_F(FullDiskWrites, LeaveTheTargetOfAFailedCopyUnchanged) {
    const std::string source = "D:\\source";
    const std::string last(5000, 'a');
    ASSERT_TRUE(test::writeFile(path, last));
    ASSERT_TRUE(test::writeFile(source, std::string(20'000, 'x')));
    for (const LONG room : {0, 4096}) {
        const FullDisk full(room);
        EXPECT_FALSE(copyOver(source, path));
        EXPECT_EQ(fileContent(path), last);
    }
    ASSERT_TRUE(test::writeFile(source, std::string(5000, 'x')));
    const FullDisk full;
    EXPECT_TRUE(copyOver(source, path)) << "needs no more space";
    EXPECT_EQ(fileContent(path), std::string(5000, 'x'));
    EXPECT_TRUE(test::isFree(source));
}

} // namespace
} // namespace base
