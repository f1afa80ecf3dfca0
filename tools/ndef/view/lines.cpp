#include "view/lines.h"

#include "io/failure.h"
#include "io/input.h"
#include "io/line_reader.h"
#include "io/message.h"
#include "text/encoded_text.h"

#include <nfc_ndef/json.h>
#include <nfc_ndef/printable.h>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <unistd.h>

namespace tool {
namespace {

namespace values = nfc_ndef::values;

constexpr size_t longest = 32 << 20;

bool is_blank(std::string_view line) { return line.find_first_not_of(" \t\r") == std::string_view::npos; }

LineReader reader_of(const LineOptions &options) { return {options.path, options.unlimited ? SIZE_MAX : longest}; }

// Lines are written together, unless somebody looks at them as they come.
class Lines {
public:
    explicit Lines(bool at_once) : at_once_(at_once || isatty(STDOUT_FILENO) == 1) {}

    void write(std::string_view line)
    {
        constexpr size_t enough = 1 << 16;
        text_.append(line).append("\n");
        if (at_once_ || text_.size() > enough)
            flush();
    }
    void flush()
    {
        if (!text_.empty())
            write_output(text_);
        text_.clear();
    }

private:
    bool at_once_;
    std::string text_;
};

std::string refused_line(size_t number, const nlohmann::ordered_json &why)
{
    return nlohmann::ordered_json{{"line", number}, {"refused", why}}.dump();
}

std::string json_line(size_t number, std::string_view line)
{
    const std::optional<values::Bytes> hex = decode_hex(line);
    std::optional<values::Bytes> bytes = hex ? hex : decode_base64(line);
    if (const std::optional<values::Bytes> base64 = hex ? decode_base64(line) : std::nullopt;
        base64 && !means_hex(*hex, *base64))
        bytes = base64;
    if (!bytes)
        return refused_line(number, {{"reason", "text that is not hex or base64"}});
    nfc_ndef_msg_view message;
    nfc_ndef_msg_report report;
    if (nfc_ndef_msg_view_open({bytes->data(), bytes->size()}, &message, &report) != 1)
        return refused_line(number, {{"reason", nfc_ndef_msg_check_text(report.reason)},
                                     {"record", report.record + 1},
                                     {"offset", report.offset}});
    return fmt::format("{{\"line\":{},{}", number, to_json_line(values::decode(message)).substr(1));
}

} // namespace

void write_json_lines(const LineOptions &options)
{
    LineReader in = reader_of(options);
    Lines out(options.at_once);
    bool all_fine = true;
    while (in.next()) {
        if (is_blank(in.line()) && !in.is_too_long())
            continue;
        const std::string line = in.is_too_long() ? refused_line(in.number(), {{"reason", "over 32 MiB in a line"}})
                                                  : json_line(in.number(), in.line());
        all_fine = all_fine && !line.starts_with(fmt::format("{{\"line\":{},\"refused\"", in.number()));
        out.write(line);
    }
    out.flush();
    if (!all_fine)
        throw Failure(exit_refused, "");
}

void write_message_lines(const LineOptions &options, OutputFormat format)
{
    LineReader in = reader_of(options);
    Lines out(options.at_once);
    bool all_fine = true;
    while (in.next()) {
        if (is_blank(in.line()) && !in.is_too_long())
            continue;
        try {
            if (in.is_too_long())
                throw values::JsonError("", "over 32 MiB in a line");
            const values::Bytes bytes = encode(values::from_json_line(in.line())).value();
            out.write(format == OutputFormat::base64 ? base64_of(bytes) : values::hex_of(bytes, ""));
        } catch (const values::JsonError &error) {
            out.flush();
            all_fine = false;
            complain(fmt::format("{}, line {}: {}{}{}", name_of_input(options.path), in.number(),
                                 values::shortened(error.path), error.path.empty() ? "" : ": ",
                                 values::printable_utf8(error.what())));
        }
    }
    out.flush();
    if (!all_fine)
        throw Failure(exit_refused, "");
}

} // namespace tool
