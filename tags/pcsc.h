// Readers of PC/SC and what lies on them.
#pragma once

#include "card.h"
#include "error.h"

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace nfc_ndef::tags {

// A reader as the service lists it.
struct Reader {
    std::string name;
    bool has_card;
    unsigned events; // how often a card came or went, which tells a tag from the one before
};

class Service {
public:
    // Throws Unavailable when there is no service.
    Service();
    Service(const Service &) = delete;
    Service &operator=(const Service &) = delete;

    std::vector<Reader> readers() const;

    // Waits for a tag on the reader of this name, or on any when it is empty, and takes hold of it until the card is
    // deleted. A part of the name will do when it fits one reader. Throws Unavailable when no reader or no tag comes in
    // time.
    std::unique_ptr<Card> wait_for_card(const std::string &reader, std::chrono::milliseconds time) const;

    struct State;

private:
    std::shared_ptr<State> state_; // which cards share
};

} // namespace nfc_ndef::tags
