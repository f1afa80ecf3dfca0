// The prefixes that a URI record abbreviates (NFC Forum URI RTD 1.0).
#pragma once

#include "model.h"

#include <string>
#include <string_view>

namespace tool {

// The prefix that an identifier code stands for; empty for 0 and for codes without a meaning.
std::string_view uri_prefix(uint8_t identifier_code);

// The whole URI.
std::string expand_uri(const model::Uri &uri);

// The URI without its longest known prefix.
model::Uri abbreviate_uri(std::string_view uri);

} // namespace tool
