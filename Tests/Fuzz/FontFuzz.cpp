// A font family and one of its strikes: found, measured and drawn in the styles that the input asks for.
//
// The input: style, size, transfer mode, length of the family (a byte each), the family, then the strike.

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "Tests/QuickDraw/FontMaker.h"

using namespace MacToolbox;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 4)
        return 0;
    const std::span<const std::uint8_t> input(data, size);
    const auto rest = input.subspan(4);
    const auto family = rest.first(std::min<std::size_t>(input[3], rest.size()));
    const auto strike = rest.subspan(family.size());
    const Bytes familyBytes(family.begin(), family.end()), strikeBytes(strike.begin(), strike.end());
    ByteReader entry(familyBytes, 58); // the strike has the number that the family's first entry names

    startRunAfresh();
    const FontMaker::OpenFile file{{{os("FOND"), 3}, familyBytes}, {{os("NFNT"), entry.s16()}, strikeBytes},
        {{os("FONT"), 3 * 128 + 12}, strikeBytes}};
    const auto port = std::make_shared<GrafPort>(Rect{-3, -5, 40, 60});
    const PortScope scope(port);
    TextFont(3), TextSize(input[1]), TextMode(input[2]);
    Bytes all(256);
    for (std::size_t c = 0; c < all.size(); ++c)
        all[c] = static_cast<std::uint8_t>(c);
    for (const Int face : {Int{input[0]}, Int{normal}}) {
        TextFace(face);
        FontInfo info;
        GetFontInfo(info);
        for (const Int first : {0, 60, 120, 250}) {
            MoveTo(0, 20);
            DrawText(all, first, 6);
            if (port->pnLoc.h != TextWidth(all, first, 6))
                __builtin_trap();
        }
    }
    return 0;
}
