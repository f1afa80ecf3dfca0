#include "command_line/io_options.h"
#include "commands/commands.h"
#include "io/failure.h"
#include "io/message.h"

#include <nfc_ndef/printable.h>

#include <fmt/format.h>

#include <charconv>

namespace tool {
namespace {

constexpr Option file{
    .names = "FILE", .help = "The message; standard input as -", .values = Option::Values::files, .required = true};
constexpr Option record{
    .names = "RECORD", .help = "Which record, counted from 1 as 'ndef show' does", .required = true};

size_t position_of(const std::string &text, size_t count)
{
    size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number == 0)
        throw Failure(exit_unusable,
                      fmt::format("{}: not the number of a record", nfc_ndef::values::printable_utf8(text)));
    if (number > count)
        throw Failure(exit_refused, fmt::format("there is no record {}, only {}", number,
                                                nfc_ndef::values::count_of(count, "record")));
    return number - 1;
}

void run(const Arguments &given)
{
    const std::string path = given.value_or(file, "-");
    const std::vector<uint8_t> bytes = read_ndef(path, input_options(given));
    const nfc_ndef::values::Records records = parse_message(bytes, path);
    const auto &payload = records[position_of(given.value_or(record, ""), records.size())].payload;
    write_text({reinterpret_cast<const char *>(payload.data()), payload.size()}, output_options(given));
}

} // namespace

Command extract_command()
{
    return {.name = "extract",
            .summary = "Gives the payload of one record, as it is",
            .options = with_input_options({&file, &record, &output_file, &no_clobber}),
            .footer = "Examples:\n"
                      "  ndef extract tag.ndef 2 -o contact.vcf\n"
                      "  ndef extract poster.ndef 1 | ndef show",
            .run = run};
}

} // namespace tool
