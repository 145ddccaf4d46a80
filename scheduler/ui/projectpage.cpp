#include "scheduler/ui/projectpage.h"

#include "lib/base/files.h"
#include "resources/ids.h"

namespace scheduler {
namespace {

constexpr framework::NumberRange timeLimitMinutes{0, 9999};

// The position of the Autoconnect item that is not a phone book entry.
constexpr int anyOpenConnection = 0;

framework::ItemList runCommandItems() {
    framework::ItemList items;
    for (const std::string_view name : runCommandNames)
        items.add({std::string(name), items.count()});
    return items;
}

framework::ItemList connectionItems(const std::vector<std::string>& phoneBookEntries) {
    framework::ItemList items;
    items.add({.text = "(any open connection)", .value = anyOpenConnection, .gray = true});
    for (const std::string& entry : phoneBookEntries)
        items.add({entry, items.count()});
    return items;
}

bool isFolder(const std::string& path) {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

/// Several files are shown in quotes, and no usable path begins with a quote.
bool namesSeveralFiles(const std::string& path) {
    return path.starts_with('"');
}

bool isProject(const std::string& path) {
    // Several files come from the Browse dialog, which accepts only existing files.
    return namesSeveralFiles(path) || isCommandLine(path) || (base::fileExists(path) && !isFolder(path));
}

} // namespace

ProjectPage::ProjectPage(ScheduledProject& record, const std::vector<std::string>& phoneBookEntries)
    : PropertyPage(IDD_PROJECT_PAGE),
      record_(record),
      runCommands_(runCommandItems()),
      connections_(connectionItems(phoneBookEntries)),
      path_(*this, IDC_PROJECT_PATH, framework::bindText(record.path)),
      runCommand_(*this, IDC_RUN_COMMAND, runCommands_, framework::bindNumber(record.runCommand)),
      autoconnect_(*this, IDC_AUTOCONNECT, connections_, framework::bindText(record.dialupEntry)),
      timeLimit_(*this, IDC_TIME_LIMIT, timeLimitMinutes, framework::bindNumber(record.timeLimitMinutes)),
      disconnect_(*this, IDC_DISCONNECT, framework::bindFlag(record.disconnectWhenDone)) {
    path_.setButtonText("&Browse...");
    path_.setFilter("Corvane Projects (.kra;.krb;.krc)|*.kra;*.krb;*.krc|All Files (*.*)|*.*||");
    path_.addFlags(OFN_EXPLORER);
    path_.setCheck(&isProject, "You must enter the path to an existing Corvane project file.");
    setMultiSelect(true);
}

void ProjectPage::setMultiSelect(bool several) {
    if (several)
        path_.addFlags(OFN_ALLOWMULTISELECT);
    else
        path_.removeFlags(OFN_ALLOWMULTISELECT);
}

std::vector<std::string> ProjectPage::chosenFiles() const {
    return namesSeveralFiles(record_.path) ? path_.chosen() : std::vector<std::string>();
}

void ProjectPage::load() {
    PropertyPage::load();
    // An empty name always means any open connection, even if a phone book entry has an empty name.
    if (record_.dialupEntry.empty())
        autoconnect_.select(anyOpenConnection);
}

void ProjectPage::store() {
    PropertyPage::store();
    if (autoconnect_.selected() == anyOpenConnection)
        record_.dialupEntry.clear();
}

void ProjectPage::updateState() {
    // Relinking uses local files: it needs no connection and has no time limit.
    const bool connects = runCommand_.value() != static_cast<std::int32_t>(RunCommand::RelinkFiles);
    autoconnect_.setEnabled(connects);
    timeLimit_.setEnabled(connects);
    disconnect_.setEnabled(connects);
}

} // namespace scheduler
