// What the program is told to do, in words.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

enum ExitCode : int { Succeeded = 0, Failed = 1, Misused = 2 };

/// The whole word as a decimal number without a sign; nothing when it is none or too large.
std::optional<unsigned> parseNumber(std::string_view word);

/// Does what the words behind the program's name say. An ExitCode; whatever is not a success is told on
/// standard error.
int runCommand(const std::vector<std::string>& words);
