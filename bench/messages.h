// The messages that are measured, made byte by byte so that no part of the library has a hand in them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace bench {

using Bytes = std::vector<uint8_t>;

Bytes text_message();                      // one Text record
Bytes smart_poster_message();              // a URI, two titles, an action and an icon of 2 KiB
Bytes short_records_message(size_t count); // Text, URI and text/plain by turns
Bytes one_payload_message(size_t length);  // one record of application/octet-stream
Bytes chunked_message(size_t chunk_count); // the same, in chunks of 200 bytes
Bytes handover_message();                  // a Handover Request, Bluetooth out-of-band data, a Wi-Fi configuration
Bytes mixed_poster_message(size_t count);  // a Smart Poster of one URI and other records of every kind by turns

// A message where the decoder reads it. Its first payload starts a cache line: blocks of the heap start at multiples of
// 16, and some processors copy a large block many times slower when its destination lies 1 to 15 bytes behind its
// source modulo 4096.
class Input {
public:
    explicit Input(const Bytes &message);
    Input(const Input &) = delete;
    Input &operator=(const Input &) = delete;

    const uint8_t *data() const { return data_; }
    uint32_t length() const { return length_; }

private:
    Bytes storage_;
    uint8_t *data_;
    uint32_t length_;
};

} // namespace bench
