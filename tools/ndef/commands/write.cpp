#include "command_line/io_options.h"
#include "commands/on_reader.h"
#include "commands/tag_commands.h"
#include "io/failure.h"
#include "io/message.h"

#include <nfc_ndef/printable.h>

#include <fmt/format.h>

#include <algorithm>
#include <csignal>

namespace tool {

namespace values = nfc_ndef::values;

namespace {

constexpr Option file{.names = "FILE",
                      .help = "The message, in any form that 'show' takes, or its JSON; standard input without it, or "
                              "as -",
                      .values = Option::Values::files};
constexpr Option yes{.names = "--yes", .help = "Say that it is meant: nothing takes it back"};

// JSON as 'ndef json' writes it, but not that of another program, which has no records.
bool is_our_json(values::ByteView bytes)
{
    const std::string_view text = values::text_of(bytes);
    const size_t begin = text.find_first_not_of(" \t\r\n");
    return begin != std::string_view::npos && text[begin] == '{' && text.find("\"records\"") != std::string_view::npos;
}

std::vector<uint8_t> message_of(const Arguments &given)
{
    const std::string path = given.value_or(file, "-");
    const InputOptions options = input_options(given);
    std::vector<uint8_t> bytes = read_file(path, options.unlimited);
    if (is_our_json(bytes)) {
        const std::optional<values::Bytes> message = encode(parse_json(bytes, path));
        if (!message)
            throw Failure(exit_refused, fmt::format("{}: makes no message", name_of_input(path)));
        bytes = *message;
    } else {
        Input input = find_ndef(std::move(bytes), path, options);
        if (!input.taken_for.empty())
            complain(fmt::format("{}: {}", name_of_input(path), input.taken_for));
        bytes = std::move(input.message);
    }
    open_message(bytes, path);
    return bytes;
}

// From here on an interruption waits: a tag that was begun is finished.
void finish_what_was_begun()
{
    for (const int interruption : {SIGINT, SIGTERM, SIGHUP})
        std::signal(interruption, SIG_IGN);
}

// Changes the tag, and says what was done to which.
void change(const Arguments &given, const std::function<std::string(nfc_ndef::tags::Tag &)> &operation)
{
    std::string done;
    with_tag(given, [&](nfc_ndef::tags::Tag &tag) {
        finish_what_was_begun();
        done = operation(tag);
        done += fmt::format(": {}", described(tag, tag.read().size()));
    });
    write_output(done + '\n');
}

} // namespace

Command write_command()
{
    return {.name = "write",
            .summary = "Puts a message on a tag on a reader",
            .options = with_input_options({&file, &reader_name, &wait_seconds}),
            .footer =
                "Examples:\n"
                "  ndef make uri https://example.com | ndef write\n"
                "  ndef write tag.ndef --wait 60\n"
                "\nThe message is checked before, and read back behind. A tag that is taken away too early holds the "
                "message before, none, or the new one.",
            .run = [](const Arguments &given) {
                const std::vector<uint8_t> message = message_of(given);
                change(given, [&](nfc_ndef::tags::Tag &tag) {
                    tag.write(message);
                    return fmt::format("Written, {}", values::count_of(message.size(), "byte"));
                });
            }};
}

Command erase_command()
{
    return {.name = "erase",
            .summary = "Leaves a tag with no message on it",
            .options = {&reader_name, &wait_seconds},
            .run = [](const Arguments &given) {
                change(given, [](nfc_ndef::tags::Tag &tag) {
                    tag.write({});
                    return "Erased";
                });
            }};
}

Command format_command()
{
    return {.name = "format",
            .summary = "Prepares a blank tag for messages",
            .options = {&reader_name, &wait_seconds},
            .footer = "Only where the capability container is all zeros, on Type 2 and Type 5 tags.",
            .run = [](const Arguments &given) {
                change(given, [](nfc_ndef::tags::Tag &tag) {
                    const bool before = tag.is_formatted();
                    tag.format();
                    return before ? "Formatted already" : "Formatted";
                });
            }};
}

Command lock_command()
{
    return {.name = "lock",
            .summary = "Makes a tag read-only for good",
            .options = {&reader_name, &wait_seconds, &yes},
            .footer = "Type 2: the access byte and the lock bits. Type 5: the capability container alone.",
            .run = [](const Arguments &given) {
                if (!given.has(yes))
                    throw Failure(exit_unusable, "nothing takes a lock back: say --yes if it is meant");
                std::string remark;
                change(given, [&](nfc_ndef::tags::Tag &tag) {
                    remark = tag.lock();
                    return "Locked";
                });
                complain(remark);
            }};
}

} // namespace tool
