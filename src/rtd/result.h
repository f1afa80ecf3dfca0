// What an extractor returns, in its type. Which of them it uses, and for what, is each one's own.
#pragma once

#include "nfc_ndef.h"

namespace ndef {

constexpr int8_t success = NFC_NDEF_OK;
constexpr int8_t failure = NFC_NDEF_FAILURE;
constexpr int8_t bad_payload = NFC_NDEF_BAD_PAYLOAD;
constexpr int8_t decoding_failed = NFC_NDEF_DECODING_FAILED;

} // namespace ndef
