#include "io/output.h"

#include "io/failure.h"
#include "io/write_file.h"
#include "text/encoded_text.h"

#include <nfc_ndef/printable.h>

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include <unistd.h>

namespace tool {

namespace values = nfc_ndef::values;

namespace {

const std::string standard_output = "-";

std::string c_array_of(std::span<const uint8_t> bytes)
{
    constexpr size_t bytes_in_a_line = 12;
    std::string text = fmt::format("static const unsigned char ndef_message[{}] = {{\n", bytes.size());
    for (size_t i = 0; i < bytes.size(); i += bytes_in_a_line) {
        const auto line = bytes.subspan(i, std::min(bytes_in_a_line, bytes.size() - i));
        text += fmt::format("    0x{:02X},\n", fmt::join(line, ", 0x"));
    }
    return text + "};\n";
}

} // namespace

void write_output(std::string_view text)
{
    if (std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0)
        return;
    if (errno == EPIPE)
        throw Failure(exit_unusable, "");
    throw Failure(exit_unusable, fmt::format("cannot write to standard output: {}", std::strerror(errno)));
}

void complain(std::string_view text)
{
    if (!text.empty()) // not fmt::print, which throws when nobody reads
        std::fputs(fmt::format("ndef: {}\n", text).c_str(), stderr);
}

void write_text(std::string_view text, const OutputOptions &options)
{
    if (options.path == standard_output)
        write_output(text);
    else if (const int error = write_file(text, options.path, options.no_clobber); error != 0)
        throw Failure(exit_unusable,
                      fmt::format("cannot write {}: {}", values::printable_utf8(options.path), std::strerror(error)));
}

void write_message(std::span<const uint8_t> message, const OutputOptions &options)
{
    const std::vector<uint8_t> memory = options.image ? image_of(message, *options.image) : std::vector<uint8_t>();
    const std::span<const uint8_t> bytes = options.image ? memory : message;
    const bool on_terminal = options.path == standard_output && isatty(STDOUT_FILENO) == 1;
    switch (options.format.value_or(on_terminal ? OutputFormat::hex : OutputFormat::raw)) {
    case OutputFormat::raw:
        if (on_terminal)
            throw Failure(exit_unusable, "raw bytes are not for a terminal: use -o, a pipe or another --format");
        return write_text({reinterpret_cast<const char *>(bytes.data()), bytes.size()}, options);
    case OutputFormat::hex:
        return write_text(values::hex_of(bytes, "") + '\n', options);
    case OutputFormat::base64:
        return write_text(base64_of(bytes) + '\n', options);
    case OutputFormat::c:
        return write_text(c_array_of(bytes), options);
    }
}

} // namespace tool
