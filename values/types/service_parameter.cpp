#include "service_parameter.h"

#include "../c_interface.h"
#include "../printable.h"

#include <fmt/format.h>

#include <cmath>

namespace nfc_ndef::values {

std::optional<ServiceParameter> Kind<ServiceParameter>::read(const nfc_ndef_record_view &record, const Nesting &,
                                                             nfc_ndef_payload_report &report)
{
    nfc_ndef_service_parameter read;
    if (!nfc_ndef_service_parameter_read(record.payload, &read, &report))
        return std::nullopt;
    return ServiceParameter{.version = read.version,
                            .service_name = string_of(read.service_name),
                            .communication_mode = read.communication_mode,
                            .minimum_waiting_time = read.minimum_waiting_time,
                            .maximum_waiting_time_extensions = read.maximum_waiting_time_extensions,
                            .maximum_message_size = read.maximum_message_size};
}

nfc_ndef::Record Kind<ServiceParameter>::make(const ServiceParameter &parameter)
{
    const nfc_ndef_service_parameter lent{.service_name = bytes_view(parameter.service_name),
                                          .maximum_message_size = parameter.maximum_message_size,
                                          .version = parameter.version,
                                          .communication_mode = parameter.communication_mode,
                                          .minimum_waiting_time = parameter.minimum_waiting_time,
                                          .maximum_waiting_time_extensions = parameter.maximum_waiting_time_extensions};
    return nfc_ndef::Record(nfc_ndef_service_parameter_record_create(&lent, {}));
}

std::string Kind<ServiceParameter>::summary(const ServiceParameter &parameter)
{
    return shortened(parameter.service_name);
}

void Kind<ServiceParameter>::show(const ServiceParameter &parameter, View &view)
{
    view.text("service", view_of(parameter.service_name));
    view.field("version", version_text(parameter.version));
    view.field("communication",
               fmt::format("{} ({})", Names(communication_modes).title_of(parameter.communication_mode),
                           parameter.communication_mode));
    const unsigned n = parameter.minimum_waiting_time;
    view.field("waiting time", n > 63 ? fmt::format("reserved ({})", n)
                                      : fmt::format("at least {:.5g} ms ({})", std::exp2(n / 4.0 - 1), n));
    view.field("waiting time extensions", fmt::format("at most {}", parameter.maximum_waiting_time_extensions));
    view.field("largest message", count_of(parameter.maximum_message_size, "byte"));
}

} // namespace nfc_ndef::values
