#include "type.h"

#include <algorithm>

namespace nfc_ndef::values {

namespace {

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool equal_but_for_case(std::string_view a, std::string_view b) { return std::ranges::equal(a, b, {}, lower, lower); }

} // namespace

bool Type::matches(uint32_t other_format, std::string_view other_name) const
{
    if (format != other_format)
        return false;
    if (format == NFC_NDEF_TNF_MIME)
        return equal_but_for_case(name, other_name.substr(0, other_name.find(';')));
    return format == NFC_NDEF_TNF_EXTERNAL ? equal_but_for_case(name, other_name) : name == other_name;
}

} // namespace nfc_ndef::values
