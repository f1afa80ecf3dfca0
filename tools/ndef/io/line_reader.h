// Reads lines, however many there are, without keeping more than one of them.
#pragma once

#include "io/open_input.h"

#include <string>
#include <string_view>
#include <vector>

namespace tool {

class LineReader {
public:
    // "-" is standard input. A line may have so many bytes. Throws Failure, exit_unusable, as next() does.
    LineReader(const std::string &path, size_t longest);

    // Steps to the next line; false behind the last.
    bool next();
    // Without its end; as much of it as was kept.
    std::string_view line() const { return line_; }
    bool is_too_long() const { return too_long_; }
    size_t number() const { return number_; } // from 1

private:
    std::string path_;
    InputFile file_;
    size_t longest_;
    std::vector<char> buffer_;
    size_t at_ = 0, end_ = 0;
    std::string line_;
    bool too_long_ = false;
    size_t number_ = 0;
};

} // namespace tool
