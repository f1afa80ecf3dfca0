#include "command_line/io_options.h"
#include "make/content.h"
#include "make/thing.h"

namespace tool::make {
namespace {

constexpr Option text_argument{
    .names = "TEXT", .help = "The text; - for standard input, but for the line end behind it", .required = true};
constexpr Option language{
    .names = "--language", .placeholder = "CODE", .help = "The text's language, such as en or pt-BR; en without it"};
constexpr Option utf16{.names = "--utf16", .help = "Write the text as UTF-16 instead of UTF-8"};

values::Record record(const Arguments &given)
{
    std::string text = given.value_or(text_argument, "");
    if (text == "-")
        text = text_of_input(given.has(no_limit));
    return record_of(text_content(text, given.value_or(language, "en"), given.has(utf16)));
}

} // namespace

Thing text()
{
    return {.name = "text",
            .summary = "Makes a message of one text",
            .options = {&text_argument, &language, &utf16, &no_limit},
            .examples = "Examples:\n"
                        "  ndef make text Hello\n"
                        "  ndef make text \"Grüße\" --language de -o tag.ndef\n"
                        "  date | ndef make text -",
            .record = record};
}

} // namespace tool::make
