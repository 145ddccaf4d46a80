// Shared expressions. Initialised before the entry point and immutable, so every thread may use them.
#pragma once

#include "lib/base/regexp.h"

namespace base {

extern const Expression whitespaceRun;
extern const Expression lineBreak;    ///< includes any carriage returns before it
extern const Expression commandToken; ///< a word of a command line; text in quotes is one word

} // namespace base
