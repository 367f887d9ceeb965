#include "Tools/rsrc/Forms.h"

namespace Rsrc {

namespace {

constexpr Int kIconSide = 32, kCursorSide = 16, kKeyHeight = 46, kKeyWidth = 42, kKeyRowBytes = 6;
constexpr Int kKeyUp = 1256, kKeyDown = 1532, kKeySize = kKeyHeight * kKeyRowBytes;

/// The file of an entry that is a name alone or has it under "png".
Source pngOf(const Source& entry) { return entry.isScalar() ? entry : entry.at("png"); }

std::string pngName(const char* type, Int id) { return std::string(type) + std::to_string(id) + ".png"; }

Bytes compileIcon(const Source& entry, Int)
{
    if (entry.isMap())
        entry.allow({"png"});
    return readBits(pngOf(entry), kIconSide, kIconSide).rows;
}

std::optional<std::string> showIcon(Int id, const Bytes& data)
{
    if (data.size() != 128)
        return std::nullopt;
    return ' ' + pngName("ICON", id);
}

std::optional<Bits> pictureOfIcon(const Bytes& data)
{
    if (data.size() < 128)
        return std::nullopt;
    return bitsFrom(data, 4, kIconSide, kIconSide);
}

Bytes compileCursor(const Source& entry, Int)
{
    entry.allow({"png", "mask", "hot"});
    const PngImage image = readPng(entry.at("png"));
    const Bits data = readBits(entry.at("png"), kCursorSide, kCursorSide);
    const Bits mask = entry.find("mask") ? readBits(entry.at("mask"), kCursorSide, kCursorSide)
        : image.hasTransparency          ? image.opaque
                                         : data;
    const Point hot = entry.at("hot").point();
    ByteWriter out;
    out.raw(data.rows);
    out.raw(mask.rows);
    out.u16(hot.v);
    out.u16(hot.h);
    return out.bytes;
}

std::optional<std::string> showCursor(Int id, const Bytes& data)
{
    if (data.size() != 68)
        return std::nullopt;
    const Block b(data);
    return " {png: " + pngName("CURS", id) + ", hot: [" + std::to_string(b.s16(64)) + ", " + std::to_string(b.s16(66))
        + "]}";
}

std::optional<Bits> pictureOfCursor(const Bytes& data)
{
    if (data.size() < 68)
        return std::nullopt;
    Bits both(kCursorSide, 2 * kCursorSide); // the cursor, and its mask beside it
    both.paint(bitsFrom(data, 2, kCursorSide, kCursorSide), 0, 0);
    both.paint(bitsFrom(std::span(data).subspan(32), 2, kCursorSide, kCursorSide), 0, kCursorSide);
    return both;
}

Bytes compileKeys(const Source& entry, Int)
{
    entry.allow({"up", "down"});
    ByteWriter out;
    out.pad(kKeyUp);
    out.raw(readBits(entry.at("up"), kKeyHeight, kKeyWidth).rows);
    out.raw(readBits(entry.at("down"), kKeyHeight, kKeyWidth).rows);
    return out.bytes;
}

std::optional<Bits> pictureOfKeys(const Bytes& data)
{
    if (I(data.size()) < kKeyDown + kKeySize)
        return std::nullopt;
    Bits both(kKeyHeight, 2 * kKeyWidth);
    both.paint(bitsFrom(std::span(data).subspan(kKeyUp), kKeyRowBytes, kKeyHeight, kKeyWidth), 0, 0);
    both.paint(bitsFrom(std::span(data).subspan(kKeyDown), kKeyRowBytes, kKeyHeight, kKeyWidth), 0, kKeyWidth);
    return both;
}

std::optional<std::string> showKeys(Int, const Bytes& data)
{
    if (I(data.size()) != kKeyDown + kKeySize)
        return std::nullopt;
    return " {up: key-up.png, down: key-down.png}";
}

// Pictures.

constexpr Int kVersion1 = 0x1101, kVersion2 = 0x0011;
constexpr Int kOpClip = 0x01, kOpBits = 0x90, kOpPackedBits = 0x98, kOpEnd = 0xFF;
constexpr Int kShortestPackedRow = 8, kLongestByteCount = 250;

/// Runs of equal bytes, and literal bytes between them.
Bytes packRow(std::span<const std::uint8_t> row)
{
    ByteWriter out;
    std::size_t at = 0, literal = 0;
    const auto flush = [&](std::size_t end) {
        while (literal < end) {
            const std::size_t n = std::min<std::size_t>(end - literal, 128);
            out.u8(I(n) - 1);
            out.raw(row.subspan(literal, n));
            literal += n;
        }
    };
    while (at < row.size()) {
        std::size_t run = 1;
        while (at + run < row.size() && run < 128 && row[at + run] == row[at])
            ++run;
        if (run >= 3) {
            flush(at);
            out.u8(1 - I(run));
            out.u8(row[at]);
            literal = at + run;
        }
        at += run;
    }
    flush(row.size());
    return out.bytes;
}

Bytes unpackRow(ByteReader& in, Int packed, Int length)
{
    const Int end = in.pos + packed;
    Bytes row;
    while (in.pos < end && I(row.size()) < length) {
        const Int c = in.s8();
        if (c >= 0) {
            const Bytes literal = in.raw(c + 1);
            row.insert(row.end(), literal.begin(), literal.end());
        } else if (c != -128) {
            row.insert(row.end(), static_cast<std::size_t>(1 - c), static_cast<std::uint8_t>(in.u8()));
        }
    }
    in.pos = end;
    row.resize(static_cast<std::size_t>(length));
    return row;
}

void putRect(ByteWriter& out, const Rect& r)
{
    for (const Int side : {r.top, r.left, r.bottom, r.right})
        out.u16(side);
}

Bytes pictureData(const Bits& bits, Point origin, bool version2)
{
    const Rect frame{origin.v, origin.h, origin.v + bits.height, origin.h + bits.width};
    ByteWriter out;
    const auto opcode = [&](Int code) { version2 ? out.u16(code) : out.u8(code); };
    out.u16(0); // the size, put in at the end
    putRect(out, frame);
    out.u16(version2 ? kVersion2 : kVersion1);
    if (version2) {
        out.u16(0x02FF);
        out.u16(0x0C00);
        out.u32(-1);
        out.zeros(20);
    }
    opcode(kOpClip);
    out.u16(10);
    putRect(out, frame);
    const Int rowBytes = bits.rowBytes();
    const bool packed = rowBytes >= kShortestPackedRow;
    opcode(packed ? kOpPackedBits : kOpBits);
    out.u16(rowBytes);
    for (int i = 0; i < 3; ++i) // bounds, source and destination
        putRect(out, frame);
    out.u16(0); // copies
    for (Int v = 0; v < bits.height; ++v) {
        const auto row =
            std::span(bits.rows).subspan(static_cast<std::size_t>(v * rowBytes), static_cast<std::size_t>(rowBytes));
        const Bytes stored = packed ? packRow(row) : Bytes(row.begin(), row.end());
        if (packed)
            rowBytes > kLongestByteCount ? out.u16(I(stored.size())) : out.u8(I(stored.size()));
        out.raw(stored);
    }
    if (version2)
        out.zeros(out.bytes.size() % 2);
    opcode(kOpEnd);
    Block size(out.bytes);
    size.set16(0, size.count());
    return size.bytes;
}

Bytes compilePicture(const Source& entry, Int)
{
    if (entry.isMap())
        entry.allow({"png", "origin", "version"});
    const Point origin = entry.find("origin") ? entry.at("origin").point() : Point{};
    const bool version2 = entry.isScalar() || entry.number("version", 1, 2, 2) == 2;
    const Bits bits = readPng(pngOf(entry)).black;
    if (bits.height + origin.v > 32767 || bits.width + origin.h > 32767)
        pngOf(entry).fail("the picture is too large");
    return pictureData(bits, origin, version2);
}

/// The image of a picture of the one kind that this program makes.
std::optional<Bits> pictureOfPicture(const Bytes& data)
{
    if (data.size() < 14)
        return std::nullopt;
    const Block b(data);
    const bool version2 = b.u16(10) == kVersion2;
    ByteReader in(data, version2 ? 40 : 12);
    const auto opcode = [&] { return version2 ? in.u16() : in.u8(); };
    if (opcode() != kOpClip)
        return std::nullopt;
    in.skip(in.u16() - 2);
    const Int op = opcode(), rowBytes = in.u16() & 0x3FFF;
    if (op != kOpBits && op != kOpPackedBits)
        return std::nullopt;
    const Int top = in.s16(), left = in.s16(), height = in.s16() - top, width = in.s16() - left;
    // A packed byte stands for at most 128 of the picture.
    if (height < 0 || width < 0 || rowBytes < Bits::rowBytesOf(width) || height * rowBytes > 128 * I(data.size()))
        return std::nullopt;
    in.skip(18);
    Bytes rows;
    for (Int v = 0; v < height; ++v) {
        const bool packed = op == kOpPackedBits && rowBytes >= kShortestPackedRow;
        const Int length = !packed ? rowBytes : rowBytes > kLongestByteCount ? in.u16() : in.u8();
        const Bytes row = packed ? unpackRow(in, length, rowBytes) : in.raw(length);
        rows.insert(rows.end(), row.begin(), row.end());
    }
    return bitsFrom(rows, rowBytes, height, width);
}

std::optional<std::string> showPicture(Int id, const Bytes& data)
{
    const auto bits = pictureOfPicture(data);
    if (!bits)
        return std::nullopt;
    const Block b(data);
    std::string out = " {png: " + pngName("PICT", id);
    if (b.s16(2) != 0 || b.s16(4) != 0)
        out += ", origin: [" + std::to_string(b.s16(2)) + ", " + std::to_string(b.s16(4)) + ']';
    return out + (b.u16(10) == kVersion2 ? "}" : ", version: 1}");
}

} // namespace

std::vector<Form> pictureForms()
{
    return {{"ICON", compileIcon, showIcon, pictureOfIcon}, {"CURS", compileCursor, showCursor, pictureOfCursor},
        {"CDEF", compileKeys, showKeys, pictureOfKeys}, {"PICT", compilePicture, showPicture, pictureOfPicture}};
}

} // namespace Rsrc
