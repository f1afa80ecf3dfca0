// A type of record that is added by half: with WITHOUT_<member> defined its trait lacks that member.
#include <nfc_ndef/kind.h>

using namespace nfc_ndef::values;

struct Half {
    uint8_t number = 0;
};

#ifdef WITHOUT_nested_at
struct Base {};
#else
using Base = Leaf;
#endif

#ifndef WITHOUT_Kind
template <> struct nfc_ndef::values::Kind<Half> : Base {
#ifndef WITHOUT_type
    static constexpr Type type = well_known("half");
#endif
#ifndef WITHOUT_json
    static constexpr std::string_view json = "half";
#endif
#ifndef WITHOUT_title
    static constexpr std::string_view title = "Half";
#endif
#ifndef WITHOUT_read
    static std::optional<Half> read(const nfc_ndef_record_view &record, const Nesting &nesting,
                                    nfc_ndef_payload_report &report);
#endif
#ifndef WITHOUT_make
    static nfc_ndef::Record make(const Half &half);
#endif
#ifndef WITHOUT_show
    static void show(const Half &half, View &view);
#endif
#ifndef WITHOUT_map
    template <class Fields> static void map(Fields &fields, Value<Fields, Half> &half)
    {
        fields.number("number", half.number);
    }
#endif
};
#endif

template struct nfc_ndef::values::Kinds<Half>;
