// What is called otherwise in Python than in JSON or in C++.
#pragma once

#include <string>
#include <string_view>

namespace python {

struct Renamed {
    std::string_view from, to;
};
inline constexpr Renamed renamed_members[] = {{"language_code", "language"}};
inline constexpr Renamed renamed_enums[] = {
    {"cps", "PowerState"}, {"ctf", "TypeNameFormat"}, {"flags", "BluetoothLeFlags"}, {"status", "TnepStatusCode"}};
inline constexpr Renamed renamed_classes[] = {{"WifiAttributes", "WifiCredential"}};

template <size_t N> std::string_view renamed(std::string_view name, const Renamed (&table)[N])
{
    for (const Renamed &entry : table)
        if (entry.from == name)
            return entry.to;
    return name;
}

// "SmartPoster" of the type of that name; a template goes by its class.
template <class T> constexpr std::string_view type_name()
{
    constexpr std::string_view function = __PRETTY_FUNCTION__, before = "T = ";
    constexpr size_t begin = function.find(before) + before.size();
    constexpr std::string_view whole = function.substr(begin, function.find_first_of(";]<", begin) - begin);
    return whole.substr(whole.rfind(':') + 1);
}

} // namespace python
