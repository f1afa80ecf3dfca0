#include "virtual_tags.h"

#include <algorithm>

using nfc_ndef::tags::Gone;

namespace test {

Bytes VirtualTag::transmit(ByteView command)
{
    if (is_torn())
        throw Gone();
    Bytes response;
    const uint16_t status = command.size() < 4 ? wrong_length : answer(command, response);
    if (status != done)
        response.clear();
    response.push_back(static_cast<uint8_t>(status >> 8));
    response.push_back(static_cast<uint8_t>(status));
    return response;
}

namespace {

constexpr uint8_t iso14443a = 0x03, iso15693 = 0x0B;

// READ BINARY, UPDATE BINARY and GET DATA of PC/SC over blocks.
class StorageTag : public VirtualTag {
public:
    StorageTag(size_t block_size, uint8_t standard, uint16_t name, Habits habits)
        : block_size_(block_size), standard_(standard), name_(name), habits_(habits)
    {
    }

    Bytes answer_to_reset() override
    {
        Bytes answer{0x3B,
                     0x8F,
                     0x80,
                     0x01,
                     0x80,
                     0x4F,
                     0x0C,
                     0xA0,
                     0x00,
                     0x00,
                     0x03,
                     0x06,
                     standard_,
                     static_cast<uint8_t>(name_ >> 8),
                     static_cast<uint8_t>(name_),
                     0,
                     0,
                     0,
                     0};
        uint8_t check = 0;
        for (size_t i = 1; i < answer.size(); ++i)
            check ^= answer[i];
        answer.push_back(check);
        return answer;
    }

protected:
    uint16_t answer(ByteView command, Bytes &response) override
    {
        const size_t number = (habits_.low_byte_only ? size_t{0} : size_t{command[2]} << 8) | command[3];
        if (command[0] != 0xFF)
            return offend("a class of another card", 0x6E00);
        switch (command[1]) {
        case 0xB0:
            return command.size() == 5 ? read(number, command[4] == 0 ? 256 : command[4], response) : wrong_length;
        case 0xD6:
            if (command.size() != 5 + block_size_ || command[4] != block_size_)
                return offend("an update of another length", wrong_length);
            return update(number, command.subspan(5));
        case 0xCA:
            if (!habits_.tells_serial_number)
                return unknown_instruction;
            response = {0x04, 0x01, 0x02, 0x03, 0x04, 0x05, 0x06};
            return done;
        default:
            return offend("an unknown instruction", unknown_instruction);
        }
    }
    virtual uint16_t read(size_t number, size_t count, Bytes &response)
    {
        const size_t begin = number * block_size_;
        if (begin >= memory.size() || count > habits_.most_read || count % block_size_ != 0)
            return count > habits_.most_read ? wrong_length : not_found;
        if (begin + count > memory.size() && !habits_.rolls_over)
            return not_found;
        for (size_t i = 0; i < count; ++i)
            response.push_back(memory[(begin + i) % memory.size()]);
        return done;
    }
    virtual uint16_t update(size_t number, ByteView bytes)
    {
        if ((number + 1) * block_size_ > memory.size())
            return offend("an update behind the end", not_found);
        std::ranges::copy(bytes, memory.begin() + static_cast<std::ptrdiff_t>(number * block_size_));
        changed();
        return done;
    }

    size_t block_size_;
    uint8_t standard_;
    uint16_t name_;
    Habits habits_;
};

// Bits of lock bytes and of the capability container are never taken back.
class Type2 : public StorageTag {
public:
    explicit Type2(Habits habits) : StorageTag(4, iso14443a, 0x0003, habits) {}

private:
    uint16_t update(size_t page, ByteView bytes) override
    {
        const bool only_sets_bits = page == 2 || page == 3;
        if (page < 2)
            return offend("the serial number is written", not_allowed);
        if (page > 2 && page < 16 && (memory[10 + page / 8] >> page % 8 & 1) != 0)
            return offend("page " + std::to_string(page) + " is locked", not_allowed);
        Bytes wanted(bytes.begin(), bytes.end());
        for (size_t i = 0; only_sets_bits && i < wanted.size(); ++i) {
            const uint8_t before = memory[page * 4 + i];
            if ((before & ~wanted[i]) != 0)
                return offend("bits are to be taken back", memory_failure);
            if (page == 2 && i < 2 && before != wanted[i])
                return offend("check bytes are written", not_allowed);
        }
        return StorageTag::update(page, wanted);
    }
};

class Classic : public StorageTag {
public:
    explicit Classic(bool is_big) : StorageTag(16, iso14443a, is_big ? 0x0002 : 0x0001, {}) {}

private:
    uint16_t answer(ByteView command, Bytes &response) override
    {
        if (command[1] == 0x82) { // into the volatile memory alone
            if (command[2] != 0 || command.size() != 11)
                return wrong_parameters;
            key_.assign(command.begin() + 5, command.end());
            return done;
        }
        if (command[1] == 0x86) {
            const size_t sector = sector_of(command[7]);
            const size_t trailer = sector < 32 ? sector * 64 + 48 : 2048 + (sector - 32) * 256 + 240;
            const auto key = memory.begin() + static_cast<std::ptrdiff_t>(trailer);
            open_ = command[8] == 0x60 && std::equal(key_.begin(), key_.end(), key) ? sector : SIZE_MAX;
            return open_ == SIZE_MAX ? 0x6300 : done;
        }
        return StorageTag::answer(command, response);
    }
    uint16_t read(size_t number, size_t count, Bytes &response) override
    {
        if (sector_of(number) != open_)
            return offend("a sector is read without its key", not_allowed);
        const uint16_t status = StorageTag::read(number, count, response);
        if (number < 128 ? number % 4 == 3 : number % 16 == 15) // no key is ever read
            std::fill_n(response.begin(), 6, uint8_t{0});
        return status;
    }
    uint16_t update(size_t, ByteView) override { return offend("a card that is only read is written", not_allowed); }

    static size_t sector_of(size_t block) { return block < 128 ? block / 4 : 32 + (block - 128) / 16; }

    Bytes key_;
    size_t open_ = SIZE_MAX;
};

class Type4 : public VirtualTag {
public:
    Type4(unsigned version, uint16_t id, uint16_t most_read, uint16_t most_written)
        : version_(version), id_(id), most_read_(most_read), most_written_(most_written)
    {
    }

    Bytes answer_to_reset() override { return {0x3B, 0x80, 0x80, 0x01, 0x01}; }

private:
    Bytes container() const
    {
        const bool is_long = memory.size() > 0xFFFF;
        Bytes bytes{0, 0, static_cast<uint8_t>(version_ << 4)};
        const auto put = [&](size_t number, int length) {
            while (length-- > 0)
                bytes.push_back(static_cast<uint8_t>(number >> 8 * length));
        };
        put(most_read_, 2);
        put(most_written_, 2);
        put(is_long ? 6 : 4, 1);
        put(is_long ? 8 : 6, 1);
        put(id_, 2);
        put(memory.size(), is_long ? 4 : 2);
        put(0, 2);
        bytes[1] = static_cast<uint8_t>(bytes.size());
        return bytes;
    }

    uint16_t answer(ByteView command, Bytes &response) override
    {
        const ByteView data =
            command.size() > 5 ? command.subspan(5, std::min<size_t>(command[4], command.size() - 5)) : ByteView();
        const size_t offset = size_t{command[2]} << 8 | command[3];
        if (command[0] != 0)
            return command[1] == 0xCA ? unknown_instruction : offend("a class of a storage card", 0x6E00);
        switch (command[1]) {
        case 0xA4:
            return select(command, data);
        case 0xB0:
            return read(offset, command.size() == 5 && command[4] != 0 ? command[4] : 256, response);
        case 0xB1: {
            Bytes bytes;
            const size_t count = command.back() == 0 ? 256U : command.back();
            const uint16_t status = read(offset_in(data), count - 2, bytes);
            response = {0x53, static_cast<uint8_t>(bytes.size())};
            response.insert(response.end(), bytes.begin(), bytes.end());
            return status;
        }
        case 0xD6:
            return update(offset, data, data.size());
        case 0xD7:
            return update(offset_in(data), data.subspan(data[6] == 0x81 ? 8 : 7), data.size());
        default:
            return offend("an unknown instruction", unknown_instruction);
        }
    }
    static size_t offset_in(ByteView data)
    {
        return data.size() > 5 && data[0] == 0x54 && data[1] == 3
                   ? static_cast<size_t>(data[2] << 16 | data[3] << 8 | data[4])
               : data.size() == 5 ? static_cast<size_t>(data[2] << 16 | data[3] << 8 | data[4])
                                  : SIZE_MAX;
    }
    uint16_t select(ByteView command, ByteView data)
    {
        if (command[2] == 4) {
            const Bytes name{0xD2, 0x76, 0x00, 0x00, 0x85, 0x01, static_cast<uint8_t>(version_ == 1 ? 0 : 1)};
            is_selected_ = std::ranges::equal(data, name);
            return is_selected_ ? done : not_found;
        }
        if (!is_selected_ || data.size() != 2 || command[3] != (version_ == 1 ? 0x00 : 0x0C))
            return not_found;
        file_ = data[0] << 8 | data[1];
        return file_ == 0xE103 || file_ == id_ ? done : not_found;
    }
    uint16_t read(size_t offset, size_t count, Bytes &response)
    {
        const Bytes &file = file_ == id_ ? memory : container();
        if (count > std::max<size_t>(most_read_, 15))
            return offend("more is read than the tag gives", wrong_length);
        if (offset > file.size() || count > file.size() - offset)
            return offend("bytes behind the end are read", wrong_parameters);
        const auto begin = file.begin() + static_cast<std::ptrdiff_t>(offset);
        response.assign(begin, begin + static_cast<std::ptrdiff_t>(count));
        return done;
    }
    uint16_t update(size_t offset, ByteView bytes, size_t taken)
    {
        if (file_ != id_ || taken > most_written_)
            return offend("more is written than the tag takes", wrong_length);
        if (offset > memory.size() || bytes.size() > memory.size() - offset)
            return offend("bytes behind the end are written", wrong_parameters);
        std::ranges::copy(bytes, memory.begin() + static_cast<std::ptrdiff_t>(offset));
        changed();
        return done;
    }

    unsigned version_;
    uint16_t id_, most_read_, most_written_;
    bool is_selected_ = false;
    int file_ = 0;
};

std::unique_ptr<VirtualTag> with(std::unique_ptr<VirtualTag> tag, Bytes memory)
{
    tag->memory = std::move(memory);
    return tag;
}

} // namespace

std::unique_ptr<VirtualTag> virtual_type2(Bytes memory, Habits habits)
{
    return with(std::make_unique<Type2>(habits), std::move(memory));
}

std::unique_ptr<VirtualTag> virtual_type5(Bytes memory, size_t block_size, Habits habits)
{
    habits.most_read = block_size;
    return with(std::make_unique<StorageTag>(block_size, iso15693, 0x0014, habits), std::move(memory));
}

std::unique_ptr<VirtualTag> virtual_type4(Bytes file, unsigned version, uint16_t id, uint16_t most_read,
                                          uint16_t most_written)
{
    return with(std::make_unique<Type4>(version, id, most_read, most_written), std::move(file));
}

std::unique_ptr<VirtualTag> virtual_classic(Bytes memory, bool is_big)
{
    return with(std::make_unique<Classic>(is_big), std::move(memory));
}

Bytes type2_memory(size_t area, ByteView tlvs, uint8_t access)
{
    Bytes memory{0x04,  0x01, 0x02, 0x8F, 0x03,
                 0x04,  0x05, 0x06, 0x04, 0x48,
                 0x00,  0x00, 0xE1, 0x10, static_cast<uint8_t>(area / 8),
                 access};
    memory.insert(memory.end(), tlvs.begin(), tlvs.end());
    memory.resize(16 + area + (area > 48 ? 20 : 0)); // lock bytes and settings
    return memory;
}

Bytes type5_memory(size_t size, ByteView tlvs)
{
    const bool is_long = size / 8 > 0xFF;
    Bytes memory{0xE1, 0x40, static_cast<uint8_t>(is_long ? 0 : size / 8 - 1), 0x00};
    if (is_long)
        memory.insert(memory.end(),
                      {0, 0, static_cast<uint8_t>((size / 8 - 1) >> 8), static_cast<uint8_t>(size / 8 - 1)});
    memory.insert(memory.end(), tlvs.begin(), tlvs.end());
    memory.resize(size);
    return memory;
}

} // namespace test
