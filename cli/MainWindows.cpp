#include "cli/Main.h"

#include <windows.h>

#include <shellapi.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

// Those that main() is given have lost what the user's code page does not know.
std::vector<std::string> argumentsAsUtf8() {
    int count = 0;
    wchar_t** wide = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 0; i < count; ++i) {
        const int size = WideCharToMultiByte(CP_UTF8, 0, wide[i], -1, nullptr, 0, nullptr, nullptr);
        std::string argument(static_cast<std::size_t>(size), '\0');
        WideCharToMultiByte(CP_UTF8, 0, wide[i], -1, argument.data(), size, nullptr, nullptr);
        arguments.emplace_back(argument.c_str()); // without the end that was counted in
    }
    LocalFree(wide);
    return arguments;
}

} // namespace

int main() {
    std::vector<std::string> arguments = argumentsAsUtf8();
    std::vector<char*> pointers(arguments.size() + 1, nullptr);
    std::transform(arguments.begin(), arguments.end(), pointers.begin(),
                   [](std::string& argument) { return argument.data(); });
    return zelvatone::runProgram(static_cast<int>(arguments.size()), pointers.data());
}
