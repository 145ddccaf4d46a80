#include "lib/base/opsys.h"
#include "scheduler/ui/framework/edit.h"
#include "scheduler/ui/framework/propertysheet.h"
#include "scheduler/ui/framework/windowclass.h"
#include "tests/scheduler/ui/framework/testdialogs.h"
#include "tests/scheduler/ui/simulatedmessagebox.h"
#include "tests/support/importedfunctions.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

DWORD askedFlags = 0;

/// As with a platform that creates a page no earlier than the sheet turns to it.
bool ignoresPremature = false;

INT_PTR WINAPI watchedPropertySheet(LPCPROPSHEETHEADERA header) {
    askedFlags = header->dwFlags;
    std::vector<PROPSHEETPAGEA> pages(header->ppsp, header->ppsp + header->nPages);
    if (ignoresPremature)
        for (PROPSHEETPAGEA& page : pages)
            page.dwFlags &= ~DWORD{PSP_PREMATURE};
    PROPSHEETHEADERA passed = *header;
    passed.ppsp = pages.data();
    return test::platformFunction<decltype(&PropertySheetA)>("comctl32.dll", "PropertySheetA")(&passed);
}

} // namespace

SCHEDULER_REPLACE_IMPORT(PropertySheetA, "_PropertySheetA@4", watchedPropertySheet);

namespace {

using Steps = std::vector<std::function<void()>>;

class OnePage : public framework::PropertyPage {
public:
    OnePage(int templateId, int editId, std::string name, std::string& log)
        : PropertyPage(templateId),
          edit(*this, editId, framework::bindText(text)),
          name_(std::move(name)),
          log_(log) {}

    void load() override {
        if (failsToLoad)
            throw std::runtime_error("refused");
        PropertyPage::load();
    }
    bool check() override {
        log_ += "check " + name_ + "; ";
        if (!passes) {
            edit.reportInvalid("Not this one.");
            shownWhenFailing = IsWindowVisible(handle());
        }
        return passes && PropertyPage::check();
    }
    void store() override {
        log_ += "store " + name_ + "; ";
        PropertyPage::store();
    }

    std::string text = "before";
    framework::Edit edit;
    bool failsToLoad = false;
    bool passes = true;
    bool shownWhenFailing = false;
    int updates = 0;

protected:
    void updateState() override { ++updates; }

private:
    std::string name_;
    std::string& log_;
};

/// Runs its steps one after the other, each on a message that is posted behind the one before.
class SteppedSheet : public framework::PropertySheetDialog {
public:
    SteppedSheet() {
        add(first);
        add(second);
    }

    int runSteps(HWND owner = nullptr) {
        began_ = false;
        const int result = run("The Sheet", owner);
        EXPECT_EQ(began_, !steps.empty());
        return result;
    }
    void press(int id) { SendMessageA(GetDlgItem(handle(), id), BM_CLICK, 0, 0); }
    bool isShown(const framework::PropertyPage& page) const { return IsWindowVisible(page.handle()); }
    void turnTo(int page) { SendMessageA(handle(), PSM_SETCURSEL, static_cast<WPARAM>(page), 0); }

    std::string log;
    OnePage first{IDD_FIRST_PAGE, IDC_TEXT, "first", log};
    OnePage second{IDD_SECOND_PAGE, IDC_SECOND_TEXT, "second", log};
    Steps steps;
    bool wasReadyWhenShown = false;

protected:
    void onAttached() override { PostMessageA(handle(), step, 0, 0); }

    framework::Handled onMessage(const framework::Message& message) override {
        if (message.id != step) {
            const framework::Handled handled = PropertySheetDialog::onMessage(message);
            if (message.id == WM_SHOWWINDOW && message.wParam)
                wasReadyWhenShown = first.isStarted() && second.isStarted() && !IsWindowVisible(handle());
            return handled;
        }
        if (message.wParam < steps.size()) {
            began_ = true;
            steps[message.wParam]();
            if (handle())
                PostMessageA(handle(), step, message.wParam + 1, 0);
        } else if (!isModalFinished()) {
            ADD_FAILURE() << "the sheet did not end";
            DestroyWindow(handle());
        }
        return 0;
    }

private:
    static constexpr UINT step = WM_APP + 1;

    bool began_ = false;
};

TEST(PropertySheet, OkChecksEachPageInTurnThenStoresAllAndGivesOne) {
    SteppedSheet sheet;
    sheet.steps = {[&] {
        SetWindowTextA(sheet.first.edit.handle(), "after");
        sheet.press(IDOK);
    }};
    EXPECT_EQ(sheet.runSteps(), 1);
    EXPECT_EQ(sheet.log, "check first; check second; store first; store second; ");
    EXPECT_EQ(sheet.first.text, "after");
    EXPECT_EQ(sheet.second.text, "before");
    EXPECT_EQ(sheet.handle(), nullptr);
}

TEST(PropertySheet, OneWithAPageThatCouldNotBeLoadedIsNotMade) {
    SteppedSheet sheet;
    sheet.second.failsToLoad = true;
    EXPECT_EQ(sheet.runSteps(), framework::notMade);
    EXPECT_EQ(sheet.log, "");
    EXPECT_EQ(sheet.handle(), nullptr);
}

TEST(PropertySheet, CancelStoresNothingAndGivesTwo) {
    SteppedSheet sheet;
    sheet.steps = {[&] {
        SetWindowTextA(sheet.first.edit.handle(), "after");
        sheet.press(IDCANCEL);
    }};
    EXPECT_EQ(sheet.runSteps(), 2);
    EXPECT_EQ(sheet.log, "");
    EXPECT_EQ(sheet.first.text, "before");
}

TEST(PropertySheet, ClosingItGivesTwo) {
    SteppedSheet sheet;
    sheet.steps = {[&] { SendMessageA(sheet.handle(), WM_SYSCOMMAND, SC_CLOSE, 0); }};
    EXPECT_EQ(sheet.runSteps(), 2);
    EXPECT_EQ(sheet.log, "");
}

TEST(PropertySheet, EnterIsOkAndEscapeIsCancel) {
    for (const auto& [key, result] : {std::pair{VK_RETURN, 1}, std::pair{VK_ESCAPE, 2}}) {
        SteppedSheet sheet;
        sheet.steps = {[&, pressed = key] {
                           PostMessageA(sheet.first.edit.handle(), WM_KEYDOWN, static_cast<WPARAM>(pressed),
                                        1);
                       },
                       [] {}};
        EXPECT_EQ(sheet.runSteps(), result);
    }
}

TEST(PropertySheet, AFailingPageKeepsItOpenAndNothingIsStored) {
    SteppedSheet sheet;
    sheet.first.passes = false;
    sheet.steps = {[&] { sheet.press(IDOK); },
                   [&] {
                       EXPECT_FALSE(sheet.isModalFinished());
                       EXPECT_EQ(sheet.log, "check first; ") << "the first that fails is the last";
                       sheet.first.passes = true;
                       sheet.press(IDOK);
                   }};
    EXPECT_EQ(sheet.runSteps(), 1);
}

TEST(PropertySheet, APageThatWasNeverShownIsCheckedTooAndTurnedTo) {
    SteppedSheet sheet;
    sheet.second.passes = false;
    sheet.steps = {[&] {
                       EXPECT_TRUE(sheet.isShown(sheet.first));
                       EXPECT_FALSE(sheet.isShown(sheet.second));
                       SetWindowTextA(sheet.first.edit.handle(), "after");
                       sheet.press(IDOK);
                   },
                   [&] {
                       EXPECT_EQ(sheet.log, "check first; check second; ");
                       EXPECT_TRUE(sheet.isShown(sheet.second));
                       EXPECT_FALSE(sheet.isShown(sheet.first));
                       EXPECT_TRUE(sheet.second.shownWhenFailing)
                           << "the user sees what the message is about";
                       sheet.press(IDCANCEL);
                   }};
    EXPECT_EQ(sheet.runSteps(), 2);
    EXPECT_EQ(sheet.first.text, "before") << "the page before the failing one was not stored either";
}

TEST(PropertySheet, PagesCanBeTurnedWithoutBeingChecked) {
    SteppedSheet sheet;
    sheet.first.passes = false;
    sheet.steps = {[&] {
        sheet.turnTo(1);
        EXPECT_TRUE(sheet.isShown(sheet.second));
        sheet.press(IDCANCEL);
    }};
    sheet.runSteps();
    EXPECT_EQ(sheet.log, "");
}

TEST(PropertySheet, ItsWindowsAreMadeAsDeclared) {
    SteppedSheet sheet;
    sheet.steps = {[&] {
        EXPECT_EQ(base::windowText(sheet.handle()), "The Sheet");
        EXPECT_EQ(GetWindowLongA(sheet.first.handle(), GWL_ID), IDD_FIRST_PAGE);
        EXPECT_EQ(GetWindowLongA(sheet.second.handle(), GWL_ID), IDD_SECOND_PAGE);
        EXPECT_EQ(framework::Window::of(sheet.first.handle()), &sheet.first);
        EXPECT_EQ(framework::Window::of(sheet.handle()), &sheet);
        EXPECT_EQ(sheet.first.edit.text(), "before");
        sheet.press(IDCANCEL);
    }};
    sheet.runSteps();
    EXPECT_EQ(sheet.first.handle(), nullptr);
}

TEST(PropertySheet, AllItsPagesAreMadeBeforeItIsShown) {
    for (const bool ignores : {false, true}) {
        SCOPED_TRACE(ignores);
        ignoresPremature = ignores;
        SteppedSheet sheet;
        sheet.steps = {[&] {
            EXPECT_TRUE(sheet.wasReadyWhenShown);
            EXPECT_TRUE(sheet.isShown(sheet.first));
            EXPECT_FALSE(sheet.isShown(sheet.second));
            EXPECT_EQ(GetFocus(), sheet.first.edit.handle());
            sheet.press(IDCANCEL);
        }};
        sheet.runSteps();
        ignoresPremature = false;
    }
}

TEST(PropertySheet, StaysAtItsPageWhenItIsHiddenAndShownAgain) {
    SteppedSheet sheet;
    sheet.steps = {[&] {
        sheet.turnTo(1);
        ShowWindow(sheet.handle(), SW_HIDE);
        ShowWindow(sheet.handle(), SW_SHOW);
        EXPECT_TRUE(sheet.isShown(sheet.second));
        sheet.press(IDCANCEL);
    }};
    sheet.runSteps();
}

TEST(PropertySheet, IsMadeModelessAndWithoutAnythingBeyondItsPages) {
    SteppedSheet sheet;
    sheet.steps = {[&] { sheet.press(IDCANCEL); }};
    sheet.runSteps();
    EXPECT_EQ(askedFlags, DWORD{PSH_PROPSHEETPAGE | PSH_MODELESS});
}

TEST(PropertySheet, AnIdlePassReachesThePages) {
    SteppedSheet sheet;
    sheet.steps = {[&] {
        const int first = sheet.first.updates;
        const int second = sheet.second.updates;
        EXPECT_GE(second, 1) << "at the start";
        sheet.onIdle();
        EXPECT_EQ(sheet.first.updates, first + 1);
        EXPECT_EQ(sheet.second.updates, second + 1);
        sheet.press(IDCANCEL);
    }};
    sheet.runSteps();
}

TEST(PropertySheet, TheOwnerIsDisabledWhileItRunsAndTheFocusComesBack) {
    framework::Window owner;
    framework::WindowClass windowClass;
    framework::WindowParameters parameters;
    parameters.style = WS_OVERLAPPEDWINDOW | WS_VISIBLE;
    ASSERT_TRUE(owner.create(windowClass, parameters));
    const HWND field = CreateWindowExA(0, "EDIT", "", WS_CHILD | WS_VISIBLE, 0, 0, 50, 20, owner.handle(),
                                       nullptr, nullptr, nullptr);
    SetFocus(field);
    SteppedSheet sheet;
    sheet.steps = {[&] {
        EXPECT_FALSE(IsWindowEnabled(owner.handle()));
        EXPECT_EQ(GetWindow(sheet.handle(), GW_OWNER), owner.handle());
        sheet.press(IDCANCEL);
    }};
    sheet.runSteps(owner.handle());
    EXPECT_TRUE(IsWindowEnabled(owner.handle()));
    EXPECT_EQ(GetFocus(), field);
}

TEST(PropertySheet, OneWhoseWindowDiesIsCancelled) {
    SteppedSheet sheet;
    sheet.steps = {[&] { DestroyWindow(sheet.handle()); }};
    EXPECT_EQ(sheet.runSteps(), 2);
    EXPECT_EQ(sheet.log, "");
}

TEST(PropertySheet, CanBeRunAgain) {
    SteppedSheet sheet;
    sheet.steps = {[&] { sheet.press(IDOK); }};
    EXPECT_EQ(sheet.runSteps(), 1);
    EXPECT_EQ(sheet.runSteps(), 1);
}

TEST(PropertySheet, WithoutPagesItIsCancelled) {
    framework::PropertySheetDialog sheet;
    EXPECT_EQ(sheet.run("Empty", nullptr), 2);
}

} // namespace
