#include "view/show.h"

#include "io/message.h"
#include "io/output.h"
#include "view/byte_view.h"
#include "view/record_view.h"

#include <nfc_ndef/printable.h>

#include <fmt/format.h>

#include <algorithm>

namespace tool {
namespace {

using namespace nfc_ndef::values;

// The flags of a record's first header, with ME from its last chunk, and what is out of the ordinary.
std::string flags_of(ByteView bytes)
{
    nfc_ndef_record_view first, last;
    take_chunk(bytes, first);
    last = first;
    size_t chunks = 1;
    for (; !bytes.empty(); ++chunks)
        take_chunk(bytes, last);
    std::string flags = flag_names(first.flags | (last.flags & NFC_NDEF_FLAG_ME));
    const auto remark = [&](std::string_view text) { flags.append(flags.empty() ? "" : ", ").append(text); };
    if (chunks > 1)
        remark(fmt::format("joined from {} chunks", chunks));
    else if ((first.flags & NFC_NDEF_FLAG_SR) == 0 && first.payload_length < 256)
        remark("long form of a short payload length");
    if ((first.flags & NFC_NDEF_FLAG_IL) != 0 && first.id.length == 0)
        remark("an id length of 0");
    return flags;
}

// What is shown of a message unless all is asked for, in characters: enough for any message on a tag.
constexpr size_t most_of_a_message = 900'000;

// `room` is how much of that there is for this record.
void view_record(Tree &tree, const Record &record, const Records &message, ByteView bytes, size_t offset,
                 const ShowOptions &options, size_t room)
{
    const Tree::Deeper deeper(tree);
    // What the header says is always shown, and may have its name in it with each byte as four characters.
    const size_t header = 300 + 4 * (2 * record.type.size() + record.id.size());
    const size_t rest = (room - std::min(room, header)) / (options.bytes ? 2 : 1);
    tree.at_most(rest, [&] { view_content(tree, record, message, {.dump_payloads = !options.bytes}); });
    if (!options.brief) {
        tree.side_field("type", printable_type(record));
        if (!record.id.empty())
            tree.side_field("id", quoted_utf8(record.id));
        if (const std::string flags = flags_of(bytes); !flags.empty())
            tree.side_field("flags", flags);
        tree.side_field("payload", count_of(record.payload.size(), "byte"));
    }
    if (options.bytes) {
        tree.heading("bytes");
        const Tree::Deeper rows(tree);
        tree.at_most(rest, [&] { view_bytes(tree, bytes, offset); });
    }
}

} // namespace

void show_message(ByteView bytes, const std::string &name, const std::string &first_line, const ShowOptions &options)
{
    nfc_ndef_msg_view message = open_message(bytes, name);
    if (!first_line.empty())
        write_output(first_line + '\n');
    std::vector<ByteView> on_the_wire;
    Records records;
    const Nesting nesting;
    nfc_ndef_record_view record;
    for (ByteView next = bytes_of_next(message, record); !next.empty(); next = bytes_of_next(message, record)) {
        on_the_wire.push_back(next);
        records.push_back(decode(record, nesting));
    }
    Tree tree({wants_color(options.color), options.everything, columns_of_terminal()});
    size_t room = most_of_a_message;
    for (size_t i = 0; i < records.size(); ++i) {
        if (i != 0)
            tree.blank();
        tree.heading(fmt::format("Record {}: {}", i + 1, heading_of(records[i])));
        const auto offset = static_cast<size_t>(on_the_wire[i].data() - bytes.data());
        view_record(tree, records[i], records, on_the_wire[i], offset, options, room / (records.size() - i));
        const std::string text = tree.take();
        room -= std::min(room, text.size());
        write_output(text);
    }
}

} // namespace tool
