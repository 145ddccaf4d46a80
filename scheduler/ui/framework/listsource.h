// The items of a list box: texts in order, each with a value.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

namespace framework {

class ListSource {
public:
    virtual ~ListSource() = default;

    virtual int count() const = 0;

    // `item` is a position, counted from 0.
    virtual std::string text(int item) const = 0;
    virtual std::int32_t value(int item) const { return item; }

    /// The text's colour, COLOR_..., while the item is neither selected nor disabled.
    virtual int textColour(int) const { return COLOR_WINDOWTEXT; }

    /// Whether an item with `value` matches `wanted`.
    virtual bool equal(std::int32_t value, std::int32_t wanted) const { return value == wanted; }
};

class ItemList : public ListSource {
public:
    struct Item {
        std::string text;
        std::int32_t value = 0;
        bool gray = false;
    };

    ItemList() = default;
    explicit ItemList(std::vector<Item> items) : items_(std::move(items)) {}

    void add(Item item) { items_.push_back(std::move(item)); }

    int count() const override { return static_cast<int>(items_.size()); }
    std::string text(int item) const override { return at(item).text; }
    std::int32_t value(int item) const override { return at(item).value; }
    int textColour(int item) const override { return at(item).gray ? COLOR_GRAYTEXT : COLOR_WINDOWTEXT; }

private:
    const Item& at(int item) const { return items_.at(static_cast<std::size_t>(item)); }

    std::vector<Item> items_;
};

} // namespace framework
