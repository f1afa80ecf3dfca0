#include "view/byte_view.h"

#include <nfc_ndef/printable.h>
#include <nfc_ndef/record.h>

#include <fmt/format.h>

#include <algorithm>

namespace tool {
namespace {

using namespace nfc_ndef::values;

enum class Ascii { no, yes };

class ByteRows {
public:
    ByteRows(Tree &tree, unsigned depth) : tree_(tree), depth_(depth) {}

    void record(const WireRecord &record, size_t base)
    {
        size_t at = 0;
        const auto take = [&](size_t length, const std::string &meaning, Ascii ascii = Ascii::no) {
            rows(base + record.offset + at, record.bytes.subspan(at, length), meaning, ascii);
            at += length;
        };
        take(1, fmt::format("header: {}, {}", flag_names(record.header),
                            Names(type_name_formats).title_of(record.format())));
        take(1, fmt::format("type length: {}", record.type.size()));
        take(record.has(WireRecord::sr) ? 1 : 4, fmt::format("payload length: {}", record.payload.size()));
        if (record.has(WireRecord::il))
            take(1, fmt::format("id length: {}", record.id.size()));
        take(record.type.size(), "type", Ascii::yes);
        take(record.id.size(), "id", Ascii::yes);
        payload(record, base + record.offset + at);
    }

    // A message that starts at an offset behind a byte of its own, or not; false when the bytes are no message.
    bool nested(ByteView payload, size_t prefix_length, size_t offset)
    {
        if (payload.size() <= prefix_length)
            return false;
        const ByteView message = payload.subspan(prefix_length);
        if (nfc_ndef_msg_check(message.data(), 0, static_cast<uint32_t>(message.size()), nullptr) == 0)
            return false;
        if (prefix_length > 0)
            rows(offset, payload.first(prefix_length), "payload, before the nested message", Ascii::no);
        if (depth_ >= max_nesting) {
            tree_.warning(fmt::format("nested deeper than {} records: {} not followed", max_nesting,
                                      count_of(message.size(), "byte")));
            return true;
        }
        ByteRows deeper(tree_, depth_ + 1);
        for (const WireRecord &record : wire_records(message))
            deeper.record(record, offset + prefix_length);
        return true;
    }

private:
    void payload(const WireRecord &record, size_t offset)
    {
        const auto prefix_length = nested_at(record.format(), record.type);
        if (record.has(WireRecord::cf) || !prefix_length || !nested(record.payload, *prefix_length, offset))
            rows(offset, record.payload, "payload", Ascii::yes);
    }

    void rows(size_t offset, ByteView bytes, std::string_view meaning, Ascii ascii)
    {
        constexpr size_t row = 8, limit = 32 * row;
        const size_t end = tree_.shown(bytes.size(), limit);
        for (size_t i = 0; i < end; i += row) {
            const ByteView part = bytes.subspan(i, std::min(row, end - i));
            const std::string text = ascii == Ascii::yes ? fmt::format(" |{}|", ascii_of(part)) : "";
            tree_.line(fmt::format("{:04X}  {:<23}  {:{}}{:{}}{}", offset + i, hex_of(part), "", size_t{depth_} * 2,
                                   i == 0 ? meaning : "", meaning.size(), text));
        }
        if (end < bytes.size())
            tree_.warning(Tree::note_on_rest(bytes.size(), end));
    }

    Tree &tree_;
    unsigned depth_;
};

} // namespace

void view_bytes(Tree &tree, std::span<const WireRecord> chunks)
{
    for (const WireRecord &chunk : chunks)
        ByteRows(tree, 0).record(chunk, 0);
}

} // namespace tool
