// Extended inquiry response data, also used as advertising data (Bluetooth Core, Supplement, Part A).
#pragma once

#include "../view.h"

#include <optional>

namespace nfc_ndef::values {

struct Structure {
    uint8_t type;
    ByteView data;
};

// Takes one structure after another; zero bytes between them are padding.
class Structures {
public:
    explicit Structures(ByteView bytes) : left_(bytes) {}
    std::optional<Structure> next(); // none at the end, and at a structure that runs past it
    size_t left() const { return left_.size(); }

private:
    ByteView left_;
};

// Shows each structure by name.
void show_structures(ByteView structures, View &view);

// "240404, Audio/Video; services: Rendering, Audio".
std::string class_of_device_text(uint32_t class_of_device);

} // namespace nfc_ndef::values
