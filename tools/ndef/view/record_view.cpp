#include "view/record_view.h"

#include "io/message.h"

#include <nfc_ndef/bluetooth/structures.h>
#include <nfc_ndef/meaning/personal.h>
#include <nfc_ndef/meaning/show_fields.h>
#include <nfc_ndef/printable.h>

#include <fmt/format.h>

#include <algorithm>

namespace tool {
namespace {

using namespace nfc_ndef::values;

const std::string too_deep = fmt::format("nested deeper than {} records: not followed", max_nesting);
const std::string too_many = fmt::format("behind {} other records: not followed", max_records_in_all);

// Text that may be long, cut at the start of a character.
std::string text_field(const Tree &tree, ByteView text, View::Encoding encoding)
{
    constexpr size_t limit = 4096;
    const bool utf16 = encoding == View::Encoding::utf16;
    size_t end = tree.shown(text.size(), limit);
    const auto continues_character = [&](size_t at) {
        const uint8_t byte = text[at];
        return utf16 ? at % 2 != 0 || (at + 1 < text.size() && (byte & 0xFC) == 0xDC) : (byte & 0xC0) == 0x80;
    };
    for (int back = 0; back < 3 && end < text.size() && continues_character(end); ++back)
        --end;
    const ByteView part = text.first(end);
    const std::string shown = utf16 ? quoted_utf16(part) : quoted_utf8(part);
    return end == text.size() ? shown : fmt::format("{} {}", shown, Tree::note_on_rest(text.size(), end));
}

bool is_xml(const Record &record)
{
    const std::string_view type = text_of(record.type);
    const bool says_so = media("application/xml").matches(record.format, type) || type.ends_with("+xml");
    return says_so && record.format == NFC_NDEF_TNF_MIME && is_utf8(text_of(record.payload));
}

class RecordView final : public View {
public:
    RecordView(Tree &tree, const Record &shown, const Records &message, RecordViewOptions options, unsigned depth)
        : tree_(tree), record_(shown), message_(message), options_(options), depth_(depth)
    {
    }

    void show()
    {
        const auto show_content = [this]<class T>(const T &content) {
            if constexpr (std::is_same_v<T, Generic>)
                generic(content);
            else
                Kind<T>::show(content, *this);
        };
        std::visit(show_content, record_.content);
    }

    void field(std::string_view name, std::string_view printable) override { tree_.field(name, printable); }
    void text(std::string_view name, ByteView text, Encoding encoding, std::string_view remark) override
    {
        const std::string shown = text_field(tree_, text, encoding);
        tree_.field(name, remark.empty() ? shown : fmt::format("{} {}", shown, remark));
    }
    void bytes(std::string_view name, ByteView bytes) override
    {
        const size_t end = tree_.shown(bytes.size(), 64);
        const std::string rest = Tree::note_on_rest(bytes.size(), end);
        tree_.field(name, bytes.empty()
                              ? "none"
                              : fmt::format("{}{}{}", hex_of(bytes.first(end)), rest.empty() ? "" : " ", rest));
    }
    void warning(std::string_view printable) override { tree_.warning(printable); }

    void record(std::string_view name, const Record &record) override { nested(name, record, message_); }
    void records(std::string_view name, const Records &records) override
    {
        for (const Record &record : records)
            nested(name, record, message_);
    }
    void message(std::string_view name, const Records &records) override
    {
        for (const Record &record : records)
            nested(name, record, records);
    }

    void reference(std::string_view name, ByteView id) override
    {
        const auto found = std::ranges::find_if(
            message_, [&](const Record &candidate) { return std::ranges::equal(id, candidate.id); });
        if (id.empty())
            return tree_.field(name, "no reference");
        const std::string text = quoted_utf8(id);
        tree_.field(name, found == message_.end() ? fmt::format("{} -> no record here has this id", text)
                                                  : fmt::format("{} -> record {}, {}", text,
                                                                found - message_.begin() + 1, title_of(*found)));
    }

    ByteView payload() const override { return record_.payload; }

private:
    void nested(std::string_view name, const Record &record, const Records &siblings)
    {
        tree_.heading(fmt::format("{}: {}", name, heading_of(record)));
        const Tree::Deeper deeper(tree_);
        if (depth_ + 1 > max_nesting)
            return tree_.warning(too_deep);
        const bool is_generic = std::holds_alternative<Generic>(record.content);
        if (is_generic)
            tree_.field("type", printable_type(record));
        if (!record.id.empty())
            tree_.field("id", quoted_utf8(record.id));
        if (is_generic)
            tree_.field("payload", count_of(record.payload.size(), "byte"));
        RecordView(tree_, record, siblings, options_, depth_ + 1).show();
    }

    void generic(const Generic &generic)
    {
        constexpr Type bluetooth_le = media("application/vnd.bluetooth.le.oob");
        if (generic.malformed())
            tree_.warning(fmt::format("malformed: {}", reason_of(generic.refused)));
        if (generic.unopened && nested_at(record_.format, record_.type))
            tree_.warning(depth_ == max_nesting ? too_deep : too_many);
        if (bluetooth_le.matches(record_.format, text_of(record_.type)))
            show_structures(record_.payload, *this);
        else if (const NamedTexts fields = personal_fields(record_); !fields.empty())
            show_fields(fields, *this);
        else if (is_text(record_) || is_xml(record_))
            text("text", record_.payload, Encoding::utf8, "");
        else if (options_.dump_payloads)
            tree_.dump(record_.payload);
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
    RecordView(tree, record, message, options, 0).show();
}

} // namespace tool
