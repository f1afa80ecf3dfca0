#include "commands/on_reader.h"

#include "io/failure.h"
#include "io/output.h"

#include <nfc_ndef/bytes.h>
#include <nfc_ndef/printable.h>

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <thread>

#include <unistd.h>

namespace tool {

namespace tags = nfc_ndef::tags;
namespace values = nfc_ndef::values;

namespace {

std::chrono::milliseconds time_to_wait(const Arguments &given)
{
    constexpr double longest = 1e6;
    const std::string text = given.value_or(wait_seconds, "10");
    double seconds = 0;
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), seconds, std::chars_format::fixed);
    if (error != std::errc() || end != text.data() + text.size() || !(seconds >= 0 && seconds <= longest))
        throw Failure(exit_unusable, fmt::format("--wait {}: not a number of seconds", values::printable_utf8(text)));
    return std::chrono::milliseconds(static_cast<int64_t>(seconds * 1000));
}

} // namespace

void with_failures(const std::function<void()> &call)
{
    try {
        call();
    } catch (const tags::Refused &refused) {
        throw Failure(exit_refused, refused.what());
    } catch (const tags::Unavailable &unavailable) {
        throw Failure(exit_unusable, unavailable.what());
    }
}

void with_tag(const Arguments &given, const std::function<void(tags::Tag &)> &use)
{
    const std::chrono::milliseconds time = time_to_wait(given);
    const std::string name = given.value_or(reader_name, "");
    with_failures([&] {
        const tags::Service service;
        if (time.count() > 0 && isatty(STDERR_FILENO) == 1) {
            const std::vector<tags::Reader> readers = service.readers();
            if (std::ranges::none_of(readers, &tags::Reader::has_card))
                complain("put a tag on the reader");
        }
        const auto end = std::chrono::steady_clock::now() + time;
        for (bool gone = true; gone;) {
            const auto left = end - std::chrono::steady_clock::now();
            const std::unique_ptr<tags::Card> card =
                service.wait_for_card(name, std::max(std::chrono::milliseconds::zero(),
                                                     std::chrono::duration_cast<std::chrono::milliseconds>(left)));
            std::unique_ptr<tags::Tag> tag;
            try {
                tag = tags::open_tag(*card);
                gone = false;
            } catch (const tags::Gone &) { // the service learns of that after a while
                if (left.count() < 0)
                    throw;
                std::this_thread::sleep_for(std::chrono::milliseconds(100));
            }
            if (tag)
                use(*tag);
        }
    });
}

std::string described(tags::Tag &tag, size_t used)
{
    const std::string number =
        tag.serial_number().empty() ? "no serial number" : "serial number " + values::hex_of(tag.serial_number(), "");
    const size_t size = tag.size();
    return fmt::format("{}, {}, {}, {} free, {}", tag.type(), number, values::count_of(size, "byte"),
                       size - std::min(size, used), tag.is_writable() ? "writable" : "read-only");
}

} // namespace tool
