// The workloads read in place: every record and every typed field is visited, nothing is kept.
#pragma once

#include "messages.h"
#include "nfc_ndef.h"

namespace bench::in_place {

void visit(const Input &input); // each record, its payload piece by piece, and what its type holds
void encode(const nfc_ndef_msg &message);

} // namespace bench::in_place
