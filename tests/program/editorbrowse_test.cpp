// The platform's own Browse dialog, behind the editor's button.

#include "resources/ids.h"
#include "scheduler/ui/framework/browselayout.h"
#include "tests/program/editordriver.h"
#include "tests/program/listdriver.h"
#include "tests/program/programtest.h"

#include <gmock/gmock.h>

#include <dlgs.h>

using driver::EditorDriver;
using driver::waitUntil;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;
using testing::SizeIs;

namespace {

constexpr int browseButton = framework::browseButtonIdOf(IDC_PROJECT_PATH);

class BrowseInEditor : public driver::ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        for (const char* name : {"news.kra", "shop.krb", "old.krc"})
            driver::writeText(folder_ + name, "");
        driver::saveEntries({driver::sleeping(folder_ + "news.kra")});
        ASSERT_TRUE(scheduler_.start());
    }

    static HWND dialog() {
        const HWND window = FindWindowA("#32770", "Browse");
        return window && IsWindowVisible(window) ? window : nullptr;
    }

    /// The field for names, which is a list, too, where such names are remembered.
    static HWND nameField() {
        const HWND list = GetDlgItem(dialog(), cmb13);
        return list ? list : GetDlgItem(dialog(), edt1);
    }

    static void open(const std::string& names) {
        SendMessageA(nameField(), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(names.c_str()));
        PostMessageA(GetDlgItem(dialog(), IDOK), BM_CLICK, 0, 0);
    }

    /// Opens the dialog, types into its field for names and presses Open.
    void browseFor(const std::string& names) const {
        PostMessageA(editor_.item(browseButton), BM_CLICK, 0, 0);
        ASSERT_TRUE(waitUntil([] { return dialog() && nameField(); }));
        open(names);
    }

    static bool dialogCloses() {
        return waitUntil([] { return dialog() == nullptr; });
    }

    const std::string folder_ = driver::makeTestFolder();
    EditorDriver editor_{scheduler_};
};

TEST_F(BrowseInEditor, OneFileIsItsPlainPath) {
    ASSERT_TRUE(editor_.openAdd());
    ASSERT_NO_FATAL_FAILURE(browseFor(folder_ + "shop.krb"));
    ASSERT_TRUE(dialogCloses());
    EXPECT_TRUE(waitUntil([&] { return editor_.text(IDC_PROJECT_PATH) == folder_ + "shop.krb"; }))
        << editor_.text(IDC_PROJECT_PATH);
    const auto saved = editor_.saveByOk();
    ASSERT_THAT(saved, SizeIs(2));
    EXPECT_EQ(saved[1].path, folder_ + "shop.krb");
}

TEST_F(BrowseInEditor, ThreeFilesAreThreeEntriesWithOneSchedule) {
    ASSERT_TRUE(editor_.openAdd());
    ASSERT_NO_FATAL_FAILURE(browseFor(folder_)); // goes there first
    ASSERT_TRUE(waitUntil([] { return driver::textOf(nameField()).empty(); }));
    open(R"("news.kra" "shop.krb" "old.krc")");
    ASSERT_TRUE(dialogCloses());
    const std::string wanted =
        "\"" + folder_ + "news.kra\" \"" + folder_ + "shop.krb\" \"" + folder_ + "old.krc\"";
    EXPECT_TRUE(waitUntil([&] { return editor_.text(IDC_PROJECT_PATH) == wanted; }))
        << editor_.text(IDC_PROJECT_PATH);
    ASSERT_TRUE(editor_.replace(IDC_TIME_LIMIT, "25"));
    ASSERT_TRUE(editor_.chooseKind(ScheduleKind::Monthly));
    ASSERT_TRUE(editor_.replace(IDC_MONTHLY_DAY, "12"));
    const auto saved = editor_.saveByOk();
    ASSERT_THAT(saved, SizeIs(4));
    EXPECT_EQ(saved[1].path, folder_ + "news.kra");
    EXPECT_EQ(saved[2].path, folder_ + "\\shop.krb");
    EXPECT_EQ(saved[3].path, folder_ + "\\old.krc");
    for (std::size_t added = 1; added < 4; ++added) {
        ScheduledProject entry = saved[added];
        entry.path = saved[1].path;
        EXPECT_EQ(entry, saved[1]);
        EXPECT_EQ(entry.kind, ScheduleKind::Monthly);
        EXPECT_EQ(entry.dayOfMonth, 12);
        EXPECT_EQ(entry.timeLimitMinutes, 25);
    }
}

TEST_F(BrowseInEditor, CancelLeavesTheText) {
    ASSERT_TRUE(editor_.openAdd());
    ASSERT_TRUE(editor_.replace(IDC_PROJECT_PATH, "run:backup.exe"));
    PostMessageA(editor_.item(browseButton), BM_CLICK, 0, 0);
    ASSERT_TRUE(waitUntil([] { return dialog() != nullptr; }));
    PostMessageA(GetDlgItem(dialog(), IDCANCEL), BM_CLICK, 0, 0);
    ASSERT_TRUE(dialogCloses());
    EXPECT_EQ(editor_.text(IDC_PROJECT_PATH), "run:backup.exe");
}

TEST_F(BrowseInEditor, StartsFromTheFileThatTheFieldNames) {
    const driver::ListDriver list(scheduler_.window());
    list.select({0});
    ASSERT_TRUE(editor_.openEdit());
    PostMessageA(editor_.item(browseButton), BM_CLICK, 0, 0);
    EXPECT_TRUE(waitUntil(
        [] { return dialog() && driver::textOf(nameField()).find("news.kra") != std::string::npos; }));
    open("old.krc");
    ASSERT_TRUE(dialogCloses());
    const auto saved = editor_.saveByOk();
    ASSERT_THAT(saved, SizeIs(1));
    EXPECT_EQ(saved[0].path, folder_ + "old.krc");
}

} // namespace
