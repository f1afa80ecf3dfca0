#include "view/byte_view.h"

#include <nfc_ndef/printable.h>
#include <nfc_ndef/record.h>

#include <fmt/format.h>

#include <algorithm>

namespace tool {
namespace {

using namespace nfc_ndef::values;

using Role = Tree::Role;

class ByteRows {
public:
    ByteRows(Tree &tree, unsigned depth) : tree_(tree), depth_(depth) {}

    // A record, chunk by chunk, that starts at an offset.
    void record(ByteView record, size_t offset)
    {
        nfc_ndef_record_view chunk;
        while (!record.empty()) {
            const ByteView bytes = take_chunk(record, chunk);
            header(bytes, chunk, offset);
            offset += bytes.size();
        }
    }

    // A message that starts at an offset behind a byte of its own, or not; false when the bytes are no message.
    bool nested(ByteView payload, size_t prefix_length, size_t offset)
    {
        if (payload.size() <= prefix_length)
            return false;
        const ByteView message = payload.subspan(prefix_length);
        nfc_ndef_msg_view records;
        if (!nfc_ndef_msg_view_open({message.data(), static_cast<uint32_t>(message.size())}, &records, nullptr))
            return false;
        if (prefix_length > 0)
            rows(offset, payload.first(prefix_length), "payload, before the nested message", Role::length);
        if (depth_ >= max_nesting) {
            tree_.warning(fmt::format("nested deeper than {} records: {} not followed", max_nesting,
                                      count_of(message.size(), "byte")));
            return true;
        }
        ByteRows deeper(tree_, depth_ + 1);
        offset += prefix_length;
        nfc_ndef_record_view view;
        for (ByteView bytes = bytes_of_next(records, view); !bytes.empty(); bytes = bytes_of_next(records, view)) {
            deeper.record(bytes, offset);
            offset += bytes.size();
        }
        return true;
    }

private:
    void header(ByteView bytes, const nfc_ndef_record_view &chunk, size_t offset)
    {
        size_t at = 0;
        const auto take = [&](size_t length, const std::string &meaning, Role role = Role::length) {
            rows(offset + at, bytes.subspan(at, length), meaning, role);
            at += length;
        };
        take(1,
             fmt::format("header: {}, {}", flag_names(chunk.flags), Names(type_name_formats).title_of(chunk.format)));
        take(1, fmt::format("type length: {}", chunk.type.length));
        take((chunk.flags & NFC_NDEF_FLAG_SR) != 0 ? 1 : 4, fmt::format("payload length: {}", chunk.payload_length));
        if ((chunk.flags & NFC_NDEF_FLAG_IL) != 0)
            take(1, fmt::format("id length: {}", chunk.id.length));
        take(chunk.type.length, "type", Role::name);
        take(chunk.id.length, "id", Role::name);
        const ByteView payload = bytes.subspan(at);
        const auto prefix_length = nested_at(chunk.format, {chunk.type.data, chunk.type.length});
        const bool in_chunks = (chunk.flags & NFC_NDEF_FLAG_CF) != 0;
        if (in_chunks || !prefix_length || !nested(payload, *prefix_length, offset + at))
            rows(offset + at, payload, "payload", Role::content);
    }

    void rows(size_t offset, ByteView bytes, std::string_view meaning, Role role)
    {
        tree_.bytes_of_field(bytes, offset, depth_, meaning, role);
    }

    Tree &tree_;
    unsigned depth_;
};

} // namespace

std::string flag_names(unsigned flags)
{
    constexpr std::pair<unsigned, std::string_view> names[] = {{NFC_NDEF_FLAG_MB, "MB"},
                                                               {NFC_NDEF_FLAG_ME, "ME"},
                                                               {NFC_NDEF_FLAG_CF, "CF"},
                                                               {NFC_NDEF_FLAG_SR, "SR"},
                                                               {NFC_NDEF_FLAG_IL, "IL"}};
    std::string set;
    for (const auto &[flag, name] : names)
        if ((flags & flag) != 0)
            set.append(set.empty() ? "" : " ").append(name);
    return set;
}

ByteView bytes_of_next(nfc_ndef_msg_view &message, nfc_ndef_record_view &record)
{
    const nfc_ndef_bytes before = message.rest;
    if (!nfc_ndef_msg_view_next(&message, &record))
        return {};
    return {before.data, before.length - message.rest.length};
}

ByteView take_chunk(ByteView &bytes, nfc_ndef_record_view &chunk)
{
    nfc_ndef_msg_report report;
    nfc_ndef_record_view_read({bytes.data(), static_cast<uint32_t>(bytes.size())}, &chunk, &report);
    const ByteView taken = bytes.first(report.offset);
    bytes = bytes.subspan(report.offset);
    return taken;
}

void view_bytes(Tree &tree, ByteView record, size_t offset) { ByteRows(tree, 0).record(record, offset); }

} // namespace tool
