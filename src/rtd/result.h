// What an extractor returns. Which of them it uses, and for what, is each one's own.
#pragma once

#include <cstdint>

namespace ndef {

constexpr int8_t success = 1;
constexpr int8_t failure = -1;
constexpr int8_t bad_payload = 2;
constexpr int8_t decoding_failed = 0;

} // namespace ndef
