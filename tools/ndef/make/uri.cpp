#include "make/content.h"
#include "make/thing.h"

namespace tool::make {
namespace {

constexpr Option uri_argument{.names = "URI", .help = "The URI; its prefix is abbreviated", .required = true};

values::Record record(const Arguments &given) { return record_of(uri_content(given.value_or(uri_argument, ""))); }

} // namespace

Thing uri()
{
    return {.name = "uri",
            .summary = "Makes a message of one URI",
            .options = {&uri_argument},
            .examples = "Examples:\n"
                        "  ndef make uri https://www.example.com/\n"
                        "  ndef make uri tel:+4930123456 --format hex",
            .record = record};
}

} // namespace tool::make
