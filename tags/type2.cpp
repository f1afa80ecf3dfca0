// NFC Forum Type 2 Tag 1.1: pages of four bytes. Lock bytes in page 2, the capability container in page 3, then the
// data area.
#include "kinds.h"
#include "tlv_tag.h"

namespace nfc_ndef::tags {
namespace {

constexpr size_t page_size = 4, pages_at_a_time = 4, lock_page = 2, container_page = 3, first_data_page = 4,
                 data_at = 16;
constexpr uint8_t magic = 0xE1, version = 0x10, read_only = 0x0F, empty_message[] = {0x03, 0x00, 0xFE, 0x00};

// Static lock bits lock the first 16 pages; dynamic ones what lies behind.
constexpr size_t statically_locked = 64, locked_by_a_bit = 8, first_lockable_page = 3, pages_with_bits = 16;

class Type2 : public TlvTag {
public:
    explicit Type2(Card &card) : TlvTag(card, Storage(card, "page", page_size, pages_at_a_time * page_size)) {}

    std::string_view type() const override { return "Type 2 tag"; }
    void format() override;
    std::string lock() override;

private:
    std::optional<Container> container() override
    {
        const Bytes &bytes = storage().block(container_page);
        if (bytes[0] != magic || bytes[1] >> 4 != version >> 4 || bytes[2] == 0)
            return std::nullopt;
        const unsigned access = bytes[3];
        return Container{.area = {data_at, data_at + size_t{bytes[2]} * 8},
                         .readable = access >> 4 == 0,
                         .writable = (access & 0x0F) == 0,
                         .why = (access & 0x0F) == read_only ? "the tag is read-only"
                                                             : "the tag cannot be written without a key"};
    }
    bool has_control_tlvs() const override { return true; }
    void check_lock(size_t page) override
    {
        const Bytes &locks = storage().block(lock_page);
        if (page >= first_lockable_page && page < pages_with_bits && (locks[2 + page / 8] >> page % 8 & 1) != 0)
            throw Refused("page " + std::to_string(page) + " is locked, so that the tag is read-only");
    }

    size_t size_of_blank_area();
    void set_bits(const LockBits &bits);
};

// The data area of a blank tag, from how much memory there is. Behind it are pages of lock bits and settings: how many,
// a tag does not say, so they are left out of any whose memory is of no common size.
size_t Type2::size_of_blank_area()
{
    static constexpr struct {
        size_t pages, size;
    } common[] = {{16, 48}, {20, 48}, {41, 128}, {44, 144}, {45, 144}, {48, 144}, {135, 496}, {231, 872}};
    constexpr size_t most_settings = 5, most = size_t{255} * 8;
    const size_t pages = storage().all().size() / page_size;
    for (const auto &known : common)
        if (known.pages == pages)
            return known.size;
    if (pages <= first_data_page + most_settings)
        throw Refused("the tag has no room for a data area");
    return std::min(most, (pages - first_data_page - most_settings) * page_size / 8 * 8);
}

void Type2::format()
{
    if (is_formatted())
        return;
    if (storage().block(container_page) != Bytes(page_size))
        throw Refused("page 3 is not blank: its bits cannot be taken back, so the tag cannot be formatted");
    const size_t size = size_of_blank_area();
    check_lock(container_page);
    check_lock(first_data_page);
    storage().update(first_data_page, empty_message);
    const uint8_t bytes[] = {magic, version, static_cast<uint8_t>(size / 8), 0x00};
    storage().update(container_page, bytes);
    storage().forget();
    if (!read().empty() || !is_writable())
        throw Refused("the tag was formatted, but holds something else");
}

// First the container, so that nobody begins to write a tag that is locked in part.
std::string Type2::lock()
{
    const size_t area_size = formatted().area.end - data_at;
    std::optional<LockBits> dynamic = lock_control();
    if (!dynamic && area_size + data_at > statically_locked)
        dynamic = LockBits{data_at + area_size,
                           (area_size + data_at - statically_locked + locked_by_a_bit - 1) / locked_by_a_bit};
    if (dynamic)
        storage().block(storage().block_of(dynamic->at)); // which tells that there are any
    Bytes access = storage().block(container_page);
    if ((access[3] & 0x0F) != read_only) {
        access[3] |= read_only;
        storage().update(container_page, access);
    }
    if (dynamic)
        set_bits(*dynamic);
    set_bits({lock_page * page_size + 2, 16});
    storage().forget();
    if (is_writable())
        throw Refused("the tag can still be written");
    return "";
}

void Type2::set_bits(const LockBits &bits)
{
    for (size_t at = bits.at; at < bits.at + (bits.count + 7) / 8;) {
        const size_t page = storage().block_of(at);
        Bytes bytes = storage().block(page);
        const Bytes before = bytes;
        for (; storage().block_of(at) == page && at < bits.at + (bits.count + 7) / 8; ++at) {
            const size_t left = bits.count - (at - bits.at) * 8;
            bytes[at % page_size] |= static_cast<uint8_t>(left >= 8 ? 0xFF : (1U << left) - 1);
        }
        if (bytes != before)
            storage().update(page, bytes);
    }
}

} // namespace

std::unique_ptr<Tag> make_type2(Card &card) { return std::make_unique<Type2>(card); }

} // namespace nfc_ndef::tags
