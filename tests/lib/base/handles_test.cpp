#include "lib/base/handles.h"
#include "tests/support/handlecount.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

namespace base {
namespace {

using testing::ElementsAre;

std::vector<int> closed;

struct FakeTraits {
    using Handle = int;
    static Handle none() { return -1; }
    static void close(Handle handle) { closed.push_back(handle); }
};
using FakeHandle = UniqueHandle<FakeTraits>;

static_assert(!std::is_copy_constructible_v<FakeHandle> && !std::is_copy_assignable_v<FakeHandle>);
static_assert(std::is_nothrow_move_constructible_v<FakeHandle> &&
              std::is_nothrow_move_assignable_v<FakeHandle>);

class Handles : public testing::Test {
protected:
    Handles() { closed.clear(); }
    std::optional<FakeHandle> handle_ = FakeHandle(7);
};

TEST_F(Handles, HandleIsClosedOnceUnlessEmptyOrReleased) {
    EXPECT_TRUE(*handle_);
    EXPECT_EQ(handle_->get(), 7);
    handle_.reset();
    EXPECT_THAT(closed, ElementsAre(7));
    { EXPECT_TRUE(FakeHandle(0)); }
    { EXPECT_FALSE(FakeHandle()); }
    {
        FakeHandle released(8);
        EXPECT_EQ(released.release(), 8);
        EXPECT_FALSE(released);
    }
    EXPECT_THAT(closed, ElementsAre(7, 0));
}

TEST_F(Handles, ResetAndReceiveCloseTheOldHandle) {
    handle_->reset(8);
    EXPECT_EQ(handle_->get(), 8);
    handle_->reset();
    EXPECT_FALSE(*handle_);
    handle_->reset(9);
    int* const place = handle_->receive();
    EXPECT_THAT(closed, ElementsAre(7, 8, 9));
    EXPECT_EQ(*place, -1);
    *place = 10;
    EXPECT_EQ(handle_->get(), 10);
}

TEST_F(Handles, MoveTransfersTheHandleAndClosesTheTargetsOldOne) {
    FakeHandle second(std::move(*handle_));
    handle_.reset();
    EXPECT_TRUE(closed.empty());
    EXPECT_EQ(second.get(), 7);
    FakeHandle third(8);
    third = std::move(second);
    EXPECT_THAT(closed, ElementsAre(8));
    FakeHandle& same = third;
    third = std::move(same);
    EXPECT_THAT(closed, ElementsAre(8));
    EXPECT_EQ(third.get(), 7);
}

TEST_F(Handles, PlatformHandlesAreClosedAndKnowTheirInvalidValue) {
    EXPECT_FALSE(KernelHandle(nullptr) || FileHandle(INVALID_HANDLE_VALUE) || RegistryKey(nullptr));
    EXPECT_FALSE(KernelHandle() || FileHandle() || RegistryKey());
    const auto useAll = [] {
        const KernelHandle event(CreateEventA(nullptr, TRUE, FALSE, nullptr));
        const FileHandle file(
            CreateFileA("nul", GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
        RegistryKey key;
        EXPECT_EQ(RegOpenKeyExA(HKEY_CURRENT_USER, "Software", 0, KEY_READ, key.receive()), ERROR_SUCCESS);
        EXPECT_TRUE(event && file && key);
        return test::handleCount();
    };
    useAll(); // the first call leaves handles open
    const unsigned before = test::handleCount();
    EXPECT_EQ(useAll(), before + 3);
    EXPECT_EQ(test::handleCount(), before);
}

} // namespace
} // namespace base
