// A disk without room: drive D:, which a test has to itself when it is listed with DISK.
#pragma once

#include "lib/base/handles.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <array>

namespace test {

/// As long as it lives nothing more has room on drive D: than so many bytes, in whole pages of 4096.
class FullDisk {
public:
    explicit FullDisk(LONG room = 0) {
        if (!isTheTests()) {
            ADD_FAILURE() << "drive D is none made for this test: nothing is written to it";
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
    static constexpr ULONGLONG largest = 4 << 20; ///< in bytes; nobody's own disk is as small

    static bool isTheTests() {
        ULARGE_INTEGER total{};
        return GetDiskFreeSpaceExA("D:\\", nullptr, &total, nullptr) && total.QuadPart <= largest;
    }

    base::FileHandle filler_;
};

} // namespace test
