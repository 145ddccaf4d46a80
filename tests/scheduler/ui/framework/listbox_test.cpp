#include "scheduler/ui/framework/listbox.h"
#include "tests/scheduler/ui/framework/controldialog.h"
#include "tests/scheduler/ui/framework/drawnitem.h"
#include "tests/support/systemcolours.h"

#include <gtest/gtest.h>

#include <array>

namespace {

using framework::ItemList;
using framework::ListControl;

/// Makes the list's items too low, as a system font smaller than the dialog's font does.
class LowItems : public framework::Control {
public:
    explicit LowItems(framework::ControlHost& host) : Control(host, IDC_LIST_LABEL) {}

protected:
    void onAttached() override {
        for (const WPARAM item : {WPARAM{0}, static_cast<WPARAM>(-1)})
            SendDlgItemMessageA(GetParent(handle()), IDC_LIST, CB_SETITEMHEIGHT, item, 4);
    }
};

class ListBox : public test::ControlDialogTest {
protected:
    LRESULT ask(UINT message, WPARAM position = 0) const {
        return SendMessageA(item(IDC_LIST), message, position, 0);
    }
    void expectDrawn(int position, UINT state, COLORREF text, COLORREF background) {
        drawn.draw(item(IDC_LIST), position, state);
        EXPECT_EQ(drawn.background(), background);
        for (const COLORREF colour : {red, green, yellow})
            EXPECT_EQ(drawn.has(colour), colour == text);
    }

    static constexpr COLORREF red = RGB(255, 0, 0);
    static constexpr COLORREF green = RGB(0, 255, 0);
    static constexpr COLORREF yellow = RGB(255, 255, 0);
    static constexpr COLORREF blue = RGB(0, 0, 200);
    static constexpr COLORREF purple = RGB(90, 0, 90);
    static constexpr COLORREF face = RGB(0, 90, 90);
    const test::SystemColours colours{{COLOR_WINDOW, blue},          {COLOR_WINDOWTEXT, red},
                                      {COLOR_GRAYTEXT, green},       {COLOR_HIGHLIGHT, purple},
                                      {COLOR_HIGHLIGHTTEXT, yellow}, {COLOR_BTNFACE, face}};
    test::DrawnItem drawn;
    ItemList items{{{"none of them", 10, true}, {"a long text, to be drawn", 30}, {"other", 20}}};
    LowItems low{dialog};
    framework::ListBox list{dialog, IDC_LIST, items};
};

TEST_F(ListBox, TheDefaultValueOfAnItemIsItsPosition) {
    class Plain : public framework::ListSource {
        int count() const override { return 2; }
        std::string text(int) const override { return "x"; }
    };
    const Plain plain;
    const framework::ListSource& source = plain;
    EXPECT_EQ(source.value(1), 1);
    EXPECT_EQ(source.textColour(1), COLOR_WINDOWTEXT);
    EXPECT_TRUE(source.equal(1, 1));
    EXPECT_FALSE(source.equal(1, 2));
}

TEST_F(ListBox, StoresEachTextWithItsValueAndCanBeRefilled) {
    ASSERT_EQ(list.count(), 3);
    std::array<char, 64> text{};
    SendMessageA(item(IDC_LIST), CB_GETLBTEXT, 1, reinterpret_cast<LPARAM>(text.data()));
    EXPECT_STREQ(text.data(), "a long text, to be drawn");
    EXPECT_EQ(ask(CB_GETITEMDATA, 0), 10);
    EXPECT_EQ(ask(CB_GETITEMDATA, 1), 30);
    EXPECT_EQ(ask(CB_GETITEMDATA, 2), 20);
    list.select(1);
    items.add({"fourth", 40});
    list.refill();
    EXPECT_EQ(list.count(), 4);
    EXPECT_EQ(list.selected(), ListControl::noItem);
}

TEST_F(ListBox, ItemsAreHighEnoughForTheFont) {
    TEXTMETRICA metrics{};
    {
        const framework::Selection font(drawn.context(), reinterpret_cast<HGDIOBJ>(ask(WM_GETFONT)));
        GetTextMetricsA(drawn.context(), &metrics);
    }
    for (const WPARAM position : {WPARAM{0}, static_cast<WPARAM>(-1)})
        EXPECT_GE(ask(CB_GETITEMHEIGHT, position), metrics.tmHeight);
}

TEST_F(ListBox, TheDroppedListIsWideEnoughForItsTexts) {
    const LRESULT own = ask(CB_GETDROPPEDWIDTH);
    EXPECT_EQ(own, framework::sizeOf(item(IDC_LIST)).cx) << "unchanged by short texts";
    items.add({std::string(40, 'm'), 40});
    list.refill();
    EXPECT_GT(ask(CB_GETDROPPEDWIDTH), own);
    items.add({std::string(4000, 'm'), 50});
    list.refill();
    EXPECT_EQ(ask(CB_GETDROPPEDWIDTH), 3 * own) << "at most three times the width of the list";
}

TEST_F(ListBox, SelectsTheItemOfItsValueAndKeepsAFieldWithoutAnItem) {
    std::int32_t field = 20;
    list.bind(framework::bindNumber(field));
    dialog.load();
    EXPECT_EQ(list.selected(), 2);
    list.select(1);
    dialog.store();
    EXPECT_EQ(field, 30);
    field = 4711;
    dialog.load();
    EXPECT_EQ(list.selected(), ListControl::noItem);
    dialog.store();
    EXPECT_EQ(field, 4711);
}

TEST_F(ListBox, SelectsTheItemOfItsTextAndKeepsAFieldWithoutAnItem) {
    std::string field = "other";
    framework::Dialog other(IDD_CONTROLS);
    framework::TextListBox texts(other, IDC_LIST, items, framework::bindText(field));
    ASSERT_TRUE(other.open(nullptr));
    EXPECT_EQ(texts.selected(), 2);
    texts.select(1);
    other.store();
    EXPECT_EQ(field, "a long text, to be drawn");
    field = "gone";
    other.load();
    EXPECT_EQ(texts.selected(), ListControl::noItem);
    EXPECT_EQ(texts.value(), "");
    other.store();
    EXPECT_EQ(field, "gone");
}

TEST_F(ListBox, TheSourceDecidesWhichValuesAreEqual) {
    class Tens : public ItemList {
    public:
        using ItemList::ItemList;
        bool equal(std::int32_t value, std::int32_t wanted) const override {
            return value / 10 == wanted / 10;
        }
    };
    const Tens tens({{"ten", 10}, {"twenty", 20}});
    framework::Dialog other(IDD_CONTROLS);
    framework::ListBox numbers(other, IDC_LIST, tens);
    ASSERT_TRUE(other.open(nullptr));
    numbers.setValue(27);
    EXPECT_EQ(numbers.selected(), 1);
}

TEST_F(ListBox, DrawsItemsInSystemColoursAndGrayItemsGrayUnlessSelected) {
    expectDrawn(1, 0, red, blue);
    expectDrawn(1, ODS_SELECTED, yellow, purple);
    expectDrawn(1, ODS_DISABLED, green, face);
    expectDrawn(1, ODS_DISABLED | ODS_SELECTED, green, face);
    expectDrawn(0, 0, green, blue);
    expectDrawn(0, ODS_SELECTED, yellow, purple);
    expectDrawn(-1, 0, blue, blue); // no item: the field is empty
}

TEST_F(ListBox, DrawsAFocusRectangleUnlessItIsSuppressed) {
    for (const auto& [state, isShown] :
         {std::pair{UINT{ODS_FOCUS}, true}, {UINT{ODS_FOCUS | ODS_NOFOCUSRECT}, false}, {0U, false}}) {
        drawn.draw(item(IDC_LIST), 1, state);
        EXPECT_EQ(drawn.hasFocusRectangle(), isShown) << state;
    }
}

} // namespace
