// Messages line by line, as text and as JSON.
#pragma once

#include "io/output.h"

#include <string>

namespace tool {

struct LineOptions {
    std::string path = "-";
    bool at_once = false;   // write each line when it is made
    bool unlimited = false; // lines of more than 16 MiB
};

// A line of JSON for each line of hex or base64 that is not blank: "line" with its number from 1, and "records", or
// "refused" with "reason" and, where they are known, "record" from 1 and "offset". Both throw Failure, exit_refused,
// without a text when a line was refused.
void write_json_lines(const LineOptions &options);

// The way back: each line as the text of the message, in hex or base64. What is wrong goes to standard error.
void write_message_lines(const LineOptions &options, OutputFormat format);

} // namespace tool
