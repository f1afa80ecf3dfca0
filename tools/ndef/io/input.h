// Gets the bytes of an NDEF message from a file or standard input, however they are written there.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tool {

enum class Encoding { raw, hex, base64 };

struct InputOptions {
    std::optional<Encoding> encoding; // told apart by itself when not given
    bool tag_memory = false;          // the bytes are the memory of a Type 2 tag
    bool unlimited = false;           // read more than 16 MiB
};

// What messages call an input: the path made printable, or "standard input".
std::string name_of_input(const std::string &path);

// Reads a file as it is ("-" is standard input). Throws Failure: exit_unusable when it cannot be read, exit_refused
// when it is over the limit.
std::vector<uint8_t> read_file(const std::string &path, bool unlimited);

// Reads a file and undoes hex or base64 text, and the tag's memory layout. Throws Failure, exit_refused, also when
// nothing is left. The bytes fit the library's 32-bit lengths.
std::vector<uint8_t> read_ndef(const std::string &path, const InputOptions &options);

} // namespace tool
