#include "lib/base/opsys.h"
#include "tests/scheduler/ui/framework/steppedwindows.h"
#include "tests/scheduler/ui/platformcalls.h"
#include "tests/support/windowlooks.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using framework::sizeOf;
using test::placeOf;

bool isInside(HWND inner, const RECT& outer) {
    RECT common{};
    const RECT place = placeOf(inner);
    return IntersectRect(&common, &place, &outer) && EqualRect(&common, &place);
}

class PropertySheets : public testing::Test {
protected:
    void whileOpen(const std::function<void()>& act) {
        sheet.steps = {act, [&] { sheet.press(IDCANCEL); }};
        EXPECT_EQ(sheet.runSteps(), 2);
    }

    DWORD askedFlags = 0;
    bool ignoresPremature = false; ///< if true, pages are created only when shown
    const test::Override<test::PropertySheetACall> sheets{[this](LPCPROPSHEETHEADERA header) {
        askedFlags = header->dwFlags;
        std::vector<PROPSHEETPAGEA> pages(header->ppsp, header->ppsp + header->nPages);
        for (PROPSHEETPAGEA& page : pages)
            page.dwFlags &= ignoresPremature ? ~DWORD{PSP_PREMATURE} : ~DWORD{0};
        PROPSHEETHEADERA passed = *header;
        passed.ppsp = pages.data();
        return test::PropertySheetACall::original(&passed);
    }};
    test::SteppedSheet sheet;
};

TEST_F(PropertySheets, AreModelessAndShowTheirTitleAndPages) {
    whileOpen([&] {
        EXPECT_EQ(base::windowText(sheet.handle()), "The Sheet");
        EXPECT_EQ(GetWindowLongA(sheet.first.handle(), GWL_ID), IDD_FIRST_PAGE);
        EXPECT_EQ(GetWindowLongA(sheet.second.handle(), GWL_ID), IDD_SECOND_PAGE);
        EXPECT_EQ(framework::Window::of(sheet.first.handle()), &sheet.first);
        EXPECT_EQ(framework::Window::of(sheet.handle()), &sheet);
        EXPECT_EQ(sheet.first.edit.text(), "before");
    });
    EXPECT_EQ(sheet.first.handle(), nullptr);
    EXPECT_EQ(askedFlags, DWORD{PSH_PROPSHEETPAGE | PSH_MODELESS});
    EXPECT_EQ(framework::PropertySheetDialog().run("Without pages", nullptr), 2);
}

TEST_F(PropertySheets, CreateAllPagesBeforeTheyAreShown) {
    for (const bool ignores : {false, true}) {
        SCOPED_TRACE(ignores);
        ignoresPremature = ignores;
        bool wasReady = false;
        sheet.beforeShown = [&] {
            wasReady =
                sheet.first.isStarted() && sheet.second.isStarted() && !IsWindowVisible(sheet.handle());
        };
        whileOpen([&] {
            EXPECT_TRUE(wasReady);
            EXPECT_TRUE(sheet.first.isShown());
            EXPECT_FALSE(sheet.second.isShown());
            EXPECT_EQ(GetFocus(), sheet.first.edit.handle());
        });
    }
}

TEST_F(PropertySheets, CheckPagesNeverShownAndTurnToAFailingPageBeforeItsMessage) {
    bool pageWasShownWithMessage = false;
    test::MessageBoxes boxes;
    boxes.answer = [&](const auto& box) {
        pageWasShownWithMessage = IsWindowVisible(box.owner) != FALSE;
        return IDOK;
    };
    sheet.second.edit.passes = false;
    sheet.second.edit.onFailure = [&] { sheet.second.edit.reportInvalid("Not this one."); };
    whileOpen([&] {
        EXPECT_FALSE(sheet.second.isShown());
        SetWindowTextA(sheet.first.edit.handle(), "after");
        sheet.press(IDOK);
        EXPECT_TRUE(pageWasShownWithMessage);
        EXPECT_TRUE(sheet.second.isShown());
        EXPECT_FALSE(sheet.first.isShown());
    });
    EXPECT_EQ(sheet.log, "load first; load second; check first; check second; ");
    EXPECT_EQ(sheet.first.edit.field, "before") << "the page before the failing one was not stored either";
}

TEST_F(PropertySheets, TurnPagesWithoutChecksAndKeepThePageWhenShownAgain) {
    whileOpen([&] {
        sheet.turnTo(1);
        EXPECT_TRUE(sheet.second.isShown());
        ShowWindow(sheet.handle(), SW_HIDE);
        ShowWindow(sheet.handle(), SW_SHOW);
        EXPECT_TRUE(sheet.second.isShown());
    });
    EXPECT_EQ(sheet.log, "load first; load second; ");
}

TEST_F(PropertySheets, PassIdlePassesOnToTheirPages) {
    whileOpen([&] {
        EXPECT_GE(sheet.second.updates, 1) << "at the start";
        sheet.first.updates = sheet.second.updates = 0;
        sheet.onIdle();
        EXPECT_EQ(sheet.first.updates, 1);
        EXPECT_EQ(sheet.second.updates, 1);
    });
}

TEST_F(PropertySheets, FitAPageToItsFontWithTheButtonsBelowIt) {
    for (const auto& [id, units] : {std::pair{IDD_LARGE_PAGE, RECT{0, 0, 240, 120}},
                                    {IDD_SMALL_PAGE, RECT{0, 0, 240, 120}},
                                    {IDD_FIRST_PAGE, RECT{0, 0, 120, 60}}}) {
        SCOPED_TRACE(id);
        test::SteppedSheet fitted(id);
        LONG widthBeforeShown = 0;
        fitted.beforeShown = [&] { widthBeforeShown = sizeOf(fitted.first.handle()).cx; };
        fitted.steps = {[&, wanted = units, isNarrow = id == IDD_FIRST_PAGE]() mutable {
            const HWND page = fitted.first.handle();
            MapDialogRect(page, &wanted);
            EXPECT_EQ(fitted.first.ownSize().cx, wanted.right);
            EXPECT_EQ(sizeOf(page).cy, wanted.bottom);
            if (isNarrow)
                EXPECT_GE(sizeOf(page).cx, wanted.right) << "wide enough for the sheet's buttons";
            else
                EXPECT_EQ(sizeOf(page).cx, wanted.right);
            EXPECT_EQ(widthBeforeShown, sizeOf(page).cx);

            const auto tabs = reinterpret_cast<HWND>(SendMessageA(fitted.handle(), PSM_GETTABCONTROL, 0, 0));
            RECT client{};
            GetClientRect(fitted.handle(), &client);
            MapWindowPoints(fitted.handle(), nullptr, reinterpret_cast<POINT*>(&client), 2);
            EXPECT_TRUE(isInside(page, placeOf(tabs)));
            EXPECT_TRUE(isInside(tabs, client));
            for (const int button : {IDOK, IDCANCEL}) {
                const HWND window = GetDlgItem(fitted.handle(), button);
                EXPECT_TRUE(isInside(window, client)) << button;
                EXPECT_GE(placeOf(window).top, placeOf(tabs).bottom) << button;
            }
            fitted.press(IDCANCEL);
        }};
        EXPECT_EQ(fitted.runSteps(), 2);
    }
}

TEST_F(PropertySheets, RestoreThePageSizeAfterThePlatformChangesIt) {
    whileOpen([&] {
        const RECT room = placeOf(sheet.first.handle());
        const HWND second = sheet.second.handle();
        // Some platforms resize a page when the sheet turns to it.
        const auto cut = [&] { SetWindowPos(second, HWND_TOP, 0, 0, 50, 30, SWP_NOMOVE); };
        cut();
        sheet.turnTo(1);
        cut();
        EXPECT_TRUE(IsWindowVisible(second));
        const RECT place = placeOf(second);
        EXPECT_TRUE(EqualRect(&place, &room)) << place.right - place.left << "x" << place.bottom - place.top;
    });
}

} // namespace
