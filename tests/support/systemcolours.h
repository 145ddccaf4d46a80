#pragma once

#include <windows.h>

#include <initializer_list>
#include <utility>
#include <vector>

namespace test {

/// Changes system colours for all programs of the session, and restores them on destruction.
class SystemColours {
public:
    /// Pairs of a COLOR_ constant and its colour.
    explicit SystemColours(std::initializer_list<std::pair<int, COLORREF>> colours) {
        std::vector<COLORREF> now;
        for (const auto& [element, colour] : colours) {
            elements_.push_back(element);
            before_.push_back(GetSysColor(element));
            now.push_back(colour);
        }
        set(now);
    }
    SystemColours(const SystemColours&) = delete;
    SystemColours& operator=(const SystemColours&) = delete;
    ~SystemColours() { set(before_); }

private:
    void set(const std::vector<COLORREF>& colours) const {
        SetSysColors(static_cast<int>(elements_.size()), elements_.data(), colours.data());
    }

    std::vector<int> elements_;
    std::vector<COLORREF> before_;
};

} // namespace test
