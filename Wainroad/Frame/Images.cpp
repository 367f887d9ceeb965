#include "Wainroad/Frame/Images.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/QuickDraw/CopyBits.h"
#include "Wainroad/Errors/Errors.h"

#include <algorithm>
#include <array>

namespace Wainroad {

static constexpr Int kFrameHeader = 18;         // bytes before the packed bits
static constexpr Int kMostPixelBytes = 1 << 20; // of one frame; the screen has 21888

bool gMirror = false;
static const AtRunStart sRenew([] { gMirror = false; });

// ---- Packed bits

/// Unpacks one column of bytes into every `rowBytes`-th byte from `out` on. @return Where the next column begins.
static Int unpackColumn(std::span<const std::uint8_t> in, Int at, std::uint8_t* out, Int rowBytes, Int height)
{
    Int row = 0;
    const auto put = [&](std::uint8_t byte) {
        if (row < height)
            out[rowBytes * row++] = byte;
    };
    const auto next = [&] { return at < I(in.size()) ? in[static_cast<std::size_t>(at)] : std::uint8_t{0}; };
    while (row < height && at < I(in.size())) {
        const Int control = static_cast<std::int8_t>(next());
        ++at;
        if (control > 0) {
            for (Int i = 0; i < control; ++i, ++at)
                put(next());
        } else if (control >= -64) {
            if (control == 0)
                continue;
            const std::uint8_t byte = next();
            ++at;
            for (Int i = 0; i < -control; ++i)
                put(byte);
        } else {
            const std::uint8_t first = next();
            ++at;
            const std::uint8_t second = next();
            ++at;
            for (Int i = 0; i < -control - 64; ++i)
                put(first), put(second);
        }
    }
    return at;
}

void UnpackFrame(const Handle& imag, Int& position, BitMap& bitmap)
{
    bitmap = {};
    if (!imag || position < 0 || position + kFrameHeader > imag->count())
        return;
    const std::span<const std::uint8_t> all = imag->bytes;
    ByteReader in(all, position);
    const Int length = in.s32();
    in.skip(4);
    const Int rowBytes = in.s16();
    Rect bounds;
    bounds.top = in.s16(), bounds.left = in.s16(), bounds.bottom = in.s16(), bounds.right = in.s16();
    const Int end = length < kFrameHeader ? imag->count() : std::min(imag->count(), position + length);
    position = in.pos;
    const Int height = bounds.height();
    if (rowBytes <= 0 || bounds.isEmpty() || (bounds.width() + 7) / 8 > rowBytes || rowBytes * height > kMostPixelBytes)
        return;
    const Handle bits = NewHandle(rowBytes * height);
    const auto record = all.first(static_cast<std::size_t>(end));
    for (Int column = 0; column < rowBytes; ++column)
        position = unpackColumn(record, position, bits->bytes.data() + column, rowBytes, height);
    if (gMirror)
        MirrorBits(bits, rowBytes, height, bounds.width());
    bitmap = BitMap(bits, 0, rowBytes, bounds);
}

static const std::array<std::uint8_t, 256>& bitReverse()
{
    static const std::array<std::uint8_t, 256> table = [] {
        std::array<std::uint8_t, 256> reversed{};
        for (unsigned byte = 0; byte < 256; ++byte)
            for (unsigned bit = 0; bit < 8; ++bit)
                if (byte >> bit & 1)
                    reversed[byte] = static_cast<std::uint8_t>(reversed[byte] | 0x80U >> bit);
        return reversed;
    }();
    return table;
}

/// Shifts a row to the left by up to 7 bits.
static void shiftLeft(std::span<std::uint8_t> row, Int by)
{
    for (std::size_t i = 0; i < row.size(); ++i) {
        const unsigned next = i + 1 < row.size() ? row[i + 1] : 0U;
        row[i] = static_cast<std::uint8_t>(row[i] << by | next >> (8 - by));
    }
}

void MirrorBits(const Handle& bits, Int rowBytes, Int height, Int width)
{
    const Int used = rowBytes == (width + 7) / 8 ? rowBytes : rowBytes - 1;
    if (!bits || used < 1 || height < 1 || bits->count() < rowBytes * height)
        return;
    for (Int v = 0; v < height; ++v) {
        const std::span<std::uint8_t> row(bits->bytes.data() + v * rowBytes, static_cast<std::size_t>(used));
        std::reverse(row.begin(), row.end());
        for (std::uint8_t& byte : row)
            byte = bitReverse()[byte];
        if (width % 8 != 0)
            shiftLeft(row, 8 - width % 8);
    }
}

// ---- Lists

/// The offset of frame `n`, or of the last one before it that can be reached; -1 if there is none.
static Int frameOffset(const Block& imag, Int n)
{
    if (imag.count() < 2 + kFrameHeader)
        return -1;
    const Int last = std::min(std::max<Int>(n, 0), std::max<Int>(imag.s16(0), 1) - 1);
    Int at = 2;
    for (Int i = 0; i < last; ++i) {
        const Int length = imag.s32(at);
        if (length < kFrameHeader || at + length + kFrameHeader > imag.count())
            break;
        at += length;
    }
    return at;
}

void LoadAllFrames(ImageList& list)
{
    list.frames.clear();
    for (Int i = 0; i < list.count; ++i) {
        const Handle imag = GetResource(os("Imag"), list.resID);
        if (!imag)
            Fatal(ResError(), "ImagToBitMap");
        BitMap frame;
        if (Int at = frameOffset(*imag, list.first + i); at >= 0)
            UnpackFrame(imag, at, frame);
        list.frames.push_back(frame);
    }
}

ImageListRef LoadImages(Int resID, Int first, Int count)
{
    auto list = std::make_shared<ImageList>();
    list->resID = resID;
    list->colorID = resID + 10000;
    list->first = first, list->count = count;
    LoadAllFrames(*list);
    return list;
}

void DrawImageFrame(const ImageList* list, Int frame, const Rect& rect, Int mode)
{
    if (!list || list->depth == 0 || frame < 0 || frame >= I(list->frames.size()))
        return;
    const BitMap image = list->frame(frame);
    Rect to = rect;
    if (to.bottom <= to.top)
        to.bottom = to.top + image.bounds.height();
    if (to.right <= to.left)
        to.right = to.left + image.bounds.width();
    CopyBits(image, thePort->portBits, image.bounds, to, mode);
}

// ---- Sets

void MakeMask(const BitMaps& frames, Int index, BitMaps& masks)
{
    const BitMap frame = frames.at(index);
    if (!frame.baseAddr || frame.bounds.isEmpty()) {
        masks.set(index, {});
        return;
    }
    Rect whole = frame.bounds;
    whole.right = whole.left + frame.rowBytes * 8;
    const BitMap wide(NewHandle(frame.rowBytes * whole.height()), 0, frame.rowBytes, whole);
    CalcMask(frame, wide, whole);
    masks.set(index, BitMap(wide.baseAddr, 0, frame.rowBytes, frame.bounds));
}

void DisposeBitMaps(BitMaps& set, Int first, Int count)
{
    for (Int n = first; n < first + count; ++n)
        set.set(n, {});
}

} // namespace Wainroad
