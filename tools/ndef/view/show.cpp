#include "view/show.h"

#include "io/message.h"
#include "io/output.h"
#include "view/byte_view.h"
#include "view/record_view.h"

#include <nfc_ndef/printable.h>

#include <fmt/format.h>

namespace tool {
namespace {

using namespace nfc_ndef::values;

// The flags of a record's first header, with ME from its last chunk, and what is out of the ordinary.
std::string flags_of(std::span<const WireRecord> chunks)
{
    const WireRecord &first = chunks.front();
    std::string flags = flag_names(first.header | (chunks.back().header & WireRecord::me));
    const auto remark = [&](std::string_view text) { flags.append(flags.empty() ? "" : ", ").append(text); };
    if (chunks.size() > 1)
        remark(fmt::format("joined from {} chunks", chunks.size()));
    else if (!first.has(WireRecord::sr) && first.payload.size() < 256)
        remark("long form of a short payload length");
    if (first.has(WireRecord::il) && first.id.empty())
        remark("an id length of 0");
    return flags;
}

void view_record(Tree &tree, const Record &record, const Records &message, std::span<const WireRecord> chunks,
                 const ShowOptions &options)
{
    const Tree::Deeper deeper(tree);
    tree.field("type", printable_type(record));
    if (!record.id.empty())
        tree.field("id", quoted_utf8(record.id));
    if (const std::string flags = flags_of(chunks); !flags.empty())
        tree.field("flags", flags);
    tree.field("payload", count_of(record.payload.size(), "byte"));
    view_content(tree, record, message, {.dump_payloads = !options.bytes});
    if (options.bytes) {
        tree.heading("bytes");
        const Tree::Deeper rows(tree);
        view_bytes(tree, chunks);
    }
}

} // namespace

void run_show(const ShowOptions &options)
{
    const std::vector<uint8_t> bytes = read_ndef(options.path, options.input);
    const Records records = parse_message(bytes, options.path);
    const std::vector<WireRecord> on_the_wire = wire_records(bytes);
    const auto chunks = joined(on_the_wire);
    Tree tree(wants_color(options.color), options.everything);
    for (size_t i = 0; i < records.size(); ++i) {
        tree.heading(fmt::format("Record {}: {}", i + 1, title_of(records[i])));
        view_record(tree, records[i], records, chunks.at(i), options);
        write_output(tree.take());
    }
}

} // namespace tool
