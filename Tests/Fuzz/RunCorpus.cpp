// Runs a fuzz target once over each file that is named, or lies in a folder that is named.

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

int sRun = 0;

void runFile(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    ++sRun;
}

} // namespace

int main(int count, char** names)
{
    for (int i = 1; i < count; ++i) {
        if (!std::filesystem::is_directory(names[i])) {
            runFile(names[i]);
            continue;
        }
        for (const auto& entry : std::filesystem::recursive_directory_iterator(names[i]))
            if (entry.is_regular_file())
                runFile(entry.path());
    }
    std::fprintf(stderr, "%d inputs\n", sRun);
    return sRun > 0 ? 0 : 1;
}
