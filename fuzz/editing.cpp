// The editing interface against a vector of plain records: the input is a program of one byte per operation, each with
// its arguments behind it. The operation's upper bits may make one of its allocations fail.
#include "fuzz.h"

#include <array>
#include <cstring>

using namespace fuzz;
using nfc_ndef::Block;
using nfc_ndef::Message;
using nfc_ndef::Record;

namespace {

constexpr size_t most_records = 255, most_records_parsed = 254;

struct Plain {
    uint32_t format;
    Bytes name, id, payload;

    bool is(const nfc_ndef_record &record) const
    {
        return record.record_type.format == format && equal(name_of(record), name) && equal(id_of(record), id) &&
               equal(payload_of(record), payload);
    }
    Record make() const { return make_record(format, name, id, payload); }
    bool is_encodable() const { return format != NFC_NDEF_TNF_EMPTY || (id.empty() && payload.empty()); }
    bool is_parsable() const { return format != NFC_NDEF_TNF_RESERVED; } // which has a name here, and may not
};

Bytes copy(ByteView bytes) { return {bytes.begin(), bytes.end()}; }

Plain read_plain(Input &input)
{
    static constexpr std::array names{"T", "U", "Gc", "image/png", "IMAGE*", "text/plain;charset=x", "a:b", "A:B"};
    const uint32_t format = input.u8() & 7;
    const ByteView name = bytes_of(names[input.u8() % names.size()]);
    const Bytes id = copy(input.take(input.u8() & 3)), payload = copy(input.take(input.u8() & 31));
    if (format == NFC_NDEF_TNF_EMPTY)
        return {format, {}, {}, {}};
    return {format, format == NFC_NDEF_TNF_UNKNOWN ? Bytes{} : copy(name), id, payload};
}

void append(Bytes &bytes, ByteView more) { bytes.insert(bytes.end(), more.begin(), more.end()); }

// The wire form by the book; nothing when a record has none.
Bytes encode(const std::vector<Plain> &records)
{
    Bytes out;
    for (const Plain &record : records) {
        if (!record.is_encodable())
            return {};
        const size_t length = record.payload.size();
        const bool is_short = length <= 255;
        const int first = &record == &records.front(), last = &record == &records.back(), has_id = !record.id.empty();
        out.push_back(static_cast<uint8_t>(first << 7 | last << 6 | is_short << 4 | has_id << 3 |
                                           static_cast<int>(record.format)));
        out.push_back(length8(record.name));
        for (int shift = is_short ? 0 : 24; shift >= 0; shift -= 8)
            out.push_back(static_cast<uint8_t>(length >> shift));
        if (!record.id.empty())
            out.push_back(length8(record.id));
        append(out, record.name);
        append(out, record.id);
        append(out, record.payload);
    }
    return out;
}

class Editor {
public:
    void step(Input &input);

private:
    using Operation = void (Editor::*)(Input &);

    void append_record(Input &input)
    {
        const Plain plain = read_plain(input);
        const Record record = plain.make();
        for (size_t times = input.u8() == 0xFF ? most_records : 1; times > 0;
             --times) { // up to a full message at times
            arm();
            const bool done = nfc_ndef_msg_append_record(message_.get(), record.get()) == 1;
            if (expect(done, records_.size() < most_records))
                records_.push_back(plain);
        }
    }
    void insert_record(Input &input)
    {
        const uint8_t position = input.u8();
        const Plain plain = read_plain(input);
        Record record = plain.make();
        arm();
        const bool done = nfc_ndef_msg_insert_record(message_.get(), position, record.get()) == 1;
        if (expect(done, position <= records_.size() && records_.size() < most_records)) {
            record.release();
            records_.insert(records_.begin() + position, plain);
        }
    }
    void set_record(Input &input)
    {
        const uint8_t position = input.u8();
        const Plain plain = read_plain(input);
        Record record = plain.make();
        arm();
        const bool done = nfc_ndef_msg_set_record(message_.get(), position, record.get()) == 1;
        if (expect(done, position < records_.size())) {
            record.release();
            records_[position] = plain;
        }
    }
    void remove_record(Input &input)
    {
        const uint8_t position = input.u8();
        arm();
        if (expect(nfc_ndef_msg_remove_record(message_.get(), position) == 1, position < records_.size()))
            records_.erase(records_.begin() + position);
    }
    void copy_message(Input &)
    {
        arm();
        Message copied{nfc_ndef_msg_copy(message_.get())};
        if (expect(copied != nullptr, true))
            message_ = std::move(copied);
    }
    void create_by_records(Input &input)
    {
        const uint8_t count = input.u8() & 7;
        std::vector<Plain> plain;
        Block<nfc_ndef_record *> array{static_cast<nfc_ndef_record **>(os_block_alloc(count * sizeof(void *)))};
        for (size_t i = 0; i < count; ++i) {
            plain.push_back(read_plain(input));
            array[i] = plain.back().make().release();
        }
        arm();
        Message created{nfc_ndef_msg_create_by_records(array.get(), count)};
        if (expect(created != nullptr, count != 0)) {
            array.release();
            message_ = std::move(created);
            records_ = std::move(plain);
        } else {
            for (size_t i = 0; i < count; ++i)
                must(plain[i].is(*Record{array[i]}), "records that were not taken over are unchanged");
        }
    }
    void set_id(Input &input)
    {
        const uint8_t position = input.u8();
        nfc_ndef_record *const record = nfc_ndef_msg_edit_record_by_index(message_.get(), position);
        const Bytes id = copy(input.take(input.u8() & 7));
        Block<> buffer{id.empty() ? nullptr : static_cast<uint8_t *>(os_block_alloc(id.size()))};
        std::copy(id.begin(), id.end(), buffer.get());
        if (record && buffer)
            must(nfc_ndef_record_set_id(record, buffer.get(), 0) == 0, "a buffer without a length is refused");
        arm();
        const uint8_t length = nfc_ndef_record_set_id(record, buffer.get(), length8(id));
        must(length == (record ? id.size() : 0), "the new length of the id");
        if (expect(true, true) && record) {
            buffer.release();
            records_[position].id = id;
        }
    }
    void append_payload(Input &input)
    {
        const ByteView id = input.take(input.u8() & 7);
        nfc_ndef_record *const record = nfc_ndef_msg_edit_record_by_id(message_.get(), pointer(id), length8(id));
        Plain *const plain = find(id);
        const Bytes data = copy(input.take(input.u8()));
        arm();
        const bool done = nfc_ndef_record_append_payload(record, pointer(data), length32(data)) == 1;
        if (expect(done, plain && !plain->payload.empty() && !data.empty()))
            append(plain->payload, data);
    }
    void find_by_id(Input &input)
    {
        const ByteView id = input.take(input.u8() & 7);
        arm();
        const nfc_ndef_record *found = nfc_ndef_msg_get_record_by_id(message_.get(), pointer(id), length8(id));
        const Plain *const plain = find(id);
        expect(true, true);
        must(found == (plain ? at(static_cast<size_t>(plain - records_.data())) : nullptr), "the first with the id");
    }
    void query(Input &input)
    {
        const Plain plain = read_plain(input);
        const Record sought = plain.make();
        const nfc_ndef_record_type *key = nfc_ndef_record_get_record_type(sought.get());
        uint8_t count = 0;
        const Block<const nfc_ndef_record *> all{nfc_ndef_msg_get_records(message_.get(), &count)};
        std::vector<const nfc_ndef_record *> expected;
        int32_t first = -1;
        for (int32_t i = 0; i < count; ++i) {
            if (nfc_ndef_record_type_equals(key, &all[static_cast<size_t>(i)]->record_type) == 0)
                continue;
            first = expected.empty() ? i : first;
            expected.push_back(all[static_cast<size_t>(i)]);
        }
        must(nfc_ndef_record_index_by_type_from_msg(message_.get(), key) == first, "the first of a type");
        arm();
        count = 0xA5;
        const Block<const nfc_ndef_record *> found{nfc_ndef_msg_get_records_by_type(message_.get(), key, &count)};
        if (expect(found != nullptr, !expected.empty()))
            must(std::equal(expected.begin(), expected.end(), found.get(), found.get() + count), "all of a type");
        else
            must(count == 0, "nothing found is counted as nothing");
    }
    void list_types(Input &)
    {
        arm();
        uint8_t count = 0xA5;
        const Block<const nfc_ndef_record_type *> types{nfc_ndef_msg_get_record_types(message_.get(), &count)};
        const bool listed = expect(types != nullptr, !records_.empty());
        must(count == (listed ? records_.size() : 0), "a list holds each record's type");
        for (size_t i = 0; i < count; ++i)
            must(types[i] == &at(i)->record_type, "types are in order");
    }
    void list_records(Input &)
    {
        arm();
        uint8_t count = 0xA5;
        const Block<const nfc_ndef_record *> records{nfc_ndef_msg_get_records(message_.get(), &count)};
        const bool listed = expect(records != nullptr, !records_.empty());
        must(count == (listed ? records_.size() : 0), "a list holds each record");
        for (size_t i = 0; i < count; ++i)
            must(records[i] == at(i), "records are in order");
    }
    void encode_and_parse(Input &)
    {
        const Bytes expected = encode(records_);
        arm();
        const Bytes bytes = encoded(*message_);
        if (!expect(!bytes.empty(), !expected.empty()))
            return;
        must(bytes == expected, "the message encodes as its records do");
        const bool parsable =
            records_.size() <= most_records_parsed &&
            (records_.size() == 1 || records_[0].name != copy(bytes_of("Gc"))) &&
            std::all_of(records_.begin(), records_.end(), [](const Plain &plain) { return plain.is_parsable(); });
        Message parsed{nfc_ndef_msg_create_by_msg_offset(bytes.data(), 0, length32(bytes))};
        must((parsed != nullptr) == parsable, "what was edited parses");
        if (parsed)
            message_ = std::move(parsed);
    }

    // Between these two the operation under test runs. It succeeds exactly when it should, and memory was there.
    void arm()
    {
        if (failing_ != 0)
            fail_allocation(failing_);
    }
    bool expect(bool done, bool should)
    {
        const bool failed = end_failure() && failing_ != 0;
        must(!failed || !done, "an operation without memory fails");
        must(failed || done == should, "an operation succeeds when it should");
        return done;
    }

    const nfc_ndef_record *at(size_t position) const
    {
        return nfc_ndef_msg_get_record_by_index(message_.get(), static_cast<uint8_t>(position));
    }
    Plain *find(ByteView id)
    {
        const auto found = std::find_if(records_.begin(), records_.end(),
                                        [&](const Plain &plain) { return !id.empty() && equal(plain.id, id); });
        return found == records_.end() ? nullptr : &*found;
    }
    void compare() const
    {
        must(nfc_ndef_msg_get_number_of_records(message_.get()) == records_.size(), "the number of records");
        uint8_t count = 0;
        const Block<const nfc_ndef_record *> records{nfc_ndef_msg_get_records(message_.get(), &count)};
        must(count == records_.size(), "the number of records listed");
        for (size_t i = 0; i < count; ++i)
            must(records_[i].is(*records[i]), "each record");
        must(records_.size() == most_records || at(records_.size()) == nullptr, "no record behind the last");
    }

    Message message_{nfc_ndef_msg_create()};
    std::vector<Plain> records_;
    size_t failing_ = 0; // which allocation of the operation; 0: none
};

void Editor::step(Input &input)
{
    static constexpr std::array<Operation, 13> operations{
        &Editor::append_record,     &Editor::insert_record, &Editor::set_record,     &Editor::remove_record,
        &Editor::copy_message,      &Editor::set_id,        &Editor::append_payload, &Editor::find_by_id,
        &Editor::create_by_records, &Editor::query,         &Editor::list_types,     &Editor::list_records,
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
