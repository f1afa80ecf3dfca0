#include "record.h"

#include "c_interface.h"
#include "printable.h"

#include <fmt/format.h>

#include <algorithm>

namespace nfc_ndef::values {

namespace {

Content read_content(const nfc_ndef_record_view &record, const Nesting &nesting)
{
    Content content;
    AllKinds::of_type(record.format, text_of(view_of(record.type)), [&]<class T>(std::type_identity<T>) {
        nfc_ndef_payload_report report{};
        if (std::optional<T> read = Kind<T>::read(record, nesting, report))
            content = std::move(*read);
        else
            content = Generic{.refused = report};
    });
    return content;
}

// The bytes of a record, with a payload in one piece.
Record copied(const nfc_ndef_record_view &record)
{
    Record copy;
    copy.format = record.format;
    copy.type = bytes_of(record.type);
    copy.id = bytes_of(record.id);
    copy.payload = joined_payload(record);
    return copy;
}

} // namespace

Record decode(const nfc_ndef_record_view &record, const Nesting &nesting)
{
    Record decoded = copied(record);
    if (!nesting.enter()) {
        decoded.content = Generic{.unopened = true};
        return decoded;
    }
    nfc_ndef_record_view whole = record;
    whole.payload = bytes_view(decoded.payload);
    whole.chunks = {};
    decoded.content = read_content(whole, nesting);
    return decoded;
}

Record decode(const nfc_ndef_record &record, const Nesting &nesting)
{
    return decode(nfc_ndef_record_view_of(&record), nesting);
}

Records decode(const nfc_ndef_msg &message, const Nesting &nesting)
{
    Records records;
    const uint8_t count = nfc_ndef_msg_get_number_of_records(&message);
    for (uint8_t i = 0; i < count; ++i)
        records.push_back(decode(*nfc_ndef_msg_get_record_by_index(&message, i), nesting));
    return records;
}

Records decode(nfc_ndef_msg_view message, const Nesting &nesting)
{
    Records records;
    nfc_ndef_record_view record;
    while (nfc_ndef_msg_view_next(&message, &record))
        records.push_back(decode(record, nesting));
    return records;
}

std::optional<Records> decode(ByteView message, const Nesting &nesting)
{
    nfc_ndef_msg_view view;
    const bool reachable = message.size() <= UINT32_MAX && nesting.reachable();
    if (!reachable || !nfc_ndef_msg_view_open(bytes_view(message), &view, nullptr))
        return std::nullopt;
    return decode(view, nesting);
}

nfc_ndef::Record make(const Content &content)
{
    const auto make_one = []<class T>(const T &value) -> nfc_ndef::Record {
        if constexpr (std::is_same_v<T, Generic>)
            return nullptr;
        else
            return Kind<T>::make(value);
    };
    return std::visit(make_one, content);
}

std::optional<Record> build(Content content, Bytes id)
{
    const nfc_ndef::Record built = make(content);
    if (!built)
        return std::nullopt;
    Record record = copied(nfc_ndef_record_view_of(built.get()));
    record.id = std::move(id);
    record.content = std::move(content);
    return record;
}

Record generic_record(const Type &type, Bytes payload, Bytes id)
{
    return {type.format, bytes_of(type.name), std::move(id), std::move(payload), {}};
}

nfc_ndef::Record to_handle(const Record &record)
{
    if (!fit_in_a_byte(record.type.size(), record.id.size()) || record.payload.size() > UINT32_MAX)
        return nullptr;
    // A type of one's own: decoding lets a record go without a name where nfc_ndef_record_type_create() does not.
    const nfc_ndef_record_type type{field_pointer_to(record.type), static_cast<uint8_t>(record.type.size()),
                                    record.format};
    return nfc_ndef::Record(
        nfc_ndef_record_create_from_param(&type, pointer_to(record.id), static_cast<uint8_t>(record.id.size()),
                                          pointer_to(record.payload), static_cast<uint32_t>(record.payload.size())));
}

bool is_sequence(const Records &message)
{
    return !message.empty() && text_of(message.front().type) == Kind<GenericControl>::type.name;
}

std::optional<Bytes> encode(const Records &message)
{
    const bool each_alone = is_sequence(message);
    Bytes bytes;
    for (size_t i = 0; i < message.size(); ++i) {
        const nfc_ndef::Record record = to_handle(message[i]);
        if (!record)
            return std::nullopt;
        record->mb = each_alone || i == 0;
        record->me = each_alone || i + 1 == message.size();
        Block<> block;
        const uint32_t length = nfc_ndef_record_to_byte_array(record.get(), out(block));
        if (length == 0)
            return std::nullopt;
        bytes.insert(bytes.end(), block.get(), block.get() + length);
    }
    return bytes;
}

std::optional<size_t> nested_at(uint32_t format, ByteView type)
{
    std::optional<size_t> prefix;
    AllKinds::of_type(format, text_of(type), [&]<class T>(std::type_identity<T>) { prefix = Kind<T>::nested_at; });
    return prefix;
}

bool is_text(const Record &record)
{
    const std::string_view type = text_of(record.type);
    return record.format == NFC_NDEF_TNF_MIME &&
           (media("text/").matches(record.format, type.substr(0, type.find('/') + 1)) ||
            media("application/json").matches(record.format, type)) &&
           !record.payload.empty() && is_utf8(text_of(record.payload));
}

std::string title_of(const Record &record)
{
    std::string title;
    const auto take = [&]<class T>(std::type_identity<T>) { title = Kind<T>::title; };
    if (AllKinds::of_type(record.format, text_of(record.type), take))
        return title;
    switch (record.format) {
    case NFC_NDEF_TNF_EMPTY:
        return "Empty";
    case NFC_NDEF_TNF_ABSOLUTE_URI:
        return "Absolute URI";
    case NFC_NDEF_TNF_UNKNOWN:
        return "Payload of unknown type";
    default:
        return record.type.empty() ? "Record" : printable_utf8(record.type);
    }
}

std::string heading_of(const Record &record)
{
    std::string summary;
    const auto sum_up = [&]<class T>(const T &content) {
        if constexpr (requires { Kind<T>::summary(content); })
            summary = Kind<T>::summary(content);
    };
    std::visit(sum_up, record.content);
    if (record.format == NFC_NDEF_TNF_ABSOLUTE_URI)
        summary = shortened(text_of(record.type));
    return summary.empty() ? title_of(record) : fmt::format("{} {}", title_of(record), summary);
}

std::string printable_type(const Record &record)
{
    std::string text(Names(type_name_formats).title_of(record.format));
    return record.type.empty() ? text : text + ' ' + quoted_utf8(record.type);
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

Bytes joined_payload(const nfc_ndef_record_view &record)
{
    Bytes payload(record.payload_length);
    nfc_ndef_record_view_join(&record, payload.data(), record.payload_length);
    return payload;
}

OptionalRecord::OptionalRecord() = default;
OptionalRecord::OptionalRecord(Record record) : record_(std::make_unique<Record>(std::move(record))) {}
OptionalRecord::OptionalRecord(const OptionalRecord &other)
    : record_(other ? std::make_unique<Record>(*other) : nullptr)
{
}
OptionalRecord::OptionalRecord(OptionalRecord &&other) noexcept = default;
OptionalRecord &OptionalRecord::operator=(OptionalRecord other) noexcept
{
    record_ = std::move(other.record_);
    return *this;
}
OptionalRecord::~OptionalRecord() = default;

bool operator==(const OptionalRecord &a, const OptionalRecord &b) { return a && b ? *a == *b : !a == !b; }

} // namespace nfc_ndef::values
