#include "MacToolbox/Data/Resources.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Data/HostDisk.h"

#include <algorithm>
#include <optional>

namespace MacToolbox {

namespace {

/// Offsets of the form reach little further than this; a longer file cannot be a whole resource file.
constexpr Int kMostBytes = 64 << 20;

/// The file, or nothing if it cannot be read.
std::optional<Bytes> contents(const std::string& path)
{
    const HostFile file = HostDisk::open(path, HostDisk::Mode::Read);
    if (!file)
        return std::nullopt;
    Bytes bytes = HostDisk::read(file, 0, kMostBytes);
    if (bytes.empty() && HostDisk::length(file).value_or(1) != 0)
        return std::nullopt;
    return bytes;
}

/// Walks the map of a file image. Every offset is 64 bits wide and is checked before it is used.
class MapWalk {
public:
    explicit MapWalk(std::span<const std::uint8_t> image) : image_(image), size_(I(image.size())) { }

    std::vector<ResourceFile::Entry> entries()
    {
        if (size_ < 16)
            return {};
        data_ = read(0, 4);
        const Int map = read(4, 4);
        if (map + 30 > size_)
            return {};
        types_ = map + read(map + 24, 2);
        names_ = map + read(map + 26, 2);
        const Int typeCount = static_cast<std::int16_t>(read(types_, 2)) + 1;
        for (Int i = 0; i < typeCount && fits(types_ + 2 + i * 8, 8); ++i)
            walkType(types_ + 2 + i * 8);
        return std::move(entries_);
    }

private:
    bool fits(Int at, Int length) const { return at >= 0 && length >= 0 && at <= size_ && length <= size_ - at; }

    /// An unsigned number of `length` bytes; 0 if it does not lie in the image.
    Int read(Int at, int length) const
    {
        if (!fits(at, length))
            return 0;
        Int value = 0;
        for (int i = 0; i < length; ++i)
            value = value << 8 | image_[static_cast<std::size_t>(at + i)];
        return value;
    }

    void walkType(Int record)
    {
        const auto type = static_cast<OSType>(read(record, 4));
        const Int count = read(record + 4, 2) + 1, list = types_ + read(record + 6, 2);
        for (Int i = 0; i < count && fits(list + i * 12, 12); ++i) {
            // Every reference of a sound file has 12 bytes of its own, and every resource its own data: lists and data
            // that lie over each other would else make a small file into gigabytes.
            if (I(entries_.size()) >= size_ / 12)
                return;
            walkReference(type, list + i * 12);
        }
    }

    void walkReference(OSType type, Int at)
    {
        const Int data = data_ + read(at + 5, 3), length = read(data, 4);
        if (!fits(data, 4) || !fits(data + 4, length) || taken_ + length > 4 * size_)
            return;
        ResourceFile::Entry entry{type, static_cast<std::int16_t>(read(at, 2)), false, {}, read(at + 4, 1), {}};
        if (const Int offset = read(at + 2, 2); offset != 0xFFFF)
            takeName(entry, names_ + offset);
        entry.data = copy(data + 4, length);
        taken_ += length;
        entries_.push_back(std::move(entry));
    }

    void takeName(ResourceFile::Entry& entry, Int at) const
    {
        const Int length = read(at, 1);
        if (!fits(at, 1) || !fits(at + 1, length))
            return;
        entry.named = true;
        entry.name = copy(at + 1, length);
    }

    Bytes copy(Int at, Int length) const
    {
        const auto part = image_.subspan(static_cast<std::size_t>(at), static_cast<std::size_t>(length));
        return {part.begin(), part.end()};
    }

    std::span<const std::uint8_t> image_;
    Int size_, data_ = 0, types_ = 0, names_ = 0;
    Int taken_ = 0; // bytes of data copied so far
    std::vector<ResourceFile::Entry> entries_;
};

/// What a loaded resource is known by.
std::string keyOf(OSType type, Int id, Int refNum)
{
    return std::to_string(type) + '/' + std::to_string(id) + '/' + std::to_string(refNum);
}

AtRunStart sFresh([] { ResourceManager::shared().reset(); });

} // namespace

std::vector<ResourceFile::Entry> ResourceFile::parse(std::span<const std::uint8_t> image)
{
    return MapWalk(image).entries();
}

std::unique_ptr<ResourceFile> ResourceFile::read(const std::string& path, Int refNum)
{
    const std::optional<Bytes> image = contents(path);
    if (!image)
        return nullptr;
    auto file = std::make_unique<ResourceFile>();
    file->path = path;
    file->refNum = refNum;
    file->entries = parse(*image);
    return file;
}

const ResourceFile::Entry* ResourceFile::find(OSType type, Int id) const
{
    const auto it =
        std::find_if(entries.begin(), entries.end(), [&](const Entry& e) { return e.type == type && e.id == id; });
    return it == entries.end() ? nullptr : &*it;
}

ResourceManager& ResourceManager::shared()
{
    static auto& manager = *new ResourceManager; // leaked: other threads may still ask at the end
    return manager;
}

void ResourceManager::reset()
{
    const std::lock_guard lock(lock_);
    files_.clear();
    loaded_.clear();
    current = resError = 0;
}

Int ResourceManager::open(const std::string& path)
{
    const std::lock_guard lock(lock_);
    auto file = ResourceFile::read(path, I(files_.size()) + 2);
    if (!file) {
        resError = -43;
        return -1;
    }
    current = file->refNum;
    files_.push_back(std::move(file));
    return current;
}

std::vector<const ResourceFile*> ResourceManager::searchOrder(bool onlyCurrent) const
{
    std::vector<const ResourceFile*> order;
    std::size_t first = files_.size(); // one past the file where the search begins
    for (std::size_t i = 0; i < files_.size(); ++i)
        if (files_[i]->refNum == current)
            first = i + 1;
    for (std::size_t i = first; i-- > 0;) {
        order.push_back(files_[i].get());
        if (onlyCurrent)
            break;
    }
    return order;
}

Handle ResourceManager::get(OSType type, Int id, bool onlyCurrent)
{
    const std::lock_guard lock(lock_);
    for (const ResourceFile* file : searchOrder(onlyCurrent)) {
        const ResourceFile::Entry* entry = file->find(type, id);
        if (!entry)
            continue;
        resError = noErr;
        Handle& h = loaded_[keyOf(type, id, file->refNum)];
        if (!h) {
            h = std::make_shared<Block>(entry->data);
            h->resType = type;
            h->resID = id;
        }
        return h;
    }
    resError = resNotFound;
    return nullptr;
}

void ResourceManager::release(const Handle& h)
{
    const std::lock_guard lock(lock_);
    std::erase_if(loaded_, [&](const auto& item) { return item.second == h; });
}

std::vector<std::pair<OSType, Int>> ResourceManager::inMemory()
{
    const std::lock_guard lock(lock_);
    std::vector<std::pair<OSType, Int>> found;
    for (const ResourceFile* file : searchOrder(false))
        for (const ResourceFile::Entry& entry : file->entries)
            if (loaded_.contains(keyOf(entry.type, entry.id, file->refNum)))
                found.emplace_back(entry.type, entry.id);
    std::sort(found.begin(), found.end());
    return found;
}

bool ResourceManager::exists(OSType type, Int id) { return size(type, id) >= 0; }

Int ResourceManager::size(OSType type, Int id)
{
    const std::lock_guard lock(lock_);
    for (const ResourceFile* file : searchOrder(false))
        if (const ResourceFile::Entry* entry = file->find(type, id))
            return I(entry->data.size());
    return -1;
}

std::vector<std::pair<Int, Bytes>> ResourceManager::named(OSType type)
{
    const std::lock_guard lock(lock_);
    std::vector<std::pair<Int, Bytes>> found;
    for (const auto& file : files_)
        for (const ResourceFile::Entry& entry : file->entries)
            if (entry.type == type && entry.named)
                found.emplace_back(entry.id, entry.name);
    return found;
}

std::vector<Int> ResourceManager::ids(OSType type, bool onlyCurrent)
{
    const std::lock_guard lock(lock_);
    std::vector<Int> found;
    for (const ResourceFile* file : searchOrder(onlyCurrent))
        for (const ResourceFile::Entry& entry : file->entries)
            if (entry.type == type)
                found.push_back(entry.id);
    return found;
}

std::vector<OSType> ResourceManager::types(bool onlyCurrent)
{
    const std::lock_guard lock(lock_);
    std::vector<OSType> found;
    for (const ResourceFile* file : searchOrder(onlyCurrent))
        for (const ResourceFile::Entry& entry : file->entries)
            if (std::find(found.begin(), found.end(), entry.type) == found.end())
                found.push_back(entry.type);
    return found;
}

bool ResourceManager::idOfName(OSType type, std::span<const std::uint8_t> name, Int& id)
{
    const std::lock_guard lock(lock_);
    for (const ResourceFile* file : searchOrder(false))
        for (const ResourceFile::Entry& entry : file->entries)
            if (entry.type == type && entry.named
                && std::equal(entry.name.begin(), entry.name.end(), name.begin(), name.end())) {
                id = entry.id;
                return true;
            }
    return false;
}

Handle GetResource(OSType type, Int id) { return ResourceManager::shared().get(type, id); }

Handle Get1Resource(OSType type, Int id) { return ResourceManager::shared().get(type, id, true); }

Handle GetNamedResource(OSType type, std::span<const std::uint8_t> name)
{
    Int id = 0;
    return ResourceManager::shared().idOfName(type, name, id) ? GetResource(type, id) : nullptr;
}

void ReleaseResource(const Handle& h)
{
    if (h)
        ResourceManager::shared().release(h);
}

void DetachResource(const Handle& h)
{
    if (!h)
        return;
    ResourceManager::shared().release(h);
    h->resType = 0;
}

Int ResError() { return ResourceManager::shared().resError; }

Int CurResFile() { return ResourceManager::shared().current; }

void UseResFile(Int refNum)
{
    if (refNum >= 1)
        ResourceManager::shared().current = refNum;
}

Int CountResources(OSType type) { return I(ResourceManager::shared().ids(type, false).size()); }

Int Count1Resources(OSType type) { return I(ResourceManager::shared().ids(type, true).size()); }

Handle Get1IndResource(OSType type, Int index)
{
    const std::vector<Int> ids = ResourceManager::shared().ids(type, true);
    return index >= 1 && index <= I(ids.size()) ? Get1Resource(type, ids[static_cast<std::size_t>(index - 1)])
                                                : nullptr;
}

Int Count1Types() { return I(ResourceManager::shared().types(true).size()); }

void Get1IndType(OSType& type, Int index)
{
    const std::vector<OSType> types = ResourceManager::shared().types(true);
    type = index >= 1 && index <= I(types.size()) ? types[static_cast<std::size_t>(index - 1)] : 0;
}

Int SizeRsrc(const Handle& h) { return h ? h->count() : -1; }

Int MaxSizeRsrc(const Handle& h) { return SizeRsrc(h); }

void GetResInfo(const Handle& h, Int& id, OSType& type, Str255& name)
{
    if (!h)
        return;
    id = h->resID;
    type = h->resType;
    name = {0};
}

void AddResource(const Handle& h, OSType type, Int id, const Str255&)
{
    if (!h)
        return;
    h->resType = type;
    h->resID = id;
}

Str255 GetString(Int id)
{
    const Handle h = GetResource(os("STR "), id);
    if (!h)
        return {};
    return h->count() > 0 ? h->pstr(0) : Str255{0};
}

void GetIndString(Str255& s, Int id, Int index)
{
    s = {0};
    const Handle h = GetResource(os("STR#"), id);
    if (!h || h->count() < 2 || index < 1 || index > h->s16(0))
        return;
    Int at = 2;
    for (Int i = 1; i < index && at < h->count(); ++i)
        at += 1 + h->u8(at);
    if (at < h->count())
        s = h->pstr(at);
}

} // namespace MacToolbox
