#include "lib/base/base.h"
#include "lib/base/opsys.h"
#include "tests/scheduler/ui/framework/browseedittest.h"

#include <string>
#include <vector>

namespace {

using test::shownMessages;

class BrowseEdit : public test::BrowseEditTest {};

TEST_F(BrowseEdit, HasAButtonBehindItInTheSameFont) {
    EXPECT_EQ(base::windowText(button()), "&Browse...");
    EXPECT_EQ(SendMessageA(button(), WM_GETFONT, 0, 0), SendMessageA(handle(), WM_GETFONT, 0, 0));
    EXPECT_EQ(GetNextDlgTabItem(dialog.handle(), handle(), FALSE), button());
}

TEST_F(BrowseEdit, SharesItsPlaceWithTheButton) {
    framework::Dialog plain(IDD_CONTROLS);
    ASSERT_TRUE(plain.open(nullptr));
    const RECT whole = placeOf(GetDlgItem(plain.handle(), IDC_BROWSE));
    EXPECT_EQ(placeOf(handle()).left, whole.left);
    EXPECT_EQ(placeOf(handle()).top, whole.top);
    EXPECT_EQ(placeOf(handle()).bottom, whole.bottom);
    EXPECT_EQ(placeOf(button()).right, whole.right);
    EXPECT_EQ(placeOf(button()).left - placeOf(handle()).right, 4);
    EXPECT_EQ(placeOf(button()).bottom - placeOf(button()).top, 23);

    const int width = placeOf(button()).right - placeOf(button()).left;
    dialog.edit.setButtonText("&...");
    EXPECT_EQ(base::windowText(button()), "&...");
    EXPECT_LT(placeOf(button()).right - placeOf(button()).left, width);
    EXPECT_EQ(placeOf(button()).right, whole.right);
    EXPECT_EQ(placeOf(button()).left - placeOf(handle()).right, 4);
}

TEST_F(BrowseEdit, TheButtonFollowsTheEdit) {
    dialog.edit.setEnabled(false);
    EXPECT_FALSE(IsWindowEnabled(button()));
    EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dialog.handle(), IDC_BROWSE_LABEL)));
    dialog.edit.setEnabled(true);
    EXPECT_TRUE(IsWindowEnabled(button()));
    const auto buttonIsVisible = [&] { return (GetWindowLongA(button(), GWL_STYLE) & WS_VISIBLE) != 0; };
    dialog.edit.setVisible(false);
    EXPECT_FALSE(buttonIsVisible());
    dialog.edit.setVisible(true);
    EXPECT_TRUE(buttonIsVisible());
}

TEST_F(BrowseEdit, ATextThatIsNotAcceptableIsReported) {
    base::applicationName = "The Program";
    std::string asked;
    bool acceptable = false;
    EXPECT_TRUE(dialog.edit.check()) << "without a rule every text is";
    dialog.edit.setCheck(
        [&](const std::string& text) {
            asked = text;
            return acceptable;
        },
        "Not this one.");
    EXPECT_FALSE(dialog.check());
    EXPECT_EQ(asked, "C:\\before.kra");
    ASSERT_EQ(shownMessages.size(), 1U);
    EXPECT_EQ(shownMessages[0].text, "Not this one.");
    EXPECT_EQ(shownMessages[0].caption, "The Program");
    EXPECT_EQ(shownMessages[0].owner, dialog.handle());
    EXPECT_EQ(shownMessages[0].flags, UINT{MB_OK});
    acceptable = true;
    EXPECT_TRUE(dialog.check());
    EXPECT_EQ(shownMessages.size(), 1U);
}

} // namespace
