#include "command_line/io_options.h"
#include "commands/commands.h"
#include "io/failure.h"
#include "io/message.h"

#include <nfc_ndef/json.h>
#include <nfc_ndef/printable.h>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <charconv>
#include <functional>

namespace tool {

namespace values = nfc_ndef::values;
using Json = nlohmann::ordered_json;

namespace {

constexpr Option file{
    .names = "FILE", .help = "The message; standard input as -", .values = Option::Values::files, .required = true};
constexpr Option set{.names = "--set",
                     .placeholder = "MEMBER=VALUE",
                     .help = "Give a member of the JSON form this value: /records/0/text=Hello, /records/1/id=x",
                     .repeatable = true};
constexpr Option removed{
    .names = "--remove", .placeholder = "RECORD", .help = "Leave a record out, counted from 1", .repeatable = true};
constexpr Option moved{.names = "--move",
                       .placeholder = "FROM:TO",
                       .help = "Put a record at another place; both count from 1",
                       .repeatable = true};
constexpr Option added{.names = "--add",
                       .placeholder = "FILE",
                       .help = "Put the records of another message behind the last",
                       .values = Option::Values::files,
                       .repeatable = true};
constexpr Option in_place{.names = "--in-place", .help = "Replace FILE, which must be the message itself"};

[[noreturn]] void refuse(std::string_view option, const std::string &value, const std::string &why)
{
    throw Failure(exit_unusable, fmt::format("{} {}: {}", option, values::printable_utf8(value), why));
}

// A record's number, counted from 1, as its place in the array.
size_t place_of(std::string_view option, const std::string &whole, std::string_view number, const Json &records)
{
    size_t place = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), place);
    if (error != std::errc() || end != number.data() + number.size())
        refuse(option, whole,
               option == "--move" ? "not the numbers of two records, such as 3:1" : "not the number of a record");
    if (place == 0 || place > records.size())
        refuse(option, whole, fmt::format("there is no such record among {}", records.size()));
    return place - 1;
}

// What the members of a record say is no longer what its payload says, nor the prefix of its URI.
void forget_spellings(Json &document, Json::json_pointer pointer)
{
    const std::string member = pointer.back();
    if (member == "payload" || member == "text" || member == "records")
        pointer.pop_back();
    for (; !pointer.empty(); pointer.pop_back()) {
        Json &around = document[pointer];
        if (!around.is_object() || !around.contains("kind") || around["kind"] == "generic")
            continue;
        if (member != "payload")
            around.erase("payload");
        if (member == "uri")
            around.erase("identifier_code");
    }
}

bool is_message(const Json &document)
{
    try {
        values::from_json(document.dump(-1, ' ', false, Json::error_handler_t::replace));
        return true;
    } catch (const values::JsonError &) {
        return false;
    }
}

// "/records/0" of a longer path.
Json::json_pointer record_of(Json::json_pointer path)
{
    while (!path.parent_pointer().parent_pointer().empty())
        path.pop_back();
    return path;
}

void set_member(Json &document, const std::string &what)
{
    const size_t equals = what.find('=');
    if (equals == std::string::npos)
        refuse("--set", what, "has no '=' behind the member");
    try {
        const std::string path = what.substr(0, equals);
        const Json::json_pointer pointer(path);
        const size_t records = document["records"].size();
        if (path.starts_with("/records/") && !document.contains(record_of(pointer)))
            refuse("--set", what,
                   records == 1 ? "the only record is /records/0"
                                : fmt::format("the records are /records/0 to /records/{}", records - 1));
        if (pointer.empty() || !document.contains(pointer.parent_pointer()))
            refuse("--set", what, "there is nothing of the kind in the message");
        const bool is_text = document.contains(pointer) && document[pointer].is_string();
        const std::string text = what.substr(equals + 1);
        const Json read = Json::parse(text, nullptr, false);
        const bool is_plain = read.is_number() || read.is_boolean();
        document[pointer] = is_plain && !is_text ? read : Json(text);
        forget_spellings(document, pointer);
        if (is_plain && !is_text && !is_message(document)) // such as an id of digits
            document[pointer] = text;
    } catch (const Json::exception &) {
        refuse("--set", what, "not the path of a member, such as /records/0/text");
    }
}

void run(const Arguments &given)
{
    const std::string path = given.value_or(file, "-");
    const InputOptions input = input_options(given);
    std::vector<uint8_t> whole = read_file(path, input.unlimited);
    const Input found = find_ndef(whole, path, input);
    OutputOptions output = output_options(given);
    if (given.has(in_place)) {
        if (path == "-" || found.message != whole)
            refuse("--in-place", path, "not the message itself, but another form of it: use -o");
        output = {.path = path, .format = OutputFormat::raw};
    }
    Json document = Json::parse(to_json(parse_message(found.message, path)));
    Json &records = document["records"];
    for (const std::string &what : given.values(set))
        set_member(document, what);
    for (const std::string &other : given.values(added)) {
        Json more = Json::parse(to_json(parse_message(read_ndef(other, {}), other)));
        for (Json &record : more["records"])
            records.push_back(std::move(record));
    }
    for (const std::string &what : given.values(moved)) {
        const size_t colon = std::min(what.find(':'), what.size() - 1);
        const size_t from = place_of("--move", what, std::string_view(what).substr(0, colon), records);
        const size_t to = place_of("--move", what, std::string_view(what).substr(colon + 1), records);
        Json record = std::move(records[from]);
        records.erase(from);
        records.insert(records.begin() + static_cast<std::ptrdiff_t>(to), std::move(record));
    }
    std::vector<size_t> gone;
    for (const std::string &what : given.values(removed))
        gone.push_back(place_of("--remove", what, what, records));
    std::ranges::sort(gone, std::greater());
    gone.erase(std::unique(gone.begin(), gone.end()), gone.end());
    for (const size_t place : gone)
        records.erase(place);
    if (records.empty())
        throw Failure(exit_refused, "a message has at least one record: 'ndef erase' empties a tag");
    const std::string edited = document.dump(-1, ' ', false, Json::error_handler_t::replace);
    const std::optional<values::Bytes> message = encode(parse_json(values::view_of(edited), path));
    if (!message)
        throw Failure(exit_refused, fmt::format("{}: is no message any more", name_of_input(path)));
    open_message(*message, path);
    write_message(*message, output);
}

} // namespace

Command edit_command()
{
    return {.name = "edit",
            .summary = "Changes the records of a message",
            .options = with_input_options({&file, &set, &added, &moved, &removed, &in_place, &output_file, &no_clobber,
                                           &output_format, &output_image}),
            .footer = "Done in this order: --set, --add, --move, --remove. The members are those of 'ndef json', where "
                      "records count from 0.\n"
                      "\nExamples:\n"
                      "  ndef edit tag.ndef --set /records/0/text=Hello -o new.ndef\n"
                      "  ndef edit tag.ndef --set /records/1/uri=https://example.com --in-place\n"
                      "  ndef edit tag.ndef --add other.ndef --move 3:1 --remove 2 | ndef write",
            .run = run};
}

} // namespace tool
