#include "io/input.h"

#include "io/failure.h"
#include "io/tag_memory.h"
#include "text/encoded_text.h"

#include <nfc_ndef/printable.h>

#include <fmt/format.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>

namespace tool {

namespace values = nfc_ndef::values;

namespace {

constexpr size_t limit = 16 << 20;

struct CloseFile {
    void operator()(std::FILE *file) const
    {
        if (file != stdin)
            std::fclose(file);
    }
};

std::vector<uint8_t> decode(std::vector<uint8_t> bytes, const InputOptions &options, const std::string &name)
{
    const std::optional<Encoding> encoding = options.encoding;
    if (encoding == Encoding::raw)
        return bytes;
    const std::string_view text(reinterpret_cast<const char *>(bytes.data()), bytes.size());
    if (options.tag_memory && !encoding) // begins with a serial number, from which base64 and hex cannot be told apart
        if (auto memory = decode_hex(text))
            return std::move(*memory);
    auto decoded = encoding == Encoding::hex      ? decode_hex(text)
                   : encoding == Encoding::base64 ? decode_base64(text)
                                                  : decode_any(std::move(bytes));
    if (decoded)
        return std::move(*decoded);
    throw Failure(exit_refused, fmt::format("{}: text that is not {}", name,
                                            encoding == Encoding::hex      ? "hex"
                                            : encoding == Encoding::base64 ? "base64"
                                                                           : "hex or base64"));
}

} // namespace

std::string name_of_input(const std::string &path)
{
    return path == "-" ? "standard input" : values::printable_utf8(path);
}

std::vector<uint8_t> read_file(const std::string &path, bool unlimited)
{
    const std::string name = name_of_input(path);
    const std::unique_ptr<std::FILE, CloseFile> file(path == "-" ? stdin : std::fopen(path.c_str(), "rb"));
    std::vector<uint8_t> bytes;
    while (file && !std::feof(file.get()) && !std::ferror(file.get())) {
        constexpr size_t step = 1 << 16;
        const size_t before = bytes.size();
        if (before > UINT32_MAX - step)
            throw Failure(exit_refused, fmt::format("{}: too long for an NDEF message", name));
        bytes.resize(before + step);
        bytes.resize(before + std::fread(bytes.data() + before, 1, step, file.get()));
        if (!unlimited && bytes.size() > limit)
            throw Failure(exit_refused,
                          fmt::format("{}: over 16 MiB of input (--no-limit reads it all the same)", name));
    }
    if (!file || std::ferror(file.get()))
        throw Failure(exit_unusable, fmt::format("{}: {}", name, std::strerror(errno)));
    return bytes;
}

std::vector<uint8_t> read_ndef(const std::string &path, const InputOptions &options)
{
    const std::string name = name_of_input(path);
    std::vector<uint8_t> bytes = decode(read_file(path, options.unlimited), options, name);
    try {
        if (options.tag_memory)
            bytes = message_in_tag_memory(bytes);
    } catch (const Failure &failure) {
        throw Failure(failure.status, fmt::format("{}: {}", name, failure.what()));
    }
    if (bytes.empty())
        throw Failure(exit_refused, fmt::format("{}: empty, no NDEF message", name));
    return bytes;
}

} // namespace tool
