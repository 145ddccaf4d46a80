#include "lib/base/stackalignment.h"
#include "scheduler/ui/cellhints.h"
#include "scheduler/ui/framework/hintface.h"
#include "tests/scheduler/ui/framework/pumping.h"
#include "tests/scheduler/ui/listwindow.h"
#include "tests/support/allocations.h"

#include <functional>
#include <optional>
#include <utility>

namespace {

using scheduler::ScheduleColumn;
using test::hintWindows;

const std::string longResult = "3 pages could not be found, and of 12 others the server has sent only a part";
const std::string longName = "a project whose name is far too long for its column";

void closeHints() {
    for (const HWND hint : hintWindows())
        SendMessageA(hint, WM_CLOSE, 0, 0);
}

std::function<void()> whileOpen; ///< runs once while a menu is open

CALLED_BY_PLATFORM void CALLBACK actWhileOpen(HWND, UINT, UINT_PTR, DWORD) noexcept {
    if (whileOpen)
        std::exchange(whileOpen, nullptr)();
}

class CellHints : public testing::Test {
protected:
    CellHints() {
        window_.add("short", longResult);
        window_.add(longName, longResult + " of it");
    }
    ~CellHints() override { closeHints(); }

    HWND list() const { return window_.list.handle(); }

    POINT placeOf(int row, ScheduleColumn column) const {
        RECT place{};
        ListView_GetSubItemRect(list(), row, static_cast<int>(column), LVIR_LABEL, &place);
        return {place.left + 10, (place.top + place.bottom) / 2};
    }

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

    /// Compares sizes, because a hint window does not expose its text.
    static void expectHint(const std::string& text) {
        ASSERT_EQ(hintWindows().size(), 1U);
        RECT workArea{};
        SystemParametersInfoA(SPI_GETWORKAREA, 0, &workArea, 0);
        const RECT expected = framework::hintRectangle(
            framework::hintExtent(text, framework::HintStyle::Rounded, framework::maxHintWidth(workArea)), {},
            workArea);
        RECT place{};
        GetWindowRect(hintWindows().front(), &place);
        EXPECT_EQ(place.right - place.left, expected.right - expected.left);
        EXPECT_EQ(place.bottom - place.top, expected.bottom - expected.top);
    }

    test::ListWindow window_;
    POINT result_ = placeOf(0, ScheduleColumn::LastResult);
    POINT nextResult_ = placeOf(1, ScheduleColumn::LastResult);
};

TEST_F(CellHints, AHintShowsATruncatedTextWhenTheMouseRestsOnIt) {
    send(WM_MOUSEMOVE, result_);
    EXPECT_TRUE(hintWindows().empty()) << "shown before the mouse rests";
    send(WM_MOUSEHOVER, result_);
    expectHint(longResult);
    closeHints();
    restAt(placeOf(1, ScheduleColumn::Project));
    expectHint(longName);
}

TEST_F(CellHints, ATextThatFitsHasNoHint) {
    restAt(placeOf(0, ScheduleColumn::Project));
    EXPECT_TRUE(hintWindows().empty());
    restAt(result_);
    EXPECT_FALSE(hintWindows().empty());
    closeHints();
    const int width = static_cast<int>(
        SendMessageA(list(), LVM_GETSTRINGWIDTHA, 0, reinterpret_cast<LPARAM>(longResult.c_str())));
    ListView_SetColumnWidth(list(), static_cast<int>(ScheduleColumn::LastResult), width + 40);
    send(WM_MOUSEMOVE, placeOf(0, ScheduleColumn::Project));
    restAt(result_);
    EXPECT_TRUE(hintWindows().empty());
}

TEST_F(CellHints, TheImageNarrowsTheTextOfTheFirstColumn) {
    const int width =
        static_cast<int>(SendMessageA(list(), LVM_GETSTRINGWIDTHA, 0, reinterpret_cast<LPARAM>("short")));
    for (const int image : {16, 0}) {
        ListView_SetColumnWidth(list(), 0, width + 14 + image);
        send(WM_MOUSEMOVE, result_);
        restAt(placeOf(0, ScheduleColumn::Project));
        EXPECT_EQ(hintWindows().size(), image == 0 ? 1U : 0U) << image;
    }
}

TEST_F(CellHints, AHintStaysUntilTheMouseLeavesItsCell) {
    restAt(result_);
    const std::vector<HWND> before = hintWindows();
    send(WM_MOUSEMOVE, {result_.x + 20, result_.y});
    test::pumpUntilIdle();
    EXPECT_EQ(hintWindows(), before);
    send(WM_MOUSEMOVE, nextResult_);
    test::pumpUntilIdle();
    EXPECT_TRUE(hintWindows().empty());
    send(WM_MOUSEHOVER, nextResult_);
    expectHint(longResult + " of it");
}

TEST_F(CellHints, AHintClosesOnScrollingOrAKeyAndCanReopen) {
    const std::pair<UINT, WPARAM> moves[] = {{WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA)},
                                             {WM_MOUSEHWHEEL, MAKEWPARAM(0, WHEEL_DELTA)},
                                             {WM_VSCROLL, SB_LINEDOWN},
                                             {WM_HSCROLL, SB_LINERIGHT},
                                             {WM_KEYDOWN, VK_DOWN},
                                             {WM_SYSKEYDOWN, VK_MENU}};
    for (const auto& [message, parameter] : moves) {
        restAt(result_);
        ASSERT_EQ(hintWindows().size(), 1U) << message;
        SendMessageA(list(), message, parameter, 0);
        test::pumpUntilIdle();
        EXPECT_TRUE(hintWindows().empty()) << message;
        SendMessageA(list(), WM_HSCROLL, SB_LEFT, 0);
    }
}

TEST_F(CellHints, AHintClosesWhenItsRowChanges) {
    const auto staysAfter = [&](const std::function<void()>& change) {
        restAt(result_);
        UpdateWindow(list());
        EXPECT_EQ(hintWindows().size(), 1U);
        change();
        test::pumpUntilIdle();
        return !hintWindows().empty();
    };
    const auto setResult = [&](std::size_t position, const std::string& result) {
        window_.schedule[position].lastResult = result;
        window_.schedule.notifyChanged();
    };
    EXPECT_TRUE(staysAfter([&] { window_.schedule.notifyChanged(); })) << "no text has changed";
    EXPECT_TRUE(staysAfter([&] { setResult(1, longResult + " elsewhere"); }));
    EXPECT_FALSE(staysAfter([&] { setResult(0, longResult + " of them"); }));
    EXPECT_FALSE(staysAfter([&] { window_.clickHeader(ScheduleColumn::Project); }));
    EXPECT_FALSE(staysAfter([&] { window_.add("one more"); }));
    EXPECT_FALSE(staysAfter([&] { window_.schedule.remove(2); }));
}

TEST_F(CellHints, AHintClosesWhenMemoryToCompareItsTextRunsOut) {
    for (const bool inBatch : {false, true}) {
        restAt(result_);
        ASSERT_EQ(hintWindows().size(), 1U);
        {
            const test::RefusedAllocations refusing;
            std::optional<scheduler::ScheduleBatch> batch;
            if (inBatch)
                batch.emplace(window_.schedule);
            window_.schedule.notifyChanged();
        }
        test::pumpUntilIdle();
        EXPECT_TRUE(hintWindows().empty()) << inBatch;
    }
}

TEST_F(CellHints, NoHintOpensWhileAMenuIsOpen) {
    std::size_t shown = 99;
    whileOpen = [&] {
        restAt(result_);
        shown = hintWindows().size();
        EndMenu();
    };
    const HMENU menu = CreatePopupMenu();
    AppendMenuA(menu, MF_STRING, 1, "Display");
    const UINT_PTR timer = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, &actWhileOpen);
    TrackPopupMenu(menu, 0, 0, 0, 0, window_.handle(), nullptr);
    KillTimer(nullptr, timer);
    DestroyMenu(menu);
    EXPECT_EQ(shown, 0U);
    EXPECT_TRUE(hintWindows().empty());
    send(WM_MOUSELEAVE, {});
    restAt(result_);
    EXPECT_EQ(hintWindows().size(), 1U) << "hints open again after the menu";
}

TEST_F(CellHints, NoHintOpensWithoutACellUnderTheMouse) {
    restAt({50, 250}); // below the rows
    EXPECT_TRUE(hintWindows().empty());
    send(WM_MOUSEMOVE, result_);
    SendMessageA(list(), WM_MOUSELEAVE, 0, 0);
    send(WM_MOUSEHOVER, result_);
    EXPECT_TRUE(hintWindows().empty());
    restAt(result_);
    EXPECT_FALSE(hintWindows().empty()) << "the mouse has returned";
    closeHints();
    send(WM_MOUSEMOVE, nextResult_);
    window_.schedule.remove(1);
    send(WM_MOUSEHOVER, nextResult_);
    EXPECT_TRUE(hintWindows().empty()) << "the row was removed";
}

} // namespace
