#include "lib/base/trayicon.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/patience.h"

#include <windows.h>

#include <shellapi.h>

#include <gmock/gmock.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace {

using test::platformFunction;

// What the shell is told and which icons are loaded is noted on the way.

struct ShellCall {
    DWORD message;
    NOTIFYICONDATAA record;
};
std::vector<ShellCall> shellCalls;
std::vector<std::uintptr_t> loadedIcons; ///< by resource number

BOOL WINAPI notedShellCall(DWORD message, NOTIFYICONDATAA* record) {
    static const auto original =
        platformFunction<decltype(&Shell_NotifyIconA)>("shell32.dll", "Shell_NotifyIconA");
    shellCalls.push_back({message, *record});
    return original(message, record);
}

HANDLE WINAPI notedLoad(HINSTANCE module, LPCSTR name, UINT type, int width, int height, UINT flags) {
    static const auto original = platformFunction<decltype(&LoadImageA)>("user32.dll", "LoadImageA");
    EXPECT_EQ(module, GetModuleHandleA(nullptr));
    EXPECT_EQ(type, UINT{IMAGE_ICON});
    EXPECT_EQ(width, 16);
    EXPECT_EQ(height, 16);
    EXPECT_EQ(flags, 0U);
    loadedIcons.push_back(reinterpret_cast<std::uintptr_t>(name));
    return original(module, name, type, width, height, flags);
}

} // namespace

SCHEDULER_REPLACE_IMPORT(Shell_NotifyIconA, "_Shell_NotifyIconA@8", notedShellCall);
SCHEDULER_REPLACE_IMPORT(LoadImageA, "_LoadImageA@24", notedLoad);

namespace base {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Of the test program's resources.
constexpr std::uint16_t firstIcon = 101;
constexpr std::uint16_t secondIcon = 102;
constexpr std::uint16_t keptIcon = 103;
constexpr std::uint16_t noIcon = 999;

class TrayIconTest : public testing::Test {
protected:
    TrayIconTest() {
        shellCalls.clear();
        loadedIcons.clear();
    }
    ~TrayIconTest() override {
        if (window_)
            DestroyWindow(window_);
    }

    HWND window_ =
        CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
};

/// Every byte behind the record's first form has to be zero as well.
void expectZeroBehindFirstForm(const NOTIFYICONDATAA& record) {
    const auto* const bytes = reinterpret_cast<const unsigned char*>(&record);
    for (std::size_t i = NOTIFYICONDATAA_V1_SIZE; i < sizeof record; ++i)
        EXPECT_EQ(bytes[i], 0) << i;
}

TEST(TrayIconRecord, HasTheFirstFormsSize) {
    EXPECT_EQ(detail::trayIconRecord(nullptr, 0, nullptr, "").cbSize, 88U);
}

TEST(TrayIconRecord, ToAddHoldsMessageIconAndTip) {
    const HWND window = GetDesktopWindow();
    const HICON icon = LoadIconA(nullptr, MAKEINTRESOURCEA(32512));
    ASSERT_NE(icon, nullptr);
    const NOTIFYICONDATAA record =
        detail::trayIconRecord(window, NIF_MESSAGE | NIF_ICON | NIF_TIP, icon, "Corvane Scheduler");
    EXPECT_EQ(record.cbSize, 88U);
    EXPECT_EQ(record.hWnd, window);
    EXPECT_EQ(record.uID, 0U);
    EXPECT_EQ(record.uFlags, 7U);
    EXPECT_EQ(record.uCallbackMessage, 32868U);
    EXPECT_EQ(record.uCallbackMessage, WM_TRAY_NOTIFY);
    EXPECT_EQ(record.hIcon, icon);
    EXPECT_STREQ(record.szTip, "Corvane Scheduler");
    expectZeroBehindFirstForm(record);
}

TEST(TrayIconRecord, ToModifyHoldsNoMessage) {
    const NOTIFYICONDATAA record =
        detail::trayIconRecord(GetDesktopWindow(), NIF_ICON | NIF_TIP, nullptr, "tip");
    EXPECT_EQ(record.uFlags, 6U);
    EXPECT_EQ(record.uCallbackMessage, 0U);
    EXPECT_EQ(record.uID, 0U);
    EXPECT_STREQ(record.szTip, "tip");
}

TEST(TrayIconRecord, ToRemoveHoldsTheWindowAlone) {
    const NOTIFYICONDATAA record = detail::trayIconRecord(GetDesktopWindow(), 0, nullptr, {});
    NOTIFYICONDATAA expected;
    std::memset(&expected, 0, sizeof expected);
    expected.cbSize = 88;
    expected.hWnd = GetDesktopWindow();
    EXPECT_EQ(std::memcmp(&record, &expected, sizeof record), 0);
}

TEST(TrayIconRecord, TipIsCutTo63Characters) {
    for (const std::size_t length : {0U, 1U, 62U, 63U, 64U, 65U, 127U, 128U, 129U, 5000U}) {
        std::string tip;
        for (std::size_t i = 0; i < length; ++i)
            tip += static_cast<char>('a' + i % 26);
        const NOTIFYICONDATAA record = detail::trayIconRecord(nullptr, NIF_TIP, nullptr, tip);
        EXPECT_EQ(std::string(record.szTip), tip.substr(0, 63)) << length;
        expectZeroBehindFirstForm(record);
    }
}

TEST_F(TrayIconTest, NullWindowIsRefused) {
    EXPECT_FALSE(addTrayIcon(nullptr, firstIcon, "tip"));
    EXPECT_FALSE(modifyTrayIcon(nullptr, firstIcon, "tip"));
    EXPECT_FALSE(removeTrayIcon(nullptr));
}

TEST_F(TrayIconTest, MissingIconIsRefused) {
    ASSERT_NE(window_, nullptr);
    EXPECT_FALSE(addTrayIcon(window_, noIcon, "tip"));
    EXPECT_FALSE(addTrayIcon(window_, noIcon, "tip")) << "nor is the failure taken for an icon";
    EXPECT_FALSE(modifyTrayIcon(window_, noIcon, "tip"));
}

TEST_F(TrayIconTest, IconThatWasNotAddedIsNeitherModifiedNorRemoved) {
    ASSERT_NE(window_, nullptr);
    EXPECT_FALSE(modifyTrayIcon(window_, firstIcon, "tip"));
    EXPECT_FALSE(removeTrayIcon(window_));
}

TEST_F(TrayIconTest, LivesFromAddingToRemoval) {
    ASSERT_NE(window_, nullptr);
    for (unsigned waited = 0; waited < test::patience && !FindWindowA("Shell_TrayWnd", nullptr); waited += 20)
        Sleep(20);
    ASSERT_NE(FindWindowA("Shell_TrayWnd", nullptr), nullptr) << "a shell with a notification area";
    EXPECT_TRUE(addTrayIcon(window_, firstIcon, std::string(200, 't')));
    EXPECT_FALSE(addTrayIcon(window_, firstIcon, "tip")) << "one icon per window";
    EXPECT_TRUE(modifyTrayIcon(window_, secondIcon, "other tip"));
    EXPECT_FALSE(modifyTrayIcon(window_, noIcon, "tip"));
    EXPECT_TRUE(removeTrayIcon(window_));
    EXPECT_FALSE(removeTrayIcon(window_));
}

TEST_F(TrayIconTest, TellsTheShellWhatIsAsked) {
    ASSERT_NE(window_, nullptr);
    addTrayIcon(window_, firstIcon, "tip");
    modifyTrayIcon(window_, secondIcon, "other tip");
    removeTrayIcon(window_);
    ASSERT_EQ(shellCalls.size(), 3U);
    for (const ShellCall& call : shellCalls) {
        EXPECT_EQ(call.record.cbSize, 88U);
        EXPECT_EQ(call.record.hWnd, window_);
        EXPECT_EQ(call.record.uID, 0U);
    }
    EXPECT_EQ(shellCalls[0].message, DWORD{NIM_ADD});
    EXPECT_EQ(shellCalls[0].record.uFlags, 7U);
    EXPECT_EQ(shellCalls[0].record.uCallbackMessage, 0x8064U);
    EXPECT_STREQ(shellCalls[0].record.szTip, "tip");
    EXPECT_EQ(shellCalls[1].message, DWORD{NIM_MODIFY});
    EXPECT_EQ(shellCalls[1].record.uFlags, 6U);
    EXPECT_EQ(shellCalls[1].record.uCallbackMessage, 0U);
    EXPECT_STREQ(shellCalls[1].record.szTip, "other tip");
    EXPECT_NE(shellCalls[0].record.hIcon, shellCalls[1].record.hIcon);
    EXPECT_EQ(shellCalls[2].message, DWORD{NIM_DELETE});
    EXPECT_EQ(shellCalls[2].record.uFlags, 0U);
}

TEST_F(TrayIconTest, RefusedCallsDoNotReachTheShell) {
    addTrayIcon(nullptr, firstIcon, "tip");
    modifyTrayIcon(nullptr, firstIcon, "tip");
    EXPECT_THAT(loadedIcons, IsEmpty());
    addTrayIcon(window_, noIcon, "tip");
    modifyTrayIcon(window_, noIcon, "tip");
    EXPECT_THAT(shellCalls, IsEmpty());
    EXPECT_THAT(loadedIcons, ElementsAre(noIcon, noIcon)) << "a failure is not kept";
}

TEST_F(TrayIconTest, IconsAreLoadedOnceAndKept) {
    ASSERT_NE(window_, nullptr);
    for (int i = 0; i < 3; ++i) {
        addTrayIcon(window_, keptIcon, "tip");
        modifyTrayIcon(window_, keptIcon, "tip");
        removeTrayIcon(window_);
    }
    EXPECT_THAT(loadedIcons, ElementsAre(keptIcon));
    ICONINFO icon{};
    ASSERT_TRUE(GetIconInfo(shellCalls.front().record.hIcon, &icon)) << "never destroyed";
    DeleteObject(icon.hbmMask);
    DeleteObject(icon.hbmColor);
}

} // namespace
} // namespace base
