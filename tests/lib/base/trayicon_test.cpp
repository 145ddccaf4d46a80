#include "lib/base/trayicon.h"
#include "tests/support/allocations.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/timeout.h"

#include <windows.h>

#include <shellapi.h>

#include <gmock/gmock.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

SCHEDULER_STAND_IN("shell32.dll", Shell_NotifyIconA, "_Shell_NotifyIconA@8");
SCHEDULER_STAND_IN("user32.dll", LoadImageA, "_LoadImageA@24");

namespace base {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct ShellCall {
    DWORD message;
    NOTIFYICONDATAA record;
};
std::vector<ShellCall> shellCalls;
std::vector<std::uintptr_t> loadedIcons; ///< resource ids

constexpr std::uint16_t firstIcon = 101;
constexpr std::uint16_t secondIcon = 102;
constexpr std::uint16_t keptIcon = 103;
constexpr std::uint16_t noIcon = 999;

class TrayIcon : public testing::Test {
protected:
    TrayIcon() {
        // The notification area exists once the shell's window does.
        for (unsigned waited = 0; waited < test::timeout && !FindWindowA("Shell_TrayWnd", nullptr);
             waited += 20)
            Sleep(20);
        shellCalls.clear();
        loadedIcons.clear();
    }
    ~TrayIcon() override { DestroyWindow(window_); }

    /// Exit handlers run in reverse order. The cache registers its handler between the two below.
    static void SetUpTestSuite() {
        platform::Shell_NotifyIconA.onCall = [](DWORD message, NOTIFYICONDATAA* record) {
            shellCalls.push_back({message, *record});
        };
        platform::LoadImageA.onCall = [](HINSTANCE module, LPCSTR name, UINT type, int width, int height,
                                         UINT flags) {
            EXPECT_EQ(module, GetModuleHandleA(nullptr));
            EXPECT_EQ(type, UINT{IMAGE_ICON});
            EXPECT_TRUE(width == 16 && height == 16 && flags == 0);
            loadedIcons.push_back(reinterpret_cast<std::uintptr_t>(name));
        };
        std::atexit([] {
            if (heldWithCache_ == test::heldBlocks() + 3)
                return;
            std::fprintf(stderr, "The cache of three icons was not emptied at exit.\n");
            std::_Exit(1);
        });
        for (const std::uint16_t icon : {firstIcon, secondIcon, keptIcon})
            modifyTrayIcon(GetDesktopWindow(), icon, "tip");
        std::atexit([] { heldWithCache_ = test::heldBlocks(); });
        EXPECT_THAT(loadedIcons, ElementsAre(firstIcon, secondIcon, keptIcon));
    }

    static inline std::size_t heldWithCache_ = 0;
    const HWND window_ =
        CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
};

/// Uses the oldest version of the structure, 88 bytes.
NOTIFYICONDATAA emptyRecord(HWND window) {
    NOTIFYICONDATAA record;
    std::memset(&record, 0, sizeof record);
    record.cbSize = 88;
    record.hWnd = window;
    return record;
}

void expectSame(const NOTIFYICONDATAA& record, const NOTIFYICONDATAA& expected) {
    EXPECT_EQ(std::memcmp(&record, &expected, sizeof record), 0)
        << record.cbSize << ' ' << record.uFlags << ' ' << record.uCallbackMessage << ' ' << record.szTip;
}

TEST_F(TrayIcon, TipIsTruncatedTo63Characters) {
    for (const std::size_t length : {0U, 62U, 63U, 64U, 128U, 5000U}) {
        std::string tip;
        for (std::size_t i = 0; i < length; ++i)
            tip += static_cast<char>('a' + i % 26);
        NOTIFYICONDATAA expected = emptyRecord(nullptr);
        expected.uFlags = NIF_TIP;
        tip.substr(0, 63).copy(expected.szTip, 63);
        expectSame(detail::trayIconRecord(nullptr, NIF_TIP, nullptr, tip), expected);
    }
}

TEST_F(TrayIcon, ExistsFromAddingToRemoval) {
    EXPECT_FALSE(modifyTrayIcon(window_, firstIcon, "tip"));
    EXPECT_FALSE(removeTrayIcon(window_));
    EXPECT_TRUE(addTrayIcon(window_, firstIcon, std::string(200, 't')));
    EXPECT_FALSE(addTrayIcon(window_, firstIcon, "tip")) << "one icon per window";
    EXPECT_TRUE(modifyTrayIcon(window_, secondIcon, "other tip"));
    EXPECT_FALSE(modifyTrayIcon(window_, noIcon, "tip"));
    EXPECT_TRUE(removeTrayIcon(window_));
    EXPECT_FALSE(removeTrayIcon(window_));
}

TEST_F(TrayIcon, ShellReceivesMessageIconAndTip) {
    addTrayIcon(window_, firstIcon, "tip");
    modifyTrayIcon(window_, secondIcon, "other tip");
    removeTrayIcon(window_);
    ASSERT_EQ(shellCalls.size(), 3U);
    const struct {
        DWORD message;
        UINT flags, callback;
        const char* tip;
    } expected[] = {{NIM_ADD, 7, 0x8064, "tip"}, {NIM_MODIFY, 6, 0, "other tip"}, {NIM_DELETE, 0, 0, ""}};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(shellCalls[i].message, expected[i].message);
        NOTIFYICONDATAA record = emptyRecord(window_);
        record.uFlags = expected[i].flags;
        record.uCallbackMessage = expected[i].callback;
        record.hIcon = i < 2 ? shellCalls[i].record.hIcon : nullptr;
        std::strcpy(record.szTip, expected[i].tip);
        expectSame(shellCalls[i].record, record);
    }
    EXPECT_NE(shellCalls[0].record.hIcon, shellCalls[1].record.hIcon);
}

TEST_F(TrayIcon, BalloonShowsAWarningAndKeepsIconAndTip) {
    EXPECT_FALSE(showTrayBalloon(window_, "title", "text")) << "the window has no icon";
    addTrayIcon(window_, firstIcon, "tip");
    shellCalls.clear();
    EXPECT_TRUE(showTrayBalloon(window_, "title", "text"));
    ASSERT_EQ(shellCalls.size(), 1U);
    EXPECT_EQ(shellCalls[0].message, DWORD{NIM_MODIFY});
    NOTIFYICONDATAA shown = emptyRecord(window_);
    shown.cbSize = 488;
    shown.uFlags = 16;
    shown.dwInfoFlags = 2;
    std::strcpy(shown.szInfoTitle, "title");
    std::strcpy(shown.szInfo, "text");
    expectSame(shellCalls[0].record, shown);
    removeTrayIcon(window_);
}

TEST_F(TrayIcon, BalloonIsTruncatedTo63And255Characters) {
    for (const std::size_t length : {255U, 256U, 5000U}) {
        showTrayBalloon(window_, std::string(length, 't'), std::string(length, 'x'));
        EXPECT_EQ(shellCalls.back().record.szInfoTitle, std::string(63, 't'));
        EXPECT_EQ(shellCalls.back().record.szInfo,
                  length == 255 ? std::string(255, 'x') : std::string(252, 'x') + "...");
    }
}

TEST_F(TrayIcon, MissingWindowOrIconFailsWithoutCallingTheShell) {
    EXPECT_FALSE(addTrayIcon(nullptr, firstIcon, "tip"));
    EXPECT_FALSE(modifyTrayIcon(nullptr, firstIcon, "tip"));
    EXPECT_THAT(loadedIcons, IsEmpty());
    EXPECT_FALSE(addTrayIcon(window_, noIcon, "tip"));
    EXPECT_FALSE(modifyTrayIcon(window_, noIcon, "tip"));
    EXPECT_THAT(shellCalls, IsEmpty());
    EXPECT_THAT(loadedIcons, ElementsAre(noIcon, noIcon)) << "failures must not be cached";
    EXPECT_FALSE(removeTrayIcon(nullptr));
}

TEST_F(TrayIcon, IconsAreLoadedOnceAndNeverDestroyed) {
    for (int i = 0; i < 3; ++i) {
        addTrayIcon(window_, keptIcon, "tip");
        modifyTrayIcon(window_, keptIcon, "tip");
        removeTrayIcon(window_);
    }
    EXPECT_THAT(loadedIcons, IsEmpty()) << "SetUpTestSuite already loaded it";
    ICONINFO icon{};
    ASSERT_TRUE(GetIconInfo(shellCalls.front().record.hIcon, &icon));
    DeleteObject(icon.hbmMask);
    DeleteObject(icon.hbmColor);
}

} // namespace
} // namespace base
