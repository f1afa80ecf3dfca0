// A record's bytes, field by field, down into nested messages: what a protocol analyser shows.
#pragma once

#include "view/tree.h"

#include <nfc_ndef_view.h>

namespace tool {

// "MB ME SR" of the flags in a header.
std::string flag_names(unsigned flags);

// The bytes of the record that a view of a message hands out next, with all its chunks.
ByteView bytes_of_next(nfc_ndef_msg_view &message, nfc_ndef_record_view &record);

// Takes the next header with what belongs to it from the bytes of a record: one of its chunks, or all of it.
ByteView take_chunk(ByteView &bytes, nfc_ndef_record_view &chunk);

// Shows the bytes of a record, which lies at an offset in its message.
void view_bytes(Tree &tree, ByteView record, size_t offset);

} // namespace tool
