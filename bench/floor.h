// The physical limit of each workload: the blocks that a decoder must hand over when every record, name, id and payload
// is a block of its own, the copies that fill them, one pass over the headers, and the release of the blocks. It trusts
// its input, so it shows what nobody can go below and not how to read a tag.
#pragma once

#include "messages.h"

namespace bench::floor {

struct Message;

Message *parse(const Input &input);
void release(Message *message);

void parse_and_release(const Input &input);
void extract_poster(const Input &input);   // the URI, two titles, the action and an icon
void extract_handover(const Input &input); // the request, its carriers, the Bluetooth record

void encode_and_release(const Message &message);
Bytes encoded(const Message &message);

} // namespace bench::floor
