// The one source that knows the library for options, whose templates take long to compile.
#include "command_line.h"

#include "commands.h"
#include "failure.h"
#include "printable.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nfc_ndef.h>

#include <algorithm>
#include <memory>
#include <span>
#include <sstream>
#include <string_view>

namespace tool {
namespace {

// The options that a command runs with when it is called; its arguments set them.
template <class Options> Options &options_of(CLI::App &command, void (*run)(const Options &))
{
    const auto options = std::make_shared<Options>();
    command.callback([options, run] { run(*options); });
    return *options;
}

void add_limit_option(CLI::App &command, bool &unlimited)
{
    command.add_flag("--no-limit", unlimited, "Read more than 16 MiB of input");
}

void add_input_options(CLI::App &command, InputOptions &options)
{
    const auto add_encoding = [&](const char *name, Encoding encoding, const char *meaning) {
        return command.add_flag_callback(
            name, [&options, encoding] { options.encoding = encoding; }, meaning);
    };
    auto *raw = add_encoding("--raw", Encoding::raw, "Take the input as the bytes themselves");
    auto *hex = add_encoding("--hex", Encoding::hex, "Take the input as hex text");
    auto *base64 = add_encoding("--base64", Encoding::base64, "Take the input as base64 text");
    raw->excludes(hex)->excludes(base64);
    hex->excludes(base64);
    command.add_flag("--tlv", options.tag_memory, "Find the message in the memory of a Type 2 tag");
    add_limit_option(command, options.unlimited);
}

// Adds an option that is one of some names, in the order of the values that they mean.
template <class Enum> void add_choice(CLI::App &command, const char *name, const char *type_name,
                                      const std::vector<std::string> &names, const char *meaning, auto &value)
{
    const auto set = [&value, names](const std::string &chosen) {
        value = static_cast<Enum>(std::ranges::find(names, chosen) - names.begin());
    };
    command.add_option_function<std::string>(name, set, meaning)
        ->check(CLI::IsMember(names).description(""))
        ->type_name(type_name);
}

void add_output_file_option(CLI::App &command, OutputOptions &options)
{
    command.add_option("-o,--output", options.path, "Write to this file; standard output without it, or as -")
        ->type_name("FILE");
}

void add_output_options(CLI::App &command, OutputOptions &options)
{
    add_output_file_option(command, options);
    add_choice<OutputFormat>(command, "--format", "FORMAT", {"raw", "hex", "base64", "c"},
                             "raw, hex, base64 or c (an array in C); raw without it, but hex on a terminal",
                             options.format);
}

void add_show_command(CLI::App &app)
{
    CLI::App &command = *app.add_subcommand("show", "Shows the records of a message as a tree");
    ShowOptions &options = options_of(command, run_show);
    command.add_option("FILE", options.path, "The message; standard input without it, or as -")->type_name("");
    command.add_flag("-x,--bytes", options.bytes, "Also show each record's bytes, field by field");
    command.add_flag("-a,--all", options.everything, "Show long payloads and texts to their end");
    add_choice<Color>(command, "--color", "WHEN", {"auto", "always", "never"}, "Colours: auto, always or never",
                      options.color);
    add_input_options(command, options.input);
    command.footer("Examples:\n"
                   "  ndef show tag.ndef\n"
                   "  echo D1 01 04 55 03 61 2E 62 | ndef show\n"
                   "  ndef show --bytes --color=always tag.ndef | less -R\n"
                   "  ndef show --tlv memory-of-a-type-2-tag.bin");
}

void add_check_command(CLI::App &app)
{
    CLI::App &command = *app.add_subcommand("check", "Tells whether files are messages, and why not");
    CheckOptions &options = options_of(command, run_check);
    command.add_option("FILE", options.paths, "The messages; standard input without any, or as -")->type_name("");
    command.add_flag("-q,--quiet", options.quiet, "Print nothing, only exit with the status");
    add_input_options(command, options.input);
    command.footer("Examples:\n"
                   "  ndef check *.ndef\n"
                   "  ndef check --quiet tag.ndef && echo fine\n"
                   "\nRecords count from 1, chunks singly; bytes count from 0, where the message begins.\n"
                   "Exit status: 0 when all are valid, 1 when one is not, 2 when a file cannot be read.");
}

void add_json_command(CLI::App &app)
{
    CLI::App &command = *app.add_subcommand("json", "Writes a message as JSON, which 'ndef make json' reads");
    JsonOptions &options = options_of(command, run_json);
    command.add_option("FILE", options.path, "The message; standard input without it, or as -")->type_name("");
    add_output_file_option(command, options.output);
    add_input_options(command, options.input);
    command.footer("Examples:\n"
                   "  ndef json tag.ndef\n"
                   "  ndef json tag.ndef | jq -r '.records[] | select(.kind == \"uri\").uri'\n"
                   "  ndef json tag.ndef | sed s/http:/https:/ | ndef make json -o new.ndef");
}

void add_making_options(CLI::App &command, MakeOptions &options)
{
    command.add_option("--id", options.id, "Give the record this id")->type_name("ID");
    add_output_options(command, options.output);
}

void add_make_text_command(CLI::App &app)
{
    CLI::App &command = *app.add_subcommand("text", "Makes a message of one text");
    MakeTextOptions &options = options_of(command, run_make_text);
    command.add_option("TEXT", options.text, "The text")->required()->type_name("");
    command.add_option("--language", options.language, "The text's language, such as en or pt-BR; en without it")
        ->type_name("CODE");
    command.add_flag("--utf16", options.utf16, "Write the text as UTF-16 instead of UTF-8");
    add_making_options(command, options);
    command.footer("Examples:\n"
                   "  ndef make text Hello\n"
                   "  ndef make text \"Grüße\" --language de -o tag.ndef");
}

void add_make_uri_command(CLI::App &app)
{
    CLI::App &command = *app.add_subcommand("uri", "Makes a message of one URI");
    MakeUriOptions &options = options_of(command, run_make_uri);
    command.add_option("URI", options.uri, "The URI; its prefix is abbreviated")->required()->type_name("");
    add_making_options(command, options);
    command.footer("Examples:\n"
                   "  ndef make uri https://www.example.com/\n"
                   "  ndef make uri tel:+4930123456 --format hex");
}

void add_make_poster_command(CLI::App &app)
{
    CLI::App &command = *app.add_subcommand("poster", "Makes a Smart Poster: a URI with titles, icons and an action");
    MakePosterOptions &options = options_of(command, run_make_poster);
    command.add_option("URI", options.uri, "The URI; its prefix is abbreviated")->required()->type_name("");
    command.add_option("--title", options.titles, "A title in a language; give it once for each language")
        ->type_name("LANG=TEXT")
        ->allow_extra_args(false);
    command.add_option("--action", options.action, "do, save, open, or a number from 0 to 255; do without it")
        ->type_name("ACTION");
    command
        .add_option("--icon", options.icons,
                    "An image or video file; say its media type where the file's name does not tell it")
        ->type_name("[MEDIA-TYPE=]FILE")
        ->allow_extra_args(false);
    command.add_option("--type", options.type, "Media type of what the URI leads to")->type_name("MEDIA-TYPE");
    command.add_option("--size", options.size, "Size of what the URI leads to")->type_name("BYTES");
    add_limit_option(command, options.unlimited);
    add_making_options(command, options);
    command.footer("Examples:\n"
                   "  ndef make poster https://example.com --title en=Welcome --title de=Willkommen\n"
                   "  ndef make poster https://example.com/manual.pdf --action save --type application/pdf\n"
                   "      --size 81920 --icon logo.png --icon image/x-icon=favicon -o poster.ndef");
}

void add_make_json_command(CLI::App &app)
{
    CLI::App &command = *app.add_subcommand("json", "Makes a message of JSON as 'ndef json' writes it");
    MakeJsonOptions &options = options_of(command, run_make_json);
    command.add_option("FILE", options.path, "The JSON; standard input without it, or as -")->type_name("");
    add_limit_option(command, options.unlimited);
    add_output_options(command, options.output);
    command.footer("Examples:\n"
                   "  ndef make json message.json -o tag.ndef\n"
                   "  ndef json tag.ndef | ndef make json --format c");
}

void add_make_command(CLI::App &app)
{
    CLI::App &command = *app.add_subcommand("make", "Makes a message");
    command.require_subcommand(1);
    add_make_text_command(command);
    add_make_uri_command(command);
    add_make_poster_command(command);
    add_make_json_command(command);
    command.footer("'ndef make WHAT --help' tells more.");
}

// The arguments, the last one first. One such as [a,b] would be taken for two files, unless it begins otherwise.
std::vector<std::string> arguments_of(int argc, char **argv)
{
    std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    if (!arguments.empty() && arguments.front() == "check")
        for (std::string &argument : arguments)
            if (argument.starts_with('['))
                argument.insert(0, "./");
    std::ranges::reverse(arguments);
    return arguments;
}

// Why a command line cannot be followed, and whose help tells more.
std::string reason_of(const CLI::ParseError &error, const CLI::App &app, std::span<char *const> arguments)
{
    std::string name = app.get_name();
    const CLI::App *command = &app;
    size_t next = 1; // the argument behind the command's name
    for (; !command->get_subcommands().empty(); ++next) {
        command = command->get_subcommands().front();
        name += ' ' + command->get_name();
    }
    std::string reason = printable_utf8(error.what());
    if (dynamic_cast<const CLI::RequiredError *>(&error) && command->get_require_subcommand_min() != 0) {
        const std::string_view unknown = next < arguments.size() ? arguments[next] : "";
        reason = unknown.empty() || unknown.front() == '-'
                     ? fmt::format("'{}' needs the name of a command", name)
                     : fmt::format("{} has no command '{}'", name, printable_utf8(unknown));
    }
    return fmt::format("{} ('{} --help' tells more)", reason, name);
}

} // namespace

void run_command_line(int argc, char **argv)
{
    CLI::App app("Reads, checks and makes NFC Forum NDEF messages.", "ndef");
    app.set_version_flag("--version", fmt::format("ndef {}.{}.{}", NFC_NDEF_VERSION_MAJOR, NFC_NDEF_VERSION_MINOR,
                                                  NFC_NDEF_VERSION_PATCH));
    app.get_formatter()->label("SUBCOMMAND", "COMMAND");
    app.get_formatter()->label("Subcommands", "Commands");
    app.require_subcommand(1);
    app.footer("Examples:\n"
               "  ndef show tag.ndef             what is on a tag\n"
               "  ndef show --tlv dump.bin       the same, from the memory of a Type 2 tag\n"
               "  echo D101025503 61 | ndef show\n"
               "  ndef check *.ndef              why messages are refused\n"
               "\n'ndef COMMAND --help' tells more. Exit status: 0 fine, 1 refused, 2 unusable files or options.");
    add_show_command(app);
    add_check_command(app);
    add_json_command(app);
    add_make_command(app);
    try {
        app.parse(arguments_of(argc, argv));
    } catch (const CLI::Success &request) {
        std::ostringstream text;
        app.exit(request, text);
        write_output(text.str());
    } catch (const CLI::ParseError &error) {
        throw Failure(exit_unusable, reason_of(error, app, {argv, static_cast<size_t>(argc)}));
    }
}

} // namespace tool
