#include "forms/all.h"

#include <nfc_ndef.h>

namespace tool::forms {

std::span<const Notation> notations()
{
    static constexpr Notation all[] = {
        {"hex", "hex text", true, read_hex},
        {"base64", "base64 text", true, read_base64},
        {"xxd", "xxd text", false, read_xxd},
        {"hexdump", "hexdump -C text", false, read_hexdump},
        {"c", "C array", false, read_c_array},
        {"flipper", "Flipper file", false, read_flipper},
        {"proxmark", "Proxmark JSON", false, read_proxmark},
    };
    return all;
}

std::span<const Layout> layouts()
{
    static constexpr Layout all[] = {
        {"type1", "memory of a Type 1 tag", find_type1},
        {"type2", "memory of a Type 2 tag", find_type2},
        {"type3", "memory of a Type 3 tag", find_type3},
        {"type4", "file of a Type 4 tag", find_type4},
        {"type5", "memory of a Type 5 tag", find_type5},
        {"classic", "memory of a MIFARE Classic card", find_classic},
        {"tlv", "data area of a Type 1, 2 or 5 tag", find_tlvs},
    };
    return all;
}

bool is_message(values::ByteView bytes)
{
    return !bytes.empty() && nfc_ndef_msg_check(bytes.data(), 0, static_cast<uint32_t>(bytes.size()), nullptr) == 1;
}

} // namespace tool::forms
