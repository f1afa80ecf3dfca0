#include "io/open_input.h"

#include "io/failure.h"
#include "io/output.h"

#include <nfc_ndef/printable.h>

#include <fmt/format.h>

#include <cerrno>
#include <cstring>

#include <unistd.h>

namespace tool {

std::string name_of_input(const std::string &path)
{
    return path == "-" ? "standard input" : nfc_ndef::values::printable_utf8(path);
}

InputFile open_input(const std::string &path)
{
    if (path == "-" && isatty(STDIN_FILENO) == 1)
        complain("reads what is typed here, until Ctrl-D at the start of a line");
    InputFile file(path == "-" ? stdin : std::fopen(path.c_str(), "rb"));
    if (!file)
        refuse_input(path);
    return file;
}

void refuse_input(const std::string &path)
{
    const std::string reason = std::strerror(errno);
    throw Failure(exit_unusable, fmt::format("{}: {}", name_of_input(path), reason));
}

} // namespace tool
