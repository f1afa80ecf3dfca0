#include "command.h"
#include "input.h"
#include "json.h"
#include "make.h"
#include "output.h"
#include "printable.h"

#include <fmt/format.h>

#include <memory>

namespace tool {
namespace {

struct MakeOptions {
    std::string value; // of the one argument
    std::string id;
    OutputOptions output;

    std::string language = "en";
    bool utf16 = false;

    std::vector<std::string> titles;
    std::string action = "do";
    std::vector<std::string> icons;
    std::string type;
    std::optional<uint32_t> size;

    bool unlimited = false;
};
using Options = std::shared_ptr<MakeOptions>;

// "TAG=REST" in two; "REST" alone has an empty tag unless a tag is said to look otherwise.
std::pair<std::string, std::string> split_tag(const std::string &text, auto is_tag)
{
    const size_t equals = text.find('=');
    if (equals == std::string::npos || !is_tag(text.substr(0, equals)))
        return {"", text};
    return {text.substr(0, equals), text.substr(equals + 1)};
}

Poster poster_of(const MakeOptions &options)
{
    Poster poster;
    poster.uri = options.value;
    for (const std::string &title : options.titles) {
        poster.titles.push_back(split_tag(title, [](const std::string &tag) { return !tag.empty(); }));
        if (poster.titles.back().first.empty())
            throw ImpossibleValue(fmt::format("the title \"{}\" lacks its language, as in en=Hello", title));
    }
    for (const std::string &icon : options.icons) {
        const auto is_media_type = [](const std::string &tag) {
            return tag.starts_with("image/") || tag.starts_with("video/");
        };
        auto [media_type, path] = split_tag(icon, is_media_type);
        if (media_type.empty())
            media_type = media_type_of(path);
        if (media_type.empty())
            throw ImpossibleValue(
                fmt::format("the name of \"{}\" does not tell its media type: say image/...={}", path, path));
        poster.icons.push_back({media_type, read_file(path, false)});
    }
    poster.action = action_of(options.action);
    poster.type = options.type;
    poster.size = options.size;
    return poster;
}

// Names of members may be as long as the file.
std::string shortened(const std::string &text)
{
    constexpr size_t enough = 300;
    return text.size() <= enough ? text : text.substr(0, enough) + "...";
}

void add_making_options(CLI::App &command, const Options &options)
{
    command.add_option("--id", options->id, "Give the record this id")->type_name("ID");
    add_output_options(command, options->output);
}

// What the command makes, when it is called.
void make_on_call(CLI::App &command, const Options &options, model::Content (*make)(const MakeOptions &))
{
    command.callback([options, make] {
        try {
            write_message(make_message(make(*options), options->id), options->output);
        } catch (const ImpossibleValue &impossible) {
            throw Failure(exit_unusable, printable_utf8(impossible.what()));
        }
    });
}

void add_make_text_command(CLI::App &app)
{
    auto options = std::make_shared<MakeOptions>();
    CLI::App *command = app.add_subcommand("text", "Makes a message of one text");
    command->add_option("TEXT", options->value, "The text")->required();
    command->add_option("--language", options->language, "The text's language, such as en or pt-BR; en without it")
        ->type_name("CODE");
    command->add_flag("--utf16", options->utf16, "Write the text as UTF-16 instead of UTF-8");
    add_making_options(*command, options);
    command->footer("Examples:\n"
                    "  ndef make text Hello\n"
                    "  ndef make text \"Grüße\" --language de -o tag.ndef");
    make_on_call(*command, options, [](const MakeOptions &o) { return make_text(o.value, o.language, o.utf16); });
}

void add_make_uri_command(CLI::App &app)
{
    auto options = std::make_shared<MakeOptions>();
    CLI::App *command = app.add_subcommand("uri", "Makes a message of one URI");
    command->add_option("URI", options->value, "The URI; its prefix is abbreviated")->required();
    add_making_options(*command, options);
    command->footer("Examples:\n"
                    "  ndef make uri https://www.example.com/\n"
                    "  ndef make uri tel:+4930123456 --format hex");
    make_on_call(*command, options, [](const MakeOptions &o) { return make_uri(o.value); });
}

void add_make_poster_command(CLI::App &app)
{
    auto options = std::make_shared<MakeOptions>();
    CLI::App *command = app.add_subcommand("poster", "Makes a Smart Poster: a URI with titles, icons and an action");
    command->add_option("URI", options->value, "The URI; its prefix is abbreviated")->required();
    command->add_option("--title", options->titles, "A title in a language; give it once for each language")
        ->type_name("LANG=TEXT")
        ->allow_extra_args(false);
    command->add_option("--action", options->action, "do, save, open, or a number from 0 to 255; do without it")
        ->type_name("ACTION");
    command
        ->add_option("--icon", options->icons,
                     "An image or video file; say its media type where the file's name does not tell it")
        ->type_name("[MEDIA-TYPE=]FILE")
        ->allow_extra_args(false);
    command->add_option("--type", options->type, "Media type of what the URI leads to")->type_name("MEDIA-TYPE");
    command->add_option("--size", options->size, "Size of what the URI leads to")->type_name("BYTES");
    add_making_options(*command, options);
    command->footer("Examples:\n"
                    "  ndef make poster https://example.com --title en=Welcome --title de=Willkommen\n"
                    "  ndef make poster https://example.com/manual.pdf --action save --type application/pdf\n"
                    "      --size 81920 --icon logo.png --icon image/x-icon=favicon -o poster.ndef");
    make_on_call(*command, options, [](const MakeOptions &o) { return make_poster(poster_of(o)); });
}

void add_make_json_command(CLI::App &app)
{
    auto options = std::make_shared<MakeOptions>();
    options->value = "-";
    CLI::App *command = app.add_subcommand("json", "Makes a message of JSON as 'ndef json' writes it");
    command->add_option("FILE", options->value, "The JSON; standard input without it, or as -");
    command->add_flag("--no-limit", options->unlimited, "Read more than 16 MiB of input");
    add_output_options(*command, options->output);
    command->footer("Examples:\n"
                    "  ndef make json message.json -o tag.ndef\n"
                    "  ndef json tag.ndef | ndef make json --format c");
    command->callback([options] {
        const std::vector<uint8_t> file = read_file(options->value, options->unlimited);
        const std::string_view text(reinterpret_cast<const char *>(file.data()), file.size());
        try {
            write_message(from_json(text), options->output);
        } catch (const JsonError &error) {
            const std::string path = error.path.empty() ? "" : shortened(printable_utf8(error.path)) + ": ";
            throw Failure(exit_refused,
                          fmt::format("{}: {}{}", name_of_input(options->value), path, printable_utf8(error.what())));
        }
    });
}

} // namespace

void add_make_command(CLI::App &app)
{
    CLI::App *command = app.add_subcommand("make", "Makes a message");
    command->require_subcommand(1);
    add_make_text_command(*command);
    add_make_uri_command(*command);
    add_make_poster_command(*command);
    add_make_json_command(*command);
    command->footer("'ndef make WHAT --help' tells more.");
}

} // namespace tool
