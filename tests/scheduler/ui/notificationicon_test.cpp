#include "lib/base/base.h"
#include "resources/ids.h"
#include "scheduler/ui/notificationicon.h"
#include "tests/support/importedfunctions.h"

#include <windows.h>

#include <shellapi.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace {

struct ShellCall {
    DWORD message = 0;
    HWND window = nullptr;
    std::uintptr_t icon = 0; ///< by resource number; 0: none
    std::string tip;

    friend bool operator==(const ShellCall&, const ShellCall&) = default;
};

void PrintTo(const ShellCall& call, std::ostream* out) {
    *out << call.message << " icon " << call.icon << " '" << call.tip << "'";
}

std::vector<ShellCall> shellCalls;
std::map<HANDLE, std::uintptr_t> loadedIcons;
bool shellAnswers = true;

BOOL WINAPI notedShellCall(DWORD message, NOTIFYICONDATAA* record) {
    const bool hasIcon = (record->uFlags & NIF_ICON) != 0;
    shellCalls.push_back({message, record->hWnd, hasIcon ? loadedIcons[record->hIcon] : 0,
                          record->uFlags & NIF_TIP ? record->szTip : ""});
    return shellAnswers;
}

HANDLE WINAPI notedLoad(HINSTANCE module, LPCSTR name, UINT type, int width, int height, UINT flags) {
    static const auto original = test::platformFunction<decltype(&LoadImageA)>("user32.dll", "LoadImageA");
    const HANDLE icon = original(module, name, type, width, height, flags);
    EXPECT_NE(icon, nullptr) << "the program has both icons";
    loadedIcons[icon] = reinterpret_cast<std::uintptr_t>(name);
    return icon;
}

} // namespace

SCHEDULER_REPLACE_IMPORT(Shell_NotifyIconA, "_Shell_NotifyIconA@8", notedShellCall);
SCHEDULER_REPLACE_IMPORT(LoadImageA, "_LoadImageA@24", notedLoad);

namespace {

using testing::ElementsAre;

class NotificationIcon : public testing::Test {
protected:
    NotificationIcon() {
        base::applicationName = "Icon Test";
        shellCalls.clear();
        shellAnswers = true;
    }
    ~NotificationIcon() override { DestroyWindow(window_); }

    ShellCall active(DWORD message) const { return {message, window_, IDI_ACTIVE, "Icon Test"}; }
    ShellCall suspended(DWORD message) const {
        return {message, window_, IDI_SUSPENDED, "Icon Test (suspended)"};
    }

    HWND window_ =
        CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    scheduler::NotificationIcon icon_;
};

TEST_F(NotificationIcon, IsTheActiveOneAtFirst) {
    icon_.add(window_);
    EXPECT_THAT(shellCalls, ElementsAre(active(NIM_ADD)));
}

TEST_F(NotificationIcon, TellsSuspendedFromActive) {
    icon_.add(window_);
    icon_.update(true);
    icon_.update(false);
    EXPECT_THAT(shellCalls, ElementsAre(active(NIM_ADD), suspended(NIM_MODIFY), active(NIM_MODIFY)));
}

TEST_F(NotificationIcon, ANewTaskbarGetsItAsItIsNow) {
    icon_.add(window_);
    for (const bool isSuspended : {false, true}) {
        shellCalls.clear();
        icon_.restore(isSuspended);
        EXPECT_THAT(shellCalls,
                    ElementsAre(active(NIM_ADD), isSuspended ? suspended(NIM_MODIFY) : active(NIM_MODIFY)));
    }
}

TEST_F(NotificationIcon, IsTakenAway) {
    icon_.add(window_);
    shellCalls.clear();
    icon_.remove();
    EXPECT_THAT(shellCalls, ElementsAre(ShellCall{NIM_DELETE, window_, 0, ""}));
}

TEST_F(NotificationIcon, IsTakenAwayWithItsObject) {
    {
        scheduler::NotificationIcon icon;
        icon.add(window_);
        shellCalls.clear();
    }
    EXPECT_THAT(shellCalls, ElementsAre(ShellCall{NIM_DELETE, window_, 0, ""}));
    shellCalls.clear();
    { const scheduler::NotificationIcon neverAdded; }
    {
        scheduler::NotificationIcon removed;
        removed.add(window_);
        removed.remove();
        shellCalls.clear();
    }
    EXPECT_TRUE(shellCalls.empty());
}

TEST_F(NotificationIcon, WorksOnWhenTheShellRefuses) {
    shellAnswers = false;
    icon_.add(window_);
    icon_.update(true);
    icon_.restore(true);
    icon_.remove();
    EXPECT_EQ(shellCalls.size(), 5U) << "each is tried";
}

} // namespace
