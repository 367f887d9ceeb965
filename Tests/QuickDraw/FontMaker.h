#pragma once

#include "MacToolbox/Data/Resources.h"

#include <filesystem>
#include <fstream>
#include <initializer_list>

#include <unistd.h>

// Font resources made by hand, and a resource file to find them in.

namespace FontMaker {

using namespace MacToolbox;

struct Glyph {
    Int offset = 0, advance = 0;   // -1 and -1 for none
    std::vector<std::string> rows; // '#' is ink
};

/// A FONT or NFNT resource. The last glyph is the one for missing characters.
struct Font {
    Int firstChar = 0, kernMax = 0, ascent = 0, descent = 0, leading = 0, widMax = 0;
    std::vector<Glyph> glyphs;

    Bytes bytes() const
    {
        const Int height = ascent + descent, count = I(glyphs.size());
        std::vector<std::string> image(static_cast<std::size_t>(height));
        ByteWriter loc, ow;
        for (const Glyph& g : glyphs) {
            loc.u16(height ? I(image[0].size()) : 0);
            ow.u16(g.advance < 0 ? -1 : g.offset << 8 | g.advance);
            for (std::size_t y = 0; y < g.rows.size(); ++y)
                image[y] += g.rows[y];
        }
        loc.u16(height ? I(image[0].size()) : 0);
        ow.u16(-1);
        const Int words = height ? (I(image[0].size()) + 15) / 16 : 0;
        ByteWriter out;
        for (const Int word : {Int{0x9000}, firstChar, firstChar + count - 2, widMax, kernMax, -descent, widMax, height,
                 (10 + words * height * 2 + I(loc.bytes.size())) / 2 - 0, ascent, descent, leading, words})
            out.u16(word);
        for (std::string& row : image) {
            row.resize(static_cast<std::size_t>(words * 16), '.');
            for (std::size_t x = 0; x < row.size(); x += 8) {
                Int byte = 0;
                for (std::size_t i = 0; i < 8; ++i)
                    byte = byte << 1 | (row[x + i] == '#');
                out.u8(byte);
            }
        }
        out.raw(loc.bytes);
        out.raw(ow.bytes);
        return out.bytes;
    }
};

/// A FOND of size entries: point size, style, id of the strike.
inline Bytes fond(const std::vector<std::array<Int, 3>>& entries)
{
    ByteWriter out;
    out.zeros(52);
    out.u16(I(entries.size()) - 1);
    for (const auto& entry : entries)
        for (const Int word : entry)
            out.u16(word);
    return out.bytes;
}

/// Resource bytes by type and id, opened as the current resource file for as long as this lives.
class OpenFile {
public:
    struct Entry {
        std::pair<OSType, Int> key;
        Bytes bytes;
        std::string name = {};
    };

    OpenFile(std::initializer_list<Entry> contents)
    {
        ByteWriter data, types, references, names;
        const Int typeListSize = 2 + I(contents.size()) * 8; // one entry a resource: types may repeat
        types.u16(I(contents.size()) - 1);
        for (const auto& [key, bytes, name] : contents) {
            types.u32(key.first), types.u16(0), types.u16(typeListSize + I(references.bytes.size()));
            references.u16(key.second), references.u16(name.empty() ? 0xFFFF : I(names.bytes.size()));
            references.u32(I(data.bytes.size())), references.u32(0);
            data.u32(I(bytes.size())), data.raw(bytes);
            if (!name.empty())
                names.raw(pstr(name));
        }
        ByteWriter out;
        for (const Int word : {Int{256}, 256 + I(data.bytes.size()), I(data.bytes.size()),
                 28 + I(types.bytes.size()) + I(references.bytes.size()) + I(names.bytes.size())})
            out.u32(word);
        out.pad(256);
        out.raw(data.bytes);
        out.zeros(24);
        out.u16(28), out.u16(28 + I(types.bytes.size() + references.bytes.size()));
        out.raw(types.bytes), out.raw(references.bytes), out.raw(names.bytes);
        const auto path = std::filesystem::temp_directory_path() / ("fonts-" + std::to_string(::getpid()) + ".rsrc");
        std::ofstream(path, std::ios::binary)
            .write(reinterpret_cast<const char*>(out.bytes.data()), I(out.bytes.size()));
        ResourceManager::shared().reset();
        ResourceManager::shared().open(path.string());
        std::filesystem::remove(path);
    }
    ~OpenFile() { ResourceManager::shared().reset(); }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
};

} // namespace FontMaker
