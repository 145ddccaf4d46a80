#include "lib/base/base.h"

#include "lib/base/sourceregistration.h"

namespace base {
namespace {

[[maybe_unused]] const bool registered = registerSourceFile(__FILE__, RELEASE_DATE);

} // namespace

const std::string vendorName = "Brindlewood";
std::string applicationName;

} // namespace base
