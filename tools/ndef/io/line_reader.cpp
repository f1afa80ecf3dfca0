#include "io/line_reader.h"

#include "io/failure.h"
#include "io/input.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstring>

#include <unistd.h>

namespace tool {

void LineReader::Close::operator()(std::FILE *file) const
{
    if (file != stdin)
        std::fclose(file);
}

LineReader::LineReader(const std::string &path, size_t longest)
    : name_(name_of_input(path)), file_(path == "-" ? stdin : std::fopen(path.c_str(), "rb")), longest_(longest),
      buffer_(1 << 16)
{
    if (!file_)
        throw Failure(exit_unusable, fmt::format("{}: {}", name_, std::strerror(errno)));
}

bool LineReader::next()
{
    line_.clear();
    too_long_ = false;
    for (bool begun = false;; begun = true) {
        if (at_ == end_) {
            // What has come so far, not a whole buffer of it: the writer may wait for an answer.
            const ssize_t count = read(fileno(file_.get()), buffer_.data(), buffer_.size());
            if (count < 0 && errno == EINTR)
                continue;
            if (count < 0)
                throw Failure(exit_unusable, fmt::format("{}: {}", name_, std::strerror(errno)));
            at_ = 0;
            end_ = static_cast<size_t>(count);
            if (count == 0) {
                number_ += begun && (!line_.empty() || too_long_) ? 1 : 0;
                return begun && (!line_.empty() || too_long_);
            }
        }
        const char *const begin = buffer_.data() + at_;
        const auto *const found = static_cast<const char *>(std::memchr(begin, '\n', end_ - at_));
        const size_t length = found ? static_cast<size_t>(found - begin) : end_ - at_;
        too_long_ = too_long_ || line_.size() + length > longest_;
        if (!too_long_)
            line_.append(begin, length);
        at_ += length + (found ? 1 : 0);
        if (found) {
            ++number_;
            return true;
        }
    }
}

} // namespace tool
