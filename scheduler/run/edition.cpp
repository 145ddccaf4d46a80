#include "scheduler/run/edition.h"

#include "lib/base/paths.h"

#include <array>
#include <cstddef>

namespace scheduler {

namespace {

struct Edition {
    std::string_view extension;
    std::string_view name;
};

constexpr std::array editions = {
    Edition{"kra", "Corvane Delta"},
    Edition{"krb", "Corvane Sigma"},
    Edition{"krc", "Corvane Omega"},
};

} // namespace

int editionOf(std::string_view path) {
    const std::string extension = base::extensionOf(path);
    for (std::size_t i = 0; i < editions.size(); ++i) {
        if (editions[i].extension == extension)
            return static_cast<int>(i) + 1;
    }
    return 0;
}

std::string editionName(std::string_view path) {
    const int edition = editionOf(path);
    return edition == 0 ? std::string() : std::string(editions[static_cast<std::size_t>(edition) - 1].name);
}

} // namespace scheduler
