// The editing interface against a vector of records built one by one: the input is a program of one byte per operation,
// each with its arguments behind it. The operation's upper bits may make one of its allocations fail.
#include "fuzz.h"

#include <array>

using namespace fuzz;
using nfc_ndef::Block;
using nfc_ndef::Message;
using nfc_ndef::Record;

namespace {

constexpr size_t most_records = 255, most_records_parsed = 254;

Record read_record(Input &input)
{
    static constexpr std::array names{"T", "U", "Gc", "image/png", "IMAGE*", "text/plain;charset=x", "a:b", "A:B"};
    const uint32_t format = input.u8() & 7;
    const ByteView name = bytes_of(names[input.u8() % names.size()]);
    const ByteView id = input.take(input.u8() & 3), payload = input.take(input.u8() & 31);
    if (format == NFC_NDEF_TNF_EMPTY)
        return make_record(format, {}, {}, {});
    return make_record(format, format == NFC_NDEF_TNF_UNKNOWN ? ByteView() : name, id, payload);
}

Record copy_of(const nfc_ndef_record &record)
{
    return make_record(record.record_type.format, name_of(record), id_of(record), payload_of(record));
}

// Puts bytes behind those of a field.
void append(uint8_t *&field, auto &length, ByteView bytes)
{
    const size_t total = length + bytes.size();
    Block<> whole{total == 0 ? nullptr : static_cast<uint8_t *>(os_block_alloc(total))};
    std::copy(bytes.begin(), bytes.end(), std::copy_n(field, length, whole.get()));
    os_block_dealloc(std::exchange(field, whole.release()));
    length = static_cast<std::remove_reference_t<decltype(length)>>(total);
}

class Editor {
public:
    void step(Input &input);

private:
    void append_record(Input &input)
    {
        const Record record = read_record(input);
        const size_t times = input.u8() == 0xFF ? most_records : 1; // up to a full message at times
        for (size_t i = 0; i < times; ++i) {
            if (succeeds(!is_full(), [&] { return nfc_ndef_msg_append_record(message_.get(), record.get()); }))
                records_.push_back(copy_of(*record));
        }
    }
    void insert_record(Input &input)
    {
        const uint8_t position = input.u8();
        if (takes_over(nfc_ndef_msg_insert_record, position, input, position <= records_.size() && !is_full()))
            records_.insert(records_.begin() + position, copy_of(*at(position)));
    }
    void set_record(Input &input)
    {
        const uint8_t position = input.u8();
        if (takes_over(nfc_ndef_msg_set_record, position, input, position < records_.size()))
            records_[position] = copy_of(*at(position));
    }
    bool takes_over(auto operation, uint8_t position, Input &input, bool may)
    {
        Record record = read_record(input);
        const Record copy = copy_of(*record);
        const bool done = succeeds(may, [&] { return operation(message_.get(), position, record.get()); });
        if (done)
            record.release(); // which may be gone: the message may hold a copy
        must(same(done ? *at(position) : *record, *copy), "a record taken over or refused is as it was");
        return done;
    }
    void remove_record(Input &input)
    {
        const uint8_t position = input.u8();
        if (succeeds(position < records_.size(), [&] { return nfc_ndef_msg_remove_record(message_.get(), position); }))
            records_.erase(records_.begin() + position);
    }
    void copy_message(Input &)
    {
        Message copied;
        if (succeeds(true, [&] { return (copied = Message{nfc_ndef_msg_copy(message_.get())}) != nullptr; }))
            message_ = std::move(copied);
    }
    void create_by_records(Input &input)
    {
        const uint8_t count = input.u8() & 7;
        std::vector<Record> records;
        Block<nfc_ndef_record *> array{static_cast<nfc_ndef_record **>(os_block_alloc(count * sizeof(void *)))};
        for (size_t i = 0; i < count; ++i) {
            records.push_back(read_record(input));
            array[i] = copy_of(*records[i]).release();
        }
        Message created;
        const auto create = [&] { return Message{nfc_ndef_msg_create_by_records(array.get(), count)}; };
        if (succeeds(count != 0, [&] { return (created = create()) != nullptr; })) {
            array.release();
            message_ = std::move(created);
            records_ = std::move(records);
        }
        for (size_t i = 0; array && i < count; ++i)
            must(same(*records[i], *Record{array[i]}), "records that were not taken over are unchanged");
    }
    void set_id(Input &input)
    {
        const uint8_t position = input.u8();
        const ByteView id = input.take(input.u8() & 7);
        nfc_ndef_record *const record = nfc_ndef_msg_edit_record_by_index(message_.get(), position);
        Block<> buffer{id.empty() ? nullptr : static_cast<uint8_t *>(os_block_alloc(id.size()))};
        std::copy(id.begin(), id.end(), buffer.get());
        must(!buffer || nfc_ndef_record_set_id(record, buffer.get(), 0) == 0, "a buffer without a length is refused");
        uint8_t length = 0;
        succeeds(true, [&] { return (length = nfc_ndef_record_set_id(record, buffer.get(), length8(id))), true; });
        must(length == (record ? id.size() : 0), "the new length of the id");
        if (record) {
            buffer.release();
            records_[position]->id_length = 0;
            append(records_[position]->id, records_[position]->id_length, id);
        }
    }
    void append_payload(Input &input)
    {
        const ByteView id = input.take(input.u8() & 7), data = input.take(input.u8());
        const auto has_id = [&](const Record &record) { return !id.empty() && equal(id_of(*record), id); };
        const auto found = std::find_if(records_.begin(), records_.end(), has_id);
        nfc_ndef_record *const record = nfc_ndef_msg_edit_record_by_id(message_.get(), pointer(id), length8(id));
        must(record == nfc_ndef_msg_get_record_by_id(message_.get(), pointer(id), length8(id)), "both find the same");
        must(record == (found == records_.end() ? nullptr : at(found - records_.begin())), "the first with the id");
        const auto operation = [&] { return nfc_ndef_record_append_payload(record, pointer(data), length32(data)); };
        if (succeeds(record && record->payload && !data.empty(), operation))
            append((*found)->payload, (*found)->payload_length, data);
    }
    void query(Input &input)
    {
        const Record sought = read_record(input);
        const nfc_ndef_record_type *key = nfc_ndef_record_get_record_type(sought.get());
        std::vector<const nfc_ndef_record *> expected;
        int32_t first = -1;
        for (size_t i = records_.size(); i-- > 0;) {
            if (nfc_ndef_record_type_equals(key, &records_[i]->record_type) == 0)
                continue;
            first = static_cast<int32_t>(i);
            expected.insert(expected.begin(), at(i));
        }
        must(nfc_ndef_record_index_by_type_from_msg(message_.get(), key) == first, "the first of a type");
        list(nfc_ndef_msg_get_records, records_.size(), [&](size_t i) { return at(i); });
        list(nfc_ndef_msg_get_record_types, records_.size(), [&](size_t i) { return &at(i)->record_type; });
        const auto get = [&](auto *message, uint8_t *count) {
            return nfc_ndef_msg_get_records_by_type(message, key, count);
        };
        list(get, expected.size(), [&](size_t i) { return expected[i]; });
    }
    void list(auto get, size_t expected_count, auto expected)
    {
        uint8_t count = 0xA5;
        Block<std::remove_pointer_t<decltype(get(message_.get(), &count))>> all;
        const auto operation = [&] { return all.reset(get(message_.get(), &count)), all != nullptr; };
        const bool done = succeeds(expected_count != 0, operation);
        must(count == (done ? expected_count : 0), "the number of what is listed");
        for (size_t i = 0; i < count; ++i)
            must(all[i] == expected(i), "what is listed, in order");
    }
    void encode_and_parse(Input &)
    {
        const auto encodes = [](const Record &record) { return is_encodable(*record); };
        const bool encodable = !records_.empty() && std::ranges::all_of(records_, encodes);
        Bytes bytes;
        if (!succeeds(encodable, [&] { return !(bytes = encoded(*message_)).empty(); }))
            return;
        const auto parses = [](const Record &record) { return record->record_type.format != NFC_NDEF_TNF_RESERVED; };
        const bool parsable = records_.size() <= most_records_parsed &&
                              (records_.size() == 1 || !equal(name_of(*records_[0]), bytes_of("Gc"))) &&
                              std::ranges::all_of(records_, parses); // with a name, as here
        Message parsed{nfc_ndef_msg_create_by_msg_offset(bytes.data(), 0, length32(bytes))};
        must((parsed != nullptr) == parsable, "what was edited parses");
        if (parsed)
            message_ = std::move(parsed);
    }

    // Runs an operation, which succeeds exactly when it should and memory was there.
    bool succeeds(bool should, auto operation)
    {
        if (failing_ != 0)
            fail_allocation(failing_);
        const bool done = operation() == 1, failed = failing_ != 0 && end_failure();
        must(done == (should && !failed), "an operation succeeds when it should, and without memory fails");
        return done;
    }

    bool is_full() const { return records_.size() == most_records; }
    const nfc_ndef_record *at(std::integral auto position) const
    {
        return nfc_ndef_msg_get_record_by_index(message_.get(), static_cast<uint8_t>(position));
    }
    void compare() const
    {
        uint8_t count = 0;
        const Block<const nfc_ndef_record *> records{nfc_ndef_msg_get_records(message_.get(), &count)};
        must(count == records_.size() && nfc_ndef_msg_get_number_of_records(message_.get()) == count, "their number");
        for (size_t i = 0; i < count; ++i)
            must(same(*records[i], *records_[i]), "each record");
        must(is_full() || at(records_.size()) == nullptr, "no record behind the last");
    }

    Message message_{nfc_ndef_msg_create()};
    std::vector<Record> records_;
    size_t failing_ = 0; // which allocation of the operation; 0: none
};

void Editor::step(Input &input)
{
    static constexpr std::array operations{&Editor::append_record,   &Editor::insert_record,     &Editor::set_record,
                                           &Editor::remove_record,   &Editor::copy_message,      &Editor::set_id,
                                           &Editor::append_payload,  &Editor::create_by_records, &Editor::query,
                                           &Editor::encode_and_parse};
    const uint8_t code = input.u8();
    failing_ = code >> 4;
    (this->*operations[(code & 15) % operations.size()])(input);
    compare();
}

} // namespace

void fuzz::run(ByteView bytes)
{
    Editor editor;
    for (Input input(bytes); !input.empty();)
        editor.step(input);
}
