// What a command prints, and where and how it writes what it made.
#pragma once

#include "io/memory_image.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tool {

enum class OutputFormat { raw, hex, base64, c };

struct OutputOptions {
    std::string path = "-";
    std::optional<OutputFormat> format{}; // raw when not given, but hex on a terminal
    std::optional<MemoryImage> image{};   // the memory of a tag in place of the message alone
    bool no_clobber = false;              // a file that is there already is left alone
};

// Writes to standard output. Ends the command when that fails, quietly when the reader went away.
void write_output(std::string_view text);

// Writes "ndef: " and the text as one line to standard error; nothing when the text is empty.
void complain(std::string_view text);

// Writes a text as it is. Throws Failure, exit_unusable.
void write_text(std::string_view text, const OutputOptions &options);

// Writes a message, or the memory of a tag with it, in its format. Throws Failure, exit_unusable, also for raw bytes on
// a terminal.
void write_message(std::span<const uint8_t> bytes, const OutputOptions &options);

} // namespace tool
