// The workloads as a program that uses the library writes them, through the public header. Each ends the program when
// the library does not give what the message holds, so that nothing is measured that does not work.
#pragma once

#include "messages.h"
#include "nfc_ndef.hpp"

namespace bench::library {

nfc_ndef::Message parse(const Input &input);

void parse_and_release(const Input &input);
void extract_poster(const Input &input);   // the URI, titles, the action, icons and whatever else there is
void extract_handover(const Input &input); // the request, its carriers, the collision number, the Bluetooth record

void encode_and_release(const nfc_ndef_msg &message);
void find_by_type_and_release(const nfc_ndef_msg &message, const nfc_ndef_record_type &type);

} // namespace bench::library
