#include "scheduler/ui/rowimages.h"

#include "lib/base/opsys.h"
#include "resources/ids.h"
#include "scheduler/ui/schedulerows.h"

#include <algorithm>
#include <array>

namespace scheduler {
namespace {

// Pixels, in descending order.
constexpr std::array drawnSizes = {32, 24, 20, 16};

// In the order of RowImage.
constexpr std::array icons = {IDI_ROW_RUNNING, IDI_ROW_WAITING, IDI_ROW_DISABLED, IDI_ROW_RESULT};
static_assert(icons.size() == static_cast<std::size_t>(RowImage::None));

struct IconTraits {
    using Handle = HICON;
    static Handle none() { return nullptr; }
    static void close(Handle handle) { DestroyIcon(handle); }
};
using Icon = base::UniqueHandle<IconTraits>;

Icon loadIcon(int icon, int size) {
    return Icon(static_cast<HICON>(
        LoadImageA(base::moduleHandle(), MAKEINTRESOURCEA(icon), IMAGE_ICON, size, size, LR_DEFAULTCOLOR)));
}

} // namespace

ImageList makeRowImages(int size) {
    const auto* const fitting = std::ranges::find_if(drawnSizes, [size](int drawn) { return drawn <= size; });
    const int drawn = fitting == drawnSizes.end() ? drawnSizes.back() : *fitting;
    ImageList images(
        ImageList_Create(drawn, drawn, ILC_COLOR32 | ILC_MASK, static_cast<int>(icons.size()), 0));
    for (const int id : icons) {
        const Icon icon = loadIcon(id, drawn);
        if (!icon || ImageList_ReplaceIcon(images.get(), -1, icon.get()) < 0)
            return {};
    }
    return images;
}

} // namespace scheduler
