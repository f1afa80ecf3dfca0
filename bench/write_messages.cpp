// Writes the messages that are measured into the current directory.
#include "messages.h"

#include <fstream>
#include <string>

int main()
{
    const std::pair<std::string, bench::Bytes> messages[] = {
        {"text", bench::text_message()},
        {"poster", bench::smart_poster_message()},
        {"100_records", bench::short_records_message(100)},
        {"64_KiB", bench::one_payload_message(64 << 10)},
        {"50_chunks", bench::chunked_message(50)},
        {"handover", bench::handover_message()},
    };
    for (const auto &[name, bytes] : messages)
        std::ofstream(name + ".ndef", std::ios::binary)
            .write(reinterpret_cast<const char *>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}
