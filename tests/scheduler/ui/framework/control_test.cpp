#include "scheduler/ui/framework/checkbox.h"
#include "scheduler/ui/framework/edit.h"
#include "scheduler/ui/framework/radiogroup.h"
#include "scheduler/ui/framework/textcontrol.h"
#include "tests/scheduler/ui/framework/controldialog.h"

#include <gtest/gtest.h>

namespace {

class Controls : public test::ControlDialogTest {
protected:
    bool isEnabled(int id) const { return IsWindowEnabled(item(id)); }

    int checkedButtons() const {
        int checked = 0;
        for (const int id : {IDC_THIRD_CHOICE, IDC_SECOND_CHOICE, IDC_FIRST_CHOICE})
            checked = checked * 2 + (IsDlgButtonChecked(dialog.handle(), id) == BST_CHECKED ? 1 : 0);
        return checked;
    }

    framework::Edit edit{dialog, IDC_TEXT};
    framework::Edit second{dialog, IDC_SECOND_TEXT, nullptr, 3};
    framework::CheckBox flag{dialog, IDC_CHECK};
    framework::RadioGroup choice{dialog, {IDC_FIRST_CHOICE, IDC_SECOND_CHOICE, IDC_THIRD_CHOICE}};
    framework::TextControl label{dialog, IDC_PLAIN_LABEL};
    framework::Control list{dialog, IDC_LIST};
    framework::Edit missing{dialog, 4711};
};

TEST_F(Controls, AreFoundByTheirIdsAndSubclassed) {
    EXPECT_EQ(edit.handle(), item(IDC_TEXT));
    EXPECT_EQ(framework::Window::of(item(IDC_TEXT)), &edit);
    EXPECT_EQ(framework::Window::of(item(IDC_LABEL)), nullptr) << "no control is declared for it";
}

TEST_F(Controls, OneMissingFromTheTemplateIsIgnored) {
    std::string field = "kept";
    missing.bind(framework::bindText(field));
    EXPECT_EQ(missing.handle(), nullptr);
    dialog.load();
    EXPECT_TRUE(dialog.check());
    dialog.store();
    dialog.onIdle();
    EXPECT_EQ(field, "kept");
}

TEST_F(Controls, LoadAndStoreTheFieldOfTheirLastBinding) {
    SetWindowTextA(item(IDC_TEXT), "typed");
    dialog.load();
    dialog.store();
    EXPECT_EQ(edit.text(), "typed") << "no binding yet";
    std::string first = "first";
    std::string other = "other";
    edit.bind(framework::bindText(first));
    dialog.load();
    EXPECT_EQ(edit.text(), "first");
    edit.bind(framework::bindText(other));
    dialog.load();
    EXPECT_EQ(edit.text(), "other");
    SetWindowTextA(item(IDC_TEXT), "typed");
    dialog.store();
    EXPECT_EQ(first, "first");
    EXPECT_EQ(other, "typed");
}

TEST_F(Controls, TheirLabelIsThePrecedingTextWithAnAccessKeyAndFollowsTheirState) {
    EXPECT_EQ(framework::labelOf(item(IDC_TEXT)), item(IDC_LABEL));
    EXPECT_EQ(framework::labelOf(item(IDC_SECOND_TEXT)), nullptr) << "no access key";
    EXPECT_EQ(framework::labelOf(item(IDC_SECOND_CHOICE)), nullptr) << "no static text";
    EXPECT_EQ(framework::labelOf(item(IDC_LABEL)), nullptr) << "no control precedes it";
    edit.setEnabled(false);
    EXPECT_FALSE(isEnabled(IDC_LABEL));
    EnableWindow(item(IDC_TEXT), TRUE);
    EXPECT_TRUE(isEnabled(IDC_LABEL));
    EnableWindow(item(IDC_LIST), FALSE);
    second.setEnabled(false);
    EXPECT_FALSE(isEnabled(IDC_LIST_LABEL));
    EXPECT_TRUE(isEnabled(IDC_LABEL)) << "other labels keep their state";
    EXPECT_TRUE(isEnabled(IDC_PLAIN_LABEL));
}

class ChangeCounter : public framework::MessageFilter {
public:
    framework::Handled filterMessage(framework::Window&, const framework::Message& message) override {
        changes += message.id == WM_ENABLE || message.id == WM_SHOWWINDOW || message.id == WM_SETTEXT;
        return std::nullopt;
    }
    int changes = 0;
};

TEST_F(Controls, ReportTheirStateInAHiddenDialogAndSendMessagesOnlyWhenItChanges) {
    EXPECT_FALSE(IsWindowVisible(item(IDC_TEXT)));
    EXPECT_TRUE(edit.isVisible());
    EXPECT_TRUE(edit.isEnabled());
    edit.setText("text");
    ChangeCounter counter;
    edit.addFilter(counter);
    for (int round = 0; round < 2; ++round) {
        edit.setText("text");
        edit.setEnabled(true);
        edit.setVisible(true);
        EXPECT_EQ(counter.changes, 6 * round);
        for (int again = 0; again < 2; ++again) {
            edit.setText("other");
            edit.setEnabled(false);
            edit.setVisible(false);
            EXPECT_EQ(counter.changes, 6 * round + 3);
        }
        EXPECT_FALSE(edit.isVisible());
        EXPECT_FALSE(edit.isEnabled());
    }
    edit.removeFilter(counter);
}

TEST_F(Controls, AnEditLimitsItsTextToTheDeclaredLength) {
    EXPECT_EQ(SendMessageA(item(IDC_SECOND_TEXT), EM_GETLIMITTEXT, 0, 0), 3);
    EXPECT_GT(SendMessageA(item(IDC_TEXT), EM_GETLIMITTEXT, 0, 0), 1000);
}

TEST_F(Controls, ACheckBoxLoadsAndStoresAFlag) {
    std::uint8_t field = 1;
    flag.bind(framework::bindFlag(field));
    dialog.load();
    EXPECT_TRUE(flag.isChecked());
    for (const int stored : {0, 1}) {
        SendMessageA(item(IDC_CHECK), BM_CLICK, 0, 0);
        EXPECT_EQ(flag.isChecked(), stored == 1);
        dialog.store();
        EXPECT_EQ(field, stored);
    }
}

TEST_F(Controls, ARadioGroupChecksOnlyTheButtonOfItsValue) {
    std::int32_t field = 0;
    choice.bind(framework::bindNumber(field));
    for (const auto& [value, checked] : {std::pair{0, 1}, {1, 2}, {2, 4}, {3, 0}, {-1, 0}}) {
        field = value;
        dialog.load();
        EXPECT_EQ(checkedButtons(), checked) << value;
    }
}

TEST_F(Controls, ARadioGroupStoresTheIndexOfTheFirstCheckedButtonAndMinusOneForNone) {
    std::int32_t field = 7;
    choice.bind(framework::bindNumber(field));
    dialog.store();
    EXPECT_EQ(field, -1);
    for (const auto& [id, stored] : {std::pair{IDC_THIRD_CHOICE, 2}, {IDC_SECOND_CHOICE, 1}}) {
        // Without BS_AUTORADIOBUTTON, two buttons can be checked.
        SendMessageA(item(id), BM_SETSTYLE, BS_RADIOBUTTON, FALSE);
        CheckDlgButton(dialog.handle(), id, BST_CHECKED);
        dialog.store();
        EXPECT_EQ(field, stored);
    }
    EXPECT_EQ(checkedButtons(), 6);
}

TEST_F(Controls, ARadioGroupBoundToAFlagStoresTrueWhenNoButtonIsChecked) {
    bool field = true;
    choice.bind(framework::bindFlag(field));
    dialog.load();
    EXPECT_EQ(checkedButtons(), 2);
    field = false;
    dialog.load();
    EXPECT_EQ(checkedButtons(), 1);
    for (const UINT check : {UINT{BST_UNCHECKED}, UINT{BST_CHECKED}}) {
        CheckDlgButton(dialog.handle(), IDC_FIRST_CHOICE, check);
        dialog.store();
        EXPECT_EQ(field, check == BST_UNCHECKED);
    }
}

TEST_F(Controls, TheTabKeyStopsAtOneEnabledButtonOfARadioGroup) {
    const auto stop = [&] {
        choice.keepTabStop();
        return GetDlgCtrlID(GetNextDlgTabItem(dialog.handle(), item(IDC_CHECK), FALSE));
    };
    choice.setValue(2);
    EXPECT_EQ(stop(), IDC_THIRD_CHOICE) << "the checked one";
    choice.setValue(0);
    EnableWindow(item(IDC_FIRST_CHOICE), FALSE);
    EXPECT_EQ(stop(), IDC_SECOND_CHOICE) << "the checked one is disabled";
    EnableWindow(item(IDC_FIRST_CHOICE), TRUE);
    EXPECT_EQ(stop(), IDC_FIRST_CHOICE);
    choice.setValue(framework::RadioGroup::noButton);
    EXPECT_EQ(stop(), IDC_FIRST_CHOICE) << "none is checked";
    EXPECT_EQ(GetNextDlgTabItem(dialog.handle(), item(IDC_FIRST_CHOICE), FALSE), item(IDC_LIST))
        << "the others are reached by the arrow keys";
}

TEST_F(Controls, AStaticTextShowsItsFieldAndStoresNothing) {
    std::string field = "shown";
    label.bind(framework::bindText(field));
    dialog.load();
    EXPECT_EQ(label.text(), "shown");
    SetWindowTextA(item(IDC_PLAIN_LABEL), "changed");
    dialog.store();
    EXPECT_EQ(field, "shown");
}

} // namespace
