#include "lib/base/base.h"
#include "lib/base/opsys.h"
#include "scheduler/ui/framework/browseedit.h"
#include "scheduler/ui/framework/filedialog.h"
#include "scheduler/ui/framework/textextent.h"
#include "tests/scheduler/ui/framework/controldialog.h"
#include "tests/scheduler/ui/framework/probewindow.h"
#include "tests/scheduler/ui/framework/steppedwindows.h"
#include "tests/scheduler/ui/platformcalls.h"
#include "tests/support/allocations.h"
#include "tests/support/temporaryfolder.h"
#include "tests/support/windowlooks.h"

#include <gtest/gtest.h>

#include <cderr.h>
#include <cstring>
#include <optional>

namespace {

std::function<bool(OPENFILENAMEA&)> fileDialog;
DWORD fileError = 0;

} // namespace

namespace framework {

// Replacements for the platform's dialog.

bool openFileDialog(OPENFILENAMEA& request) {
    return fileDialog(request);
}

DWORD fileDialogError() {
    return fileError;
}

} // namespace framework

namespace {

using namespace std::string_literals;
using framework::sizeOf;
using test::placeOf;
using Files = std::vector<std::string>;

HWND buttonOf(const framework::BrowseEdit& edit) {
    return GetWindow(edit.handle(), GW_HWNDNEXT);
}

void press(const framework::BrowseEdit& edit) {
    SendMessageA(buttonOf(edit), BM_CLICK, 0, 0);
}

class BrowseEdit : public test::ControlDialogTest {
protected:
    BrowseEdit() { fileError = 0; }
    void choose(const std::string& answer) {
        fileDialog = [&](const OPENFILENAMEA& request) {
            answer.copy(request.lpstrFile, request.nMaxFile);
            return true;
        };
        press(edit);
    }

    std::string path = "C:\\before.kra";
    framework::BrowseEdit edit{dialog, IDC_BROWSE, framework::bindText(path)};
};

TEST_F(BrowseEdit, HasAButtonInTheSameFontAtItsRightEnd) {
    framework::Dialog plain(IDD_CONTROLS);
    ASSERT_TRUE(plain.open(nullptr));
    const auto placeIn = [](const framework::Dialog& host, HWND window) {
        RECT place = placeOf(window);
        MapWindowPoints(nullptr, host.handle(), reinterpret_cast<POINT*>(&place), 2);
        return place;
    };
    const RECT whole = placeIn(plain, GetDlgItem(plain.handle(), IDC_BROWSE));
    EXPECT_EQ(SendMessageA(buttonOf(edit), WM_GETFONT, 0, 0), SendMessageA(edit.handle(), WM_GETFONT, 0, 0));
    EXPECT_EQ(GetNextDlgTabItem(dialog.handle(), edit.handle(), FALSE), buttonOf(edit));
    LONG lastWidth = 0;
    for (const std::string text : {"&...", "&Browse..."}) {
        if (lastWidth > 0)
            edit.setButtonText(text);
        EXPECT_EQ(base::windowText(buttonOf(edit)), text);
        const RECT field = placeIn(dialog, edit.handle());
        const RECT button = placeIn(dialog, buttonOf(edit));
        EXPECT_EQ(field.left, whole.left);
        EXPECT_EQ(field.top, whole.top);
        EXPECT_EQ(field.bottom, whole.bottom);
        EXPECT_EQ(button.left - field.right, 4);
        EXPECT_EQ(button.right, whole.right);
        EXPECT_EQ(button.bottom - button.top, 23);
        EXPECT_GT(button.right - button.left, lastWidth);
        lastWidth = button.right - button.left;
    }
}

TEST_F(BrowseEdit, WithALargerFontHasAWiderButtonAndCentresItsFileDialogOverTheSheet) {
    framework::PropertyPage page(IDD_LARGE_PAGE);
    framework::BrowseEdit large(page, IDC_TEXT);
    test::SteppedSheet sheet;
    sheet.add(page);
    HWND opened = nullptr;
    fileDialog = [&](const OPENFILENAMEA& request) {
        opened = test::createPlain("STATIC", WS_POPUP, {5, 5, 105, 65}, request.hwndOwner);
        const HWND hook = test::createPlain("STATIC", WS_CHILD, {0, 0, 10, 10}, opened);
        OFNOTIFYA notice{};
        notice.hdr.code = CDN_SELCHANGE;
        request.lpfnHook(hook, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notice));
        EXPECT_EQ(placeOf(opened).left, 5) << "moved before CDN_INITDONE";
        notice.hdr.code = CDN_INITDONE;
        request.lpfnHook(hook, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notice));
        return false;
    };
    sheet.steps = {[&] {
        sheet.turnTo(2);
        EXPECT_EQ(sizeOf(buttonOf(large)).cx, framework::TextExtent(large.handle()).of("...").cx + 10);
        EXPECT_GT(sizeOf(buttonOf(large)).cx, sizeOf(buttonOf(edit)).cx) << "wider than in the default font";

        SetWindowPos(sheet.handle(), nullptr, 200, 100, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
        press(large);
        const RECT around = placeOf(sheet.handle());
        EXPECT_EQ(placeOf(opened).left, (around.left + around.right) / 2 - 50);
        EXPECT_EQ(placeOf(opened).top, (around.top + around.bottom) / 2 - 30);
        sheet.press(IDCANCEL);
    }};
    EXPECT_EQ(sheet.runSteps(), 2);
}

TEST_F(BrowseEdit, ButtonAndLabelFollowTheState) {
    const auto buttonIsVisible = [&] { return (test::styleOf(buttonOf(edit)) & WS_VISIBLE) != 0; };
    for (const bool on : {false, true}) {
        edit.setEnabled(on);
        EXPECT_EQ(IsWindowEnabled(buttonOf(edit)), on);
        EXPECT_EQ(IsWindowEnabled(GetDlgItem(dialog.handle(), IDC_BROWSE_LABEL)), on);
        edit.setVisible(on);
        EXPECT_EQ(buttonIsVisible(), on);
    }
}

TEST_F(BrowseEdit, ReportsATextThatItsCheckRejects) {
    base::applicationName = "The Program";
    const test::MessageBoxes boxes;
    std::string asked;
    bool acceptable = false;
    EXPECT_TRUE(edit.check()) << "without a check every text passes";
    const auto rule = [&](const std::string& text) { return asked = text, acceptable; };
    edit.setCheck(rule, "Not this one.");
    EXPECT_FALSE(dialog.check());
    EXPECT_EQ(asked, "C:\\before.kra");
    ASSERT_EQ(boxes.shown.size(), 1U);
    EXPECT_EQ(boxes.shown[0].text, "Not this one.");
    EXPECT_EQ(boxes.shown[0].caption, "The Program");
    EXPECT_EQ(boxes.shown[0].owner, dialog.handle());
    EXPECT_EQ(boxes.shown[0].flags, UINT{MB_OK});
    acceptable = true;
    EXPECT_TRUE(dialog.check());
    EXPECT_EQ(boxes.shown.size(), 1U);
}

TEST_F(BrowseEdit, OpensThePlatformDialogWithItsFlagsAndFilter) {
    edit.setFilter("All Files (*.*)|*.*||");
    DWORD flags = 0;
    fileDialog = [&](const OPENFILENAMEA& request) {
        flags = request.Flags;
        EXPECT_EQ(request.hwndOwner, dialog.handle());
        EXPECT_STREQ(request.lpstrTitle, "Browse");
        EXPECT_STREQ(request.lpstrFile, "C:\\before.kra");
        EXPECT_GE(request.nMaxFile, 32768U);
        EXPECT_EQ(std::string(request.lpstrFilter, 22), "All Files (*.*)\0*.*\0\0\0"s);
        return false;
    };
    constexpr DWORD always =
        OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_EXPLORER | OFN_ENABLEHOOK;
    edit.addFlags(OFN_ALLOWMULTISELECT);
    press(edit);
    EXPECT_EQ(flags, always | OFN_ALLOWMULTISELECT);
    EXPECT_EQ(edit.text(), "C:\\before.kra") << "nothing was chosen";
    edit.removeFlags(OFN_ALLOWMULTISELECT);
    press(edit);
    EXPECT_EQ(flags, always);
}

TEST_F(BrowseEdit, ShowsAndKeepsTheChosenFiles) {
    choose("C:\\one.kra\0\0"s);
    EXPECT_EQ(edit.text(), "C:\\one.kra");
    EXPECT_EQ(edit.chosen(), (Files{"C:\\one.kra"}));
    choose("C:\\dir\0one.kra\0two.kra\0\0"s);
    EXPECT_EQ(edit.text(), "\"C:\\dir\\one.kra\" \"C:\\dir\\two.kra\"");
    dialog.store();
    EXPECT_EQ(path, "\"C:\\dir\\one.kra\" \"C:\\dir\\two.kra\"");
    DestroyWindow(dialog.handle());
    EXPECT_EQ(edit.chosen(), (Files{"C:\\dir\\one.kra", "two.kra"})) << "kept after the dialog has closed";
}

TEST_F(BrowseEdit, ReopensTheFileDialogEmptyAfterItRejectsTheText) {
    SetWindowTextA(edit.handle(), "\"C:\\one.kra\" \"C:\\two.kra\"");
    std::string asked;
    fileDialog = [&](const OPENFILENAMEA& request) {
        asked += "<" + std::string(request.lpstrFile) + ">";
        return false;
    };
    press(edit);
    EXPECT_EQ(asked, "<\"C:\\one.kra\" \"C:\\two.kra\">") << "the user cancelled";
    asked.clear();
    fileError = FNERR_INVALIDFILENAME;
    press(edit);
    EXPECT_EQ(asked, "<\"C:\\one.kra\" \"C:\\two.kra\"><>");
}

TEST_F(BrowseEdit, RetriesWithALargerBufferWhenTheAnswerIsTooLong) {
    std::string answer = "C:\\dir\0"s;
    for (int i = 0; i < 5000; ++i)
        answer += "a project with a long name " + std::to_string(i) + ".kra" + '\0';
    std::vector<DWORD> sizes;
    fileDialog = [&](const OPENFILENAMEA& request) {
        EXPECT_STREQ(request.lpstrFile, "C:\\before.kra");
        sizes.push_back(request.nMaxFile);
        if (request.nMaxFile > answer.size())
            return answer.copy(request.lpstrFile, answer.size()) > 0;
        fileError = FNERR_BUFFERTOOSMALL;
        const auto needed = static_cast<WORD>(answer.size()); // truncated to 16 bits
        std::memcpy(request.lpstrFile, &needed, sizeof needed);
        return false;
    };
    press(edit);
    EXPECT_EQ(sizes.size(), 2U);
    ASSERT_EQ(edit.chosen().size(), 5000U);
    EXPECT_EQ(edit.chosen().front(), "C:\\dir\\a project with a long name 0.kra");
    EXPECT_EQ(edit.chosen().back(), "a project with a long name 4999.kra");
}

TEST_F(BrowseEdit, KeepsItsTextWhenAnAnswerIsTooLongForAnyBuffer) {
    int calls = 0;
    fileDialog = [&](const OPENFILENAMEA& request) {
        ++calls;
        fileError = FNERR_BUFFERTOOSMALL;
        request.lpstrFile[0] = request.lpstrFile[1] = '\xFF';
        return false;
    };
    press(edit);
    EXPECT_EQ(calls, 2) << "it retries only once";
    EXPECT_EQ(edit.text(), "C:\\before.kra");
    EXPECT_TRUE(edit.chosen().empty());
}

TEST_F(BrowseEdit, BrowsingDoesNotChangeTheCurrentDirectory) {
    const auto current = [] {
        char directory[MAX_PATH] = {};
        GetCurrentDirectoryA(sizeof directory, directory);
        return std::string(directory);
    };
    const std::string before = current();
    const test::TemporaryFolder browsed;
    int calls = 0;
    fileDialog = [&](const OPENFILENAMEA&) -> bool {
        SetCurrentDirectoryA(browsed.path().c_str());
        if (++calls == 2)
            throw std::runtime_error("unforeseen");
        fileError = FNERR_BUFFERTOOSMALL;
        return false;
    };
    press(edit);
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(current(), before);
    SetCurrentDirectoryA(before.c_str()); // the current directory cannot be deleted
}

TEST_F(BrowseEdit, IgnoresAChoiceWhenMemoryRunsOut) {
    std::string answer = "C:\\dir\0"s;
    for (const char name : {'3', '4', '5', '6', '7'})
        answer += std::string(200, name) + '\0';
    std::optional<test::RefusedAllocations> refused;
    fileDialog = [&](const OPENFILENAMEA& request) {
        answer.copy(request.lpstrFile, request.nMaxFile);
        refused.emplace(600); // each name is smaller, all five together are larger
        return true;
    };
    press(edit);
    refused.reset();
    EXPECT_EQ(edit.text(), "C:\\before.kra");
    EXPECT_TRUE(edit.chosen().empty());
}

} // namespace
