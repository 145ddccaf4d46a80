// A field for a file's path, with a Browse button to its right.
#pragma once

#include "scheduler/ui/framework/edit.h"
#include "scheduler/ui/framework/pushbutton.h"

#include <commdlg.h>

#include <functional>
#include <string>
#include <vector>

namespace framework {

class BrowseEdit : public Edit {
public:
    /// The edit shares its rectangle in the template with the button.
    BrowseEdit(ControlHost& host, int id, Binding binding = nullptr);

    void setButtonText(std::string text);

    /// Alternating names and patterns, separated by "|".
    void setFilter(const std::string& sections);

    /// Flags of the open-file dialog (OFN_...).
    void addFlags(DWORD flags) { flags_ |= flags; }
    void removeFlags(DWORD flags) { flags_ &= ~flags; }

    void setCheck(std::function<bool(const std::string& text)> isAcceptable, std::string message);

    /// The files chosen last, even if the text has changed since: a full path, then names in the same folder.
    const std::vector<std::string>& chosen() const { return chosen_; }

    /// Shows the open-file dialog. If the user cancels or the dialog fails, the text is unchanged.
    void browse();

    bool check() override;

protected:
    void onAttached() override;
    Handled onMessage(const Message& message) override;

private:
    void createButton();
    void layOut();

    PushButton button_;
    std::string buttonText_ = "&...";
    std::string filter_;
    DWORD flags_ = OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY;
    std::function<bool(const std::string&)> isAcceptable_;
    std::string message_;
    RECT place_{}; ///< of edit and button, in the dialog's client coordinates
    std::vector<std::string> chosen_;
};

} // namespace framework
