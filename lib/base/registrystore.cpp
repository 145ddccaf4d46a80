#include "lib/base/registrystore.h"

#include "lib/base/registry.h"
#include "lib/base/sourceregistration.h"

#include <algorithm>

namespace base {
namespace {

[[maybe_unused]] const bool registered = registerSourceFile(__FILE__, RELEASE_DATE);

class EnteredValue {
public:
    EnteredValue(RegistryStore& store, std::string_view name) : store_(store), name_(name) {
        store_.enter(name_);
    }
    ~EnteredValue() { store_.leave(name_); }
    EnteredValue(const EnteredValue&) = delete;
    EnteredValue& operator=(const EnteredValue&) = delete;

private:
    RegistryStore& store_;
    std::string_view name_;
};

} // namespace

void RegistryStore::enter(std::string_view name) {
    if (!path_.empty())
        path_ += '\\';
    path_ += name;
}

void RegistryStore::leave(std::string_view name) {
    path_.resize(path_.size() - std::min(path_.size(), name.size()));
    if (path_.ends_with('\\'))
        path_.pop_back();
}

bool RegistryStore::readNumber(const std::string& name, std::uint32_t& out) {
    const EnteredValue value(*this, name);
    return base::readNumber(root_, path_, out);
}

bool RegistryStore::readString(const std::string& name, std::string& out) {
    const EnteredValue value(*this, name);
    return base::readString(root_, path_, out);
}

bool RegistryStore::writeNumber(const std::string& name, std::uint32_t value) {
    const EnteredValue entered(*this, name);
    return base::writeNumber(root_, path_, value);
}

bool RegistryStore::writeString(const std::string& name, std::string_view text) {
    const EnteredValue entered(*this, name);
    return base::writeString(root_, path_, text);
}

bool RegistryStore::readBinaryHere(std::string& out) const {
    return readBinary(root_, path_, out);
}

bool RegistryStore::writeBinaryHere(std::string_view bytes) const {
    return writeBinary(root_, path_, bytes);
}

} // namespace base
