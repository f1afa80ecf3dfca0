// The lines that vCard and iCalendar objects are made of (RFC 6350, RFC 5545; vCard 2.1 too).
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace nfc_ndef::values {

struct ContentLine {
    std::string name;                    // in capitals, without its group
    std::vector<std::string> parameters; // "NAME=value", the name in capitals
    std::string value;                   // as it stands, but decoded where it was quoted-printable

    // The value of a parameter, without quotes.
    std::optional<std::string> parameter(std::string_view wanted) const;
    // The value as text: escapes undone, line ends as blanks.
    std::string text() const;
    // The same of each of the parts that semicolons separate.
    std::vector<std::string> parts() const;
};

// The lines, unfolded. What is no line is left out.
std::vector<ContentLine> content_lines(std::string_view object);

} // namespace nfc_ndef::values
