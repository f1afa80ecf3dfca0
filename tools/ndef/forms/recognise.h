// Finds out what people gave: which form bytes have, and the message in them.
#pragma once

#include "forms/form.h"

#include <string>
#include <string_view>
#include <vector>

namespace tool::forms {

// What was said about the form. Null where it is to be found out.
struct Asked {
    const Notation *notation = nullptr;
    const Layout *layout = nullptr;
    bool raw = false; // the bytes are no text
};

struct Recognised {
    values::Bytes message{}; // not always valid: bytes in no form are handed out as they are
    std::string taken_for{}; // "memory of a Type 2 tag, message at byte 18"; empty when nobody needs to be told
    std::string refused{};   // why there is no message; the others are then empty
};

Recognised recognise(values::Bytes bytes, const Asked &asked);

// The names of all forms, in the order of the tables.
std::vector<std::string_view> names();

// Sets what a name stands for; false when it is no form's.
bool find_form(std::string_view name, Asked &asked);

} // namespace tool::forms
