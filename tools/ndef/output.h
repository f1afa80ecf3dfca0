// Where and how a command writes what it made.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace CLI {
class App;
}

namespace tool {

enum class OutputFormat { raw, hex, base64, c };

struct OutputOptions {
    std::string path = "-";
    std::optional<OutputFormat> format; // raw when not given, but hex on a terminal
};

// Adds -o.
void add_output_file_option(CLI::App &command, OutputOptions &options);

// Adds -o and --format.
void add_output_options(CLI::App &command, OutputOptions &options);

// Writes a text as it is. Throws Failure, exit_unusable.
void write_text(std::string_view text, const OutputOptions &options);

// Writes a message in its format. Throws Failure, exit_unusable, also for raw bytes on a terminal.
void write_message(std::span<const uint8_t> bytes, const OutputOptions &options);

} // namespace tool
