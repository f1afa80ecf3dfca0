// A tag on a reader, for the commands that talk to one.
#pragma once

#include "command_line/command.h"

#include <nfc_ndef/tags/pcsc.h>
#include <nfc_ndef/tags/tag.h>

#include <functional>

namespace tool {

inline constexpr Option reader_name{
    .names = "--reader",
    .placeholder = "NAME",
    .help = "The reader, by its name or a part of it; without it the first that has or gets a tag"};
inline constexpr Option wait_seconds{
    .names = "--wait", .placeholder = "SECONDS", .help = "How long to wait for a tag; 10 without it"};

// Waits for a tag and lets `use` talk to it. Refused and Unavailable become Failure.
void with_tag(const Arguments &given, const std::function<void(nfc_ndef::tags::Tag &)> &use);

// Calls what may throw Refused and Unavailable, which become Failure.
void with_failures(const std::function<void()> &call);

// What there is to say of a tag in a line, with the length of the message that it holds:
// "Type 2 tag, serial number 04010203, 137 bytes, 120 free, writable".
std::string described(nfc_ndef::tags::Tag &tag, size_t used);

} // namespace tool
