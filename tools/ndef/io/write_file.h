// Writes a whole file.
#pragma once

#include <string>
#include <string_view>

namespace tool {

// Gives a file this text. Where it can, it writes a new file beside it that takes its place once it is complete, so
// that a full disk leaves what was there. Devices, pipes and files with several names are written where they are.
// With `no_clobber` what is there is left as it is, and EEXIST the result. Returns 0, or errno of what failed.
int write_file(std::string_view text, const std::string &path, bool no_clobber = false);

} // namespace tool
