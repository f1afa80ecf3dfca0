#include "command_line/parse.h"
#include "commands/commands.h"
#include "io/failure.h"
#include "io/output.h"

#include <fmt/format.h>
#include <nfc_ndef.h>

#include <exception>

int main(int argc, char **argv)
{
    using namespace tool;
    try {
        const std::string version =
            fmt::format("{}.{}.{}", NFC_NDEF_VERSION_MAJOR, NFC_NDEF_VERSION_MINOR, NFC_NDEF_VERSION_PATCH);
        run_command_line(program(), version, argc, argv);
        return exit_fine;
    } catch (const Failure &failure) {
        complain(failure.what());
        return failure.status;
    } catch (const std::exception &error) {
        complain(error.what());
        return exit_unusable;
    }
}
