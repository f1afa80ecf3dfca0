#include "command_line/io_options.h"
#include "commands/commands.h"
#include "commands/show_options.h"
#include "io/failure.h"
#include "io/message.h"
#include "io/output.h"
#include "view/malformed.h"

#include <nfc_ndef/printable.h>

#include <fmt/format.h>
#include <nfc_ndef.h>
#include <nlohmann/json.hpp>

#include <algorithm>

namespace tool {

namespace values = nfc_ndef::values;

namespace {

constexpr Option files{.names = "FILE",
                       .help = "The messages; standard input without any, or as -",
                       .values = Option::Values::files,
                       .repeatable = true};
constexpr Option quiet{.names = "-q,--quiet", .help = "Print nothing, only exit with the status"};
constexpr Option message_only{.names = "--message-only",
                              .help = "Do not look into the payloads of the records whose types are known"};
constexpr Option as_json{.names = "--json", .help = "Write a line of JSON for each file"};

// The bytes around an offset, with a mark under the one at it, which may be just behind the last.
std::string context_of(values::ByteView bytes, size_t offset)
{
    constexpr size_t before = 8, after = 8;
    const size_t start = offset - std::min(offset, before);
    const values::ByteView part = bytes.subspan(start, std::min(bytes.size(), offset + after) - start);
    const std::string begin = fmt::format("  {:04X}  ", start);
    return fmt::format("{}{}\n{:{}}^^", begin, values::hex_of(part), "", begin.size() + (offset - start) * 3);
}

// Where in the message a byte of a record's payload lies, which may be in chunks.
size_t place_of(values::ByteView message, const nfc_ndef_record_view &record, size_t offset)
{
    uint32_t position = 0;
    nfc_ndef_bytes piece{};
    const uint8_t *end = record.type.data + record.type.length;
    while (nfc_ndef_record_view_next_piece(&record, &position, &piece) == 1) {
        if (piece.length != 0)
            end = piece.data + piece.length;
        if (offset < piece.length)
            return static_cast<size_t>(piece.data - message.data()) + offset;
        offset -= piece.length;
    }
    return std::min(message.size(), static_cast<size_t>(end - message.data()));
}

// What is wrong with a message, for people and for programs.
struct Finding {
    size_t record; // from 1
    size_t offset;
    std::string text;   // "record 2, byte 52: the payload runs past the end"
    std::string reason; // "the payload runs past the end"
    bool has_context;
};

std::vector<Finding> findings_in(values::ByteView bytes, bool message_only_, size_t &count)
{
    nfc_ndef_msg_report report{};
    nfc_ndef_msg_view view;
    if (nfc_ndef_msg_view_open({bytes.data(), bytes.size()}, &view, &report) != 1)
        return {{report.record + 1, report.offset, reason_of(report), nfc_ndef_msg_check_text(report.reason), true}};
    count = report.record;
    std::vector<Finding> findings;
    if (message_only_)
        return findings;
    std::vector<nfc_ndef_record_view> records;
    for (nfc_ndef_record_view record; nfc_ndef_msg_view_next(&view, &record) == 1;)
        records.push_back(record);
    nfc_ndef_msg_view_open({bytes.data(), bytes.size()}, &view, nullptr);
    for (const Malformed &malformed : find_malformed(values::decode(view))) {
        const std::string reason = malformed.report.reason == NFC_NDEF_PAYLOAD_NOT_A_MESSAGE
                                       ? fmt::format("record {} of the nested message: {}", malformed.report.record + 1,
                                                     nfc_ndef_msg_check_text(malformed.report.message_reason))
                                       : nfc_ndef_payload_reason_text(malformed.report.reason);
        const size_t offset = malformed.nested ? malformed.report.offset
                                               : place_of(bytes, records[malformed.record], malformed.report.offset);
        findings.push_back({malformed.record + 1, offset,
                            fmt::format("record {}: {}: byte {}{}: {}", malformed.record + 1, malformed.where, offset,
                                        malformed.nested ? " of its payload" : "", reason),
                            fmt::format("{}: {}", malformed.where, reason), !malformed.nested});
    }
    return findings;
}

ExitStatus check(const std::string &path, const Arguments &given)
{
    const std::string name = name_of_input(path);
    const bool is_quiet = given.has(quiet), is_json = given.has(as_json);
    const bool colored = !is_quiet && !is_json && wants_color(given.choice<Color>(color).value_or(Color::automatic));
    const auto say = [&](const std::string &text, std::string_view paint = "") {
        if (!is_quiet && !is_json)
            write_output(colored && !paint.empty() ? fmt::format("{}: \x1B[{}m{}\x1B[0m\n", name, paint, text)
                                                   : fmt::format("{}: {}\n", name, text));
    };
    const auto say_json = [&](nlohmann::ordered_json facts) {
        if (is_json && !is_quiet)
            write_output(facts.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) + '\n');
    };
    std::vector<uint8_t> bytes;
    try {
        Input input = read_input(path, input_options(given));
        bytes = std::move(input.message);
        if (!input.taken_for.empty())
            say(input.taken_for);
    } catch (const Failure &failure) {
        if (is_json)
            say_json({{"file", path}, {"refused", {{"reason", failure.what()}}}});
        else if (!is_quiet)
            complain(failure.what());
        return failure.status;
    }
    size_t count = 0;
    const std::vector<Finding> findings = findings_in(bytes, given.has(message_only), count);
    if (findings.empty()) {
        say(fmt::format("valid, {}", values::count_of(count, "record")), "32");
        say_json({{"file", path}, {"records", count}});
        return exit_fine;
    }
    for (const Finding &finding : findings) {
        say(finding.text, "31");
        if (finding.has_context && !is_quiet && !is_json)
            write_output(context_of(bytes, std::min(finding.offset, bytes.size())) + '\n');
    }
    const Finding &first = findings.front();
    say_json(
        {{"file", path}, {"refused", {{"reason", first.reason}, {"record", first.record}, {"offset", first.offset}}}});
    return exit_refused;
}

void run(const Arguments &given)
{
    const std::vector<std::string> paths = given.has(files) ? given.values(files) : std::vector<std::string>{"-"};
    size_t with[exit_unusable + 1]{};
    ExitStatus worst = exit_fine;
    for (const std::string &path : paths) {
        const ExitStatus status = check(path, given);
        ++with[status];
        worst = std::max(worst, status);
    }
    if (paths.size() > 1 && !given.has(quiet) && !given.has(as_json))
        write_output(fmt::format("{} files: {} valid, {} refused{}\n", paths.size(), with[exit_fine],
                                 with[exit_refused],
                                 with[exit_unusable] != 0 ? fmt::format(", {} not read", with[exit_unusable]) : ""));
    if (worst != exit_fine)
        throw Failure(worst, "");
}

} // namespace

Command check_command()
{
    return {.name = "check",
            .summary = "Tells whether files are messages, and why not",
            .options = with_input_options({&files, &quiet, &message_only, &as_json, &color}),
            .footer = "Examples:\n"
                      "  ndef check *.ndef\n"
                      "  ndef check --quiet tag.ndef && echo fine\n"
                      "\nRecords count from 1, chunks singly; bytes count from 0, where the message begins.\n"
                      "Exit status: 0 when all are valid, 1 when one is not, 2 when a file cannot be read.",
            .run = run};
}

} // namespace tool
