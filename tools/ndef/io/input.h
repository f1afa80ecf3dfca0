// Gets the bytes of an NDEF message from a file or standard input, however they are written there.
#pragma once

#include "forms/recognise.h"
#include "io/open_input.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tool {

struct InputOptions {
    forms::Asked form{};    // found out where it is not said
    bool unlimited = false; // read more than 16 MiB
};

// Reads a file as it is ("-" is standard input). Throws Failure: exit_unusable when it cannot be read, exit_refused
// when it is over the limit.
std::vector<uint8_t> read_file(const std::string &path, bool unlimited);

struct Input {
    std::vector<uint8_t> message; // not empty, but not always valid
    std::string taken_for;        // what the form was taken for, when people ought to be told
};

// Finds the message in a file that was read. Throws Failure, exit_refused, when there is none. The bytes fit the
// library's 32-bit lengths.
Input find_ndef(std::vector<uint8_t> file, const std::string &path, const InputOptions &options);

// Reads a file and finds the message in it.
Input read_input(const std::string &path, const InputOptions &options);

// The same, and says on standard error what the file was taken for.
std::vector<uint8_t> read_ndef(const std::string &path, const InputOptions &options);

} // namespace tool
