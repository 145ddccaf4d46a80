#include "lib/base/opsys.h"
#include "tests/scheduler/ui/editoruser.h"
#include "tests/scheduler/ui/framework/pumping.h"
#include "tests/scheduler/ui/mainwindowtest.h"
#include "tests/scheduler/ui/paintcounter.h"

#include <gmock/gmock.h>

#include <optional>
#include <shlobj.h>

namespace {

using namespace std::string_literals;
using scheduler::ScheduleColumn;
using test::Override;
using test::press;
using testing::ElementsAre;

class WindowCommands : public test::MainWindowTest {
protected:
    void SetUp() override {
        save({entry("run:b"), entry("run:c"), entry("run:a")});
        start("");
    }

    void sortByProject() const {
        NMLISTVIEW click{};
        click.hdr = {list(), IDC_SCHEDULE_LIST, LVN_COLUMNCLICK};
        send(WM_NOTIFY, IDC_SCHEDULE_LIST, reinterpret_cast<LPARAM>(&click));
    }

    /// `paths` are separated by NULs.
    void drop(const std::string& paths) const {
        const HGLOBAL dropped = GlobalAlloc(GHND, sizeof(DROPFILES) + paths.size() + 2);
        auto* const header = static_cast<DROPFILES*>(GlobalLock(dropped));
        header->pFiles = sizeof(DROPFILES);
        paths.copy(reinterpret_cast<char*>(header + 1), paths.size());
        GlobalUnlock(dropped);
        send(WM_DROPFILES, reinterpret_cast<WPARAM>(dropped));
        GlobalFree(dropped);
    }

    static std::string pathIn(HWND sheet) {
        return base::windowText(GetDlgItem(test::projectPageOf(sheet), IDC_PROJECT_PATH));
    }
};

TEST_F(WindowCommands, EditWithoutASelectionAddsAnEntry) {
    framework::MessagePump& pump = framework::MessagePump::instance();
    pump.setAccelerators(LoadAcceleratorsA(base::moduleHandle(), MAKEINTRESOURCEA(IDR_ACCELERATORS)));
    const std::function<void()> ways[] = {
        [&] { command(IDM_EDIT); },
        [&] {
            PostMessageA(list(), WM_KEYDOWN, VK_RETURN, 1);
            test::pumpUntilIdle();
        },
        [&] { // below the rows
            SendMessageA(list(), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(50, 150));
        },
    };
    for (const auto& edit : ways) {
        std::string caption;
        const test::WhileOpen user([&](HWND sheet) {
            caption = base::windowText(sheet);
            press(sheet, IDCANCEL);
        });
        edit();
        EXPECT_EQ(caption, "Add Scheduled Project");
    }
    pump.setAccelerators(nullptr);
}

TEST_F(WindowCommands, EditOpensTheFirstSelectedRowAndRepaintsTheChange) {
    sortByProject();
    select(2);
    select(1);
    std::optional<test::PaintCounter> paintings;
    const test::WhileOpen user([&](HWND sheet) {
        EXPECT_EQ(base::windowText(sheet), "Edit Scheduled Task");
        EXPECT_EQ(pathIn(sheet), "run:b");
        test::setPath(sheet, "run:edited");
        paintings.emplace(list());
        press(sheet, IDOK);
    });
    command(IDM_EDIT);
    EXPECT_EQ(paintings->count, 1);
    EXPECT_EQ(cell(1, ScheduleColumn::Project), "run:edited");
    EXPECT_EQ(saved()[0].path, "run:edited");
}

TEST_F(WindowCommands, AnEntryOfASortedListCannotFollowItself) {
    sortByProject();
    select(0);
    const test::WhileOpen user([](HWND sheet) {
        EXPECT_EQ(pathIn(sheet), "run:a");
        EXPECT_THAT(test::itemTexts(GetDlgItem(test::schedulePageOf(sheet), IDC_AFTER_PROJECT)),
                    ElementsAre("run:b", "run:c"));
        press(sheet, IDCANCEL);
    });
    command(IDM_EDIT);
}

TEST_F(WindowCommands, TwoChosenFilesAddTwoEntries) {
    const test::WhileOpen user([](HWND sheet) {
        test::browse(sheet, "C:\\Sites\0a.kra\0b.kra\0"s);
        SetDlgItemTextA(test::schedulePageOf(sheet), IDC_AFTER_DELAY, "5");
        press(sheet, IDOK);
    });
    command(IDM_ADD);
    ASSERT_EQ(saved().size(), 5U);
    EXPECT_EQ(saved()[3].path, "C:\\Sites\\a.kra");
    EXPECT_EQ(saved()[4].path, "C:\\Sites\\\\b.kra");
    EXPECT_EQ(saved()[3].minutes, 5);
    EXPECT_EQ(saved()[4].minutes, 5);
    EXPECT_EQ(ListView_GetItemCount(list()), 5);
}

TEST_F(WindowCommands, ThePhoneBookIsReadOnlyWhenAnEditorOpens) {
    const int before = test::phoneBookQueries;
    start("");
    tick();
    command(IDM_SUSPEND);
    EXPECT_EQ(test::phoneBookQueries, before);
    const test::WhileOpen user([](HWND sheet) { press(sheet, IDCANCEL); });
    command(IDM_ADD);
    EXPECT_EQ(test::phoneBookQueries, before + 1);
}

TEST_F(WindowCommands, TheMenuOfAnEntryOpensAtThePointer) {
    int menus = 0;
    const Override<test::GetCursorPosCall> pointer([](POINT* place) {
        *place = {321, 123};
        return TRUE;
    });
    const Override<test::TrackPopupMenuCall> menu(
        [&](HMENU opened, UINT flags, int x, int y, int, HWND owner, const RECT*) {
            ++menus;
            EXPECT_EQ(GetMenuItemCount(opened), 7);
            EXPECT_EQ(GetMenuItemID(opened, 0), UINT{IDM_ADD});
            EXPECT_EQ(flags, UINT{TPM_RIGHTBUTTON});
            EXPECT_EQ(x, 321);
            EXPECT_EQ(y, 123);
            EXPECT_EQ(owner, handle());
            return TRUE;
        });
    SendMessageA(list(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(list()), MAKELPARAM(7, 8));
    EXPECT_EQ(menus, 1);
    std::array<BYTE, 256> keys{};
    keys[VK_SHIFT] = 0x80;
    SetKeyboardState(keys.data());
    SendMessageA(list(), WM_SYSKEYDOWN, VK_F10, 1);
    keys[VK_SHIFT] = 0;
    SetKeyboardState(keys.data());
    EXPECT_EQ(menus, 2) << "by Shift+F10";
    send(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(handle()), MAKELPARAM(9999, 9999));
    EXPECT_EQ(menus, 2) << "only over the list";
}

TEST_F(WindowCommands, ARightClickOnTheTitleBarOpensTheSystemMenu) {
    class MenuWatch : public framework::MessageFilter {
    public:
        bool windowMenuOpened = false;

        framework::Handled filterMessage(framework::Window& window,
                                         const framework::Message& message) override {
            if (message.id == WM_INITMENUPOPUP)
                windowMenuOpened =
                    reinterpret_cast<HMENU>(message.wParam) == GetSystemMenu(window.handle(), FALSE);
            if (message.id == WM_ENTERIDLE)
                EndMenu();
            return std::nullopt;
        }
    } watch;
    RECT place{};
    GetWindowRect(handle(), &place);
    mainWindow->addFilter(watch);
    send(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(handle()), MAKELPARAM(place.left + 100, place.top + 8));
    mainWindow->removeFilter(watch);
    EXPECT_TRUE(watch.windowMenuOpened);
}

TEST_F(WindowCommands, DroppedFilesAreAddedAndTheDropHandleIsNotFreed) {
    const Override<test::DragFinishCall> release(
        [](HDROP) { ADD_FAILURE() << "the shell's drop handle was freed"; });
    drop("C:\\Sites\\one.kra\0C:\\Sites\\TWO.KRB"s);
    ASSERT_EQ(saved().size(), 5U);
    EXPECT_EQ(saved()[3].path, "C:\\Sites\\one.kra");
    EXPECT_EQ(saved()[4].path, "C:\\Sites\\TWO.KRB");
}

TEST_F(WindowCommands, AnAcceleratorDoesNothingInAHiddenWindow) {
    select(0);
    command(IDM_CLOSE);
    send(WM_COMMAND, MAKEWPARAM(IDM_DELETE, 1)); // as an accelerator sends it
    EXPECT_EQ(ListView_GetItemCount(list()), 3);
    command(IDM_DELETE);
    EXPECT_EQ(ListView_GetItemCount(list()), 2);
}

TEST_F(WindowCommands, AnOpenedMenuReflectsTheSelectionAndTheSuspension) {
    const HMENU bar = GetMenu(handle());
    const auto stateOf = [&](int id) { return GetMenuState(bar, static_cast<UINT>(id), MF_BYCOMMAND); };
    const auto openAll = [&] {
        for (int position = 0; position < GetMenuItemCount(bar); ++position)
            send(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(GetSubMenu(bar, position)));
    };
    openAll();
    EXPECT_TRUE(stateOf(IDM_EDIT) & MF_GRAYED);
    select(0);
    command(IDM_SUSPEND);
    openAll();
    EXPECT_FALSE(stateOf(IDM_EDIT) & MF_GRAYED);
    std::array<char, 20> text{};
    GetMenuStringA(bar, IDM_SUSPEND, text.data(), static_cast<int>(text.size()), MF_BYCOMMAND);
    EXPECT_STREQ(text.data(), "Resume");
    const HMENU own = GetSystemMenu(handle(), FALSE);
    send(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(own), MAKELPARAM(0, TRUE));
    EXPECT_EQ(GetMenuDefaultItem(own, FALSE, 0), UINT{SC_CLOSE}) << "the system menu is not changed";
}

TEST_F(WindowCommands, ADialogIsOwnedByTheActiveWindowOrElseTheMainWindow) {
    select(0);
    const HWND other = test::createPlain("STATIC", WS_POPUP | WS_VISIBLE, {0, 0, 50, 50});
    for (const HWND active : {other, handle(), HWND{}})
        for (const int id : {IDM_ADD, IDM_EDIT, IDM_PREFERENCES, IDM_ABOUT}) {
            SCOPED_TRACE(id);
            SetActiveWindow(active);
            ASSERT_EQ(GetActiveWindow(), active);
            const test::WhileOpen user([&](HWND dialog) {
                const HWND owner = GetWindow(dialog, GW_OWNER);
                EXPECT_EQ(owner, active ? active : handle());
                EXPECT_FALSE(IsWindowEnabled(owner));
                SendMessageA(dialog, WM_CLOSE, 0, 0);
            });
            command(id);
        }
    DestroyWindow(other);
}

TEST_F(WindowCommands, ADisabledWindowDoesNotChangeTheSchedule) {
    select(0);
    EnableWindow(handle(), FALSE); // as a modal window does with its owner
    for (const int id : {IDM_ADD, IDM_EDIT, IDM_DELETE, IDM_RUN, IDM_ENABLE})
        command(id);
    drop("C:\\Sites\\dropped.kra");
    EXPECT_EQ(saved().size(), 3U);
    EXPECT_FALSE(saved()[0].disabled);
    EXPECT_EQ(ListView_GetItemCount(list()), 3);
    EXPECT_NE(nextRun(0), "Running");

    EnableWindow(handle(), TRUE);
    command(IDM_ENABLE);
    drop("C:\\Sites\\dropped.kra");
    EXPECT_EQ(saved().size(), 4U);
    EXPECT_TRUE(saved()[0].disabled);
}

TEST_F(WindowCommands, TheHelpCommandOpensTheHelp) {
    HWND owner = nullptr;
    const Override<test::WinHelpACall> help([&](HWND window, LPCSTR, UINT, ULONG_PTR) {
        owner = window;
        return TRUE;
    });
    command(IDM_HELP);
    EXPECT_EQ(owner, handle());
}

TEST_F(WindowCommands, ADisabledWindowStillSuspendsShowsAndExits) {
    start("/s");
    EnableWindow(handle(), FALSE);
    command(IDM_SUSPEND);
    EXPECT_EQ(base::windowText(handle()), "Corvane Scheduler (suspended)");
    command(IDM_DISPLAY);
    EXPECT_TRUE(IsWindowVisible(handle()));
    boxes.answer = [](const auto&) { return IDYES; };
    PostMessageA(handle(), WM_COMMAND, IDM_EXIT, 0);
    EXPECT_EQ(framework::MessagePump::instance().runMainLoop(), 0);
}

TEST_F(WindowCommands, ADisabledWindowStillStartsDueEntriesAndRecordsTheirEnd) {
    start("/s");
    EnableWindow(handle(), FALSE);
    tick();
    EXPECT_EQ(nextRun(0), "Running");
    send(scheduler::WM_RUN_FINISHED, 1);
    EXPECT_NE(saved()[0].lastRun, base::TimeValue());
}

} // namespace
