#pragma once

#include "MacToolbox/Base/Memory.h"

#include <initializer_list>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include <yaml-cpp/yaml.h>

namespace Rsrc {

using namespace MacToolbox;

/// A fault of a source; the text begins with file and line.
struct Fault : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// A place in a YAML source. Whatever is asked of it and is not so throws a `Fault` that names the place.
class Source {
public:
    struct Entry;

    /// The map at the top of a file. Throws `Fault` if the file cannot be read or is no YAML.
    static Source load(const std::string& path);

    [[noreturn]] void fail(const std::string& text) const;
    /// "file:line".
    std::string place() const;

    bool isMap() const { return node_.IsMap(); }
    bool isScalar() const { return node_.IsScalar(); }
    bool isList() const { return node_.IsSequence(); }
    bool isNull() const { return node_.IsNull(); }

    /// The scalar as it stands.
    std::string word() const;
    Int number(Int least, Int most) const;
    bool flag() const;
    /// In Mac OS Roman, line ends as 13, without those at the end; at most `most` bytes.
    Bytes roman(std::size_t most) const;
    /// `roman` behind its length byte.
    Bytes counted(std::size_t most = 255) const;
    /// Four whole numbers of 16 bits: top, left, bottom, right.
    Rect rect() const;
    /// Two whole numbers of 16 bits.
    Point point() const;
    /// The path of a file named from the folder of the source.
    std::string path() const;

    std::vector<Source> list() const;
    /// Key and value of a map in order; a key twice is a fault.
    std::vector<Entry> map() const;
    /// The values of a map whose keys count from `first` without gaps; other keys must be in `words`. A key "3-5"
    /// stands for three values if `ranges`.
    std::vector<Source> numbered(Int first, std::initializer_list<const char*> words = {}, bool ranges = false) const;
    /// Fails unless this is a map of these keys, of "about" and of "name".
    void allow(std::initializer_list<const char*> keys) const;

    std::optional<Source> find(const char* key) const;
    Source at(const char* key) const; ///< must be there

    // Fields of a map that may be left out.
    Int number(const char* key, Int least, Int most, Int otherwise) const;
    bool flag(const char* key, bool otherwise) const;
    Bytes counted(const char* key, std::size_t most = 255) const; ///< else the empty string

private:
    Source(YAML::Node node, std::shared_ptr<const std::string> file)
        : node_(std::move(node)), file_(std::move(file)), line_(node_.Mark().line)
    {
    }
    /// A value of this map; one that is missing stands where its key stands.
    Source child(const YAML::Node& key, const YAML::Node& value) const;

    YAML::Node node_;
    std::shared_ptr<const std::string> file_; // its path
    int line_;                                // from 0
};

struct Source::Entry {
    Source key, value;
};

/// The contents of a file. Throws `Fault` in the name of `who`.
Bytes fileContents(const std::string& path, const Source& who);

} // namespace Rsrc
