// The forms in which people have a message, as two tables (all.cpp): how bytes are written as text, and where a message
// lies among the bytes of a tag. A form more is a source more in this folder, and a line in all.cpp.
#pragma once

#include <nfc_ndef/bytes.h>

#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace tool::forms {

namespace values = nfc_ndef::values;

enum class Match {
    none,  // nothing of this form
    alike, // the signs of the form are there, but it does not hold to the end: `but` says why
    whole
};

// The bytes of a message or of a tag.
struct Memory {
    values::Bytes bytes{};
    std::string_view layout{};        // the layout that the file says it has; any when empty
    std::set<size_t> unread_blocks{}; // of 16 bytes, of which the file says that nobody knows what is in them
};

// What a notation makes of a text.
struct Written {
    Match match = Match::none;
    Memory memory{};
    std::string but{}; // "it ends within line 3"
};

// Bytes written as text.
struct Notation {
    std::string_view name;  // for --as
    std::string_view title; // "hex text"
    bool is_plain;          // digits alone, which nobody needs to be told of, and which say little of what they are
    Written (*read)(std::string_view text);
};

// What a layout makes of bytes.
struct Found {
    Match match = Match::none;
    values::Bytes message{}; // of a whole one; nobody has looked into it
    size_t at = 0;           // where it begins among the bytes
    std::string but{};       // "the message in it is cut short at byte 144"
};

// A place of a message among bytes.
struct Layout {
    std::string_view name;  // for --as
    std::string_view title; // "memory of a Type 2 tag"
    // `asked`: somebody said that it is this, so that weaker signs are enough.
    Found (*find)(const Memory &memory, bool asked);
};

// The tables, in the order of the help.
std::span<const Notation> notations();
std::span<const Layout> layouts();

// Whether bytes are a whole, valid message.
bool is_message(values::ByteView bytes);

inline Written alike(std::string but) { return {.match = Match::alike, .but = std::move(but)}; }
inline Found found_alike(std::string but) { return {.match = Match::alike, .but = std::move(but)}; }

} // namespace tool::forms
