#include "tests/scheduler/ui/framework/probewindow.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

using framework::Handled;
using framework::Message;
using framework::MessageFilter;
using framework::Window;
using test::createProbe;
using test::nested;
using test::probe;
using test::ProbeWindow;

class FunctionFilter : public MessageFilter {
public:
    std::function<Handled(Window&, const Message&)> filter;
    Handled filterMessage(Window& window, const Message& message) override { return filter(window, message); }
};

TEST(WindowFilters, AreAskedOnceWhicheverOfThemGo) {
    ProbeWindow window;
    ASSERT_TRUE(createProbe(window));
    FunctionFilter first;
    FunctionFilter second;
    FunctionFilter third;
    std::string order;
    const auto noting = [&](const char* name, const std::function<void()>& act) {
        return [&order, name, act](Window&, const Message& message) -> Handled {
            if (message.id == probe) {
                order += name;
                act();
            }
            return std::nullopt;
        };
    };
    first.filter = noting("first ", [] {});
    second.filter = noting("second ", [&] { window.removeFilter(first); });
    third.filter = noting("third ", [&] { window.removeFilter(third); });
    window.addFilter(first);
    window.addFilter(second);
    window.addFilter(third);
    SendMessageA(window.handle(), probe, 0, 0);
    EXPECT_EQ(order, "third second ") << "one that is gone is not asked";
    window.addFilter(first); // on top of the second, which removes it once it has been asked
    order.clear();
    SendMessageA(window.handle(), probe, 0, 0);
    EXPECT_EQ(order, "first second ");
}

TEST(WindowFilters, SeeAMessageBeforeTheObjectTheLastOneFirst) {
    ProbeWindow window;
    std::string order;
    window.handler = [&](const Message& message) -> Handled {
        if (message.id == probe)
            order += "window";
        return std::nullopt;
    };
    ASSERT_TRUE(createProbe(window));
    FunctionFilter first;
    first.filter = [&](Window&, const Message& message) -> Handled {
        if (message.id == probe)
            order += "first ";
        return std::nullopt;
    };
    FunctionFilter second = first;
    second.filter = [&](Window&, const Message& message) -> Handled {
        if (message.id == probe)
            order += "second ";
        return std::nullopt;
    };
    window.addFilter(first);
    window.addFilter(second);
    SendMessageA(window.handle(), probe, 0, 0);
    EXPECT_EQ(order, "second first window");
    order.clear();
    window.removeFilter(second);
    SendMessageA(window.handle(), probe, 0, 0);
    EXPECT_EQ(order, "first window");
}

TEST(WindowFilters, AFilterThatHandlesAMessageGivesItsResult) {
    ProbeWindow window;
    bool reached = false;
    window.handler = [&](const Message& message) -> Handled {
        reached |= message.id == probe;
        return std::nullopt;
    };
    ASSERT_TRUE(createProbe(window));
    FunctionFilter filter;
    filter.filter = [](Window&, const Message& message) -> Handled {
        return message.id == probe ? Handled(5) : std::nullopt;
    };
    window.addFilter(filter);
    EXPECT_EQ(SendMessageA(window.handle(), probe, 0, 0), 5);
    EXPECT_FALSE(reached);
}

TEST(WindowFilters, MayRemoveThemselvesOrDestroyTheObject) {
    auto window = std::make_unique<ProbeWindow>();
    ASSERT_TRUE(createProbe(*window));
    FunctionFilter last;
    last.filter = [](Window&, const Message&) -> Handled { return std::nullopt; };
    FunctionFilter destroyer;
    destroyer.filter = [&](Window& filtered, const Message& message) -> Handled {
        if (message.id == nested)
            filtered.removeFilter(destroyer);
        if (message.id == probe)
            window.reset();
        return std::nullopt;
    };
    window->addFilter(last);
    window->addFilter(destroyer);
    const HWND handle = window->handle();
    SendMessageA(handle, nested, 0, 0);
    window->addFilter(destroyer);
    SendMessageA(handle, probe, 0, 0);
    EXPECT_FALSE(IsWindow(handle));
}

} // namespace
