// A field for the path of a file, with a button at its right that lets the user choose one.
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
    /// The edit and its button share the place that the template gives to the edit.
    BrowseEdit(ControlHost& host, int id, Binding binding = nullptr);

    void setButtonText(std::string text);

    /// Sections separated by "|": a name and its patterns in turn.
    void setFilter(const std::string& sections);

    /// Adds to the open-file dialog's flags (OFN_...), or takes away from them.
    void addFlags(DWORD flags) { flags_ |= flags; }
    void removeFlags(DWORD flags) { flags_ &= ~flags; }

    /// What may be stored, and what the user is told about any other text.
    void setCheck(std::function<bool(const std::string& text)> isAcceptable, std::string message);

    /// The files of the last Browse, even if the text was edited since: the first with its full path, the
    /// others by their names in the same folder.
    const std::vector<std::string>& chosen() const { return chosen_; }

    /// Lets the user choose. When nothing was chosen, or more than the dialog can hand over, the text stays
    /// as it is.
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
    RECT place_{}; ///< of edit and button, in the dialog's client area
    std::vector<std::string> chosen_;
};

} // namespace framework
