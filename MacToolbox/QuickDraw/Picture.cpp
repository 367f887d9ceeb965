#include "MacToolbox/QuickDraw/Picture.h"

#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <vector>

namespace MacToolbox {

namespace {

constexpr Int kLeastPicture = 13;   // bytes; less holds no opcode
constexpr Int kMostImage = 8 << 20; // bytes of rows, or eighths of a pixel after reduction
constexpr Int kWork = Int{1} << 30; // about a nanosecond each; a picture that asks for more ends there
constexpr Int kShapeWork = 4'000, kLetterWork = 1'000, kImageWork = 20'000;
constexpr Int kFontWork = 300'000;                    // the search for a strike through the resource files
constexpr Int kPointWork = 1'000, kCrossingWork = 64; // of a polygon: each point, and each point for each row
constexpr Int kCurvedRowWork = 64;                    // each row of an oval or a rounded rectangle
constexpr Int kInkWork = 16;                          // each pixel of a letter's picture
constexpr Int kCopyWork = 2, kOddCopyWork = 64; // each pixel of an image's place; with rows too short for its width

/// What a picture may change in its port, put back at the end. The extra width of spaces stays.
class PortFields {
public:
    explicit PortFields(GrafPort& port)
        : port_(port), pen_(port.penState()), font_(port.txFont), face_(port.txFace), mode_(port.txMode),
          size_(port.txSize), fg_(port.fgColor), bg_(port.bkColor), clip_(port.clipRgn), back_(port.bkPat)
    {
        port.setPenState({});
        port.txFont = systemFont;
        port.txFace = normal;
        port.txMode = srcOr;
        port.txSize = 0;
        port.fgColor = RGBColor::black;
        port.bkColor = RGBColor::white;
    }
    ~PortFields()
    {
        port_.setPenState(pen_);
        port_.txFont = font_, port_.txFace = face_, port_.txMode = mode_, port_.txSize = size_;
        port_.fgColor = fg_, port_.bkColor = bg_;
        port_.clipRgn = clip_;
        port_.bkPat = back_;
    }
    PortFields(const PortFields&) = delete;
    PortFields& operator=(const PortFields&) = delete;

private:
    GrafPort& port_;
    const PenState pen_;
    const Int font_, face_, mode_, size_;
    const RGBColor fg_, bg_;
    const RgnHandle clip_;
    const Pattern back_;
};

/// Expands run-length packed bytes from `pos` to exactly `length` bytes, padded with zeros where the data ends.
void unpackBits(std::span<const std::uint8_t> data, Int pos, Int length, std::uint8_t* out)
{
    const Int end = I(data.size());
    Int made = 0;
    while (made < length && pos < end) {
        const Int c = static_cast<std::int8_t>(data[static_cast<std::size_t>(pos++)]);
        if (c >= 0) {
            const Int count = std::min({c + 1, length - made, end - pos});
            std::copy_n(data.begin() + pos, count, out + made);
            made += count;
            pos += c + 1;
        } else if (c != -128 && pos < end) {
            const Int count = std::min(1 - c, length - made);
            std::fill_n(out + made, count, data[static_cast<std::size_t>(pos++)]);
            made += count;
        }
    }
    std::fill(out + made, out + length, std::uint8_t{0});
}

/// Plays one picture into one port. A step that would read beyond the block ends the picture.
class Player {
public:
    Player(const Block& picture, const GrafPtr& port, const Rect& dst)
        : data_(picture.bytes), in_(data_), port_(*port), frame_(picture.rect(2)), dst_(dst),
          baseClip_(port->clipRgn->region)
    {
    }

    void play();

private:
    enum class Shape { rect, roundRect, oval, polygon, box };

    bool step(Int op);
    bool stepSetting(Int op);
    bool stepSkipped(Int op);
    bool stepLine(Int op);
    bool stepText(Int op);
    bool stepShape(Int op);
    bool stepImage(Int op);

    bool has(Int n) const { return in_.pos + n <= I(data_.size()); }
    bool skip(Int n) { return in_.skip(n), true; }
    bool spend(Int work) { return (work_ -= work) > 0; }
    Point map(Point p) const;
    Point readPoint();
    Rect readRect();
    Rect readPlainRect();
    RGBColor readColor();
    Pattern readPattern() { return Pattern(in_.raw(8)); }

    bool lineTo(Point to);
    bool act(Int action, Shape shape);
    void frameShape(Shape shape);
    Region region(Shape shape) const;
    bool readPolygon();
    Int shapeWork(Shape shape) const;
    Int letterWork(std::span<const std::uint8_t> text) const;
    Int copyWork(const BitMap& image, const Rect& to) const;
    bool readRows(bool packed, Int rowLength, Int rows, Bytes& out);
    bool reduce(const Bytes& rows, Int rowLength, const Rect& bounds, Int depth, const std::array<bool, 256>& black,
        BitMap& out);

    const std::span<const std::uint8_t> data_;
    ByteReader in_;
    GrafPort& port_;
    const Rect frame_, dst_;
    const Region baseClip_;
    Int version_ = 1;
    Int work_ = kWork;
    Pattern fillPat_ = Pattern::black;
    Int ovalHeight_ = 0, ovalWidth_ = 0;
    Rect lastRect_;
    Rect box_; // the bounds of the region in hand
    std::vector<Point> lastPolygon_;
    Point textPos_;
};

void Player::play()
{
    in_.pos = 10;
    const Int word = in_.u16();
    version_ = word == 0x0011 ? 2 : 1;
    in_.pos = word == 0x1101 ? 12 : version_ == 2 ? 14 : 10;
    while (!in_.atEnd()) {
        if (version_ == 2 && (in_.pos & 1) != 0)
            in_.skip(1);
        if (!has(version_))
            return;
        if (!step(version_ == 2 ? in_.u16() : in_.u8()))
            return;
    }
}

/// Acts on an opcode and its operands. @return False at the picture's end.
bool Player::step(Int op)
{
    if (op >= 0x0100)
        return op == 0x0C00 ? skip(24) : op <= 0x7FFF && skip((op >> 8) * 2);
    if (op <= 0x1F)
        return stepSetting(op);
    if (op <= 0x23)
        return stepLine(op);
    if (op >= 0x28 && op <= 0x2B)
        return stepText(op);
    if (op >= 0x30 && op <= 0x84 && (op & 7) <= 4)
        return stepShape(op);
    if (op == 0x90 || op == 0x91 || op == 0x98 || op == 0x99)
        return stepImage(op);
    return stepSkipped(op);
}

bool Player::stepSkipped(Int op)
{
    switch (op) {
    case 0x2C:
    case 0x2E: return has(2) && skip(in_.u16());
    case 0xA0: return skip(2);
    case 0xA1: return has(4) && skip(2) && skip(in_.u16());
    default: return false;
    }
}

bool Player::stepSetting(Int op)
{
    static constexpr std::array<Int, 32> kSizes{0, 10, 8, 2, 1, 2, 4, 4, 2, 8, 8, 4, 4, 2, 4, 4, //
        8, 1, -1, -1, -1, 2, 2, -1, -1, -1, 6, 6, 0, 6, 0, 6}; // operand bytes; -1 ends the picture
    const Int size = kSizes[static_cast<std::size_t>(op)], start = in_.pos;
    if (size < 0 || !has(size))
        return false;
    switch (op) {
    case 0x01: {
        const Int n = in_.u16();
        const Rect bounds = readRect();
        port_.clipRgn = std::make_shared<RgnRecord>(baseClip_.intersection(bounds));
        in_.pos = start + n;
        return true;
    }
    case 0x02: port_.bkPat = readPattern(); break;
    case 0x03: port_.txFont = in_.s16(); return spend(kFontWork);
    case 0x04: port_.txFace = in_.u8(); return skip(version_ - 1);
    case 0x05: port_.txMode = in_.s16(); break;
    case 0x06: port_.spExtra = in_.s16(); break;
    case 0x07: port_.pnSize = {std::max<Int>(in_.s16(), 0), std::max<Int>(in_.s16(), 0)}; break;
    case 0x08: port_.pnMode = in_.s16(); break;
    case 0x09: port_.pnPat = readPattern(); break;
    case 0x0A: fillPat_ = readPattern(); break;
    case 0x0B:
        ovalHeight_ = in_.s16();
        ovalWidth_ = in_.s16();
        break;
    case 0x0D: port_.txSize = in_.s16(); return spend(kFontWork);
    case 0x0E: port_.fgColor = in_.u32() == whiteColor ? RGBColor::white : RGBColor::black; break;
    case 0x0F: port_.bkColor = in_.u32() == blackColor ? RGBColor::black : RGBColor::white; break;
    case 0x1A: port_.fgColor = readColor(); break;
    case 0x1B: port_.bkColor = readColor(); break;
    default: break;
    }
    in_.pos = start + size;
    return true;
}

Point Player::map(Point p) const
{
    const Int height = frame_.height(), width = frame_.width();
    return {height == 0 ? p.v : dst_.top + (p.v - frame_.top) * dst_.height() / height,
        width == 0 ? p.h : dst_.left + (p.h - frame_.left) * dst_.width() / width};
}

Point Player::readPoint()
{
    const Int v = in_.s16(), h = in_.s16();
    return map({v, h});
}

Rect Player::readRect()
{
    const Point topLeft = readPoint(), botRight = readPoint();
    return {topLeft.v, topLeft.h, botRight.v, botRight.h};
}

Rect Player::readPlainRect()
{
    const Int top = in_.s16(), left = in_.s16(), bottom = in_.s16(), right = in_.s16();
    return {top, left, bottom, right};
}

RGBColor Player::readColor()
{
    const Int red = in_.u16(), green = in_.u16(), blue = in_.u16();
    return {red, green, blue};
}

bool Player::lineTo(Point to)
{
    const Point from = port_.pnLoc;
    if (!spend(kShapeWork + 4 * (std::abs(to.h - from.h) + std::abs(to.v - from.v))))
        return false;
    port_.lineTo(to.h, to.v);
    return true;
}

bool Player::stepLine(Int op)
{
    static constexpr std::array<Int, 4> kSizes{8, 4, 6, 2};
    if (!has(kSizes[static_cast<std::size_t>(op - 0x20)]))
        return false;
    if (op == 0x20 || op == 0x22)
        port_.pnLoc = readPoint();
    if (op == 0x20 || op == 0x21)
        return lineTo(readPoint());
    const Int dh = in_.s8(), dv = in_.s8();
    return lineTo({port_.pnLoc.v + dv, port_.pnLoc.h + dh});
}

bool Player::stepText(Int op)
{
    static constexpr std::array<Int, 4> kSizes{5, 2, 2, 3}; // with the count byte
    if (!has(kSizes[static_cast<std::size_t>(op - 0x28)]))
        return false;
    if (op == 0x28)
        textPos_ = readPoint();
    if (op == 0x29 || op == 0x2B)
        textPos_.h += in_.u8();
    if (op == 0x2A || op == 0x2B)
        textPos_.v += in_.u8();
    const Int count = in_.u8();
    const Int present = std::clamp<Int>(I(data_.size()) - in_.pos, 0, count);
    const auto text = data_.subspan(static_cast<std::size_t>(in_.pos), static_cast<std::size_t>(present));
    if (!spend(kShapeWork + letterWork(text)))
        return false;
    port_.pnLoc = textPos_;
    FontManager::shared().draw(port_, text);
    return skip(count);
}

/// Each letter may be one that has not been drawn in its style before.
Int Player::letterWork(std::span<const std::uint8_t> text) const
{
    const StrikePtr strike = FontManager::shared().strike(port_.txFont, port_.txSize, port_.txFace).strike;
    if (!strike)
        return 0;
    Int columns = 0;
    for (const std::uint8_t c : text)
        if (const Int i = strike->indexOf(c); i >= 0)
            columns += std::max<Int>(
                strike->loc[static_cast<std::size_t>(i + 1)] - strike->loc[static_cast<std::size_t>(i)], 0);
    return I(text.size()) * kLetterWork + columns * strike->fRectHeight * kInkWork;
}

bool Player::readPolygon()
{
    if (!has(10))
        return false;
    const Int start = in_.pos, end = start + in_.u16();
    if (end > I(data_.size()))
        return false;
    in_.pos = start + 10;
    lastPolygon_.clear();
    while (in_.pos + 4 <= end)
        lastPolygon_.push_back(readPoint());
    in_.pos = end;
    return true;
}

/// What a shape costs beyond `kShapeWork`.
Int Player::shapeWork(Shape shape) const
{
    const Int reach = std::max<Int>(port_.reach().height(), 0);
    if (shape == Shape::roundRect || shape == Shape::oval)
        return kCurvedRowWork * std::clamp<Int>(lastRect_.height(), 0, reach);
    if (shape != Shape::polygon || lastPolygon_.empty())
        return 0;
    const auto [top, bottom] = std::minmax_element(
        lastPolygon_.begin(), lastPolygon_.end(), [](const Point& a, const Point& b) { return a.v < b.v; });
    const Int rows = std::min(bottom->v - top->v, reach);
    return I(lastPolygon_.size()) * (kPointWork + rows * kCrossingWork);
}

bool Player::stepShape(Int op)
{
    const Int action = op & 7;
    const bool same = (op & 8) != 0;
    switch (op & 0xF0) {
    case 0x30:
    case 0x40:
    case 0x50: {
        if (!same) {
            if (!has(8))
                return false;
            lastRect_ = readRect();
        }
        return act(action, op < 0x40 ? Shape::rect : op < 0x50 ? Shape::roundRect : Shape::oval);
    }
    case 0x60: return skip(same ? 4 : 12); // arcs are not drawn
    case 0x70: return (same || readPolygon()) && act(action, Shape::polygon);
    default: { // a region; only its box is drawn
        if (!has(10))
            return false;
        const Int start = in_.pos, n = in_.u16();
        box_ = readRect();
        in_.pos = start + n;
        return act(action, Shape::box);
    }
    }
}

bool Player::act(Int action, Shape shape)
{
    if (!spend(kShapeWork + shapeWork(shape)))
        return false;
    switch (action) {
    case 0: frameShape(shape); break;
    case 1: port_.paint(region(shape)); break;
    case 2: port_.fill(region(shape), port_.bkPat, patCopy); break;
    case 3: port_.fill(region(shape), Pattern::black, patXor); break;
    default: port_.fill(region(shape), fillPat_, patCopy);
    }
    return true;
}

void Player::frameShape(Shape shape)
{
    switch (shape) {
    case Shape::rect: port_.frameRect(lastRect_); break;
    case Shape::roundRect: port_.frameRoundRect(lastRect_, ovalWidth_, ovalHeight_); break;
    case Shape::oval: port_.frameOval(lastRect_); break;
    case Shape::box: port_.frameRect(box_); break;
    case Shape::polygon: // the outline is left open
        if (lastPolygon_.empty())
            break;
        port_.pnLoc = lastPolygon_.front();
        for (std::size_t i = 1; i < lastPolygon_.size(); ++i)
            if (!lineTo(lastPolygon_[i]))
                break;
    }
}

Region Player::region(Shape shape) const
{
    const Rect reach = port_.reach();
    switch (shape) {
    case Shape::rect: return Region(lastRect_);
    case Shape::roundRect: return Region::roundRect(lastRect_, ovalWidth_, ovalHeight_, reach);
    case Shape::oval: return Region::oval(lastRect_, reach);
    case Shape::box: return Region(box_);
    case Shape::polygon: break;
    }
    std::vector<Region::Edge> edges;
    for (std::size_t i = 0; i < lastPolygon_.size(); ++i)
        edges.emplace_back(lastPolygon_[i], lastPolygon_[(i + 1) % lastPolygon_.size()]);
    return Region::fromEdges(edges, reach);
}

/// Reads the rows of an image, as far as the block holds any; what is missing is white.
bool Player::readRows(bool packed, Int rowLength, Int rows, Bytes& out)
{
    if (rowLength * rows > kMostImage || !spend(kImageWork + rowLength * rows))
        return false;
    out.assign(static_cast<std::size_t>(rowLength * rows), 0);
    for (Int row = 0; row < rows && !in_.atEnd(); ++row) {
        std::uint8_t* const to = out.data() + row * rowLength;
        if (packed && rowLength >= 8) {
            const Int count = rowLength < 251 ? in_.u8() : in_.u16();
            unpackBits(data_, in_.pos, rowLength, to);
            in_.skip(count);
        } else {
            const Int present = std::min(rowLength, I(data_.size()) - in_.pos);
            std::copy_n(data_.begin() + in_.pos, present, to);
            in_.skip(rowLength);
        }
    }
    return true;
}

/// Makes black and white of pixels of 2, 4 or 8 bits, by a plain threshold.
bool Player::reduce(
    const Bytes& rows, Int rowLength, const Rect& bounds, Int depth, const std::array<bool, 256>& black, BitMap& out)
{
    const Int area = bounds.width() * bounds.height();
    if (area > 8 * kMostImage || !spend(4 * area))
        return false;
    out = BitMap(bounds);
    const Int mask = (Int{1} << depth) - 1, perByte = 8 / depth;
    for (Int y = 0; y < bounds.height(); ++y) {
        const std::uint8_t* const row = rows.data() + y * rowLength;
        const Int present = I(rows.size()) - y * rowLength; // a row too short for its pixels runs on into the next
        std::uint8_t* const to = out.baseAddr->bytes.data() + y * out.rowBytes;
        for (Int x = 0; x < bounds.width(); ++x) {
            const Int at = x / perByte;
            const Int byte = at < present ? row[at] : 0;
            const Int value = byte >> (8 - depth * (x % perByte + 1)) & mask;
            if (black[static_cast<std::size_t>(value)])
                to[x >> 3] = static_cast<std::uint8_t>(to[x >> 3] | 0x80 >> (x & 7));
        }
    }
    return true;
}

Int Player::copyWork(const BitMap& image, const Rect& to) const
{
    const Rect place = to.intersection(port_.portBits.bounds);
    const bool odd = image.rowBytes * 8 < image.bounds.width();
    const Int columns = odd ? std::max(place.width(), image.bounds.width()) : place.width();
    return place.height() * columns * (odd ? kOddCopyWork : kCopyWork);
}

bool Player::stepImage(Int op)
{
    const bool masked = (op & 1) != 0, packed = (op & 8) != 0;
    if (!has(10))
        return false;
    const Int start = in_.pos, rowWord = in_.u16();
    const bool pixelMap = (rowWord & 0x8000) != 0;
    const Int rowLength = rowWord & 0x3FFF;
    const Rect bounds = readPlainRect();
    Int depth = 1;
    std::array<bool, 256> black{};
    if (pixelMap) {
        if (!has(44))
            return false;
        in_.pos = start + 32;
        depth = in_.s16();
        in_.pos = start + 50;
        const bool byPosition = (in_.u16() & 0x8000) != 0;
        const Int entries = std::max<Int>(in_.s16(), 0) + 1;
        if (!has(entries * 8) || (depth != 1 && depth != 2 && depth != 4 && depth != 8))
            return false;
        for (Int i = 0; i < entries; ++i) {
            const Int value = in_.u16();
            const RGBColor color = readColor();
            if (const Int key = byPosition ? i : value; key < I(black.size()))
                black[static_cast<std::size_t>(key)] = color.isBlack();
        }
    }
    if (!has(18))
        return false;
    const Rect from = readPlainRect(), to = readRect();
    const Int mode = in_.s16();
    RgnHandle mask;
    if (masked) {
        if (!has(10))
            return false;
        const Int maskStart = in_.pos, n = in_.u16();
        mask = std::make_shared<RgnRecord>(Region(readRect()));
        in_.pos = maskStart + n;
    }
    auto rows = std::make_shared<Block>();
    if (!readRows(packed, rowLength, std::max<Int>(bounds.height(), 0), rows->bytes))
        return false;
    if (bounds.isEmpty())
        return true;
    BitMap map(rows, 0, rowLength, bounds);
    if (depth > 1 && !reduce(rows->bytes, rowLength, bounds, depth, black, map))
        return false;
    if (!spend(copyWork(map, to)))
        return false;
    port_.copyBits(map, port_.portBits, from, to, depth > 1 ? Int{srcCopy} : mode, mask);
    return true;
}

} // namespace

Handle GetPicture(Int id) { return GetResource(os("PICT"), id); }

Rect picFrame(const Handle& picture) { return picture && picture->count() >= 10 ? picture->rect(2) : Rect{}; }

void DrawPicture(const Handle& handle, const Rect& dstRect)
{
    const Handle picture = handle;
    if (!picture || picture->count() < kLeastPicture)
        return;
    const GrafPtr port = thePort;
    const PortFields restored(*port);
    Player(*picture, port, dstRect).play();
}

} // namespace MacToolbox
