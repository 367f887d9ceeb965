#include "Tests/Harness/TemporaryFolder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace Harness {

TemporaryFolder::TemporaryFolder()
{
    path_ = std::filesystem::temp_directory_path() / "wainroad-test-XXXXXX";
    if (!mkdtemp(path_.data()))
        std::abort();
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code error;
    std::filesystem::remove_all(path_, error);
}

std::string TemporaryFolder::write(std::string_view name, std::string_view contents) const
{
    std::ofstream(path(name), std::ios::binary) << contents;
    return path(name);
}

std::string readFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace Harness
