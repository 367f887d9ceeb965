#include "MacToolbox/Data/FinderInfo.h"

#include "MacToolbox/Data/HostDisk.h"

#include <algorithm>

namespace MacToolbox::HostFiles {

namespace {

constexpr std::size_t kFinderInfoSize = 32;
constexpr char kCompanionPrefix[] = "._";

Bytes finderBytes(const FInfo& info)
{
    ByteWriter out;
    out.u32(info.fdType);
    out.u32(info.fdCreator);
    out.u16(info.fdFlags);
    out.pad(kFinderInfoSize);
    return out.bytes;
}

} // namespace

std::string beside(const std::string& path, const std::string& prefix)
{
    const std::size_t start = path.rfind('/') + 1; // 0 without a slash
    return path.substr(0, start) + prefix + path.substr(start);
}

std::string companionOf(const std::string& path) { return beside(path, kCompanionPrefix); }

std::optional<Bytes> storedFinderBytes(const std::string& path)
{
    const std::optional<Bytes> bytes = HostDisk::attribute(path);
    if (bytes && bytes->size() >= 8)
        return bytes;
    const std::string companion = companionOf(path);
    if (const HostDisk::Kind kind = HostDisk::kind(companion); kind != HostDisk::Kind::File)
        return bytes && kind != HostDisk::Kind::Unknown ? std::optional(Bytes{}) : std::nullopt;
    const HostFile file = HostDisk::open(companion, HostDisk::Mode::Read);
    Bytes kept = file ? HostDisk::read(file, 0, kFinderInfoSize) : Bytes{};
    if (kept.size() < 8)
        return std::nullopt;
    return kept;
}

FInfo finderInfoOf(const Bytes& stored)
{
    ByteReader in(stored);
    FInfo info;
    info.fdType = static_cast<OSType>(in.u32());
    info.fdCreator = static_cast<OSType>(in.u32());
    info.fdFlags = stored.size() >= 10 ? in.u16() : 0;
    return info;
}

bool storeFinderInfo(const std::string& path, const FInfo& info)
{
    const Bytes bytes = finderBytes(info);
    const std::string companion = companionOf(path);
    const bool hasCompanion = HostDisk::kind(companion) == HostDisk::Kind::File;
    if (HostDisk::setAttribute(path, bytes)) {
        if (hasCompanion)
            HostDisk::remove(companion);
        return true;
    }
    const HostFile file = HostDisk::open(companion, hasCompanion ? HostDisk::Mode::Update : HostDisk::Mode::Create);
    return file && HostDisk::write(file, 0, bytes) && HostDisk::truncate(file, kFinderInfoSize) && HostDisk::sync(file);
}

bool removeWithCompanion(const std::string& path)
{
    if (!HostDisk::remove(path))
        return false;
    if (const std::string companion = companionOf(path); HostDisk::kind(companion) == HostDisk::Kind::File)
        HostDisk::remove(companion);
    return true;
}

/// What a file without a stored type counts as.
static FInfo infoByName(const std::string& path)
{
    FInfo info;
    const std::string name = path.substr(path.rfind('/') + 1);
    std::string end = name.size() > 4 ? name.substr(name.size() - 4) : std::string(); // ".txt" alone has no extension
    for (char& c : end)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    if (end == ".txt")
        info.fdType = os("TEXT");
    return info;
}

std::optional<FInfo> toldFinderInfo(const std::string& path)
{
    const std::optional<Bytes> stored = storedFinderBytes(path);
    if (!stored)
        return std::nullopt;
    return stored->empty() ? infoByName(path) : finderInfoOf(*stored);
}

FInfo finderInfo(const std::string& path) { return toldFinderInfo(path).value_or(infoByName(path)); }

void setFinderInfo(const std::string& path, const FInfo& info) { storeFinderInfo(path, info); }

} // namespace MacToolbox::HostFiles
