// Records of known types whose payloads their readers refuse, wherever in a message they are.
#pragma once

#include <nfc_ndef/record.h>

#include <string>
#include <vector>

namespace tool {

struct Malformed {
    size_t record;     // of the message, from 0
    std::string where; // "Smart Poster", "Smart Poster: title: Text"
    bool nested;
    nfc_ndef_payload_report report;
};

std::vector<Malformed> find_malformed(const nfc_ndef::values::Records &message);

} // namespace tool
