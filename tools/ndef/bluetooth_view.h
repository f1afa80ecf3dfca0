// The Bluetooth values of configuration records.
#pragma once

#include "tree.h"

#include <cstdint>
#include <span>
#include <string>

namespace tool {

// "01:02:03:04:05:06" of an address that is stored last byte first, as on the air.
std::string address_of(ByteView little_endian);

// "0x240404, Audio/Video; services: Rendering, Audio".
std::string class_of_device_name(uint32_t class_of_device);

// Shows the structures of extended inquiry response data, also used as advertising data, by name (Bluetooth Core,
// Supplement, Part A).
void view_structures(Tree &tree, ByteView structures);

} // namespace tool
