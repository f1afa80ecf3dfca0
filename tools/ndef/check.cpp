#include "commands.h"
#include "failure.h"
#include "message.h"
#include "output.h"
#include "printable.h"
#include "tree.h"

#include <fmt/format.h>
#include <nfc_ndef.h>

#include <algorithm>

namespace tool {
namespace {

// The bytes around an offset, with a mark under the one at it, which may be just behind the last.
std::string context_of(ByteView bytes, size_t offset)
{
    constexpr size_t before = 8, after = 8;
    const size_t start = offset - std::min(offset, before);
    const ByteView part = bytes.subspan(start, std::min(bytes.size(), offset + after) - start);
    const size_t column = 2 + 4 + 2 + (offset - start) * 3;
    return fmt::format("  {:04X}  {}\n{:{}}^^", start, hex_of(part), "", column);
}

ExitStatus check(const std::string &path, const CheckOptions &options)
{
    const auto say = [&](const std::string &text) {
        if (!options.quiet)
            write_output(fmt::format("{}: {}\n", name_of_input(path), text));
    };
    std::vector<uint8_t> bytes;
    try {
        bytes = read_ndef(path, options.input);
    } catch (const Failure &failure) {
        if (!options.quiet)
            complain(failure.what());
        return failure.status;
    }
    nfc_ndef_msg_report report{};
    if (nfc_ndef_msg_check(bytes.data(), 0, static_cast<uint32_t>(bytes.size()), &report) == 1) {
        say(fmt::format("valid, {}", count_of(report.record, "record")));
        return exit_fine;
    }
    say(fmt::format("{}\n{}", reason_of(report), context_of(bytes, std::min<size_t>(report.offset, bytes.size()))));
    return exit_refused;
}

} // namespace

void run_check(const CheckOptions &options)
{
    ExitStatus worst = exit_fine;
    for (const std::string &path : options.paths)
        worst = std::max(worst, check(path, options));
    if (worst != exit_fine)
        throw Failure(worst, "");
}

} // namespace tool
