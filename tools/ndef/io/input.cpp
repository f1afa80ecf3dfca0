#include "io/input.h"

#include "io/failure.h"
#include "io/output.h"

#include <fmt/format.h>

#include <cstdint>
#include <cstdio>

#include <sys/stat.h>

namespace tool {

namespace {

constexpr size_t limit = 16 << 20;

Failure too_long(const std::string &name)
{
    return {exit_refused, fmt::format("{}: too long for an NDEF message", name)};
}
Failure over_limit(const std::string &name)
{
    return {exit_refused, fmt::format("{}: over 16 MiB of input (--no-limit reads it all the same)", name)};
}

// A file that says how long it is need not be read to find that out.
void refuse_by_size(std::FILE *file, const std::string &name, bool unlimited)
{
    struct stat facts;
    if (fstat(fileno(file), &facts) != 0 || !S_ISREG(facts.st_mode))
        return;
    if (static_cast<uint64_t>(facts.st_size) > UINT32_MAX)
        throw too_long(name);
    if (!unlimited && static_cast<uint64_t>(facts.st_size) > limit)
        throw over_limit(name);
}

} // namespace

std::vector<uint8_t> read_file(const std::string &path, bool unlimited)
{
    const std::string name = name_of_input(path);
    const InputFile file = open_input(path);
    std::vector<uint8_t> bytes;
    refuse_by_size(file.get(), name, unlimited);
    while (!std::feof(file.get()) && !std::ferror(file.get())) {
        constexpr size_t step = 1 << 16;
        const size_t before = bytes.size();
        if (before > UINT32_MAX - step)
            throw too_long(name);
        bytes.resize(before + step);
        bytes.resize(before + std::fread(bytes.data() + before, 1, step, file.get()));
        if (!unlimited && bytes.size() > limit)
            throw over_limit(name);
    }
    if (std::ferror(file.get()))
        refuse_input(path);
    return bytes;
}

Input find_ndef(std::vector<uint8_t> file, const std::string &path, const InputOptions &options)
{
    forms::Recognised found = forms::recognise(std::move(file), options.form);
    if (found.refused.empty() && found.message.empty())
        found.refused = "empty, no NDEF message";
    if (!found.refused.empty())
        throw Failure(exit_refused, fmt::format("{}: {}", name_of_input(path), found.refused));
    return {std::move(found.message), std::move(found.taken_for)};
}

Input read_input(const std::string &path, const InputOptions &options)
{
    return find_ndef(read_file(path, options.unlimited), path, options);
}

std::vector<uint8_t> read_ndef(const std::string &path, const InputOptions &options)
{
    Input input = read_input(path, options);
    if (!input.taken_for.empty())
        complain(fmt::format("{}: {}", name_of_input(path), input.taken_for));
    return std::move(input.message);
}

} // namespace tool
