#include "command_line.h"
#include "failure.h"
#include "output.h"

#include <exception>

int main(int argc, char **argv)
{
    using namespace tool;
    try {
        run_command_line(argc, argv);
        return exit_fine;
    } catch (const Failure &failure) {
        complain(failure.what());
        return failure.status;
    } catch (const std::exception &error) {
        complain(error.what());
        return exit_unusable;
    }
}
