// The command's JSON, both ways: the input is a JSON text, or a message, which never begins like one.
#include "fuzz.h"
#include "printable.h"
#include "view/record_view.h"

#include <nfc_ndef/json.h>

using namespace fuzz;
using nfc_ndef::Message;
namespace values = nfc_ndef::values;

namespace {

Message parse(ByteView bytes) { return Message{nfc_ndef_msg_create_by_msg_offset(bytes.data(), 0, length32(bytes))}; }

void show(const values::Records &records)
{
    for (const bool everything : {false, true}) {
        tool::Tree tree(false, everything);
        for (const values::Record &record : records)
            tool::view_content(tree, record, records, {});
        must_be_printable(tree.take());
    }
}

void from_message(const Message &message)
{
    const values::Records records = values::decode(*message);
    show(records);
    const std::string json = values::to_json(records);
    must_be_printable(json);
    const std::optional<values::Bytes> bytes = values::encode(records);
    try {
        must(bytes && values::encode(values::from_json(json)) == bytes, "the JSON of a message makes its bytes");
    } catch (const values::JsonError &) {
        must(!bytes, "the JSON of a message is accepted");
        return;
    }
    const Message again = parse(*bytes);
    must(again && values::to_json(values::decode(*again)) == json, "and these read as the same JSON");
}

void from_text(std::string_view text)
{
    values::Bytes made;
    try {
        made = *values::encode(values::from_json(text));
    } catch (const values::JsonError &error) {
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
