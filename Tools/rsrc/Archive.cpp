#include "Tools/rsrc/Archive.h"

#include <cstdio>
#include <fstream>

namespace Rsrc {

namespace {

constexpr Int kHeaderSize = 256, kMapHeaderSize = 28;

} // namespace

Bytes Archive::image() const
{
    std::map<OSType, Int> counts;
    for (const auto& [key, item] : items)
        ++counts[key.first];
    ByteWriter data, types, references, names;
    types.u16(I(counts.size()) - 1);
    const Int typeListSize = 2 + 8 * I(counts.size());
    std::optional<OSType> last;
    for (const auto& [key, item] : items) {
        if (key.first != last) {
            types.u32(key.first);
            types.u16(counts[key.first] - 1);
            types.u16(typeListSize + I(references.bytes.size()));
            last = key.first;
        }
        references.u16(key.second);
        references.u16(item.name ? I(names.bytes.size()) : 0xFFFF);
        references.u32(I(data.bytes.size())); // attributes 0, then the offset in three bytes
        references.u32(0);
        if (item.name) {
            names.u8(I(item.name->size()));
            names.raw(*item.name);
        }
        data.u32(I(item.data.size()));
        data.raw(item.data);
    }
    const Int map = kHeaderSize + I(data.bytes.size());
    const Int nameList = kMapHeaderSize + typeListSize + I(references.bytes.size());
    ByteWriter out;
    const auto header = [&] {
        out.u32(kHeaderSize);
        out.u32(map);
        out.u32(I(data.bytes.size()));
        out.u32(nameList + I(names.bytes.size()));
    };
    header();
    out.pad(kHeaderSize);
    out.raw(data.bytes);
    header();
    out.zeros(8);
    out.u16(kMapHeaderSize);
    out.u16(nameList);
    out.raw(types.bytes);
    out.raw(references.bytes);
    out.raw(names.bytes);
    out.pad(map + 30);
    return out.bytes;
}

bool Archive::write(const std::string& path) const
{
    const Bytes bytes = image();
    const std::string fresh = path + ".new";
    std::ofstream out(fresh, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (out && std::rename(fresh.c_str(), path.c_str()) == 0)
        return true;
    std::remove(fresh.c_str());
    return false;
}

} // namespace Rsrc
