// What the commands do, once the command line (command_line.h) has said how. Each throws Failure.
#pragma once

#include "color.h"
#include "input.h"
#include "output.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tool {

struct ShowOptions {
    std::string path = "-";
    InputOptions input;
    Color color = Color::automatic;
    bool bytes = false;
    bool everything = false;
};
void run_show(const ShowOptions &options);

struct CheckOptions {
    std::vector<std::string> paths = {"-"};
    InputOptions input;
    bool quiet = false;
};
void run_check(const CheckOptions &options);

struct JsonOptions {
    std::string path = "-";
    InputOptions input;
    OutputOptions output;
};
void run_json(const JsonOptions &options);

// Of each command that makes a message of one record.
struct MakeOptions {
    std::string id;
    OutputOptions output;
};

struct MakeTextOptions : MakeOptions {
    std::string text;
    std::string language = "en";
    bool utf16 = false;
};
void run_make_text(const MakeTextOptions &options);

struct MakeUriOptions : MakeOptions {
    std::string uri;
};
void run_make_uri(const MakeUriOptions &options);

struct MakePosterOptions : MakeOptions {
    std::string uri;
    std::vector<std::string> titles; // "LANG=TEXT"
    std::string action = "do";
    std::vector<std::string> icons; // "[MEDIA-TYPE=]FILE"
    std::string type;
    std::optional<std::string> size;
    bool unlimited = false; // icons of more than 16 MiB
};
void run_make_poster(const MakePosterOptions &options);

struct MakeJsonOptions {
    std::string path = "-";
    bool unlimited = false;
    OutputOptions output;
};
void run_make_json(const MakeJsonOptions &options);

} // namespace tool
