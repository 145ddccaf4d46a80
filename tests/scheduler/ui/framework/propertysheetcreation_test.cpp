// How a property sheet and its pages are created.

#include "lib/base/opsys.h"
#include "tests/scheduler/ui/framework/steppedsheet.h"
#include "tests/support/importedfunctions.h"

#include <gtest/gtest.h>

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

using test::SteppedSheet;

TEST(PropertySheetCreation, OneWithAPageThatCouldNotBeLoadedIsNotMade) {
    SteppedSheet sheet;
    sheet.second.failsToLoad = true;
    EXPECT_EQ(sheet.runSteps(), framework::notMade);
    EXPECT_EQ(sheet.log, "");
    EXPECT_EQ(sheet.handle(), nullptr);
}

TEST(PropertySheetCreation, ItsWindowsAreMadeAsDeclared) {
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

TEST(PropertySheetCreation, AllItsPagesAreMadeBeforeItIsShown) {
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

TEST(PropertySheetCreation, StaysAtItsPageWhenItIsHiddenAndShownAgain) {
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

TEST(PropertySheetCreation, IsMadeModelessAndWithoutAnythingBeyondItsPages) {
    SteppedSheet sheet;
    sheet.steps = {[&] { sheet.press(IDCANCEL); }};
    sheet.runSteps();
    EXPECT_EQ(askedFlags, DWORD{PSH_PROPSHEETPAGE | PSH_MODELESS});
}

TEST(PropertySheetCreation, WithoutPagesItIsCancelled) {
    framework::PropertySheetDialog sheet;
    EXPECT_EQ(sheet.run("Empty", nullptr), 2);
}

} // namespace
