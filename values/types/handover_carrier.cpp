#include "handover_carrier.h"

#include "../c_interface.h"
#include "../printable.h"

#include <fmt/format.h>

namespace nfc_ndef::values {

std::optional<HandoverCarrier> Kind<HandoverCarrier>::read(const nfc_ndef_record_view &record, const Nesting &,
                                                           nfc_ndef_payload_report &report)
{
    nfc_ndef_handover_carrier carrier;
    if (!nfc_ndef_handover_carrier_read(record.payload, &carrier, &report))
        return std::nullopt;
    return HandoverCarrier{carrier.format, string_of(carrier.type), bytes_of(carrier.data)};
}

nfc_ndef::Record Kind<HandoverCarrier>::make(const HandoverCarrier &carrier)
{
    if (!fit_in_a_byte(carrier.carrier_type.size(), carrier.carrier_data.size()))
        return nullptr;
    // The builder wants a pointer to the type even when it is empty.
    return nfc_ndef::Record(rtdlib_handover_carrier_record_create(
        carrier.ctf, static_cast<uint8_t>(carrier.carrier_type.size()),
        reinterpret_cast<const uint8_t *>(carrier.carrier_type.data()),
        static_cast<uint8_t>(carrier.carrier_data.size()), pointer_to(carrier.carrier_data)));
}

void Kind<HandoverCarrier>::show(const HandoverCarrier &carrier, View &view)
{
    view.field("carrier type", fmt::format("{} {}", Names(type_name_formats).title_of(carrier.ctf),
                                           quoted_utf8(view_of(carrier.carrier_type))));
    if (!carrier.carrier_data.empty())
        view.bytes("carrier data", carrier.carrier_data);
}

} // namespace nfc_ndef::values
