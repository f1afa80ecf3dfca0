// What media types that phones open hold: contacts and calendar entries.
#pragma once

#include "uri_fields.h"

#include "../record.h"

namespace nfc_ndef::values {

// Of a record whose payload is a vCard: the name, then telephone numbers and e-mail addresses; of an iCalendar object,
// its first event's summary and start. None of any other record, and of one that is neither.
NamedTexts personal_fields(const Record &record);

} // namespace nfc_ndef::values
