#include "alternative_carrier.h"

#include "../c_interface.h"

#include <fmt/format.h>

namespace nfc_ndef::values {

std::optional<AlternativeCarrier> Kind<AlternativeCarrier>::read(const nfc_ndef_record_view &record, const Nesting &,
                                                                 nfc_ndef_payload_report &report)
{
    nfc_ndef_alternative_carrier read;
    if (!nfc_ndef_alternative_carrier_read(record.payload, &read, &report))
        return std::nullopt;
    AlternativeCarrier carrier{read.power_state, string_of(read.reference), {}};
    nfc_ndef_bytes auxiliary;
    while (nfc_ndef_alternative_carrier_next(&read, &auxiliary))
        carrier.aux_data_refs.push_back(string_of(auxiliary));
    return carrier;
}

nfc_ndef::Record Kind<AlternativeCarrier>::make(const AlternativeCarrier &carrier)
{
    if (!fit_in_a_byte(carrier.carrier_data_ref.size(), carrier.aux_data_refs.size()))
        return nullptr;
    Bytes lengths;
    std::vector<const uint8_t *> references;
    for (const std::string &reference : carrier.aux_data_refs) {
        if (!fit_in_a_byte(reference.size()))
            return nullptr;
        lengths.push_back(static_cast<uint8_t>(reference.size()));
        references.push_back(pointer_to(reference));
    }
    return nfc_ndef::Record(rtdlib_alternative_carrier_record_create(
        carrier.cps, static_cast<uint8_t>(carrier.carrier_data_ref.size()), pointer_to(carrier.carrier_data_ref),
        static_cast<uint8_t>(lengths.size()), pointer_to(lengths), references.data()));
}

void Kind<AlternativeCarrier>::show(const AlternativeCarrier &carrier, View &view)
{
    view.field("power state", fmt::format("{} ({})", Names(power_states).title_of(carrier.cps), carrier.cps));
    view.reference("carrier data", view_of(carrier.carrier_data_ref));
    for (const std::string &auxiliary : carrier.aux_data_refs)
        view.reference("auxiliary data", view_of(auxiliary));
}

bool Kind<AlternativeCarrier>::is_reference(std::string_view text)
{
    constexpr std::string_view allowed = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789:-._~";
    return text.find_first_not_of(allowed) == std::string_view::npos && !text.starts_with('~');
}

} // namespace nfc_ndef::values
