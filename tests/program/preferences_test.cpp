#include "lib/base/registry.h"
#include "resources/ids.h"
#include "tests/program/programtest.h"

#include <array>

using driver::waitUntil;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;

namespace {

class PreferencesJourney : public driver::ProgramTest {
protected:
    void open() {
        scheduler_.command(IDM_PREFERENCES);
        dialog_ = waitForBox();
        ASSERT_NE(dialog_, nullptr);
    }

    HWND item(int id) const { return GetDlgItem(dialog_, id); }
    void click(int id) const { SendMessageA(item(id), BM_CLICK, 0, 0); }
    bool isChecked(int id) const { return SendMessageA(item(id), BM_GETCHECK, 0, 0) == BST_CHECKED; }
    std::string minutes() const { return driver::textOf(item(IDC_WAIT_TIME)); }

    void pressOk() const {
        click(IDOK);
        ASSERT_TRUE(waitUntil([&] { return !IsWindow(dialog_) && IsWindowEnabled(window()); }));
    }

    /// Autostart, RunMultiple and WaitTime; 99999 if missing.
    static std::array<unsigned, 3> saved() {
        const auto number = [](const char* name) {
            return base::getNumber(HKEY_CURRENT_USER, driver::stateKey + "\\" + name, 99999);
        };
        return {number("Autostart"), number("RunMultiple"), number("WaitTime")};
    }

    HWND dialog_ = nullptr;
};

TEST_F(PreferencesJourney, OkSavesPreferencesForTheNextStartAndExitRegistersAutostart) {
    for (const bool changed : {true, false}) {
        ASSERT_TRUE(scheduler_.start());
        open();
        EXPECT_EQ(isChecked(IDC_AUTOSTART), changed);
        EXPECT_EQ(isChecked(IDC_RUN_BESIDE_FIRST), !changed);
        EXPECT_EQ(minutes(), changed ? "20" : "1440");
        click(IDC_AUTOSTART);
        SetDlgItemTextA(dialog_, IDC_WAIT_TIME, changed ? "1440" : "45");
        click(changed ? IDC_RUN_BESIDE_FIRST : IDC_WAIT_FOR_FIRST);
        pressOk();

        const std::array<unsigned, 3> wanted = changed ? std::array{0U, 1U, 1440U} : std::array{1U, 0U, 45U};
        waitUntil([&] { return saved() == wanted; });
        EXPECT_EQ(saved(), wanted);
        EXPECT_TRUE(scheduler_.exit());
        EXPECT_EQ(base::getString(HKEY_LOCAL_MACHINE, driver::autostartValue).empty(), changed);
    }
}

TEST_F(PreferencesJourney, AChangedPolicyAppliesAtOnce) {
    const driver::SampleSpider spider;
    ScheduledProject slow = driver::sleeping(spider.makeProject("slow.kra", spider.untilReleased()));
    startWith({slow, driver::sleeping(spider.makeProject("quick.kra"))}, "/s");
    carryOut(IDM_DISPLAY);
    for (int tick = 0; tick < 3; ++tick)
        scheduler_.tick();
    EXPECT_EQ(list().cell(0, driver::nextRunColumn), "Running");
    EXPECT_EQ(list().cell(1, driver::nextRunColumn), "Now") << "the second entry waits for the first";

    open();
    click(IDC_RUN_BESIDE_FIRST);
    pressOk();
    EXPECT_TRUE(waitUntil([&] { return spider.logged("end run 2") == 1; }));
    EXPECT_EQ(spider.logged("end run 1"), 0U);
    spider.release();
}

} // namespace
