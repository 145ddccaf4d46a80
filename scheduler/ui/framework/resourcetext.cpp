#include "scheduler/ui/framework/resourcetext.h"

#include "lib/base/opsys.h"

namespace framework {

std::string resourceText(UINT id) {
    // The platform does not report the full length, so a text that fills the buffer may be truncated.
    for (std::size_t room = 256;; room *= 2) {
        std::string text(room, '\0');
        const int length = LoadStringA(base::moduleHandle(), id, text.data(), static_cast<int>(room));
        text.resize(static_cast<std::size_t>(length));
        if (text.size() + 2 < room) // a two-byte character is truncated as a whole
            return text;
    }
}

} // namespace framework
