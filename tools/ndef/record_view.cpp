#include "record_view.h"

#include "bluetooth_view.h"
#include "byte_view.h"
#include "message.h"
#include "names.h"
#include "printable.h"
#include "uri_prefix.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

namespace tool {
namespace {

using model::Record;
using model::Records;

// Text that may be long, cut at the start of a character.
std::string text_field(const Tree &tree, ByteView text, bool utf16)
{
    constexpr size_t limit = 4096;
    size_t end = tree.shown(text.size(), limit);
    const auto continues_character = [&](size_t at) {
        const uint8_t byte = text[at];
        return utf16 ? at % 2 != 0 || (at + 1 < text.size() && (byte & 0xFC) == 0xDC) : (byte & 0xC0) == 0x80;
    };
    for (int back = 0; back < 3 && end < text.size() && continues_character(end); ++back)
        --end;
    const ByteView part = text.first(end);
    const std::string shown = in_quotes(utf16 ? printable_utf16(part) : printable_utf8(part));
    return end == text.size() ? shown : fmt::format("{} {}", shown, Tree::note_on_rest(text.size(), end));
}

ByteView bytes_of(std::string_view text) { return {reinterpret_cast<const uint8_t *>(text.data()), text.size()}; }

std::string short_hex(const Tree &tree, ByteView bytes)
{
    const size_t end = tree.shown(bytes.size(), 64);
    const std::string rest = Tree::note_on_rest(bytes.size(), end);
    return fmt::format("{}{}{}", hex_of(bytes.first(end)), rest.empty() ? "" : " ", rest);
}

std::string version_of(uint8_t version) { return fmt::format("{}.{}", version >> 4, version & 0x0F); }

std::string text_of(const Tree &tree, const model::Text &text) { return text_field(tree, text.text, text.utf16); }

std::string encoding_of(const model::Text &text) { return text.utf16 ? "UTF-16" : "UTF-8"; }

std::string language_of(const model::Text &text)
{
    return text.language_code.empty() ? "no language" : printable_utf8(text.language_code);
}

std::string uri_of(const Tree &tree, const model::Uri &uri)
{
    const std::string expanded = expand_uri(uri);
    const std::string shown = text_field(tree, bytes_of(expanded), false);
    return uri.identifier_code < 0x24 ? shown : fmt::format("{} (reserved prefix code {})", shown, uri.identifier_code);
}

class ContentView {
public:
    ContentView(Tree &tree, const Record &record, const Records &message, RecordViewOptions options, unsigned depth)
        : tree_(tree), record_(record), message_(message), options_(options), depth_(depth)
    {
    }

    void operator()(const model::Generic &generic) const
    {
        if (generic.malformed)
            tree_.warning(fmt::format("malformed: {}", fault()));
        if (generic.unopened && model::nested_prefix_length(record_))
            tree_.warning(fmt::format("nested deeper than {} records: not followed", max_depth));
        const std::string_view type(reinterpret_cast<const char *>(record_.type.data()), record_.type.size());
        if (record_.format == NFC_NDEF_TNF_MIME && type == "application/vnd.bluetooth.le.oob")
            view_structures(tree_, record_.payload);
        else if (options_.dump_payloads)
            tree_.dump(record_.payload);
    }

    void operator()(const model::Text &text) const
    {
        tree_.field("language", language_of(text));
        tree_.field("encoding", encoding_of(text));
        tree_.field("text", text_of(tree_, text));
    }

    void operator()(const model::Uri &uri) const { tree_.field("uri", uri_of(tree_, uri)); }

    void operator()(const model::SmartPoster &poster) const
    {
        uri_part(*poster.uri_record);
        for (const Record &title : poster.titles)
            title_part(title);
        if (poster.action != 255)
            tree_.field("action", fmt::format("{} ({})", action_name(poster.action), poster.action));
        for (const Record &icon : poster.icons)
            tree_.field("icon", fmt::format("{}, {}", type_of(icon), count_of(icon.payload.size(), "byte")));
        if (poster.size_record)
            size_part(*poster.size_record);
        if (poster.type_record)
            tree_.field("type", text_field(tree_, poster.type_record->payload, false));
        parts("other record", poster.other_records, poster.other_records);
    }

    void operator()(const model::GenericControl &control) const
    {
        tree_.field("configuration", fmt::format("0x{:02X}", control.config));
        part("target", *control.target_record);
        if (control.action_record)
            part("action", *control.action_record);
        else if (control.action_flag)
            tree_.field("action", *control.action_flag == 0 ? "none" : fmt::format("code {}", control.action_code));
        if (control.data_record)
            part("data", *control.data_record);
        parts("nested control", control.gc_records, control.gc_records);
    }

    void operator()(const model::HandoverRequest &request) const
    {
        tree_.field("version", version_of(request.version));
        if (request.cr_record)
            part("collision resolution", *request.cr_record);
        parts("carrier", request.ac_records, message_);
    }

    void operator()(const model::HandoverSelect &select) const
    {
        tree_.field("version", version_of(select.version));
        if (select.ac_records.empty())
            tree_.field("carriers", "none");
        parts("carrier", select.ac_records, message_);
        if (select.err_record)
            part("error", *select.err_record);
    }

    void operator()(const model::HandoverCarrier &carrier) const
    {
        tree_.field("carrier type",
                    fmt::format("{} {}", format_name(carrier.ctf), in_quotes(printable_utf8(carrier.carrier_type))));
        if (!carrier.carrier_data.empty())
            tree_.field("carrier data", short_hex(tree_, carrier.carrier_data));
    }

    void operator()(const model::AlternativeCarrier &carrier) const
    {
        tree_.field("power state", fmt::format("{} ({})", power_state_name(carrier.cps), carrier.cps));
        tree_.field("carrier data", reference(carrier.carrier_data_ref));
        for (const std::string &auxiliary : carrier.aux_data_refs)
            tree_.field("auxiliary data", reference(auxiliary));
    }

    void operator()(const model::CollisionResolution &collision) const
    {
        tree_.field("random number", fmt::format("0x{:04X}", collision.random_number));
    }

    void operator()(const model::HandoverSelectError &error) const
    {
        tree_.field("reason", fmt::format("{} ({})", select_error_name(error.error_reason), error.error_reason));
        tree_.field("error data", fmt::format("0x{:02X}", error.error_data));
    }

    // Walks the payload: it also holds what the typed form has no place for.
    void operator()(const model::BluetoothOob &bluetooth) const
    {
        constexpr size_t structures = 8; // behind the length and the address
        tree_.field("device address", address_of(bluetooth.device_address));
        view_structures(tree_, ByteView(record_.payload).subspan(std::min(structures, record_.payload.size())));
    }

    void operator()(const model::BluetoothLegacy &bluetooth) const
    {
        const auto &device = bluetooth.class_of_device;
        tree_.field("device address", hex_of(bluetooth.device_address, ":"));
        tree_.field("class of device",
                    class_of_device_name(static_cast<uint32_t>(device[0] << 16 | device[1] << 8 | device[2])));
        tree_.field("pairing type", fmt::format("0x{:02X}", bluetooth.pairing_type));
        if (!bluetooth.pairing_data.empty())
            tree_.field("pairing data", hex_of(bluetooth.pairing_data));
        if (!bluetooth.local_name.empty())
            tree_.field("local name", in_quotes(printable_utf8(bluetooth.local_name)));
    }

    void operator()(const model::SharingEnquiry &enquiry) const
    {
        tree_.field("version", version_of(enquiry.version));
        tree_.field("enquiry type", fmt::format("0x{:02X}", enquiry.enquiry_type));
        if (!enquiry.enquiry_data.empty())
            tree_.field("enquiry data", short_hex(tree_, enquiry.enquiry_data));
    }

private:
    void uri_part(const Record &record) const
    {
        if (const auto *uri = std::get_if<model::Uri>(&record.content))
            tree_.field("uri", uri_of(tree_, *uri));
        else
            part("uri", record);
    }

    void title_part(const Record &record) const
    {
        if (const auto *text = std::get_if<model::Text>(&record.content))
            tree_.field("title",
                        fmt::format("{} ({}, {})", text_of(tree_, *text), language_of(*text), encoding_of(*text)));
        else
            part("title", record);
    }

    void size_part(const Record &record) const
    {
        size_t size = 0;
        for (const uint8_t byte : record.payload)
            size = size << 8 | byte;
        tree_.field("size", count_of(size, "byte"));
    }

    void part(const std::string &label, const Record &record, const Records &siblings) const
    {
        tree_.heading(fmt::format("{}: {}", label, kind_name(record)));
        const Tree::Deeper deeper(tree_);
        if (depth_ + 1 > max_depth) {
            tree_.warning(fmt::format("nested deeper than {} records: not followed", max_depth));
            return;
        }
        if (std::holds_alternative<model::Generic>(record.content))
            tree_.field("type", type_of(record));
        if (!record.id.empty())
            tree_.field("id", in_quotes(printable_utf8(record.id)));
        if (std::holds_alternative<model::Generic>(record.content))
            tree_.field("payload", count_of(record.payload.size(), "byte"));
        std::visit(ContentView(tree_, record, siblings, options_, depth_ + 1), record.content);
    }
    void part(const std::string &label, const Record &record) const { part(label, record, message_); }

    void parts(const std::string &label, const Records &records, const Records &siblings) const
    {
        for (const Record &record : records)
            part(label, record, siblings);
    }

    // A reference with the record of this message that it means.
    std::string reference(std::string_view id) const
    {
        if (id.empty())
            return "no reference";
        const auto found = std::ranges::find_if(
            message_, [&](const Record &candidate) { return std::ranges::equal(bytes_of(id), candidate.id); });
        const std::string text = in_quotes(printable_utf8(id));
        return found == message_.end()
                   ? fmt::format("{} -> no record here has this id", text)
                   : fmt::format("{} -> record {}, {}", text, found - message_.begin() + 1, kind_name(*found));
    }

    // Why a record could not be read as its type says.
    std::string fault() const
    {
        const auto prefix_length = model::nested_prefix_length(record_);
        if (prefix_length && record_.payload.size() > *prefix_length) {
            const ByteView nested = ByteView(record_.payload).subspan(*prefix_length);
            nfc_ndef_msg_report report{};
            if (nfc_ndef_msg_check(nested.data(), 0, static_cast<uint32_t>(nested.size()), &report) == 0)
                return fmt::format("the nested message's {}", reason_of(report));
        }
        return "the payload does not fit the type";
    }

    Tree &tree_;
    const Record &record_;
    const Records &message_;
    RecordViewOptions options_;
    unsigned depth_;
};

} // namespace

void view_content(Tree &tree, const Record &record, const Records &message, RecordViewOptions options)
{
    std::visit(ContentView(tree, record, message, options, 0), record.content);
}

std::string type_of(const Record &record)
{
    const std::string format = format_name(record.format);
    return record.type.empty() ? format : fmt::format("{} {}", format, in_quotes(printable_utf8(record.type)));
}

} // namespace tool
