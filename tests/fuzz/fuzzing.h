#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace fuzzing {

/// Aborts unless `holds`, so that the fuzzer saves the input.
inline void require(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "requirement failed: %s\n", what);
    std::abort();
}

/// Reads values from the start of a fuzzer's input. Values past the end are 0 or empty.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : rest_(reinterpret_cast<const char*>(data), size) {}

    std::size_t number(std::size_t limit) { return limit == 0 ? 0 : byte() % limit; }

    std::string line() {
        const std::size_t end = rest_.find('\n');
        std::string text(rest_.substr(0, end));
        rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
        return text;
    }

    std::string_view rest() const { return rest_; }

private:
    std::size_t byte() {
        if (rest_.empty())
            return 0;
        const auto value = static_cast<unsigned char>(rest_.front());
        rest_.remove_prefix(1);
        return value;
    }

    std::string_view rest_;
};

} // namespace fuzzing

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
