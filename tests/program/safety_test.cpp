// The program reports failed saves, and keeps copies of the previous schedule and of a damaged one.

#include "lib/base/stackalignment.h"
#include "resources/ids.h"
#include "tests/program/programtest.h"

#include <algorithm>

namespace {

/// A window that replaces the taskbar and so receives the requests of notification icons. The test's thread
/// handles these requests while it waits in SendMessage() for the scheduler.
class Taskbar {
public:
    Taskbar() {
        WNDCLASSA description{};
        description.lpfnWndProc = &receive;
        description.lpszClassName = "Shell_TrayWnd";
        RegisterClassA(&description);
        window_ = CreateWindowExA(0, description.lpszClassName, "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr,
                                  nullptr, nullptr);
        EXPECT_EQ(FindWindowA(description.lpszClassName, nullptr), window_) << "another taskbar is above";
        received_.clear();
    }
    Taskbar(const Taskbar&) = delete;
    Taskbar& operator=(const Taskbar&) = delete;
    ~Taskbar() { DestroyWindow(window_); }

    /// The number of requests that contain `text`.
    static long count(const std::wstring& text) {
        return std::ranges::count_if(
            received_, [&](const std::wstring& request) { return request.find(text) != std::wstring::npos; });
    }

private:
    CALLED_BY_PLATFORM static LRESULT CALLBACK receive(HWND window, UINT message, WPARAM wParam,
                                                       LPARAM lParam) {
        if (message != WM_COPYDATA)
            return DefWindowProcA(window, message, wParam, lParam);
        const auto& data = *reinterpret_cast<const COPYDATASTRUCT*>(lParam);
        received_.emplace_back(static_cast<const wchar_t*>(data.lpData), data.cbData / sizeof(wchar_t));
        return TRUE;
    }

    static inline std::vector<std::wstring> received_;
    HWND window_;
};

class Safety : public driver::ProgramTest {};

TEST_F(Safety, AFailedSaveIsReportedOnceUntilASaveSucceeds) {
    startWith({driver::sleeping("C:\\Sites\\news.kra")});
    list().select({0});
    const Taskbar taskbar;
    const auto toggleWhileHeld = [this] {
        const base::FileHandle held(CreateFileA(scheduler::schedulePath().c_str(), GENERIC_READ,
                                                FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
        ASSERT_TRUE(held);
        carryOut(IDM_ENABLE);
        carryOut(IDM_ENABLE);
    };
    for (const long warnings : {1, 2}) {
        toggleWhileHeld();
        EXPECT_EQ(Taskbar::count(L"The schedule could not be saved."), warnings);
        EXPECT_EQ(Taskbar::count(L"schedule.dat: "), warnings);
        EXPECT_EQ(scheduler_.messageBox(), nullptr);
        carryOut(IDM_ENABLE);
        EXPECT_EQ(savedEntry().disabled, warnings % 2);
    }
}

TEST_F(Safety, TheBackupRestoresADamagedSchedule) {
    startWith({driver::sleeping("C:\\Sites\\news.kra"), driver::sleeping("C:\\Sites\\shop.kra")});
    list().select({0});
    carryOut(IDM_ENABLE);
    scheduler_.kill();
    const std::string cut = driver::readBytes(scheduler::schedulePath()).substr(0, 60);
    driver::writeText(scheduler::schedulePath(), cut);

    ASSERT_TRUE(scheduler_.start());
    EXPECT_EQ(list().rowCount(), 0);
    ASSERT_TRUE(scheduler_.exit());
    EXPECT_EQ(driver::readBytes(driver::safetyCopy("damaged")), cut);

    ASSERT_TRUE(CopyFileA(driver::safetyCopy("bak").c_str(), scheduler::schedulePath().c_str(), FALSE));
    ASSERT_TRUE(scheduler_.start());
    EXPECT_EQ(list().rowCount(), 2);
}

} // namespace
