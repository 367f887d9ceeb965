#pragma once

#include "Wainroad/Simulation/Records.h"

#include <cstring>

/// Three ways to walk the fields of a record in the order of its byte form, big-endian, so that each form is written
/// down once. All work inside a buffer that is known to be long enough.
namespace Wainroad {

/// Fills the fields from bytes.
class FieldReader {
public:
    explicit FieldReader(const std::uint8_t* from) : at_(from) { }

    void u8(Int& field) { field = *at_++; }
    void s8(Int& field) { field = static_cast<std::int8_t>(*at_++); }
    void u16(Int& field) { field = at_[0] << 8 | at_[1], at_ += 2; }
    void s16(Int& field) { u16(field), field = static_cast<std::int16_t>(field); }
    void s32(Int& field)
    {
        field = static_cast<std::int32_t>(static_cast<std::uint32_t>(at_[0]) << 24
            | static_cast<std::uint32_t>(at_[1]) << 16 | static_cast<std::uint32_t>(at_[2]) << 8 | at_[3]);
        at_ += 4;
    }
    void name(Name15& field) { field = Name15(std::span(at_, Name15::kMaxLength + 1)), at_ += Name15::kMaxLength + 1; }
    template <std::size_t N> void raw(std::array<std::uint8_t, N>& field)
    {
        std::memcpy(field.data(), at_, N);
        at_ += N;
    }

private:
    const std::uint8_t* at_;
};

/// Stores the fields as bytes.
class FieldWriter {
public:
    explicit FieldWriter(std::uint8_t* to) : at_(to) { }

    const std::uint8_t* position() const { return at_; }
    void u8(Int field) { *at_++ = static_cast<std::uint8_t>(field); }
    void s8(Int field) { u8(field); }
    void u16(Int field) { u8(field >> 8), u8(field); }
    void s16(Int field) { u16(field); }
    void s32(Int field) { u16(field >> 16), u16(field); }
    void name(const Name15& field) { raw(field.field()); }
    template <std::size_t N> void raw(const std::array<std::uint8_t, N>& field)
    {
        std::memcpy(at_, field.data(), N);
        at_ += N;
    }

private:
    std::uint8_t* at_;
};

/// Cuts the fields to their width where they are.
class FieldCutter {
public:
    void u8(Int& field) { field = Held8(field); }
    void s8(Int& field) { field = static_cast<std::int8_t>(field); }
    void u16(Int& field) { field = Held16(field); }
    void s16(Int& field) { field = HeldS16(field); }
    void s32(Int& field) { field = HeldS32(field); }
    void name(Name15&) { }
    template <std::size_t N> void raw(std::array<std::uint8_t, N>&) { }
};

} // namespace Wainroad
