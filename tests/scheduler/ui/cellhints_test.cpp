#include "lib/base/stackalignment.h"
#include "scheduler/ui/cellhints.h"
#include "scheduler/ui/framework/hintface.h"
#include "scheduler/ui/framework/hintwindow.h"
#include "tests/scheduler/ui/framework/pumping.h"
#include "tests/scheduler/ui/listwindow.h"
#include "tests/support/allocations.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace {

using framework::HintWindow;
using framework::Window;
using scheduler::ScheduleColumn;

const std::string longResult = "3 pages could not be found, and of 12 others the server has sent only a part";

CALLED_BY_PLATFORM BOOL CALLBACK collectHint(HWND window, LPARAM list) {
    if (dynamic_cast<HintWindow*>(Window::of(window)))
        reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

std::vector<HWND> hints() {
    std::vector<HWND> found;
    EnumThreadWindows(GetCurrentThreadId(), &collectHint, reinterpret_cast<LPARAM>(&found));
    return found;
}

std::function<void()> whileOpen; ///< what is done, once, while a menu runs

CALLED_BY_PLATFORM void CALLBACK actWhileOpen(HWND, UINT, UINT_PTR, DWORD) noexcept {
    if (whileOpen)
        std::exchange(whileOpen, nullptr)();
}

class CellHints : public testing::Test {
protected:
    CellHints() {
        window_.add("short", longResult);
        window_.add("a project whose name is far too long for its column", longResult + " of it");
    }
    ~CellHints() override {
        for (const HWND hint : hints())
            SendMessageA(hint, WM_CLOSE, 0, 0);
    }

    HWND list() const { return window_.list.handle(); }

    POINT placeOf(int row, ScheduleColumn column) const {
        RECT place{};
        ListView_GetSubItemRect(list(), row, static_cast<int>(column), LVIR_LABEL, &place);
        return {place.left + 10, (place.top + place.bottom) / 2};
    }

    /// As the platform reports it of the pointer; `point` is in the list.
    void send(UINT message, POINT point) const {
        POINT onScreen = point;
        ClientToScreen(list(), &onScreen);
        SetCursorPos(onScreen.x, onScreen.y);
        SendMessageA(list(), message, 0, MAKELPARAM(static_cast<WORD>(point.x), static_cast<WORD>(point.y)));
    }
    void restAt(POINT point) const {
        send(WM_MOUSEMOVE, point);
        send(WM_MOUSEHOVER, point);
    }

    /// A hint tells by its size alone what it says.
    static void expectHint(const std::string& text) {
        ASSERT_EQ(hints().size(), 1U);
        RECT workArea{};
        SystemParametersInfoA(SPI_GETWORKAREA, 0, &workArea, 0);
        const RECT expected = framework::hintRectangle(
            framework::hintExtent(text, framework::HintStyle::Rounded, framework::maxHintWidth(workArea)), {},
            workArea);
        RECT place{};
        GetWindowRect(hints().front(), &place);
        EXPECT_EQ(place.right - place.left, expected.right - expected.left);
        EXPECT_EQ(place.bottom - place.top, expected.bottom - expected.top);
    }

    test::ListWindow window_;
};

TEST_F(CellHints, ACutTextIsShownWholeOnceTheMouseRestsOnIt) {
    const POINT place = placeOf(0, ScheduleColumn::LastResult);
    send(WM_MOUSEMOVE, place);
    EXPECT_TRUE(hints().empty()) << "not before";
    send(WM_MOUSEHOVER, place);
    expectHint(longResult);
}

TEST_F(CellHints, SoIsACutNameOfAProject) {
    restAt(placeOf(1, ScheduleColumn::Project));
    expectHint("a project whose name is far too long for its column");
}

TEST_F(CellHints, ATextThatIsSeenWholeHasNone) {
    restAt(placeOf(0, ScheduleColumn::Project));
    EXPECT_TRUE(hints().empty());
    restAt(placeOf(0, ScheduleColumn::LastResult));
    EXPECT_FALSE(hints().empty());
    for (const HWND hint : hints())
        SendMessageA(hint, WM_CLOSE, 0, 0);
    const int width = static_cast<int>(
        SendMessageA(list(), LVM_GETSTRINGWIDTHA, 0, reinterpret_cast<LPARAM>(longResult.c_str())));
    ListView_SetColumnWidth(list(), static_cast<int>(ScheduleColumn::LastResult), width + 40);
    send(WM_MOUSEMOVE, placeOf(0, ScheduleColumn::Project));
    restAt(placeOf(0, ScheduleColumn::LastResult));
    EXPECT_TRUE(hints().empty());
}

TEST_F(CellHints, TheHintGoesWhenTheMouseGoesToAnotherCellAndThatShowsItsOwn) {
    restAt(placeOf(0, ScheduleColumn::LastResult));
    const POINT next = placeOf(1, ScheduleColumn::LastResult);
    send(WM_MOUSEMOVE, next);
    test::pumpUntilIdle();
    EXPECT_TRUE(hints().empty());
    send(WM_MOUSEHOVER, next);
    expectHint(longResult + " of it");
}

TEST_F(CellHints, TheHintStaysWhileTheMouseMovesWithinItsCell) {
    POINT place = placeOf(0, ScheduleColumn::LastResult);
    restAt(place);
    const std::vector<HWND> before = hints();
    place.x += 20;
    send(WM_MOUSEMOVE, place);
    test::pumpUntilIdle();
    EXPECT_EQ(hints(), before);
}

TEST_F(CellHints, TheHintGoesWhenTheListMovesUnderTheMouseAndComesAgainWhenItRests) {
    const POINT place = placeOf(0, ScheduleColumn::LastResult);
    const std::pair<UINT, WPARAM> moves[] = {{WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA)},
                                             {WM_MOUSEHWHEEL, MAKEWPARAM(0, WHEEL_DELTA)},
                                             {WM_VSCROLL, SB_LINEDOWN},
                                             {WM_HSCROLL, SB_LINERIGHT},
                                             {WM_KEYDOWN, VK_DOWN},
                                             {WM_SYSKEYDOWN, VK_MENU}};
    for (const auto& [message, parameter] : moves) {
        restAt(place);
        ASSERT_EQ(hints().size(), 1U) << message;
        SendMessageA(list(), message, parameter, 0);
        test::pumpUntilIdle();
        EXPECT_TRUE(hints().empty()) << message;
        SendMessageA(list(), WM_HSCROLL, SB_LEFT, 0);
    }
}

TEST_F(CellHints, TheHintGoesWhenItsRowChanges) {
    const POINT place = placeOf(0, ScheduleColumn::LastResult);
    const auto staysAfter = [&](const std::function<void()>& change) {
        restAt(place);
        UpdateWindow(list());
        EXPECT_EQ(hints().size(), 1U);
        change();
        test::pumpUntilIdle();
        return !hints().empty();
    };
    const auto setResult = [&](std::size_t position, const std::string& result) {
        window_.schedule[position].lastResult = result;
        window_.schedule.noteChange();
    };
    EXPECT_TRUE(staysAfter([&] { window_.schedule.noteChange(); })) << "no text has changed";
    EXPECT_TRUE(staysAfter([&] { setResult(1, longResult + " elsewhere"); }));
    EXPECT_FALSE(staysAfter([&] { setResult(0, longResult + " of them"); }));
    EXPECT_FALSE(staysAfter([&] { window_.clickHeader(ScheduleColumn::Project); }));
    EXPECT_FALSE(staysAfter([&] { window_.add("one more"); }));
    EXPECT_FALSE(staysAfter([&] { window_.schedule.remove(2); }));
}

TEST_F(CellHints, TheHintGoesWhenThereIsNoMemoryToCompareItsText) {
    for (const bool inBatch : {false, true}) {
        restAt(placeOf(0, ScheduleColumn::LastResult));
        ASSERT_EQ(hints().size(), 1U);
        {
            const test::RefusedAllocations refused;
            std::optional<scheduler::ScheduleBatch> batch;
            if (inBatch)
                batch.emplace(window_.schedule);
            window_.schedule.noteChange();
        }
        test::pumpUntilIdle();
        EXPECT_TRUE(hints().empty()) << inBatch;
    }
}

TEST_F(CellHints, NoneComesInFrontOfAMenu) {
    std::size_t shown = 99;
    whileOpen = [&] {
        restAt(placeOf(0, ScheduleColumn::LastResult));
        shown = hints().size();
        EndMenu();
    };
    const HMENU menu = CreatePopupMenu();
    AppendMenuA(menu, MF_STRING, 1, "Display");
    const UINT_PTR timer = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, &actWhileOpen);
    TrackPopupMenu(menu, 0, 0, 0, 0, window_.handle(), nullptr);
    KillTimer(nullptr, timer);
    DestroyMenu(menu);
    EXPECT_EQ(shown, 0U);
    EXPECT_TRUE(hints().empty());
    send(WM_MOUSELEAVE, {});
    restAt(placeOf(0, ScheduleColumn::LastResult));
    EXPECT_EQ(hints().size(), 1U) << "afterwards they come again";
}

TEST_F(CellHints, BelowTheRowsThereIsNone) {
    restAt({50, 250});
    EXPECT_TRUE(hints().empty());
}

TEST_F(CellHints, AfterTheMouseHasLeftThereIsNone) {
    const POINT place = placeOf(0, ScheduleColumn::LastResult);
    send(WM_MOUSEMOVE, place);
    SendMessageA(list(), WM_MOUSELEAVE, 0, 0);
    send(WM_MOUSEHOVER, place);
    EXPECT_TRUE(hints().empty());
    restAt(place);
    EXPECT_FALSE(hints().empty()) << "it may come back";
}

TEST_F(CellHints, ARowThatIsGoneMeanwhileHasNone) {
    const POINT place = placeOf(1, ScheduleColumn::LastResult);
    send(WM_MOUSEMOVE, place);
    window_.schedule.remove(1);
    send(WM_MOUSEHOVER, place);
    EXPECT_TRUE(hints().empty());
}

} // namespace
