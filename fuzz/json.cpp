// The command's JSON, both ways: the input is a JSON text, or a message, which never begins like one.
#include "json.h"
#include "fuzz.h"
#include "record_view.h"

#include <glib.h>

using namespace fuzz;
using nfc_ndef::Message;

namespace {

Message parse(ByteView bytes) { return Message{nfc_ndef_msg_create_by_msg_offset(bytes.data(), 0, length32(bytes))}; }

// Nothing of a tag may act on a terminal.
void must_be_printable(const std::string &text)
{
    must(g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr) != 0, "what is shown is UTF-8");
    for (const char *at = text.data(); at != text.data() + text.size(); at = g_utf8_next_char(at)) {
        const GUnicodeType type = g_unichar_type(g_utf8_get_char(at));
        must(*at == '\n' || (type != G_UNICODE_CONTROL && type != G_UNICODE_FORMAT), "what is shown is harmless");
    }
}

void show(const model::Records &records)
{
    for (const bool everything : {false, true}) {
        tool::Tree tree(false, everything);
        for (const model::Record &record : records)
            tool::view_content(tree, record, records, {});
        must_be_printable(tree.take());
    }
}

void from_message(const Message &message)
{
    const model::Records records = model::decode(*message);
    show(records);
    const std::string json = tool::to_json(records);
    must_be_printable(json);
    const std::optional<model::Bytes> bytes = model::encode(records);
    try {
        must(bytes && tool::from_json(json) == *bytes, "the JSON of a message makes its bytes");
    } catch (const tool::JsonError &) {
        must(!bytes, "the JSON of a message is accepted");
        return;
    }
    const Message again = parse(*bytes);
    must(again && tool::to_json(model::decode(*again)) == json, "and these read as the same JSON");
}

void from_text(std::string_view text)
{
    model::Bytes made;
    try {
        made = tool::from_json(text);
    } catch (const tool::JsonError &error) {
        must(*error.what() != '\0', "a refusal says why");
        return;
    }
    const Message message = parse(made);
    must(message != nullptr, "what a text makes is a message");
    from_message(message);
}

} // namespace

void fuzz::run(ByteView input)
{
    if (const Message message = parse(input))
        from_message(message);
    else
        from_text({reinterpret_cast<const char *>(input.data()), input.size()});
}
