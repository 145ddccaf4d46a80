// What the Browse button of the path field does.
#include "lib/base/base.h"
#include "lib/base/opsys.h"
#include "tests/scheduler/ui/framework/browseedittest.h"
#include "tests/support/allocations.h"
#include "tests/support/temporaryfolder.h"

#include <cderr.h>
#include <cstring>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace std::string_literals;
using test::simulatedDialog;
using test::simulatedError;
using Files = std::vector<std::string>;

class Browsing : public test::BrowseEditTest {};

TEST_F(Browsing, OpensThePlatformsDialogAsDeclared) {
    dialog.edit.setFilter("All Files (*.*)|*.*||");
    dialog.edit.addFlags(OFN_ALLOWMULTISELECT);
    int calls = 0;
    simulatedDialog = [&](OPENFILENAMEA& request) {
        ++calls;
        EXPECT_EQ(request.hwndOwner, dialog.handle());
        EXPECT_STREQ(request.lpstrTitle, "Browse");
        EXPECT_STREQ(request.lpstrFile, "C:\\before.kra");
        EXPECT_GE(request.nMaxFile, 32768U);
        EXPECT_EQ(std::string(request.lpstrFilter, 22), "All Files (*.*)\0*.*\0\0\0"s);
        EXPECT_EQ(request.Flags, DWORD{OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY |
                                       OFN_EXPLORER | OFN_ENABLEHOOK | OFN_ALLOWMULTISELECT});
        return false;
    };
    SendMessageA(button(), BM_CLICK, 0, 0);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(dialog.edit.text(), "C:\\before.kra") << "nothing was chosen";

    dialog.edit.removeFlags(OFN_ALLOWMULTISELECT);
    simulatedDialog = [&](OPENFILENAMEA& request) {
        EXPECT_FALSE(request.Flags & OFN_ALLOWMULTISELECT);
        return false;
    };
    SendMessageA(button(), BM_CLICK, 0, 0);
}

TEST_F(Browsing, TheDialogIsCentredWhenItIsReady) {
    const HWND opened =
        CreateWindowExA(0, "STATIC", "", WS_POPUP, 5, 5, 100, 60, dialog.handle(), nullptr, nullptr, nullptr);
    const HWND hook =
        CreateWindowExA(0, "STATIC", "", WS_CHILD, 0, 0, 10, 10, opened, nullptr, nullptr, nullptr);
    simulatedDialog = [&](OPENFILENAMEA& request) {
        OFNOTIFYA notice{};
        notice.hdr.code = CDN_SELCHANGE;
        request.lpfnHook(hook, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notice));
        RECT place{};
        GetWindowRect(opened, &place);
        EXPECT_EQ(place.left, 5) << "not before";
        notice.hdr.code = CDN_INITDONE;
        request.lpfnHook(hook, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notice));
        return false;
    };
    SendMessageA(button(), BM_CLICK, 0, 0);
    RECT place{};
    RECT reference{};
    GetWindowRect(opened, &place);
    GetWindowRect(dialog.handle(), &reference);
    EXPECT_EQ(place.left, (reference.left + reference.right) / 2 - 50);
    EXPECT_EQ(place.top, (reference.top + reference.bottom) / 2 - 30);
    DestroyWindow(opened);
}

TEST_F(Browsing, OneChosenFileIsItsPath) {
    choose("C:\\one.kra\0\0"s);
    EXPECT_EQ(dialog.edit.text(), "C:\\one.kra");
    EXPECT_EQ(dialog.edit.chosen(), (Files{"C:\\one.kra"}));
}

TEST_F(Browsing, ThreeChosenFilesAreQuotedAndKept) {
    choose("C:\\dir\0one.kra\0two.kra\0three.kra\0\0"s);
    EXPECT_EQ(dialog.edit.text(), "\"C:\\dir\\one.kra\" \"C:\\dir\\two.kra\" \"C:\\dir\\three.kra\"");
    EXPECT_EQ(dialog.edit.chosen(), (Files{"C:\\dir\\one.kra", "two.kra", "three.kra"}));
    dialog.store();
    EXPECT_EQ(path, dialog.edit.text());
    DestroyWindow(dialog.handle());
    EXPECT_EQ(dialog.edit.chosen().size(), 3U) << "kept for after the dialog";
}

TEST_F(Browsing, ATextThatTheDialogRefusesIsLeftOut) {
    SetWindowTextA(handle(), "\"C:\\one.kra\" \"C:\\two.kra\"");
    std::string asked;
    simulatedDialog = [&](OPENFILENAMEA& request) {
        asked += "<" + std::string(request.lpstrFile) + ">";
        return false;
    };
    SendMessageA(button(), BM_CLICK, 0, 0);
    EXPECT_EQ(asked, "<\"C:\\one.kra\" \"C:\\two.kra\">") << "the user cancelled";
    asked.clear();
    simulatedError = FNERR_INVALIDFILENAME;
    SendMessageA(button(), BM_CLICK, 0, 0);
    EXPECT_EQ(asked, "<\"C:\\one.kra\" \"C:\\two.kra\"><>");
}

TEST_F(Browsing, AnAnswerTooLongForTheBufferIsAskedForAgainWithALargerOne) {
    // Thousands of files: more than fits into a buffer of usual size.
    std::string answer = "C:\\dir\0"s;
    Files expected;
    for (int i = 0; i < 5000; ++i) {
        expected.push_back("a project with a long name " + std::to_string(i) + ".kra");
        answer += expected.back() + '\0';
    }
    answer += '\0';
    expected[0].insert(0, "C:\\dir\\");
    std::vector<DWORD> sizes;
    simulatedDialog = [&](OPENFILENAMEA& request) {
        EXPECT_STREQ(request.lpstrFile, "C:\\before.kra");
        sizes.push_back(request.nMaxFile);
        if (request.nMaxFile < answer.size()) {
            simulatedError = FNERR_BUFFERTOOSMALL;
            const auto needed = static_cast<WORD>(answer.size()); // as far as two bytes can tell
            std::memcpy(request.lpstrFile, &needed, sizeof needed);
            return false;
        }
        answer.copy(request.lpstrFile, answer.size());
        return true;
    };
    SendMessageA(button(), BM_CLICK, 0, 0);
    EXPECT_EQ(sizes.size(), 2U);
    EXPECT_EQ(dialog.edit.chosen(), expected);
}

TEST_F(Browsing, AnAnswerTooLongForAnyBufferLeavesTheTextAsItWas) {
    choose("C:\\dir\0one.kra\0two.kra\0\0"s);
    const std::string before = dialog.edit.text();
    int calls = 0;
    simulatedDialog = [&](OPENFILENAMEA& request) {
        ++calls;
        simulatedError = FNERR_BUFFERTOOSMALL;
        request.lpstrFile[0] = request.lpstrFile[1] = '\xFF';
        return false;
    };
    SendMessageA(button(), BM_CLICK, 0, 0);
    EXPECT_EQ(calls, 2) << "not for ever";
    EXPECT_EQ(dialog.edit.text(), before);
    EXPECT_EQ(dialog.edit.chosen().size(), 2U);
}

TEST_F(Browsing, WhereTheUserBrowsesIsNotWhereTheProgramGoesOn) {
    const auto current = [] {
        char directory[MAX_PATH] = {};
        GetCurrentDirectoryA(sizeof directory, directory);
        return std::string(directory);
    };
    const std::string before = current();
    const test::TemporaryFolder browsed;
    std::vector<std::string> during;
    simulatedDialog = [&](OPENFILENAMEA&) -> bool {
        during.push_back(current());
        SetCurrentDirectoryA(browsed.path().c_str());
        if (during.size() == 2)
            throw std::runtime_error("unforeseen");
        simulatedError = during.size() == 1 ? FNERR_BUFFERTOOSMALL : 0;
        return false;
    };
    SendMessageA(button(), BM_CLICK, 0, 0);
    ASSERT_EQ(during.size(), 2U);
    EXPECT_EQ(current(), before);
    SetCurrentDirectoryA(before.c_str()); // the folder could not be removed otherwise
}

TEST_F(Browsing, AChoiceThatThereIsNoMemoryForIsNone) {
    choose("C:\\dir\0one.kra\0two.kra\0\0"s);
    const std::string before = dialog.edit.text();
    std::string answer = "C:\\dir\0"s;
    for (const char name : {'3', '4', '5', '6', '7'})
        answer += std::string(200, name) + '\0';
    std::optional<test::RefusedAllocations> refused;
    simulatedDialog = [&](OPENFILENAMEA& request) {
        answer.copy(request.lpstrFile, request.nMaxFile);
        refused.emplace(600); // more than any of their names, less than all of them
        return true;
    };
    SendMessageA(button(), BM_CLICK, 0, 0);
    refused.reset();
    EXPECT_EQ(dialog.edit.text(), before);
    EXPECT_EQ(dialog.edit.chosen(), (Files{"C:\\dir\\one.kra", "two.kra"}));
}

} // namespace
