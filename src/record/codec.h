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
    uint8_t type_length;
    uint8_t id_length;
    uint8_t flags; // the header byte

    bool has(uint8_t bit) const { return (flags & bit) != 0; }
    uint8_t format() const { return flags & tnf_bits; }
    ByteView type() const { return {body, type_length}; }
    ByteView id() const { return {body + type_length, id_length}; }
    ByteView payload() const { return {body + type_length + id_length, payload_length}; }
    uint32_t length() const { return header_length_of(flags) + type_length + id_length + payload_length; }
    const uint8_t *header() const { return body - header_length_of(flags); }
    const uint8_t *end() const { return body + type_length + id_length + payload_length; }

    // The flags and lengths of a record, without its bytes.
    nfc_ndef_record described() const
    {
        return {.mb = has(mb_bit),
                .me = has(me_bit),
                .cf = has(cf_bit),
                .sr = has(sr_bit),
                .il = has(il_bit),
                .payload_length = payload_length,
                .id_length = id_length,
                .id = nullptr,
                .payload = nullptr,
                .record_type = {.name = nullptr, .name_length = type_length, .format = format()},
                .parsed_length = length()};
    }

    // The record in blocks of its own, or null.
    [[nodiscard]] RecordPtr make() const
    {
        RecordPtr record = new_record();
        if (!record)
            return nullptr;
        *record = described();
        return copy_bytes(*record, type(), id(), payload()) ? std::move(record) : nullptr;
    }
};

// What a record breaks, and where, counted from its header.
struct Fault {
    nfc_ndef_msg_reason reason;
    size_t offset;
};

// Whether a header has one of the four formats that come with a type name.
constexpr bool is_named(uint8_t flags)
{
    const unsigned format = flags & tnf_bits;
    return format >= NFC_NDEF_TNF_WELL_KNOWN && format <= NFC_NDEF_TNF_EXTERNAL;
}

// Finds the record at the front and steps over it. Only when the reason is NFC_NDEF_MSG_VALID, the view is set and the
// reader stands behind the record.
[[gnu::always_inline]] inline Fault find_record(Reader &in, RecordView &record)
{
    constexpr Fault cut_short{NFC_NDEF_MSG_HEADER_CUT_SHORT, 0};
    const ByteView header = in.take(3);
    if (header.empty()) [[unlikely]]
        return cut_short;
    const uint8_t flags = header[0];
    const uint32_t type_length = header[1];
    uint32_t id_length = 0;
    uint32_t payload_length = header[2];
    if ((flags & (sr_bit | il_bit)) != sr_bit) [[unlikely]] { // not the straight path: a long payload, or an id
        if ((flags & sr_bit) == 0) {
            const uint32_t middle = in.be<uint16_t>();
            payload_length = payload_length << 24 | middle << 8 | in.u8();
        }
        if ((flags & il_bit) != 0)
            id_length = in.u8();
        if (!in.ok())
            return cut_short;
    }
    if (!is_named(flags)) [[unlikely]] { // what "unchanged" allows depends on the records before it
        const unsigned format = flags & tnf_bits;
        if (format == NFC_NDEF_TNF_EMPTY && (type_length | id_length | payload_length) != 0)
            return {NFC_NDEF_MSG_EMPTY_WITH_LENGTHS, 0};
        if ((format == NFC_NDEF_TNF_UNKNOWN || format == NFC_NDEF_TNF_RESERVED) && type_length != 0)
            return {NFC_NDEF_MSG_TYPE_NOT_ALLOWED, 0};
    }

    const size_t left = in.left();
    const uint32_t names_length = type_length + id_length;
    const uint64_t body_length = uint64_t{payload_length} + names_length;
    if (body_length > left) [[unlikely]] {
        const size_t header_length = header_length_of(flags);
        if (type_length > left)
            return {NFC_NDEF_MSG_TYPE_PAST_END, header_length};
        if (names_length > left)
            return {NFC_NDEF_MSG_ID_PAST_END, header_length + type_length};
        return {NFC_NDEF_MSG_PAYLOAD_PAST_END, header_length + names_length};
    }
    const uint8_t *const body = in.take(static_cast<size_t>(body_length)).data();
    record = {body, payload_length, static_cast<uint8_t>(type_length), static_cast<uint8_t>(id_length), flags};
    return {NFC_NDEF_MSG_VALID, 0};
}

// Two of one kind each, for the usual way. False for any other record and for one that is cut short, and nothing has
// moved then.
template <class IsOne> [[gnu::always_inline]] inline bool find_short(Reader &in, RecordView &record, IsOne is_one)
{
    Reader ahead = in;
    const ByteView header = ahead.take(3);
    if (header.empty() || !is_one(header[0], header[1]))
        return false;
    const ByteView body = ahead.take(size_t{header[1]} + header[2]);
    if (!ahead.ok())
        return false;
    record = {body.data(), header[2], header[1], 0, header[0]};
    in = ahead;
    return true;
}
// Most records are short and named, and have no id. It may be the first chunk of a run.
[[gnu::always_inline]] inline bool find_short_record(Reader &in, RecordView &record)
{
    return find_short(in, record,
                      [](uint8_t flags, uint8_t) { return (flags & (sr_bit | il_bit)) == sr_bit && is_named(flags); });
}
// Most chunks that continue a run are short.
[[gnu::always_inline]] inline bool find_short_chunk(Reader &in, RecordView &record)
{
    return find_short(in, record, [](uint8_t flags, uint8_t type_length) {
        return (flags & ~(me_bit | cf_bit)) == (sr_bit | NFC_NDEF_TNF_UNCHANGED) && type_length == 0;
    });
}

// The same where there is no haste, so that there is one copy of it.
Fault find_record_apart(Reader &in, RecordView &record);

constexpr uint32_t longest_short_payload = 255;
constexpr uint64_t longest_record = INT32_MAX;

inline bool is_consistent(const nfc_ndef_record &record)
{
    const nfc_ndef_record_type &type = record.record_type;
    if (type.format == NFC_NDEF_TNF_EMPTY && (type.name_length | record.id_length | record.payload_length) != 0)
        return false;
    const auto unpaired = [](const void *bytes, uint32_t length) { return (bytes == nullptr) ^ (length == 0); };
    return (unpaired(type.name, type.name_length) | unpaired(record.id, record.id_length) |
            unpaired(record.payload, record.payload_length)) == 0;
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

// Writes what comes before the payload of a record that has a length; `framing` holds the MB, ME and CF bits.
template <class Out>
[[gnu::always_inline]] inline void write_header(const nfc_ndef_record &record, Out &out, uint8_t framing)
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
    out.bytes({type.name, type.name_length}).bytes({record.id, record.id_length});
}

// As above, with the payload.
template <class Out> [[gnu::always_inline]] inline void
nfc_ndef_record_write_to_byte_array(const nfc_ndef_record &record, Out &out, uint8_t framing)
{
    write_header(record, out, framing);
    out.bytes({record.payload, record.payload_length});
}

// The same where there is no haste, so that there is one copy of it.
void write_header_apart(const nfc_ndef_record &record, Writer &out, uint8_t framing);
void write_record_apart(const nfc_ndef_record &record, Writer &out, uint8_t framing);

} // namespace ndef
