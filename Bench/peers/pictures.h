// The inputs as other libraries want them.
#pragma once

#include "peers.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>

namespace peers {

// A tile big enough that any rectangle finds its pattern at its own phase without repeating.
inline Mono tiled(const std::uint8_t* pattern)
{
    Mono m(kScreenW, kScreenH);
    for (int y = 0; y < m.h; y++)
        for (int x = 0; x < m.w; x++)
            m.set(x, y, pattern[y & 7] >> (7 - (x & 7)) & 1);
    return m;
}
inline Mono glyphPicture(int c)
{
    Mono m(8, 12);
    for (int y = 0; y < 12; y++)
        for (int x = 0; x < 8; x++)
            m.set(x, y, glyph(c).rows[y] >> (7 - x) & 1);
    return m;
}
inline Mono patternPicture(const std::uint8_t* p)
{
    Mono m(8, 8);
    for (int y = 0; y < 8; y++)
        for (int x = 0; x < 8; x++)
            m.set(x, y, p[y] >> (7 - (x & 7)) & 1);
    return m;
}
inline const Mono& sourceOf(const BlitOp& op) { return op.source == Source::icon ? icon() : picture(); }

} // namespace peers
