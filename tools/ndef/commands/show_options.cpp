#include "commands/show_options.h"

#include "io/failure.h"
#include "io/output.h"

#include <algorithm>

namespace tool {

void for_each_file(const Arguments &given, const Option &files, const std::function<void(const std::string &)> &call)
{
    const std::vector<std::string> paths = given.has(files) ? given.values(files) : std::vector<std::string>{"-"};
    if (paths.size() == 1)
        return call(paths.front());
    ExitStatus worst = exit_fine;
    for (const std::string &path : paths) {
        try {
            call(path);
        } catch (const Failure &failure) {
            complain(failure.what());
            worst = std::max(worst, failure.status);
        }
    }
    if (worst != exit_fine)
        throw Failure(worst, "");
}

} // namespace tool
