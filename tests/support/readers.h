// Each extractor as a function from a record to what it did.
#pragma once

#include "outcome.h"

namespace test {

using Read = std::string (*)(Record);

extern const Read read_text, read_uri, read_poster, read_control, read_request, read_select, read_carrier,
    read_alternative, read_collision, read_error, read_enquiry;
// The address only when it is not 01 to 06.
std::string read_oob(Record record);
// The pairing type, an '@' for the address 01 to 06 and class 0A0B0C, then the other fields.
std::string read_legacy(Record record);

// The outputs of those that check their arguments.
constexpr Output request_outputs[] = {{"cr"}, {"ac"}, {"list", 1, true}, {"version"}},
                 select_outputs[] = {{"ac"}, {"list", 0, true}, {"err"}, {"version"}},
                 collision_outputs[] = {{"number"}}, error_outputs[] = {{"reason"}, {"data"}},
                 structure_outputs[] = {{"structure", -1, true}},
                 enquiry_outputs[] = {{"type"}, {"length"}, {"data", 1, true}, {"version"}};

} // namespace test
