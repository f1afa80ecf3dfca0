// The JSON members of each record type, said once for both directions: Fields is JsonWriter or JsonReader.
#pragma once

#include "model.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace tool {

// Indexed by TNF.
constexpr std::array<std::string_view, 8> format_names{"empty",    "well-known", "media",     "absolute-uri",
                                                       "external", "unknown",    "unchanged", "reserved"};

// Indexed by the alternative of model::Content.
constexpr std::array<std::string_view, std::variant_size_v<model::Content>> kinds{
    "generic",
    "text",
    "uri",
    "smart_poster",
    "generic_control",
    "handover_request",
    "handover_select",
    "handover_carrier",
    "alternative_carrier",
    "collision_resolution",
    "handover_select_error",
    "bt_2_1_configuration_data",
    "bt_configuration_data",
    "sharing_enquiry",
};

enum class Presence { required, optional };

// A writer reads the value, a reader fills it in.
template <class Fields, class T> using Value = typename Fields::template Value<T>;

template <class Fields> void map(Fields &fields, Value<Fields, model::Text> &text)
{
    fields.flag("utf16", text.utf16);
    fields.text("language_code", text.language_code);
    fields.require(!text.language_code.empty() && text.language_code.size() <= 63, "language_code",
                   "must be 1 to 63 bytes");
    fields.encoded_text("text", text);
    fields.require(!text.text.empty(), "text", "must not be empty");
}

template <class Fields> void map(Fields &fields, Value<Fields, model::Uri> &uri)
{
    fields.expanded_uri("uri", uri);
    const bool printable = std::ranges::all_of(uri.uri_field, [](char c) { return static_cast<uint8_t>(c) >= 0x20; });
    fields.require(printable, "uri", "must not hold control characters");
}

template <class Fields> void map(Fields &fields, Value<Fields, model::SmartPoster> &poster)
{
    fields.record("uri_record", poster.uri_record, "U", Presence::required);
    fields.records("titles", poster.titles, "T");
    fields.number("action", poster.action);
    fields.records("icons", poster.icons);
    fields.record("type_record", poster.type_record, "t");
    fields.record("size_record", poster.size_record, "s");
    fields.require(!poster.size_record || poster.size_record->payload.size() == 4, "size_record",
                   "must have a payload of 4 bytes");
    fields.records("other_records", poster.other_records);
}

template <class Fields> void map(Fields &fields, Value<Fields, model::GenericControl> &control)
{
    fields.number("config", control.config);
    fields.record("target_record", control.target_record, "t", Presence::required);
    fields.action(control);
    fields.record("data_record", control.data_record, "d");
    fields.records("gc_records", control.gc_records, "Gc");
}

template <class Fields> void map(Fields &fields, Value<Fields, model::HandoverRequest> &request)
{
    fields.version("version", request.version);
    fields.require(request.version == 0x10 || request.version == 0x12, "version", "must be \"1.0\" or \"1.2\"");
    fields.record("cr_record", request.cr_record, "cr");
    fields.require((request.version == 0x12) == (request.cr_record != nullptr), "cr_record",
                   request.cr_record ? "is not for version 1.0" : "is needed with version 1.2");
    fields.records("ac_records", request.ac_records, "ac");
    fields.require(request.cr_record || !request.ac_records.empty(), "ac_records", "must not be empty");
}

template <class Fields> void map(Fields &fields, Value<Fields, model::HandoverSelect> &select)
{
    fields.version("version", select.version);
    fields.require(select.version == 0x10 || select.version == 0x12, "version", "must be \"1.0\" or \"1.2\"");
    fields.records("ac_records", select.ac_records, "ac");
    fields.record("err_record", select.err_record, "err");
    fields.require(select.version == 0x12 || !select.err_record, "err_record", "is not for version 1.0");
    fields.require(select.err_record || !select.ac_records.empty(), "ac_records", "must not be empty");
}

template <class Fields> void map(Fields &fields, Value<Fields, model::HandoverCarrier> &carrier)
{
    fields.choice("ctf", carrier.ctf, 0, format_names);
    fields.text_or_hex("carrier_type", carrier.carrier_type);
    fields.require(carrier.carrier_type.size() <= 255, "carrier_type", "must be at most 255 bytes");
    fields.bytes("carrier_data", carrier.carrier_data);
    fields.require(carrier.carrier_data.size() <= 255, "carrier_data", "must be at most 255 bytes");
}

template <class Fields> void map(Fields &fields, Value<Fields, model::AlternativeCarrier> &carrier)
{
    constexpr std::array<std::string_view, 4> power_states{"inactive", "active", "activating", "unknown"};
    constexpr std::string_view allowed = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789:-._~";
    fields.choice("cps", carrier.cps, 0, power_states);
    fields.text("carrier_data_ref", carrier.carrier_data_ref);
    fields.require(carrier.carrier_data_ref.find_first_not_of(allowed) == std::string::npos &&
                       !carrier.carrier_data_ref.starts_with('~'),
                   "carrier_data_ref", "must be of letters, digits and : - . _ ~, and not begin with ~");
    fields.texts("aux_data_refs", carrier.aux_data_refs);
    size_t length = 3 + carrier.carrier_data_ref.size();
    for (const std::string &reference : carrier.aux_data_refs)
        length += 1 + reference.size();
    fields.require(length <= 255, "", "must make a payload of at most 255 bytes");
}

template <class Fields> void map(Fields &fields, Value<Fields, model::CollisionResolution> &resolution)
{
    fields.number("random_number", resolution.random_number);
}

template <class Fields> void map(Fields &fields, Value<Fields, model::HandoverSelectError> &error)
{
    fields.number("error_reason", error.error_reason);
    fields.number("error_data", error.error_data);
}

template <class Fields> void map(Fields &fields, Value<Fields, model::ManufacturerData> &entry)
{
    fields.bytes("manufacturer_id", entry.manufacturer_id);
    fields.bytes("data", entry.data);
    fields.require(entry.data.size() <= 252, "data", "must be at most 252 bytes");
}

template <class Fields> void map(Fields &fields, Value<Fields, model::BluetoothOob> &bluetooth)
{
    constexpr std::array<std::string_view, 2> name_types{"shortened", "complete"};
    constexpr std::array<std::string_view, 2> list_types{"incomplete", "complete"};
    const auto uuid_list = [&](std::string_view name, auto &list, std::string_view type_name, auto &type,
                               uint8_t first_type, size_t uuid_length) {
        fields.hex_list(name, list, uuid_length);
        if (!list.empty())
            fields.choice(type_name, type, first_type, list_types);
        fields.require(list.size() <= 254, name, "must be at most 254 bytes");
    };
    fields.bytes("device_address", bluetooth.device_address);
    fields.bytes("class_of_device", bluetooth.class_of_device);
    fields.text_or_hex("local_name", bluetooth.local_name);
    if (!bluetooth.local_name.empty())
        fields.choice("local_name_type", bluetooth.local_name_type, 8, name_types);
    fields.require(bluetooth.local_name.size() <= 254, "local_name", "must be at most 254 bytes");
    fields.bytes("hash_c", bluetooth.hash_c);
    fields.require(bluetooth.hash_c.empty() || bluetooth.hash_c.size() == 16, "hash_c", "must be 16 bytes");
    fields.bytes("randomizer_r", bluetooth.randomizer_r);
    fields.require(bluetooth.randomizer_r.empty() || bluetooth.randomizer_r.size() == 16, "randomizer_r",
                   "must be 16 bytes");
    fields.require(bluetooth.randomizer_r.empty() || !bluetooth.hash_c.empty(), "randomizer_r", "needs a hash_c");
    uuid_list("uuid16_list", bluetooth.uuid16_list, "uuid16_list_type", bluetooth.uuid16_list_type, 2, 2);
    uuid_list("uuid32_list", bluetooth.uuid32_list, "uuid32_list_type", bluetooth.uuid32_list_type, 4, 4);
    uuid_list("uuid128_list", bluetooth.uuid128_list, "uuid128_list_type", bluetooth.uuid128_list_type, 6, 16);
    fields.objects("manufacturer_data", bluetooth.manufacturer_data);
}

template <class Fields> void map(Fields &fields, Value<Fields, model::BluetoothLegacy> &bluetooth)
{
    fields.bytes("device_address", bluetooth.device_address);
    fields.bytes("class_of_device", bluetooth.class_of_device);
    fields.number("pairing_type", bluetooth.pairing_type);
    fields.bytes("pairing_data", bluetooth.pairing_data);
    const uint8_t type = bluetooth.pairing_type;
    const bool counted = type > 0x20 && type <= 0x2F;
    fields.require(type <= 0x02 || type == 0x10 || type == 0x20 || counted, "pairing_type", "is not known");
    const unsigned length = type == 0x10 ? 0 : counted ? type & 0x0Fu : 16;
    fields.require(bluetooth.pairing_data.size() == length, "pairing_data",
                   fmt::format("must be {} bytes for this pairing_type", length));
    fields.text_or_hex("local_name", bluetooth.local_name);
    fields.require(bluetooth.local_name.size() <= 248, "local_name", "must be at most 248 bytes");
}

template <class Fields> void map(Fields &fields, Value<Fields, model::SharingEnquiry> &enquiry)
{
    fields.version("version", enquiry.version);
    fields.require(enquiry.version >> 4 == 1 || (enquiry.version & 0x0F) == 0, "version", "must be \"1.x\" or \"x.0\"");
    fields.number("enquiry_type", enquiry.enquiry_type);
    fields.bytes("enquiry_data", enquiry.enquiry_data);
    fields.require(enquiry.enquiry_data.size() <= 255, "enquiry_data", "must be at most 255 bytes");
}

} // namespace tool
