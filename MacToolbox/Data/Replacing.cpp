#include "MacToolbox/Data/Replacing.h"

#include "MacToolbox/Data/FinderInfo.h"

#include <filesystem>
#include <system_error>

namespace MacToolbox {

using namespace HostFiles;

namespace {

constexpr char kReplacingPrefix[] = ".~replacing-";
constexpr std::size_t kLongestPlainName = 200; // bytes; with the prefixes it must stay under 255

/// Where the new file of a replacement is built. A long name is told by its hash, so that the prefix still fits.
std::string replacingPath(const std::string& target)
{
    const std::size_t start = target.rfind('/') + 1;
    const std::string name = target.substr(start);
    if (name.size() <= kLongestPlainName)
        return beside(target, kReplacingPrefix);
    std::uint64_t hash = 14695981039346656037U;
    for (const char c : name)
        hash = (hash ^ static_cast<std::uint8_t>(c)) * 1099511628211U;
    return target.substr(0, start) + kReplacingPrefix + std::to_string(hash);
}

} // namespace

void Replacing::begin(const std::string& path)
{
    *this = Replacing();
    active_ = true;
    target_ = place_ = path;
    fresh_ = replacingPath(path);
    sweep(folderOf(path));
}

void Replacing::end()
{
    dropFresh();
    *this = Replacing();
}

bool Replacing::makeFresh()
{
    if (HostDisk::kind(fresh_) == HostDisk::Kind::File)
        removeWithCompanion(fresh_);
    held_ = HostDisk::open(fresh_, HostDisk::Mode::Create);
    if (!held_)
        return false;
    HostDisk::lock(held_);
    made_ = true;
    return true;
}

void Replacing::dropFresh()
{
    held_.close();
    if (made_)
        removeWithCompanion(fresh_);
    made_ = false;
}

void Replacing::copyToFresh()
{
    const HostFile old = HostDisk::open(target_, HostDisk::Mode::Read);
    if (!old)
        return;
    const Bytes bytes = HostDisk::read(old, 0, HostDisk::length(old).value_or(0));
    const std::optional<Bytes> stored = storedFinderBytes(target_);
    if (!stored)
        return;
    std::error_code error;
    if (const std::filesystem::path real = std::filesystem::canonical(target_, error); !error)
        place_ = real.string();
    fresh_ = replacingPath(place_);
    if (!makeFresh())
        return;
    HostDisk::copyMode(old, held_);
    if (I(bytes.size()) != HostDisk::length(old) || !HostDisk::write(held_, 0, bytes)
        || (!stored->empty() && !storeFinderInfo(fresh_, finderInfoOf(*stored))))
        dropFresh();
}

void Replacing::markDeleted()
{
    dropFresh();
    place_ = target_; // a link goes with the file
    fresh_ = replacingPath(place_);
    deleted_ = true;
}

bool Replacing::putInPlace()
{
    if (!HostDisk::sync(held_))
        return false;
    const std::string freshCompanion = companionOf(fresh_), companion = companionOf(place_);
    const HostDisk::Kind kind = HostDisk::kind(freshCompanion);
    if (kind == HostDisk::Kind::Unknown)
        return false; // the new file must not go without its type
    const bool hasCompanion = kind == HostDisk::Kind::File;
    if (hasCompanion && !HostDisk::rename(freshCompanion, companion))
        return false;
    if (!HostDisk::rename(fresh_, place_))
        return false;
    made_ = false;
    if (!hasCompanion && HostDisk::kind(companion) == HostDisk::Kind::File)
        HostDisk::remove(companion);
    HostDisk::syncFolder(folderOf(place_));
    return true;
}

void Replacing::sweep(const std::string& folder)
{
    for (const std::string& name : HostDisk::names(folder)) {
        const std::string path = folder + '/' + name;
        if (name.starts_with(companionOf(kReplacingPrefix))
            && HostDisk::kind(folder + '/' + name.substr(2)) == HostDisk::Kind::Missing)
            HostDisk::remove(path); // a companion whose file is gone
        if (!name.starts_with(kReplacingPrefix))
            continue;
        const HostFile file = HostDisk::open(path, HostDisk::Mode::Read);
        if (file && HostDisk::lock(file))
            removeWithCompanion(path);
    }
}

} // namespace MacToolbox
