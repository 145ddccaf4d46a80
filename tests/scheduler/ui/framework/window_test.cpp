#include "lib/base/opsys.h"
#include "tests/scheduler/ui/framework/probewindow.h"
#include "tests/support/windowlooks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using framework::Handled;
using framework::Message;
using framework::Window;
using framework::WindowClass;
using test::nested;
using test::placeOf;
using test::probe;
using test::ProbeWindow;

class Windows : public testing::Test {
protected:
    void SetUp() override {
        filtered->handler = [this](const Message& message) -> Handled {
            log += message.id == probe ? "window" : "";
            return std::nullopt;
        };
        ASSERT_TRUE(filtered->open());
    }
    std::string asked() {
        log.clear();
        SendMessageA(filtered->handle(), probe, 0, 0);
        return log;
    }

    std::string log;
    std::unique_ptr<ProbeWindow> filtered = std::make_unique<ProbeWindow>();
};

TEST_F(Windows, AreBoundFromTheirFirstMessageUntilDestruction) {
    ProbeWindow window;
    std::vector<UINT> seen;
    window.handler = [&](const Message& message) -> Handled {
        seen.push_back(message.id);
        EXPECT_NE(window.handle(), nullptr);
        return std::nullopt;
    };
    ASSERT_TRUE(window.open());
    EXPECT_THAT(seen, testing::IsSupersetOf({WM_NCCREATE, WM_CREATE}));
    const HWND handle = window.handle();
    EXPECT_EQ(Window::of(handle), &window);
    EXPECT_EQ(window.attachments, 1);
    DestroyWindow(handle);
    EXPECT_EQ(window.handle(), nullptr);
    EXPECT_EQ(Window::of(handle), nullptr);
}

TEST_F(Windows, ARefusedCreationLeavesNoHandle) {
    ProbeWindow window;
    window.handler = [](const Message& message) {
        return message.id == WM_NCCREATE ? Handled(0) : std::nullopt;
    };
    EXPECT_FALSE(window.open());
    EXPECT_EQ(window.handle(), nullptr);
    EXPECT_EQ(window.attachments, 0);
}

TEST_F(Windows, AHandledMessageReturnsTheHandlersResultAndOthersTheDefault) {
    ProbeWindow window;
    window.handler = [&](const Message& message) -> Handled {
        if (message.id == nested)
            return 1;
        if (message.id != probe)
            return std::nullopt;
        const LRESULT inner = SendMessageA(window.handle(), nested, 7, 8);
        return static_cast<LRESULT>(message.wParam) * 10 + message.lParam + inner;
    };
    ASSERT_TRUE(window.open());
    EXPECT_EQ(SendMessageA(window.handle(), probe, 4, 2), 43) << "unchanged by the nested message";
    EXPECT_EQ(SendMessageA(window.handle(), nested + 1, 40, 2), 0);
    SetWindowTextA(window.handle(), "by default");
    EXPECT_EQ(base::windowText(window.handle()), "by default");
}

TEST_F(Windows, AnObjectMayBeDestroyedInsideItsOwnHandlerAndInsideANestedOne) {
    for (const UINT message : {nested, probe}) {
        auto window = std::make_unique<ProbeWindow>();
        window->handler = [&window](const Message& handled) -> Handled {
            if (handled.id == probe)
                SendMessageA(window->handle(), nested, 0, 0);
            else if (handled.id == nested)
                const auto doomed = std::move(window); // destroys this lambda's captures, too
            return std::nullopt;
        };
        ASSERT_TRUE(window->open());
        const HWND handle = window->handle();
        EXPECT_EQ(SendMessageA(handle, message, 0, 0), 0);
        EXPECT_FALSE(IsWindow(handle));
    }
}

TEST_F(Windows, AMessageWhoseHandlerThrowsGetsDefaultProcessingUnlessItIsAClose) {
    ProbeWindow window;
    ASSERT_TRUE(window.open());
    window.handler = [](const Message&) -> Handled { throw std::runtime_error("refused"); };
    SetWindowTextA(window.handle(), "set by default");
    SendMessageA(window.handle(), WM_CLOSE, 0, 0);
    ASSERT_NE(window.handle(), nullptr);
    window.handler = nullptr;
    EXPECT_EQ(base::windowText(window.handle()), "set by default");
    window.handler = [](const Message& message) -> Handled {
        return message.id == WM_NCDESTROY ? throw std::runtime_error("refused") : std::nullopt;
    };
    DestroyWindow(window.handle());
    EXPECT_EQ(window.handle(), nullptr);
}

TEST_F(Windows, AnObjectAttachesToAControlAndDetaches) {
    const HWND edit = test::createPlain("EDIT", WS_POPUP, {0, 0, 50, 20});
    SetWindowTextA(edit, "text");
    EXPECT_EQ(Window::of(edit), nullptr) << "a window of another class has no object";
    {
        ProbeWindow window;
        ASSERT_TRUE(window.attach(edit));
        EXPECT_EQ(Window::of(edit), &window);
        EXPECT_EQ(window.attachments, 1);
        ProbeWindow other;
        EXPECT_FALSE(other.attach(edit)) << "it has an object already";
        window.handler = [](const Message& message) {
            return message.id == probe ? Handled(9) : std::nullopt;
        };
        EXPECT_EQ(SendMessageA(edit, probe, 0, 0), 9);
        EXPECT_EQ(SendMessageA(edit, WM_GETTEXTLENGTH, 0, 0), 4) << "the control still works";
    }
    ASSERT_TRUE(IsWindow(edit)) << "detaching does not destroy the control";
    EXPECT_EQ(Window::of(edit), nullptr);
    EXPECT_EQ(SendMessageA(edit, probe, 0, 0), 0);
    EXPECT_EQ(SendMessageA(edit, WM_GETTEXTLENGTH, 0, 0), 4);
    SetWindowLongA(edit, GWL_USERDATA, 0x1234);
    EXPECT_EQ(Window::of(edit), nullptr) << "foreign user data is not an object";
    EXPECT_FALSE(ProbeWindow().attach(edit));
    DestroyWindow(edit);
}

TEST_F(Windows, AreCentredOverTheirParentOrTheDesktop) {
    ProbeWindow parent;
    ASSERT_TRUE(parent.open(WS_OVERLAPPEDWINDOW, {100, 50, 500, 350}));
    const HWND child = test::createPlain("STATIC", WS_POPUP, {0, 0, 101, 60}, parent.handle());
    framework::centreWindow(child);
    EXPECT_EQ(placeOf(child).left, 300 - 50);
    EXPECT_EQ(placeOf(child).top, 200 - 30);
    EXPECT_EQ(placeOf(child).right, 300 - 50 + 101);
    framework::centreWindow(parent.handle());
    const RECT desktop = placeOf(GetDesktopWindow());
    EXPECT_EQ(placeOf(parent.handle()).left, desktop.right / 2 - 200);
    EXPECT_EQ(placeOf(parent.handle()).top, desktop.bottom / 2 - 150);
}

std::string decimal(const void* handle) {
    return std::to_string(reinterpret_cast<ULONG_PTR>(handle));
}

bool isRegistered(const std::string& name) {
    WNDCLASSEXA found{};
    found.cbSize = sizeof(found);
    return GetClassInfoExA(base::moduleHandle(), name.c_str(), &found);
}

TEST_F(Windows, UnnamedClassesAreNamedAfterTheirAttributesAndShared) {
    WindowClass one;
    WindowClass other;
    for (WindowClass* described : {&one, &other}) {
        described->description().style = CS_DBLCLKS;
        described->description().lpszMenuName = MAKEINTRESOURCEA(100);
    }
    const WNDCLASSEXA& record = one.description();
    EXPECT_EQ(one.name(), "gen:8:" + decimal(record.hCursor) + ":" + decimal(record.hbrBackground) + ":100");
    EXPECT_EQ(other.name(), one.name());
    one.registerOnce();
    other.registerOnce(); // a duplicate: the platform's failure is ignored
    EXPECT_TRUE(isRegistered(one.name()));
    WindowClass("a name of its own").registerOnce();
    EXPECT_TRUE(isRegistered("a name of its own"));
}

class LoggingFilter : public framework::MessageFilter {
public:
    using Act = std::function<Handled()>;

    LoggingFilter(Window& window, std::string& log, std::string name, Act act = nullptr)
        : log_(log), name_(std::move(name)), act_(std::move(act)) {
        window.addFilter(*this);
    }
    Handled filterMessage(Window&, const Message& message) override {
        if (message.id != probe)
            return std::nullopt;
        log_ += name_ + ' ';
        return act_ ? act_() : std::nullopt;
    }

private:
    std::string& log_;
    std::string name_;
    Act act_;
};

TEST_F(Windows, FiltersSeeAMessageBeforeTheObjectAndTheLastFilterSeesItFirst) {
    LoggingFilter first(*filtered, log, "first");
    LoggingFilter second(*filtered, log, "second");
    EXPECT_EQ(asked(), "second first window");
    filtered->removeFilter(second);
    EXPECT_EQ(asked(), "first window");
}

TEST_F(Windows, EachRemainingFilterRunsOnceWhenOthersAreRemoved) {
    LoggingFilter first(*filtered, log, "first");
    const auto removeFirst = [&] { return filtered->removeFilter(first), std::nullopt; };
    LoggingFilter second(*filtered, log, "second", removeFirst);
    LoggingFilter* last = nullptr;
    LoggingFilter third(*filtered, log, "third", [&] { return filtered->removeFilter(*last), std::nullopt; });
    last = &third;
    EXPECT_EQ(asked(), "third second window") << "a removed filter does not run";
    filtered->addFilter(first); // runs before the second filter removes it
    EXPECT_EQ(asked(), "first second window");
}

TEST_F(Windows, AFiltersResultEndsTheHandlingOfAMessage) {
    LoggingFilter filter(*filtered, log, "filter", [] { return Handled(5); });
    EXPECT_EQ(SendMessageA(filtered->handle(), probe, 0, 0), 5);
    EXPECT_EQ(log, "filter ");
}

TEST_F(Windows, AFilterMayDestroyTheObject) {
    LoggingFilter last(*filtered, log, "last");
    LoggingFilter destroyer(*filtered, log, "destroyer", [&] { return filtered.reset(), std::nullopt; });
    const HWND handle = filtered->handle();
    EXPECT_EQ(asked(), "destroyer ");
    EXPECT_FALSE(IsWindow(handle));
}

} // namespace
