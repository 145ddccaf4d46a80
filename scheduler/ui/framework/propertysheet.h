#pragma once

#include "scheduler/ui/framework/modalowner.h"
#include "scheduler/ui/framework/propertypage.h"
#include "scheduler/ui/framework/window.h"

#include <string>
#include <vector>

namespace framework {

/// A modal dialog of several pages. (The platform's `PropertySheet` is a macro, hence the longer name.)
class PropertySheetDialog : public Window {
public:
    ~PropertySheetDialog() override;

    /// Appends a page, which must outlive the run.
    void add(PropertyPage& page) { pages_.push_back(&page); }

    /// Runs until closed, with the owner disabled. Returns IDOK after all pages passed their checks and were
    /// stored, IDCANCEL if cancelled, notCreated on failure.
    int run(const std::string& title, HWND owner);

    void onIdle() override;
    bool preTranslate(MSG& message) override;
    bool isModalFinished() const override;

protected:
    Handled onMessage(const Message& message) override;

private:
    [[nodiscard]] bool open(const std::string& title, HWND owner);
    void attachTo(HWND sheet);

    /// Creates each page by selecting it, because Wine 8 ignores PSP_PREMATURE.
    void createPages();

    void fitToPages();
    void close();

    std::vector<PropertyPage*> pages_;
};

} // namespace framework
