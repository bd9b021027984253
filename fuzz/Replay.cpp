#include "fuzz/Input.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

// Runs a target over every file of a folder, and over each of them cut in half, without an engine.

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes Read(std::filesystem::path const& path)
{
    std::ifstream file(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(file), {});
}

void Replay(std::uint8_t const* data, std::size_t size)
{
    Zan::Orv::Core::Service::Fuzz::Input input(data, size);
    Zan::Orv::Core::Service::Fuzz::Run(input);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
    {
        std::cerr << "usage: " << argv[0] << " FOLDER\n";
        return 2;
    }
    std::vector<std::filesystem::path> paths;
    for (auto const& entry : std::filesystem::directory_iterator(argv[1]))
        paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    for (auto const& path : paths)
    {
        std::cout << path.filename().string()
                  << std::endl; // before the run: the last name is that of the fault
        Bytes const bytes = Read(path);
        Replay(bytes.data(), bytes.size());
        Replay(bytes.data(), bytes.size() / 2);
    }
    std::cout << paths.size() << " inputs\n";
    return paths.empty() ? 1 : 0;
}
