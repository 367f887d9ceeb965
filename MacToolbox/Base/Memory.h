#pragma once

#include "MacToolbox/Base/Geometry.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace MacToolbox {

using Bytes = std::vector<std::uint8_t>;
/// A four-character code, first character in the top byte.
using OSType = std::uint32_t;
/// A counted string in Mac OS Roman: the length byte, then the characters. The empty string is one zero byte.
using Str255 = Bytes;

inline constexpr OSErr noErr = 0;
inline constexpr OSErr memFullErr = -108;

/// The shared byte block behind a `Handle`. Multi-byte values are big-endian. The whole value must lie inside the
/// block: offsets are the caller's contract. No lock; blocks belong to the game thread.
class Block {
public:
    Bytes bytes;
    OSType resType = 0; ///< 0 for a block that is not a resource
    Int resID = 0;

    Block() = default;
    explicit Block(Bytes contents) : bytes(std::move(contents)) { }

    Int count() const { return I(bytes.size()); }
    bool isResource() const { return resType != 0; }
    /// "Handle(12 bytes)".
    std::string description() const;

    Int u8(Int o) const { return at(o); }
    Int s8(Int o) const { return static_cast<std::int8_t>(at(o)); }
    Int u16(Int o) const { return at(o) << 8 | at(o + 1); }
    Int s16(Int o) const { return static_cast<std::int16_t>(u16(o)); }
    Int u32(Int o) const { return u16(o) << 16 | u16(o + 2); }
    Int s32(Int o) const { return static_cast<std::int32_t>(u32(o)); }
    /// Four signed words: top, left, bottom, right.
    Rect rect(Int o) const { return {s16(o), s16(o + 2), s16(o + 4), s16(o + 6)}; }
    /// The counted string at `o` with its length byte, cut at the end of the block; the length byte stays as it is.
    Str255 pstr(Int o) const;

    /// Store the low bits of `v`; the size of the block does not change.
    void set8(Int o, Int v) { bytes[static_cast<std::size_t>(o)] = static_cast<std::uint8_t>(v); }
    void set16(Int o, Int v) { set8(o, v >> 8), set8(o + 1, v); }
    void set32(Int o, Int v) { set16(o, v >> 16), set16(o + 2, v); }

private:
    Int at(Int o) const { return bytes[static_cast<std::size_t>(o)]; }
};

/// A shared block; it lives for as long as anything refers to it. May be nil.
using Handle = std::shared_ptr<Block>;

/// An address inside a block. `block` is never nil; the offset may lie outside while nothing goes through it.
struct Ptr {
    Handle block;
    Int offset = 0;

    Ptr operator+(Int n) const { return {block, offset + n}; }
    Ptr operator-(Int n) const { return {block, offset - n}; }
    /// The difference of the offsets; the blocks are not compared.
    Int operator-(const Ptr& q) const { return offset - q.offset; }
    Ptr& operator+=(Int n)
    {
        offset += n;
        return *this;
    }
    Ptr& operator-=(Int n)
    {
        offset -= n;
        return *this;
    }
    bool operator<(const Ptr& q) const { return offset < q.offset; }
    bool operator<=(const Ptr& q) const { return offset <= q.offset; }
    bool operator>(const Ptr& q) const { return offset > q.offset; }
    bool operator>=(const Ptr& q) const { return offset >= q.offset; }
    bool operator==(const Ptr& q) const { return block == q.block && offset == q.offset; }
    std::uint8_t& operator[](Int i) const { return block->bytes[static_cast<std::size_t>(offset + i)]; }

    Int u8(Int i) const { return block->u8(offset + i); }
    Int s8(Int i) const { return block->s8(offset + i); }
    Int u16(Int i) const { return block->u16(offset + i); }
    Int s16(Int i) const { return block->s16(offset + i); }
    Int s32(Int i) const { return block->s32(offset + i); }
    void set8(Int i, Int v) const { block->set8(offset + i, v); }
    void set16(Int i, Int v) const { block->set16(offset + i, v); }
    void set32(Int i, Int v) const { block->set32(offset + i, v); }
};

/// A big-endian read cursor that never fails: beyond the end it reads 0, and `pos` moves on all the same.
/// Looks at the bytes given to it, which must outlive it.
class ByteReader {
public:
    Int pos = 0;

    explicit ByteReader(std::span<const std::uint8_t> source, Int at = 0) : pos(at), bytes_(source) { }
    ByteReader(Bytes&&, Int = 0) = delete; // would dangle

    std::span<const std::uint8_t> bytes() const { return bytes_; }
    bool atEnd() const { return pos >= I(bytes_.size()); }

    Int u8();
    Int s8() { return static_cast<std::int8_t>(u8()); }
    Int u16();
    Int s16() { return static_cast<std::int16_t>(u16()); }
    Int u32();
    Int s32() { return static_cast<std::int32_t>(u32()); }
    /// Exactly `n` bytes (none for `n` below 1), padded with zeros at the end.
    Bytes raw(Int n);
    void skip(Int n) { pos += n; }

private:
    std::span<const std::uint8_t> bytes_;
};

/// An append-only big-endian output.
class ByteWriter {
public:
    Bytes bytes;

    void u8(Int v) { bytes.push_back(static_cast<std::uint8_t>(v)); }
    void u16(Int v) { u8(v >> 8), u8(v); }
    void u32(Int v) { u16(v >> 16), u16(v); }
    void raw(std::span<const std::uint8_t> more) { bytes.insert(bytes.end(), more.begin(), more.end()); }
    /// Appends `n` zero bytes; nothing for `n` below 1.
    void zeros(Int n);
    /// Appends zero bytes until the length is `n`; nothing if it is that long already.
    void pad(Int n) { zeros(n - I(bytes.size())); }
};

extern Int MemErr; ///< always 0 in practice

/// A new block of `n` zero bytes, empty for `n` below 1. Never nil.
Handle NewHandle(Int n);
Handle NewHandleClear(Int n);
inline void DisposHandle(const Handle&) { }  ///< nothing: the block goes with its last reference
inline void DisposeHandle(const Handle&) { } ///< nothing: the block goes with its last reference
/// The block's length; 0 for nil.
Int GetHandleSize(const Handle& h);
/// Cuts the block or extends it with zero bytes; nothing for nil.
void SetHandleSize(const Handle& h, Int n);
void EmptyHandle(const Handle& h);
/// `n` zero bytes in place of the contents; nothing for nil.
void ReallocHandle(const Handle& h, Int n);
/// Replaces `h` by a new block with a copy of its bytes, no resource; nothing for nil. @return Always 0.
OSErr HandToHand(Handle& h);
Handle PtrToHand(std::span<const std::uint8_t> bytes);

// Nothing moves and nothing is purged, so these have no effect.
inline void HLock(const Handle&) { }
inline void HUnlock(const Handle&) { }
inline void HPurge(const Handle&) { }
inline void HNoPurge(const Handle&) { }
inline void MoveHHi(const Handle&) { }
inline void HSetState(const Handle&, Int) { }
inline void MaxApplZone() { }
inline void MoreMasters() { }
inline Int HGetState(const Handle&) { return 0; }
inline Int CompactMem(Int) { return 0x7FFFFFFF; }
inline void PurgeSpace(Int& total, Int& contig) { total = contig = 0x400000; }
inline Int FreeMem() { return 0x400000; }
inline Int MaxBlock() { return 0x400000; }
inline OSErr MemError() { return MemErr; }
/// Moves `n` bytes (none for `n` below 1), right also where source and destination overlap.
void BlockMove(const Ptr& src, const Ptr& dst, Int n);

/// The code of the first four characters of `text`, the low 8 bits of each scalar; fewer give a smaller number.
constexpr OSType os(std::string_view text)
{
    OSType code = 0;
    int taken = 0;
    for (const char c : text) {
        if (taken++ == 4)
            break;
        code = code << 8 | static_cast<std::uint8_t>(c);
    }
    return code;
}
/// The four characters of `code` read as Latin-1, in UTF-8.
std::string osString(OSType code);

} // namespace MacToolbox
