#include "scheduler/ui/framework/checkbox.h"
#include "scheduler/ui/framework/control.h"
#include "scheduler/ui/framework/dialog.h"
#include "scheduler/ui/framework/edit.h"
#include "scheduler/ui/framework/radiogroup.h"
#include "scheduler/ui/framework/textcontrol.h"
#include "tests/scheduler/ui/framework/testdialogs.h"

#include <gtest/gtest.h>

namespace {

class ControlsDialog : public framework::Dialog {
public:
    ControlsDialog() : Dialog(IDD_CONTROLS) {}

    framework::Edit edit{*this, IDC_TEXT};
    framework::Edit second{*this, IDC_SECOND_TEXT, nullptr, 3};
    framework::CheckBox flag{*this, IDC_CHECK};
    framework::RadioGroup choice{*this, {IDC_FIRST_CHOICE, IDC_SECOND_CHOICE, IDC_THIRD_CHOICE}};
    framework::TextControl label{*this, IDC_PLAIN_LABEL};
    framework::Control list{*this, IDC_LIST};
    framework::Edit missing{*this, 4711};
};

class Controls : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(dialog.open(nullptr)); }
    HWND item(int id) const { return GetDlgItem(dialog.handle(), id); }
    bool isEnabled(int id) const { return IsWindowEnabled(item(id)); }

    /// The checked buttons of the group, as bits.
    int checkedButtons() const {
        int checked = 0;
        for (const int id : {IDC_THIRD_CHOICE, IDC_SECOND_CHOICE, IDC_FIRST_CHOICE})
            checked = checked * 2 + (IsDlgButtonChecked(dialog.handle(), id) == BST_CHECKED ? 1 : 0);
        return checked;
    }

    ControlsDialog dialog;
};

TEST_F(Controls, AreFoundByTheirIdsAndSubclassed) {
    EXPECT_EQ(dialog.edit.handle(), item(IDC_TEXT));
    EXPECT_EQ(framework::Window::of(item(IDC_TEXT)), &dialog.edit);
    EXPECT_EQ(framework::Window::of(item(IDC_LABEL)), nullptr) << "nobody declared it";
}

TEST_F(Controls, OneThatTheTemplateDoesNotHaveIsLeftOut) {
    std::string field = "kept";
    dialog.missing.bind(framework::bindText(field));
    EXPECT_EQ(dialog.missing.handle(), nullptr);
    dialog.load();
    EXPECT_TRUE(dialog.check());
    dialog.store();
    dialog.onIdle();
    EXPECT_EQ(field, "kept");
}

TEST_F(Controls, WithoutABindingNothingIsLoadedOrStored) {
    SetWindowTextA(item(IDC_TEXT), "typed");
    dialog.load();
    dialog.store();
    EXPECT_EQ(dialog.edit.text(), "typed");
}

TEST_F(Controls, ABindingCanBeReplaced) {
    std::string first = "first";
    std::string other = "other";
    dialog.edit.bind(framework::bindText(first));
    dialog.load();
    EXPECT_EQ(dialog.edit.text(), "first");
    dialog.edit.bind(framework::bindText(other));
    dialog.load();
    EXPECT_EQ(dialog.edit.text(), "other");
    SetWindowTextA(item(IDC_TEXT), "typed");
    dialog.store();
    EXPECT_EQ(first, "first");
    EXPECT_EQ(other, "typed");
}

TEST_F(Controls, TheirLabelFollowsThem) {
    dialog.edit.setEnabled(false);
    EXPECT_FALSE(isEnabled(IDC_LABEL));
    EnableWindow(item(IDC_TEXT), TRUE);
    EXPECT_TRUE(isEnabled(IDC_LABEL));
    EnableWindow(item(IDC_LIST), FALSE);
    EXPECT_FALSE(isEnabled(IDC_LIST_LABEL));
    EXPECT_TRUE(isEnabled(IDC_LABEL)) << "only their own";
}

TEST_F(Controls, ATextWithoutAnAccessKeyIsNoLabel) {
    dialog.second.setEnabled(false);
    EXPECT_TRUE(isEnabled(IDC_PLAIN_LABEL));
    EXPECT_EQ(framework::labelOf(item(IDC_SECOND_TEXT)), nullptr);
}

TEST_F(Controls, OnlyAStaticTextIsALabel) {
    EXPECT_EQ(framework::labelOf(item(IDC_TEXT)), item(IDC_LABEL));
    EXPECT_EQ(framework::labelOf(item(IDC_SECOND_CHOICE)), nullptr)
        << "the button before it has an access key";
    EXPECT_EQ(framework::labelOf(item(IDC_LABEL)), nullptr) << "nothing is before the first";
}

TEST_F(Controls, TellTheirOwnStateInADialogThatIsNotShown) {
    EXPECT_FALSE(IsWindowVisible(item(IDC_TEXT)));
    EXPECT_TRUE(dialog.edit.isVisible());
    dialog.edit.setVisible(false);
    EXPECT_FALSE(dialog.edit.isVisible());
    dialog.edit.setVisible(true);
    EXPECT_TRUE(dialog.edit.isVisible());
    EXPECT_TRUE(dialog.edit.isEnabled());
    dialog.edit.setEnabled(false);
    EXPECT_FALSE(dialog.edit.isEnabled());
}

/// Counts the messages by which a control would be drawn anew.
class ChangeCounter : public framework::MessageFilter {
public:
    framework::Handled filterMessage(framework::Window&, const framework::Message& message) override {
        if (message.id == WM_ENABLE || message.id == WM_SHOWWINDOW || message.id == WM_SETTEXT)
            ++changes;
        return std::nullopt;
    }
    int changes = 0;
};

TEST_F(Controls, AreNotTouchedWhenNothingChanges) {
    dialog.edit.setText("text");
    ChangeCounter counter;
    dialog.edit.addFilter(counter);
    dialog.edit.setText("text");
    dialog.edit.setEnabled(true);
    dialog.edit.setVisible(true);
    EXPECT_EQ(counter.changes, 0);
    dialog.edit.setText("other");
    dialog.edit.setEnabled(false);
    dialog.edit.setVisible(false);
    EXPECT_EQ(counter.changes, 3);
    dialog.edit.setText("other");
    dialog.edit.setEnabled(false);
    dialog.edit.setVisible(false);
    EXPECT_EQ(counter.changes, 3);
    dialog.edit.removeFilter(counter);
}

TEST_F(Controls, AnEditTakesAsManyCharactersAsDeclared) {
    EXPECT_EQ(SendMessageA(item(IDC_SECOND_TEXT), EM_GETLIMITTEXT, 0, 0), 3);
    EXPECT_GT(SendMessageA(item(IDC_TEXT), EM_GETLIMITTEXT, 0, 0), 1000);
}

TEST_F(Controls, ACheckBoxIsLoadedFromAndStoredIntoAFlag) {
    std::uint8_t flag = 1;
    dialog.flag.bind(framework::bindFlag(flag));
    dialog.load();
    EXPECT_TRUE(dialog.flag.isChecked());
    SendMessageA(item(IDC_CHECK), BM_CLICK, 0, 0);
    EXPECT_FALSE(dialog.flag.isChecked());
    dialog.store();
    EXPECT_EQ(flag, 0);
    SendMessageA(item(IDC_CHECK), BM_CLICK, 0, 0);
    dialog.store();
    EXPECT_EQ(flag, 1);
}

TEST_F(Controls, ARadioGroupChecksTheButtonOfItsValueOnly) {
    std::int32_t field = 0;
    dialog.choice.bind(framework::bindNumber(field));
    for (field = 0; field < 3; ++field) {
        dialog.load();
        EXPECT_EQ(checkedButtons(), 1 << field);
        EXPECT_EQ(dialog.choice.value(), field);
    }
    for (const std::int32_t none : {3, -1}) {
        field = none;
        dialog.load();
        EXPECT_EQ(checkedButtons(), 0);
    }
}

TEST_F(Controls, ARadioGroupStoresTheIndexOfTheFirstCheckedButton) {
    std::int32_t field = 7;
    dialog.choice.bind(framework::bindNumber(field));
    for (const int id : {IDC_SECOND_CHOICE, IDC_THIRD_CHOICE}) {
        // Only buttons that do not uncheck each other can both be checked.
        SendMessageA(item(id), BM_SETSTYLE, BS_RADIOBUTTON, FALSE);
        CheckDlgButton(dialog.handle(), id, BST_CHECKED);
    }
    ASSERT_EQ(checkedButtons(), 6);
    dialog.store();
    EXPECT_EQ(field, 1);
}

TEST_F(Controls, ARadioGroupWithNoButtonCheckedGivesMinusOne) {
    std::int32_t field = 7;
    dialog.choice.bind(framework::bindNumber(field));
    dialog.store();
    EXPECT_EQ(field, -1);
}

TEST_F(Controls, ARadioGroupCanShowAFlagAndNoButtonStoresItAsSet) {
    bool flag = true;
    dialog.choice.bind(framework::bindFlag(flag));
    dialog.load();
    EXPECT_EQ(checkedButtons(), 2);
    flag = false;
    dialog.load();
    EXPECT_EQ(checkedButtons(), 1);
    CheckDlgButton(dialog.handle(), IDC_FIRST_CHOICE, BST_UNCHECKED);
    dialog.store();
    EXPECT_TRUE(flag);
    CheckDlgButton(dialog.handle(), IDC_FIRST_CHOICE, BST_CHECKED);
    dialog.store();
    EXPECT_FALSE(flag);
}

TEST_F(Controls, TheTabKeyStopsAtOneButtonOfARadioGroupThatCanBeUsed) {
    const auto stop = [&] {
        dialog.choice.keepTabStop();
        return GetDlgCtrlID(GetNextDlgTabItem(dialog.handle(), item(IDC_CHECK), FALSE));
    };
    dialog.choice.setValue(2);
    EXPECT_EQ(stop(), IDC_THIRD_CHOICE) << "the checked one";
    dialog.choice.setValue(0);
    EnableWindow(item(IDC_FIRST_CHOICE), FALSE);
    EXPECT_EQ(stop(), IDC_SECOND_CHOICE) << "the checked one is disabled";
    EnableWindow(item(IDC_FIRST_CHOICE), TRUE);
    EXPECT_EQ(stop(), IDC_FIRST_CHOICE);
    dialog.choice.setValue(framework::RadioGroup::noButton);
    EXPECT_EQ(stop(), IDC_FIRST_CHOICE) << "none is checked";
    EXPECT_EQ(GetNextDlgTabItem(dialog.handle(), item(IDC_FIRST_CHOICE), FALSE), item(IDC_LIST))
        << "the others are reached by the arrow keys";
}

TEST_F(Controls, AStaticTextShowsItsField) {
    std::string field = "shown";
    dialog.label.bind(framework::bindText(field));
    dialog.load();
    EXPECT_EQ(dialog.label.text(), "shown");
    SetWindowTextA(item(IDC_PLAIN_LABEL), "changed");
    dialog.store();
    EXPECT_EQ(field, "shown");
}

} // namespace
