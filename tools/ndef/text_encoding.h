// The text of a Text record (NFC Forum Text RTD 1.0), which is UTF-8 or UTF-16, as UTF-8 and back.
#pragma once

#include "model.h"

#include <optional>
#include <string>
#include <string_view>

namespace tool {

// UTF-16 without a mark is big-endian.
enum class ByteOrderMark { none, big, little };

// Whether bytes are UTF-8 without a NUL.
bool is_utf8(std::string_view bytes);

// The mark at the start of a UTF-16 text; UTF-8 has none.
ByteOrderMark byte_order_mark_of(const model::Text &text);

// The text as UTF-8, without its byte order mark; none when it is not valid in its encoding or holds a NUL.
std::optional<std::string> utf8_of(const model::Text &text);

// Valid UTF-8 as UTF-16, behind a mark and in its byte order.
model::Bytes utf16_of(std::string_view utf8, ByteOrderMark mark);

} // namespace tool
