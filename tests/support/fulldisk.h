// Fills drive D:, the small disk that tools/wine --disk gives to a test.
#pragma once

#include "lib/base/handles.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <array>

namespace test {

/// Leaves `room` bytes (a multiple of 4096) free on drive D: during its lifetime.
class FullDisk {
public:
    explicit FullDisk(LONG room = 0) {
        if (!isTestDisk()) {
            ADD_FAILURE() << "drive D: is not a small test disk; run this test with --disk";
            return;
        }
        filler_.reset(CreateFileA("D:\\filler", GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                  FILE_FLAG_DELETE_ON_CLOSE, nullptr));
        DWORD written = 1;
        while (written != 0 && WriteFile(filler_.get(), zeros.data(), zeros.size(), &written, nullptr)) {
        }
        EXPECT_EQ(GetLastError(), DWORD{ERROR_DISK_FULL});
        if (room == 0)
            return;
        EXPECT_NE(SetFilePointer(filler_.get(), -room, nullptr, FILE_END), INVALID_SET_FILE_POINTER);
        EXPECT_TRUE(SetEndOfFile(filler_.get()));
    }

private:
    static constexpr std::array<char, 65536> zeros{};
    static constexpr ULONGLONG largest = 4 << 20; ///< bytes; smaller than any real disk

    static bool isTestDisk() {
        ULARGE_INTEGER total{};
        return GetDiskFreeSpaceExA("D:\\", nullptr, &total, nullptr) && total.QuadPart <= largest;
    }

    base::FileHandle filler_;
};

} // namespace test
