#include "lib/base/opsys.h"
#include "scheduler/ui/framework/windowclass.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using framework::WindowClass;

std::string decimal(const void* handle) {
    return std::to_string(reinterpret_cast<ULONG_PTR>(handle));
}

TEST(WindowClass, ANamelessClassIsNamedAfterItsAttributes) {
    WindowClass windowClass;
    WNDCLASSEXA& description = windowClass.description();
    description.style = CS_DBLCLKS;
    description.lpszMenuName = MAKEINTRESOURCEA(100);
    EXPECT_EQ(windowClass.name(),
              "gen:8:" + decimal(description.hCursor) + ":" + decimal(description.hbrBackground) + ":100");
}

TEST(WindowClass, IdenticalAttributesShareOneClass) {
    WindowClass one;
    WindowClass other;
    WindowClass different;
    different.description().style = CS_HREDRAW;
    EXPECT_EQ(one.name(), other.name());
    EXPECT_NE(one.name(), different.name());
    one.registerOnce();
    other.registerOnce(); // refused by the platform, which is ignored
    WNDCLASSEXA found{};
    found.cbSize = sizeof(found);
    EXPECT_TRUE(GetClassInfoExA(base::moduleHandle(), other.name().c_str(), &found));
}

TEST(WindowClass, ANameOfItsOwnIsKept) {
    WindowClass windowClass("a name of its own");
    windowClass.registerOnce();
    WNDCLASSEXA found{};
    found.cbSize = sizeof(found);
    EXPECT_TRUE(GetClassInfoExA(base::moduleHandle(), "a name of its own", &found));
}

} // namespace
