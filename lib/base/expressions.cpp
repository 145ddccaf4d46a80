#include "lib/base/expressions.h"

#include "lib/base/sourceregistration.h"

namespace base {
namespace {

[[maybe_unused]] const bool registered = registerSourceFile(__FILE__, RELEASE_DATE);

} // namespace

const Expression whitespaceRun("[ \r\n\t\f]+");
const Expression lineBreak("\r*\n");
const Expression commandToken("[^ \t\f\r\n]+|\"[^\"]*\"");

} // namespace base
