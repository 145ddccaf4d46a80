// The bytes of the schedule file.
//
// All integers are little-endian and unaligned:
//   u32 magic 0x0046C71C, u32 record count, then the records one after the other.
// A record is its fields in the order of ScheduledProject: a string as a u32 byte count and that many bytes
// of ANSI text, an enumeration or a number as 4 bytes, a flag as 1 byte, the weekdays as 7 bytes; 82 bytes
// when the three strings are empty. Whatever follows the last record is ignored.
#pragma once

#include "scheduler/model/schedulelist.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

namespace scheduler {

inline constexpr std::uint32_t scheduleMagic = 0x0046C71C;

/// Takes the file's content piece by piece; false ends it.
using ContentSink = std::function<bool(std::span<const std::byte>)>;

/// Hands the whole file's content to `sink` through `buffer`, which holds at least the 8 bytes of the header,
/// so that no schedule is in memory twice. Records go out whole where they fit into the buffer, otherwise
/// field by field. False when the sink said so.
[[nodiscard]] bool encodeSchedule(std::span<const ScheduledProject> entries, std::span<std::byte> buffer,
                                  const ContentSink& sink);

/// Fills `list` from a file's content and tells its observers.
/// - False with `list` untouched: the content is shorter than 8 bytes, or its magic is not `expectedMagic`
///   (0: any will do).
/// - False with `list` empty: the count or a string's length is not smaller than the content's size, or a
///   record is cut short, or memory cannot be had. Memory in proportion to the content's size is all that a
///   damaged count can cost.
[[nodiscard]] bool decodeSchedule(std::span<const std::byte> content, std::uint32_t expectedMagic,
                                  ScheduleList& list);

} // namespace scheduler
