#include "run.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace test {
namespace {

using File = std::unique_ptr<std::FILE, int (*)(std::FILE *)>;

File file_of(std::string_view content)
{
    File file(std::tmpfile(), std::fclose);
    if (!file || (!content.empty() && std::fwrite(content.data(), content.size(), 1, file.get()) != 1))
        throw std::runtime_error("no temporary file");
    std::rewind(file.get());
    return file;
}

std::string content_of(std::FILE *file)
{
    std::string content;
    std::rewind(file);
    for (int c; (c = std::fgetc(file)) != EOF;)
        content += static_cast<char>(c);
    return content;
}

// Files instead of pipes: whatever the command reads and writes, nobody waits for the other.
Outcome run(const std::vector<std::string> &arguments, std::string_view input, int out_descriptor, std::FILE *out)
{
    const File in = file_of(input), err = file_of("");
    std::vector<char *> argv{const_cast<char *>(NDEF_COMMAND)};
    for (const std::string &argument : arguments)
        argv.push_back(const_cast<char *>(argument.c_str()));
    argv.push_back(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        if (!out)
            std::signal(SIGPIPE, SIG_IGN); // so that writing fails instead, which the command must notice
        dup2(fileno(in.get()), STDIN_FILENO);
        dup2(out_descriptor, STDOUT_FILENO);
        dup2(fileno(err.get()), STDERR_FILENO);
        execv(NDEF_COMMAND, argv.data());
        _exit(127);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child)
        throw std::runtime_error("cannot run the command");
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), out ? content_of(out) : "",
            content_of(err.get())};
}

} // namespace

Outcome ndef(std::vector<std::string> arguments, std::string_view input)
{
    const File out = file_of("");
    return run(arguments, input, fileno(out.get()), out.get());
}

Outcome ndef_unread(std::vector<std::string> arguments, std::string_view input)
{
    int ends[2];
    if (pipe(ends) != 0)
        throw std::runtime_error("no pipe");
    close(ends[0]);
    Outcome result = run(arguments, input, ends[1], nullptr);
    close(ends[1]);
    return result;
}

std::string sample(std::string_view name) { return std::string(SAMPLES "/").append(name); }

std::string raw(std::string_view hex)
{
    std::string bytes;
    for (size_t i = 0; i + 1 < hex.size(); i += hex[i] == ' ' ? 1 : 2)
        if (hex[i] != ' ')
            bytes += static_cast<char>(std::stoi(std::string(hex.substr(i, 2)), nullptr, 16));
    return bytes;
}

TemporaryFile::TemporaryFile(std::string_view content) : path_("/tmp/ndef-test-XXXXXX")
{
    const int descriptor = mkstemp(path_.data());
    if (descriptor < 0 || write(descriptor, content.data(), content.size()) != static_cast<ssize_t>(content.size()))
        throw std::runtime_error("no temporary file");
    close(descriptor);
}

TemporaryFile::~TemporaryFile() { std::remove(path_.c_str()); }

} // namespace test
