// Extended inquiry response data, also used as advertising data (Bluetooth Core, Supplement, Part A).
#pragma once

#include "../view.h"

namespace nfc_ndef::values {

// Shows each structure by name.
void show_structures(ByteView structures, View &view);

// "240404, Audio/Video; services: Rendering, Audio".
std::string class_of_device_text(uint32_t class_of_device);

} // namespace nfc_ndef::values
