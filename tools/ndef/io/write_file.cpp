#include "io/write_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tool {
namespace {

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor()
    {
        if (number_ >= 0)
            ::close(number_);
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    explicit operator bool() const { return number_ >= 0; }
    int number() const { return number_; }

    // Writes all and closes; returns 0 or errno. A full disk may show itself no earlier than at the end.
    int finish(std::string_view text)
    {
        while (!text.empty()) {
            const ssize_t written = ::write(number_, text.data(), text.size());
            if (written < 0 && errno != EINTR)
                return errno;
            text.remove_prefix(static_cast<size_t>(std::max<ssize_t>(written, 0)));
        }
        const int number = number_;
        number_ = -1;
        return ::close(number) == 0 ? 0 : errno;
    }

private:
    int number_;
};

constexpr mode_t permissions = 07777;

mode_t mode_of_new_files()
{
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

// A file beside the one at `path`, removed again unless it has taken its place.
class Beside {
public:
    explicit Beside(const std::string &path)
        : path_(path), name_(path.substr(0, path.rfind('/') + 1) + ".ndef-XXXXXX"), file_(mkstemp(name_.data())),
          exists_(static_cast<bool>(file_))
    {
    }
    ~Beside()
    {
        if (exists_)
            unlink(name_.c_str());
    }
    Beside(const Beside &) = delete;
    Beside &operator=(const Beside &) = delete;
    explicit operator bool() const { return exists_; }

    // Gives it the owner and the mode of the file whose place it takes, if there is one.
    bool resemble(const struct stat *old)
    {
        struct stat own {};
        if (fstat(file_.number(), &own) != 0)
            return false;
        if (old && (own.st_uid != old->st_uid || own.st_gid != old->st_gid) &&
            fchown(file_.number(), old->st_uid, old->st_gid) != 0)
            return false;
        return fchmod(file_.number(), old ? old->st_mode & permissions : mode_of_new_files()) == 0;
    }
    int fill(std::string_view text) { return file_.finish(text); }
    bool take_place(bool no_clobber)
    {
        if (no_clobber) // a second name, as the first is removed in the end
            return link(name_.c_str(), path_.c_str()) == 0;
        exists_ = std::rename(name_.c_str(), path_.c_str()) != 0;
        return !exists_;
    }

private:
    const std::string &path_;
    std::string name_;
    Descriptor file_;
    bool exists_; // under its own name
};

int write_in_place(std::string_view text, const std::string &path, bool no_clobber)
{
    Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | (no_clobber ? O_EXCL : O_TRUNC), 0666));
    return file ? file.finish(text) : errno;
}

} // namespace

int write_file(std::string_view text, const std::string &path, bool no_clobber)
{
    struct stat old {};
    const bool exists = lstat(path.c_str(), &old) == 0;
    if (exists && no_clobber)
        return EEXIST;
    // What may not be written is not replaced either, and open() says why.
    const bool replaceable =
        exists ? S_ISREG(old.st_mode) && old.st_nlink == 1 && access(path.c_str(), W_OK) == 0 : errno == ENOENT;
    if (!replaceable)
        return write_in_place(text, path, no_clobber);
    Beside beside(path);
    if (!beside && (errno == ENOSPC || errno == EDQUOT))
        return errno;
    if (!beside || !beside.resemble(exists ? &old : nullptr)) // a directory or an owner that is not ours
        return write_in_place(text, path, no_clobber);
    if (const int error = beside.fill(text); error != 0)
        return error;
    return beside.take_place(no_clobber) ? 0 : write_in_place(text, path, no_clobber);
}

} // namespace tool
