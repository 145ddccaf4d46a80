#pragma once

#include "scheduler/ui/framework/boundcontrol.h"
#include "scheduler/ui/framework/listsource.h"

#include <functional>

namespace framework {

/// Base of drop-down lists, which can have gray items. The template's combo box needs CBS_OWNERDRAWFIXED and,
/// for screen readers and type-ahead, CBS_HASSTRINGS.
class ListControl : public Control {
public:
    static constexpr int noItem = -1;

    /// `source` must outlive the list box.
    ListControl(ControlHost& host, int id, const ListSource& source) : Control(host, id), source_(source) {}

    /// Reads all items from the source and clears the selection.
    void refill();

    int count() const;

    /// The position of the selected item, or noItem.
    int selected() const;
    void select(int item);

    /// Selects the first item for which `isWanted` is true. If there is none, clears the selection.
    void selectFirst(const std::function<bool(int item)>& isWanted);

    bool onDrawItem(const DRAWITEMSTRUCT& item) override;

protected:
    void onAttached() override;
    const ListSource& source() const { return source_; }

private:
    void raiseItemHeights();

    /// Widens the open list for long texts, to at most three times the control's width.
    void widenDroppedList(int textWidth);

    const ListSource& source_;
};

/// Bound to the selected item. Without a selection, storing does not change the field.
template<class Value>
class BoundList : public BoundControl<Value, ListControl> {
public:
    BoundList(ControlHost& host, int id, const ListSource& source,
              std::unique_ptr<FieldBinding<Value>> binding = nullptr)
        : BoundControl<Value, ListControl>(std::move(binding), host, id, source) {}

    void store() override {
        if (this->selected() != ListControl::noItem)
            BoundControl<Value, ListControl>::store();
    }
};

/// Bound to the value of the selected item.
class ListBox : public BoundList<std::int32_t> {
public:
    using BoundList::BoundList;

    std::int32_t value() const override;
    void setValue(const std::int32_t& value) override;
};

/// Bound to the text of the selected item.
class TextListBox : public BoundList<std::string> {
public:
    using BoundList::BoundList;

    /// Empty without a selection.
    std::string value() const override;
    void setValue(const std::string& value) override;
};

} // namespace framework
