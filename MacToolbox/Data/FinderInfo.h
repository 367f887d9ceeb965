#pragma once

#include "MacToolbox/Data/Files.h"

// Type and creator of a file: the attribute where the file system has any, else a companion file "._name" beside it.

namespace MacToolbox::HostFiles {

/// The path of a file beside `path`: its name with a prefix.
std::string beside(const std::string& path, const std::string& prefix);
std::string companionOf(const std::string& path);

/// The stored bytes, from the attribute or the companion file; empty if there are none, nothing if that cannot be told.
std::optional<Bytes> storedFinderBytes(const std::string& path);
FInfo finderInfoOf(const Bytes& stored);
/// As `finderInfo`, but nothing if what is stored cannot be told.
std::optional<FInfo> toldFinderInfo(const std::string& path);
/// @return False if neither the attribute nor the companion could be stored.
bool storeFinderInfo(const std::string& path, const FInfo& info);
/// Removes a file, and its companion if it has one. @return False if the file could not be removed.
bool removeWithCompanion(const std::string& path);

} // namespace MacToolbox::HostFiles
