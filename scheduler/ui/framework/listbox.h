// A drop-down list whose items come from a list source, drawn here so that some of them can be gray.
#pragma once

#include "scheduler/ui/framework/boundcontrol.h"
#include "scheduler/ui/framework/listsource.h"

#include <functional>

namespace framework {

/// Base of the list boxes: the items and their drawing. The template's combo box is owner-drawn with items of
/// one height and holds the texts as well, for screen readers and for typing ahead.
class ListControl : public Control {
public:
    static constexpr int noItem = -1;

    /// The source has to outlive the list box.
    ListControl(ControlHost& host, int id, const ListSource& source) : Control(host, id), source_(source) {}

    /// Fills the list from the source anew; nothing is selected then.
    void refill();

    int count() const;

    /// The position of the selected item, or noItem.
    int selected() const;
    void select(int item);

    /// Selects the first item that `isWanted`, or nothing.
    void selectFirst(const std::function<bool(int item)>& isWanted);

    bool onDrawItem(const DRAWITEMSTRUCT& item) override;

protected:
    void onAttached() override;
    const ListSource& source() const { return source_; }

private:
    void heightenCutItems();

    /// So that long texts can be read where the list drops down, too.
    void widenDroppedList(int textWidth);

    const ListSource& source_;
};

/// Bound to what the selected item stands for. With nothing selected that is nothing, and storing leaves the
/// field.
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

    /// Selects the first item that stands for the value, or nothing.
    void setValue(const std::int32_t& value) override;
};

/// Bound to the text of the selected item.
class TextListBox : public BoundList<std::string> {
public:
    using BoundList::BoundList;

    /// Empty when nothing is selected.
    std::string value() const override;
    void setValue(const std::string& value) override;
};

} // namespace framework
