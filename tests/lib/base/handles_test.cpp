#include "lib/base/handles.h"
#include "tests/support/handlecount.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <type_traits>
#include <vector>

namespace base {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<int> closed;

struct FakeTraits {
    using Handle = int;
    static Handle none() { return -1; }
    static void close(Handle handle) { closed.push_back(handle); }
};
using FakeHandle = UniqueHandle<FakeTraits>;

class UniqueHandleTest : public testing::Test {
protected:
    void SetUp() override { closed.clear(); }
};

static_assert(!std::is_copy_constructible_v<FakeHandle> && !std::is_copy_assignable_v<FakeHandle>);
static_assert(std::is_nothrow_move_constructible_v<FakeHandle> &&
              std::is_nothrow_move_assignable_v<FakeHandle>);

TEST_F(UniqueHandleTest, OwnsNothingAtFirst) {
    {
        const FakeHandle handle;
        EXPECT_FALSE(handle);
        EXPECT_EQ(handle.get(), -1);
    }
    EXPECT_THAT(closed, IsEmpty());
}

TEST_F(UniqueHandleTest, ClosesWhatItOwnsOnce) {
    {
        const FakeHandle handle(7);
        EXPECT_TRUE(handle);
        EXPECT_EQ(handle.get(), 7);
    }
    EXPECT_THAT(closed, ElementsAre(7));
}

TEST_F(UniqueHandleTest, ZeroIsAHandleLikeAnyOtherWhereNoneIsSomethingElse) {
    { EXPECT_TRUE(FakeHandle(0)); }
    EXPECT_THAT(closed, ElementsAre(0));
}

TEST_F(UniqueHandleTest, ReleaseGivesUpOwnership) {
    {
        FakeHandle handle(7);
        EXPECT_EQ(handle.release(), 7);
        EXPECT_FALSE(handle);
    }
    EXPECT_THAT(closed, IsEmpty());
}

TEST_F(UniqueHandleTest, ResetClosesTheOldOne) {
    FakeHandle handle(7);
    handle.reset(8);
    EXPECT_THAT(closed, ElementsAre(7));
    EXPECT_EQ(handle.get(), 8);
    handle.reset();
    EXPECT_FALSE(handle);
    handle.reset();
    EXPECT_THAT(closed, ElementsAre(7, 8));
}

TEST_F(UniqueHandleTest, MoveConstructionHandsOver) {
    {
        FakeHandle first(7);
        const FakeHandle second(std::move(first));
        EXPECT_EQ(second.get(), 7);
    }
    EXPECT_THAT(closed, ElementsAre(7));
}

TEST_F(UniqueHandleTest, MoveAssignmentClosesTheOldOneAndHandsOver) {
    {
        FakeHandle first(7);
        FakeHandle second(8);
        second = std::move(first);
        EXPECT_THAT(closed, ElementsAre(8));
        EXPECT_EQ(second.get(), 7);
    }
    EXPECT_THAT(closed, ElementsAre(8, 7));
}

TEST_F(UniqueHandleTest, MoveAssignmentToItselfKeepsTheHandle) {
    {
        FakeHandle handle(7);
        FakeHandle& same = handle;
        handle = std::move(same);
        EXPECT_EQ(handle.get(), 7);
        EXPECT_THAT(closed, IsEmpty());
    }
    EXPECT_THAT(closed, ElementsAre(7));
}

TEST_F(UniqueHandleTest, ReceiveClosesTheOldOneAndTakesTheNew) {
    {
        FakeHandle handle(7);
        int* const place = handle.receive();
        EXPECT_THAT(closed, ElementsAre(7));
        EXPECT_EQ(*place, -1);
        *place = 9;
        EXPECT_EQ(handle.get(), 9);
    }
    EXPECT_THAT(closed, ElementsAre(7, 9));
}

TEST(PlatformHandles, KnowTheirNotionOfNone) {
    EXPECT_FALSE(KernelHandle(nullptr));
    EXPECT_FALSE(FileHandle(INVALID_HANDLE_VALUE));
    EXPECT_FALSE(RegistryKey(nullptr));
    EXPECT_FALSE(KernelHandle());
    EXPECT_FALSE(FileHandle());
    EXPECT_FALSE(RegistryKey());
}

TEST(PlatformHandles, AreClosed) {
    const auto useAll = [] {
        const KernelHandle event(CreateEventA(nullptr, TRUE, FALSE, nullptr));
        EXPECT_TRUE(event);
        const FileHandle file(
            CreateFileA("nul", GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
        EXPECT_TRUE(file);
        RegistryKey key;
        EXPECT_EQ(RegOpenKeyExA(HKEY_CURRENT_USER, "Software", 0, KEY_READ, key.receive()), ERROR_SUCCESS);
        EXPECT_TRUE(key);
        return test::handleCount();
    };
    useAll(); // whatever the platform keeps from a first time
    const unsigned before = test::handleCount();
    EXPECT_EQ(useAll(), before + 3);
    EXPECT_EQ(test::handleCount(), before);
}

} // namespace
} // namespace base
