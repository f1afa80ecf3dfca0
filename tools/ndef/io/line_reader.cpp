#include "io/line_reader.h"

#include <cerrno>
#include <cstring>

#include <unistd.h>

namespace tool {

LineReader::LineReader(const std::string &path, size_t longest)
    : path_(path), file_(open_input(path)), longest_(longest), buffer_(1 << 16)
{
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
                refuse_input(path_);
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
