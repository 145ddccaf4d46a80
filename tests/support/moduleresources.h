// The test program's raw resources and a reader for their packed structures.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>

namespace test {

inline std::string_view resourceBytes(const char* type, int id) {
    HMODULE module = GetModuleHandleA(nullptr);
    HRSRC found = FindResourceA(module, MAKEINTRESOURCEA(id), type);
    HGLOBAL loaded = found ? LoadResource(module, found) : nullptr;
    const void* bytes = loaded ? LockResource(loaded) : nullptr;
    return bytes ? std::string_view(static_cast<const char*>(bytes), SizeofResource(module, found))
                 : std::string_view();
}

class PackedReader {
public:
    explicit PackedReader(std::string_view bytes) : bytes_(bytes) {}

    /// Throws past the end, which fails the test.
    template<class Value>
    Value read() {
        const std::string_view source = take(sizeof(Value));
        Value value{};
        std::memcpy(&value, source.data(), sizeof value);
        return value;
    }

    /// Reads a zero-terminated text. ASCII only.
    std::string readWideText() {
        std::string text;
        while (const auto character = read<WORD>())
            text += static_cast<char>(character);
        return text;
    }

    void alignTo(std::size_t size) { at_ = (at_ + size - 1) / size * size; }

    std::string_view take(std::size_t size) {
        if (size > bytes_.size() || at_ > bytes_.size() - size)
            throw std::out_of_range("the resource is shorter than its structure");
        const std::string_view taken = bytes_.substr(at_, size);
        at_ += size;
        return taken;
    }

private:
    std::string_view bytes_;
    std::size_t at_ = 0;
};

} // namespace test
