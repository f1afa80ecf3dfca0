#include "view/malformed.h"

#include <nfc_ndef/view.h>

#include <fmt/format.h>

namespace tool {
namespace {

using namespace nfc_ndef::values;

// Is shown what a record tells, of which only the nested records matter.
class Finder final : public View {
public:
    Finder(std::vector<Malformed> &found, size_t position, std::string where, const Record &record)
        : found_(found), position_(position), where_(std::move(where)), record_(record)
    {
    }

    void find(bool nested)
    {
        const auto look = [&]<class T>(const T &content) {
            if constexpr (!std::is_same_v<T, Generic>)
                Kind<T>::show(content, *this);
            else if (content.malformed())
                found_.push_back({position_, where_, nested, content.refused});
        };
        std::visit(look, record_.content);
    }

    void field(std::string_view, std::string_view) override {}
    void text(std::string_view, ByteView, Encoding, std::string_view) override {}
    void bytes(std::string_view, ByteView) override {}
    void warning(std::string_view) override {}
    void record(std::string_view name, const Record &inner) override
    {
        Finder(found_, position_, fmt::format("{}: {}: {}", where_, name, title_of(inner)), inner).find(true);
    }
    void records(std::string_view name, const Records &inner) override { message(name, inner); }
    void message(std::string_view name, const Records &inner) override
    {
        for (const Record &one : inner)
            record(name, one);
    }
    void reference(std::string_view, ByteView) override {}
    ByteView payload() const override { return record_.payload; }

private:
    std::vector<Malformed> &found_;
    size_t position_;
    std::string where_;
    const Record &record_;
};

} // namespace

std::vector<Malformed> find_malformed(const Records &message)
{
    std::vector<Malformed> found;
    for (size_t i = 0; i < message.size(); ++i)
        Finder(found, i, title_of(message[i]), message[i]).find(false);
    return found;
}

} // namespace tool
