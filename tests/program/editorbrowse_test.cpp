// Tests the editor's Browse button with the platform's dialog.

#include "resources/ids.h"
#include "scheduler/ui/framework/browselayout.h"
#include "tests/program/editordriver.h"
#include "tests/program/programtest.h"

#include <gmock/gmock.h>

#include <dlgs.h>

using driver::waitUntil;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;
using testing::SizeIs;

namespace {

class Browse : public driver::ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        for (const char* name : {"news.kra", "shop.krb", "old.krc"})
            driver::writeText(folder_ + name, "");
        startWith({driver::sleeping(folder_ + "news.kra")});
    }

    static HWND dialog() {
        const HWND window = FindWindowA("#32770", "Browse");
        return window && IsWindowVisible(window) ? window : nullptr;
    }

    static HWND nameField() {
        const HWND list = GetDlgItem(dialog(), cmb13);
        return list ? list : GetDlgItem(dialog(), edt1);
    }

    void browse() const {
        PostMessageA(editor_.item(framework::browseButtonIdOf(IDC_PROJECT_PATH)), BM_CLICK, 0, 0);
        ASSERT_TRUE(waitUntil([] { return dialog() && nameField(); }));
    }

    static void open(const std::string& names) {
        SendMessageA(nameField(), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(names.c_str()));
        PostMessageA(GetDlgItem(dialog(), IDOK), BM_CLICK, 0, 0);
    }

    bool pathBecomes(const std::string& text) const {
        return waitUntil([&] { return !dialog() && editor_.text(IDC_PROJECT_PATH) == text; });
    }

    const std::string folder_ = driver::makeTestFolder();
    driver::EditorDriver editor_{scheduler_};
};

TEST_F(Browse, ThreeFilesAddThreeEntriesWithTheSameSchedule) {
    ASSERT_TRUE(editor_.openAdd());
    ASSERT_NO_FATAL_FAILURE(browse());
    open(folder_); // changes to that folder
    ASSERT_TRUE(waitUntil([] { return driver::textOf(nameField()).empty(); }));
    open(R"("news.kra" "shop.krb" "old.krc")");
    ASSERT_TRUE(
        pathBecomes("\"" + folder_ + "news.kra\" \"" + folder_ + "shop.krb\" \"" + folder_ + "old.krc\""));
    ASSERT_TRUE(editor_.replace(IDC_TIME_LIMIT, "25"));
    ASSERT_TRUE(editor_.chooseKind(ScheduleKind::Monthly));
    ASSERT_TRUE(editor_.replace(IDC_MONTHLY_DAY, "12"));
    const auto saved = editor_.saveByOk();
    ASSERT_THAT(saved, SizeIs(4));
    ScheduledProject wanted = saved[1];
    EXPECT_EQ(wanted.kind, ScheduleKind::Monthly);
    EXPECT_EQ(wanted.dayOfMonth, 12);
    EXPECT_EQ(wanted.timeLimitMinutes, 25);
    EXPECT_EQ(wanted.path, folder_ + "news.kra");
    wanted.path = folder_ + "\\shop.krb";
    EXPECT_EQ(saved[2], wanted);
    wanted.path = folder_ + "\\old.krc";
    EXPECT_EQ(saved[3], wanted);
}

TEST_F(Browse, StartsAtTheCurrentPathAndReplacesIt) {
    list().select({0});
    ASSERT_TRUE(editor_.openEdit());
    ASSERT_NO_FATAL_FAILURE(browse());
    EXPECT_TRUE(waitUntil([] { return driver::textOf(nameField()).find("news.kra") != std::string::npos; }));
    open("old.krc");
    ASSERT_TRUE(pathBecomes(folder_ + "old.krc"));
    const auto saved = editor_.saveByOk();
    ASSERT_THAT(saved, SizeIs(1));
    EXPECT_EQ(saved[0].path, folder_ + "old.krc");
}

} // namespace
