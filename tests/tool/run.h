// Runs the ndef command as a user would.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace test {

struct Outcome {
    int status; // 128 + N when signal N killed it
    std::string out, err;
};

Outcome ndef(std::vector<std::string> arguments, std::string_view input = {});

// The same with a standard output that nobody reads.
Outcome ndef_unread(std::vector<std::string> arguments, std::string_view input);

std::string sample(std::string_view name);

// Bytes written as hex.
std::string raw(std::string_view hex);

// Lives as long as the file that it writes.
class TemporaryFile {
public:
    explicit TemporaryFile(std::string_view content);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile &) = delete;
    TemporaryFile &operator=(const TemporaryFile &) = delete;
    const std::string &path() const { return path_; }

private:
    std::string path_;
};

} // namespace test
