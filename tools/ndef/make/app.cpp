#include "make/content.h"
#include "make/thing.h"

#include <algorithm>

namespace tool::make {
namespace {

constexpr Option package{
    .names = "PACKAGE", .help = "The application's package, such as com.example.app", .required = true};

bool is_package_character(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '.';
}

values::Record record(const Arguments &given)
{
    values::AndroidApplication application{given.value_or(package, "")};
    require(!application.package.empty() && std::ranges::all_of(application.package, is_package_character),
            "a package is letters, digits, _ and ., as in com.example.app");
    return record_of(std::move(application));
}

} // namespace

Thing app()
{
    return {.name = "app",
            .summary = "Makes an Android Application Record, which opens an app",
            .options = {&package},
            .examples = "A phone opens the app, or its page in the store. It goes behind what the app is to read.\n"
                        "\nExamples:\n"
                        "  ndef make app com.example.app\n"
                        "  ndef make uri https://example.com + app com.example.app",
            .record = record};
}

} // namespace tool::make
