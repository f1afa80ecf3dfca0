#include "command.h"
#include "printable.h"

#include <fmt/format.h>
#include <nfc_ndef.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <sstream>

namespace tool {

namespace {

// Runs the command that is asked for, or prints what --help and --version ask for.
void run(CLI::App &app, int argc, char **argv)
{
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success &request) {
        std::ostringstream text;
        app.exit(request, text);
        write_output(text.str());
    } catch (const CLI::RequiredError &) {
        if (argc < 2 || argv[1][0] == '-' || !app.get_subcommands().empty())
            throw;
        throw Failure(exit_unusable, fmt::format("no command is called '{}' ('ndef --help' tells more)",
                                                 printable_utf8(std::string_view(argv[1]))));
    }
}

} // namespace

void write_output(std::string_view text)
{
    if (std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0)
        return;
    if (errno == EPIPE)
        throw Failure(exit_unusable, "");
    throw Failure(exit_unusable, fmt::format("cannot write to standard output: {}", std::strerror(errno)));
}

void complain(std::string_view text)
{
    if (!text.empty()) // not fmt::print, which throws when nobody reads
        std::fputs(fmt::format("ndef: {}\n", text).c_str(), stderr);
}

} // namespace tool

int main(int argc, char **argv)
{
    using namespace tool;
    CLI::App app("Reads, checks and makes NFC Forum NDEF messages.", "ndef");
    app.set_version_flag("--version", fmt::format("ndef {}.{}.{}", NFC_NDEF_VERSION_MAJOR, NFC_NDEF_VERSION_MINOR,
                                                  NFC_NDEF_VERSION_PATCH));
    app.require_subcommand(1);
    app.footer("Examples:\n"
               "  ndef show tag.ndef             what is on a tag\n"
               "  ndef show --tlv dump.bin       the same, from the memory of a Type 2 tag\n"
               "  echo D101025503 61 | ndef show\n"
               "  ndef check *.ndef              why messages are refused\n"
               "\n'ndef COMMAND --help' tells more. Exit status: 0 fine, 1 refused, 2 unusable files or options.");
    add_show_command(app);
    add_check_command(app);
    add_json_command(app);
    add_make_command(app);
    try {
        run(app, argc, argv);
        return exit_fine;
    } catch (const CLI::ParseError &error) {
        complain(fmt::format("{} ('ndef --help' tells more)", printable_utf8(error.what())));
        return exit_unusable;
    } catch (const Failure &failure) {
        complain(failure.what());
        return failure.status;
    } catch (const std::exception &error) {
        complain(error.what());
        return exit_unusable;
    }
}
