// What holds for every message that is read as values.
#pragma once

#include "fuzz.h"
#include "view/record_view.h"

#include <nfc_ndef/printable.h>
#include <nfc_ndef/values.h>

#include <glib.h>

namespace fuzz {

// Nothing of a tag may act on a terminal.
inline void must_be_printable(std::string_view text)
{
    must(g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr) != 0, "what is shown is UTF-8");
    for (const char *at = text.data(); at != text.data() + text.size(); at = g_utf8_next_char(at))
        must(*at == '\n' || !nfc_ndef::values::acts_on_a_terminal(g_utf8_get_char(at)), "what is shown is harmless");
}

// The message's records, shown, as JSON and made of it again; gives the JSON.
inline std::string check(const nfc_ndef::values::Records &message)
{
    for (const tool::TreeStyle &style : {tool::TreeStyle{.columns = 40}, tool::TreeStyle{.everything = true}})
        for (const auto &record : message) {
            tool::Tree tree(style);
            tree.at_most(2000, [&] { tool::view_content(tree, record, message, {}); });
            const std::string shown = tree.take();
            must_be_printable(shown);
            must(style.everything || shown.size() < 2100, "no more is shown than was asked for");
        }
    std::string json = to_json(message);
    must_be_printable(json);
    const auto bytes = encode(message);
    try {
        const auto made = encode(nfc_ndef::values::from_json(json));
        must(bytes && made == bytes, "the JSON of a message makes its bytes");
        nfc_ndef_msg_view opened;
        nfc_ndef_msg_view_open({bytes->data(), bytes->size()}, &opened, nullptr);
        std::string again;
        nfc_ndef::values::write_json(opened, [&](std::string_view piece) { again += piece; });
        must(again == json, "and these read as the same JSON");
    } catch (const nfc_ndef::values::JsonError &) {
        must(!bytes, "the JSON of a message is accepted");
    }
    return json;
}

} // namespace fuzz
