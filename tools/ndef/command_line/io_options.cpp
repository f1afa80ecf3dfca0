#include "command_line/io_options.h"

namespace tool {

std::vector<const Option *> with_input_options(std::vector<const Option *> options)
{
    options.insert(options.end(), {&raw_input, &hex_input, &base64_input, &tlv_input, &no_limit});
    return options;
}

InputOptions input_options(const Arguments &given)
{
    InputOptions options;
    if (given.has(raw_input))
        options.encoding = Encoding::raw;
    if (given.has(hex_input))
        options.encoding = Encoding::hex;
    if (given.has(base64_input))
        options.encoding = Encoding::base64;
    options.tag_memory = given.has(tlv_input);
    options.unlimited = given.has(no_limit);
    return options;
}

OutputOptions output_options(const Arguments &given)
{
    return {given.value_or(output_file, "-"), given.choice<OutputFormat>(output_format)};
}

} // namespace tool
