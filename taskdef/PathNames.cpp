#include "taskdef/PathNames.h"

namespace morlevant {

std::string GetFilePath(const std::string& path) {
    const std::size_t last = path.find_last_of(pathSeparators);
    return last == std::string::npos ? std::string() : path.substr(0, last + 1);
}

std::string GetMainName(const std::string& path) {
    const std::size_t last = path.find_last_of(pathSeparators);
    std::string name = last == std::string::npos ? path : path.substr(last + 1);
    const std::size_t dot = name.rfind('.');
    if (dot != std::string::npos)
        name.erase(dot);
    return name;
}

} // namespace morlevant
