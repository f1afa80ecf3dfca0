#include "commands/on_reader.h"
#include "commands/show_options.h"
#include "commands/tag_commands.h"
#include "io/failure.h"
#include "io/message.h"
#include "io/output.h"

#include <nfc_ndef/json.h>
#include <nfc_ndef/printable.h>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <map>
#include <thread>

namespace tool {

namespace tags = nfc_ndef::tags;
namespace values = nfc_ndef::values;

namespace {

constexpr Option lines{.names = "--lines", .help = "Write a line of JSON for each tag"};

// What was found on a reader.
struct Seen {
    std::string description{};
    std::vector<uint8_t> message{};
    std::string trouble{}; // why there is no message
    nlohmann::ordered_json facts = nlohmann::ordered_json::object();
};

Seen look(const tags::Service &service, const std::string &reader)
{
    Seen seen;
    seen.facts["reader"] = reader;
    try {
        const std::unique_ptr<tags::Card> card = service.wait_for_card(reader, std::chrono::milliseconds(0));
        const std::unique_ptr<tags::Tag> tag = tags::open_tag(*card);
        seen.facts["type"] = tag->type();
        if (!tag->serial_number().empty())
            seen.facts["serial_number"] = values::hex_of(tag->serial_number(), "");
        seen.description = tag->type();
        seen.message = tag->read();
        seen.facts["size"] = tag->size();
        seen.facts["free"] = tag->size() - std::min(tag->size(), seen.message.size());
        seen.facts["writable"] = tag->is_writable();
        seen.description = described(*tag, seen.message.size());
    } catch (const tags::Refused &refused) {
        seen.trouble = refused.what();
    } catch (const tags::Unavailable &unavailable) {
        seen.trouble = unavailable.what();
    }
    return seen;
}

void list_readers(const Arguments &)
{
    with_failures([] {
        const tags::Service service;
        const std::vector<tags::Reader> readers = service.readers();
        if (readers.empty())
            throw tags::Unavailable("there is no reader");
        for (const tags::Reader &reader : readers) {
            std::string what = "no tag";
            if (reader.has_card) {
                const Seen seen = look(service, reader.name);
                what = seen.description;
                if (!seen.trouble.empty())
                    what += (what.empty() ? "" : ": ") + seen.trouble;
            }
            write_output(fmt::format("{}: {}\n", values::printable_utf8(reader.name), what));
        }
    });
}

void show_line(Seen &seen)
{
    if (seen.trouble.empty()) {
        try {
            const std::string json =
                to_json(seen.message.empty() ? values::Records() : parse_message(seen.message, "the tag"));
            seen.facts["records"] = nlohmann::ordered_json::parse(json)["records"];
        } catch (const Failure &failure) {
            seen.trouble = failure.what();
        }
    }
    if (!seen.trouble.empty())
        seen.facts["refused"] = seen.trouble;
    write_output(seen.facts.dump() + '\n');
}

void show_tag(const Seen &seen, const ShowOptions &options)
{
    if (!seen.trouble.empty())
        return complain(seen.description + (seen.description.empty() ? "" : ": ") + seen.trouble);
    if (seen.message.empty())
        return write_output(seen.description + "\nNo message.\n");
    try {
        show_message(seen.message, "the tag", seen.description, options);
    } catch (const Failure &failure) {
        write_output(seen.description + '\n');
        complain(failure.what());
    }
}

volatile std::sig_atomic_t interrupted = 0;

void watch(const Arguments &given)
{
    constexpr auto pause = std::chrono::milliseconds(200);
    for (const int interruption : {SIGINT, SIGTERM})
        std::signal(interruption, [](int) { interrupted = 1; });
    const std::string name = given.value_or(reader_name, "");
    with_failures([&] {
        const tags::Service service;
        std::map<std::string, unsigned> shown; // by reader, the event with which its tag came
        while (interrupted == 0) {
            for (const tags::Reader &reader : service.readers()) {
                if (reader.name.find(name) == std::string::npos)
                    continue;
                const auto before = shown.find(reader.name);
                if (!reader.has_card || (before != shown.end() && before->second == reader.events))
                    continue;
                shown[reader.name] = reader.events;
                Seen seen = look(service, reader.name);
                if (given.has(lines))
                    show_line(seen);
                else
                    show_tag(seen, show_options(given));
            }
            std::this_thread::sleep_for(pause);
        }
    });
}

} // namespace

Command readers_command()
{
    return {.name = "readers", .summary = "Lists the readers and what lies on them", .run = list_readers};
}

Command watch_command()
{
    return {.name = "watch",
            .summary = "Shows each tag that comes onto a reader, until interrupted",
            .options = {&reader_name, &lines, &show_bytes, &show_brief, &show_all, &color},
            .run = watch};
}

} // namespace tool
