// Record types whose payload is a message: the parts that are built in come back, and the parts that are read build a
// record that reads as the same parts.
#include "types.h"

using namespace fuzz;
using nfc_ndef::out;
using nfc_ndef::Record;

namespace {

constexpr size_t most_records_parsed = 254;

// An array of records as an extractor gives it, and as a builder takes it.
struct Array {
    uint8_t count = 0;
    nfc_ndef_record **records = nullptr;

    Array() = default;
    Array(const Array &) = delete;
    Array &operator=(const Array &) = delete;
    ~Array()
    {
        for (size_t i = 0; records && i < count; ++i)
            nfc_ndef_record_delete(&records[i]);
        os_block_dealloc(records);
    }
    void reserve(size_t length)
    {
        records = length == 0 ? nullptr : static_cast<nfc_ndef_record **>(os_block_alloc(length * sizeof *records));
    }
    void add(Record record) { records[count++] = record.release(); }
    bool is_encodable() const
    {
        return std::all_of(records, records + count, [](auto *record) { return fuzz::is_encodable(*record); });
    }
    bool operator==(const Array &other) const
    {
        return std::equal(records, records + count, other.records, other.records + other.count,
                          [](auto *a, auto *b) { return same(*a, *b); });
    }
};

bool same_part(const Record &a, const Record &b) { return a && b ? same(*a, *b) : a == b; }
bool is_encodable_part(const Record &part) { return !part || is_encodable(*part); }

// A record of a type, with an id and a payload from the input.
Record part(Input &in, uint32_t format, const char *name, size_t payload_length = 15)
{
    const ByteView id = in.take(in.u8() & 3);
    Bytes payload(payload_length < 15 ? payload_length : in.u8() & 15);
    for (uint8_t &byte : payload)
        byte = in.u8();
    return make_record(format, bytes_of(name), id, payload);
}
Record part(Input &in, const char *name) { return part(in, NFC_NDEF_TNF_WELL_KNOWN, name); }

void fill(Array &array, Input &in, size_t count, uint32_t format, const char *name)
{
    array.reserve(count);
    while (array.count < count)
        array.add(part(in, format, name));
}

// Builds what was read or filled in, reads that, and compares. `Parts` is one of the structures below.
template <class Parts> void must_come_back(const Parts &parts)
{
    const Record built = parts.build();
    must((built != nullptr) == parts.builds(), "what has all its parts is built");
    if (!built)
        return;
    Parts again;
    const int8_t result = again.extract(*built);
    if (parts.total() > most_records_parsed)
        return must(result == -1, "255 records are built but not read");
    must(result == 1 && again == parts, "the same parts come back");
}

template <class Parts> void run_parts(Input &in, bool building, std::initializer_list<int> results)
{
    Parts parts;
    if (building) {
        parts.fill(in);
    } else {
        const uint8_t flags = in.u8();
        const ByteView payload = in.rest();
        const Record record = with_payload(payload);
        record->mb = flags & 1;
        record->me = flags >> 1 & 1;
        const int8_t result = within_memory(payload, [&] { return parts.extract(*record); });
        must_be_one_of(result, results);
        if (result != 1)
            return;
    }
    must_come_back(parts);
}

struct SmartPoster {
    Record uri, size, type;
    uint32_t action = 0;
    Array titles, icons, others;

    int8_t extract(const nfc_ndef_record &record)
    {
        return rtdlib_smart_poster_record_extract(&record, &titles.count, &titles.records, out(uri), &action,
                                                  &icons.count, &icons.records, out(size), out(type), &others.count,
                                                  &others.records);
    }
    Record build() const
    {
        return Record{rtdlib_smart_poster_record_create(titles.count, titles.records, uri.get(),
                                                        static_cast<uint8_t>(action), icons.count, icons.records,
                                                        size.get(), type.get(), others.count, others.records)};
    }
    void fill(Input &in)
    {
        const uint8_t shape = in.u8();
        uri = part(in, "U");
        action = in.u8();
        ::fill(titles, in, shape & 3, NFC_NDEF_TNF_WELL_KNOWN, "T");
        ::fill(icons, in, shape >> 2 & 3, NFC_NDEF_TNF_MIME, shape & 0x80 ? "image/png" : "VIDEO/mp4");
        ::fill(others, in, shape >> 4 & 1, NFC_NDEF_TNF_EXTERNAL, "a:b");
        if (shape & 0x20)
            size = part(in, NFC_NDEF_TNF_WELL_KNOWN, "s", 4);
        if (shape & 0x40)
            type = part(in, "t");
    }
    size_t total() const { return size_t{2} + titles.count + icons.count + others.count + !!size + !!type; }
    bool builds() const
    {
        return total() <= 255 && titles.is_encodable() && icons.is_encodable() && others.is_encodable() &&
               is_encodable_part(size) && is_encodable_part(type);
    }
    bool operator==(const SmartPoster &other) const
    {
        return same_part(uri, other.uri) && same_part(size, other.size) && same_part(type, other.type) &&
               action == other.action && titles == other.titles && icons == other.icons && others == other.others;
    }
};

struct GenericControl {
    uint32_t config = 0, action_code = 0;
    uint8_t action_flag = 0;
    Record target, action, data;
    Array controls;

    int8_t extract(const nfc_ndef_record &record)
    {
        return rtdlib_generic_control_record_extract(&record, &config, out(target), &action_flag, &action_code,
                                                     out(action), out(data), &controls.count, &controls.records);
    }
    Record build() const
    {
        // Written from the last to the first, so that what is read in order is given in reverse.
        std::vector<nfc_ndef_record *> reversed(controls.records, controls.records + controls.count);
        std::reverse(reversed.begin(), reversed.end());
        return Record{rtdlib_generic_control_record_create(static_cast<uint8_t>(config), target.get(), action_flag,
                                                           static_cast<uint8_t>(action_code), action.get(), data.get(),
                                                           controls.count, reversed.data())};
    }
    void fill(Input &in)
    {
        const uint8_t shape = in.u8();
        config = in.u8();
        target = part(in, "t");
        ::fill(controls, in, shape & 3, NFC_NDEF_TNF_WELL_KNOWN, "Gc");
        action_flag = shape >> 2 & 1;
        if (action_flag != 0)
            action_code = in.u8();
        else if (shape & 8)
            action = part(in, NFC_NDEF_TNF_MIME, "x/y");
        if (shape & 0x10)
            data = part(in, "d");
    }
    size_t total() const { return size_t{2} + controls.count + !!data; }
    bool builds() const
    {
        return total() <= 255 && controls.is_encodable() && is_encodable_part(target) && is_encodable_part(data);
    }
    bool operator==(const GenericControl &other) const
    {
        return config == other.config && (action_flag != 0) == (other.action_flag != 0) &&
               action_code == other.action_code && same_part(target, other.target) && same_part(action, other.action) &&
               same_part(data, other.data) && controls == other.controls;
    }
};

struct HandoverRequest {
    uint8_t version = 0;
    Record collision;
    Array carriers;

    int8_t extract(const nfc_ndef_record &record)
    {
        return rtdlib_handover_request_record_extract(&record, out(collision), &carriers.count, &carriers.records,
                                                      &version);
    }
    Record build() const
    {
        return Record{
            rtdlib_handover_request_record_create(collision.get(), carriers.count, carriers.records, version)};
    }
    void fill(Input &in)
    {
        const uint8_t shape = in.u8();
        version = in.u8();
        if (shape & 8)
            collision = part(in, "cr");
        ::fill(carriers, in, shape & 7, NFC_NDEF_TNF_WELL_KNOWN, "ac");
    }
    size_t total() const { return size_t{carriers.count} + !!collision; }
    bool builds() const { return total() != 0 && version == (collision ? 0x12 : 0x10); }
    bool operator==(const HandoverRequest &other) const
    {
        return version == other.version && same_part(collision, other.collision) && carriers == other.carriers;
    }
};

struct HandoverSelect {
    uint8_t version = 0;
    Record error;
    Array carriers;

    int8_t extract(const nfc_ndef_record &record)
    {
        return rtdlib_handover_select_record_extract(&record, &carriers.count, &carriers.records, out(error), &version);
    }
    Record build() const
    {
        return Record{rtdlib_handover_select_record_create(carriers.count, carriers.records, error.get(), version)};
    }
    void fill(Input &in)
    {
        const uint8_t shape = in.u8();
        version = in.u8();
        if (shape & 8)
            error = part(in, "err");
        ::fill(carriers, in, shape & 7, NFC_NDEF_TNF_WELL_KNOWN, "ac");
    }
    size_t total() const { return size_t{carriers.count} + !!error; }
    bool builds() const { return total() != 0 && (version == 0x12 || (version == 0x10 && !error)); }
    bool operator==(const HandoverSelect &other) const
    {
        return version == other.version && same_part(error, other.error) && carriers == other.carriers;
    }
};

} // namespace

void fuzz::run(ByteView input)
{
    run_type(input, {[](Input &in, bool building) {
                         run_parts<SmartPoster>(in, building, {1, -1});
                     },
                     [](Input &in, bool building) {
                         run_parts<GenericControl>(in, building, {1, -1});
                     },
                     [](Input &in, bool building) {
                         run_parts<HandoverRequest>(in, building, {1, -1, 2});
                     },
                     [](Input &in, bool building) {
                         run_parts<HandoverSelect>(in, building, {1, -1, 2});
                     }});
}
