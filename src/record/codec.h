// The wire form of one record: NFC Forum NDEF 1.0.
#pragma once

#include "record/record.h"

namespace ndef {

constexpr uint8_t mb_bit = 0x80;
constexpr uint8_t me_bit = 0x40;
constexpr uint8_t cf_bit = 0x20;
constexpr uint8_t sr_bit = 0x10;
constexpr uint8_t il_bit = 0x08;
constexpr uint8_t tnf_bits = 0x07;

constexpr uint32_t header_length_of(uint8_t flags) { return 3u + (flags & sr_bit ? 0 : 3) + (flags & il_bit ? 1 : 0); }

// One record in the bytes that hold it: found and checked against their end, nothing copied. Kept small, because a
// whole message is read into an array of these on the stack.
struct RecordView {
    const uint8_t *body; // what follows the header: type, id and payload
    uint32_t payload_length;
    uint8_t flags; // the header byte
    uint8_t type_length;
    uint8_t id_length;

    bool has(uint8_t bit) const { return (flags & bit) != 0; }
    uint8_t format() const { return flags & tnf_bits; }
    ByteView type() const { return {body, type_length}; }
    ByteView id() const { return {body + type_length, id_length}; }
    ByteView payload() const { return {body + type_length + id_length, payload_length}; }
    uint32_t length() const { return header_length_of(flags) + type_length + id_length + payload_length; }
    const uint8_t *header() const { return body - header_length_of(flags); }

    // A type that points into the bytes.
    nfc_ndef_record_type borrowed_type() const
    {
        return {.name = borrow(type()), .name_length = type_length, .format = format()};
    }

    // Sets the flags and lengths of a record, but not its bytes.
    void describe(nfc_ndef_record &record) const
    {
        record.mb = has(mb_bit);
        record.me = has(me_bit);
        record.cf = has(cf_bit);
        record.sr = has(sr_bit);
        record.il = has(il_bit);
        record.payload_length = payload_length;
        record.id_length = id_length;
        record.record_type.name_length = type_length;
        record.record_type.format = format();
        record.parsed_length = length();
    }

    // The record in blocks of its own, or null.
    [[nodiscard]] RecordPtr make() const
    {
        RecordPtr record = nfc_ndef_record_create_empty();
        if (!record)
            return nullptr;
        describe(*record);
        return copy_bytes(*record, type(), id(), payload()) ? std::move(record) : nullptr;
    }
};

// What a record breaks, and where, counted from its header.
struct Fault {
    nfc_ndef_msg_reason reason;
    size_t offset;
};

// Whether a header has a format that restricts the lengths.
constexpr bool has_format_rule(uint8_t flags)
{
    constexpr unsigned ruled = 1u << NFC_NDEF_TNF_EMPTY | 1u << NFC_NDEF_TNF_UNKNOWN | 1u << NFC_NDEF_TNF_RESERVED;
    return (ruled >> (flags & tnf_bits) & 1) != 0;
}

// Finds the record at the front and steps over it. Only when the reason is NFC_NDEF_MSG_VALID, the view is set and the
// reader stands behind the record.
[[gnu::always_inline]] inline Fault find_record(Reader &in, RecordView &record)
{
    record.flags = in.u8();
    record.type_length = in.u8();
    record.payload_length = in.u8();
    record.id_length = 0;
    if ((record.flags & (sr_bit | il_bit)) != sr_bit) [[unlikely]] { // not the straight path: a long payload, or an id
        if (!record.has(sr_bit)) {
            const uint32_t middle = in.be<uint16_t>();
            record.payload_length = record.payload_length << 24 | middle << 8 | in.u8();
        }
        if (record.has(il_bit))
            record.id_length = in.u8();
    }
    if (!in.ok())
        return {NFC_NDEF_MSG_HEADER_CUT_SHORT, 0};
    if (has_format_rule(record.flags)) [[unlikely]] {
        const bool empty = record.format() == NFC_NDEF_TNF_EMPTY;
        if (empty && (record.type_length | record.id_length | record.payload_length) != 0)
            return {NFC_NDEF_MSG_EMPTY_WITH_LENGTHS, 0};
        if (!empty && record.type_length != 0)
            return {NFC_NDEF_MSG_TYPE_NOT_ALLOWED, 0};
    }

    const size_t left = in.left();
    const uint64_t body_length = uint64_t{record.payload_length} + record.type_length + record.id_length;
    if (body_length > left) [[unlikely]] {
        const size_t header_length = header_length_of(record.flags);
        if (record.type_length > left)
            return {NFC_NDEF_MSG_TYPE_PAST_END, header_length};
        if (size_t{record.type_length} + record.id_length > left)
            return {NFC_NDEF_MSG_ID_PAST_END, header_length + record.type_length};
        return {NFC_NDEF_MSG_PAYLOAD_PAST_END, header_length + record.type_length + record.id_length};
    }
    record.body = in.take(static_cast<size_t>(body_length)).data();
    return {NFC_NDEF_MSG_VALID, 0};
}

constexpr uint32_t longest_short_payload = 255;
constexpr uint64_t longest_record = INT32_MAX;

inline bool is_consistent(const nfc_ndef_record &record)
{
    const nfc_ndef_record_type &type = record.record_type;
    if (type.format == NFC_NDEF_TNF_EMPTY && (type.name_length | record.id_length | record.payload_length) != 0)
        return false;
    const bool name_fits = (type.name != nullptr) == (type.name_length != 0);
    const bool id_fits = (record.id != nullptr) == (record.id_length != 0);
    const bool payload_fits = (record.payload != nullptr) == (record.payload_length != 0);
    return name_fits & id_fits & payload_fits;
}

// How many bytes a record takes in its wire form; 0 when it is inconsistent or would take more than 2^31 - 1.
inline uint32_t nfc_ndef_record_get_byte_array_length(const nfc_ndef_record &record)
{
    if (!is_consistent(record))
        return 0;
    const uint64_t length = 2 + (record.payload_length <= longest_short_payload ? 1u : 4u) +
                            uint64_t{record.payload_length} + (record.id ? 1u + record.id_length : 0u) +
                            record.record_type.name_length;
    return length <= longest_record ? static_cast<uint32_t>(length) : 0;
}

// The MB, ME and CF bits of a record's own flags.
inline uint8_t framing_bits(const nfc_ndef_record &record)
{
    return static_cast<uint8_t>((record.mb ? mb_bit : 0) | (record.me ? me_bit : 0) | (record.cf ? cf_bit : 0));
}

// Writes a record that has a length; `framing` holds the MB, ME and CF bits.
[[gnu::always_inline]] inline void nfc_ndef_record_write_to_byte_array(const nfc_ndef_record &record, Writer &out,
                                                                       uint8_t framing)
{
    const nfc_ndef_record_type &type = record.record_type;
    const bool is_short = record.payload_length <= longest_short_payload;
    const auto flags =
        static_cast<uint8_t>(framing | (is_short ? sr_bit : 0) | (record.id ? il_bit : 0) | (type.format & tnf_bits));
    if (is_short) {
        const uint8_t header[]{flags, type.name_length, static_cast<uint8_t>(record.payload_length)};
        out.bytes(header);
    } else {
        out.u8(flags).u8(type.name_length).be(record.payload_length);
    }
    if (record.id)
        out.u8(record.id_length);
    out.bytes({type.name, type.name_length})
        .bytes({record.id, record.id_length})
        .bytes({record.payload, record.payload_length});
}

} // namespace ndef
