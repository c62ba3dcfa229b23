/** Runs the fuzzer that it is linked with once on every file of the folders that are named. */
#include "FuzzTarget.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

namespace
{
void replay(const std::filesystem::path& file)
{
    std::cout << file.filename().string() << std::endl; // before it is run: the last one named is the one that failed
    std::ifstream stream(file, std::ios::binary);
    const std::string input{std::istreambuf_iterator<char>(stream), {}};
    LLVMFuzzerTestOneInput(reinterpret_cast<const unsigned char*>(input.data()), input.size());
}
} // namespace

int main(int count, char** arguments)
{
    int replayed = 0;
    for (int i = 1; i < count; ++i)
    {
        for (const auto& entry : std::filesystem::directory_iterator(arguments[i]))
        {
            replay(entry.path());
            ++replayed;
        }
    }
    std::cout << replayed << " inputs\n";
    return replayed > 0 ? 0 : 2;
}
