// The ".json" dumps of a Proxmark: an object with "Created": "proxmark3" and the "blocks" by their numbers, in hex.
#include "forms/all.h"
#include "text/encoded_text.h"

#include <nfc_ndef/printable.h>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace tool::forms {
namespace {

using Json = nlohmann::json;

std::string text_of(const Json &object, const char *name)
{
    const auto found = object.find(name);
    return found != object.end() && found->is_string() ? found->get<std::string>() : "";
}

std::string_view layout_of(std::string_view file_type)
{
    return file_type.starts_with("mfu")     ? "type2"
           : file_type.starts_with("mf")    ? "classic"
           : file_type.starts_with("15693") ? "type5"
                                            : "";
}

} // namespace

Written read_proxmark(std::string_view text)
{
    if (text.find("\"proxmark3\"") == std::string_view::npos)
        return {};
    constexpr int deepest = 2; // of what is looked at; deeper values are not even kept
    const auto is_kept = [](int depth, Json::parse_event_t, const Json &) { return depth <= deepest; };
    const Json json = Json::parse(text, is_kept, false);
    if (json.is_discarded())
        return alike("it is no whole JSON");
    if (!json.is_object() || text_of(json, "Created") != "proxmark3")
        return {};
    const auto blocks = json.find("blocks");
    if (blocks == json.end() || !blocks->is_object() || blocks->empty())
        return alike("it has no blocks");
    Memory memory{.layout = layout_of(text_of(json, "FileType"))};
    for (size_t number = 0; number < blocks->size(); ++number) {
        const std::string name = std::to_string(number);
        const auto bytes = decode_hex(text_of(*blocks, name.c_str()));
        const size_t size = number == 0 && bytes ? bytes->size() : memory.bytes.size() / std::max<size_t>(number, 1);
        if (!blocks->contains(name) || !bytes || bytes->empty() || bytes->size() != size)
            return alike(fmt::format("block {} is missing or not as long as the others", number));
        memory.bytes.insert(memory.bytes.end(), bytes->begin(), bytes->end());
    }
    return {.match = Match::whole, .memory = std::move(memory)};
}

} // namespace tool::forms
