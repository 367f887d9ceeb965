#pragma once

#include <string>
#include <string_view>

namespace Harness {

/// An empty folder of its own, removed with its contents at the end of the block.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& path() const { return path_; }
    std::string path(std::string_view name) const { return path_ + "/" + std::string(name); }
    /// Writes a file into it. @return Its path.
    std::string write(std::string_view name, std::string_view contents) const;

private:
    std::string path_;
};

/// The whole contents of a file, or "" if it cannot be read.
std::string readFile(const std::string& path);

} // namespace Harness
