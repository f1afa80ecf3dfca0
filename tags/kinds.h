// The kinds of tag, each in a source of its own.
#pragma once

#include "tag.h"

namespace nfc_ndef::tags {

std::unique_ptr<Tag> make_type2(Card &card);
// Null when there is no NDEF application on the card.
std::unique_ptr<Tag> make_type4(Card &card);
std::unique_ptr<Tag> make_type5(Card &card);
std::unique_ptr<Tag> make_classic(Card &card, bool is_big);

} // namespace nfc_ndef::tags
