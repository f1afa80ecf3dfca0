// The content of records from what people say on a command line.
#pragma once

#include <nfc_ndef/values.h>

#include <stdexcept>
#include <string>

namespace tool::make {

namespace values = nfc_ndef::values;

// A value that makes no record; the text says which and why, and may quote it.
struct ImpossibleValue : std::runtime_error {
    using std::runtime_error::runtime_error;
};

void require(bool possible, const std::string &reason);

// All of standard input but for one line end behind it. Throws Failure.
std::string text_of_input(bool unlimited);

// Each throws ImpossibleValue.
void require_media_type(const std::string &name);
void require_address(const std::string &email);
values::Content text_content(const std::string &text, const std::string &language, bool utf16);
values::Content uri_content(const std::string &uri);
values::Record record_of(values::Content content);
values::Bytes message_of(const values::Records &records);

} // namespace tool::make
