// Names that people know numbers by.
#pragma once

#include "model.h"

#include <cstdint>
#include <string>

namespace tool {

std::string format_name(uint32_t type_name_format);

// What a record is: "Text", "Bluetooth OOB", "external type", ...
std::string kind_name(const model::Record &record);

std::string action_name(uint8_t smart_poster_action);
std::string power_state_name(uint8_t carrier_power_state);
std::string select_error_name(uint8_t reason);

} // namespace tool
