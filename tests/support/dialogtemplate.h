// Parses a dialog template. Does not support the extended form.
#pragma once

#include "tests/support/moduleresources.h"

#include <windows.h>

#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace test {

struct TemplateItem {
    int id = 0;                              ///< -1 if the program does not use it
    std::string kind;                        ///< class name in lower case
    std::string text;                        ///< or "#" and the id of a resource
    int x = 0, y = 0, width = 0, height = 0; ///< dialog units
    DWORD style = 0;                         ///< without WS_CHILD

    bool operator==(const TemplateItem&) const = default;
};

struct DialogTemplate {
    DWORD style = 0;
    int width = 0;
    int height = 0;
    std::string caption;
    int fontSize = 0;
    std::string fontName;
    std::vector<TemplateItem> items;
};

namespace detail {

inline std::string readNamed(PackedReader& reader) {
    constexpr WORD mark = 0xFFFF;
    PackedReader ahead = reader;
    if (ahead.read<WORD>() != mark)
        return reader.readWideText();
    reader.read<WORD>();
    return "#" + std::to_string(reader.read<WORD>());
}

inline std::string readClass(PackedReader& reader) {
    std::string name = readNamed(reader);
    for (const auto& [number, meaning] : {std::pair{"#128", "button"}, std::pair{"#129", "edit"},
                                          std::pair{"#130", "static"}, std::pair{"#133", "combobox"}}) {
        if (name == number)
            return meaning;
    }
    CharLowerA(name.data());
    return name;
}

inline TemplateItem readItem(PackedReader& reader) {
    TemplateItem item;
    reader.alignTo(sizeof(DWORD));
    item.style = reader.read<DWORD>() & ~DWORD{WS_CHILD};
    reader.read<DWORD>(); // extended style
    item.x = reader.read<short>();
    item.y = reader.read<short>();
    item.width = reader.read<short>();
    item.height = reader.read<short>();
    item.id = reader.read<short>();
    item.kind = readClass(reader);
    item.text = readNamed(reader);
    reader.take(reader.read<WORD>()); // creation data
    return item;
}

} // namespace detail

inline DialogTemplate readDialogTemplate(int id) {
    PackedReader reader(resourceBytes(RT_DIALOG, id));
    DialogTemplate dialog;
    dialog.style = reader.read<DWORD>();
    reader.read<DWORD>(); // extended style
    dialog.items.resize(reader.read<WORD>());
    reader.take(2 * sizeof(WORD)); // position
    dialog.width = reader.read<short>();
    dialog.height = reader.read<short>();
    detail::readNamed(reader); // menu
    detail::readNamed(reader); // class
    dialog.caption = reader.readWideText();
    dialog.fontSize = reader.read<short>();
    dialog.fontName = reader.readWideText();
    for (TemplateItem& item : dialog.items)
        item = detail::readItem(reader);
    return dialog;
}

inline std::ostream& operator<<(std::ostream& out, const TemplateItem& item) {
    return out << item.kind << ' ' << item.id << " \"" << item.text << "\" " << item.x << ' ' << item.y << ' '
               << item.width << ' ' << item.height << " style " << std::hex << item.style << std::dec;
}

} // namespace test
