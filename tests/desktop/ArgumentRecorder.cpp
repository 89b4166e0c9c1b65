// Stands in for the program in a desktop entry: writes each argument it was given on a line of
// its own to the file named by RECORD_ARGUMENTS_TO.
#include <cstdlib>
#include <fstream>

int main(int argc, char** argv) {
    const char* target = std::getenv("RECORD_ARGUMENTS_TO");
    if (target == nullptr)
        return 2;
    std::ofstream out(target, std::ios::binary);
    for (int i = 1; i < argc; ++i)
        out << argv[i] << '\n';
    return out ? 0 : 1;
}
