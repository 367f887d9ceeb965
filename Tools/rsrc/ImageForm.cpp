#include "Tools/rsrc/Forms.h"

namespace Rsrc {

namespace {

constexpr Int kFrameHeader = 18, kLongestLiteral = 127, kLongestRun = 64, kMostPairs = 64;

/// One byte column: equal bytes, alternating pairs, and literal bytes between them.
void packColumn(ByteWriter& out, std::span<const std::uint8_t> column)
{
    std::size_t at = 0, literal = 0;
    const auto flush = [&](std::size_t end) {
        while (literal < end) {
            const std::size_t n = std::min<std::size_t>(end - literal, kLongestLiteral);
            out.u8(I(n));
            out.raw(column.subspan(literal, n));
            literal += n;
        }
    };
    while (at < column.size()) {
        std::size_t run = 1;
        while (at + run < column.size() && run < kLongestRun && column[at + run] == column[at])
            ++run;
        std::size_t pairs = 0;
        while (at + 2 * pairs + 1 < column.size() && pairs < kMostPairs && column[at + 2 * pairs] == column[at]
            && column[at + 2 * pairs + 1] == column[at + 1])
            ++pairs;
        if (run >= 3 || (run == column.size() - at && run == 2)) {
            flush(at);
            out.u8(-I(run));
            out.u8(column[at]);
            literal = at += run;
        } else if (pairs >= 3) {
            flush(at);
            out.u8(-I(kLongestRun + pairs));
            out.raw(column.subspan(at, 2));
            literal = at += 2 * pairs;
        } else {
            ++at;
        }
    }
    flush(column.size());
}

/// Fills `column`. @return False if the bytes of the record run out.
bool unpackColumn(ByteReader& in, Int end, Bytes& column)
{
    std::size_t filled = 0;
    const auto add = [&](Int byte) {
        if (filled < column.size())
            column[filled++] = static_cast<std::uint8_t>(byte);
    };
    while (filled < column.size()) {
        if (in.pos >= end)
            return false;
        const Int c = in.s8();
        if (c > 0) {
            for (Int i = 0; i < c; ++i)
                add(in.u8());
        } else if (c < 0 && c >= -kLongestRun) {
            const Int byte = in.u8();
            for (Int i = 0; i < -c; ++i)
                add(byte);
        } else if (c < 0) {
            const Int even = in.u8(), odd = in.u8();
            for (Int i = 0; i < -c - kLongestRun; ++i)
                add(even), add(odd);
        }
        if (in.pos > end)
            return false;
    }
    return true;
}

Bytes frameRecord(const Bits& bits, Point origin)
{
    ByteWriter packed;
    for (Int x = 0; x < bits.rowBytes(); ++x) {
        Bytes column;
        for (Int v = 0; v < bits.height; ++v)
            column.push_back(bits.rows[static_cast<std::size_t>(v * bits.rowBytes() + x)]);
        packColumn(packed, column);
    }
    ByteWriter out;
    out.u32(kFrameHeader + I(packed.bytes.size()));
    out.u32(0);
    out.u16(bits.rowBytes());
    for (const Int side : {origin.v, origin.h, origin.v + bits.height, origin.h + bits.width})
        out.u16(side);
    out.raw(packed.bytes);
    return out.bytes;
}

Bytes compileFrame(const Source& source)
{
    if (source.isScalar())
        return frameRecord(readPng(source).black, {});
    source.allow({"png", "size", "origin", "crop", "mirror", "blank"});
    if (source.find("png").has_value() == source.find("blank").has_value())
        source.fail("a frame has either a \"png\" or a \"blank\" size");
    const auto size = [](const Source& s) {
        const Point p = s.point();
        if (p.v < 0 || p.h < 0 || p.v > 4096 || p.h > 4096)
            s.fail("a size is [height, width]");
        return p;
    };
    Bits bits;
    if (const auto blank = source.find("blank")) {
        const Point p = size(*blank);
        bits = Bits(p.v, p.h);
    } else {
        bits = readPng(source.at("png")).black;
    }
    if (const auto crop = source.find("crop")) {
        const Rect r = crop->rect();
        if (r.intersection({0, 0, bits.height, bits.width}) != r || r.isEmpty())
            crop->fail("the part does not lie in the picture, " + std::to_string(bits.height) + " high and "
                + std::to_string(bits.width) + " wide");
        bits = bits.part(r);
    }
    if (source.flag("mirror", false))
        bits = bits.mirrored();
    if (const auto wanted = source.find("size"))
        if (size(*wanted) != Point{bits.height, bits.width})
            wanted->fail(
                "the frame is " + std::to_string(bits.height) + " high and " + std::to_string(bits.width) + " wide");
    return frameRecord(bits, source.find("origin") ? source.at("origin").point() : Point{});
}

Bytes compileImage(const Source& entry, Int)
{
    std::vector<Source> frames;
    if (entry.isMap()) {
        entry.allow({"title", "frames"});
        const Source list = entry.at("frames");
        frames = list.isList() ? list.list() : list.numbered(0, {}, true);
    } else {
        frames = entry.list();
    }
    ByteWriter out;
    out.u16(I(frames.size()));
    for (const Source& frame : frames)
        out.raw(compileFrame(frame));
    return out.bytes;
}

constexpr Int kSheetGap = 2;

/// All frames below each other.
std::optional<Bits> pictureOfImage(const Bytes& data)
{
    const auto frames = imageFrames(data);
    if (!frames || frames->empty())
        return std::nullopt;
    Int height = 0, width = 0;
    for (const Frame& frame : *frames) {
        height += frame.bits.height + kSheetGap;
        width = std::max(width, frame.bits.width);
    }
    if (height > 65536 || width == 0)
        return std::nullopt;
    Bits sheet(height, width);
    Int top = 0;
    for (const Frame& frame : *frames) {
        sheet.paint(frame.bits, top, 0);
        top += frame.bits.height + kSheetGap;
    }
    return sheet;
}

std::optional<std::string> showImage(Int id, const Bytes& data)
{
    const auto frames = imageFrames(data);
    if (!frames)
        return std::nullopt;
    std::string out = "\n    frames:";
    Int top = 0, number = 0;
    for (const Frame& frame : *frames) {
        const Bits& bits = frame.bits;
        out += "\n      " + std::to_string(number++) + ": ";
        if (bits == Bits(bits.height, bits.width))
            out += "{blank: [" + std::to_string(bits.height) + ", " + std::to_string(bits.width) + ']';
        else
            out +=
                "{png: Imag" + std::to_string(id) + ".png, crop: " + shown(Rect{top, 0, top + bits.height, bits.width});
        if (frame.origin != Point{})
            out += ", origin: [" + std::to_string(frame.origin.v) + ", " + std::to_string(frame.origin.h) + ']';
        out += '}';
        top += bits.height + kSheetGap;
    }
    return frames->empty() ? out + " {}" : out;
}

} // namespace

std::optional<std::vector<Frame>> imageFrames(const Bytes& data)
{
    ByteReader in(data);
    const Int count = in.s16();
    if (data.size() < 2 || count < 0)
        return std::nullopt;
    std::vector<Frame> frames;
    for (Int i = 0; i < count; ++i) {
        const Int start = in.pos, length = in.s32(), end = start + length;
        in.skip(4);
        Frame frame;
        frame.rowBytes = in.s16();
        frame.origin.v = in.s16();
        frame.origin.h = in.s16();
        const Int height = in.s16() - frame.origin.v, width = in.s16() - frame.origin.h;
        const bool fits = length >= kFrameHeader && end <= I(data.size()) && height >= 0 && width >= 0;
        // A byte of a record stands for at most 64 of the picture.
        if (!fits || (frame.rowBytes >= 0 && height * Bits::rowBytesOf(width) > kMostPairs * length))
            return std::nullopt;
        frame.bits = Bits(frame.rowBytes < 0 ? 0 : height, frame.rowBytes < 0 ? 0 : width);
        Bytes column(static_cast<std::size_t>(frame.bits.height));
        for (Int x = 0; x < frame.rowBytes; ++x) {
            if (!unpackColumn(in, end, column))
                return std::nullopt;
            for (Int v = 0; v < frame.bits.height; ++v)
                for (Int bit = 0; bit < 8; ++bit)
                    if (x * 8 + bit < width && column[static_cast<std::size_t>(v)] >> (7 - bit) & 1)
                        frame.bits.set(v, x * 8 + bit);
        }
        in.pos = end;
        frames.push_back(std::move(frame));
    }
    if (in.pos != I(data.size()))
        return std::nullopt;
    return frames;
}

std::vector<Form> imageForms() { return {{"Imag", compileImage, showImage, pictureOfImage}}; }

} // namespace Rsrc
