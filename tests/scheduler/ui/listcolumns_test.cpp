#include "lib/base/registry.h"
#include "scheduler/ui/listcolumns.h"
#include "tests/scheduler/ui/listwindow.h"

#include <gmock/gmock.h>

namespace {

using scheduler::ScheduleColumn;

const std::string key = "Software\\Brindlewood\\columns test";

class ListColumns : public testing::Test {
protected:
    ListColumns() { base::deleteKey(HKEY_CURRENT_USER, key); }
    ~ListColumns() override { base::deleteKey(HKEY_CURRENT_USER, key); }

    void restore() {
        base::RegistryStore store(HKEY_CURRENT_USER, key);
        window_.list.restoreColumns(store);
    }
    static void save(int column, std::uint32_t width) {
        base::writeNumber(HKEY_CURRENT_USER, key + "\\Column" + std::to_string(column), width);
    }

    HWND list() const { return window_.list.handle(); }
    int width(ScheduleColumn column) const {
        return ListView_GetColumnWidth(list(), static_cast<int>(column));
    }
    int sum() const {
        int widths = 0;
        for (int column = 0; column < static_cast<int>(scheduler::columnCount); ++column)
            widths += ListView_GetColumnWidth(list(), column);
        return widths;
    }
    bool isTruncated(int row, ScheduleColumn column) const {
        const std::string text = window_.rows.text(static_cast<std::size_t>(row), column);
        return scheduler::neededWidth(list(), static_cast<int>(column), text) > width(column);
    }

    test::ListWindow window_; ///< 640 pixels wide
    int room_ = 640 - GetSystemMetrics(SM_CXVSCROLL);
};

TEST_F(ListColumns, FitTheirContentsIfNoWidthsAreSaved) {
    window_.add("a project whose name is long");
    window_.schedule[0].kind = scheduler::ScheduleKind::AtStartup;
    restore();
    EXPECT_FALSE(isTruncated(0, ScheduleColumn::Project));
    EXPECT_FALSE(isTruncated(0, ScheduleColumn::Parameters));
    EXPECT_GT(width(ScheduleColumn::Project), width(ScheduleColumn::LastResult));
    EXPECT_LE(sum(), room_);
    EXPECT_GE(sum(), room_ - 5);
}

TEST_F(ListColumns, FillTheListEvenWithLongTexts) {
    for (int row = 0; row < 20; ++row) // enough for a scroll bar
        window_.add(std::string(200, 'w'), std::string(200, 'w'));
    ASSERT_TRUE(GetWindowLongA(list(), GWL_STYLE) & WS_VSCROLL);
    restore();
    EXPECT_LE(sum(), room_);
    EXPECT_GE(sum(), room_ - 5);
    EXPECT_FALSE(isTruncated(0, ScheduleColumn::LastRun)) << "the widest columns shrink";
}

TEST_F(ListColumns, FitTheirHeadersIfTheScheduleIsEmpty) {
    restore();
    EXPECT_LE(sum(), room_);
    EXPECT_GE(sum(), room_ - 5);
    EXPECT_GE(width(ScheduleColumn::Project), 70);
}

TEST_F(ListColumns, FollowTheFirstEntriesUntilTheUserResizesOne) {
    restore();
    window_.add("news");
    EXPECT_FALSE(isTruncated(0, ScheduleColumn::Schedule));
    EXPECT_GT(width(ScheduleColumn::Schedule), width(ScheduleColumn::Project));
    EXPECT_LE(sum(), room_);

    const HWND header = ListView_GetHeader(list());
    NMHEADERA resized{{header, 0, static_cast<UINT>(HDN_ENDTRACKA)}, 0, 0, nullptr};
    ListView_SetColumnWidth(list(), 0, 60);
    SendMessageA(list(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&resized));
    window_.add("a project whose name is much longer than its header");
    EXPECT_EQ(width(ScheduleColumn::Project), 60);
}

TEST_F(ListColumns, DoNotFollowTheEntriesIfAWidthIsSaved) {
    save(0, 60);
    restore();
    window_.add("a project whose name is much longer than its header");
    EXPECT_EQ(width(ScheduleColumn::Project), 60);
}

TEST_F(ListColumns, AColumnWithAnInvalidSavedWidthFitsBesideTheOthers) {
    window_.add("news");
    for (int column = 0; column < static_cast<int>(scheduler::columnCount); ++column)
        save(column, 60);
    for (const std::uint32_t invalid : {4001U, 0x80000000U}) {
        save(static_cast<int>(ScheduleColumn::LastResult), invalid);
        restore();
        for (int column = 0; column < static_cast<int>(ScheduleColumn::LastResult); ++column)
            EXPECT_EQ(width(static_cast<ScheduleColumn>(column)), 60);
        EXPECT_EQ(sum(), room_);
    }
    for (const int valid : {0, 4000}) {
        save(0, static_cast<std::uint32_t>(valid));
        restore();
        EXPECT_EQ(width(ScheduleColumn::Project), valid);
    }
    EXPECT_GE(width(ScheduleColumn::LastResult), 60) << "its header fits";
    EXPECT_LE(width(ScheduleColumn::LastResult), 150);
}

} // namespace
