#include "command_line/io_options.h"

#include "io/failure.h"

#include <fmt/format.h>

namespace tool {

const Option &input_form()
{
    static const std::string names = fmt::format("{}", fmt::join(forms::names(), " "));
    static const std::string help =
        fmt::format("What the input is: {}; found out without it", fmt::join(forms::names(), ", "));
    static const Option option{
        .names = "--as", .placeholder = "FORM", .help = help, .values = Option::Values::listed, .list = names};
    return option;
}

std::vector<const Option *> with_input_options(std::vector<const Option *> options)
{
    options.insert(options.end(), {&raw_input, &hex_input, &base64_input, &tlv_input, &input_form(), &no_limit});
    return options;
}

InputOptions input_options(const Arguments &given)
{
    InputOptions options{.unlimited = given.has(no_limit)};
    const auto say = [&](std::string_view name, bool said) {
        const forms::Asked before = options.form;
        if (said && forms::find_form(name, options.form) && (before.raw || before.notation) &&
            (options.form.raw != before.raw || options.form.notation != before.notation))
            throw Failure(exit_unusable, fmt::format("--as {} excludes the other options of the input's form", name));
    };
    say("raw", given.has(raw_input));
    say("hex", given.has(hex_input));
    say("base64", given.has(base64_input));
    say("type2", given.has(tlv_input));
    say(given.value_or(input_form(), ""), given.has(input_form()));
    return options;
}

OutputOptions output_options(const Arguments &given)
{
    OutputOptions options{.path = given.value_or(output_file, "-"),
                          .format = given.choice<OutputFormat>(output_format),
                          .no_clobber = given.has(no_clobber)};
    if (const std::optional<std::string> image = given.value(output_image))
        options.image = memory_image(*image);
    return options;
}

} // namespace tool
