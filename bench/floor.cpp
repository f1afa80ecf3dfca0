#include "floor.h"

#include <benchmark/benchmark.h>

#include <array>
#include <bit>
#include <cstdlib>

namespace bench::floor {

namespace {

static_assert(std::endian::native == std::endian::little, "the limit is measured on little-endian machines");

struct View {
    const uint8_t *data;
    uint32_t length;
};

// Where the fields of a record are, if its header is to be trusted.
struct Located {
    uint8_t flags;
    View type, id, payload;

    explicit Located(const uint8_t *header) : flags(header[0])
    {
        const uint8_t *at = header + 2;
        if (is_short()) {
            payload.length = *at++;
        } else {
            uint32_t length;
            std::memcpy(&length, at, sizeof length);
            payload.length = __builtin_bswap32(length);
            at += sizeof length;
        }
        id.length = (flags & 0x08) != 0 ? *at++ : 0;
        type = {at, header[1]};
        id.data = type.data + type.length;
        payload.data = id.data + id.length;
    }
    bool is_short() const { return (flags & 0x10) != 0; }
    bool is_chunk() const { return (flags & 0x20) != 0; }
    const uint8_t *end() const { return payload.data + payload.length; }
};

template <class T> T *new_block() { return static_cast<T *>(std::malloc(sizeof(T))); }

uint8_t *new_copy(View source)
{
    if (source.length == 0)
        return nullptr;
    void *const block = std::malloc(source.length);
    return static_cast<uint8_t *>(std::memcpy(block, source.data, source.length));
}

// The sizes are those of a 64-bit host.
struct Record {
    uint8_t *type;
    uint8_t *id;
    uint8_t *payload;
    uint32_t payload_length;
    uint32_t length;
    uint32_t format;
    uint8_t type_length;
    uint8_t id_length;
    std::array<uint8_t, 5> flags;
    std::array<uint8_t, 17> rest_of_a_cache_line;
};
static_assert(sizeof(void *) != 8 || sizeof(Record) == 64);

struct Node {
    Node *next;
    Node *previous;
    Record *record;
};

struct List {
    Node *first;
    Node *last;
    size_t count;
    void *configuration;
};

struct BluetoothFields {
    std::array<uint8_t, 6> device_address;
    std::array<uint8_t, 3> class_of_device;
    uint8_t name_length;
    uint8_t *name;
    std::array<uint8_t, 112> fields_not_in_this_record;
};
static_assert(sizeof(void *) != 8 || sizeof(BluetoothFields) == 136);

Record *new_record(const Located &found, uint8_t *payload, uint32_t payload_length)
{
    auto *const record = new_block<Record>();
    record->type = new_copy(found.type);
    record->id = new_copy(found.id);
    record->payload = payload;
    record->payload_length = payload_length;
    record->length = static_cast<uint32_t>(found.end() - found.type.data);
    record->format = found.flags & 0x07;
    record->type_length = static_cast<uint8_t>(found.type.length);
    record->id_length = static_cast<uint8_t>(found.id.length);
    for (size_t i = 0; i < record->flags.size(); ++i)
        record->flags[i] = found.flags >> (7 - i) & 1;
    return record;
}

Record *new_record(const Located &found) { return new_record(found, new_copy(found.payload), found.payload.length); }

void release(Record *record)
{
    std::free(record->type);
    std::free(record->id);
    std::free(record->payload);
    std::free(record);
}

// Each piece of a run of chunks is copied once, when the length of all is known. Returns where the run ends.
const uint8_t *join(const Located &first, View &joined)
{
    std::array<View, 256> pieces;
    size_t count = 0;
    uint32_t length = 0;
    Located chunk = first;
    for (;; chunk = Located(chunk.end())) {
        pieces[count++] = chunk.payload;
        length += chunk.payload.length;
        if (!chunk.is_chunk())
            break;
    }
    auto *const payload = static_cast<uint8_t *>(std::malloc(length));
    uint8_t *to = payload;
    for (size_t i = 0; i < count; ++i) {
        std::memcpy(to, pieces[i].data, pieces[i].length);
        to += pieces[i].length;
    }
    joined = {payload, length};
    return chunk.end();
}

void append(List &list, Record *record)
{
    auto *const node = new_block<Node>();
    *node = {.next = nullptr, .previous = list.last, .record = record};
    (list.last ? list.last->next : list.first) = node;
    list.last = node;
    ++list.count;
}

size_t wire_length(const Record &record)
{
    const size_t header_length = (record.payload_length < 256 ? 3U : 6U) + (record.id ? 1U : 0U);
    return header_length + record.type_length + record.id_length + record.payload_length;
}

uint8_t *write(View bytes, uint8_t *to)
{
    std::memcpy(to, bytes.data, bytes.length);
    return to + bytes.length;
}

uint8_t *write(const Record &record, uint8_t position, uint8_t *to)
{
    const bool is_short = record.payload_length < 256;
    *to++ = static_cast<uint8_t>(position | (is_short ? 0x10 : 0) | (record.id ? 0x08 : 0) | record.format);
    *to++ = record.type_length;
    if (is_short) {
        *to++ = static_cast<uint8_t>(record.payload_length);
    } else {
        const uint32_t length = __builtin_bswap32(record.payload_length);
        to = write({reinterpret_cast<const uint8_t *>(&length), sizeof length}, to);
    }
    if (record.id)
        *to++ = record.id_length;
    to = write({record.type, record.type_length}, to);
    if (record.id)
        to = write({record.id, record.id_length}, to);
    return write({record.payload, record.payload_length}, to);
}

View encode(const List &list)
{
    size_t length = 0;
    for (const Node *node = list.first; node; node = node->next)
        length += wire_length(*node->record);
    auto *const block = static_cast<uint8_t *>(std::malloc(length));
    uint8_t *to = block;
    for (const Node *node = list.first; node; node = node->next)
        to = write(*node->record, (node->previous ? 0 : 0x80) | (node->next ? 0 : 0x40), to);
    return {block, static_cast<uint32_t>(length)};
}

// What the measured program would go on to use: the compiler must not leave out what leads to it.
template <class... T> void use(const T &...values) { (benchmark::DoNotOptimize(values), ...); }

BluetoothFields *read_bluetooth(View payload)
{
    auto *const fields = new_block<BluetoothFields>();
    std::memset(fields, 0, sizeof *fields);
    const uint8_t *at = payload.data + 2;
    std::memcpy(fields->device_address.data(), at, fields->device_address.size());
    at += fields->device_address.size();
    while (at < payload.data + payload.length) {
        const View structure{at + 2, at[0] - 1U};
        if (at[1] == 0x09) {
            fields->name = new_copy(structure);
            fields->name_length = static_cast<uint8_t>(structure.length);
        } else if (at[1] == 0x0D) {
            std::memcpy(fields->class_of_device.data(), structure.data, fields->class_of_device.size());
        }
        at += 1 + at[0];
    }
    return fields;
}

} // namespace

struct Message {
    List *records;
};

Message *parse(const Input &input)
{
    auto *const message = new_block<Message>();
    message->records = new_block<List>();
    *message->records = {};
    const uint8_t *at = input.data();
    const uint8_t *const end = at + input.length();
    while (at < end) {
        const Located found(at);
        if (found.is_chunk()) {
            View joined;
            at = join(found, joined);
            append(*message->records, new_record(found, const_cast<uint8_t *>(joined.data), joined.length));
        } else {
            append(*message->records, new_record(found));
            at = found.end();
        }
    }
    return message;
}

void release(Message *message)
{
    for (Node *node = message->records->first; node;) {
        Node *const next = node->next;
        release(node->record);
        std::free(node);
        node = next;
    }
    std::free(message->records);
    std::free(message);
}

void parse_and_release(const Input &input)
{
    Message *const message = parse(input);
    use(message);
    release(message);
}

void extract_poster(const Input &input)
{
    Message *const message = parse(input);
    const Record &poster = *message->records->first->record;
    const uint8_t *at = poster.payload;
    const uint8_t *const end = at + poster.payload_length;
    std::array<Record *, 4> taken; // the URI, the titles and the icon, as they stand in the message
    size_t count = 0;
    uint32_t action = 255;
    while (at < end) {
        const Located found(at);
        if (found.type.length == 3) // the action is the only one with such a type
            action = found.payload.data[0];
        else
            taken[count++] = new_record(found);
        at = found.end();
    }
    auto *const titles = new_block<std::array<Record *, 2>>();
    *titles = {taken[1], taken[2]};
    auto *const icons = new_block<std::array<Record *, 1>>();
    *icons = {taken[3]};
    use(message, action, taken, titles, icons);
    for (Record *const record : taken)
        release(record);
    std::free(titles);
    std::free(icons);
    release(message);
}

void extract_handover(const Input &input)
{
    Message *const message = parse(input);
    const Node *const node = message->records->first;
    const Record &request = *node->record;
    const uint8_t *at = request.payload + 1;
    const uint8_t *const end = request.payload + request.payload_length;
    std::array<Record *, 8> nested;
    size_t count = 0;
    while (at < end) {
        const Located found(at);
        nested[count++] = new_record(found);
        at = found.end();
    }
    auto *const carriers = new_block<std::array<Record *, 2>>();
    *carriers = {nested[1], nested[2]};
    std::array<uint8_t *, 2> references;
    for (size_t i = 0; i < references.size(); ++i)
        references[i] = new_copy({(*carriers)[i]->payload + 2, (*carriers)[i]->payload[1]});
    const Record &bluetooth = *node->next->record;
    BluetoothFields *const fields = read_bluetooth({bluetooth.payload, bluetooth.payload_length});
    use(message, nested, carriers, references, fields);
    std::free(fields->name);
    std::free(fields);
    for (uint8_t *const reference : references)
        std::free(reference);
    std::free(carriers);
    for (size_t i = 0; i < count; ++i)
        release(nested[i]);
    release(message);
}

void encode_and_release(const Message &message)
{
    const View bytes = encode(*message.records);
    use(bytes.data);
    std::free(const_cast<uint8_t *>(bytes.data));
}

Bytes encoded(const Message &message)
{
    const View bytes = encode(*message.records);
    const Bytes result(bytes.data, bytes.data + bytes.length);
    std::free(const_cast<uint8_t *>(bytes.data));
    return result;
}

} // namespace bench::floor
