// Every form, for the tables in all.cpp.
#pragma once

#include "forms/form.h"

namespace tool::forms {

Written read_hex(std::string_view text);
Written read_base64(std::string_view text);
Written read_xxd(std::string_view text);
Written read_hexdump(std::string_view text);
Written read_c_array(std::string_view text);
Written read_flipper(std::string_view text);
Written read_proxmark(std::string_view text);

Found find_type1(const Memory &memory, bool asked);
Found find_type2(const Memory &memory, bool asked);
Found find_type3(const Memory &memory, bool asked);
Found find_type4(const Memory &memory, bool asked);
Found find_type5(const Memory &memory, bool asked);
Found find_classic(const Memory &memory, bool asked);
Found find_tlvs(const Memory &memory, bool asked);

// The memory of a MIFARE Classic card without its first sector.
Found find_from_sector_1(const Memory &memory, bool asked);

} // namespace tool::forms
