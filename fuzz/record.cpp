// Decoding one record: the input is records one behind the other, up to bytes that are none.
#include "fuzz.h"

using namespace fuzz;
using nfc_ndef::Record;

namespace {

nfc_ndef_record *decode(ByteView bytes, size_t position = 0)
{
    return nfc_ndef_record_create_from_byte_array(bytes.data(), static_cast<uint32_t>(position), length32(bytes));
}

void check_fields(const nfc_ndef_record &record)
{
    const nfc_ndef_record_type &type = record.record_type;
    must((record.id != nullptr) == (record.id_length != 0), "an id and its length go together");
    must((record.payload != nullptr) == (record.payload_length != 0), "a payload and its length go together");
    must((type.name != nullptr) == (type.name_length != 0), "a type name and its length go together");
    must((record.mb | record.me | record.cf | record.sr | record.il) <= 1 && type.format <= 7, "fields are in range");
    must(type.format != NFC_NDEF_TNF_EMPTY || !(record.id || record.payload || type.name), "an empty record is empty");
}

void check_encoding(const nfc_ndef_record &record, ByteView wire)
{
    const Bytes canonical = encoded(record);
    must(!canonical.empty(), "what decodes encodes");
    if (record.sr == (record.payload_length <= 255) && record.il == (record.id_length != 0))
        must(equal(canonical, wire), "a record in the library's own form encodes to its bytes");
    const Record again{decode(canonical)};
    must(again && same(record, *again), "what is encoded decodes to the same record");
    must(again->mb == record.mb && again->me == record.me && again->cf == record.cf, "with the same flags");
    must(again->parsed_length == canonical.size(), "the length read is the length written");
    must(encoded(*again) == canonical, "the second encoding is the first");
}

} // namespace

void fuzz::run(ByteView input)
{
    for (size_t position = 0; position < input.size();) {
        const Memory memory;
        const Record record{decode(input, position)};
        if (!record)
            return;
        const size_t length = record->parsed_length;
        must(length >= 3 && length <= input.size() - position, "a record lies within the bytes");
        must(memory.peak() <= sizeof(nfc_ndef_record) + length, "a record takes its own size and its bytes");
        check_fields(*record);

        const Bytes wire(&input[position], &input[position] + length);
        const Record alone{decode(wire)};
        must(alone && same(*record, *alone), "what follows a record does not matter");
        must(!Record{decode(ByteView(wire).first(length - 1))}, "a byte less is not a record");
        check_encoding(*record, wire);

        const Record copy{nfc_ndef_rec_create_and_copy(record.get())};
        must(copy && same(*record, *copy) && copy->parsed_length == length, "a copy is equal");
        position += length;
    }
}
