#include "command_line/io_options.h"
#include "commands/commands.h"
#include "io/failure.h"
#include "io/message.h"
#include "io/output.h"

#include <nfc_ndef/printable.h>

#include <fmt/format.h>
#include <nfc_ndef.h>

#include <algorithm>

namespace tool {

namespace values = nfc_ndef::values;

namespace {

constexpr Option files{.names = "FILE",
                       .help = "The messages; standard input without any, or as -",
                       .values = Option::Values::files,
                       .repeatable = true};
constexpr Option quiet{.names = "-q,--quiet", .help = "Print nothing, only exit with the status"};

// The bytes around an offset, with a mark under the one at it, which may be just behind the last.
std::string context_of(values::ByteView bytes, size_t offset)
{
    constexpr size_t before = 8, after = 8;
    const size_t start = offset - std::min(offset, before);
    const values::ByteView part = bytes.subspan(start, std::min(bytes.size(), offset + after) - start);
    const std::string begin = fmt::format("  {:04X}  ", start);
    return fmt::format("{}{}\n{:{}}^^", begin, values::hex_of(part), "", begin.size() + (offset - start) * 3);
}

ExitStatus check(const std::string &path, const Arguments &given)
{
    const auto say = [&](const std::string &text) {
        if (!given.has(quiet))
            write_output(fmt::format("{}: {}\n", name_of_input(path), text));
    };
    std::vector<uint8_t> bytes;
    try {
        Input input = read_input(path, input_options(given));
        bytes = std::move(input.message);
        if (!input.taken_for.empty())
            say(input.taken_for);
    } catch (const Failure &failure) {
        if (!given.has(quiet))
            complain(failure.what());
        return failure.status;
    }
    nfc_ndef_msg_report report{};
    if (nfc_ndef_msg_check(bytes.data(), 0, static_cast<uint32_t>(bytes.size()), &report) == 1) {
        say(fmt::format("valid, {}", values::count_of(report.record, "record")));
        return exit_fine;
    }
    say(fmt::format("{}\n{}", reason_of(report), context_of(bytes, std::min<size_t>(report.offset, bytes.size()))));
    return exit_refused;
}

void run(const Arguments &given)
{
    ExitStatus worst = exit_fine;
    for (const std::string &path : given.has(files) ? given.values(files) : std::vector<std::string>{"-"})
        worst = std::max(worst, check(path, given));
    if (worst != exit_fine)
        throw Failure(worst, "");
}

} // namespace

Command check_command()
{
    return {.name = "check",
            .summary = "Tells whether files are messages, and why not",
            .options = with_input_options({&files, &quiet}),
            .footer = "Examples:\n"
                      "  ndef check *.ndef\n"
                      "  ndef check --quiet tag.ndef && echo fine\n"
                      "\nRecords count from 1, chunks singly; bytes count from 0, where the message begins.\n"
                      "Exit status: 0 when all are valid, 1 when one is not, 2 when a file cannot be read.",
            .run = run};
}

} // namespace tool
