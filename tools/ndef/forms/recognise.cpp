#include "forms/recognise.h"

#include "text/encoded_text.h"
#include "text/plain_text.h"

#include <nfc_ndef.h>

#include <fmt/format.h>

#include <algorithm>
#include <cctype>

namespace tool::forms {
namespace {

constexpr std::string_view raw_name = "raw";

// The input as one notation has it, or as it is.
struct Candidate {
    const Notation *notation;
    Memory memory;
};

struct Fit {
    const Candidate *candidate;
    const Layout *layout;
    Found found;
};

std::string reason_of_refusal(const values::Bytes &message)
{
    nfc_ndef_msg_report report{};
    nfc_ndef_msg_check(message.data(), 0, static_cast<uint32_t>(message.size()), &report);
    return fmt::format("record {}, byte {}: {}", report.record + 1, report.offset,
                       nfc_ndef_msg_check_text(report.reason));
}

// Hex text with a slip somewhere. Of base64 text, a third of the characters is hex digits.
bool is_nearly_hex(std::string_view text, size_t &wrong)
{
    const auto is_digit = [](char c) { return std::isxdigit(static_cast<unsigned char>(c)) != 0; };
    const auto is_blank = [](char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; };
    const auto digits = std::ranges::count_if(text, is_digit), blanks = std::ranges::count_if(text, is_blank);
    return digits * 4 > (std::ssize(text) - blanks) * 3 && !decode_hex(text, &wrong);
}

class Recogniser {
public:
    Recogniser(values::Bytes bytes, const Asked &asked) : asked_(asked), text_(plain_text(bytes))
    {
        if (asked.raw || (!asked.notation && (!text_ || text_->may_be_message)))
            candidates_.push_back({nullptr, {.bytes = std::move(bytes)}});
        if (!asked.raw && text_)
            read_text();
    }

    Recognised result()
    {
        if (candidates_.empty())
            return {.refused = why_unread()};
        if (asked_.layout)
            return as_asked();
        for (Candidate &candidate : candidates_)
            if (is_message(candidate.memory.bytes))
                return taken(candidate);
        leave_out_doubtful();
        look_for_layouts();
        if (fits_.size() == 1)
            return taken(fits_.front());
        if (fits_.size() > 1)
            return {.refused = ambiguity()};
        if (!alike_.empty())
            return {.refused = fmt::format("looks like {}", alike_)};
        return as_it_is();
    }

private:
    void read_text()
    {
        for (const Notation &notation : notations()) {
            if (asked_.notation && asked_.notation != &notation)
                continue;
            Written written = notation.read(text_->text);
            if (written.match == Match::whole)
                candidates_.push_back({&notation, std::move(written.memory)});
            else if (written.match == Match::alike && alike_.empty())
                alike_ = fmt::format("{}, but {}", one(notation), written.but);
        }
    }

    std::string title_of(const Notation &notation) const
    {
        return fmt::format("{}{}", notation.title, text_->is_utf16 ? " in UTF-16" : "");
    }
    std::string one(const Notation &notation) const
    {
        const bool is_countable = !notation.title.ends_with("text") && !notation.title.ends_with("JSON");
        return (is_countable ? "a " : "") + title_of(notation);
    }

    // Digits that are more than digits to another notation.
    void leave_out_doubtful()
    {
        const auto is_plain = [](const Candidate &one) { return one.notation && one.notation->is_plain; };
        const auto is_structured = [](const Candidate &one) { return one.notation && !one.notation->is_plain; };
        if (std::ranges::any_of(candidates_, is_structured))
            std::erase_if(candidates_, is_plain);
    }

    void look_for_layouts()
    {
        std::vector<Fit> empty;
        for (const Candidate &candidate : candidates_) {
            for (const Layout &layout : layouts()) {
                const std::string_view said = candidate.memory.layout;
                if (!said.empty() && said != layout.name)
                    continue;
                Fit fit{&candidate, &layout, layout.find(candidate.memory, !said.empty())};
                if (fit.found.match == Match::none)
                    continue;
                std::string but = fit.found.but;
                if (fit.found.match == Match::whole && !fit.found.message.empty() && !is_message(fit.found.message))
                    but = fmt::format("the message in it, from byte {} on, is refused: {}", fit.found.at,
                                      reason_of_refusal(fit.found.message));
                if (!but.empty() && alike_.empty())
                    alike_ = fmt::format("the {}, but {}", title_of(fit), but);
                else if (but.empty())
                    (fit.found.message.empty() ? empty : fits_).push_back(std::move(fit));
            }
        }
        if (fits_.empty())
            fits_ = std::move(empty);
    }

    std::string title_of(const Fit &fit) const
    {
        const Notation *const notation = fit.candidate->notation;
        return fmt::format("{}{}", fit.layout->title,
                           notation && !notation->is_plain ? fmt::format(" in {}", one(*notation)) : "");
    }

    std::string described(const Fit &fit) const
    {
        const Notation *const notation = fit.candidate->notation;
        return fmt::format("{}, message at byte {}{}", fit.layout->title, fit.found.at,
                           notation ? fmt::format(" ({})", title_of(*notation)) : "");
    }

    static Recognised empty_tag(const Layout &layout)
    {
        return {.refused = fmt::format("an empty formatted tag ({}): there is no NDEF message on it", layout.title)};
    }

    Recognised taken(Fit &fit) const
    {
        if (fit.found.message.empty())
            return empty_tag(*fit.layout);
        return {.message = std::move(fit.found.message), .taken_for = described(fit)};
    }

    Recognised taken(Candidate &candidate) const
    {
        const Notation *const notation = candidate.notation;
        const bool is_news = notation && (!notation->is_plain || text_->is_utf16);
        return {.message = std::move(candidate.memory.bytes), .taken_for = is_news ? title_of(*notation) : ""};
    }

    std::string ambiguity() const
    {
        const bool other_notation = fits_[0].candidate != fits_[1].candidate;
        const auto name_of = [&](const Fit &fit) {
            return !other_notation           ? fit.layout->name
                   : fit.candidate->notation ? fit.candidate->notation->name
                                             : raw_name;
        };
        return fmt::format("may be {}, and may be {}: say which with --as {} or --as {}", described(fits_[0]),
                           described(fits_[1]), name_of(fits_[0]), name_of(fits_[1]));
    }

    // In the layout that was asked for, whatever its message is worth.
    Recognised as_asked()
    {
        Recognised first;
        for (const Candidate &candidate : candidates_) {
            Found found = asked_.layout->find(candidate.memory, true);
            if (found.match == Match::whole)
                return found.message.empty() ? empty_tag(*asked_.layout)
                                             : Recognised{.message = std::move(found.message)};
            if (first.refused.empty())
                first.refused = !found.but.empty() ? found.but : fmt::format("not the {}", asked_.layout->title);
        }
        return first;
    }

    const Candidate *written_in(std::string_view name) const
    {
        const auto found = std::ranges::find_if(
            candidates_, [&](const Candidate &one) { return one.notation && one.notation->name == name; });
        return found != candidates_.end() ? &*found : nullptr;
    }

    // In no form at all: the reader of messages says what is wrong.
    Recognised as_it_is()
    {
        Candidate &first = candidates_.front();
        if (first.notation && !first.notation->is_plain)
            return {.refused = fmt::format("looks like {}, but its bytes are not an NDEF message: {}",
                                           one(*first.notation), reason_of_refusal(first.memory.bytes))};
        const Candidate *const hex = written_in("hex"), *const base64 = written_in("base64");
        if (size_t wrong = 0; base64 && !hex && !asked_.notation && is_nearly_hex(text_->text, wrong))
            return {.refused = fmt::format("text that is no message in base64, and not hex: {} is no hex digit",
                                           place_in(text_->text, wrong))};
        if (!hex || !base64)
            return {.message = std::move(first.memory.bytes)};
        if (means_hex(hex->memory.bytes, base64->memory.bytes))
            return {.message = hex->memory.bytes};
        return {.refused = fmt::format("not an NDEF message: {} (read as base64; use --as hex if it is hex)",
                                       reason_of_refusal(base64->memory.bytes))};
    }

    std::string why_unread() const
    {
        if (!alike_.empty())
            return fmt::format("looks like {}", alike_);
        if (asked_.notation && !asked_.notation->is_plain)
            return fmt::format("not {}", asked_.notation->title);
        const std::string_view name = asked_.notation ? asked_.notation->name : "hex or base64";
        size_t wrong = 0;
        if (name == "base64" || !text_ || decode_hex(text_->text, &wrong))
            return fmt::format("text that is not {}", name);
        const bool is_json = !asked_.notation && trimmed(text_->text).starts_with('{');
        return fmt::format("text that is not {}: {} is no hex digit{}", name, place_in(text_->text, wrong),
                           is_json ? " ('ndef make json' reads JSON)" : "");
    }

    Asked asked_;
    std::optional<PlainText> text_;
    std::vector<Candidate> candidates_;
    std::vector<Fit> fits_;
    std::string alike_; // the first form that the input nearly has, and why not
};

} // namespace

Recognised recognise(values::Bytes bytes, const Asked &asked) { return Recogniser(std::move(bytes), asked).result(); }

std::vector<std::string_view> names()
{
    std::vector<std::string_view> names{raw_name};
    std::ranges::transform(notations(), std::back_inserter(names), &Notation::name);
    std::ranges::transform(layouts(), std::back_inserter(names), &Layout::name);
    return names;
}

bool find_form(std::string_view name, Asked &asked)
{
    const auto notation = std::ranges::find(notations(), name, &Notation::name);
    const auto layout = std::ranges::find(layouts(), name, &Layout::name);
    if (name == raw_name)
        asked.raw = true;
    else if (notation != notations().end())
        asked.notation = &*notation;
    else if (layout != layouts().end())
        asked.layout = &*layout;
    else
        return false;
    return true;
}

} // namespace tool::forms
