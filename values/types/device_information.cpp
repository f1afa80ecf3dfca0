#include "device_information.h"

#include "../c_interface.h"

#include <fmt/format.h>

namespace nfc_ndef::values {

std::optional<DeviceInformation> Kind<DeviceInformation>::read(const nfc_ndef_record_view &record, const Nesting &,
                                                               nfc_ndef_payload_report &report)
{
    nfc_ndef_device_information read;
    if (!nfc_ndef_device_information_read(record.payload, &read, &report))
        return std::nullopt;
    DeviceInformation information{.vendor_name = string_of(read.vendor_name),
                                  .model_name = string_of(read.model_name),
                                  .unique_name = optional_string_of(read.unique_name),
                                  .uuid = optional_array_of<16>(read.uuid),
                                  .version_string = optional_string_of(read.version_string),
                                  .other_elements = {}};
    for (nfc_ndef_element element; nfc_ndef_device_information_next(&read, &element);)
        information.other_elements.push_back({{static_cast<uint8_t>(element.id)}, bytes_of(element.data)});
    return information;
}

nfc_ndef::Record Kind<DeviceInformation>::make(const DeviceInformation &information)
{
    Bytes elements;
    for (const Element<1> &element : information.other_elements)
        if (!append(elements, nfc_ndef_device_information_element_write,
                    nfc_ndef_element{bytes_view(element.data), element.id[0]}))
            return nullptr;
    const nfc_ndef_device_information lent{.vendor_name = bytes_view(information.vendor_name),
                                           .model_name = bytes_view(information.model_name),
                                           .unique_name = optional_bytes_view(information.unique_name),
                                           .uuid = optional_bytes_view(information.uuid),
                                           .version_string = optional_bytes_view(information.version_string),
                                           .elements = bytes_view(elements)};
    return nfc_ndef::Record(nfc_ndef_device_information_record_create(&lent, {}));
}

void Kind<DeviceInformation>::show(const DeviceInformation &information, View &view)
{
    view.text("vendor", view_of(information.vendor_name));
    view.text("model", view_of(information.model_name));
    if (information.unique_name)
        view.text("name", view_of(*information.unique_name));
    if (information.uuid)
        view.field("UUID", uuid(16, Spelling::Order::as_stored).text_of(*information.uuid));
    if (information.version_string)
        view.text("version", view_of(*information.version_string));
    for (const Element<1> &element : information.other_elements)
        view.bytes(fmt::format("element 0x{:02X}", element.id[0]), element.data);
}

} // namespace nfc_ndef::values
