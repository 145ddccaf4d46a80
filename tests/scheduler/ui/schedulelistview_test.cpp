#include "scheduler/ui/framework/clipboard.h"
#include "scheduler/ui/schedulelistview.h"
#include "tests/scheduler/ui/listwindow.h"
#include "tests/scheduler/ui/paintcounter.h"
#include "tests/support/clipboardtext.h"

#include <gmock/gmock.h>

namespace {

using scheduler::ScheduleColumn;
using testing::ElementsAre;
using testing::IsEmpty;

class ScheduleListView : public testing::Test {
protected:
    ScheduleListView() {
        for (const char* const name : {"b", "c", "a"})
            window_.add(name);
    }

    void addMore(int count) {
        const scheduler::ScheduleBatch batch(window_.schedule);
        for (int i = 0; i < count; ++i)
            window_.add("more");
    }

    HWND list() const { return window_.list.handle(); }

    test::ListWindow window_;
};

TEST_F(ScheduleListView, TheFirstSelectedEntryIsInTheTopmostSelectedRow) {
    EXPECT_EQ(window_.list.firstSelectedEntry(), std::nullopt);
    window_.select(2);
    EXPECT_EQ(window_.list.firstSelectedEntry(), 2U);
    window_.select(1);
    EXPECT_EQ(window_.list.firstSelectedEntry(), 1U) << "the order of selection does not matter";
    window_.clickHeader(ScheduleColumn::Project); // a, b, c; a and c are selected
    EXPECT_EQ(window_.list.firstSelectedEntry(), 2U) << "the position of the entry, not of the row";
    window_.clickHeader(ScheduleColumn::Project);
    EXPECT_EQ(window_.list.firstSelectedEntry(), 1U);
}

TEST_F(ScheduleListView, SelectedEntriesAscendInASortedListToo) {
    EXPECT_THAT(window_.list.selectedEntries(), IsEmpty());
    window_.clickHeader(ScheduleColumn::Project);
    window_.select(0);
    window_.select(1);
    EXPECT_THAT(window_.list.selectedEntries(), ElementsAre(0, 2));
}

TEST_F(ScheduleListView, ARowHasTheImageOfItsState) {
    const auto image = [&](int row) {
        LVITEMA item{};
        item.mask = LVIF_IMAGE;
        item.iItem = row;
        SendMessageA(list(), LVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item));
        return item.iImage;
    };
    window_.schedule[0].running = 1;
    window_.schedule[1].lastResult = "new";
    EXPECT_EQ(image(0), 0);
    EXPECT_EQ(image(1), 3);
    EXPECT_EQ(image(2), ImageList_GetImageCount(ListView_GetImageList(list(), LVSIL_SMALL)))
        << "an index that the image list does not have";
}

TEST_F(ScheduleListView, AnImageDisappearsFromTheScreenWithItsState) {
    const auto showsImage = [&](int row) {
        RECT place{};
        ListView_GetItemRect(list(), row, &place, LVIR_ICON);
        UpdateWindow(list());
        const HDC screen = GetDC(list());
        int coloured = 0;
        for (int y = place.top; y < place.bottom; ++y)
            for (int x = place.left; x < place.right; ++x)
                coloured += GetPixel(screen, x, y) != GetSysColor(COLOR_WINDOW);
        ReleaseDC(list(), screen);
        return coloured > 0;
    };
    const auto setRunning = [&](std::uint8_t running) {
        window_.schedule[0].running = running;
        window_.schedule.notifyChanged();
    };
    EXPECT_FALSE(showsImage(0));
    setRunning(1);
    EXPECT_TRUE(showsImage(0));
    setRunning(0);
    EXPECT_FALSE(showsImage(0));
    setRunning(1);
    window_.clickHeader(ScheduleColumn::Project); // a, b, c
    EXPECT_FALSE(showsImage(0));
    EXPECT_TRUE(showsImage(1));
}

TEST_F(ScheduleListView, TheTextsOfADisabledRowAreGreyUnlessItIsSelected) {
    const auto textColour = [&](int row) {
        NMLVCUSTOMDRAW draw{};
        draw.nmcd.hdr = {list(), 0, static_cast<UINT>(NM_CUSTOMDRAW)};
        draw.nmcd.dwDrawStage = CDDS_ITEMPREPAINT;
        draw.nmcd.dwItemSpec = static_cast<DWORD_PTR>(row);
        draw.clrText = RGB(1, 2, 3);
        SendMessageA(window_.handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&draw));
        return draw.clrText;
    };
    window_.schedule[1].disabled = 1;
    EXPECT_EQ(textColour(0), RGB(1, 2, 3));
    EXPECT_EQ(textColour(1), GetSysColor(COLOR_GRAYTEXT));
    window_.schedule[1].running = 1;
    EXPECT_EQ(textColour(1), GetSysColor(COLOR_GRAYTEXT)) << "also while it runs";
    window_.select(1);
    EXPECT_EQ(textColour(1), RGB(1, 2, 3));
    EXPECT_EQ(textColour(3), RGB(1, 2, 3)) << "no such row";
}

TEST_F(ScheduleListView, CtrlASelectsAllRows) {
    window_.select(1);
    SendMessageA(list(), WM_CHAR, 1, 1);
    EXPECT_THAT(window_.list.selectedEntries(), ElementsAre(0, 1, 2));
}

TEST_F(ScheduleListView, CtrlCCopiesTheSelectedRowsInTheirOrder) {
    ASSERT_TRUE(framework::copyToClipboard(list(), "before"));
    SendMessageA(list(), WM_CHAR, 3, 1);
    EXPECT_EQ(test::clipboardText(), L"before") << "nothing is selected";
    window_.clickHeader(ScheduleColumn::Project); // a, b, c
    window_.select(0);
    window_.select(2);
    SendMessageA(list(), WM_CHAR, 3, 1);
    const std::wstring text = test::clipboardText();
    EXPECT_TRUE(text.starts_with(L"a\twhen project b is finished\t"));
    EXPECT_NE(text.find(L"\r\nc\t"), std::wstring::npos);
    EXPECT_EQ(std::ranges::count(text, L'\n'), 2);
}

TEST_F(ScheduleListView, EachScheduleChangeRepaintsAtOnceAndABatchRepaintsOnce) {
    UpdateWindow(list());
    const test::PaintCounter paintings(window_.list);
    window_.schedule[1].lastResult = "new";
    window_.schedule.notifyChanged();
    EXPECT_EQ(paintings.count, 1);
    window_.add("d");
    EXPECT_EQ(paintings.count, 2);
    EXPECT_EQ(ListView_GetItemCount(list()), 4);
    window_.schedule.remove(0);
    EXPECT_EQ(paintings.count, 3);
    {
        const scheduler::ScheduleBatch batch(window_.schedule);
        window_.add("e");
        window_.schedule.removeAll({1, 0});
        EXPECT_EQ(paintings.count, 3);
    }
    EXPECT_EQ(paintings.count, 4);
    window_.schedule.clear();
    EXPECT_EQ(paintings.count, 5);
    EXPECT_EQ(ListView_GetItemCount(list()), 0);
}

TEST_F(ScheduleListView, RepaintsWhenATextOfAVisibleRowMayHaveChanged) {
    window_.schedule[1].lastRun = window_.clock.now() - base::TimeSpan::fromMinutes(1);
    window_.schedule.notifyChanged();
    const test::PaintCounter paintings(window_.list);
    const auto pass = [&](int seconds) {
        window_.clock.advance(base::TimeSpan::fromSeconds(seconds));
        window_.list.onTimePassed(window_.clock.now());
        return paintings.count;
    };
    EXPECT_EQ(pass(0), 0);
    EXPECT_EQ(pass(1), 0);
    // Until "today" becomes "yesterday", a row's texts stay valid for 15 minutes at most.
    EXPECT_EQ(pass(15 * 60), 1);
    EXPECT_EQ(pass(0), 1) << "the repainted texts are valid";
    window_.clock.set(window_.clock.now() - base::TimeSpan::fromSeconds(1));
    EXPECT_EQ(pass(0), 2) << "the clock was set back";
}

TEST_F(ScheduleListView, AHiddenListRequestsNoTextsUntilItIsShown) {
    ShowWindow(window_.handle(), SW_HIDE);
    window_.clock.advance(base::TimeSpan::fromDays(2));
    window_.stateQueries = 0;
    window_.list.onTimePassed(window_.clock.now());
    window_.schedule.notifyChanged();
    EXPECT_EQ(window_.stateQueries, 0);
    ShowWindow(window_.handle(), SW_SHOW);
    UpdateWindow(list());
    EXPECT_GT(window_.stateQueries, 0);
}

TEST_F(ScheduleListView, ADeletionScrollsToAndRepaintsTheRemainingRows) {
    addMore(200);
    const auto canScroll = [&] { return (GetWindowLongA(list(), GWL_STYLE) & WS_VSCROLL) != 0; };
    ListView_EnsureVisible(list(), 202, FALSE);
    ASSERT_TRUE(canScroll());
    ASSERT_GT(ListView_GetTopIndex(list()), 0);
    ListView_SetItemState(list(), 202, LVIS_FOCUSED, LVIS_FOCUSED);
    std::vector<std::size_t> allButThree;
    for (std::size_t position = 203; position-- > 3;) {
        allButThree.push_back(position);
        window_.select(static_cast<int>(position));
    }
    window_.schedule.removeAll(allButThree);
    EXPECT_FALSE(canScroll());
    EXPECT_EQ(ListView_GetTopIndex(list()), 0);
    EXPECT_EQ(ListView_GetItemCount(list()), 3);
    EXPECT_EQ(ListView_GetNextItem(list(), -1, LVNI_FOCUSED), 2);
    EXPECT_FALSE(GetUpdateRect(list(), nullptr, FALSE)) << "everything is painted";
    // Redrawing is enabled again.
    window_.select(1);
    EXPECT_TRUE(GetUpdateRect(list(), nullptr, FALSE));
}

TEST_F(ScheduleListView, ADeletionFocusesTheRowWhereTheFirstDeletedRowWas) {
    addMore(17);
    for (int row = 5; row <= 9; ++row)
        window_.select(row);
    ListView_SetItemState(list(), 9, LVIS_FOCUSED, LVIS_FOCUSED); // as after Shift+Down
    window_.schedule.removeAll({9, 8, 7, 6, 5});
    EXPECT_EQ(ListView_GetNextItem(list(), -1, LVNI_FOCUSED), 5);
    EXPECT_THAT(window_.list.selectedEntries(), IsEmpty());
}

} // namespace
