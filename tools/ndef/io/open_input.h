// Opens what a command reads.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

namespace tool {

struct CloseInput {
    void operator()(std::FILE *file) const
    {
        if (file != stdin)
            std::fclose(file);
    }
};
using InputFile = std::unique_ptr<std::FILE, CloseInput>;

// What messages call an input: the path made printable, or "standard input".
std::string name_of_input(const std::string &path);

// "-" is standard input; who is to type it is told so. Throws Failure, exit_unusable.
InputFile open_input(const std::string &path);

// For a file that cannot be opened or read, whose errno says why. Throws Failure, exit_unusable.
[[noreturn]] void refuse_input(const std::string &path);

} // namespace tool
