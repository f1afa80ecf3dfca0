// The options of input and output that commands share.
#pragma once

#include "command_line/command.h"
#include "io/input.h"
#include "io/output.h"

namespace tool {

inline constexpr Option raw_input{
    .names = "--raw", .help = "Take the input as the bytes themselves", .group = "encoding"};
inline constexpr Option hex_input{.names = "--hex", .help = "Take the input as hex text", .group = "encoding"};
inline constexpr Option base64_input{.names = "--base64", .help = "Take the input as base64 text", .group = "encoding"};
inline constexpr Option tlv_input{.names = "--tlv", .help = "Find the message in the memory of a Type 2 tag"};
const Option &input_form(); // --as
inline constexpr Option no_limit{.names = "--no-limit", .help = "Read more than 16 MiB of input"};

inline constexpr Option output_file{.names = "-o,--output",
                                    .placeholder = "FILE",
                                    .help = "Write to this file; standard output without it, or as -",
                                    .values = Option::Values::files};
inline constexpr Option no_clobber{.names = "--no-clobber", .help = "Write no file that is there already"};
inline constexpr Option output_format{
    .names = "--format",
    .placeholder = "FORMAT",
    .help = "raw, hex, base64 or c (an array in C); raw without it, but hex on a terminal",
    .values = Option::Values::listed,
    .list = "raw hex base64 c"};

inline constexpr Option unbuffered{.names = "--unbuffered", .help = "With --lines, write each line at once"};

inline constexpr Option output_image{
    .names = "--image",
    .placeholder = "MEMORY",
    .help =
        "Write the memory of a tag with the message in it: type2, type4 or type5, with the bytes of its data area as "
        "in type2:144, or just enough of them",
    .values = Option::Values::suggested,
    .list = "type2 type4 type5"};

// A command's own options, then those of how the input is written.
std::vector<const Option *> with_input_options(std::vector<const Option *> options);
InputOptions input_options(const Arguments &given);

OutputOptions output_options(const Arguments &given);

} // namespace tool
