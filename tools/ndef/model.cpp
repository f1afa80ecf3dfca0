// Which record is read how, and records and messages as a whole.
#include "model_parts.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <string_view>

namespace model {

namespace {

using Read = Content (*)(const nfc_ndef_record &, const Nesting &nesting);

struct WellKnown {
    std::string_view name;
    Read read;
};
constexpr WellKnown well_known[] = {
    {"T", read_text},
    {"U", read_uri},
    {"Sp", read_smart_poster},
    {"Gc", read_generic_control},
    {"Hr", read_handover_request},
    {"Hs", read_handover_select},
    {"Hc", read_handover_carrier},
    {"ac", read_alternative_carrier},
    {"cr", read_collision_resolution},
    {"err", read_handover_select_error},
};

std::string_view text_of(const Bytes &bytes) { return {reinterpret_cast<const char *>(bytes.data()), bytes.size()}; }

// Whether a record is of the type of those that a builder makes, which knows the vendor's domain.
bool is_of_the_type_of(const nfc_ndef_record &record, const nfc_ndef::Record &built)
{
    if (!built)
        throw std::bad_alloc();
    return nfc_ndef_record_type_equals(nfc_ndef_record_get_record_type(built.get()), &record.record_type) == 1;
}

Content read_content(const nfc_ndef_record &record, const Nesting &nesting)
{
    const nfc_ndef_record_type &type = record.record_type;
    if (type.format == NFC_NDEF_TNF_WELL_KNOWN) {
        const std::string_view name(reinterpret_cast<const char *>(type.name), type.name_length);
        const auto *found = std::ranges::find(well_known, name, &WellKnown::name);
        return found != std::end(well_known) ? found->read(record, nesting) : Content();
    }
    if (type.format == NFC_NDEF_TNF_MIME && is_of_the_type_of(record, make(BluetoothOob{})))
        return read_bluetooth_oob(record, nesting);
    if (type.format == NFC_NDEF_TNF_EXTERNAL) {
        BluetoothLegacy unpaired;
        unpaired.pairing_type = 0x10;
        if (is_of_the_type_of(record, make(unpaired)))
            return read_bluetooth_legacy(record, nesting);
        if (is_of_the_type_of(record, make(SharingEnquiry{})))
            return read_sharing_enquiry(record, nesting);
    }
    return Generic{};
}

nfc_ndef::Record make(const Content &content)
{
    return std::visit([](const auto &alternative) { return make(alternative); }, content);
}

// The type and payload of a record that the library holds.
bool equal(const Record &record, const nfc_ndef_record &other)
{
    const auto same = [](const Bytes &bytes, const uint8_t *pointer, size_t length) {
        return std::ranges::equal(bytes, std::span(pointer, length));
    };
    return record.format == other.record_type.format &&
           same(record.type, other.record_type.name, other.record_type.name_length) &&
           same(record.payload, other.payload, other.payload_length);
}

void append(Bytes &bytes, const uint8_t *more, size_t length) { bytes.insert(bytes.end(), more, more + length); }

} // namespace

nfc_ndef::Record make(const Generic &) { return nullptr; }

Record decode(const nfc_ndef_record &record, const Nesting &nesting)
{
    Record decoded;
    decoded.format = record.record_type.format;
    decoded.type = copy_of(record.record_type.name, record.record_type.name_length);
    decoded.id = copy_of(record.id, record.id_length);
    decoded.payload = copy_of(record.payload, record.payload_length);
    decoded.mb = record.mb != 0;
    decoded.me = record.me != 0;
    decoded.cf = record.cf != 0;
    decoded.content = nesting.enter() ? read_content(record, nesting) : Generic{.unopened = true};
    const nfc_ndef::Record rebuilt = make(decoded.content);
    decoded.exact = rebuilt && equal(decoded, *rebuilt);
    return decoded;
}

Records decode(const nfc_ndef_msg &message, const Nesting &nesting)
{
    Records records;
    const uint8_t count = nfc_ndef_msg_get_number_of_records(&message);
    for (uint8_t i = 0; i < count; ++i)
        records.push_back(decode(*nfc_ndef_msg_get_record_by_index(&message, i), nesting));
    return records;
}

std::optional<Record> build(Content content, Bytes id)
{
    const nfc_ndef::Record built = make(content);
    if (!built)
        return std::nullopt;
    Record record;
    record.format = built->record_type.format;
    record.type = copy_of(built->record_type.name, built->record_type.name_length);
    record.id = std::move(id);
    record.payload = copy_of(built->payload, built->payload_length);
    record.content = std::move(content);
    record.exact = true;
    return record;
}

nfc_ndef::Record to_handle(const Record &record)
{
    if (!fit_in_a_byte(record.type.size(), record.id.size()) || record.payload.size() > UINT32_MAX)
        return nullptr;
    // A type of one's own: decoding lets a record go without a name where nfc_ndef_record_type_create() does not.
    const nfc_ndef_record_type type{field_pointer_to(record.type), static_cast<uint8_t>(record.type.size()),
                                    record.format};
    nfc_ndef::Record handle(
        nfc_ndef_record_create_from_param(&type, pointer_to(record.id), static_cast<uint8_t>(record.id.size()),
                                          pointer_to(record.payload), static_cast<uint32_t>(record.payload.size())));
    if (handle) {
        handle->mb = record.mb;
        handle->me = record.me;
        handle->cf = record.cf;
    }
    return handle;
}

std::optional<Bytes> encode(const Records &message)
{
    constexpr std::string_view generic_control = "Gc";
    const bool is_sequence = !message.empty() && text_of(message.front().type) == generic_control;
    Bytes bytes;
    for (size_t i = 0; i < message.size(); ++i) {
        const nfc_ndef::Record record = to_handle(message[i]);
        if (!record)
            return std::nullopt;
        record->mb = is_sequence || i == 0;
        record->me = is_sequence || i + 1 == message.size();
        record->cf = 0;
        nfc_ndef::Block<> block;
        const uint32_t length = nfc_ndef_record_to_byte_array(record.get(), nfc_ndef::out(block));
        if (length == 0)
            return std::nullopt;
        append(bytes, block.get(), length);
    }
    return bytes;
}

std::optional<size_t> nested_prefix_length(const Record &record)
{
    if (record.format == NFC_NDEF_TNF_WELL_KNOWN) {
        if (text_of(record.type) == "Sp")
            return 0;
        if (text_of(record.type) == "Gc" || text_of(record.type) == "Hr" || text_of(record.type) == "Hs")
            return 1;
    }
    return std::nullopt;
}

std::optional<Records> decode_nested(const Bytes &payload, size_t prefix_length, const Nesting &nesting)
{
    if (!nesting.reachable() || payload.size() <= prefix_length)
        return std::nullopt;
    const nfc_ndef::Message message(nfc_ndef_msg_create_by_msg_offset(
        payload.data() + prefix_length, 0, static_cast<uint32_t>(payload.size() - prefix_length)));
    return message ? std::optional(decode(*message, nesting)) : std::nullopt;
}

ExtractedRecords::~ExtractedRecords()
{
    for (uint8_t i = 0; records && i < count; ++i)
        nfc_ndef_record_delete(&records[i]);
    os_block_dealloc(records);
}

Records ExtractedRecords::decode(const Nesting &nesting) const
{
    Records decoded;
    for (uint8_t i = 0; i < count; ++i)
        decoded.push_back(model::decode(*records[i], nesting.inner()));
    return decoded;
}

LentRecords::LentRecords(const Records &records, Order order)
{
    for (const Record &record : records) {
        handles_.push_back(to_handle(record));
        pointers_.push_back(handles_.back().get());
    }
    if (order == Order::reversed)
        std::ranges::reverse(pointers_);
}

bool LentRecords::ok() const
{
    return fit_in_a_byte(pointers_.size()) && std::ranges::find(pointers_, nullptr) == pointers_.end();
}

RecordPtr decode_optional(const nfc_ndef::Record &record, const Nesting &nesting)
{
    return record ? std::make_unique<Record>(decode(*record, nesting.inner())) : nullptr;
}

nfc_ndef::Record to_optional_handle(const RecordPtr &record) { return record ? to_handle(*record) : nullptr; }

} // namespace model
