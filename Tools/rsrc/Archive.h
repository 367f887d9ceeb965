#pragma once

#include "MacToolbox/Base/Memory.h"

#include <map>
#include <optional>
#include <string>
#include <utility>

namespace Rsrc {

using namespace MacToolbox;

/// The resources of one file, by type and id.
class Archive {
public:
    struct Item {
        Bytes data;
        std::optional<Bytes> name; ///< without a length byte
        std::string place;         ///< where the source stands
    };

    std::map<std::pair<OSType, Int>, Item> items;

    /// The bytes of the resource file.
    Bytes image() const;
    /// Writes the file beside its place and renames it: a reader never sees a part. @return False if it cannot.
    bool write(const std::string& path) const;
};

} // namespace Rsrc
