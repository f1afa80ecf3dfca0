// JSON, both ways: the input is a JSON text, or a message, which never begins like one.
#include "values.h"

using namespace fuzz;
namespace values = nfc_ndef::values;

void fuzz::run(ByteView input)
{
    auto message = values::decode(input);
    try {
        if (!message)
            message = values::decode(values::encode(values::from_json(values::text_of(input))).value());
        must(message.has_value(), "what a text makes is a message");
        check(*message);
    } catch (const values::JsonError &error) {
        must(*error.what() != '\0', "a refusal says why");
    }
}
