#include "commands.h"
#include "json.h"
#include "message.h"

namespace tool {

void run_json(const JsonOptions &options)
{
    const std::vector<uint8_t> bytes = read_ndef(options.path, options.input);
    const nfc_ndef::Message message = parse_message(bytes, options.path);
    write_text(to_json(model::decode(*message)), options.output);
}

} // namespace tool
