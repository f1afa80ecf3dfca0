// NFC Forum Type 2 Tag 1.1: 10 bytes of serial number and lock bits, at byte 12 the capability container, then the
// TLVs.
#include "forms/all.h"
#include "forms/tlv_area.h"

namespace tool::forms {
namespace {

constexpr size_t container_at = 12, data_at = 16, page_size = 4, proxmark_header = 56;

bool has_container(values::ByteView memory)
{
    return memory.size() > data_at && memory[container_at] == 0xE1 && memory[container_at + 1] >> 4 == 1 &&
           memory[container_at + 2] != 0 && memory[container_at + 3] >> 4 == 0;
}

// A Proxmark puts version, signature and counters in front of the memory; one byte of them is the number of the last
// page, or how many there are.
bool has_proxmark_header(values::ByteView bytes)
{
    constexpr size_t pages_at = 11;
    if (bytes.size() <= proxmark_header || !has_container(bytes.subspan(proxmark_header)))
        return false;
    const size_t pages = (bytes.size() - proxmark_header) / page_size;
    return pages == bytes[pages_at] || pages == bytes[pages_at] + size_t{1};
}

} // namespace

Found find_type2(const Memory &memory, bool asked)
{
    const values::ByteView all = memory.bytes;
    if (has_container(all))
        return found_in_type2(all, 0, asked);
    if (has_proxmark_header(all))
        return found_in_type2(all, proxmark_header, asked);
    return asked ? find_tlvs(memory, true) : Found{};
}

} // namespace tool::forms
