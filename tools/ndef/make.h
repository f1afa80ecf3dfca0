// The records that people make most, from what they say on a command line.
#pragma once

#include "model.h"

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace tool {

// A value that makes no record; the text says which and why, and may quote it.
struct ImpossibleValue : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct Icon {
    std::string media_type;
    model::Bytes image;
};

struct Poster {
    std::string uri;
    std::vector<std::pair<std::string, std::string>> titles; // language and text
    uint8_t action = 0;
    std::vector<Icon> icons;
    std::string type; // media type of what the URI leads to, or empty
    std::optional<uint32_t> size;
};

// Each throws ImpossibleValue.
model::Content make_text(const std::string &text, const std::string &language, bool utf16);
model::Content make_uri(const std::string &uri);
model::Content make_poster(const Poster &poster);

// The message of one record of this content.
model::Bytes make_message(model::Content content, const std::string &id);

// The media type that a file name tells; empty when it tells none.
std::string media_type_of(const std::string &file_name);

// "do", "save", "open" or a number from 0 to 255.
uint8_t action_of(const std::string &name);

// A decimal number of 32 bits.
uint32_t size_of(const std::string &number);

} // namespace tool
