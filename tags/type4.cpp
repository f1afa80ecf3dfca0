// NFC Forum Type 4 Tag 2.0, with mapping versions 1, 2 and 3: files on a card of ISO/IEC 7816-4.
#include "kinds.h"

#include <algorithm>
#include <optional>

namespace nfc_ndef::tags {
namespace {

constexpr uint8_t select = 0xA4, read_binary = 0xB0, read_odd = 0xB1, update_binary = 0xD6, update_odd = 0xD7;
constexpr uint8_t by_file = 0x00, by_name = 0x04, first_with_data = 0x00, first_without_data = 0x0C;
constexpr uint16_t container_file = 0xE103;
constexpr size_t container_length = 15, most_plain_offset = 0x7FFF, most_in_a_command = 255;
constexpr uint8_t file_control = 0x04, long_file_control = 0x06, long_files = 3;
constexpr uint8_t free_access = 0x00, no_access = 0xFF;

class Type4 : public Tag {
public:
    explicit Type4(Card &card) : Tag(card) {}

    // Whether the card has the application.
    bool select_application();

    std::string_view type() const override { return "Type 4 tag"; }
    bool is_formatted() override { return true; }
    size_t size() override { return file().size - file().length_size; }
    bool is_writable() override { return file().write_access == free_access; }
    Bytes read() override;
    void write(ByteView message) override;
    void format() override { not_for_this_type("formatted without the commands of its maker"); }
    std::string lock() override { not_for_this_type("locked without the commands of its maker"); }
    Bytes memory() override { return read_at(0, file().size); }

private:
    // What the capability container says of the NDEF file.
    struct File {
        uint16_t id;
        size_t size;
        size_t length_size; // 2 or 4 bytes in front of the message
        size_t most_read, most_written;
        uint8_t read_access, write_access;
    };

    const File &file();
    bool select_file(uint16_t id);
    Bytes read_at(size_t offset, size_t length);
    void update_at(size_t offset, ByteView bytes);
    void set_length(size_t length);

    uint8_t select_parameter_ = first_without_data;
    size_t most_read_ = container_length;
    std::optional<File> file_;
};

size_t be(ByteView bytes)
{
    size_t number = 0;
    for (const uint8_t byte : bytes)
        number = number << 8 | byte;
    return number;
}

// A data object with a length of one byte, or of two.
void put_object(Bytes &to, uint8_t tag, ByteView value)
{
    to.push_back(tag);
    if (value.size() > 0x7F)
        to.push_back(0x81);
    to.push_back(static_cast<uint8_t>(value.size()));
    to.insert(to.end(), value.begin(), value.end());
}

constexpr uint8_t offset_object = 0x54, data_object = 0x53;

Bytes offset_of(size_t offset)
{
    Bytes object;
    const uint8_t bytes[] = {static_cast<uint8_t>(offset >> 16), static_cast<uint8_t>(offset >> 8),
                             static_cast<uint8_t>(offset)};
    put_object(object, offset_object, bytes);
    return object;
}

bool Type4::select_application()
{
    for (const bool recent : {true, false}) { // of mapping versions 2 and 3, and of 1
        const uint8_t name[] = {0xD2, 0x76, 0x00, 0x00, 0x85, 0x01, recent};
        if (card().command(0, select, by_name, 0, name, 256).ok())
            return true;
    }
    return false;
}

bool Type4::select_file(uint16_t id)
{
    const uint8_t name[] = {static_cast<uint8_t>(id >> 8), static_cast<uint8_t>(id)};
    if (card().command(0, select, by_file, select_parameter_, name).ok())
        return true;
    // What mapping version 1 asks for.
    select_parameter_ = select_parameter_ == first_without_data ? first_with_data : first_without_data;
    return card().command(0, select, by_file, select_parameter_, name).ok();
}

// Selects the file as well, so that what follows is about it.
const Type4::File &Type4::file()
{
    if (file_)
        return *file_;
    if (!select_file(container_file))
        throw Refused("the Type 4 tag has no capability container");
    Bytes container = read_at(0, container_length);
    const size_t length = be(ByteView(container).first(2));
    const uint8_t version = container[2] >> 4;
    if (length < container_length || version < 1 || version > long_files)
        throw Refused("the Type 4 tag has a capability container of a version that is not known");
    most_read_ = std::min(be(ByteView(container).subspan(3, 2)), most_in_a_command);
    const size_t most_written = std::min(be(ByteView(container).subspan(5, 2)), most_in_a_command);
    const bool is_long = container[7] == long_file_control;
    const size_t value_length = is_long ? 8 : 6, size_length = is_long ? 4 : 2;
    if ((container[7] != file_control && !(is_long && version == long_files)) || container[8] != value_length ||
        most_read_ == 0 || most_written == 0)
        throw Refused("the capability container of the Type 4 tag names no NDEF file");
    if (const size_t needed = 9 + value_length; needed > container.size()) {
        if (length < needed)
            throw Refused("the capability container of the Type 4 tag is cut short");
        const Bytes rest = read_at(container.size(), needed - container.size());
        container.insert(container.end(), rest.begin(), rest.end());
    }
    const ByteView value = ByteView(container).subspan(9, value_length);
    File found{.id = static_cast<uint16_t>(be(value.first(2))),
               .size = be(value.subspan(2, size_length)),
               .length_size = is_long ? 4U : 2U,
               .most_read = most_read_,
               .most_written = most_written,
               .read_access = value[2 + size_length],
               .write_access = value[3 + size_length]};
    if (found.size <= found.length_size)
        throw Refused("the NDEF file of the Type 4 tag has no room for a message");
    if (!select_file(found.id))
        throw Refused("the NDEF file of the Type 4 tag cannot be selected");
    return file_.emplace(found);
}

Bytes Type4::read_at(size_t offset, size_t length)
{
    constexpr size_t header = 2; // of the data object
    Bytes bytes;
    while (bytes.size() < length) {
        const size_t at = offset + bytes.size(), left = length - bytes.size();
        Response response;
        if (at <= most_plain_offset) {
            const size_t count = std::min({left, most_read_, most_plain_offset + 1 - at});
            response = card().ask(0, read_binary, static_cast<uint8_t>(at >> 8), static_cast<uint8_t>(at), count);
            response.data.resize(std::min(response.data.size(), count));
        } else {
            const size_t count = std::min({left, std::max(most_read_, header + 1) - header, size_t{0x7F}});
            response = card().command(0, read_odd, 0, 0, offset_of(at), count + header);
            if (response.ok() && response.data.size() > header && response.data[0] == data_object)
                response.data.erase(response.data.begin(), response.data.begin() + header);
            response.data.resize(std::min(response.data.size(), count));
        }
        if (!response.ok() || response.data.empty())
            throw Refused("byte " + std::to_string(at) + " of the file cannot be read (status " +
                          status_text(response.status) + ")");
        bytes.insert(bytes.end(), response.data.begin(), response.data.end());
    }
    return bytes;
}

void Type4::update_at(size_t offset, ByteView bytes)
{
    constexpr size_t headers = 5 + 3; // of both data objects
    const size_t most = file().most_written;
    while (!bytes.empty()) {
        const bool is_plain = offset <= most_plain_offset;
        const size_t count = is_plain ? std::min({bytes.size(), most, most_plain_offset + 1 - offset})
                                      : std::min(bytes.size(), std::max(most, headers + 1) - headers);
        Response response;
        if (is_plain) {
            response = card().command(0, update_binary, static_cast<uint8_t>(offset >> 8), static_cast<uint8_t>(offset),
                                      bytes.first(count));
        } else {
            Bytes objects = offset_of(offset);
            put_object(objects, data_object, bytes.first(count));
            response = card().command(0, update_odd, 0, 0, objects);
        }
        if (!response.ok())
            throw Refused("byte " + std::to_string(offset) + " of the file cannot be written (status " +
                          status_text(response.status) + ")");
        bytes = bytes.subspan(count);
        offset += count;
    }
}

void Type4::set_length(size_t length)
{
    Bytes bytes(file().length_size);
    for (size_t i = bytes.size(); i-- > 0; length >>= 8)
        bytes[i] = static_cast<uint8_t>(length);
    update_at(0, bytes);
}

Bytes Type4::read()
{
    if (file().read_access != free_access)
        throw Refused("the tag cannot be read without a key");
    const size_t length = be(read_at(0, file().length_size));
    if (length > size())
        throw Refused("the message is longer than the file, which holds " + std::to_string(size()) + " bytes");
    return read_at(file().length_size, length);
}

void Type4::write(ByteView message)
{
    const File &target = file();
    if (target.write_access != free_access)
        throw Refused(target.write_access == no_access ? "the tag is read-only"
                                                       : "the tag cannot be written without a key");
    check_room(message.size());
    set_length(0);
    update_at(target.length_size, message);
    if (!message.empty())
        set_length(message.size());
    if (!std::ranges::equal(read(), message))
        throw Refused("what was read back is not what was written");
}

} // namespace

std::unique_ptr<Tag> make_type4(Card &card)
{
    auto tag = std::make_unique<Type4>(card);
    return tag->select_application() ? std::move(tag) : nullptr;
}

} // namespace nfc_ndef::tags
